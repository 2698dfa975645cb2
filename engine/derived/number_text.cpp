#include "engine/derived/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <system_error>
#include <type_traits>
#include <utility>

#include "engine/core/run_time_error.h"

namespace nimbry {
namespace {

double power_of_ten(int digits) {
    double power = 1;
    for (int i = 0; i < digits; ++i) power *= 10;
    return power;
}

// Lays out a "-d.ddde+xx" text without its exponent. Asking to_chars for a fixed form instead would print digits beyond
// the 15 that a double is known by.
std::string laid_out(std::string_view scientific) {
    const bool negative = scientific.front() == '-';
    if (negative) scientific.remove_prefix(1);
    const std::size_t e = scientific.find('e');
    std::string_view power = scientific.substr(e + 1);
    if (power.front() == '+') power.remove_prefix(1);
    int exponent = 0;
    std::from_chars(power.data(), power.data() + power.size(), exponent);

    std::array<char, 32> held{};
    auto* end =
        std::remove_copy(scientific.begin(), scientific.begin() + static_cast<std::ptrdiff_t>(e), held.data(), '.');
    while (end != held.data() && *(end - 1) == '0') --end;
    const std::string_view digits(held.data(), static_cast<std::size_t>(end - held.data()));
    if (digits.empty()) return "0";

    // One text of the right size: every box of every cycle comes through here.
    std::string text;
    text.reserve(digits.size() + static_cast<std::size_t>(std::abs(exponent)) + 3);
    if (negative) text += '-';
    if (exponent < 0) {
        text += "0.";
        text.append(static_cast<std::size_t>(-exponent) - 1, '0').append(digits);
        return text;
    }
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= whole) return text.append(digits).append(whole - digits.size(), '0');
    return text.append(digits.substr(0, whole)).append(1, '.').append(digits.substr(whole));
}

// Nearly every reading is a decimal of few digits and at most three places, and dividing integers writes that far
// faster than the conversion of any number. A decimal that a Number surely tells from all others (15 digits for a
// double, 6 for a single) and that rounds to this very number is its shortest text.
template <class Number>
bool short_text(Number value, std::string& text) {
    constexpr Number thousand = 1000;
    constexpr auto most = static_cast<Number>(std::is_same_v<Number, float> ? 999'999.0 : 999'999'999'999'999.0);
    const Number thousandths = std::nearbyint(value * thousand);
    if (!(std::abs(thousandths) <= most) || thousandths / thousand != value) return false;

    auto left = static_cast<std::uint64_t>(std::abs(thousandths));
    std::array<char, 20> digits{};
    char* const end = digits.data() + digits.size();
    char* begin = end;
    int places = 3;
    const auto last_digit = [](std::uint64_t number) { return static_cast<char>('0' + number % 10); };
    for (; places > 0 && left % 10 == 0; --places) left /= 10;
    if (places > 0) {
        for (; places > 0; --places) {
            *--begin = last_digit(left);
            left /= 10;
        }
        *--begin = '.';
    }
    do {
        *--begin = last_digit(left);
        left /= 10;
    } while (left > 0);
    if (thousandths < 0) *--begin = '-';
    text.assign(begin, end);
    return true;
}

template <class Number, class... Precision>
std::string number_text(Number value, Precision... precision) {
    if (std::string text; short_text(value, text)) return text;
    if (!std::isfinite(value)) throw RunTimeError{ErrorNumber::overflow};
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, precision...).ptr;
    return laid_out({text.data(), static_cast<std::size_t>(end - text.data())});
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool is_sign(char c) {
    return c == '+' || c == '-';
}
bool is_exponent_mark(char c) {
    return c == 'E' || c == 'e' || c == 'D' || c == 'd';
}

// Moves the digits at the front of `rest` to `taken`; true when there was one.
bool take_digits(std::string_view& rest, std::string& taken) {
    const auto end = std::find_if_not(rest.begin(), rest.end(), is_digit);
    const auto count = static_cast<std::size_t>(end - rest.begin());
    taken.append(rest.substr(0, count));
    rest.remove_prefix(count);
    return count > 0;
}

// Moves digits, one point and an exponent from the front of `rest` to `taken`; true when there was a digit before the
// exponent. An exponent without digits is left where it stands.
bool take_number(std::string_view& rest, std::string& taken) {
    bool any = take_digits(rest, taken);
    if (!rest.empty() && rest.front() == '.') {
        taken += '.';
        rest.remove_prefix(1);
        any = take_digits(rest, taken) || any;
    }
    if (!any || rest.empty() || !is_exponent_mark(rest.front())) return any;

    std::string_view after = rest.substr(1);
    std::string exponent = "e";
    if (!after.empty() && is_sign(after.front())) {
        exponent += after.front();
        after.remove_prefix(1);
    }
    if (take_digits(after, exponent)) {
        taken += exponent;
        rest = after;
    }
    return any;
}

// The number at the front of a text; 0 when there is none or it is beyond a double.
double any_number(std::string_view text) {
    std::string number;
    double value = 0;
    if (!take_number(text, number)) return 0;
    return std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc{} ? value : 0;
}

// The same for a number of up to 15 digits without an exponent; nothing for any other. Both parts of the quotient are
// exact in doubles then, so that it is the double nearest to the decimal.
std::optional<double> short_number(std::string_view text) {
    constexpr int most = 15;
    std::int64_t digits = 0;
    double divisor = 1;
    int count = 0;
    bool behind_point = false;
    for (const char c : text) {
        if (c == '.' && !behind_point) {
            behind_point = true;
        } else if (is_digit(c)) {
            if (++count > most) return std::nullopt;
            digits = digits * 10 + (c - '0');
            if (behind_point) divisor *= 10;
        } else if (is_exponent_mark(c)) {
            return std::nullopt;
        } else {
            break;
        }
    }
    return static_cast<double>(digits) / divisor;
}

void skip_blanks(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
}

}  // namespace

double Round(double value, int digits) {
    const double power = power_of_ten(digits);
    return std::nearbyint(value * power) / power;
}

std::string numtext(double value) {
    return number_text(value, 14);
}
std::string numtext(float value) {
    return number_text(value);
}
std::string numtext(int value) {
    return std::to_string(value);
}

double Val(std::string_view text) {
    skip_blanks(text);
    bool negative = false;
    if (!text.empty() && is_sign(text.front())) {
        negative = text.front() == '-';
        text.remove_prefix(1);
        skip_blanks(text);
    }
    const std::optional<double> known = short_number(text);
    const double value = known ? *known : any_number(text);
    return negative ? -value : value;
}

int whole_number(std::string_view text) {
    return static_cast<int>(std::clamp(std::trunc(Val(text)), double{INT_MIN}, double{INT_MAX}));
}

bool IsNumeric(std::string_view text) {
    std::string number = repcomma(trimmed(text));
    std::string_view rest = number;
    if (!rest.empty() && is_sign(rest.front())) rest.remove_prefix(1);
    std::string taken;
    return take_number(rest, taken) && rest.empty();
}

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string lower_case(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

std::string repcomma(std::string text) {
    std::replace(text.begin(), text.end(), ',', '.');
    return text;
}

void replace_all(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string repdegree(std::string text) {
    // Kept on purpose: " In" also hits " In.Hg", " In." and " Indoor", and " mm" the front of " mmm".
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 11> replacements{{
        {" \xB0", "\xB0"},
        {"\xB0", ""},
        {" %", "%"},
        {" m/S", "m/S"},
        {" km/h", "km/h"},
        {" MPH", "MPH"},
        {" KT", "KT"},
        {" mB", "mB"},
        {" hPa", "hPa"},
        {" mm", "mm"},
        {" In", "In"},
    }};
    for (const auto& [from, to] : replacements) replace_all(text, from, to);
    return text;
}

float roundnst(double celsius) {
    return static_cast<float>(Round(celsius * 9 / 5 + 32, 1));
}

float roundnst(std::string_view celsius) {
    return IsNumeric(celsius) ? roundnst(Val(repcomma(std::string(celsius)))) : 0.0F;
}

float roundsig(double value, int digits) {
    const double power = power_of_ten(digits);
    return static_cast<float>(std::trunc(value * power) / power);
}

}  // namespace nimbry
