#include "engine/records/rain.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "engine/derived/dates.h"
#include "engine/records/changeover_word.h"
#include "tests/world/bare_copy.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

class Rain : public testing::Test {
protected:
    Rain() { at({2026, 10, 5, 14, 0, 30}); }

    void at(const DateParts& time) {
        state.readings.dtvar = civil_time(time);
        state.readings.rdattime = padded(time.hour, 2) + ":" + padded(time.minute, 2) + ":" + padded(time.second, 2);
    }
    void counter(int mm) { state.readings.rdattotrain = padded(mm, 4); }
    float cycle(int mm) {
        counter(mm);
        rain_of_the_day(world.copy);
        return rain.raintoday;
    }
    std::string minute(int mm) {
        counter(mm);
        rain_last_hour(world.copy);
        return state.panel.TxtRainLH.text;
    }
    void use_inches() {
        state.settings.fRainin = true;
        state.units = units_from(state.settings);
    }

    BareCopy world;
    WeatherState& state = world.state;
    RainState& rain = state.rain;
};

// The day.

TEST_F(Rain, TheFirstCycleTakesTheCounterAsTheDaysStart) {
    EXPECT_EQ(cycle(123), 0);
    EXPECT_EQ(rain.rainnow, 123);
    EXPECT_EQ(rain.rainatchange, 123);
    EXPECT_FALSE(state.run.firstrun);
    EXPECT_EQ(cycle(125), 2);
    EXPECT_EQ(cycle(130), 7);
}

struct StartCase {
    const char* what;
    bool yesterday_good;
    float base_from_file, today_from_file;
    int counter;
    float base, today;
};

TEST_F(Rain, TheFirstCycleFindsTheDaysBase) {
    for (const StartCase& c : {
             StartCase{"no good yesterday: today's file holds the total", false, 0, 7, 123, 116, 7},
             StartCase{"neither file: the day starts now", false, 0, 0, 123, 123, 0},
             StartCase{"a base left in memory does not count without yesterday's file", false, 99, 7, 123, 116, 7},
             StartCase{"good yesterday: rain that fell meanwhile counts", true, 116, 7, 130, 116, 14},
             StartCase{"the counter was reset meanwhile: the total turns negative", true, 116, 7, 3, 10, -7},
             StartCase{"a day that read negative already stays so", true, 116, -7, 3, 10, -7},
             StartCase{"no good yesterday and a counter below the total", false, 0, 7, 3, 10, -7},
             StartCase{"no good yesterday, a negative total", false, 0, -7, 30, 37, -7},
             StartCase{"a base equal to the counter is no reset", true, 123, 7, 123, 123, 0},
         }) {
        SCOPED_TRACE(c.what);
        rain = RainState{};
        state.run.firstrun = true;
        state.run.YFileOK = c.yesterday_good;
        rain.rainatchange = c.base_from_file;
        rain.raintoday = c.today_from_file;
        EXPECT_EQ(cycle(c.counter), c.today);
        EXPECT_EQ(rain.rainatchange, c.base);
        EXPECT_EQ(cycle(c.counter), c.today) << "and so it stays";
    }
}

TEST_F(Rain, AResetTurnsTheDaysTotalNegativeOnceAndNewRainAddsToIt) {
    cycle(100);
    EXPECT_EQ(cycle(120), 20);
    EXPECT_EQ(cycle(0), -20);
    EXPECT_EQ(rain.rainatchange, 20);
    EXPECT_EQ(cycle(0), -20) << "an unchanged counter is not corrected again";
    EXPECT_EQ(cycle(5), -15);
    EXPECT_EQ(cycle(25), 5);
}

TEST_F(Rain, EveryFallIsCorrectedOnce) {
    cycle(100);
    cycle(120);
    cycle(10);
    EXPECT_EQ(rain.raintoday, -20);
    EXPECT_EQ(cycle(12), -18);
    EXPECT_EQ(cycle(3), 18) << "the base is the negative total and the counter";
    EXPECT_EQ(rain.rainatchange, -15);
    EXPECT_EQ(cycle(3), 18);
}

TEST_F(Rain, AFallThatStaysAboveTheBaseIsNoReset) {
    cycle(100);
    cycle(120);
    EXPECT_EQ(cycle(110), 10);
    EXPECT_EQ(rain.rainatchange, 100);
}

