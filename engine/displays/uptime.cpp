#include "engine/displays/uptime.h"

#include <algorithm>

#include "engine/derived/dates.h"

namespace nimbry {

namespace {

std::string counted(long count, const std::string& one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

}  // namespace

std::string uptime_text(CivilTime started, CivilTime now) {
    constexpr long day = 1440;
    const long minutes = std::max(0L, minutes_between(started, now));
    return counted(minutes / day, "Day") + " " + counted(minutes % day / 60, "Hour") + " " +
           counted(minutes % 60, "Minute");
}

}  // namespace nimbry
