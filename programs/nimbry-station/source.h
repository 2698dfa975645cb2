#pragma once

#include <optional>

#include "engine/ports/bytes.h"
#include "engine/ports/clock.h"

namespace nimbry::simulator {

/// Time on the line: real time since the play began, whatever the speed of the station's clock.
using LineTime = MonotonicClock::duration;

/// 9600 baud, 8 data bits with start and stop bit, as measured between bytes of a station.
inline constexpr LineTime byte_time{1040};

/// The pause kept after a frame before the next may begin. A receiver knows a frame by 30 ms without a byte and then
/// has its work to do; bytes that come meanwhile are lost to it.
inline constexpr LineTime frame_pause{60'000};

/// One thing that happens on the line.
struct Deed {
    enum class What {
        send,    ///< `bytes` go out, `pace` apart
        unplug,  ///< the line goes away
        replug,  ///< it is there again
    } what = What::send;
    LineTime at{0};  ///< when it begins, never before the end of the deed before it
    Bytes bytes{};
    LineTime pace = byte_time;  ///< zero: all at once
};

/// Who tells what happens on the line, deed by deed.
class Source {
public:
    virtual ~Source() = default;

    /// The next deed. `now` is where the line's time stands: a deed's time may lie before it, it is then late.
    /// Nothing means that nothing will ever happen again.
    [[nodiscard]] virtual std::optional<Deed> next(LineTime now) = 0;
};

}  // namespace nimbry::simulator
