#pragma once

#include <string_view>

namespace nimbry {

/// One of the eight directions of the compass: "NE", "North East".
struct CompassWord {
    std::string_view brief, full;
};

/// The direction that a bearing in degrees lies in, or nothing for a bearing that no sector holds (361 and more). The
/// sectors are 45 degrees wide and open at their ends, so for whole degrees: N 338 to 360 and 0 to 22, NE 23 to 67, E
/// 68 to 112, SE 113 to 157, S 158 to 202, SW 203 to 247, W 248 to 292, NW 293 to 337.
[[nodiscard]] const CompassWord* compass_word(int degrees);

}  // namespace nimbry
