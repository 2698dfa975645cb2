#include "engine/station/train_writer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "engine/station/checksum.h"
#include "engine/station/group_layout.h"

namespace nimbry {
namespace {

/// The bytes of a part of a frame as "8F 52 59", so that a failure can be read beside the layout.
std::string hex(const Bytes& frame, const GroupSpan& span) {
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (std::size_t n = span.first; n < span.first + span.length; ++n) {
        if (!text.empty()) text += ' ';
        text += digits[frame[n] >> 4U];
        text += digits[frame[n] & 15U];
    }
    return text;
}

StationReadings readings_of_31_october() {
    StationReadings r;
    r.clock = {52, 59, 8, 31, 10};
    return r;
}

// The expected bytes are worked out by hand from the layout: byte k is digit 2k+1 and digit 2k+2.

TEST(TrainWriter, WritesTheFiveGroupsAsTheLayoutSays) {
    const Bytes train = write_train(readings_of_31_october());
    ASSERT_EQ(train.size(), 141U);
    EXPECT_EQ(
        hex(train, span_8f),
        "8F 52 59 08 31 0A 00 00 45 00 00 00 00 00 00 00 00 00 00 00 54 97 15 06 03 37 22 43 11 12 00 00 00 00 8A");
    EXPECT_EQ(hex(train, span_9f),
              "9F 15 02 00 00 00 00 00 00 00 00 00 00 00 00 00 23 41 38 55 14 17 62 92 11 05 09 07 00 00 00 00 00 EC");
    EXPECT_EQ(hex(train, span_af),
              "AF 00 00 30 01 01 21 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 02");
    EXPECT_EQ(hex(train, span_bf), "BF 00 00 00 00 23 01 30 09 05 04 00 00 25");
    EXPECT_EQ(hex(train, span_cf), "CF 42 50 22 31 00 20 14 03 27 47 16 28 09 00 00 09 00 00 00 00 00 00 00 00 00 A9");
}

TEST(TrainWriter, WritesEverySignFaultFlagAndMark) {
    StationReadings r = readings_of_31_october();
    r.humidity.outdoor = 97;
    r.humidity.outdoor_over_range = true;
    r.humidity.high_over_range = true;
    r.humidity.indoor_fault = true;
    r.temperature.outdoor = -4.7;
    r.temperature.outdoor_fault = true;
    r.temperature.indoor = -0.0;
    r.temperature.high = -1.5;
    r.temperature.low = 0.0;
    r.barometer = {987, 4, 8};
    r.rain.rate_mm = 250;
    r.rain.total_mm = 9999;
    r.rain.fault = true;
    r.wind.gust_ms = 67.9;
    r.wind.gust_direction = 359;
    r.wind.average_ms = 0;
    r.wind.average_direction = 7;
    r.wind.chill_c = -18;
    r.wind.low_battery = true;
    r.wind.fault_bits = 8;
    const Bytes train = write_train(r);
    EXPECT_EQ(
        hex(train, span_8f),
        "8F 52 59 08 31 0A 00 00 E5 00 00 00 00 00 00 00 00 00 00 00 97 97 15 06 03 37 22 43 11 12 00 00 18 00 85");
    EXPECT_EQ(hex(train, span_9f),
              "9F 00 08 00 00 00 00 00 00 00 00 00 00 00 00 00 E7 58 81 55 14 17 02 00 11 05 09 07 00 00 00 00 00 0F");
    EXPECT_EQ(hex(train, span_af),
              "AF 00 00 70 98 00 48 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 FF");
    EXPECT_EQ(hex(train, span_bf), "BF 50 02 00 00 99 99 30 09 05 04 00 80 05");
    EXPECT_EQ(hex(train, span_cf), "CF 79 96 35 00 70 00 14 03 27 47 16 28 09 00 00 18 00 00 00 00 20 00 80 00 80 87");
}

TEST(TrainWriter, WritesTheRemainingMarks) {
    StationReadings r;
    r.humidity.outdoor_fault = true;    // digit 41
    r.temperature.indoor_fault = true;  // digit 3
    r.temperature.low = -0.04;          // a sign over 0.0
    r.wind.fault_bits = 4;
    const Bytes train = write_train(r);
    EXPECT_EQ(train[20], 0xE4);
    EXPECT_EQ(train[35 + 1], 0xE5);
    EXPECT_EQ(train[35 + 22], 0x02);  // digit 45 (tenths) and digit 46 (month of the high, untouched)
    EXPECT_EQ(train[35 + 23], 0x80);  // digits 47 and 48
    EXPECT_EQ(train[114 + 25], 0x40);
}

TEST(TrainWriter, ALoneWindGroupIsTheLastGroupOfTheTrain) {
    const StationReadings r = readings_of_31_october();
    const Bytes train = write_train(r);
    EXPECT_EQ(write_lone_wind(r), Bytes(train.begin() + 114, train.end()));
}

TEST(TrainWriter, ANumberBeyondItsDigitsIsCutToTheLargestTheyHold) {
    StationReadings r;
    r.wind.gust_ms = 100;
    r.wind.average_ms = -3;
    r.rain.rate_mm = 1599;
    r.temperature.outdoor = 80;
    r.barometer.trend = 99;
    const Bytes train = write_train(r);
    EXPECT_EQ(train[114 + 1], 0x99);
    EXPECT_EQ(train[114 + 2] & 0x0F, 0x09);
    EXPECT_EQ(train[114 + 4] & 0xFF, 0x00);
    EXPECT_EQ(train[100 + 1], 0x99);
    EXPECT_EQ(train[100 + 2], 0x0F);  // the hundreds of the rain rate are one hexadecimal digit
    EXPECT_EQ(train[35 + 16], 0x99);
    EXPECT_EQ(train[35 + 17] & 0x0F, 0x07);  // no carry into the sign
    EXPECT_EQ(train[69 + 6] >> 4U, 0x0F);
}

TEST(TrainWriter, TheStationHasNoYear) {
    using namespace std::chrono;
    const auto moment = station_moment(local_days{2026y / October / 31d} + 8h + 59min + 52s);
    EXPECT_EQ(moment.second, 52);
    EXPECT_EQ(moment.minute, 59);
    EXPECT_EQ(moment.hour, 8);
    EXPECT_EQ(moment.day, 31);
    EXPECT_EQ(moment.month, 10);
}

TEST(TrainWriter, ADigitCanBeOverwrittenAndSealedAgain) {
    Bytes train = write_train({});
    set_digit(train, 0xAF, 13, 4);
    EXPECT_EQ(train[69 + 6], 0x41);
    EXPECT_FALSE(checksum_holds(std::span(train).subspan(69, 31)));
    seal(train);
    EXPECT_TRUE(checksum_holds(std::span(train).subspan(69, 31)));
}

TEST(TrainWriter, ADigitThatIsNotThereIsLeftAlone) {
    Bytes train = write_train({});
    const Bytes before = train;
    set_digit(train, 0xAF, 0, 1);
    set_digit(train, 0xAF, 63, 1);
    set_digit(train, 0xDF, 5, 1);
    EXPECT_EQ(train, before);
    Bytes lone = write_lone_wind({});
    const Bytes lone_before = lone;
    set_digit(lone, 0x8F, 5, 1);
    spoil_checksum(lone, 0x8F);
    EXPECT_EQ(lone, lone_before);
}

TEST(TrainWriter, ASpoiledChecksumIsWrongInThatGroupAlone) {
    for (const GroupSpan& spoiled : train_spans) {
        SCOPED_TRACE(spoiled.tag);
        Bytes train = write_train({});
        spoil_checksum(train, spoiled.tag);
        for (const GroupSpan& span : train_spans)
            EXPECT_EQ(checksum_holds(std::span(train).subspan(span.first, span.length)), span.tag != spoiled.tag);
    }
}

}  // namespace
}  // namespace nimbry
