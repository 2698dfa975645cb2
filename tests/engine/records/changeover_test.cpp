#include "engine/records/changeover.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using Day = test::WeatherDays;

TEST(Changeover, RunsOnceInTheLastTenSecondsAndNotAgainInTheMinuteAfter) {
    Day day(at(10, 5, 8, 59, 2));
    day.start();
    day.trains(at(10, 5, 8, 59, 2), at(10, 5, 9, 2, 2));
    EXPECT_EQ(day.changeovers(), 1);
    EXPECT_EQ(day.world.log().back(), "05 Oct 2026 08:59:52 Changeover process completed successfully");
    EXPECT_EQ(day.rows().size(), 1U);
    EXPECT_FALSE(day.world.state().comm.changebusy);
}

TEST(Changeover, NothingHappensAtSecondFortyNine) {
    Day day(at(10, 5, 8, 59, 29));
    day.start();
    day.trains(at(10, 5, 8, 59, 29), at(10, 5, 8, 59, 49));
    EXPECT_EQ(day.changeovers(), 0);
    day.train(at(10, 5, 8, 59, 50));
    EXPECT_EQ(day.changeovers(), 1);
}

TEST(Changeover, WithoutATrainBeforeTheHourTheFirstMinuteCatchesUpOnce) {
    Day day(at(10, 5, 8, 59, 20));
    day.start();
    day.trains(at(10, 5, 8, 59, 20), at(10, 5, 8, 59, 40));
    day.trains(at(10, 5, 9, 0, 20), at(10, 5, 9, 1, 30));
    EXPECT_EQ(day.changeovers(), 1);
    EXPECT_EQ(day.world.log().back(), "05 Oct 2026 09:00:20 Changeover process completed successfully");
}

// Kept on purpose: only the spacing of the trains keeps the early changeover single.
TEST(Changeover, TwoTrainsInTheLastTenSecondsMakeTwo) {
    Day day(at(10, 5, 8, 59, 30));
    day.start();
    day.train(at(10, 5, 8, 59, 30));
    day.train(at(10, 5, 8, 59, 40));
    day.train(at(10, 5, 8, 59, 51));
    day.train(at(10, 5, 8, 59, 58));
    EXPECT_EQ(day.changeovers(), 2);
    EXPECT_EQ(day.rows().size(), 2U);
}

struct HourCase {
    const char* name;
    const char* keys;
    CivilTime before, trigger;
    const char *head, *date;
};

TEST(Changeover, EachChangeoverTimeHasItsHourItsHeadAndItsDate) {
    const HourCase cases[] = {
        {"nine", "", at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 55), "This file used 9.00am changeover times", "5,Oct,"},
        {"ten", "AddOneHour=True\r\n", at(10, 5, 9, 59, 30), at(10, 5, 9, 59, 55),
         "This file used 10.00am changeover times", "5,Oct,"},
        {"midnight", "tmidnight=True\r\ntnineam=False\r\n", at(10, 5, 23, 59, 30), at(10, 5, 23, 59, 55),
         "This file used Midnight changeover times", "5,Oct,"},
    };
    for (const HourCase& c : cases) {
        SCOPED_TRACE(c.name);
        Day day(c.before, c.keys);
        day.start();
        day.train(c.before);
        day.train(c.before + 10s);
        EXPECT_EQ(day.changeovers(), 0);
        day.train(c.trigger);
        ASSERT_EQ(day.changeovers(), 1);
        EXPECT_EQ(day.world.lines("nbextreme.log")[2], c.head);
        ASSERT_EQ(day.rows().size(), 1U);
        EXPECT_TRUE(day.rows()[0].starts_with(c.date)) << day.rows()[0];
    }
}

// The usual readings: 12.3 and 21.5 degrees C, 54 %, 1013 hPa, gust 4.2 m/s at 225, no rain, counter 123. Dew point
// of 12.3 and 54 %: 3.257; chill: average 3.1 m/s = 11.16 km/h, V^0.16 = 1.47102, 13.12 + 7.64445 - 16.7255 + 7.17411
// = 11.2.
TEST(Changeover, TheFinishedDayIsYesterdaysFileAndAnAlmanacRow) {
    Day day(at(10, 5, 8, 59, 30));
    day.start();
    day.train(at(10, 5, 8, 59, 30));
    day.train(at(10, 5, 8, 59, 40));
    StationReadings wet;
    wet.rain.total_mm = 130;
    wet.rain.rate_mm = 6;
    day.train(at(10, 5, 8, 59, 55), wet);
    const std::vector<std::string> expected{"05 Oct 2026 08:58:55",
                                            "12.3",
                                            "08:59",
                                            "12.3",
                                            "08:59",
                                            "54",
                                            "08:59",
                                            "54",
                                            "08:59",
                                            "6",
                                            "08:59",
                                            "1013",
                                            "08:59",
                                            "1013",
                                            "08:59",
                                            "4.2",
                                            "08:59",
                                            "225\xB0",
                                            "7",
                                            "130",
                                            "3.3",
                                            "08:59",
                                            "3.3",
                                            "08:59",
                                            "21.5",
                                            "08:59",
                                            "21.5",
                                            "08:59",
                                            "11.2",
                                            "08:59",
                                            "-999",
                                            ""};
    EXPECT_EQ(day.world.lines("nimbrYDay.log"), expected);
    ASSERT_EQ(day.rows().size(), 1U);
    EXPECT_EQ(
        day.rows()[0],
        "5,Oct,+12.3,08:59,+12.3,08:59,54,08:59,54,08:59,+3.3,08:59,+3.3,08:59,+21.5,08:59,+21.5,08:59,+11.2,08:59,"
        "-999,00:00,6,08:59,1013,08:59,1013,08:59,15.1,08:59,225,7,0,7");
}

