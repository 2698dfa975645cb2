#include <gtest/gtest.h>

#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::WeatherDays;

struct RestartCase {
    const char* name;
    CivilTime last;   // the last train before the exit
    CivilTime first;  // the first train after the start; the second one loads the files
    int changeovers;  // of both runs together
};

// A copy runs from 08:50:05 with a train every ten seconds, leaves by its menu (which saves the day) after one of them,
// and another takes over its folder. The change instant is 09:00:01; the exit's stamp lies 10 s ahead of the last
// train.
TEST(Restart, AroundAChangeoverTheDayIsClosedOnceButInThreeKnownPlaces) {
    const RestartCase cases[] = {
        {"minutes before", at(10, 5, 8, 56, 5), at(10, 5, 8, 57, 5), 1},
        {"into the last minute", at(10, 5, 8, 58, 5), at(10, 5, 8, 59, 5), 1},
        {"into the last minute's end: the second train is the early one", at(10, 5, 8, 58, 45), at(10, 5, 8, 59, 45),
         1},
        {"the early train only primes: the first minute catches up", at(10, 5, 8, 59, 5), at(10, 5, 8, 59, 55), 1},
        {"off over the hour, back in its first minute", at(10, 5, 8, 59, 5), at(10, 5, 9, 0, 5), 1},
        {"back at the first minute's end", at(10, 5, 8, 59, 5), at(10, 5, 9, 0, 45), 1},
        // Between 09:01:00 and 09:01:02 neither the catch-up nor the replay fires.
        {"the second train at 09:01:01 is too late and too early", at(10, 5, 8, 59, 5), at(10, 5, 9, 0, 51), 0},
        {"off over the first minute", at(10, 5, 8, 59, 5), at(10, 5, 9, 1, 5), 1},
        {"off for half an hour", at(10, 5, 8, 59, 5), at(10, 5, 9, 30, 5), 1},
        // The stamp, 08:59:55, is not more than ten seconds before the instant.
        {"left a moment before the hour, back after the first minute", at(10, 5, 8, 59, 45), at(10, 5, 9, 1, 5), 0},
        {"left a moment before the hour, back in the first minute", at(10, 5, 8, 59, 45), at(10, 5, 9, 0, 15), 1},
        // What is done is not stored: in the first minute it is done again.
        {"left right after the change, back in the first minute", at(10, 5, 8, 59, 55), at(10, 5, 9, 0, 15), 2},
        {"left right after the change, back after the first minute", at(10, 5, 8, 59, 55), at(10, 5, 9, 1, 5), 1},
        {"left in the first minute, back in it", at(10, 5, 9, 0, 5), at(10, 5, 9, 0, 25), 2},
        {"left in the first minute, back in the second", at(10, 5, 9, 0, 25), at(10, 5, 9, 1, 25), 1},
        {"left in the second minute", at(10, 5, 9, 1, 5), at(10, 5, 9, 2, 5), 1},
        {"left in the third minute", at(10, 5, 9, 2, 5), at(10, 5, 9, 3, 5), 1},
    };
    for (const RestartCase& c : cases) {
        SCOPED_TRACE(c.name);
        WeatherDays before(at(10, 5, 8, 50, 5));
        before.start();
        before.trains(at(10, 5, 8, 50, 5), c.last);
        before.world.act([&] { before.world.engine.menu_exit(); });
        before.world.run_for(1s);
        ASSERT_TRUE(before.world.engine.gone());
        WeatherDays after(c.first);
        after.inherit(before.world);
        after.start();
        after.trains(c.first, c.first + 3min);
        EXPECT_EQ(before.changeovers() + after.changeovers(), c.changeovers);
        EXPECT_EQ(after.rows().size(), static_cast<std::size_t>(c.changeovers));
        EXPECT_FALSE(after.world.engine.gone());
    }
}

// Killed without a save: at most 30 trains of the day are lost, and the day is closed all the same.
TEST(Restart, AfterAKillTheDayGoesOnFromItsLastSave) {
    WeatherDays before(at(10, 5, 8, 50, 5));
    before.start();
    StationReadings cold;
    cold.temperature.outdoor = -4.7;
    before.trains(at(10, 5, 8, 50, 5), at(10, 5, 8, 51, 55), cold);  // 12 trains
    before.trains(at(10, 5, 8, 52, 5), at(10, 5, 8, 55, 45));        // 23 more: the 30th train saved
    WeatherDays after(at(10, 5, 9, 10, 5));
    after.inherit(before.world);
    after.start();
    after.trains(at(10, 5, 9, 10, 5), at(10, 5, 9, 10, 15));
    ASSERT_EQ(after.rows().size(), 1U);
    EXPECT_TRUE(after.rows()[0].starts_with("5,Oct,+12.3,08:54,-4.7,08:51,")) << after.rows()[0];
}

