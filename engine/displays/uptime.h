#pragma once

#include <string>

#include "engine/ports/clock.h"

namespace nimbry {

/// How long the program has been running, in days, hours and minutes by the boundaries of minutes passed: "0 Days 1
/// Hour 0 Minutes". The singular stands at exactly 1. A start that lies in the future (the clock was set back) counts
/// as now.
[[nodiscard]] std::string uptime_text(CivilTime started, CivilTime now);

}  // namespace nimbry
