#include <cmath>
#include <string>

#include "engine/alarms/alarm_checks.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/heat_index.h"
#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"
#include "engine/station/group_text.h"
#include "engine/station/groups.h"
#include "engine/station/sensor_faults.h"

namespace nimbry {
namespace {

using namespace digits_9f;

// The sign stays apart from the digits, so "-0.0" is shown as "-0".
TemperatureText shown(const std::string& sign, const std::string& digits, const Units& units) {
    return temperature_text(Val(sign + digits), sign.empty() ? '+' : sign.front(), units);
}

void show_outdoor_temperature(Copy& copy) {
    WeatherState& state = copy.state;
    Readings& readings = state.readings;
    readings.rawostemp = readings.rdatotempsign + repcomma(readings.rdatotemp);
    check_outdoor_temperature(copy);

    const TemperatureText text = shown(readings.rdatotempsign, readings.rdatotemp, state.units);
    Box& box = state.panel.Text2[0];
    show(box, text.with_unit);
    box.balloon = "Temperature " + text.with_unit;
    state.log_fields.logostemp = text.number;
}

void show_heat_index(Copy& copy) {
    WeatherState& state = copy.state;
    Readings& readings = state.readings;
    Box& box = state.panel.TxtHeatInd;
    const double temperature = Val(readings.rawostemp);
    if (temperature < heat_index_from) {
        box.text = "n.a.";
        box.balloon = "Heat Index n.a.";
        state.log_fields.loghind = "n.a.";
        readings.HeatInvariant.clear();
        return;
    }
    if (!sensor_sound(copy, Sensor::outdoor_humidity)) return;

    const HeatIndex index = heat_index(temperature, Val(readings.rdathumidity));
    readings.hinative = index.celsius;
    readings.HeatInvariant = sign_of(index.celsius) + numtext(std::fabs(index.celsius));
    // Fahrenheit shows the formula's own result: turned back from Celsius it could differ in its last digit.
    const TemperatureText text = state.units.temperature == TemperatureUnit::celsius
                                     ? signed_text(index.celsius, state.units)
                                     : signed_text(index.fahrenheit, state.units);
    box.text = text.with_unit;
    box.balloon = "Heat Index " + text.with_unit;
    state.log_fields.loghind = text.number;
}

// A record as text, and in `raw` its temperature.
std::string record_text(const WeatherState& state, const DigitField& field, const FlagField& minus,
                        const MomentFields& at, std::string& raw) {
    const DigitTable<68>& digits = state.comm.Digits9F;
    const std::string sign = flag_set(digits, minus) ? "-" : "+";
    const std::string number = field_text(digits, field, 1);
    raw = sign + number;
    return shown(sign, number, state.units).with_unit + moment_text(digits, at, "  ");
}

void show_temperature_records(WeatherState& state) {
    Readings& readings = state.readings;
    state.panel.TxtOShi.text = record_text(state, outdoor_high, outdoor_high_minus, outdoor_high_at, readings.rawoshi);
    state.panel.TxtOSLo.text = record_text(state, outdoor_low, outdoor_low_minus, outdoor_low_at, readings.rawoslo);
}

void show_indoor_temperature(Copy& copy) {
    WeatherState& state = copy.state;
    Readings& readings = state.readings;
    readings.rawintemp = readings.rdatitempsign + repcomma(readings.rdatitemp);
    check_indoor_temperature(copy);

    const TemperatureText text = shown(readings.rdatitempsign, readings.rdatitemp, state.units);
    Box& box = state.panel.Text2[8];
    show(box, text.with_unit);
    box.balloon = "Indoor Temperature " + text.with_unit;
    state.log_fields.logintemp = text.number;
}

}  // namespace

void group_9f(Copy& copy) {
    tagged("9F group", [&] {
        if (!copy.state.run.fullystarted) return;
        if (sensor_sound(copy, Sensor::outdoor_temperature)) {
            show_outdoor_temperature(copy);
            show_temperature_records(copy.state);
            show_heat_index(copy);
        } else {
            show_temperature_records(copy.state);
        }
        if (sensor_sound(copy, Sensor::indoor_temperature)) show_indoor_temperature(copy);
    });
}

}  // namespace nimbry
