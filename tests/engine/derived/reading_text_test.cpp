#include "engine/derived/reading_text.h"

#include <gtest/gtest.h>

namespace nimbry {
namespace {

Units celsius() {
    return units_from(MainSettings{});
}
Units fahrenheit() {
    MainSettings settings;
    settings.fTempF = true;
    return units_from(settings);
}

TEST(ReadingText, ABlankStandsBeforeTheNumberAndBeforeTheUnit) {
    EXPECT_EQ(with_unit(15.1, "km/h"), " 15.1 km/h");
    EXPECT_EQ(with_unit(1013, "mB"), " 1013 mB");
    EXPECT_EQ(with_unit(0, "mm"), " 0 mm");
    EXPECT_EQ(with_unit(-20, "mm"), " -20 mm");
}

TEST(ReadingText, TheSignIsPlusFromZeroOn) {
    EXPECT_EQ(sign_of(0), '+');
    EXPECT_EQ(sign_of(-0.0), '+');
    EXPECT_EQ(sign_of(-0.01), '-');
}

TEST(ReadingText, CelsiusTakesTheSignThatIsGiven) {
    EXPECT_EQ(temperature_text(-0.0, '-', celsius()).with_unit, "-0 \260C");
    EXPECT_EQ(temperature_text(-4.7, '-', celsius()).number, "-4.7");
    EXPECT_EQ(temperature_text(-4.7, celsius()).number, "-4.7");
    EXPECT_EQ(temperature_text(0, celsius()).number, "+0");
}

TEST(ReadingText, FahrenheitTakesTheSignOfTheConvertedValue) {
    EXPECT_EQ(temperature_text(-0.0, '-', fahrenheit()).with_unit, "+32 \260F");
    EXPECT_EQ(temperature_text(-17.8, '-', fahrenheit()).number, "+0");
    EXPECT_EQ(temperature_text(-18, fahrenheit()).number, "-0.4");
}

TEST(ReadingText, ADifferenceHasNoFreezingPoint) {
    EXPECT_EQ(difference_text(3.4, celsius()).with_unit, "+3.4 \260C");
    EXPECT_EQ(difference_text(3.4, fahrenheit()).with_unit, "+6.1 \260F");
    EXPECT_EQ(difference_text(0, fahrenheit()).with_unit, "+0 \260F");
    EXPECT_EQ(difference_text(-0.1, celsius()).number, "-0.1");
}

}  // namespace
}  // namespace nimbry
