#include "engine/core/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/core/initprog.h"
#include "engine/core/main_settings.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const Engine::StartOptions with_window{.has_window = true, .device = ""};

TEST(StartUp, TheLogOpensWithFiftyTwoAsterisksAndTheComputersTime) {
    World world;
    world.start();
    EXPECT_EQ(world.files.contents("nbyprog.log"),
              "****************************************************\r\n"
              "05 Oct 2026 14:00:00 (Computer time) Program started\r\n");
    EXPECT_EQ(world.lines("nbyprog.log")[0].size(), 52u);
}

TEST(StartUp, AFirstRunWritesStampCommentsAndPortBeforeAnyWindowShows) {
    World world;
    world.begin_start(with_window);  // stands in the first-run window now
    ASSERT_THAT(world.notices.windows, ElementsAre("Form2"));
    EXPECT_EQ(world.setting("Main", "Version"), "Nimbry|202|251003");
    EXPECT_EQ(world.setting("Main", "WebComment"), "<!--empty-->");
    EXPECT_EQ(world.setting("Main", "WebComment2"), "<!--empty-->");
    EXPECT_EQ(world.setting("Main", "FTPPort"), "21");
    EXPECT_EQ(world.setting("Main", "HasRun"), "") << "not before the window has closed";
}

TEST(StartUp, AFirstRunWaitsForTheSetupWindowAndTakesNoDataMeanwhile) {
    World world;
    world.begin_start(with_window);
    world.run_for(10min);
    EXPECT_TRUE(world.state().comm.initflag);
    EXPECT_TRUE(world.state().setup.Form2.open);
    EXPECT_THAT(world.line.attempts(), IsEmpty());
    world.state().setup.Form2.open = false;
    world.run_for(1ms);
    EXPECT_FALSE(world.state().comm.initflag);
    EXPECT_EQ(world.setting("Main", "HasRun"), "True");
    EXPECT_EQ(world.line.attempts().size(), 1u);
}

TEST(StartUp, WithoutAWindowAFirstRunGoesOnWithTheDefaults) {
    World world;
    world.start();
    EXPECT_THAT(world.notices.windows, IsEmpty());
    EXPECT_EQ(world.setting("Main", "HasRun"), "True");
    EXPECT_EQ(world.line.device(), default_device(1));
    EXPECT_TRUE(world.state().comm.SerComReady);
}

TEST(StartUp, ALaterRunShowsNoSetupWindow) {
    StartedWorld world("", with_window);
    EXPECT_THAT(world.notices.windows, IsEmpty());
}

TEST(StartUp, TheStartTimeStandsInTheConfigurationAndInItsLabel) {
    StartedWorld world;
    EXPECT_EQ(world.setting("Main", "UpTime"), "05 Oct 2026 14:00:00");
    EXPECT_EQ(world.state().additional.txtStarted.text, "05 Oct 2026 14:00:00");
    world.send_trains(30);
    EXPECT_EQ(world.state().additional.txtStarted.text, "05 Oct 2026 14:00:00") << "the label keeps the date";
}

TEST(StartUp, TheStartTimeIsWrittenBeforeTheSettingsAreReadAndShownAfterThePortIsOpen) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.line.answer_opens({PortOpenResult::failed, PortOpenResult::ok});
    world.notices.will_answer(Answer::retry, 1min);
    world.start(with_window);
    world.run_for(1min);
    EXPECT_EQ(world.setting("Main", "UpTime"), "05 Oct 2026 14:00:00");
    EXPECT_EQ(world.state().additional.txtStarted.text, "05 Oct 2026 14:01:00");
}

TEST(StartUp, BeforeTheFirstTrainThePanelSaysProgramStarting) {
    StartedWorld world;
    EXPECT_EQ(world.panel().lblStatus.text, "Program Starting");
    EXPECT_EQ(world.panel().lblStatus.fore, colours::salmon);
    EXPECT_EQ(world.panel().Text2[0].text, "");
}

