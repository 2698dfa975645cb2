#pragma once

#include <optional>

#include "engine/core/copy.h"

namespace nimbry {

/// When what is published by schedule goes next; nothing for what is off or whose timer does not run yet. The mail's
/// time is the station's, all others are the computer's.
struct NextRuns {
    std::optional<CivilTime> ftp, mail, weather, aprs;
};
[[nodiscard]] NextRuns next_runs(const Copy& copy);

}  // namespace nimbry
