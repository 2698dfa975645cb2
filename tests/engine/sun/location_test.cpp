#include "engine/sun/location.h"

#include <gtest/gtest.h>

namespace nimbry {
namespace {

TEST(EnteredLocation, IsTwoNumbersWithPointOrComma) {
    const auto sydney = entered_location("-33.8571", "151,2149");
    ASSERT_TRUE(sydney);
    EXPECT_EQ(sydney->latitude, -33.8571);
    EXPECT_EQ(sydney->longitude, 151.2149);
    EXPECT_TRUE(entered_location("0.000000", "0"));
}

TEST(EnteredLocation, IsNoneWhereEitherIsUnsetOrCannotBeAPlace) {
    for (const char* text : {"999", "999.0", "-999", "", "north", "1e300", "-1e300", "1000"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(entered_location(text, "151.2"));
        EXPECT_FALSE(entered_location("-33.9", text));
    }
}

}  // namespace
}  // namespace nimbry
