#include <string>

#include "engine/alarms/alarm_checks.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"
#include "engine/station/group_text.h"
#include "engine/station/groups.h"
#include "engine/station/sensor_faults.h"

namespace nimbry {
namespace {

void show_rain_rate(Copy& copy) {
    WeatherState& state = copy.state;
    check_peak_rain(copy);
    state.readings.RainRateMm = Val(state.readings.rdatpeakrain);
    const double shown = Round(state.readings.RainRateMm * state.units.rcorr, 2);
    const std::string text = with_unit(shown, state.units.rain_text);
    Box& box = state.panel.TxtPeakRain();
    show(box, text + "/hour");
    box.balloon = "Peak rainfall Rate" + text + "/Hr.";
    state.log_fields.lograinr = numtext(shown);
}

// "January 3"; without a month the day's digits alone.
std::string reset_date(const DigitTable<28>& digits) {
    const MomentFields& at = digits_bf::reset_at;
    const std::string month = full_month_name(field_digit(digits, at.month));
    const std::string day = field_text(digits, at.day);
    return month.empty() ? day : month + " " + numtext(Val(day));
}

void show_total_rain(WeatherState& state) {
    Readings& readings = state.readings;
    const DigitTable<28>& digits = state.comm.DigitsBF;
    const MomentFields& at = digits_bf::reset_at;

    const double total = Val(readings.rdattotrain);
    readings.RainTotalText = numtext(total);
    const double shown = Round(total * state.units.rcorr, 2);
    const std::string text = with_unit(shown, state.units.rain_text);
    const std::string since = reset_date(digits);
    Box& box = state.panel.TxtRainTot;
    box.text = text;
    box.balloon = "The total accumulated rainfall since " + field_text(digits, at.hour) + ":" +
                  field_text(digits, at.minute) + " on " + since + " is" + text;
    readings.RainSinceText = trimmed(text) + " of rain since " + since;
    state.log_fields.lograintot = numtext(shown);
}

}  // namespace

void group_bf(Copy& copy) {
    tagged("BF group", [&] {
        if (!copy.state.run.fullystarted) return;
        if (sensor_sound(copy, Sensor::rain)) show_rain_rate(copy);
        // The counter comes from the station's memory: a faulty sensor does not touch it.
        show_total_rain(copy.state);
    });
}

}  // namespace nimbry