TEST_F(Rain, TheChangeoverMovesTheBaseAndTheTotalStartsAnew) {
    cycle(100);
    cycle(107);
    rain.rainatchange = rain.rainnow;
    EXPECT_EQ(cycle(107), 0);
    EXPECT_EQ(cycle(109), 2);
}

TEST_F(Rain, ALetterInTheCounterIsNoError) {
    for (const char* digits : {"1E99", "EEEE", "A000", "9D9F", "00E0", ""}) {
        SCOPED_TRACE(digits);
        state.readings.rdattotrain = digits;
        EXPECT_NO_THROW(rain_of_the_day(world.copy));
        EXPECT_NO_THROW(rain_last_hour(world.copy));
        EXPECT_TRUE(std::isfinite(rain.raintoday));
    }
    state.readings.rdattotrain = "1E99";
    EXPECT_EQ(rain_counter(state.readings), 1e9F);
    state.readings.rdattotrain = "12E2";
    EXPECT_EQ(rain_counter(state.readings), 1200);
}

struct TodayCase {
    const char* what;
    float today;
    const char *in_mm, *in_inches;
};

TEST_F(Rain, ShowsTheRainOfTheDay) {
    for (const TodayCase& c : {
             TodayCase{"none", 0, " nil", " nil"},
             TodayCase{"some", 7, " 7 mm", " 0.28 In."},
             TodayCase{"a negative total", -20, " -20 mm", " -0.79 In."},
             TodayCase{"much", 250, " 250 mm", " 9.84 In."},
         }) {
        SCOPED_TRACE(c.what);
        for (const bool inches : {false, true}) {
            state.settings.fRainin = inches;
            state.units = units_from(state.settings);
            rain = RainState{};
            rain.rainatchange = 1000 - c.today;
            state.run.firstrun = false;
            cycle(1000);
            EXPECT_EQ(state.panel.TxtRainToday.text, inches ? c.in_inches : c.in_mm);
        }
    }
}

TEST_F(Rain, WhatRoundsToNothingIsNil) {
    use_inches();
    state.run.firstrun = false;
    counter(100);
    rain.rainatchange = 99.9F;
    rain_of_the_day(world.copy);
    EXPECT_EQ(state.panel.TxtRainToday.text, " nil") << "0.1 mm is 0.004 inches";
}

TEST_F(Rain, TheBalloonNamesTheChangeover) {
    struct Case {
        bool midnight, one_hour;
        const char *word, *balloon;
    };
    for (const Case& c : {
             Case{false, false, " 9.00am ", "Rainfall Since 9.00am "},
             Case{false, true, " 10.00am ", "Rainfall Since 10.00am "},
             Case{true, false, " midnight ", "Rainfall Since midnight "},
             Case{true, true, " midnight ", "Rainfall Since midnight "},
         }) {
        state.settings.tmidnight = c.midnight;
        state.settings.tnineam = !c.midnight;
        state.settings.AddOneHour = c.one_hour;
        cycle(100);
        EXPECT_EQ(changeover_word(state.settings), c.word);
        EXPECT_EQ(state.panel.TxtRainToday.balloon, c.balloon);
    }
}

// The last hour.

TEST_F(Rain, TheFirstMinuteOnlyTakesTheCounter) {
    EXPECT_EQ(minute(123), "0 mm");
    EXPECT_EQ(rain.LastHourPrev, 123);
    EXPECT_EQ(rain.LastHourIndex, 1);
    EXPECT_EQ(rain.LastHourSum, 0);
    EXPECT_EQ(rain.LastHourRing, (std::array<int, 62>{}));
}

TEST_F(Rain, TheHourIsTheSumOfItsMinutes) {
    minute(100);
    EXPECT_EQ(minute(102), " 2 mm");
    EXPECT_EQ(minute(102), " 2 mm");
    EXPECT_EQ(minute(105), " 5 mm");
    EXPECT_EQ(rain.LastHourDelta, 3);
    EXPECT_EQ(rain.LastHourSum, 5);
    EXPECT_EQ(rain.LastHourRing[1], 2);
    EXPECT_EQ(rain.LastHourRing[2], 0);
    EXPECT_EQ(rain.LastHourRing[3], 3);
    EXPECT_EQ(rain.LastHourIndex, 4);
}

