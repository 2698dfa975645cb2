#include <gtest/gtest.h>

#include "tests/engine/records/weather_days.h"
#include "tests/world/bare_copy.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::WeatherDays;

void train_at(test::BareCopy& world, CivilTime station) {
    StationReadings readings;
    readings.clock = station_moment(station);
    world.clock.set_computer_time(station);
    world.pauses.start([&] { world.train(readings); });
}

// What a client does and what it leaves out: it locks nothing, so that nothing has to be unlocked.
TEST(ChangeoverOfAClient, RunsWholeButLocksNoWindowAndSetsNoBusyMark) {
    test::BareCopy world;
    world.state.settings.fromnet = true;
    world.state.setup.Form2.open = true;
    world.files.put("nimbryco.bat", "echo changed\r\n");
    world.files.put("nimbryYDay.log", "");
    train_at(world, at(10, 5, 8, 59, 30));
    train_at(world, at(10, 5, 8, 59, 40));
    // Another program holds the almanac, so the changeover stands still in its middle.
    world.files.put("nbextreme.log", "rows\r\n");
    world.files.set_in_use("nbextreme.log", true);
    train_at(world, at(10, 5, 8, 59, 50));
    EXPECT_FALSE(world.state.comm.changebusy);
    EXPECT_EQ(world.state.setup.Form2.caption, "Nimbry Setup");
    EXPECT_TRUE(world.state.setup.Form2.enabled);
    world.files.set_in_use("nbextreme.log", false);
    world.pauses.pause(3s);
    EXPECT_TRUE(world.files.exists("nimbrYDay.log"));
    EXPECT_NE(world.files.contents("nbextreme.log").find("5,Oct,+12.3,"), std::string::npos);
    EXPECT_EQ(world.desktop.batches.size(), 1U);
    EXPECT_EQ(world.state.records.day.maxtemp, -999);
}

TEST(ChangeoverOfAServer, LocksTheOpenSetupWindowsWhileItRunsAndGivesThemBackAfterwards) {
    WeatherDays days(at(10, 5, 8, 59, 30));
    days.start();
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 40));
    SetupWindows& setup = days.world.state().setup;
    setup.Form2.open = setup.Units.open = true;
    days.world.files.put("nbextreme.log", "rows\r\n");
    days.world.files.set_in_use("nbextreme.log", true);
    days.train(at(10, 5, 8, 59, 50));
    EXPECT_TRUE(days.world.state().comm.changebusy);
    for (const SetupWindow* open : {&setup.Form2, &setup.Units}) {
        EXPECT_EQ(open->caption, "Temporarily Locked");
        EXPECT_FALSE(open->enabled);
    }
    EXPECT_EQ(setup.FTP.caption, "Nimbry FTP / Email Setup");
    EXPECT_TRUE(setup.FTP.enabled);
    days.world.files.set_in_use("nbextreme.log", false);
    days.world.run_for(1s);
    EXPECT_FALSE(days.world.state().comm.changebusy);
    EXPECT_EQ(setup.Form2.caption, "Nimbry Setup");
    EXPECT_EQ(setup.Units.caption, "Nimbry Units Setup");
    EXPECT_TRUE(setup.Form2.enabled && setup.Units.enabled);
}

// While the changeover stands still its train is the last one: what comes is thrown away.
TEST(ChangeoverOfAServer, TakesNoTrainWhileItRuns) {
    WeatherDays days(at(10, 5, 8, 59, 30));
    days.start();
    days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 40));
    days.world.files.put("nbextreme.log", "rows\r\n");
    days.world.files.set_in_use("nbextreme.log", true);
    days.train(at(10, 5, 8, 59, 50));
    StationReadings hot;
    hot.temperature.outdoor = 40;
    days.train(at(10, 5, 9, 0, 0), hot);
    days.world.files.set_in_use("nbextreme.log", false);
    days.world.run_for(1s);
    EXPECT_EQ(days.world.lines("nimbrYDay.log")[0], "05 Oct 2026 08:58:50");
    EXPECT_EQ(days.rows().size(), 1U);
    EXPECT_TRUE(days.rows()[0].starts_with("5,Oct,+12.3,")) << days.rows()[0];
    EXPECT_EQ(days.world.state().records.day.maxtemp, -999);
}

TEST(ChangeoverOfAServer, EachFileIsWaitedForWhileAnotherProgramHasIt) {
    for (const char* name : {"nimbrTDay.log", "nimbrYDay.log", "nbextreme.log", "nimbry.dat", "/local/nimbry.dat"}) {
        SCOPED_TRACE(name);
        WeatherDays days(at(10, 5, 8, 59, 30), "[FTP]\r\nLocalSave=True\r\nLocalPath=/local\r\n");
        days.world.files.add_folder("/local");
        days.start();
        days.trains(at(10, 5, 8, 59, 30), at(10, 5, 8, 59, 40));
        days.world.files.put(name, "held\r\n");
        days.world.files.set_in_use(name, true);
        days.train(at(10, 5, 8, 59, 50));
        days.world.run_for(30s);
        EXPECT_EQ(days.changeovers(), 0);
        days.world.files.set_in_use(name, false);
        days.world.run_for(1s);
        EXPECT_EQ(days.changeovers(), 1);
    }
}

TEST(ChangeoverOfAServer, TheArchiveWaitsForUploadsAndMails) {
    for (BusyFlag PublishState::*flag :
         {&PublishState::emailbusy, &PublishState::uloadftpbusy, &PublishState::wubusy}) {
        WeatherDays days(at(10, 31, 23, 59, 30), "tmidnight=True\r\ntnineam=False\r\n");
        days.start();
        days.trains(at(10, 31, 23, 59, 30), at(10, 31, 23, 59, 40));
        BusyFlag& busy = days.world.state().publish.*flag;
        busy.set();
        days.train(at(10, 31, 23, 59, 50));
        days.world.run_for(10s);
        EXPECT_FALSE(days.world.files.exists("alOct26.csv"));
        EXPECT_EQ(days.rows().size(), 1U);
        busy.clear();
        days.world.run_for(1s);
        EXPECT_TRUE(days.world.files.exists("alOct26.csv"));
    }
}

}  // namespace
}  // namespace nimbry
