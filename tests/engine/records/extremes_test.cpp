#include "engine/records/extremes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/records/record_step.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

CivilTime at(int hour, int minute, int second, int day = 5) {
    return *civil_time({2026, 10, day, hour, minute, second});
}

TEST(Extremes, WaitForTheSecondTrain) {
    StartedWorld world;
    world.send_trains(1);
    EXPECT_TRUE(world.state().run.firstrun);
    EXPECT_EQ(world.panel().TxtRainToday.text, "");
    world.send_trains(1);
    EXPECT_FALSE(world.state().run.firstrun);
    EXPECT_EQ(world.panel().TxtRainToday.text, " nil");
}

TEST(Extremes, RunInAClientToo) {
    StartedWorld world("fromnet=True\r\n");
    world.state().run.fullystarted = true;
    world.state().readings.rdattotrain = "0123";
    extremes(world.copy());
    EXPECT_EQ(world.panel().TxtRainToday.text, " nil");
}

TEST(Extremes, DoNothingWhileAnErrorOfTheRecordsStands) {
    StartedWorld world;
    world.send_trains(1);
    world.state().run.DuplicateError = true;
    world.send_trains(1);
    EXPECT_TRUE(world.state().run.firstrun);
}

// The graph tick, seen by the rain of the last hour: the first tick shows "0 mm", and each later one moves the ring on.

struct TickCase {
    const char* what;
    std::vector<int> seconds;  // of trains in one minute
    int ticks;
};

TEST(GraphTick, ComesOnceForEachVisitOfTheSecondsThirtyToThirtyNine) {
    const TickCase cases[] = {
        {"29 is before", {29}, 0},
        {"30 is inside", {30}, 1},
        {"39 is inside", {39}, 1},
        {"40 is behind", {40}, 0},
        {"two trains inside", {31, 38}, 1},
        {"a minute without a train inside", {5, 25, 45}, 0},
        {"in, out and in again", {31, 45, 35}, 2},
    };
    for (const TickCase& row : cases) {
        SCOPED_TRACE(row.what);
        StartedWorld world;
        world.send_train({}, at(14, 0, 0));
        for (const int second : row.seconds) world.send_train({}, at(14, 1, second));
        EXPECT_EQ(world.state().rain.LastHourIndex, row.ticks);
    }
}

TEST(GraphTick, ComesEveryMinute) {
    StartedWorld world;
    for (int minute = 0; minute < 5; ++minute) {
        for (const int second : {5, 15, 25, 35, 45, 55}) world.send_train({}, at(14, minute, second));
    }
    EXPECT_EQ(world.state().rain.LastHourIndex, 5);
    EXPECT_EQ(world.panel().TxtRainLH.text, " 0 mm");
}

TEST(MidnightFile, TakesTheCounterOnceInTheFirstMinuteOfTheDay) {
    StartedWorld world;
    StationReadings readings;
    readings.rain.total_mm = 123;
    world.send_train(readings, at(23, 59, 40));
    world.send_train(readings, at(23, 59, 50));
    EXPECT_FALSE(world.files.exists("rnslm.dat"));
    readings.rain.total_mm = 124;
    world.send_train(readings, at(0, 0, 3, 6));
    world.send_train(readings, at(0, 0, 13, 6));
    world.send_train(readings, at(0, 1, 3, 6));
    EXPECT_THAT(world.lines("rnslm.dat"), ElementsAre("06 Oct 2026 00:00:03", "124"));
}

// Setup windows

TEST(SetupWindowsLocked, AreTheirUsersAgainWhenNoChangeoverRuns) {
    StartedWorld world;
    SetupWindows& setup = world.state().setup;
    world.state().run.fullystarted = true;
    for (SetupWindow* window : {&setup.Form2, &setup.FTP, &setup.Units}) {
        window->caption = "Temporarily Locked";
        window->enabled = false;
    }
    world.state().comm.changebusy.set();
    extremes(world.copy());
    EXPECT_EQ(setup.Form2.caption, "Temporarily Locked");
    world.state().comm.changebusy.clear();
    extremes(world.copy());
    EXPECT_EQ(setup.Form2.caption, "Nimbry Setup");
    EXPECT_EQ(setup.FTP.caption, "Nimbry FTP / Email Setup");
    EXPECT_EQ(setup.Units.caption, "Nimbry Units Setup");
    for (const SetupWindow* window : {&setup.Form2, &setup.FTP, &setup.Units}) EXPECT_TRUE(window->enabled);
}

// Errors

TEST(RecordStep, TheFirstErrorEndsItsStepAfterTwoSeconds) {
    StartedWorld world;
    const Instant begin = world.clock.monotonic();
    std::optional<Instant> went_on;
    world.act([&] {
        record_step(world.copy(), [] { throw RunTimeError{ErrorNumber::type_mismatch}; });
        went_on = world.clock.monotonic();
    });
    EXPECT_TRUE(world.state().run.DuplicateError);
    world.run_for(1min);
    EXPECT_EQ(went_on, begin + 2s);
}

TEST(RecordStep, ASecondErrorPassesOn) {
    StartedWorld world;
    world.state().run.DuplicateError = true;
    EXPECT_THROW(record_step(world.copy(), [] { throw RunTimeError{ErrorNumber::index}; }), RunTimeError);
}

TEST(RecordStep, AStepWithoutErrorTakesNoTime) {
    StartedWorld world;
    bool done = false;
    record_step(world.copy(), [&] { done = true; });
    EXPECT_TRUE(done);
    EXPECT_FALSE(world.state().run.DuplicateError);
}

TEST(RecordStep, AMidnightFileThatCannotBeWrittenDoesNotEndTheProgram) {
    StartedWorld world;
    world.files.refuse("rnslm.dat", FileResult::disk_full);
    world.send_train({}, at(23, 59, 50));
    world.send_train({}, at(0, 0, 0, 6));
    world.run_for(3s);
    EXPECT_TRUE(world.state().run.DuplicateError);
    EXPECT_FALSE(world.state().run.ProgramClosing);
    EXPECT_FALSE(world.state().comm.dworkingb);
}

}  // namespace
}  // namespace nimbry::test
