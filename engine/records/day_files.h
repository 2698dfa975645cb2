#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/ports/clock.h"
#include "engine/records/day_extremes.h"

namespace nimbry {

// The bytes of `nimbrTDay.log` (33 lines) and `nimbrYDay.log` (32 lines): one value a line, CR LF after every line,
// base units, numbers as the shortest text of the single. docs/formats/day-files.md has the line by line table.

inline constexpr std::string_view today_file = "nimbrTDay.log";
inline constexpr std::string_view yesterday_file = "nimbrYDay.log";

[[nodiscard]] std::string today_text(CivilTime stamp, const TodayRecord& record);
[[nodiscard]] std::string yesterday_text(CivilTime stamp, const YesterdayRecord& record);

/// The date and time of the first line. Throws RunTimeError: past_end for an empty file, type_mismatch for a line that
/// is no date.
[[nodiscard]] CivilTime day_file_stamp(std::string_view text);

/// Reads a whole file, its stamp line too; what follows its last line is ignored. A decimal comma is taken as a point.
/// Throws RunTimeError: past_end for a missing line, type_mismatch for a line that should hold a number and does
/// not, or one beyond a thousand million. Line 20 and line 33 of today's file are taken as 0 instead.
[[nodiscard]] TodayRecord read_today(std::string_view text);
[[nodiscard]] YesterdayRecord read_yesterday(std::string_view text);

}  // namespace nimbry