TEST(Changeover, YesterdaysColumnTakesTheDayAndTodaysIsBlank) {
    Day day(at(10, 5, 8, 59, 30));
    day.start();
    day.train(at(10, 5, 8, 59, 30));
    day.train(at(10, 5, 8, 59, 40));
    day.train(at(10, 5, 8, 59, 55));
    const MainPanel& panel = day.world.panel();
    EXPECT_EQ(panel.TxtYTempMax.text, "+12.3 \260C at 08:59");
    EXPECT_EQ(panel.TxtYGustMax.text, " 15.1 km/h, 225\xB0 at 08:59");
    EXPECT_EQ(panel.TxtYRainMax.text, " nil");
    EXPECT_EQ(panel.TxtRainYest.text, " nil");
    EXPECT_EQ(day.world.state().additional.txtYMaxHI.text, "- No Valid Data -");
    EXPECT_EQ(day.world.state().records.day.maxtemp, -999);
    EXPECT_EQ(day.world.state().additional.txtDSR.text, "1");
    day.train(at(10, 5, 9, 0, 5));
    EXPECT_EQ(panel.TxtTempMax.text, "+12.3 \260C at 09:00");
}

TEST(Changeover, ADryDayCountsUpAndADayOfRainStartsAnew) {
    Day day(at(10, 5, 8, 59, 30));
    day.start();
    day.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    EXPECT_EQ(day.world.state().records.DaySinceRain, 1);
    day.trains(at(10, 6, 8, 59, 30), at(10, 6, 8, 59, 50));
    EXPECT_EQ(day.world.state().records.DaySinceRain, 2);
    StationReadings wet;
    wet.rain.total_mm = 128;
    day.trains(at(10, 7, 8, 59, 30), at(10, 7, 8, 59, 50), wet);
    EXPECT_EQ(day.world.state().records.DaySinceRain, 0);
    EXPECT_EQ(day.world.state().records.LastRain, 5);
    EXPECT_EQ(day.rows().size(), 3U);
}

TEST(Changeover, TheUsersBatchFileRunsWhenThereIsOne) {
    Day with(at(10, 5, 8, 59, 30));
    with.world.files.put("nimbryco.bat", "echo changed\r\n");
    with.start();
    with.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    EXPECT_EQ(with.world.desktop.batches, std::vector<std::string>{with.world.files.path("nimbryco.bat")});
    Day without(at(10, 5, 8, 59, 30));
    without.start();
    without.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    EXPECT_TRUE(without.world.desktop.batches.empty());
}

TEST(Changeover, BothDayFilesAreBackedUpBeforeTheyChange) {
    Day day(at(10, 5, 8, 59, 30));
    day.start();
    day.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 50));
    const auto first_day = day.world.lines("nimbrYDay.log");
    EXPECT_FALSE(day.world.files.exists("nimbrYDay.bak"));
    day.trains(at(10, 6, 8, 59, 30), at(10, 6, 8, 59, 50));
    EXPECT_EQ(day.world.lines("nimbrYDay.bak"), first_day);
    EXPECT_TRUE(day.world.files.exists("nimbrTDay.bak"));
}

TEST(Changeover, TheMonthIsArchivedAfterItsLastRow) {
    Day day(at(10, 31, 23, 59, 30), "tmidnight=True\r\ntnineam=False\r\n");
    day.start();
    day.trains(at(10, 31, 23, 59, 30), at(10, 31, 23, 59, 50));
    EXPECT_FALSE(day.world.files.exists("nbextreme.log"));
    ASSERT_TRUE(day.world.files.exists("alOct26.csv"));
    EXPECT_TRUE(day.world.lines("alOct26.csv").back().starts_with("31,Oct,"));
    EXPECT_EQ(day.world.lines("NBYSummary.txt")[0], "Nimbry monthly summary for October 2026");
    const auto log = day.world.log();
    EXPECT_NE(std::find(log.begin(), log.end(), "31 Oct 2026 23:59:50 Almanac successfully archived and rolled over"),
              log.end());
}

