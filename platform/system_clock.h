#pragma once

#include "engine/ports/clock.h"

namespace nimbry::platform {

/// The computer's own clocks. The civil time follows the system's time zone (or TZ), daylight saving included.
class SystemClock : public Clock {
public:
    [[nodiscard]] CivilTime computer_time() const override;
    [[nodiscard]] double seconds_of_day() const override;
    [[nodiscard]] CivilTime utc_time() const override;
    [[nodiscard]] Instant monotonic() const override;
};

/// The civil time that the computer's zone gives to a moment, for file dates too.
[[nodiscard]] CivilTime civil_time(std::chrono::system_clock::time_point moment);

}  // namespace nimbry::platform
