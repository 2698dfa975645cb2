#pragma once

#include "engine/station/oncomm.h"
#include "tests/world/bare_copy.h"

namespace nimbry::test {

/// A BareCopy whose port is open and whose line is listened to: bytes and faults arrive as from the adapter, and the
/// receive event wakes up when it wants to. `after(30ms, ...)` and pauses.pause() move the time.
struct LiveLine : BareCopy {
    static constexpr std::string_view device = "/dev/ttyS0";

    OnComm oncomm{copy};

    LiveLine() {
        line.open(std::string(device));
        state.comm.SerComReady = true;
        state.settings.fromnet = false;
        pauses.set_wake_source([this] { return oncomm.wake_at(); }, [this] { oncomm.wake(); });
    }
    ~LiveLine() { pauses.end_all(); }

    /// Bytes reach the port and the adapter says so.
    void arrive(const Bytes& bytes) {
        line.arrive(bytes);
        readable();
    }
    void readable() {
        pauses.start([this] { oncomm.line_readable(); });
    }
    void fault(LineFault what) {
        if (what == LineFault::gone) line.close();
        pauses.start([this, what] { oncomm.line_fault(what); });
    }

    /// A whole train or lone group arrives and is worked on: 100 ms later.
    void deliver(const Bytes& frame) {
        arrive(frame);
        pauses.pause(Milliseconds{100});
    }
};

}  // namespace nimbry::test
