#include "engine/station/digits.h"

#include <array>
#include <string_view>

#include "engine/derived/hexadecimal.h"

namespace nimbry {

namespace {

// A train is 282 digits, and a busy relay decodes thousands of trains in a moment: both digits of a byte come from one
// look-up.
using DigitPairs = std::array<std::array<char, 2>, 256>;

constexpr DigitPairs all_digit_pairs() {
    DigitPairs pairs{};
    for (std::size_t byte = 0; byte < pairs.size(); ++byte)
        pairs[byte] = {upper_hexadecimal[byte / 16], upper_hexadecimal[byte % 16]};
    return pairs;
}

constexpr DigitPairs digit_pairs = all_digit_pairs();

}  // namespace

void write_digits(std::span<const std::uint8_t> bytes, std::span<char> digits) {
    char* out = digits.data();
    for (const std::uint8_t byte : bytes) {
        *out++ = digit_pairs[byte][0];
        *out++ = digit_pairs[byte][1];
    }
}

int hex_value(char digit) {
    const std::size_t value = upper_hexadecimal.find(digit);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

namespace detail {

std::string field_text(std::span<const char> digits, const DigitField& field, std::size_t decimals) {
    std::string text;
    const std::size_t count = field.count();
    for (std::size_t n = 0; n < count; ++n) {
        if (decimals > 0 && n == count - decimals) text += '.';
        const char digit = digits[field.places[n] - std::size_t{1}];
        if (n == 0 && field.first_mask != 0)
            text += std::to_string(hex_value(digit) & field.first_mask);
        else
            text += digit;
    }
    return text;
}

}  // namespace detail

}  // namespace nimbry
