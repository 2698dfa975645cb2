#include "engine/derived/reading_text.h"

#include <cmath>

#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

TemperatureText joined(char sign, const std::string& magnitude, const Units& units) {
    std::string number = sign + magnitude;
    return {number, number + units.temperature_text};
}

}  // namespace

std::string with_unit(double value, const std::string& unit) {
    return " " + numtext(value) + " " + unit;
}

char sign_of(double value) {
    return value < 0 ? '-' : '+';
}

TemperatureText signed_text(double value, const Units& units) {
    return joined(sign_of(value), numtext(std::fabs(value)), units);
}

TemperatureText temperature_text(double celsius, char celsius_sign, const Units& units) {
    if (units.temperature == TemperatureUnit::celsius) return joined(celsius_sign, numtext(std::fabs(celsius)), units);
    const float fahrenheit = roundnst(celsius);
    return joined(sign_of(static_cast<double>(fahrenheit)), numtext(std::fabs(fahrenheit)), units);
}

TemperatureText temperature_text(double celsius, const Units& units) {
    return temperature_text(celsius, sign_of(celsius), units);
}

TemperatureText difference_text(double kelvin, const Units& units) {
    return signed_text(units.temperature == TemperatureUnit::celsius ? kelvin : Round(kelvin * 9 / 5, 1), units);
}

}  // namespace nimbry
