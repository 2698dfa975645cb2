#pragma once

#include "engine/ports/clock.h"
#include "platform/descriptor.h"

namespace nimbry::simulator {

/// Waits for moments, and for the user to end the program. Made before any thread; SIGINT, SIGTERM and SIGHUP no longer
/// kill the process from then on but end every wait.
class Patience {
public:
    Patience();

    /// The monotonic clock.
    [[nodiscard]] static Instant now();

    /// Waits until a moment (not at all when it is past) and throws away what arrives on `line` meanwhile (-1: nothing
    /// does). False when the program shall end.
    [[nodiscard]] bool wait_until(Instant moment, int line);

    /// Waits without an end for the program's end.
    void wait_for_end(int line);

private:
    platform::Descriptor signals_;
};

}  // namespace nimbry::simulator
