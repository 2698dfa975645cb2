#pragma once

#include <QTimer>
#include <algorithm>
#include <chrono>

#include "engine/ports/clock.h"

namespace nimbry::platform {

/// Arms a single-shot timer for the instant `due`, seen from `now`: never before it and less than 1 ms after it; at
/// once when it has passed.
inline void arm_for(QTimer& timer, Instant due, Instant now) {
    using std::chrono::ceil, std::chrono::hours;
    const Milliseconds wait = std::clamp(ceil<Milliseconds>(due - now), Milliseconds::zero(), Milliseconds(hours(24)));
    timer.start(wait);
}

}  // namespace nimbry::platform
