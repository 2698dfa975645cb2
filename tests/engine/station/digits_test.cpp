#include "engine/station/digits.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/station/train_writer.h"

namespace nimbry {
namespace {

std::span<const std::uint8_t, 35> clock_group(const Bytes& train) {
    return std::span<const std::uint8_t>(train).subspan<0, 35>();
}

TEST(Digits, EveryByteIsTwoUpperCaseDigitsCountedFrom1) {
    const Bytes train = write_train({});
    Bytes group(train.begin(), train.begin() + 35);
    group[1] = 0x07;
    group[34] = 0xAB;
    DigitTable<70> table;
    fill(table, std::span<const std::uint8_t, 35>(group));
    EXPECT_TRUE(table.set);
    EXPECT_EQ(table(1), '8');
    EXPECT_EQ(table(2), 'F');
    EXPECT_EQ(table(3), '0');
    EXPECT_EQ(table(4), '7');
    EXPECT_EQ(table(69), 'A');
    EXPECT_EQ(table(70), 'B');
}

TEST(Digits, AFieldReadsInItsOwnOrder) {
    StationReadings r;
    r.barometer.hpa = 1987;
    r.humidity.low = 23;
    const Bytes train = write_train(r);
    DigitTable<62> af;
    fill(af, std::span<const std::uint8_t>(train).subspan<69, 31>());
    EXPECT_EQ(field_text(af, digits_af::barometer), "1987");
    DigitTable<70> clock;
    fill(clock, clock_group(train));
    EXPECT_EQ(field_text(clock, digits_8f::humidity_low), "23");
}

TEST(Digits, DecimalsComeAfterAPointAndZerosStay) {
    StationReadings r;
    r.wind.gust_ms = 4.2;
    r.wind.average_ms = 0;
    r.wind.average_direction = 7;
    const Bytes lone = write_lone_wind(r);
    DigitTable<54> cf;
    fill(cf, std::span<const std::uint8_t>(lone).first<27>());
    EXPECT_EQ(field_text(cf, digits_cf::gust, 1), "04.2");
    EXPECT_EQ(field_text(cf, digits_cf::average, 1), "00.0");
    EXPECT_EQ(field_text(cf, digits_cf::average_direction), "007");
}

TEST(Digits, TheSignBitIsNoPartOfATemperature) {
    StationReadings r;
    r.temperature.outdoor = -14.7;
    r.temperature.indoor = 9.5;
    const Bytes train = write_train(r);
    DigitTable<68> table;
    fill(table, std::span<const std::uint8_t>(train).subspan<35, 34>());
    EXPECT_EQ(table(36), '9');  // 8 for the sign and 1 ten
    EXPECT_EQ(field_text(table, digits_9f::outdoor, 1), "14.7");
    EXPECT_TRUE(flag_set(table, digits_9f::outdoor_minus));
    EXPECT_EQ(field_text(table, digits_9f::indoor, 1), "09.5");
    EXPECT_FALSE(flag_set(table, digits_9f::indoor_minus));
}

TEST(Digits, TheHundredsOfTheRainRateAreOneHexadecimalDigit) {
    StationReadings r;
    r.rain.rate_mm = 1234;
    const Bytes train = write_train(r);
    DigitTable<28> table;
    fill(table, std::span<const std::uint8_t>(train).subspan<100, 14>());
    EXPECT_EQ(table(6), 'C');
    EXPECT_EQ(field_text(table, digits_bf::rate), "1234");
}

TEST(Digits, ADigitThatIsNoDecimalStaysInTheText) {
    Bytes train = write_train({});
    set_digit(train, 0xAF, 9, 0xE);
    DigitTable<62> table;
    fill(table, std::span<const std::uint8_t>(train).subspan<69, 31>());
    EXPECT_EQ(field_text(table, digits_af::barometer), "1E13");
}

TEST(Digits, AnyBitOfAFlagSetsIt) {
    for (const int bits : {0, 1, 2, 3, 4, 8, 12, 15}) {
        SCOPED_TRACE(bits);
        Bytes lone = write_lone_wind({});
        set_digit(lone, 0xCF, 51, bits);
        DigitTable<54> table;
        fill(table, std::span<const std::uint8_t>(lone).first<27>());
        EXPECT_EQ(flag_set(table, digits_cf::fault), bits >= 4);
    }
}

TEST(Digits, OnlyTheLetterEIsAFaultMark) {
    for (const int value : {0, 9, 0xD, 0xE, 0xF}) {
        SCOPED_TRACE(value);
        Bytes train = write_train({});
        set_digit(train, 0x8F, 41, value);
        DigitTable<70> table;
        fill(table, clock_group(train));
        EXPECT_EQ(fault_marked(table, digits_8f::outdoor_fault), value == 0xE);
    }
}

TEST(Digits, AnUnsetTableHasNoTextsFlagsOrMarks) {
    const DigitTable<54> table;
    EXPECT_EQ(field_text(table, digits_cf::gust, 1), "");
    EXPECT_EQ(field_digit(table, digits_cf::record_at.month), 0);
    EXPECT_FALSE(flag_set(table, digits_cf::fault));
    const DigitTable<70> clock;
    EXPECT_FALSE(fault_marked(clock, digits_8f::outdoor_fault));
}

TEST(Digits, AMonthIsOneHexadecimalDigit) {
    StationReadings r;
    r.clock.month = 12;
    const Bytes train = write_train(r);
    DigitTable<70> table;
    fill(table, clock_group(train));
    EXPECT_EQ(field_digit(table, digits_8f::month), 12);
}

TEST(Digits, HexadecimalDigitsHaveValuesAndNothingElseHas) {
    EXPECT_EQ(hex_value('0'), 0);
    EXPECT_EQ(hex_value('9'), 9);
    EXPECT_EQ(hex_value('A'), 10);
    EXPECT_EQ(hex_value('F'), 15);
    EXPECT_EQ(hex_value('a'), -1);
    EXPECT_EQ(hex_value('G'), -1);
    EXPECT_EQ(hex_value('\0'), -1);
}

}  // namespace
}  // namespace nimbry
