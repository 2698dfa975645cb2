#include "engine/station/compass.h"

#include <gtest/gtest.h>

#include <string>

namespace nimbry {
namespace {

struct SectorCase {
    int first, last;
    const char* brief;
    const char* full;
};

TEST(Compass, EveryWholeDegreeOfTheCircleLiesInItsSector) {
    for (const SectorCase& c : {
             SectorCase{0, 22, "N", "North"},
             SectorCase{23, 67, "NE", "North East"},
             SectorCase{68, 112, "E", "East"},
             SectorCase{113, 157, "SE", "South East"},
             SectorCase{158, 202, "S", "South"},
             SectorCase{203, 247, "SW", "South West"},
             SectorCase{248, 292, "W", "West"},
             SectorCase{293, 337, "NW", "North West"},
             SectorCase{338, 359, "N", "North"},
         }) {
        for (int degrees = c.first; degrees <= c.last; ++degrees) {
            SCOPED_TRACE(degrees);
            const CompassWord* word = compass_word(degrees);
            ASSERT_NE(word, nullptr);
            EXPECT_EQ(word->brief, c.brief);
            EXPECT_EQ(word->full, c.full);
        }
    }
}

TEST(Compass, ThreeHundredAndSixtyIsNorthAndBeyondThereIsNoDirection) {
    ASSERT_NE(compass_word(360), nullptr);
    EXPECT_EQ(compass_word(360)->brief, "N");
    for (const int degrees : {361, 999, 2147483647}) EXPECT_EQ(compass_word(degrees), nullptr) << degrees;
}

}  // namespace
}  // namespace nimbry
