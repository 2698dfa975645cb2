#include <gtest/gtest.h>

#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::day_text;
using test::WeatherDays;

StationReadings warm() {
    StationReadings readings;
    readings.temperature.outdoor = 18.5;
    return readings;
}

TEST(ExtremesErrors, AnErrorBehindTheChangeoverCostsItsStepAndNoLaterTrain) {
    WeatherDays days(at(10, 5, 23, 59, 40));
    days.start();
    days.trains(at(10, 5, 23, 59, 40), at(10, 5, 23, 59, 50));
    days.world.files.refuse("rnslm.dat", FileResult::permission);
    days.train(at(10, 6, 0, 0, 0));
    days.world.run_for(3s);
    EXPECT_FALSE(days.world.state().run.DuplicateError);
    EXPECT_FALSE(days.world.state().run.HaveError);
    days.world.files.allow();
    days.train(at(10, 6, 0, 0, 10), warm());
    EXPECT_EQ(days.world.state().records.day.maxtemp, 18.5F);
    EXPECT_FALSE(days.world.engine.gone());
}

TEST(ExtremesErrors, TheFirstErrorWaitsTwoSecondsBeforeTheNextStep) {
    WeatherDays days(at(10, 5, 23, 59, 40));
    days.start();
    days.trains(at(10, 5, 23, 59, 40), at(10, 5, 23, 59, 50));
    days.world.files.refuse("rnslm.dat", FileResult::permission);
    days.train(at(10, 6, 0, 0, 0));
    days.world.run_for(1800ms);
    EXPECT_TRUE(days.world.state().run.DuplicateError);
    days.world.run_for(300ms);
    EXPECT_FALSE(days.world.state().run.DuplicateError);
}

TEST(ExtremesErrors, NothingIsRecordedWhileAnErrorStands) {
    WeatherDays days(at(10, 5, 14, 0, 0));
    days.start();
    days.trains(at(10, 5, 14, 0, 0), at(10, 5, 14, 0, 10));
    days.world.state().run.DuplicateError = true;
    days.train(at(10, 5, 14, 0, 20), warm());
    EXPECT_EQ(days.world.state().records.day.maxtemp, 12.3F);
}

// The backup of today's file fails, then the one of yesterday's.
TEST(ExtremesErrors, ASecondErrorInOneChangeoverEndsTheProgram) {
    WeatherDays days(at(10, 5, 8, 59, 30));
    days.start();
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 40));
    days.world.files.put("nimbrTDay.log", "today\r\n");
    days.world.files.put("nimbrYDay.log", "yesterday\r\n");
    days.world.files.refuse("nimbrTDay.bak", FileResult::disk_full);
    days.world.files.refuse("nimbrYDay.bak", FileResult::disk_full);
    days.train(at(10, 5, 8, 59, 50));
    days.world.run_for(5s);
    ASSERT_EQ(days.world.notices.boxes.size(), 1U);
    EXPECT_EQ(days.world.notices.boxes[0].what.text,
              "Unrecoverable error 61 encountered in DoChangeover.\r\nNimbry will now exit.");
    EXPECT_TRUE(days.world.engine.gone());
    EXPECT_EQ(days.world.files.contents("nimbrYDay.log"), "yesterday\r\n");
}

TEST(ExtremesErrors, ASecondErrorInTheLoadingEndsTheProgramUnderItsTag) {
    WeatherDays days(at(10, 5, 14, 0, 0));
    days.start();
    days.train(at(10, 5, 14, 0, 0));
    days.world.files.put("nimbrYDay.log", "no date\r\n");
    days.world.files.put("nimbrTDay.log", "no date\r\n");
    days.train(at(10, 5, 14, 0, 10));
    days.world.run_for(5s);
    ASSERT_EQ(days.world.notices.boxes.size(), 1U);
    EXPECT_EQ(days.world.notices.boxes[0].what.text,
              "Unrecoverable error 13 encountered in ResYesterday.\r\nNimbry will now exit.");
    EXPECT_TRUE(days.world.engine.gone());
    // Neither file stands in the way of the next start.
    EXPECT_FALSE(days.world.files.exists("nimbrYDay.log"));
    EXPECT_FALSE(days.world.files.exists("nimbrTDay.log"));
    EXPECT_EQ(days.world.files.contents("nimbrTDay.bad"), "no date\r\n");
}

TEST(ExtremesErrors, AShortFileStopsOneStartAndNotTheNext) {
    WeatherDays first(at(10, 5, 14, 0, 0));
    first.world.files.put("nimbrTDay.log", "05 Oct 2026 13:50:00\r\n12.3\r\n");
    first.world.files.put("nimbrTDay.bad", "of an earlier time\r\n");
    first.start();
    first.trains(at(10, 5, 14, 0, 0), at(10, 5, 14, 0, 10));
    first.world.run_for(5s);
    ASSERT_TRUE(first.world.engine.gone());
    EXPECT_EQ(first.world.files.contents("nimbrTDay.bad"), "05 Oct 2026 13:50:00\r\n12.3\r\n");
    WeatherDays second(at(10, 5, 14, 1, 0));
    second.inherit(first.world);
    second.start();
    second.trains(at(10, 5, 14, 1, 0), at(10, 5, 14, 1, 10));
    EXPECT_FALSE(second.world.engine.gone());
    EXPECT_EQ(second.world.state().records.day.maxtemp, 12.3F);
}

