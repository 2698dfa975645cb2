#include "engine/derived/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace nimbry {

namespace {

// The code page from 0x80 to 0x9F; every other byte is the character of its own number.
constexpr std::array<char16_t, 32> upper_controls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80: € . ‚ ƒ „ … † ‡
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88: ˆ ‰ Š ‹ Œ . Ž .
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90: . ‘ ’ “ ” • – —
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98: ˜ ™ š › œ . ž Ÿ
};

/// What the first byte of a character says: how many more follow, and the smallest character that needs so many.
struct Lead {
    int more;
    std::uint32_t bits, smallest;
};

constexpr Lead no_lead{-1, 0, 0};

Lead lead_of(unsigned char byte) {
    if (byte < 0x80) return {0, byte, 0};
    if (byte >> 5U == 0b110) return {1, byte & 0x1FU, 0x80};
    if (byte >> 4U == 0b1110) return {2, byte & 0x0FU, 0x800};
    if (byte >> 3U == 0b11110) return {3, byte & 0x07U, 0x10000};
    return no_lead;
}

}  // namespace

char16_t character_of(unsigned char byte) {
    return byte >= 0x80 && byte <= 0x9F ? upper_controls[byte - 0x80U] : char16_t{byte};
}

char byte_of(char16_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
    const auto* place = std::find(upper_controls.begin(), upper_controls.end(), character);
    return place == upper_controls.end() ? '?' : static_cast<char>(0x80 + (place - upper_controls.begin()));
}

std::string utf8_text(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const unsigned character = character_of(static_cast<unsigned char>(byte));
        if (character < 0x80) {
            text += byte;
        } else if (character < 0x800) {
            text += static_cast<char>(0xC0U | character >> 6U);
            text += static_cast<char>(0x80U | (character & 0x3FU));
        } else {
            text += static_cast<char>(0xE0U | character >> 12U);
            text += static_cast<char>(0x80U | (character >> 6U & 0x3FU));
            text += static_cast<char>(0x80U | (character & 0x3FU));
        }
    }
    return text;
}

bool is_utf8(std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const Lead lead = lead_of(static_cast<unsigned char>(bytes[at++]));
        if (lead.more < 0) return false;
        std::uint32_t character = lead.bits;
        for (int n = 0; n < lead.more; ++n, ++at) {
            if (at == bytes.size() || (static_cast<unsigned char>(bytes[at]) >> 6U) != 0b10) return false;
            character = character << 6U | (static_cast<unsigned char>(bytes[at]) & 0x3FU);
        }
        const bool half_a_pair = character >= 0xD800 && character <= 0xDFFF;
        if (character < lead.smallest || character > 0x10FFFF || half_a_pair) return false;
    }
    return true;
}

std::string utf8_name(std::string_view name) {
    return is_utf8(name) ? std::string(name) : utf8_text(name);
}

}  // namespace nimbry
