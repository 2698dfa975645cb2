#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/ports/clock.h"
#include "engine/ports/serial_line.h"

namespace nimbry {

// A stretch of a serial line as text: what came, and when. The simulated station records and plays it, and the tests
// keep streams in it. The form is told in docs/formats/stream-file.md; this is the only reader and writer of it.

/// Something that came from the line: bytes, or a fault.
struct StreamPiece {
    MonotonicClock::duration at{0};  ///< from the start of the stream; 0 or more, to the microsecond
    Bytes bytes;                     ///< at least one, unless this is a fault
    std::optional<LineFault> fault;  ///< then there are no bytes

    friend bool operator==(const StreamPiece&, const StreamPiece&) = default;
};

struct StreamFile {
    std::string shows;  ///< what there is to see, one line, not empty
    std::string from;   ///< where it comes from, one line, not empty
    CivilTime clock{};  ///< the computer's date-time at the start of the stream
    /// How far apart the bytes of one piece come: its first byte at `at`, the next this much later. Zero: all at once.
    MonotonicClock::duration pace{0};
    MonotonicClock::duration lasts{0};  ///< the stream's whole length, if silence follows the last piece; else zero
    std::vector<StreamPiece> pieces;    ///< in the order of their times

    friend bool operator==(const StreamFile&, const StreamFile&) = default;
};

/// What read_stream() made of a text: the stream, or the reason why it is none, with its line ("line 7: ...").
struct StreamReading {
    std::optional<StreamFile> stream;
    std::string error;  ///< empty when there is a stream
};

/// Reads the text form. Line ends are LF or CR LF. Any other text than a stream gives an error and never throws.
[[nodiscard]] StreamReading read_stream(std::string_view text);

/// The text form. read_stream() of it gives the same stream.
[[nodiscard]] std::string write_stream(const StreamFile& stream);

/// The parts of it, for a recorder that writes while it listens: the head with the blank line after it, and one piece.
[[nodiscard]] std::string write_stream_head(const StreamFile& stream);
[[nodiscard]] std::string write_stream_piece(const StreamPiece& piece);

}  // namespace nimbry
