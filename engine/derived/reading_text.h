#pragma once

#include <string>

#include "engine/derived/units.h"

namespace nimbry {

// How a reading is written with its unit: on the panel, in the log, in the records.

/// A reading of wind, pressure or rain: a blank, the number, a blank, the unit.
///   with_unit(15.1, "km/h") = " 15.1 km/h"
[[nodiscard]] std::string with_unit(double value, const std::string& unit);

/// A temperature's number with its sign, and the same with the unit.
struct TemperatureText {
    std::string number;     ///< "+12.3"
    std::string with_unit;  ///< "+12.3 °C"
};

/// "-" below zero, else "+".
[[nodiscard]] char sign_of(double value);

/// A number that is in the unit of display already, with its own sign.
[[nodiscard]] TemperatureText signed_text(double value, const Units& units);

/// A temperature, degrees C with one decimal, in the unit of display. In Celsius the sign is the one given, whatever
/// the value: the station can say "-0", and so can a value that was rounded to 0 after its sign was taken. In
/// Fahrenheit the sign belongs to the converted and rounded value.
///   temperature_text(-0.0, '-', celsius) = "-0 °C"    temperature_text(-17.8, '-', fahrenheit) = "+0 °F"
[[nodiscard]] TemperatureText temperature_text(double celsius, char celsius_sign, const Units& units);

/// The same with the value's own sign.
[[nodiscard]] TemperatureText temperature_text(double celsius, const Units& units);

/// A difference of two temperatures, kelvin, in the unit of display: a difference has no freezing point to add.
///   difference_text(3.4, celsius) = "+3.4 °C"    difference_text(3.4, fahrenheit) = "+6.1 °F"
[[nodiscard]] TemperatureText difference_text(double kelvin, const Units& units);

}  // namespace nimbry
