#include <gtest/gtest.h>

#include <algorithm>

#include "engine/records/changeover.h"
#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::WeatherDays;

const std::string midnight_keys = "tmidnight=True\r\ntnineam=False\r\n";

struct CatchUpCase {
    const char *name, *keys;
    CivilTime hour;
};

TEST(ChangeoverDetails, TheFirstMinuteOfTheHourCatchesUpOnceForEachKind) {
    const CatchUpCase cases[] = {
        {"nine", "", at(10, 5, 9, 0)},
        {"ten", "AddOneHour=True\r\n", at(10, 5, 10, 0)},
        {"midnight", midnight_keys.c_str(), at(10, 6, 0, 0)},
    };
    for (const CatchUpCase& c : cases) {
        SCOPED_TRACE(c.name);
        WeatherDays days(c.hour - 40s, c.keys);
        days.start();
        days.trains(c.hour - 40s, c.hour - 20s);
        EXPECT_EQ(days.changeovers(), 0);
        days.train(c.hour + 59s);
        EXPECT_EQ(days.changeovers(), 1);
        days.train(c.hour + 69s);
        EXPECT_EQ(days.changeovers(), 1);
        // The other hours' catch-ups stay away.
        days.train(c.hour + 1h + 5s);
        EXPECT_EQ(days.changeovers(), 1);
    }
}

TEST(ChangeoverDetails, TheSecondMinuteIsTooLate) {
    WeatherDays days(at(10, 5, 8, 59, 20));
    days.start();
    days.trains(at(10, 5, 8, 59, 20), at(10, 5, 8, 59, 40));
    days.train(at(10, 5, 9, 1, 0));
    EXPECT_EQ(days.changeovers(), 0);
}

TEST(ChangeoverDetails, TheMarkOfTheChangeFalls61SecondsAfterItsInstant) {
    WeatherDays days(at(10, 5, 8, 59, 30));
    days.start();
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    const bool& triggered = days.world.state().records.ChangeTriggered;
    EXPECT_TRUE(triggered);
    days.train(at(10, 5, 9, 1, 1));
    EXPECT_TRUE(triggered);
    days.train(at(10, 5, 9, 1, 2));
    EXPECT_FALSE(triggered);
}

// The train that catches up is still the old day's: it is in the row and in yesterday's file.
TEST(ChangeoverDetails, ACatchUpTrainBelongsToTheOldDay) {
    WeatherDays days(at(10, 5, 8, 59, 20));
    days.start();
    days.trains(at(10, 5, 8, 59, 20), at(10, 5, 8, 59, 40));
    StationReadings cold;
    cold.temperature.outdoor = -5;
    days.train(at(10, 5, 9, 0, 20), cold);
    EXPECT_TRUE(days.rows()[0].starts_with("5,Oct,+12.3,08:59,-5,09:00,")) << days.rows()[0];
    EXPECT_EQ(days.world.lines("nimbrYDay.log")[0], "05 Oct 2026 08:59:20");
}

// Kept on purpose: the date is a minute old, the month is the train's.
TEST(ChangeoverDetails, AMidnightCatchUpOnTheFirstJoinsTheOldDateToTheNewMonth) {
    WeatherDays days(at(10, 31, 23, 59, 20), midnight_keys);
    days.start();
    days.trains(at(10, 31, 23, 59, 20), at(10, 31, 23, 59, 40));
    days.train(at(11, 1, 0, 0, 20));
    ASSERT_EQ(days.rows("alOct26.csv").size(), 1U);
    EXPECT_TRUE(days.rows("alOct26.csv")[0].starts_with("31,Nov,"));
}

TEST(ChangeoverDetails, TodaysFileIsLeftAsTheFinishedDayUntilTheNextSave) {
    WeatherDays days(at(10, 5, 8, 59, 30));
    days.start();
    StationReadings wet;
    wet.rain.total_mm = 130;
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 40));
    days.train(at(10, 5, 8, 59, 55), wet);
    const auto today = days.world.lines("nimbrTDay.log");
    ASSERT_EQ(today.size(), 33U);
    EXPECT_EQ(today[0], "05 Oct 2026 09:00:05");
    EXPECT_EQ(today[1], "12.3");
    EXPECT_EQ(today[18], "7");  // the finished day's rain
    EXPECT_EQ(today[19], "0");  // days since rain
    EXPECT_EQ(today[32], "7");  // the last rain
    days.trains(at(10, 5, 9, 0, 5), at(10, 5, 9, 0, 15), wet);
    EXPECT_EQ(days.world.lines("nimbrTDay.log"), today);
}

TEST(ChangeoverDetails, EveryBoxOfTodayIsBlankAndEveryNumberReset) {
    WeatherDays days(at(10, 5, 8, 59, 30));
    days.start();
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    const WeatherState& state = days.world.state();
    const MainPanel& panel = state.panel;
    const AdditionalPanel& more = state.additional;
    for (const Box* box : {&panel.TxtTempMax, &panel.TxtTempMin, &panel.TxtHumMax, &panel.TxtHumMin, &panel.TxtRainMax,
                           &panel.TxtBarMax, &panel.TxtBarMin, &panel.TxtGustMax, &panel.TxtRainToday, &more.txtMaxDew,
                           &more.txtMinDew, &more.txtMinWC, &more.txtMaxInTemp, &more.txtMinInTemp})
        EXPECT_EQ(box->text, "");
    EXPECT_EQ(more.txtMaxHI.text, "- No Valid Data -");
    const DayExtremes& day = state.records.day;
    const DayExtremes fresh;
    EXPECT_EQ(day.maxtemp, fresh.maxtemp);
    EXPECT_EQ(day.minbar, 9999);
    EXPECT_EQ(day.minwc, 999);
    EXPECT_EQ(day.maxintemp, -999);
    EXPECT_EQ(state.rain.raintoday, 0.0F);
    EXPECT_EQ(state.rain.rainatchange, 123.0F);
    EXPECT_FALSE(state.records.doingreset);
    EXPECT_FALSE(state.records.summary_uploaded);
}

