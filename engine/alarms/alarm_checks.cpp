#include "engine/alarms/alarm_checks.h"

#include <string>
#include <string_view>

#include "engine/alarms/alarms.h"
#include "engine/derived/number_text.h"
#include "engine/displays/main_window.h"
#include "engine/records/changeover_word.h"

namespace nimbry {
namespace {

void restore_main_window(Copy& copy) {
    if (!copy.state.window.minimised) return;
    place_window(copy.state, false, false);
    copy.ports.notices.restore_main_window();
}

void add_to_sentence(std::string& sentence, std::string_view phrase, const std::string& clause) {
    if (sentence.find(phrase) == std::string::npos) {
        sentence = clause;
    } else {
        sentence += " and " + clause;
    }
}

void raise_alarm(Copy& copy, Box& reading, std::string_view phrase, const std::string& clause) {
    AlarmState& alarms = copy.state.alarms;
    restore_main_window(copy);
    copy.state.menu.mnuHide.enabled = false;
    if (alarms.frmAlarms.chkASound) copy.ports.sounds.play(std::string(alarm_sound));
    alarms.AlarmCondition = true;
    add_to_sentence(alarms.AlarmReason, phrase, clause);
    reading.back = colours::alarm_back;
    copy.timers.start_if_stopped(TimerId::TimAlarm, copy.ports.clock.monotonic());
}

std::string clause_of(const AlarmRow& row) {
    return "the " + std::string(row.phrase) + " the alarm threshold";
}

bool in_breach(const AlarmsDialog& dialog, const AlarmRow& row, float value) {
    if (!(dialog.*row.enabled)) return false;
    const float threshold = dialog.*row.threshold;
    return row.above ? value > threshold : value < threshold;
}

bool check(Copy& copy, AlarmId id, double value, Box& reading) {
    const AlarmRow& row = alarm_row(id);
    if (!in_breach(copy.state.alarms.frmAlarms, row, alarm_single(value))) return false;
    raise_alarm(copy, reading, row.phrase, clause_of(row));
    return true;
}

}  // namespace

bool check_high_wind(Copy& copy) {
    return check(copy, AlarmId::AWindHi, Val(copy.state.readings.rdatwindgs), copy.state.panel.Text2[6]);
}

void keep_wind_of_alarm(Copy& copy) {
    const WeatherState& state = copy.state;
    copy.state.alarms.gust =
        AlarmGust{trimmed(state.panel.Text2[6].text), state.log_fields.logwindgs, Val(state.readings.rdatwindgs)};
}

void check_humidity(Copy& copy) {
    const double percent = Val(copy.state.readings.rdathumidity);
    Box& box = copy.state.panel.Text2[2];
    check(copy, AlarmId::AHumHi, percent, box);
    check(copy, AlarmId::AHumLo, percent, box);
}

void check_outdoor_temperature(Copy& copy) {
    const double celsius = Val(copy.state.readings.rawostemp);
    Box& box = copy.state.panel.Text2[0];
    check(copy, AlarmId::ATempHi, celsius, box);
    check(copy, AlarmId::ATempLo, celsius, box);
}

void check_indoor_temperature(Copy& copy) {
    const double celsius = Val(copy.state.readings.rawintemp);
    Box& box = copy.state.panel.Text2[8];
    check(copy, AlarmId::AItempHi, celsius, box);
    check(copy, AlarmId::AItempLo, celsius, box);
}

void check_barometer(Copy& copy) {
    const double hpa = copy.state.readings.BaroValue;
    Box& box = copy.state.panel.Text2[4];
    check(copy, AlarmId::ABarHi, hpa, box);
    check(copy, AlarmId::ABarLo, hpa, box);
}

void check_dew_point(Copy& copy) {
    const double celsius = copy.state.readings.dewnative;
    Box& box = copy.state.panel.Text2[1];
    check(copy, AlarmId::ADewHi, celsius, box);
    check(copy, AlarmId::ADewLo, celsius, box);

    const std::string clause = "the temperature and dew point are equal";
    const float temperature = alarm_single(Val(copy.state.readings.rawostemp));
    if (copy.state.alarms.frmAlarms.chkADewCur && alarm_single(celsius) >= temperature)
        raise_alarm(copy, box, clause, clause);
}

void check_peak_rain(Copy& copy) {
    check(copy, AlarmId::ARainHi, Val(copy.state.readings.rdatpeakrain), copy.state.panel.TxtPeakRain());
}

void check_rain_amount(Copy& copy) {
    const AlarmRow& row = alarm_row(AlarmId::ARainAm);
    if (!in_breach(copy.state.alarms.frmAlarms, row, copy.state.rain.raintoday)) return;
    raise_alarm(copy, copy.state.panel.TxtRainToday, row.phrase,
                "the " + std::string(row.phrase) + std::string(changeover_word(copy.state.settings)) +
                    "is above the alarm threshold");
}

}  // namespace nimbry
