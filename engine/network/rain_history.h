#pragma once

#include <string>
#include <string_view>

#include "engine/records/rain_state.h"

namespace nimbry {

inline constexpr std::string_view rain_history_file = "rainlh.log";

/// The rain of the last hour as a server sends it: `LastHourIndex`, `LastHourLimit`, and the 62 elements of the ring,
/// one whole number a line with CR LF.
[[nodiscard]] std::string rain_history_text(const RainState& rain);

/// Reads such a file into `rain`. An index outside 0..60 is 0; the limit is fixed and not taken. Which counter the
/// newest minute ended with is not in the file, so it is unknown afterwards. Throws RunTimeError: past_end without the
/// first two lines, overflow for a value that 16 bits do not hold, index for a 63rd element. What was read before that
/// stands.
void read_rain_history(std::string_view text, RainState& rain);

}  // namespace nimbry