TEST(Changeover, AnArchiveIsNeverOverwritten) {
    Day day(at(10, 31, 23, 59, 30), "tmidnight=True\r\ntnineam=False\r\n");
    day.world.files.put("alOct26.csv", "the archive\r\n");
    day.start();
    day.trains(at(10, 31, 23, 59, 30), at(10, 31, 23, 59, 50));
    EXPECT_EQ(day.world.lines("alOct26.csv"), std::vector<std::string>{"the archive"});
    EXPECT_TRUE(day.world.files.exists("nbextreme.log"));
    const auto log = day.world.log();
    EXPECT_NE(std::find(log.begin(), log.end(), "31 Oct 2026 23:59:50 Error archiving almanac: File already exists"),
              log.end());
}

TEST(Changeover, AMonthsRowsLeftBehindAreArchivedLateWithAWarning) {
    Day day(at(11, 2, 8, 59, 30));
    std::string old = "head\r\n";
    for (int n = 29; n <= 31; ++n) old += std::to_string(n) + ",Oct" + std::string(32, ',') + "\r\n";
    day.world.files.put("nbextreme.log", old);
    day.start();
    // Three old rows and the new one outnumber the 2nd.
    day.trains(at(11, 2, 8, 59, 30), at(11, 2, 8, 59, 50));
    EXPECT_FALSE(day.world.files.exists("nbextreme.log"));
    ASSERT_FALSE(day.world.notices.balloons.empty());
    EXPECT_EQ(day.world.notices.balloons.front().what.title, "Almanac Archiving Error");
}

TEST(Changeover, AChangeMissedWhileTheProgramWasOffIsMadeUpFor) {
    Day day(at(10, 5, 8, 30, 0));
    day.start();
    day.trains(at(10, 5, 8, 30, 0), at(10, 5, 8, 34, 50));  // thirty trains: saved once, at 08:34:50
    ASSERT_TRUE(day.world.files.exists("nimbrTDay.log"));
    EXPECT_EQ(day.world.lines("nimbrTDay.log")[0], "05 Oct 2026 08:35:00");
    Day later(at(10, 5, 9, 30, 0));
    std::string bytes;
    ASSERT_EQ(day.world.files.read("nimbrTDay.log", bytes), FileResult::ok);
    later.world.files.put("nimbrTDay.log", bytes);
    later.start();
    later.train(at(10, 5, 9, 30, 0));
    later.train(at(10, 5, 9, 30, 10));
    EXPECT_EQ(later.changeovers(), 1);
    ASSERT_EQ(later.rows().size(), 1U);
    EXPECT_TRUE(later.rows()[0].starts_with("5,Oct,+12.3,08:34,"));
    later.train(at(10, 5, 9, 30, 20));
    EXPECT_EQ(later.changeovers(), 1);
}

TEST(Changeover, WithMidnightTheMissedRowCarriesYesterdaysDateAndMonth) {
    Day day(at(10, 31, 23, 30, 0), "tmidnight=True\r\ntnineam=False\r\n");
    day.start();
    day.trains(at(10, 31, 23, 30, 0), at(10, 31, 23, 34, 50));
    std::string bytes;
    ASSERT_EQ(day.world.files.read("nimbrTDay.log", bytes), FileResult::ok);
    Day later(at(11, 1, 0, 30, 0), "tmidnight=True\r\ntnineam=False\r\n");
    later.world.files.put("nimbrTDay.log", bytes);
    later.start();
    later.train(at(11, 1, 0, 30, 0));
    later.train(at(11, 1, 0, 30, 10));
    EXPECT_EQ(later.changeovers(), 1);
    // The month's last row: it is in the archive already.
    ASSERT_TRUE(later.world.files.exists("alOct26.csv"));
    EXPECT_TRUE(later.world.lines("alOct26.csv").back().starts_with("31,Oct,"));
}

TEST(ChangeoverInstant, IsOneSecondPastTheHourOfTheStationsDate) {
    MainSettings settings;
    EXPECT_EQ(changeover_instant(settings, at(10, 5, 23, 0, 0)), at(10, 5, 9, 0, 1));
    settings.AddOneHour = true;
    EXPECT_EQ(changeover_instant(settings, at(10, 5, 0, 0, 0)), at(10, 5, 10, 0, 1));
    settings.tmidnight = true;
    EXPECT_EQ(changeover_instant(settings, at(10, 5, 12, 0, 0)), at(10, 5, 0, 0, 1));
}

}  // namespace
}  // namespace nimbry
