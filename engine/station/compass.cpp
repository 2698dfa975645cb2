#include "engine/station/compass.h"

#include <array>

namespace nimbry {
namespace {

struct Sector {
    double above, below;  // both open
    CompassWord word;
};

// The first row reaches half a degree past the circle: a bearing of 360 is north.
constexpr std::array sectors{
    Sector{337.5, 360.5, {"N", "North"}},       Sector{-0.5, 22.5, {"N", "North"}},
    Sector{22.5, 67.5, {"NE", "North East"}},   Sector{67.5, 112.5, {"E", "East"}},
    Sector{112.5, 157.5, {"SE", "South East"}}, Sector{157.5, 202.5, {"S", "South"}},
    Sector{202.5, 247.5, {"SW", "South West"}}, Sector{247.5, 292.5, {"W", "West"}},
    Sector{292.5, 337.5, {"NW", "North West"}},
};

}  // namespace

const CompassWord* compass_word(int degrees) {
    for (const Sector& sector : sectors)
        if (degrees > sector.above && degrees < sector.below) return &sector.word;
    return nullptr;
}

}  // namespace nimbry
