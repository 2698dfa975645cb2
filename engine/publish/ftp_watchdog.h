#pragma once

#include "engine/core/copy.h"

namespace nimbry {

// TimFTPTOT, a tick every 50 seconds, watches over an upload: a server that says nothing for too long ends it. It is
// started anew at every sign of life, and runs only while somebody waits. Its tick is ftp_time_out().

/// How many ticks of silence end an upload: as many as the interval has minutes, and four from five minutes on. No
/// minutes are one tick.
[[nodiscard]] int watchdog_limit(int FtpMinutes);

/// Counts from now.
void restart_watchdog(Copy& copy);

/// Stops it; what it has counted is forgotten.
void stop_watchdog(Copy& copy);

/// A tick. The one that is too much ends the upload: everybody who waits for its server gives up, and the user is told.
void ftp_time_out(Copy& copy);

/// Breaks off the upload that is under way and clears the marks of all retries. `uloadftpbusy` is clear once it has
/// returned, which takes a moment.
void cancel_ftp(Copy& copy);

/// A long upload must not be taken for a station's silence, nor an alarm's sound be repeated in it: both timers rest.
void rest_timers(Copy& copy);

/// They go on, those that ran before.
void wake_timers(Copy& copy);

}  // namespace nimbry
