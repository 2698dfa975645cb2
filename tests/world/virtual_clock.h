#pragma once

#include <chrono>

#include "engine/ports/clock.h"

namespace nimbry::test {

/// The computer's clocks as a test turns them. Both run together with virtual time; the civil one can be set to any
/// moment at any time, as somebody at the machine could, and the monotonic one never notices.
class VirtualClock : public Clock {
public:
    /// Monday, 5 October 2026, 14:00:00: the moment at which every test begins that asks for no other.
    static constexpr CivilTime usual_start =
        std::chrono::local_days{std::chrono::October / 5 / 2026} + std::chrono::hours{14};

    explicit VirtualClock(CivilTime start = usual_start) : civil_at_set_(start) {}

    [[nodiscard]] CivilTime computer_time() const override {
        return civil_at_set_ + std::chrono::floor<std::chrono::seconds>(now_ - set_at_);
    }
    [[nodiscard]] double seconds_of_day() const override {
        using namespace std::chrono;
        const auto now = civil_at_set_ + (now_ - set_at_);
        return duration<double>(now - floor<days>(now)).count();
    }
    [[nodiscard]] CivilTime utc_time() const override { return computer_time() - zone_; }
    [[nodiscard]] Instant monotonic() const override { return now_; }

    /// Sets the computer's clock; it shows exactly this moment now and runs on from it.
    void set_computer_time(CivilTime time) {
        civil_at_set_ = time;
        set_at_ = now_;
    }

    /// What the local time is ahead of UTC from now on; 0 at first. The local time itself stays.
    void set_zone(std::chrono::minutes ahead_of_utc) { zone_ = ahead_of_utc; }

    /// Moves virtual time forward; never back. VirtualPauses does this; a test without one may do it itself.
    void advance_to(Instant instant) {
        if (instant > now_) now_ = instant;
    }
    void advance(MonotonicClock::duration by) { advance_to(now_ + by); }

private:
    Instant now_{std::chrono::hours{1}};
    Instant set_at_ = now_;
    CivilTime civil_at_set_;
    std::chrono::minutes zone_{0};
};

}  // namespace nimbry::test
