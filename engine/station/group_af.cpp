#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "engine/alarms/alarm_checks.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/cloud_base.h"
#include "engine/derived/dew_point.h"
#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"
#include "engine/derived/wet_bulb.h"
#include "engine/station/group_text.h"
#include "engine/station/groups.h"
#include "engine/station/humidity.h"
#include "engine/station/sensor_faults.h"
#include "engine/station/weather_picture.h"

namespace nimbry {
namespace {

struct Trend {
    char digit;
    std::string_view word, code;
};
constexpr std::array trends{Trend{'1', "Rising", "2"}, Trend{'2', "Steady", "1"}, Trend{'4', "Falling", "0"}};

// Another digit leaves the last word standing.
void show_trend(WeatherState& state) {
    for (const Trend& trend : trends) {
        if (trend.digit != state.readings.rdatbarotrend) continue;
        state.panel.TxtBarTrend.text = trend.word;
        state.readings.BaroTrendCode = trend.code;
        state.log_fields.logbtrend = trend.word;
    }
}

void show_barometer(Copy& copy) {
    WeatherState& state = copy.state;
    Readings& readings = state.readings;
    show_trend(state);
    readings.BaroValue = Val(readings.rdatbarometer);
    readings.BaroInvariant = numtext(readings.BaroValue);
    check_barometer(copy);

    const double shown = Round(readings.BaroValue * state.units.bcorr, 2);
    show(state.panel.Text2[4], with_unit(shown, state.units.barometer_text));
    state.log_fields.logbaro = numtext(shown);
}

// Nothing for a humidity that is no number at all. Kept on purpose: a humidity of 0 is one, and ends the program.
std::optional<DewPoint> calcdew(const WeatherState& state) {
    const std::string humidity = outdoor_humidity_text(state);
    const double percent = Val(humidity);
    if (percent == 0 && humidity != "00") return std::nullopt;
    return dew_point(Val(state.readings.rawostemp), percent);
}

// A barometer that has failed since the start leaves the wet bulb without a pressure: then there is none.
void show_wet_bulb(WeatherState& state) {
    Readings& readings = state.readings;
    if (readings.BaroInvariant.empty()) return;
    const double temperature = Val(readings.rawostemp);
    const float bulb = wet_bulb(temperature, readings.dewnative, readings.Evap, readings.BaroValue);
    const double celsius = Round(static_cast<double>(bulb), 1);
    readings.WetBulbInvariant = sign_of(celsius) + numtext(std::fabs(celsius));
    state.additional.txtWetBulb.text = temperature_text(celsius, state.units).with_unit;
    state.additional.txtWBDep.text = difference_text(wet_bulb_depression(temperature, bulb), state.units).with_unit;
}

void show_cloud_base(WeatherState& state) {
    const CloudBase base = cloud_base(Val(state.readings.rawostemp), state.readings.dewnative);
    state.additional.txtCloudBase.text = numtext(base.metres) + " meters. (" + numtext(base.feet) + " feet)";
}

void show_dew_point(Copy& copy) {
    WeatherState& state = copy.state;
    Readings& readings = state.readings;
    const std::optional<DewPoint> dew = calcdew(state);
    if (!dew) return;

    // The sign is taken before the rounding, so "-0" can be shown; the number itself is then plain 0.
    const char sign = sign_of(dew->celsius);
    readings.Evap = dew->vapour_pressure;
    readings.dewnative = Round(dew->celsius, 1) + 0.0;
    readings.DewInvariant = sign + numtext(std::fabs(readings.dewnative));
    show_wet_bulb(state);
    show_cloud_base(state);
    check_dew_point(copy);

    const TemperatureText text = temperature_text(readings.dewnative, sign, state.units);
    show(state.panel.Text2[1], text.with_unit);
    state.log_fields.logdew = text.number;
}

}  // namespace

void group_af(Copy& copy) {
    tagged("AF group", [&] {
        if (!copy.state.run.fullystarted) return;
        if (sensor_sound(copy, Sensor::barometer)) show_barometer(copy);
        if (sensor_sound(copy, Sensor::outdoor_temperature) && sensor_sound(copy, Sensor::outdoor_humidity))
            show_dew_point(copy);
        show_weather_picture(copy);
    });
}

}  // namespace nimbry