TEST(ExtremesErrors, TwoShortFilesStopOneStartTogether) {
    WeatherDays days(at(10, 5, 14, 0, 0));
    days.world.files.put("nimbrYDay.log", "05 Oct 2026 08:58:50\r\n12.3\r\n");
    days.world.files.put("nimbrTDay.log", "");
    days.start();
    days.trains(at(10, 5, 14, 0, 0), at(10, 5, 14, 0, 10));
    days.world.run_for(5s);
    ASSERT_TRUE(days.world.engine.gone());
    EXPECT_TRUE(days.world.files.exists("nimbrYDay.bad"));
    EXPECT_TRUE(days.world.files.exists("nimbrTDay.bad"));
    EXPECT_FALSE(days.world.files.exists("nimbrYDay.log"));
    EXPECT_FALSE(days.world.files.exists("nimbrTDay.log"));
    const std::string log = days.world.files.contents("nbyprog.log");
    EXPECT_NE(log.find(" nimbrYDay.log is damaged and was put aside as nimbrYDay.bad\r\n"), std::string::npos);
    EXPECT_NE(log.find(" nimbrTDay.log is damaged and was put aside as nimbrTDay.bad\r\n"), std::string::npos);
}

// Today's file is whole and older than the changeover, which nobody has made.
TEST(ExtremesErrors, ADamagedFileOfYesterdayDoesNotCostAMissedChangeoverItsRow) {
    WeatherDays days(at(10, 5, 9, 10, 0));
    days.world.files.put("nimbrYDay.log", "04 Oct 20");
    days.world.files.put("nimbrTDay.log", day_text("05 Oct 2026 08:50:00", 33));
    days.start();
    days.trains(at(10, 5, 9, 10, 0), at(10, 5, 9, 10, 10));
    days.world.run_for(5s);
    EXPECT_FALSE(days.world.engine.gone());
    ASSERT_EQ(days.rows().size(), 1U);
    EXPECT_TRUE(days.rows()[0].starts_with("5,Oct,+1,1,"));
    EXPECT_EQ(days.world.lines("nimbrYDay.log").size(), 32U);
}

// Yesterday's values were read before it.
TEST(ExtremesErrors, ADamagedFileOfTodayBeginsTheDayAnew) {
    WeatherDays days(at(10, 5, 14, 0, 0));
    days.world.files.put("nimbrYDay.log", day_text("05 Oct 2026 08:58:50", 32));
    days.world.files.put("nimbrTDay.log", "05 Oct 20");
    days.start();
    days.trains(at(10, 5, 14, 0, 0), at(10, 5, 14, 0, 10));
    days.world.run_for(5s);
    days.trains(at(10, 5, 14, 0, 20), at(10, 5, 14, 0, 30));
    EXPECT_FALSE(days.world.engine.gone());
    EXPECT_TRUE(days.world.state().run.YFileOK);
    EXPECT_EQ(days.world.state().records.day.mintemp, 12.3F);
}

TEST(ExtremesErrors, ADamagedFileOfYesterdayIsAsGoodAsNoneAndTheLogNamesIt) {
    WeatherDays days(at(10, 5, 14, 0, 0));
    days.world.files.put("nimbrYDay.log", "no date\r\n");
    days.world.files.put("nimbrTDay.log", day_text("05 Oct 2026 13:50:00", 33));
    days.start();
    days.trains(at(10, 5, 14, 0, 0), at(10, 5, 14, 0, 10));
    days.world.run_for(5s);
    EXPECT_FALSE(days.world.engine.gone());
    EXPECT_EQ(days.world.state().panel.TxtYTempMax.text, "- No Data Available -");
    EXPECT_EQ(days.world.state().panel.TxtRainYest.text, " -- ");
    EXPECT_EQ(days.world.lines("nbyprog.log").back(),
              "05 Oct 2026 14:00:10 nimbrYDay.log is damaged and was put aside as nimbrYDay.bad");
}

// A disk that does not let a file be read has not damaged it.
TEST(ExtremesErrors, AFileThatCannotBeReadStaysWhereItIs) {
    WeatherDays days(at(10, 5, 14, 0, 0));
    days.world.files.put("nimbrTDay.log", "05 Oct 2026 13:50:00\r\n12.3\r\n");
    days.start();
    days.train(at(10, 5, 14, 0, 0));
    days.world.files.refuse("nimbrTDay.log", FileResult::permission);
    days.train(at(10, 5, 14, 0, 10));
    days.world.run_for(5s);
    EXPECT_FALSE(days.world.engine.gone());
    EXPECT_TRUE(days.world.files.exists("nimbrTDay.log"));
}

}  // namespace
}  // namespace nimbry
