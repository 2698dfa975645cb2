#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/ports/clock.h"

namespace nimbry {

// Civil dates and their texts, in English whatever the locale.

/// The parts of a civil date-time. month 1..12, day 1..31, hour 0..23.
struct DateParts {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};
[[nodiscard]] DateParts parts_of(CivilTime time);

/// The date-time of its parts; nothing when there is no such date or time (31 Feb, 24:00:00, 29 Feb in a common year).
[[nodiscard]] std::optional<CivilTime> civil_time(const DateParts& parts);

/// "Jan" to "Dec" for 1 to 12, "" for anything else.
[[nodiscard]] std::string month_name(int month);

/// "January" to "December" for 1 to 12, "" for anything else.
[[nodiscard]] std::string full_month_name(int month);

/// 1 to 12 for "Jan" to "Dec" (any case), 0 for anything else.
[[nodiscard]] int month_number(std::string_view name);

/// "DD MMM YYYY HH:MM:SS": the form of every date in logs and files.
[[nodiscard]] std::string stamp_text(CivilTime time);

/// "DD MMM YYYY".
[[nodiscard]] std::string date_text(CivilTime time);

/// "HH:MM:SS".
[[nodiscard]] std::string clock_text(CivilTime time);

/// "YYYY-MM-DD HH:MM:SS".
[[nodiscard]] std::string iso_text(CivilTime time);

/// Reads "YYYY-MM-DD HH:MM:SS", every digit there and nothing around it; nothing when it is no valid date.
[[nodiscard]] std::optional<CivilTime> read_iso(std::string_view text);

/// Reads "D MMM YYYY HH:MM:SS" (one- or two-digit day, outer blanks ignored); nothing when it is no valid date.
[[nodiscard]] std::optional<CivilTime> parse_stamp(std::string_view text);

/// Minute boundaries from one time to another: floor(to / 60 s) - floor(from / 60 s). May be negative.
[[nodiscard]] long minutes_between(CivilTime from, CivilTime to);

/// A number with leading zeros to `width` digits; value 0 or more.
[[nodiscard]] std::string padded(int value, int width);

}  // namespace nimbry