TEST_F(Rain, AMinuteLeavesTheHourAfterSixty) {
    minute(100);
    minute(107);
    for (int n = 2; n <= 60; ++n) minute(107);
    EXPECT_EQ(rain.LastHourIndex, 1) << "the ring is full: 60 minutes";
    EXPECT_EQ(rain.LastHourSum, 7);
    minute(107);
    EXPECT_EQ(rain.LastHourSum, 0);
    EXPECT_EQ(rain.LastHourRing[61], 0) << "never used";
    EXPECT_EQ(rain.LastHourRing[0], 0);
}

TEST_F(Rain, ARainOfAnHourStandsInAllSixtySlots) {
    minute(0);
    for (int n = 1; n <= 90; ++n) minute(n);
    EXPECT_EQ(rain.LastHourSum, 60);
}

TEST_F(Rain, AFallenCounterCountsWhole) {
    minute(100);
    minute(103);
    EXPECT_EQ(minute(4), " 7 mm");
    EXPECT_EQ(rain.LastHourDelta, 4);
}

TEST_F(Rain, InchesAreRoundedToHundredths) {
    use_inches();
    EXPECT_EQ(minute(100), "0 In.");
    EXPECT_EQ(minute(107), " 0.28 In.");
    EXPECT_EQ(minute(125), " 0.98 In.");
}

TEST_F(Rain, ARingFromAFileGoesOnWithoutADeltaForTheGap) {
    rain.LastHourIndex = 12;
    rain.LastHourRing[5] = 3;
    rain.LastHourPrev.reset();
    EXPECT_EQ(minute(140), " 3 mm");
    EXPECT_EQ(rain.LastHourDelta, 0);
    EXPECT_EQ(minute(141), " 4 mm");
}

TEST(LastHourTag, IsHundredthsOfAnInch) {
    EXPECT_EQ(last_hour_tag(0), "r000");
    EXPECT_EQ(last_hour_tag(2), "r008");
    EXPECT_EQ(last_hour_tag(25), "r098") << "98.43";
    EXPECT_EQ(last_hour_tag(254), "r1000");
}

// The midnight file.

TEST_F(Rain, AtMidnightTheCounterIsAppendedOnce) {
    counter(123);
    at({2026, 10, 5, 23, 59, 50});
    midnight_rain_file(world.copy);
    EXPECT_FALSE(world.files.exists("rnslm.dat"));
    at({2026, 10, 6, 0, 0, 0});
    midnight_rain_file(world.copy);
    at({2026, 10, 6, 0, 0, 50});
    midnight_rain_file(world.copy);
    EXPECT_EQ(world.files.contents("rnslm.dat"), "06 Oct 2026 00:00:00\r\n123\r\n");
    at({2026, 10, 6, 0, 1, 0});
    midnight_rain_file(world.copy);
    at({2026, 10, 7, 0, 0, 20});
    counter(7);
    midnight_rain_file(world.copy);
    EXPECT_EQ(world.files.contents("rnslm.dat"), "06 Oct 2026 00:00:00\r\n123\r\n07 Oct 2026 00:00:20\r\n7\r\n");
}

TEST_F(Rain, ACounterThatAPowerCutHasTornDoesNotTakeTheNextEntryWithIt) {
    world.files.put("rnslm.dat", "05 Oct 2026 00:00:00\r\n11");
    counter(123);
    at({2026, 10, 6, 0, 0, 0});
    midnight_rain_file(world.copy);
    EXPECT_EQ(world.files.contents("rnslm.dat"), "05 Oct 2026 00:00:00\r\n11\r\n06 Oct 2026 00:00:00\r\n123\r\n");
}

TEST_F(Rain, WithoutAStationTimeNothingIsAppended) {
    state.readings.dtvar.reset();
    state.readings.rdattime = "00:00:10";
    midnight_rain_file(world.copy);
    EXPECT_FALSE(world.files.exists("rnslm.dat"));
}

TEST_F(Rain, AFileInUseIsWaitedForAndHoldsWhatMidnightGave) {
    counter(123);
    at({2026, 10, 6, 0, 0, 10});
    world.files.put("rnslm.dat", "");
    world.files.set_in_use("rnslm.dat", true);
    world.pauses.after(5s, [&] {
        at({2026, 10, 6, 0, 0, 15});
        counter(124);
        midnight_rain_file(world.copy);  // the wait is under way: not a second time
    });
    world.pauses.after(90s, [&] { world.files.set_in_use("rnslm.dat", false); });
    const Instant start = world.clock.monotonic();
    midnight_rain_file(world.copy);
    EXPECT_EQ(world.files.contents("rnslm.dat"), "06 Oct 2026 00:00:10\r\n123\r\n");
    EXPECT_GE(world.clock.monotonic() - start, 90s);
    ASSERT_EQ(world.log_lines().size(), 1U) << "after a minute, one line";
    EXPECT_TRUE(world.log_lines()[0].ends_with(" Waiting for rnslm.dat, which another program has in use"));
}

