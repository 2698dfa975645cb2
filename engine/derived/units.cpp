#include "engine/derived/units.h"

#include "engine/derived/factors.h"

namespace nimbry {
namespace {

TemperatureUnit temperature_unit(const MainSettings& settings) {
    return settings.fTempF ? TemperatureUnit::fahrenheit : TemperatureUnit::celsius;
}

WindUnit wind_unit(const MainSettings& settings) {
    if (settings.fWindms) return WindUnit::ms;
    if (settings.fWindmph) return WindUnit::mph;
    if (settings.fWindknots) return WindUnit::knots;
    return WindUnit::kph;
}

BarometerUnit barometer_unit(const MainSettings& settings) {
    if (settings.fBarinhg) return BarometerUnit::inhg;
    if (settings.fBarhpa) return BarometerUnit::hpa;
    return BarometerUnit::mb;
}

RainUnit rain_unit(const MainSettings& settings) {
    return settings.fRainin ? RainUnit::inches : RainUnit::mm;
}

struct Display {
    double factor;
    const char* text;
};

Display display(WindUnit unit) {
    switch (unit) {
        case WindUnit::ms: return {1, "m/S"};
        case WindUnit::kph: return {kmh_per_ms, "km/h"};
        case WindUnit::mph: return {mph_per_ms, "MPH"};
        case WindUnit::knots: break;
    }
    return {knots_per_ms, "KT"};
}

Display display(BarometerUnit unit) {
    switch (unit) {
        case BarometerUnit::mb: return {1, "mB"};
        case BarometerUnit::hpa: return {1, "hPa"};
        case BarometerUnit::inhg: break;
    }
    return {inhg_per_hpa, "In.Hg"};
}

Display display(RainUnit unit) {
    return unit == RainUnit::mm ? Display{1, "mm"} : Display{inches_per_mm, "In."};
}

}  // namespace

Units units_from(const MainSettings& settings) {
    Units units;
    units.temperature = temperature_unit(settings);
    units.wind = wind_unit(settings);
    units.barometer = barometer_unit(settings);
    units.rain = rain_unit(settings);

    units.temperature_text = degrees(units.temperature == TemperatureUnit::celsius ? 'C' : 'F');
    const Display wind = display(units.wind);
    units.wcorr = wind.factor;
    units.wind_text = wind.text;
    const Display barometer = display(units.barometer);
    units.bcorr = barometer.factor;
    units.barometer_text = barometer.text;
    const Display rain = display(units.rain);
    units.rcorr = rain.factor;
    units.rain_text = rain.text;
    return units;
}

void keep_units(MainSettings& settings, const Units& units) {
    settings.fTempC = units.temperature == TemperatureUnit::celsius;
    settings.fTempF = units.temperature == TemperatureUnit::fahrenheit;
    settings.fWindknots = units.wind == WindUnit::knots;
    settings.fWindmph = units.wind == WindUnit::mph;
    settings.fWindms = units.wind == WindUnit::ms;
    settings.fWindkph = units.wind == WindUnit::kph;
    settings.fBarhpa = units.barometer == BarometerUnit::hpa;
    settings.fBarinhg = units.barometer == BarometerUnit::inhg;
    settings.fBarmb = units.barometer == BarometerUnit::mb;
    settings.fRainin = units.rain == RainUnit::inches;
    settings.fRainmm = units.rain == RainUnit::mm;
}

}  // namespace nimbry
