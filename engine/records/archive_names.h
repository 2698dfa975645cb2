#pragma once

#include <string>
#include <string_view>

#include "engine/ports/clock.h"

namespace nimbry {

/// The name of a month's archive: `prefix`, the three-letter month of one time, the two-digit year of another, ".csv":
/// "logOct26.csv". Month and year come from two times because some names take them from two clocks.
[[nodiscard]] std::string archive_name(std::string_view prefix, CivilTime month_of, CivilTime year_of);

}  // namespace nimbry