TEST_F(Rain, AFailedWriteIsAnErrorAndNotRepeatedInThatMinute) {
    counter(123);
    at({2026, 10, 6, 0, 0, 10});
    world.files.refuse_changes(FileResult::disk_full);
    try {
        midnight_rain_file(world.copy);
        ADD_FAILURE() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, ErrorNumber::disk_full);
    }
    world.files.forget_calls();
    EXPECT_NO_THROW(midnight_rain_file(world.copy));
    EXPECT_TRUE(world.files.calls().empty());
}

// Since midnight.

struct MidnightCase {
    const char* what;
    const char* file;
    int counter;
    float since;
};

TEST_F(Rain, RainSinceMidnightIsTheCounterLessTheLastEntryOfTheDate) {
    cycle(100);
    for (const MidnightCase& c : {
             MidnightCase{"one entry", "05 Oct 2026 00:00:10\r\n116\r\n", 123, 7},
             MidnightCase{"the last of two entries", "05 Oct 2026 00:00:10\r\n110\r\n05 Oct 2026 00:00:40\r\n116\r\n",
                          123, 7},
             MidnightCase{"other dates do not count",
                          "04 Oct 2026 00:00:10\r\n90\r\n05 Oct 2026 00:00:10\r\n116\r\n06 Oct 2026 00:00:10\r\n1\r\n",
                          123, 7},
             MidnightCase{"a counter that was reset since", "05 Oct 2026 00:00:10\r\n116\r\n", 4, 4},
             MidnightCase{"bare line feeds and a decimal comma", "05 Oct 2026 00:00:10\n116,5\n", 123, 6.5F},
             MidnightCase{"no line end at the end", "05 Oct 2026 00:00:10\r\n116", 123, 7},
             MidnightCase{"a counter that is none is a counter of 0", "05 Oct 2026 00:00:10\r\n-1e300\r\n", 123, 123},
             MidnightCase{"one that no station reaches", "05 Oct 2026 00:00:10\r\n1e300\r\n", 123, 123},
             MidnightCase{"a date without its counter: the start of the date in this run", "05 Oct 2026 00:00:10\r\n",
                          123, 23},
             MidnightCase{"no entry of the date: the same", "04 Oct 2026 00:00:10\r\n90\r\n", 123, 23},
             MidnightCase{"an empty file: the same", "", 123, 23},
             MidnightCase{"garbage: the same", "x\r\n\r\n\xFF\r\n12\r\n", 123, 23},
         }) {
        SCOPED_TRACE(c.what);
        world.files.put("rnslm.dat", c.file);
        rain.rainnow = static_cast<float>(c.counter);
        EXPECT_EQ(rain_since_midnight(world.copy), c.since);
        EXPECT_EQ(rain.RainSinceMidnight, c.since);
    }
}

TEST_F(Rain, WithAMidnightChangeoverItIsTheRainOfTheDay) {
    state.settings.tmidnight = true;
    world.files.put("rnslm.dat", "05 Oct 2026 00:00:10\r\n116\r\n");
    cycle(100);
    cycle(103);
    EXPECT_EQ(rain_since_midnight(world.copy), 3);
}

TEST_F(Rain, WithoutAFileItCountsFromTheFirstCycleOfTheDate) {
    cycle(100);
    cycle(104);
    EXPECT_EQ(rain_since_midnight(world.copy), 4);
    at({2026, 10, 6, 0, 0, 5});
    cycle(106);
    EXPECT_EQ(rain_since_midnight(world.copy), 0);
    cycle(107);
    EXPECT_EQ(rain_since_midnight(world.copy), 1);
}

TEST_F(Rain, BeforeTheFirstCycleNothingHasFallen) {
    EXPECT_EQ(rain_since_midnight(world.copy), 0);
}

}  // namespace
}  // namespace nimbry::test
