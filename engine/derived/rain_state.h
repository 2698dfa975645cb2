#pragma once

#include <array>

namespace nimbry {

/// Rain derived from the station's one ever-growing counter, in mm. Singles, because they are compared as singles.
struct RainState {
    float rainnow = 0;       ///< the station's counter in this cycle
    float rainatchange = 0;  ///< the counter at the start of the rain day
    float raintoday = 0;     ///< rainnow - rainatchange

    std::array<int, 62> LastHourRing{};  ///< minute deltas, slots 1 to 60 in use
    int LastHourIndex = 0;               ///< next slot; 0: not yet primed
    static constexpr int LastHourLimit = 60;
    float LastHourPrev = 0;   ///< the counter at the last minute
    float LastHourDelta = 0;  ///< what the last minute added
    float LastHourSum = 0;    ///< mm in the last hour
};

}  // namespace nimbry
