#pragma once

#include <optional>
#include <string_view>

namespace nimbry {

/// Where the station stands: decimal degrees, north and EAST positive.
struct Location {
    double latitude = 0;
    double longitude = 0;
};

/// What stands for a coordinate as long as no location is entered.
inline constexpr double no_location = 999;

/// The location of the two texts of the configuration; nothing when either is 999 (none entered) or no number. A
/// decimal comma is as good as a point.
[[nodiscard]] std::optional<Location> entered_location(std::string_view latitude, std::string_view longitude);

}  // namespace nimbry
