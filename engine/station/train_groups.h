#pragma once

#include <optional>
#include <string>

#include "engine/core/copy.h"
#include "engine/ports/bytes.h"
#include "engine/station/frame_fault.h"

namespace nimbry {

// From a frame in hand (`RawBytes`, `GroupTag`) to the group routines. The station's line and a client's datagrams come
// in by the same two doors.

/// A lone wind group: tests its length and checksum, fills `DigitsCFLone`, and runs the wind routine, which clears
/// `dworkingb`. Does nothing before the first cycle. A bad frame is dropped without a word: `goodatab` and `dworkingb`
/// fall, what was received meanwhile is thrown away, tables and readings stay.
void docfgroup(Copy& copy);

/// A train: tests its length and the five checksums, 8F first. Only when all five hold, the five tables are filled and
/// the group routines run, 8F first; an impossible date ends it after that one. May wait (the cycle at its end).
/// Bad frames as above: one bad group loses the whole train, and the tables of the train before stay.
void domaingroup(Copy& copy);

/// Fills the five tables from a train whose length and five checksums hold; else changes nothing and tells why.
[[nodiscard]] std::optional<FrameFault> fill_train_tables(CommState& comm, const Bytes& train);

/// Sets the raw wind texts from `DigitsCFLone`: `rdatwindgs` "04.2", `rdatwindgd` "225", `rdatwindas`, `rdatwindad`.
void splitcf(WeatherState& state);

/// Sets the raw texts of all five groups of a train from their tables: time, date, humidities, temperatures and their
/// signs, barometer, trend, forecast, rain and wind. Digits are copied as they stand, leading zeros too.
void splitdomain(WeatherState& state);

/// The first byte of a frame as its tag: "CF", "8F".
[[nodiscard]] std::string tag_of(const Bytes& frame);

/// Counts a frame that is not used and remembers why.
void refuse(CommState& comm, FrameFault fault);

/// Throws away what the system holds for the port. A client leaves the line alone.
void empty_line(Copy& copy);

}  // namespace nimbry
