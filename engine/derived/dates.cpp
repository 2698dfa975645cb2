#include "engine/derived/dates.h"

#include <array>

#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

constexpr std::array<std::string_view, 12> month_names{"January",   "February", "March",    "April",
                                                       "May",       "June",     "July",     "August",
                                                       "September", "October",  "November", "December"};

constexpr std::size_t short_name = 3;

bool is_month(int month) {
    return month >= 1 && month <= 12;
}

// Reads a text from its front; once something did not fit, everything after it fails too.
class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    int number(std::size_t least, std::size_t most) {
        int value = 0;
        std::size_t count = 0;
        for (; count < most && count < rest_.size() && rest_[count] >= '0' && rest_[count] <= '9'; ++count)
            value = value * 10 + (rest_[count] - '0');
        if (count < least) fits_ = false;
        rest_.remove_prefix(count);
        return value;
    }

    std::string_view letters(std::size_t count) {
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }

    void expect(char c) {
        if (rest_.empty() || rest_.front() != c) {
            fits_ = false;
        } else {
            rest_.remove_prefix(1);
        }
    }

    [[nodiscard]] bool at_end() const { return fits_ && rest_.empty(); }

private:
    std::string_view rest_;
    bool fits_ = true;
};

void read_clock(Reader& reader, DateParts& parts) {
    parts.hour = reader.number(2, 2);
    reader.expect(':');
    parts.minute = reader.number(2, 2);
    reader.expect(':');
    parts.second = reader.number(2, 2);
}

}  // namespace

DateParts parts_of(CivilTime time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date{day};
    const std::chrono::hh_mm_ss clock{time - day};
    return {.year = static_cast<int>(date.year()),
            .month = static_cast<int>(static_cast<unsigned>(date.month())),
            .day = static_cast<int>(static_cast<unsigned>(date.day())),
            .hour = static_cast<int>(clock.hours().count()),
            .minute = static_cast<int>(clock.minutes().count()),
            .second = static_cast<int>(clock.seconds().count())};
}

std::optional<CivilTime> civil_time(const DateParts& parts) {
    const auto within = [](int value, int least, int most) { return value >= least && value <= most; };
    // Tested before chrono sees them: it stores a month or day in a byte and would wrap 257 to 1.
    if (!within(parts.year, 1, 9999) || !is_month(parts.month) || !within(parts.day, 1, 31) ||
        !within(parts.hour, 0, 23) || !within(parts.minute, 0, 59) || !within(parts.second, 0, 59))
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year{parts.year},
                                           std::chrono::month{static_cast<unsigned>(parts.month)},
                                           std::chrono::day{static_cast<unsigned>(parts.day)}};
    if (!date.ok()) return std::nullopt;
    return CivilTime{std::chrono::local_days{date}} + std::chrono::hours{parts.hour} +
           std::chrono::minutes{parts.minute} + std::chrono::seconds{parts.second};
}

std::string month_name(int month) {
    return full_month_name(month).substr(0, short_name);
}

std::string full_month_name(int month) {
    return is_month(month) ? std::string(month_names[static_cast<std::size_t>(month - 1)]) : std::string();
}

int month_number(std::string_view name) {
    const std::string wanted = lower_case(name);
    for (int month = 1; month <= 12; ++month)
        if (lower_case(month_name(month)) == wanted) return month;
    return 0;
}

std::string stamp_text(CivilTime time) {
    return date_text(time) + " " + clock_text(time);
}

std::string date_text(CivilTime time) {
    const DateParts parts = parts_of(time);
    return padded(parts.day, 2) + " " + month_name(parts.month) + " " + padded(parts.year, 4);
}

std::string clock_text(CivilTime time) {
    const DateParts parts = parts_of(time);
    return padded(parts.hour, 2) + ":" + padded(parts.minute, 2) + ":" + padded(parts.second, 2);
}

std::string iso_text(CivilTime time) {
    const DateParts parts = parts_of(time);
    return padded(parts.year, 4) + "-" + padded(parts.month, 2) + "-" + padded(parts.day, 2) + " " + clock_text(time);
}

std::optional<CivilTime> read_iso(std::string_view text) {
    Reader reader(text);
    DateParts parts;
    parts.year = reader.number(4, 4);
    reader.expect('-');
    parts.month = reader.number(2, 2);
    reader.expect('-');
    parts.day = reader.number(2, 2);
    reader.expect(' ');
    read_clock(reader, parts);
    return reader.at_end() ? civil_time(parts) : std::nullopt;
}

std::optional<CivilTime> parse_stamp(std::string_view text) {
    const std::string inner = trimmed(text);
    Reader reader(inner);
    DateParts parts;
    parts.day = reader.number(1, 2);
    reader.expect(' ');
    parts.month = month_number(reader.letters(short_name));
    reader.expect(' ');
    parts.year = reader.number(4, 4);
    reader.expect(' ');
    read_clock(reader, parts);
    return reader.at_end() ? civil_time(parts) : std::nullopt;
}

long minutes_between(CivilTime from, CivilTime to) {
    using std::chrono::floor;
    using std::chrono::minutes;
    return static_cast<long>((floor<minutes>(to) - floor<minutes>(from)).count());
}

std::string padded(int value, int width) {
    std::string digits = std::to_string(value);
    const auto wanted = static_cast<std::size_t>(width);
    if (digits.size() < wanted) digits.insert(0, wanted - digits.size(), '0');
    return digits;
}

}  // namespace nimbry
