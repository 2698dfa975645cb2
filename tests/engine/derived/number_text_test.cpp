#include "engine/derived/number_text.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "engine/core/run_time_error.h"

namespace nimbry {
namespace {

TEST(Round, TakesTiesToTheEvenDigitOfTheProductInDoubles) {
    struct Case {
        const char* law;
        double value;
        int digits;
        double rounded;
    };
    const std::vector<Case> cases{
        {"1.15 times 10 is exactly 11.5 in doubles, a tie to 12", 1.15, 1, 1.2},
        {"17.05 times 10 is exactly 170.5, a tie to 170", 17.05, 1, 17},
        {"1008.25 times 10 is a tie to 10082", 1008.25, 1, 1008.2},
        {"half to the even whole number below", 2.5, 0, 2},
        {"half to the even whole number above", 3.5, 0, 4},
        {"half to nought", 0.5, 0, 0},
        {"below nought the same digits", -2.5, 0, -2},
        {"a quarter to two tenths", 0.25, 1, 0.2},
        {"and below nought", -0.25, 1, -0.2},
        {"0.35 times 10 is exactly 3.5", 0.35, 1, 0.4},
        {"2.675 times 100 is exactly 267.5", 2.675, 2, 2.68},
        {"no tie is no matter of evenness", 12.345678, 3, 12.346},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.law);
        EXPECT_EQ(Round(c.value, c.digits), c.rounded);
    }
}

TEST(NumberText, OfADoubleIsPlain) {
    struct Case {
        const char* law;
        double value;
        const char* text;
    };
    const std::vector<Case> cases{
        {"a nought stands before the point", 0.28, "0.28"},
        {"and behind the sign", -0.4, "-0.4"},
        {"a whole number has no point", 1008, "1008"},
        {"nought", 0, "0"},
        {"minus nought is nought", -0.0, "0"},
        {"no exponent for a round number", 1e5, "100000"},
        {"no exponent for a great number", 1e22, "10000000000000000000000"},
        {"no exponent for a small number", 5e-7, "0.0000005"},
        {"trailing noughts of a whole number stay", 120, "120"},
        {"at most 15 digits hide what doubles cannot hold", 0.1 + 0.2, "0.3"},
        {"a third has 15 digits", 1.0 / 3.0, "0.333333333333333"},
        {"rounding may carry through all digits", 999999999999999.9, "1000000000000000"},
        {"digits beyond the fifteenth become noughts", 123456789012345678.0, "123456789012346000"},
        {"below nought", -1234.5, "-1234.5"},
        {"one tenth", 0.1, "0.1"},
        {"a thousandth", 0.001, "0.001"},
        {"five of them below nought", -0.005, "-0.005"},
        {"four places", 1.0625, "1.0625"},
        {"fifteen digits, three of them behind the point", 123456789012.345, "123456789012.345"},
        {"and with one digit more", 1234567890123.456, "1234567890123.46"},
        {"a tenth of a great number", 66666.66666666666, "66666.6666666667"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.law);
        EXPECT_EQ(numtext(c.value), c.text);
    }
}

TEST(NumberText, OfASingleIsTheFewestDigitsOfThatSingle) {
    EXPECT_EQ(numtext(12.3F), "12.3");
    EXPECT_EQ(numtext(0.1F), "0.1");
    EXPECT_EQ(numtext(-17.8F), "-17.8");
    EXPECT_EQ(numtext(-0.0F), "0");
    EXPECT_EQ(numtext(16777216.0F), "16777216");
    EXPECT_EQ(numtext(1e10F), "10000000000");
    EXPECT_EQ(numtext(1.5e-5F), "0.000015");
}

TEST(NumberText, OfAnySingleReadsBackAsTheSameSingle) {
    // Steps through the bit patterns of all singles with a stride that meets every exponent.
    for (std::uint64_t bits = 1; bits < 0x7F800000U; bits += 1000003) {
        const float value = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
        ASSERT_EQ(std::strtof(numtext(value).c_str(), nullptr), value) << bits;
        ASSERT_EQ(numtext(-value), "-" + numtext(value));
    }
}

TEST(NumberText, OfAnIntHasAllItsDigits) {
    EXPECT_EQ(numtext(0), "0");
    EXPECT_EQ(numtext(-5), "-5");
    EXPECT_EQ(numtext(100000), "100000");
}

TEST(NumberText, OfWhatIsNoNumberIsAnOverflow) {
    for (const double value : {HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        try {
            static_cast<void>(numtext(value));
            FAIL() << "no error for " << value;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number, ErrorNumber::overflow);
        }
    }
}

TEST(Val, ReadsTheNumberThatATextBeginsWith) {
    struct Case {
        const char* law;
        const char* text;
        double value;
    };
    const std::vector<Case> cases{
        {"blanks before the sign and between sign and digits are skipped", "  - 12.3", -12.3},
        {"tabs too", "\t-\t12.3", -12.3},
        {"fifteen digits", "123456789012.345", 123456789012.345},
        {"more digits", "12345678901234567890", 12345678901234567890.0},
        {"more noughts", "0.00000000000000000001", 1e-20},
        {"an exponent", "1E2", 100},
        {"an exponent of either letter and case", "1d2", 100},
        {"an exponent with a sign", "25e-1", 2.5},
        {"an exponent without digits ends the number", "7E", 7},
        {"with a sign alone too", "7E+", 7},
        {"a comma stops the number", "12,3", 12},
        {"a second point stops it", "1.2.3", 1.2},
        {"a blank between digits stops it", "1 2", 1},
        {"a letter stops it", "12.5x9", 12.5},
        {"the degree sign stops it", "+22.6 \260C", 22.6},
        {"no digits give nought", "EE", 0},
        {"the empty text gives nought", "", 0},
        {"a sign alone gives nought", "-", 0},
        {"a point alone gives nought", ".", 0},
        {"two signs give nought", "--5", 0},
        {"a point may lead", "-.5", -0.5},
        {"a point may end it", "5.", 5},
        {"plus is a sign", "+9.8", 9.8},
        {"leading noughts do not matter", "0075", 75},
        {"inf is no number", "inf", 0},
        {"nan is no number", "nan", 0},
        {"hexadecimal is not read", "0x1F", 0},
        {"a number beyond doubles gives nought", "1E999", 0},
        {"a number too small for doubles gives nought", "1E-999", 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.law);
        EXPECT_EQ(Val(c.text), c.value);
    }
}

TEST(WholeNumber, CutsTowardNoughtAndKeepsTheRangeOfAnInt) {
    EXPECT_EQ(whole_number("15.9"), 15);
    EXPECT_EQ(whole_number("-1.9"), -1);
    EXPECT_EQ(whole_number("-0.5"), 0);
    EXPECT_EQ(whole_number("nothing"), 0);
    EXPECT_EQ(whole_number("1E99"), std::numeric_limits<int>::max());
    EXPECT_EQ(whole_number("-1E99"), std::numeric_limits<int>::min());
}

TEST(IsNumeric, TakesACompleteNumberOnly) {
    for (const char* yes : {"5", " 5 ", "-5", "+5.25", ".5", "5.", ",5", "5,", "12,3", "1E5", "1e-5", "1D2", "007"}) {
        SCOPED_TRACE(yes);
        EXPECT_TRUE(IsNumeric(yes));
    }
    for (const char* no : {"",   " ",  ".",   ",",  "-",   "+.",  "- 5",   "1.2.3", "1,2.3", "1,2,3", "x",
                           "5x", "1E", "1E+", "E5", "1 2", "--5", "5\xB0", "inf",   "nan",   "0x1F"}) {
        SCOPED_TRACE(no);
        EXPECT_FALSE(IsNumeric(no));
    }
}

TEST(Trimmed, TakesTheBlanksAtBothEndsAndNoOthers) {
    EXPECT_EQ(trimmed("  a b  "), "a b");
    EXPECT_EQ(trimmed("   "), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed("\ta "), "\ta");
}

TEST(LowerCase, TurnsAsciiLettersOnly) {
    EXPECT_EQ(lower_case("Main AZ az 09 \xC4\xB0["), "main az az 09 \xC4\xB0[");
    EXPECT_EQ(lower_case(""), "");
}

TEST(Repcomma, TurnsEveryCommaIntoAPoint) {
    EXPECT_EQ(repcomma("12,3"), "12.3");
    EXPECT_EQ(repcomma("12.3"), "12.3");
    EXPECT_EQ(repcomma(",a,b,"), ".a.b.");
    EXPECT_EQ(repcomma(""), "");
}

TEST(Repdegree, JoinsValueAndUnit) {
    struct Case {
        const char* law;
        const char* text;
        const char* joined;
    };
    const std::vector<Case> cases{
        {"a degree sign goes, with the blank before it", "+22.6 \260C", "+22.6C"},
        {"a degree sign without a blank goes too", "270\xB0", "270"},
        {"percent", "93 %", "93%"},
        {"metres per second", "3.1 m/S", "3.1m/S"},
        {"kilometres per hour", "12.3 km/h", "12.3km/h"},
        {"miles per hour", "7.6 MPH", "7.6MPH"},
        {"knots", "6.6 KT", "6.6KT"},
        {"millibars", "1019 mB", "1019mB"},
        {"hectopascals", "1019 hPa", "1019hPa"},
        {"millimetres, in the middle of a text", "12 mm/hour", "12mm/hour"},
        {"inches of mercury", "29.92 In.Hg", "29.92In.Hg"},
        {"inches of rain", "0.28 In.", "0.28In."},
        {"kept on purpose: a word that begins as a unit is joined too", "Humidity Indoor", "HumidityIndoor"},
        {"case matters", "12 KM/H 3 mph 5 MM", "12 KM/H 3 mph 5 MM"},
        {"every one of them in a text", "1 % 2 % 3 mm 4 mm", "1% 2% 3mm 4mm"},
        {"one blank of two goes", "5  %", "5 %"},
        {"the order matters: the blank before a degree sign goes first, so the unit behind it is joined by then",
         "5 \xB0 %", "5%"},
        {"nothing to join", "North", "North"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.law);
        EXPECT_EQ(repdegree(c.text), c.joined);
    }
}

TEST(Roundnst, ConvertsCelsiusToFahrenheitWithOneDecimal) {
    struct Case {
        double celsius;
        float fahrenheit;
    };
    for (const Case& c : std::vector<Case>{{0, 32.0F},
                                           {100, 212.0F},
                                           {-40, -40.0F},
                                           {22.6, 72.7F},
                                           {37.05, 98.7F},
                                           {-17.8, 0.0F},
                                           {-17.75, 0.1F},
                                           {-0.05, 31.9F},
                                           {36.6, 97.9F}}) {
        SCOPED_TRACE(c.celsius);
        EXPECT_EQ(roundnst(c.celsius), c.fahrenheit);
    }
}

TEST(Roundnst, OfATextIsNoughtWhenTheTextIsNotNumeric) {
    EXPECT_EQ(roundnst(std::string_view("x")), 0.0F);
    EXPECT_EQ(roundnst(std::string_view("")), 0.0F);
    EXPECT_EQ(roundnst(std::string_view("22.6 C")), 0.0F);
    EXPECT_EQ(roundnst(std::string_view("22.6")), 72.7F);
    EXPECT_EQ(roundnst(std::string_view(" -40 ")), -40.0F);
    EXPECT_EQ(roundnst(std::string_view("22,6")), 72.7F);
}

TEST(Roundsig, CutsTowardNought) {
    EXPECT_EQ(roundsig(12.39, 1), 12.3F);
    EXPECT_EQ(roundsig(-12.39, 1), -12.3F);
    EXPECT_EQ(roundsig(0.999, 0), 0.0F);
    EXPECT_EQ(roundsig(1.2345, 3), 1.234F);
}

}  // namespace
}  // namespace nimbry
