#include "engine/alarms/alarms.h"

#include <string>

#include "engine/core/run_time_error.h"
#include "engine/core/switches.h"

namespace nimbry {

void forget_alarms(AlarmState& alarms) {
    alarms.AlarmCondition = false;
    alarms.AlarmReason.clear();
    alarms.gust.reset();
}

void getalarms(Copy& copy) {
    tagged("getalarms", [&] { copy.state.alarms.frmAlarms = read_alarms(copy.ini); });
}

void accept_alarms(Copy& copy, const AlarmsDialog& values) {
    copy.ports.sounds.play(std::string(click_sound));
    copy.state.alarms.frmAlarms = values;
    write_alarms(copy.ini, values);
}

void end_alarm(Copy& copy) {
    copy.timers.stop(TimerId::TimAlarm);
    if (copy.state.alarms.frmAlarms.chkASound) copy.ports.sounds.play(std::string(alarm_sound));
    MainPanel& panel = copy.state.panel;
    const auto calm = [](Box& box, Colour normal) {
        if (in_alarm(box)) box.back = normal;
    };
    for (Box& reading : panel.Text2) {
        calm(reading, &reading == &panel.TxtPeakRain() ? colours::rain_back : colours::reading_back);
    }
    calm(panel.TxtRainToday, colours::rain_back);
    copy.state.menu.mnuHide.enabled = true;
}

bool in_alarm(const Box& reading) {
    return reading.back == colours::alarm_back;
}

std::vector<std::string_view> readings_in_alarm(const MainPanel& panel) {
    std::vector<std::string_view> captions;
    for (std::size_t n = 0; n < panel.Text2.size(); ++n)
        if (in_alarm(panel.Text2[n])) captions.push_back(panel_caption("Text2(" + std::to_string(n) + ")"));
    if (in_alarm(panel.TxtRainToday)) captions.emplace_back("Rainfall");
    return captions;
}

}  // namespace nimbry
