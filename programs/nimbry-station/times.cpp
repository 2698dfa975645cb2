#include "programs/nimbry-station/times.h"

#include <charconv>
#include <cmath>
#include <string>

#include "engine/derived/dates.h"

namespace nimbry::simulator {
namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// True when the text has the shape of the pattern: '0' stands for any digit, other characters for themselves.
bool has_shape(std::string_view text, std::string_view pattern) {
    if (text.size() != pattern.size()) return false;
    for (std::size_t n = 0; n < text.size(); ++n) {
        if (pattern[n] == '0' ? !is_digit(text[n]) : text[n] != pattern[n]) return false;
    }
    return true;
}

int number_at(std::string_view text, std::size_t first, std::size_t count) {
    int value = 0;
    for (const char c : text.substr(first, count)) value = value * 10 + (c - '0');
    return value;
}

std::optional<std::chrono::seconds> unit_named(char letter) {
    using namespace std::chrono_literals;
    switch (letter) {
        case 's': return 1s;
        case 'm': return 1min;
        case 'h': return 1h;
        case 'd': return 24h;
        default: return std::nullopt;
    }
}

}  // namespace

std::optional<CivilTime> parse_moment(std::string_view text) {
    constexpr std::string_view without_seconds = "2026-10-31 23:58";
    return read_iso(text.size() == without_seconds.size() ? std::string(text) + ":00" : std::string(text));
}

std::optional<std::chrono::seconds> parse_time_of_day(std::string_view text) {
    const bool with_seconds = has_shape(text, "00:00:00");
    if (!with_seconds && !has_shape(text, "00:00")) return std::nullopt;
    const int hour = number_at(text, 0, 2), minute = number_at(text, 3, 2);
    const int second = with_seconds ? number_at(text, 6, 2) : 0;
    if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return std::chrono::hours(hour) + std::chrono::minutes(minute) + std::chrono::seconds(second);
}

std::optional<std::chrono::seconds> parse_duration(std::string_view text) {
    constexpr std::chrono::seconds longest = std::chrono::hours(24 * 10000);
    std::chrono::seconds total{0};
    if (text.empty()) return std::nullopt;
    while (!text.empty()) {
        int count = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
        const auto used = static_cast<std::size_t>(end - text.data());
        if (error != std::errc() || !is_digit(text.front()) || used == text.size()) return std::nullopt;
        const auto unit = unit_named(text[used]);
        if (!unit || count > longest / *unit) return std::nullopt;
        total += count * *unit;
        if (total > longest) return std::nullopt;
        text.remove_prefix(used + 1);
    }
    return total;
}

std::optional<double> parse_number(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
    return value;
}

}  // namespace nimbry::simulator
