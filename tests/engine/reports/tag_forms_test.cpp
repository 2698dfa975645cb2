#include "engine/reports/tag_forms.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nimbry::test {
namespace {

struct TextCase {
    const char* law;
    std::string from, to;
};

TEST(TagForms, FahrenheitHasItsSignAndItsSize) {
    const std::vector<TextCase> cases{
        {"freezing", "+0", "+32"},
        {"minus nothing is above zero there", "-0", "+32"},
        {"-20", "-20", "-4"},
        {"-30", "-30", "-22"},
        {"what rounds to zero is not negative", "-17.8", "+0"},
        {"just below", "-18", "-0.4"},
        {"a tenth", "+8.1", "+46.6"},
        {"with a decimal comma", "+8,1", "+46.6"},
        {"no reading", "", "+0"},
        {"no number", "Error", "+0"},
    };
    for (const TextCase& row : cases) EXPECT_EQ(fahrenheit(row.from), row.to) << row.law;
}

TEST(TagForms, TheOlderFormPutsASignBeforeTheSign) {
    const std::vector<TextCase> cases{
        {"above zero", "+3.2", "+37.8"}, {"-30", "-30", "--22"},
        {"-18", "-18", "--0.4"},         {"what rounds to zero has one sign", "-17.8", "+0"},
        {"no reading", "", "+0"},
    };
    for (const TextCase& row : cases) EXPECT_EQ(fahrenheit_double_sign(row.from), row.to) << row.law;
}

TEST(TagForms, CtofRoundsToOneDecimalAndGivesZeroForNoNumber) {
    EXPECT_EQ(ctof("12.3"), 54.1F);  // 54.14
    EXPECT_EQ(ctof("-40"), -40.0F);
    EXPECT_EQ(ctof(" 100 "), 212.0F);
    EXPECT_EQ(ctof(""), 0.0F);
    EXPECT_EQ(ctof("n.a."), 0.0F);
    EXPECT_EQ(ctof("12.3 km/h"), 0.0F);
}

TEST(TagForms, FsignIsPlusFromZeroMinusBelowAndNothingForNoNumber) {
    EXPECT_EQ(fsign("0"), "+");
    EXPECT_EQ(fsign("-0"), "+");
    EXPECT_EQ(fsign("0.1"), "+");
    EXPECT_EQ(fsign("-0.1"), "-");
    EXPECT_EQ(fsign("-0,1"), "-");
    EXPECT_EQ(fsign(""), "");
    EXPECT_EQ(fsign("Error"), "");
}

TEST(TagForms, AMetricTextIsSignAndShortestNumber) {
    const std::vector<TextCase> cases{
        {"a leading zero goes", "+08.1", "+8.1"},
        {"a tenth of zero goes", "+08.0", "+8"},
        {"minus zero stays", "-00.0", "-0"},
        {"below zero", "-12.6", "-12.6"},
        {"no reading", "", ""},
    };
    for (const TextCase& row : cases) EXPECT_EQ(metrictext(row.from), row.to) << row.law;
}

TEST(TagForms, TheNumberAloneIsTheFirstWord) {
    const std::vector<TextCase> cases{
        {"a temperature", "+8.1 \260C", "+8.1"},
        {"a leading blank", " 1013 hPa", "1013"},
        {"two blanks before the unit", "1013  hPa", "1013"},
        {"no unit", "12", "12"},
        {"a fault", "Error", ""},
        {"nothing", "", ""},
        {"only blanks", "  ", ""},
    };
    for (const TextCase& row : cases) EXPECT_EQ(number_alone(row.from), row.to) << row.law;
    EXPECT_EQ(speed_alone("Calm"), "0");
    EXPECT_EQ(speed_alone(" 19.4 km/h"), "19.4");
    EXPECT_EQ(speed_alone("Error"), "");
    EXPECT_EQ(speed_alone(""), "");
}

TEST(TagForms, InchesHaveTwoDecimals) {
    EXPECT_EQ(inches_of_rain(0), "0");
    EXPECT_EQ(inches_of_rain(7), "0.28");         // 0.2756
    EXPECT_EQ(inches_of_rain(123), "4.84");       // 4.8425
    EXPECT_EQ(inches_of_rain(2540), "100");       // 99.99999999999999...
    EXPECT_EQ(inches_of_mercury(1013), "29.91");  // 29.9126
    EXPECT_EQ(inches_of_mercury(0), "0");
}

struct SpeedCase {
    double ms;
    std::string in_ms, kmh, mph, knots;
};

TEST(TagForms, SpeedsAreConvertedWithOneDecimalAndCalmToTwoTenths) {
    const std::vector<SpeedCase> cases{
        {0.0, "-", "-", "-", "-"},
        {0.1, "-", "-", "-", "-"},
        {0.2, "-", "-", "-", "-"},              // as a single it is 0.2 and no more
        {0.3, "0.3", "1.1", "0.7", "0.6"},      // 1.08, 0.671, 0.591
        {3.4, "3.4", "12.2", "7.6", "6.7"},     // 12.24, 7.606, 6.696
        {9.8, "9.8", "35.3", "21.9", "19.3"},   // 35.28, 21.922, 19.300
        {31.4, "31.4", "113", "70.2", "61.8"},  // 113.04, 70.240, 61.838
        {-999, "-", "-", "-", "-"},
    };
    for (const SpeedCase& row : cases) {
        EXPECT_EQ(speed_or("-", row.ms, SpeedUnit::ms), row.in_ms) << row.ms;
        EXPECT_EQ(speed_or("-", row.ms, SpeedUnit::kmh), row.kmh) << row.ms;
        EXPECT_EQ(speed_or("-", row.ms, SpeedUnit::mph), row.mph) << row.ms;
        EXPECT_EQ(speed_or("-", row.ms, SpeedUnit::knots), row.knots) << row.ms;
    }
}

}  // namespace
}  // namespace nimbry::test
