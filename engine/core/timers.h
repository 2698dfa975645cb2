#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "engine/ports/clock.h"

namespace nimbry {

/// The timers of the main window, and that of the big display.
enum class TimerId {
    TimComFail,   ///< 60 s: no-data watch
    Timer2,       ///< 1.5 s: ends the flash of the lamp
    TimAlarm,     ///< 27 s: alarm sound and colours
    TimDisplay,   ///< 3.9 s: closes the status window
    TimerFTP,     ///< 10 s: upload schedule
    TimUI,        ///< 60 s: the small text files
    GrFailTimer,  ///< 10 s: one graph refresh when no update came
    timWU,        ///< 60 s: weather services
    TimLog,       ///< 60 s: weather log
    TimFTPTOT,    ///< 50 s: upload time-out
    Timer1,       ///< 4 s: turns the line of the big display
};
inline constexpr std::size_t timer_count = 11;

/// Which timers run and when each is due next. Owns no clock: time is an argument.
class Timers {
public:
    /// The fixed interval of a timer.
    [[nodiscard]] static Milliseconds interval(TimerId id);
    [[nodiscard]] static std::string_view name(TimerId id);

    /// Starts a timer: due one interval after `now`. One that is running starts its interval anew.
    void start(TimerId id, Instant now);
    /// The same, but a running timer is left as it is.
    void start_if_stopped(TimerId id, Instant now);
    void stop(TimerId id);
    void stop_all();
    [[nodiscard]] bool running(TimerId id) const;
    /// When a timer's next tick is due; nothing while it is stopped.
    [[nodiscard]] std::optional<Instant> due(TimerId id) const;

    /// When the next tick is due; nothing when no timer runs.
    [[nodiscard]] std::optional<Instant> wake_at() const;

    /// The timer whose tick is due at `now`, the one due longest first and of several due at one instant the first in
    /// the order of TimerId, or nothing. The tick counts as taken: the timer is due again one interval after `now`, so
    /// ticks missed by a suspended process are not made up.
    [[nodiscard]] std::optional<TimerId> take_due(Instant now);

private:
    std::array<std::optional<Instant>, timer_count> due_{};
};

}  // namespace nimbry