// Kept on purpose: a day with a silent sensor is in yesterday's file with its marks, but in no file of today.
TEST(ChangeoverDetails, ADayWithASilentSensorIsFinishedButNotSavedAsToday) {
    WeatherDays days(at(10, 5, 8, 59, 30));
    days.start();
    StationReadings windless;
    windless.wind.fault_bits = 8;
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50), windless);
    EXPECT_EQ(days.world.lines("nimbrYDay.log")[15], "-999");
    EXPECT_FALSE(days.world.files.exists("nimbrTDay.log"));
    ASSERT_EQ(days.rows().size(), 1U);
    EXPECT_NE(days.rows()[0].find(",0,,,0,1,0"), std::string::npos) << days.rows()[0];
}

TEST(ChangeoverDetails, WhatWasPutOffIsTakenUpAfterwards) {
    WeatherDays days(at(10, 5, 14, 0));
    days.start();
    days.trains(at(10, 5, 14, 0), at(10, 5, 14, 0, 10));
    PublishState& publish = days.world.state().publish;
    days.world.state().records.coMailSent = true;
    days.train(at(10, 5, 14, 0, 20));
    EXPECT_FALSE(days.world.state().records.coMailSent);
    publish.revisitftp = publish.revisitmail = publish.revisitwu = true;
    days.train(at(10, 5, 14, 0, 30));
    EXPECT_FALSE(publish.revisitftp || publish.revisitmail || publish.revisitwu);
    EXPECT_TRUE(days.world.state().records.coMailSent);
    days.train(at(10, 5, 14, 0, 40));
    EXPECT_FALSE(days.world.state().records.coMailSent);
}

// In a missed change yesterday's file is always stale, which empties the date that the save of the day asks for.
TEST(ChangeoverDetails, AMissedChangeSavesTheFinishedDaySoThatItIsNotMadeUpForTwice) {
    WeatherDays days(at(10, 5, 9, 30));
    std::string old = "04 Oct 2026 08:58:50\r\n", today = "05 Oct 2026 08:30:00\r\n";
    for (int n = 2; n <= 32; ++n) old += "1\r\n";
    for (int n = 2; n <= 33; ++n) today += "1\r\n";
    days.world.files.put("nimbrYDay.log", old);
    days.world.files.put("nimbrTDay.log", today);
    days.start();
    days.trains(at(10, 5, 9, 30), at(10, 5, 9, 30, 10));
    ASSERT_EQ(days.rows().size(), 1U);
    EXPECT_EQ(days.world.lines("nimbrTDay.log")[0], "05 Oct 2026 09:30:20");
    EXPECT_EQ(days.world.lines("nimbrYDay.log")[0], "05 Oct 2026 09:29:10");
    WeatherDays again(at(10, 5, 9, 31));
    again.inherit(days.world);
    again.start();
    again.trains(at(10, 5, 9, 31), at(10, 5, 9, 31, 10));
    EXPECT_EQ(again.rows().size(), 1U);
    EXPECT_EQ(again.changeovers(), 0);
}

TEST(ChangeoverDetails, TheStepsOfACatchUpAtMidnightComeInTheirOrder) {
    WeatherDays days(at(10, 5, 23, 59, 20), midnight_keys);
    days.world.files.put("nimbryco.bat", "echo\r\n");
    days.start();
    days.trains(at(10, 5, 23, 59, 20), at(10, 5, 23, 59, 40));
    days.world.files.put("nimbrTDay.log", "today\r\n");
    days.world.files.put("nimbrYDay.log", "yesterday\r\n");
    days.world.files.forget_calls();
    days.train(at(10, 6, 0, 0, 10));
    std::vector<std::string> changes;
    for (const auto& call : days.world.files.calls())
        if (call.operation != "read" && call.operation != "sync")
            changes.push_back(call.operation + " " + (call.other.empty() ? call.name : call.other));
    EXPECT_EQ(changes, (std::vector<std::string>{"copy nimbrTDay.bak", "copy nimbrYDay.bak", "rewrite nimbrYDay.log",
                                                 "append nbextreme.log", "rewrite nimbrTDay.log",
                                                 "append nbextreme.log", "copy altemp.csv", "rewrite NBYSummary.txt",
                                                 "append nbyprog.log", "append rnslm.dat"}));
}

TEST(ChangeoverDetails, ALateErrorEndsTheProgramUnderTheTagOfItsRoutine) {
    WeatherDays days(at(10, 5, 23, 59, 40));
    days.start();
    days.trains(at(10, 5, 23, 59, 40), at(10, 5, 23, 59, 50));
    // The midnight file is waited for; meanwhile a first error happens elsewhere, and then the file is refused.
    days.world.files.put("rnslm.dat", "");
    days.world.files.set_in_use("rnslm.dat", true);
    days.train(at(10, 6, 0, 0, 0));
    days.world.state().run.DuplicateError = true;
    days.world.files.refuse("rnslm.dat", FileResult::permission);
    days.world.files.set_in_use("rnslm.dat", false);
    days.world.run_for(3s);
    ASSERT_EQ(days.world.notices.boxes.size(), 1U);
    EXPECT_EQ(days.world.notices.boxes[0].what.text,
              "Unrecoverable error 70 encountered in extremes.\r\nNimbry will now exit.");
}

}  // namespace
}  // namespace nimbry
