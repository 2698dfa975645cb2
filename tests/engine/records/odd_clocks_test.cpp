#include <gtest/gtest.h>

#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::WeatherDays;

const std::string midnight_keys = "tmidnight=True\r\ntnineam=False\r\n";

struct SecondCase {
    CivilTime train;
    int changeovers;
};

// The only train near the hour: the last ten seconds before it and the first minute behind it change the day over.
TEST(OddClocks, ASingleTrainChangesTheDayOverInSeventySecondsAndInNoOther) {
    for (const SecondCase& c :
         {SecondCase{at(10, 5, 8, 59, 49), 0}, SecondCase{at(10, 5, 8, 59, 50), 1}, SecondCase{at(10, 5, 8, 59, 59), 1},
          SecondCase{at(10, 5, 9, 0, 0), 1}, SecondCase{at(10, 5, 9, 0, 59), 1}, SecondCase{at(10, 5, 9, 1, 0), 0}}) {
        SCOPED_TRACE(stamp_text(c.train));
        WeatherDays days(at(10, 5, 8, 50));
        days.start();
        days.trains(at(10, 5, 8, 50), at(10, 5, 8, 50, 20));
        days.train(c.train);
        EXPECT_EQ(days.changeovers(), c.changeovers);
        EXPECT_EQ(days.rows().size(), static_cast<std::size_t>(c.changeovers));
    }
}

struct NewYearCase {
    const char* name;
    std::chrono::minutes station_is_ahead;
};

// The year is the computer's, so that between the two midnights the station's date is a year off.
TEST(OddClocks, AStationMinutesOffAtNewYearClosesTheYearOnce) {
    for (const NewYearCase& c : {NewYearCase{"the station is ahead", 3min}, NewYearCase{"it is behind", -3min}}) {
        SCOPED_TRACE(c.name);
        const CivilTime midnight = at(1, 1, 0, 0, 0, 2027);
        WeatherDays days(midnight - 20min, midnight_keys + "fwrtlog=True\r\nLogMin=5\r\n");
        days.world.files.put("nimbry.dat", "december\r\n");
        days.start();
        for (CivilTime station = midnight - 15min; station < midnight + 15min; station += 10s) {
            days.world.clock.set_computer_time(station - c.station_is_ahead);
            days.world.send_train({}, station);
            days.world.run_for(9800ms);
        }
        EXPECT_EQ(days.changeovers(), 1);
        ASSERT_EQ(days.rows("alDec26.csv").size(), 1U);
        EXPECT_TRUE(days.rows("alDec26.csv")[0].starts_with("31,Dec,")) << days.rows("alDec26.csv")[0];
        EXPECT_EQ(days.world.lines("logDec26.csv").at(0), "december");
        EXPECT_NE(days.world.files.contents("nimbry.dat").find("\r\n1,Jan,"), std::string::npos);
        EXPECT_EQ(days.world.lines("nimbrTDay.log").size(), 33U);

        // A start in the new year goes on with the day, and closes it as ever.
        WeatherDays after(midnight + 9h);
        after.inherit(days.world);
        after.start();
        after.trains(midnight + 9h, midnight + 9h + 20s);
        EXPECT_EQ(after.changeovers(), 0);
        after.trains(midnight + 24h - 30s, midnight + 24h - 10s);
        ASSERT_EQ(after.rows().size(), 1U);
        EXPECT_TRUE(after.rows()[0].starts_with("1,Jan,")) << after.rows()[0];
        EXPECT_FALSE(after.world.engine.gone());
    }
}

// Somebody sets the station's date wrong, and later right again.
TEST(OddClocks, AStationWhoseDateJumpsAndReturnsLosesNoDay) {
    for (const std::chrono::days off :
         {std::chrono::days{-40}, std::chrono::days{-1}, std::chrono::days{1}, std::chrono::days{40}}) {
        SCOPED_TRACE(off.count());
        WeatherDays days(at(10, 5, 8, 50));
        days.start();
        days.trains(at(10, 5, 8, 59, 0), at(10, 5, 8, 59, 50));
        for (CivilTime t = at(10, 5, 14, 0); t < at(10, 5, 14, 20); t += 10s) {
            days.world.clock.set_computer_time(t);
            days.world.send_train({}, t + off);
        }
        days.trains(at(10, 5, 14, 20), at(10, 5, 14, 30));
        EXPECT_EQ(days.rows().size(), 1U);
        days.trains(at(10, 6, 8, 59, 30), at(10, 6, 8, 59, 50));
        ASSERT_EQ(days.rows().size(), 2U);
        EXPECT_TRUE(days.rows()[1].starts_with("6,Oct,")) << days.rows()[1];
        EXPECT_FALSE(days.world.engine.gone());
    }
}

}  // namespace
}  // namespace nimbry