struct BoundaryCase {
    const char* name;
    CivilTime stamp, now;
    int changeovers;
};

// Instant 09:00:01: the stamp must lie before 08:59:51, the station be past 09:01:02.
TEST(Restart, AMissedChangeoverIsMadeUpForToTheSecond) {
    const BoundaryCase cases[] = {
        {"stamp 11 s before, 62 s after", at(10, 5, 8, 59, 50), at(10, 5, 9, 1, 3), 1},
        {"stamp exactly 10 s before", at(10, 5, 8, 59, 51), at(10, 5, 9, 1, 3), 0},
        {"exactly 61 s after", at(10, 5, 8, 59, 50), at(10, 5, 9, 1, 2), 0},
        {"a change of the day before is not replayed", at(10, 4, 8, 50), at(10, 5, 0, 30), 0},
        {"a file from after the change", at(10, 5, 9, 5), at(10, 5, 20, 0), 0},
    };
    for (const BoundaryCase& c : cases) {
        SCOPED_TRACE(c.name);
        WeatherDays days(c.now - 10s);
        std::string today = stamp_text(c.stamp) + "\r\n";
        for (int n = 2; n <= 33; ++n) today += "1\r\n";
        days.world.files.put("nimbrTDay.log", today);
        days.start();
        days.train(c.now - 10s);
        // The first train of a case may itself lie in the first minute.
        const int before = days.changeovers();
        days.train(c.now);
        EXPECT_EQ(days.changeovers() - before, c.changeovers);
    }
}

TEST(Restart, NoRainOfTheDayIsLost) {
    WeatherDays before(at(10, 5, 8, 59, 30));
    before.start();
    before.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));  // counter 123 at the change
    StationReadings wet;
    wet.rain.total_mm = 130;
    before.trains(at(10, 5, 9, 10), at(10, 5, 9, 10, 10), wet);
    WeatherDays after(at(10, 5, 12, 0));
    after.inherit(before.world);
    after.start();
    wet.rain.total_mm = 131;
    after.trains(at(10, 5, 12, 0), at(10, 5, 12, 0, 10), wet);
    EXPECT_EQ(after.world.state().rain.raintoday, 8.0F);
    EXPECT_EQ(after.world.panel().TxtRainToday.text, " 8 mm");
}

struct NightCase {
    const char* name;
    CivilTime eve;               // of the evening before, so that a train falls on 23:59:50
    CivilTime shift;             // the computer's civil time at which it jumps
    std::chrono::minutes jumps;  // by so much
};

// The computer's civil clock jumps, the station's does not: no record moves, and each day is closed once.
TEST(Restart, DaylightSavingNightsShiftNothing) {
    const NightCase cases[] = {
        {"northern autumn", at(10, 24, 23, 40, 40), at(10, 25, 3, 0), -60min},
        {"northern spring", at(3, 28, 23, 40, 40), at(3, 29, 2, 0), 60min},
        {"southern autumn", at(4, 4, 23, 40, 40), at(4, 5, 3, 0), -60min},
        {"southern spring", at(10, 3, 23, 40, 40), at(10, 4, 2, 0), 60min},
    };
    for (const NightCase& c : cases) {
        SCOPED_TRACE(c.name);
        WeatherDays days(c.eve, "tmidnight=True\r\ntnineam=False\r\n");
        days.start();
        for (CivilTime station = c.eve; station < c.eve + 5h; station += 50s) {
            days.world.clock.set_computer_time(station < c.shift ? station : station + c.jumps);
            StationReadings readings;
            if (station == c.shift + 40s) readings.temperature.outdoor = -4.7;
            days.world.send_train(readings, station);
        }
        EXPECT_EQ(days.changeovers(), 1);
        const CivilTime midnight = std::chrono::floor<std::chrono::days>(c.eve) + 24h;
        EXPECT_EQ(days.world.lines("nimbrYDay.log")[0], stamp_text(midnight - 10s - 60s));
        const DayExtremes& day = days.world.state().records.day;
        EXPECT_EQ(day.mintemptime, stamp_text(c.shift + 40s).substr(12, 5));
        // A start in that night reads the day back: ages are counted on the station's clock.
        WeatherDays after(c.eve + 5h);
        after.inherit(days.world);
        after.start();
        after.trains(c.eve + 5h, c.eve + 5h + 10s);
        EXPECT_EQ(after.world.state().records.day.mintemp, -4.7F);
        EXPECT_TRUE(after.world.state().run.YFileOK);
        EXPECT_EQ(after.changeovers(), 0);
    }
}

}  // namespace
}  // namespace nimbry
