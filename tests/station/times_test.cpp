#include "programs/nimbry-station/times.h"

#include <gtest/gtest.h>

#include <string_view>

namespace nimbry::simulator {
namespace {

using namespace std::chrono_literals;

TEST(ParseMoment, ReadsADateAndATimeWithOrWithoutSeconds) {
    const CivilTime halloween = std::chrono::local_days{std::chrono::year{2026} / 10 / 31} + 23h + 58min;
    EXPECT_EQ(parse_moment("2026-10-31 23:58:00"), halloween);
    EXPECT_EQ(parse_moment("2026-10-31 23:58:07"), halloween + 7s);
    EXPECT_EQ(parse_moment("2026-10-31 23:58"), halloween);
    EXPECT_TRUE(parse_moment("2028-02-29 00:00")) << "a leap day";
}

TEST(ParseMoment, RefusesWhatIsNoMoment) {
    for (const std::string_view text :
         {"", "2026-10-31", "23:58", "2026-02-30 10:00", "2027-02-29 00:00", "2026-13-01 00:00", "2026-10-31 24:00:00",
          "2026-10-31 23:60", "2026-10-31T23:58:00", "2026-1-31 23:58", "2026-10-31 23:58:00 ", "2026-10-31 23:5a"}) {
        EXPECT_FALSE(parse_moment(text)) << text;
    }
}

TEST(ParseTimeOfDay, ReadsHoursMinutesAndSecondsFromMidnight) {
    EXPECT_EQ(parse_time_of_day("08:15"), 8h + 15min);
    EXPECT_EQ(parse_time_of_day("23:59:59"), 24h - 1s);
    for (const std::string_view text : {"", "8:15", "24:00", "08:60", "08:15:60", "0815"}) {
        EXPECT_FALSE(parse_time_of_day(text)) << text;
    }
}

TEST(ParseDuration, AddsItsParts) {
    EXPECT_EQ(parse_duration("90s"), 90s);
    EXPECT_EQ(parse_duration("10m"), 10min);
    EXPECT_EQ(parse_duration("1h30m"), 90min);
    EXPECT_EQ(parse_duration("2d"), 48h);
    EXPECT_EQ(parse_duration("0s"), 0s);
    EXPECT_EQ(parse_duration("10000d"), 240000h);
}

TEST(ParseDuration, RefusesWhatIsNoDuration) {
    for (const std::string_view text : {"", "10", "s", "-5s", "+5s", "1.5h", "5 s", "5s ", "5x", "10001d", "9999d48h",
                                        "99999999999999999999s", "2147483647d"}) {
        EXPECT_FALSE(parse_duration(text)) << text;
    }
}

TEST(ParseNumber, ReadsAPlainDecimalNumberAndNothingElse) {
    EXPECT_EQ(parse_number("-4.7"), -4.7);
    EXPECT_EQ(parse_number("12"), 12);
    for (const std::string_view text : {"", "12x", "1e5", "nan", "inf", "4,7", "+3", " 3"}) {
        EXPECT_FALSE(parse_number(text)) << text;
    }
}

}  // namespace
}  // namespace nimbry::simulator