TEST(StartUp, AConfigurationThatCannotBeReadGivesOneNoticeAndTheDefaults) {
    World world;
    world.files.put("Nimbry.ini", main_section("LogMin=5\r\n"));
    world.files.refuse("Nimbry.ini", FileResult::permission);
    world.start();
    ASSERT_EQ(world.notices.balloons.size(), 1u);
    EXPECT_THAT(world.notices.balloons[0].what.text, HasSubstr("Nimbry.ini"));
    EXPECT_EQ(world.state().settings.LogMin, 15);
    EXPECT_TRUE(world.state().comm.SerComReady);
}

TEST(StartUp, TheSplashHoldsDataOffForFiveSecondsAfterTheLoad) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.begin_start(with_window);
    world.run_for(500ms);  // the load ends with the second open
    EXPECT_TRUE(world.state().comm.SerComReady);
    EXPECT_TRUE(world.state().comm.splashing);
    world.send_train();
    world.run_for(4899ms);
    EXPECT_TRUE(world.state().comm.splashing);
    EXPECT_EQ(world.state().comm.counters.trains, 0u);
    world.run_for(1ms);
    EXPECT_FALSE(world.state().comm.splashing);
    world.send_train();
    EXPECT_EQ(world.state().comm.counters.trains, 1u);
}

TEST(StartUp, WhatArrivesDuringTheSplashIsNoPartOfTheFirstFrame) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.begin_start(with_window);
    world.run_for(5400ms);
    world.send(Bytes(13, 0x55));
    world.run_for(100ms);
    ASSERT_FALSE(world.state().comm.splashing);
    world.send_train();
    EXPECT_EQ(world.state().comm.counters.trains, 1u);
}

TEST(StartUp, WhatTheSystemStillHoldsAtTheEndOfTheSplashIsThrownAwayToo) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.begin_start(with_window);
    world.run_for(5400ms);
    world.line.arrive(Bytes(13, 0x55));  // nobody has said so yet
    world.run_for(100ms);
    ASSERT_FALSE(world.state().comm.splashing);
    world.send_train();
    EXPECT_EQ(world.state().comm.counters.trains, 1u);
}

TEST(StartUp, ClosesASocketThatIsOpenBeforeAnythingElseIsAsked) {
    World world;
    world.datasock.bind(60137, "", PortUse::exclusive);
    world.begin_start(with_window);  // stands in the first-run window now
    EXPECT_FALSE(world.datasock.is_open());
}

TEST(StartUp, TakesTheAlarmSettingsIntoForce) {
    World world;
    world.files.put("Nimbry.ini", main_section() + "[Alarms]\r\nfASound=True\r\n");
    world.start();
    EXPECT_TRUE(world.state().alarms.frmAlarms.chkASound);
}

TEST(StartUp, WithoutAWindowThereIsNoSplash) {
    World world;
    world.begin_start();
    world.run_for(500ms);
    EXPECT_FALSE(world.state().comm.splashing);
    world.send_train();
    EXPECT_EQ(world.state().comm.counters.trains, 1u);
}

struct CaptionCase {
    const char* changeover;
    const char* lines;
    const char* today;
    const char* yesterday;
    const char* tip_today;
    const char* tip_yesterday;
};

TEST(StartUp, TheChangeoverInForceNamesTheLabelsAndTips) {
    const CaptionCase cases[] = {
        {"midnight", "tmidnight=True\r\ntnineam=False\r\n", "Since Midnight", "24 Hours prior to Midnight",
         "Rainfall so far today since Midnight", "Rainfall for the 24 hours prior to Midnight"},
        {"nine", "", "Since 9:00 am", "24 Hours prior to 9:00 am", "Rainfall so far today since 9:00 am",
         "Rainfall for the 24 hours prior to 9:00 am"},
        {"ten", "AddOneHour=True\r\n", "Since 10:00 am", "24 Hours prior to 10:00 am",
         "Rainfall so far today since 10:00 am", "Rainfall for the 24 hours prior to 10:00 am"},
    };
    for (const CaptionCase& row : cases) {
        SCOPED_TRACE(row.changeover);
        StartedWorld world(row.lines);
        const MainPanel& panel = world.panel();
        EXPECT_EQ(panel.lblRainT.text, row.today);
        EXPECT_EQ(panel.lblRainY.text, row.yesterday);
        EXPECT_EQ(panel.lblRainT.tip, row.tip_today);
        EXPECT_EQ(panel.lblRainY.tip, row.tip_yesterday);
    }
}

