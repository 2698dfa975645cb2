#include <algorithm>
#include <cmath>
#include <string>

#include "engine/alarms/alarm_checks.h"
#include "engine/core/process_cycle.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/factors.h"
#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"
#include "engine/derived/wind_chill.h"
#include "engine/station/compass.h"
#include "engine/station/group_text.h"
#include "engine/station/groups.h"
#include "engine/station/sensor_faults.h"

namespace nimbry {
namespace {

using namespace digits_cf;

const DigitTable<54>& digits_of(const WeatherState& state, WindSource source) {
    return source == WindSource::train ? state.comm.DigitsCF : state.comm.DigitsCFLone;
}

bool at_or_above(double value, double maximum) {
    return static_cast<float>(value) >= static_cast<float>(maximum);
}

void raise(double& maximum, double value) {
    if (at_or_above(value, maximum)) maximum = value;
}

std::string speed_text(double speed, const Units& units) {
    return speed < calm_below ? "Calm" : with_unit(speed, units.wind_text);
}

std::string speed_number(double speed) {
    return speed < calm_below ? "0" : numtext(speed);
}

// The scale widens for good: it never shrinks again.
void set_gauge(MainPanel& panel, double speed) {
    if (speed < calm_below) {
        panel.Gauge1.value = 0;
        return;
    }
    if (speed > panel.Gauge1.maximum) {
        panel.Gauge1.maximum = Round(speed, 0) + 1;
        panel.lblGaugeMax.text = numtext(panel.Gauge1.maximum);
    }
    panel.Gauge1.value = speed;
}

void show_gust(Copy& copy) {
    WeatherState& state = copy.state;
    Readings& readings = state.readings;
    const double gust_ms = Val(readings.rdatwindgs);
    // Kept on purpose: a calm gust keeps its number here, a calm average does not.
    readings.rawwindgs = numtext(Round(gust_ms, 1));
    if (static_cast<float>(Val(readings.rawwindgs)) > static_cast<float>(Val(readings.MaxGustMs)))
        readings.MaxGustMs = readings.rawwindgs;

    readings.GustSpeed = Round(gust_ms * state.units.wcorr, 1);
    if (readings.GustSpeed >= calm_below) {
        raise(readings.PeakGust, readings.GustSpeed);
        raise(readings.MaxGustToday, readings.GustSpeed);
        raise(readings.wstempsng, readings.GustSpeed);
    }
    show(state.panel.Text2[6], speed_text(readings.GustSpeed, state.units));
    set_gauge(state.panel, readings.GustSpeed);
    state.log_fields.logwindgs = speed_number(readings.GustSpeed);
}

void take_gust_mph(Readings& readings) {
    readings.GustMph = Round(Val(readings.rdatwindgs) * mph_per_ms, 1);
    raise(readings.MaxGustMph, readings.GustMph);
}

void show_average(WeatherState& state) {
    Readings& readings = state.readings;
    readings.rawwindas = repcomma(readings.rdatwindas);
    readings.AvgSpeed = Round(Val(readings.rdatwindas) * state.units.wcorr, 1);
    if (readings.AvgSpeed < calm_below)
        readings.rawwindas = "0";
    else
        raise(readings.MaxAvg, readings.AvgSpeed);
    show(state.panel.Text2[3], speed_text(readings.AvgSpeed, state.units));
    state.log_fields.logwindas = speed_number(readings.AvgSpeed);
}

void show_directions(WeatherState& state) {
    Readings& readings = state.readings;
    readings.gdirint = whole_number(readings.rdatwindgd);
    readings.adirint = whole_number(readings.rdatwindad);
    const std::string gust = numtext(readings.gdirint);
    const std::string average = numtext(readings.adirint);
    show(state.panel.Text2[7], "Gust " + gust + "\xB0");
    show(state.panel.TxtWinDir, "Avg. " + average + "\xB0");
    state.log_fields.logwindgdr = gust;
    state.log_fields.logwindad = average;

    if (const CompassWord* word = compass_word(readings.gdirint)) {
        readings.gwcompaf = word->brief;
        readings.gwcompas = word->full;
    }
    if (const CompassWord* word = compass_word(readings.adirint)) {
        readings.awcompaf = word->brief;
        readings.awcompas = word->full;
    }
}

void show_wind_record(WeatherState& state, const DigitTable<54>& digits) {
    state.readings.rawwindhi = field_text(digits, record_gust, 1);
    const double speed = Round(Val(state.readings.rawwindhi) * state.units.wcorr, 1);
    state.panel.TxtWindHiG.text = with_unit(speed, state.units.wind_text) + ", " +
                                  field_text(digits, record_direction) + "\xB0" + moment_text(digits, record_at, " ");
}

struct Chill {
    double celsius = 0;
    char sign = '+';
};

Chill wind_chill_of(const WeatherState& state, const DigitTable<54>& digits) {
    if (!state.settings.newchill) {
        const double magnitude = Val(field_text(digits, chill));
        return flag_set(digits, chill_minus) ? Chill{-magnitude, '-'} : Chill{magnitude, '+'};
    }
    const double exact = wind_chill(Val(state.readings.rawostemp), Val(state.readings.rawwindas) * kmh_per_ms);
    return {Round(exact, 1), sign_of(exact)};
}

void show_wind_chill(WeatherState& state, const DigitTable<54>& digits) {
    const Chill chill_now = wind_chill_of(state, digits);
    Readings& readings = state.readings;
    readings.chillnative = chill_now.celsius + 0.0;
    readings.ChillInvariant = chill_now.sign + numtext(std::fabs(chill_now.celsius));

    const TemperatureText text = temperature_text(readings.chillnative, chill_now.sign, state.units);
    Box& box = state.panel.TxtWindChill;
    show(box, text.with_unit);
    box.balloon = "Wind Chill " + text.with_unit;
    state.log_fields.logchill = text.number;
}

void decode_wind(Copy& copy, WindSource source) {
    WeatherState& state = copy.state;
    const DigitTable<54>& digits = digits_of(state, source);
    const bool train = source == WindSource::train;

    if (train) state.panel.lblLowBattery.visible = flag_set(digits, low_battery);
    if (!sensor_sound(copy, Sensor::wind, source)) return;

    const bool alarm = check_high_wind(copy);
    show_gust(copy);
    if (train && alarm) keep_wind_of_alarm(copy);
    take_gust_mph(state.readings);
    show_average(state);
    show_directions(state);
    show_wind_record(state, digits);
    state.readings.HaveWind = true;

    // A lone group can come before any temperature has been read: of nothing there is no chill.
    if (state.readings.rawostemp.empty() || !sensor_sound(copy, Sensor::outdoor_temperature)) return;
    show_wind_chill(state, digits);
    if (train) state.readings.ChillValid = true;
}

}  // namespace

void group_cf(Copy& copy) {
    tagged("CF Group", [&] {
        if (copy.state.run.fullystarted) decode_wind(copy, WindSource::train);
        processcycle(copy);
    });
}

void group_wg(Copy& copy) {
    tagged("WG group", [&] {
        const RunState& run = copy.state.run;
        if (run.fullystarted && run.LoneAllowed) {
            begin_lone_wind(copy.state.sensors);
            decode_wind(copy, WindSource::lone);
        }
        copy.state.comm.dworkingb.clear();
    });
}

}  // namespace nimbry
