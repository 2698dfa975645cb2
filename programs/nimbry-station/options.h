#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "engine/ports/clock.h"

namespace nimbry::simulator {

/// What the command line asks for.
struct Options {
    std::string link;                ///< make a pseudo-terminal and link it here; empty: no
    std::string device;              ///< write to this real line; empty: no. Exactly one of the two is given
    std::optional<CivilTime> start;  ///< nothing: the computer's time
    int speed = 1;
    std::uint64_t seed = 1;
    std::string scenario, record, play;  ///< file names; empty: none
    bool help = false, version = false;  ///< asked for: nothing else counts
};

/// Bad usage: one line for the user.
struct UsageError {
    std::string what;
};

inline constexpr int fastest = 1000;  ///< the highest --speed

/// Reads the arguments, without the program's name. "--link PATH" and "--link=PATH" are the same.
[[nodiscard]] std::variant<Options, UsageError> parse_options(std::span<const char* const> arguments);

/// The text of --help.
[[nodiscard]] std::string_view help_text();

}  // namespace nimbry::simulator
