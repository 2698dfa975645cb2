#pragma once

#include <cstddef>
#include <optional>

#include "engine/ports/bytes.h"
#include "engine/ports/clock.h"

namespace nimbry {

/// Cuts the station's stream into frames by count and quiet: 27 bytes and nothing more 30 ms later are a lone wind
/// group, 141 bytes and nothing more 30 ms later are a train. There is no mark between frames and no gap is looked for:
/// the counts, and throwing away everything after each frame, are the whole synchronisation. What the bytes mean is not
/// its business.
///
/// It owns the bytes that have arrived and no line, no clock and no timer: time is an argument. The owner
///   - pushes bytes as they arrive;
///   - at wake_at(), first pushes whatever else the system holds for the port and then calls poll(): the count is taken
///     of everything that has arrived by then;
///   - works on the frame, throws away what has arrived meanwhile, and calls work_done().
///
///     State     Is left when
///     idle      the first byte comes                                        -> fill27
///     fill27    27 bytes or more are there                                  -> settle27, 30 ms
///     settle27  30 ms are over; exactly 27: a frame                         -> work
///                               more: the beginning of a train              -> fill141
///     fill141   141 bytes or more are there (tested at once)                -> settle141, 30 ms
///     settle141 30 ms are over; exactly 141: a frame                        -> work
///                               more: overran, all are thrown away          -> idle
///     work      work_done()                                                 -> idle
///     hold      500 ms are over                                             -> idle, or back to work
///
/// A fragment followed by silence waits for ever, and the bytes that come next complete the count.
class LineFramer {
public:
    static constexpr Milliseconds settling{30};
    static constexpr Milliseconds holding{500};
    /// More bytes than this are never kept. A line that keeps its pace never comes near it.
    static constexpr std::size_t buffer_limit = 4096;

    enum class State { idle, fill27, settle27, fill141, settle141, work, hold };

    /// Takes bytes that arrived at `now`. In work and hold they are not kept. False when there are more than
    /// buffer_limit: all are thrown away, and the owner should hold().
    bool push(const Bytes& bytes, Instant now);

    /// What poll() found.
    enum class Outcome {
        nothing,        ///< not due, or the count has to go on
        frame,          ///< frame() holds 27 or 141 bytes; the state is work
        train_overran,  ///< the bytes were not 141: they are gone
        hold_over,      ///< the hold has ended
    };

    /// The instant at which poll() is wanted; nothing while only bytes can bring it on.
    [[nodiscard]] std::optional<Instant> wake_at() const { return due_; }

    /// Ends a settling time or a hold that is due at `now`. A late call counts what is there by then.
    Outcome poll(Instant now);

    /// The frame in hand: valid from Outcome::frame to work_done().
    [[nodiscard]] const Bytes& frame() const { return bytes_; }

    /// The work on the frame has ended. A hold that began meanwhile lasts on.
    void work_done();

    /// A fault of the line: what was gathered is thrown away, and nothing is taken for 500 ms from `now`. A frame that
    /// is being worked on stays in hand.
    void hold(Instant now);

    /// Throws away a frame that is still being gathered. Work and hold go on.
    void abandon();

    [[nodiscard]] State state() const { return state_; }
    /// True while a frame is being gathered, from its first byte to the end of its settling.
    [[nodiscard]] bool gathering() const;
    /// How many bytes have been gathered.
    [[nodiscard]] std::size_t count() const { return gathering() ? bytes_.size() : 0; }

private:
    void settle_if_full(Instant now);
    void clear();

    State state_ = State::idle;
    bool working_ = false;  // a frame is in hand, in hold too
    Bytes bytes_;
    std::optional<Instant> due_;
};

}  // namespace nimbry
