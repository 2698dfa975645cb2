#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "engine/core/busy_flag.h"
#include "engine/ports/bytes.h"
#include "engine/station/frame_fault.h"

namespace nimbry {

/// One group as hexadecimal digits, counted from 1 as the group layouts do (docs/formats/stream.md): digit 1 and 2 are
/// the tag. An unset table (nothing received yet) holds no digits: operator() then gives 0, which is no digit.
template <std::size_t Count>
struct DigitTable {
    std::array<char, std::size_t{Count}> digits{};
    bool set = false;

    /// The n-th digit as an upper-case hexadecimal character, n from 1 to Count.
    [[nodiscard]] char operator()(int n) const { return digits[static_cast<std::size_t>(n - 1)]; }
};

/// What the line has delivered and where its handling stands.
///
/// Fields marked (kept) are written for whoever looks at the state; nothing in the program reads them.
struct CommState {
    bool SerComReady = false;  ///< the port has been opened for good: receive events are taken
    bool splashing = false;    ///< the splash still shows: bytes are thrown away
    bool initflag = false;     ///< a setup dialog holds processing off
    BusyFlag changebusy;       ///< a changeover runs: input is thrown away meanwhile
    BusyFlag dworkingb;        ///< a frame is being read and worked on
    bool goodatab = false;     ///< the last checksum test passed
    bool gotcomms = false;     ///< (kept) a train arrived since the last cycle ended
    bool ccheckflagb = false;  ///< set by the no-data timer, cleared by every byte
    bool Rflagb = false;       ///< data has flowed

    Bytes RawBytes;        ///< the frame in hand: 27 or 141 bytes
    std::string GroupTag;  ///< its first byte in hexadecimal, "CF" or "8F"; empty between frames

    DigitTable<54> DigitsCFLone;  ///< from a lone wind group
    DigitTable<70> Digits8F;
    DigitTable<68> Digits9F;
    DigitTable<62> DigitsAF;
    DigitTable<28> DigitsBF;
    DigitTable<54> DigitsCF;

    std::string EventWord;  ///< (kept) "weather data" and the other event words
    std::string ErrorWord;  ///< "Framing Error" and the other error words
    /// Why a copy that should listen to a port does not, "Serial port lost (/dev/ttyUSB0)"; empty while it does. Only
    /// people read it.
    std::string PortTrouble;

    /// Counted for `nimbryctl status`; nothing in the engine depends on them.
    struct Counters {
        std::uint64_t trains = 0;  ///< whole trains whose five checksums passed
        std::uint64_t lone = 0;    ///< lone wind groups whose checksum passed
        std::uint64_t bad_checksum = 0;
        std::uint64_t wrong_length = 0;  ///< the tag does not fit the count, or the train overran
        std::uint64_t unknown_tag = 0;
        std::uint64_t before_first_train = 0;  ///< lone groups dropped because no train had passed yet
        std::uint64_t bytes_thrown_away = 0;   ///< bytes that came to no frame
    } counters;

    /// Why the last frame was not used; nothing when it was. Told by refuse() (station/train_groups.h).
    std::optional<FrameFault> refusal;
};

}  // namespace nimbry
