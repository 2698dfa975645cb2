#pragma once

#include <array>
#include <optional>

#include "engine/ports/clock.h"

namespace nimbry {

/// Rain derived from the station's one ever-growing counter, in mm. Singles, because they are compared as singles.
struct RainState {
    float rainnow = 0;                ///< the station's counter in this cycle
    std::optional<float> rainbefore;  ///< the same in the cycle before; nothing before the first
    float rainatchange = 0;           ///< the counter at the start of the rain day
    float raintoday = 0;              ///< rainnow - rainatchange; negative after a reset of the counter

    std::array<int, 62> LastHourRing{};  ///< minute deltas, slots 1 to 60 in use
    int LastHourIndex = 0;               ///< next slot; 0: not yet primed
    static constexpr int LastHourLimit = 60;
    std::optional<float> LastHourPrev;  ///< the counter at the last minute; nothing after the ring came from a file
    float LastHourDelta = 0;            ///< what the last minute added
    float LastHourSum = 0;              ///< mm in the last hour

    bool midnight_written = false;  ///< the station's clock reads 00:00 and `rnslm.dat` has been taken care of
    float RainSinceMidnight = 0;

    /// The counter in the first cycle of the station's date: what rain since midnight falls back on.
    struct DateStart {
        std::chrono::local_days date;
        float counter = 0;
    };
    std::optional<DateStart> date_start;
};

}  // namespace nimbry
