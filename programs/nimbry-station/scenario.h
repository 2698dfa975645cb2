#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "engine/ports/bytes.h"
#include "engine/ports/clock.h"
#include "programs/nimbry-station/reading.h"

namespace nimbry::simulator {

// What a scenario file can make the station do. The text form: docs/formats/scenario.md.

/// Holds a reading at a value from now on; with `over` above 0 it gets there in a straight line from what it is now.
struct HoldReading {
    Reading reading{};
    double value = 0;
    std::chrono::seconds over{0};
};
/// Lets a reading follow the weather again; no reading means all of them.
struct ReleaseReading {
    std::optional<Reading> reading;
};
/// A fault begins.
struct BeginFault {
    Fault fault{};
};
/// A fault ends; no fault means all of them.
struct EndFault {
    std::optional<Fault> fault;
};

/// Where damage to bytes strikes: the next frame of any kind, the next train's group of this tag, or the next lone wind
/// group.
struct Target {
    enum class Kind { any_frame, train_group, lone_group } kind = Kind::any_frame;
    std::uint8_t tag = 0;  ///< of a train_group: 0x8F, 0x9F, 0xAF, 0xBF or 0xCF
    friend bool operator==(const Target&, const Target&) = default;
};
/// Inverts `count` different bits of the target; the checksums stay as they were.
struct FlipBits {
    int count = 1;
    Target target;
};
/// Leaves `count` bytes of the target out.
struct DropBytes {
    int count = 1;
    Target target;
};
/// Sends bytes that belong to nothing: at once when `before` is empty, else right in front of that target's bytes.
/// `bytes` are the ones, or `random_count` (above 0) tells how many random ones.
struct StrayBytes {
    Bytes bytes;
    int random_count = 0;
    std::optional<Target> before;
};
/// Sets one hexadecimal digit of a group in every frame from now on, with right checksums.
struct SetDigit {
    std::uint8_t tag = 0;
    int place = 0;  ///< 3 up to the last before the checksum
    int value = 0;  ///< 0 to 15
};
/// Every digit is the station's own again.
struct ReleaseDigits {};
/// The station sends nothing (true) or speaks again (false).
struct Silence {
    bool on = true;
};
/// The rain counter goes back to 0, and its date of reset to now.
struct ResetRain {};
/// The records of temperature, humidity and gust begin again with the readings of now.
struct ResetRecords {};
/// The cable is pulled out or put in again; on a real line the bytes stay away instead.
struct Plug {
    bool in = true;
};
/// Somebody turns the station's clock by this much, either way.
struct TurnClock {
    std::chrono::seconds by{0};
};

using Action = std::variant<HoldReading, ReleaseReading, BeginFault, EndFault, FlipBits, DropBytes, StrayBytes,
                            SetDigit, ReleaseDigits, Silence, ResetRain, ResetRecords, Plug, TurnClock>;

/// One action and when it happens.
struct Step {
    std::chrono::seconds at{0};  ///< after the station's start, in the station's time, 0 or more
    Action action;
};

/// What could not be read in a scenario, for its author: "line 3: there is no reading 'sunshine'".
struct ScenarioError {
    int line = 0;
    std::string what;
};

/// A scenario read: the steps in order of time (those of one moment in the order of the file), or the first error.
struct ScenarioReading {
    std::vector<Step> steps;
    std::optional<ScenarioError> error;
};

/// Reads a scenario for a station whose clock starts at `start`. Never fails otherwise than by its error.
[[nodiscard]] ScenarioReading read_scenario(std::string_view text, CivilTime start);

}  // namespace nimbry::simulator
