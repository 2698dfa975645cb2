#pragma once

#include <string>
#include <string_view>

namespace nimbry {

// The forms in which tags print a value.

/// Degrees Celsius to Fahrenheit, one decimal; 0 for a text that is no number.
[[nodiscard]] float ctof(std::string_view celsius);

/// "+" from 0 upwards, "-" below; nothing for a text that is no number.
[[nodiscard]] std::string fsign(std::string_view value);

/// A metric temperature in Fahrenheit with its sign: "-4" for "-20". Without a reading it is "+0".
[[nodiscard]] std::string fahrenheit(std::string_view metric);

/// The same for the tags that say so. Kept on purpose: the sign goes before a number that has one already, so "-30"
/// gives "--22".
[[nodiscard]] std::string fahrenheit_double_sign(std::string_view metric);

/// A metric temperature as the station gives it, brought to its shortest form: "+08.1" to "+8.1", "-00.0" to "-0".
/// Empty for an empty text.
[[nodiscard]] std::string metrictext(std::string_view raw);

/// The number of a text with its unit: its first word. Empty for an empty text and for "Error".
[[nodiscard]] std::string number_alone(std::string_view with_unit);

/// The same of a wind speed: "0" when it is calm.
[[nodiscard]] std::string speed_alone(std::string_view with_unit);

/// Inches of rain, two decimals.
[[nodiscard]] std::string inches_of_rain(double mm);

/// Inches of mercury, two decimals.
[[nodiscard]] std::string inches_of_mercury(double hpa);

/// The fixed units of speed, whatever the unit of display is.
enum class SpeedUnit { ms, kmh, mph, knots };

/// A speed in one of them, one decimal.
[[nodiscard]] double converted(double ms, SpeedUnit unit);

/// The same as text; `calm_word` for 0.2 m/s and less, compared as singles.
[[nodiscard]] std::string speed_or(std::string_view calm_word, double ms, SpeedUnit unit);

}  // namespace nimbry
