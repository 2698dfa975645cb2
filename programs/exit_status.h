#pragma once

#include "engine/control/verb_status.h"

/// What the programs end with. A number means the same in each of them; nimbryctl also ends with what its verb gave.
namespace nimbry::exit_status {

inline constexpr int done = static_cast<int>(VerbStatus::done);
inline constexpr int failed = static_cast<int>(VerbStatus::failed);
inline constexpr int bad_usage = static_cast<int>(VerbStatus::bad_usage);
inline constexpr int other_instance = 3;  ///< a copy runs in this folder already
inline constexpr int no_copy = 4;         ///< none runs there that could be asked

}  // namespace nimbry::exit_status