TEST(StartUp, UnitsAndGaugeFollowTheKeys) {
    StartedWorld world("fWindmph=True\r\nfTempF=True\r\n");
    EXPECT_EQ(world.state().units.wind, WindUnit::mph);
    EXPECT_EQ(world.state().units.temperature, TemperatureUnit::fahrenheit);
    EXPECT_EQ(world.panel().Gauge1.maximum, 30);
    EXPECT_EQ(world.panel().lblGaugeMax.text, "30");
}

TEST(StartUp, TheMenusSwitchesFollowTheKeys) {
    StartedWorld world("DrwGrafs=True\r\nErrorPop=True\r\nmlogftp=True\r\n");
    EXPECT_TRUE(world.state().menu.mnuDisableGraphs.checked);
    EXPECT_TRUE(world.state().menu.mnuNoErrorPop.checked);
    EXPECT_TRUE(world.state().menu.mnulogFTP.checked);
    EXPECT_FALSE(world.state().menu.mnulogMail.checked);
}

TEST(StartUp, TheFirstStepOfInitprogForgetsTheWordsOfTheLine) {
    StartedWorld world;
    world.state().comm.EventWord = "weather data";
    world.state().comm.ErrorWord = "Framing Error";
    world.act([&] { initprog(world.copy()); });
    EXPECT_EQ(world.state().comm.EventWord, "");
    EXPECT_EQ(world.state().comm.ErrorWord, "");
}

// A client

TEST(StartUpOfAClient, NeverOpensAPortAndNeverWatchesForSilence) {
    StartedWorld world("fromnet=True\r\n");
    world.run_for(10min);
    EXPECT_THAT(world.line.attempts(), IsEmpty());
    EXPECT_FALSE(world.state().comm.SerComReady);
    EXPECT_FALSE(world.copy().timers.running(TimerId::TimComFail));
    EXPECT_THAT(world.notices.balloons, IsEmpty());
    EXPECT_THAT(world.log(), IsEmpty());
}

TEST(StartUpOfAClient, LosesTheSwitchesOfPublishing) {
    StartedWorld world("fromnet=True\r\nmlogftp=True\r\nmlogmail=True\r\n");
    const MainMenu& menu = world.state().menu;
    for (const Box* entry : {&menu.mnulogFTP, &menu.mnulogMail, &menu.mnuFTPdebug}) {
        EXPECT_FALSE(entry->checked) << entry->text;
        EXPECT_FALSE(entry->enabled) << entry->text;
    }
}

TEST(StartUpOfAClient, MayRunInitprogAgainAndTakesTheSettingsThatWereFetched) {
    StartedWorld world("fromnet=True\r\n");
    world.copy().ini.SaveSettings(
        {{"Main", "fTempF", "True"}, {"Main", "AddOneHour", "True"}, {"Main", "Latitude", "51.5"}});
    world.act([&] { initprog(world.copy()); });
    world.run_for(10s);
    EXPECT_EQ(world.state().units.temperature, TemperatureUnit::fahrenheit);
    EXPECT_EQ(world.panel().lblToday.text, "Since 10:00 am");
    EXPECT_EQ(world.state().settings.Latitude, "51.5");
    EXPECT_THAT(world.line.attempts(), IsEmpty());
    EXPECT_THAT(world.datasock.binds, ElementsAre(60135, 60135)) << "bound afresh: what had queued up is gone";
    EXPECT_THAT(world.log(), IsEmpty());
}

TEST(StartUpOfAClient, ACopyThatBecomesOneLetsItsPortGo) {
    StartedWorld world;
    world.copy().ini.SaveFlag("Main", "fromnet", true);
    world.act([&] { initprog(world.copy()); });
    EXPECT_FALSE(world.line.is_open());
    EXPECT_FALSE(world.copy().timers.running(TimerId::TimComFail));
    world.copy().ini.SaveFlag("Main", "fromnet", false);
    world.act([&] { initprog(world.copy()); });
    world.run_for(1s);
    EXPECT_TRUE(world.state().comm.SerComReady);
    EXPECT_TRUE(world.copy().timers.running(TimerId::TimComFail));
}

}  // namespace
}  // namespace nimbry::test
