#pragma once

#include <string>
#include <string_view>

namespace nimbry {

// Turning readings into the program's texts and back. All of it is independent of the locale.

/// Rounds to `digits` decimals (0 or more), ties to the even digit, in doubles: nearbyint(value * 10^digits) /
/// 10^digits.
///   Round(1.15, 1) = 1.2   Round(17.05, 1) = 17   Round(1008.25, 1) = 1008.2
[[nodiscard]] double Round(double value, int digits);

/// The shortest plain text of a number: decimal point, "0" before it, no trailing zeros, no exponent, minus zero is
/// "0". A double has at most 15 significant digits; a single the fewest digits that read back as the same single. The
/// value must be finite: an infinite one, or none at all, is RunTimeError overflow.
///   numtext(0.28) = "0.28"   numtext(-0.0) = "0"   numtext(12.3f) = "12.3"   numtext(1e5) = "100000"
[[nodiscard]] std::string numtext(double value);
[[nodiscard]] std::string numtext(float value);
[[nodiscard]] std::string numtext(int value);

/// The number that a text begins with; never fails. Blanks and tabs are skipped anywhere before and between sign and
/// digits; then a sign, digits, one point, an optional exponent (E or D); it stops at the first other character. No
/// digits give 0, and so does a number beyond the range of a double; a comma stops the number.
///   Val("- 12.3") = -12.3   Val("1E2") = 100   Val("12,3") = 12   Val("EE") = 0
[[nodiscard]] double Val(std::string_view text);

/// The whole part of Val(text), kept within the range of an int.
///   whole_number("15.9") = 15   whole_number("-0.5") = 0   whole_number("1E99") = 2147483647
[[nodiscard]] int whole_number(std::string_view text);

/// True when the trimmed text is a complete number: optional sign, digits with at most one point or comma, optional
/// exponent, at least one digit, nothing else. The empty text is not.
[[nodiscard]] bool IsNumeric(std::string_view text);

/// The text without blanks at both ends.
[[nodiscard]] std::string trimmed(std::string_view text);

/// ASCII letters in lower case; every other byte stays.
[[nodiscard]] std::string lower_case(std::string_view text);

/// Every "," becomes ".": what a decimal comma looks like in tag texts, logs and uploads.
[[nodiscard]] std::string repcomma(std::string text);

/// Replaces every `from`, which must not be empty, by `to`; what has been put in is not looked at again.
void replace_all(std::string& text, std::string_view from, std::string_view to);

/// Joins a value and its unit into one token: " °" to "°", "°" to "", " %" to "%", and likewise
/// " m/S", " km/h", " MPH", " KT", " mB", " hPa", " mm" and " In", in this order, each over the whole text.
///   repdegree("+22.6 \xB0" "C") = "+22.6C"   repdegree("29.92 In.Hg") = "29.92In.Hg"
[[nodiscard]] std::string repdegree(std::string text);

/// Degrees Celsius to degrees Fahrenheit, rounded to one decimal: Round(celsius * 9 / 5 + 32, 1). The name is the
/// program's own.
[[nodiscard]] float roundnst(double celsius);

/// The same of a text that may carry a decimal comma; 0 when it is not numeric.
[[nodiscard]] float roundnst(std::string_view celsius);

/// Cuts to `digits` decimals toward zero: trunc(value * 10^digits) / 10^digits.
[[nodiscard]] float roundsig(double value, int digits);

}  // namespace nimbry
