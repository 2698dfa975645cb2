#include <string>

#include "engine/alarms/alarm_checks.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/displays/big_display.h"
#include "engine/station/group_text.h"
#include "engine/station/groups.h"
#include "engine/station/humidity.h"
#include "engine/station/sensor_faults.h"
#include "engine/station/station_time.h"

namespace nimbry {
namespace {

using namespace digits_8f;

// The last reading of the sensor before it says only "over range".
constexpr double top_of_range = 97;

std::string percent_text(double value, bool over_range) {
    return numtext(value == top_of_range && over_range ? 100 : value) + " %";
}

void show_clock(WeatherState& state) {
    const Readings& readings = state.readings;
    state.panel.TxtTime.text = readings.rdattime;
    state.panel.TxtDate.text = readings.rdatmonth + "  " + readings.rdatday;
    show_time_and_date(state);
    state.log_fields.logdate = readings.rdatday;
    state.log_fields.logmonth = readings.rdatmonth;
    state.log_fields.logtime = readings.rdattime.substr(0, 5);
}

// False when the frame's date is none: what follows is not decoded.
bool take_date(Copy& copy) {
    Readings& readings = copy.state.readings;
    const int year = parts_of(copy.ports.clock.computer_time()).year;
    const std::optional<CivilTime> date = station_date(copy.state.comm.Digits8F, year);
    readings.HaveValidDate = date.has_value();
    if (!date) return false;
    readings.YesterDay = parts_of(*date - std::chrono::minutes{1}).day;
    readings.dtvar = date;
    maketimes(copy);
    return true;
}

void show_outdoor_humidity(Copy& copy) {
    WeatherState& state = copy.state;
    const bool corrected = humidity_over_range(state);
    const std::string value = outdoor_humidity_text(state);
    Box& box = state.panel.Text2[2];
    // Kept on purpose: the corrected value alone has a blank in front.
    show(box, (corrected ? " " : "") + value + " %");
    box.balloon = "Humidity " + value + " %";
    state.log_fields.logoshum = value;
    check_humidity(copy);
}

void show_humidity_records(WeatherState& state) {
    const DigitTable<70>& digits = state.comm.Digits8F;
    const double high = Val(field_text(digits, humidity_high));
    const double low = Val(field_text(digits, humidity_low));
    state.panel.TxtOsHumHi.text =
        percent_text(high, flag_set(digits, high_over_range)) + moment_text(digits, humidity_high_at, "  ");
    // Kept on purpose: it is the high that decides whether the low is marked as below its range.
    state.panel.TxtOsHumLo.text =
        (high <= 10 ? "< " : "") + percent_text(low, false) + moment_text(digits, humidity_low_at, "  ");
}

void show_indoor_humidity(WeatherState& state) {
    const std::string text = state.readings.rdatinhumidity + " %";
    Box& box = state.panel.Text2[9];
    show(box, text);
    box.balloon = "Indoor Humidity " + text;
    state.log_fields.loginhum = state.readings.rdatinhumidity;
}

}  // namespace

void group_8f(Copy& copy) {
    tagged("8F group", [&] {
        WeatherState& state = copy.state;
        show_clock(state);
        if (!take_date(copy)) return;
        begin_train(state.sensors);
        if (!state.run.fullystarted) return;

        if (sensor_sound(copy, Sensor::outdoor_humidity)) show_outdoor_humidity(copy);
        show_humidity_records(state);
        if (sensor_sound(copy, Sensor::indoor_humidity)) show_indoor_humidity(state);
    });
}

}  // namespace nimbry
