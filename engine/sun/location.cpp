#include "engine/sun/location.h"

#include <string>

#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

std::optional<double> coordinate(std::string_view text) {
    if (!IsNumeric(text)) return {};
    const double degrees = Val(repcomma(std::string(text)));
    if (degrees == no_location) return {};
    return degrees;
}

}  // namespace

std::optional<Location> entered_location(std::string_view latitude, std::string_view longitude) {
    const std::optional<double> north = coordinate(latitude);
    const std::optional<double> east = coordinate(longitude);
    if (!north || !east) return {};
    return Location{*north, *east};
}

}  // namespace nimbry
