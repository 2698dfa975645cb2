#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include "engine/ports/clock.h"

namespace nimbry::simulator {

/// "2026-10-31 23:58:00" or "2026-10-31 23:58"; nothing for anything else, 31 February included.
[[nodiscard]] std::optional<CivilTime> parse_moment(std::string_view text);

/// "08:15" or "08:15:30": seconds since midnight; nothing for anything else.
[[nodiscard]] std::optional<std::chrono::seconds> parse_time_of_day(std::string_view text);

/// "90s", "10m", "2h", "1d", or several in a row ("1h30m"), at most 10000 days; nothing for anything else.
[[nodiscard]] std::optional<std::chrono::seconds> parse_duration(std::string_view text);

/// A whole text that is a plain decimal number ("-4.7", "12"); nothing for anything else.
[[nodiscard]] std::optional<double> parse_number(std::string_view text);

}  // namespace nimbry::simulator
