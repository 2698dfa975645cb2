#pragma once

#include <chrono>

namespace nimbry {

/// A civil date-time without a zone: what a wall clock or the station's own clock shows, to the second.
/// Arithmetic on it is plain calendar arithmetic; no daylight-saving change ever moves it.
using CivilTime = std::chrono::local_seconds;

/// The monotonic clock. Only the difference of two instants means anything; it never jumps.
struct MonotonicClock {
    using duration = std::chrono::microseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<MonotonicClock>;
    static constexpr bool is_steady = true;
};
using Instant = MonotonicClock::time_point;
using Milliseconds = std::chrono::milliseconds;

/// The two clocks of the computer. The station's clock is not here: it arrives in the data.
class Clock {
public:
    virtual ~Clock() = default;

    /// The computer's local date and time, naive. It may jump either way when somebody sets it.
    [[nodiscard]] virtual CivilTime computer_time() const = 0;

    /// The same as seconds since midnight, with their fraction: 0 up to 86400, and from midnight on 0 again.
    [[nodiscard]] virtual double seconds_of_day() const = 0;

    /// The same moment in UTC, naive; `computer_time() - utc_time()` is the zone's present offset.
    [[nodiscard]] virtual CivilTime utc_time() const = 0;

    /// The monotonic clock, for intervals, time-outs and timers.
    [[nodiscard]] virtual Instant monotonic() const = 0;
};

}  // namespace nimbry
