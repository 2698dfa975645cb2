#pragma once

#include <optional>

#include "engine/core/copy.h"
#include "engine/station/line_framer.h"

namespace nimbry {

/// The serial line's receive event: takes bytes from the port, has them framed, and sees each frame through the groups,
/// to the clients, and to the status label. Its errors bear the tag "OnComm".
///
/// Each entry is called in a conversation of its own. Only wake() may wait: the work on a train runs inside it, and the
/// other entries are called meanwhile. What arrives during that work is thrown away, never kept for the next frame.
///
/// Nothing is taken while `SerComReady` is clear or in a client; what arrives while the splash shows, while a setup
/// dialog holds processing off (`initflag`) or while a changeover runs (`changebusy`) is thrown away, with the frame
/// that was being gathered.
class OnComm {
public:
    /// `copy` must outlive this object.
    explicit OnComm(Copy& copy) : copy_(copy) {}

    /// Bytes may have arrived. Any such event, in any state, shows that the line lives (`ccheckflagb`).
    void line_readable();

    /// The line reported a fault: its error word goes to the status label, everything gathered is thrown away, and
    /// nothing is taken for 500 ms. When the device has gone, the port is then handed to line_lost()
    /// (core/serial_port.h).
    void line_fault(LineFault fault);

    /// The port has just been opened: framing starts clean.
    void line_opened();

    /// When wake() is wanted: the end of a settling time or of the 500 ms after a fault.
    [[nodiscard]] std::optional<Instant> wake_at() const { return framer_.wake_at(); }

    /// Does what is due: takes the count, and works on the frame if there is one.
    void wake();

    [[nodiscard]] LineFramer::State framing() const { return framer_.state(); }

private:
    [[nodiscard]] bool closed_to_data() const;
    [[nodiscard]] bool may_receive();
    void gather();
    void abandon();
    void stop_for_error();
    void end_hold();
    void drop_overrun();
    void work();
    void run_groups();
    void let_frame_go();

    Copy& copy_;
    LineFramer framer_;
    bool lost_ = false;  // the device has gone; told to line_lost() at the end of the hold
};

}  // namespace nimbry
