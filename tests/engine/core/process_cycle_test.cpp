#include "engine/core/process_cycle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/derived/dates.h"
#include "engine/network/syncsock.h"
#include "tests/world/cycles.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

// The clocks

struct ClockCase {
    const char* what;
    CivilTime station;
    CivilTime computer;
    bool warns;
};

CivilTime at(int hour, int minute, int second, int day = 5) {
    return *civil_time({2026, 10, day, hour, minute, second});
}

TEST(ClockTest, MoreThanThirtyMinutesApartIsAnError) {
    const ClockCase cases[] = {
        {"the same minute", at(14, 0, 0), at(14, 0, 59), false},
        {"exactly 30 minutes behind", at(13, 30, 0), at(14, 0, 0), false},
        {"30 minute boundaries, nearly 31 minutes", at(13, 30, 0), at(14, 0, 59), false},
        {"31 minute boundaries, just over 30 minutes", at(13, 29, 59), at(14, 0, 0), true},
        {"exactly 30 minutes ahead", at(14, 30, 59), at(14, 0, 0), false},
        {"31 minutes ahead", at(14, 31, 0), at(14, 0, 0), true},
        {"across midnight", at(23, 45, 0, 4), at(0, 15, 0), false},
        {"across midnight, 31 minutes", at(23, 44, 0, 4), at(0, 15, 0), true},
    };
    for (const ClockCase& row : cases) {
        SCOPED_TRACE(row.what);
        StartedWorld world;
        cycle(world);
        world.state().readings.dtvar = row.station;
        world.clock.set_computer_time(row.computer);
        cycle(world);
        EXPECT_EQ(world.notices.balloons.size(), row.warns ? 1u : 0u);
    }
}

TEST(ClockTest, TheBalloonStandsAtTheWindChillAndComesInEveryCycle) {
    StartedWorld world;
    world.send_train({}, at(15, 0, 0));
    EXPECT_THAT(world.notices.balloons, IsEmpty()) << "not in the first cycle";
    world.send_train({}, at(15, 0, 10));
    world.send_train({}, at(15, 0, 20));
    ASSERT_EQ(world.notices.balloons.size(), 2u);
    const Balloon& balloon = world.notices.balloons[0].what;
    EXPECT_EQ(balloon.title, "Clock Error");
    EXPECT_EQ(balloon.icon, "!");
    EXPECT_EQ(balloon.anchor, "TxtWindChill");
    EXPECT_EQ(
        balloon.text,
        "Your computer clock and the weather station clock are are more than 30 minutes different. You should adjust "
        "which ever one is incorrectly set.");
}

TEST(ClockTest, AClientNeverWarns) {
    StartedWorld world("fromnet=True\r\n");
    cycle(world);
    world.state().readings.dtvar = at(3, 0, 0);
    cycle(world);
    EXPECT_THAT(world.notices.balloons, IsEmpty());
}

// Timers, uploads, listener

struct TimerCase {
    const char* what;
    void (*set)(WeatherState&);
    bool ftp, wu, ui;
};

TEST(CycleTimers, StartWhatIsSwitchedOnUnlessASetupWindowIsOpen) {
    const TimerCase cases[] = {
        {"nothing on", [](WeatherState&) {}, false, false, true},
        {"FTP on", [](WeatherState& s) { s.publish.NimbryFTPSetup.ChkEnableFTP = true; }, true, false, true},
        {"mail alone starts none", [](WeatherState& s) { s.publish.NimbryFTPSetup.ChkSendMail = true; }, false, false,
         true},
        {"WU on", [](WeatherState& s) { s.publish.NimbryFTPSetup.chkWU = true; }, false, true, true},
        {"HW on", [](WeatherState& s) { s.publish.NimbryFTPSetup.chkHW = true; }, false, true, true},
        {"APRS on", [](WeatherState& s) { s.publish.NimbryFTPSetup.chkAPRS = true; }, false, true, true},
        {"FTP on in a client",
         [](WeatherState& s) {
             s.publish.NimbryFTPSetup.ChkEnableFTP = s.publish.NimbryFTPSetup.chkWU = true;
             s.settings.fromnet = true;
         },
         false, false, true},
        {"comms window open",
         [](WeatherState& s) {
             s.publish.NimbryFTPSetup.ChkEnableFTP = s.publish.NimbryFTPSetup.chkWU = true;
             s.setup.Form2.open = true;
         },
         false, false, false},
        {"FTP window open", [](WeatherState& s) { s.setup.FTP.open = true; }, false, false, false},
        {"units window open", [](WeatherState& s) { s.setup.Units.open = true; }, false, false, false},
    };
    for (const TimerCase& row : cases) {
        SCOPED_TRACE(row.what);
        StartedWorld world;
        row.set(world.state());
        cycle(world);
        EXPECT_EQ(world.copy().timers.running(TimerId::TimerFTP), row.ftp);
        EXPECT_EQ(world.copy().timers.running(TimerId::timWU), row.wu);
        EXPECT_EQ(world.copy().timers.running(TimerId::TimUI), row.ui);
    }
}

TEST(StuckUpload, IsBrokenOffInTheThirtyThirdCycleThatFindsIt) {
    for (const bool by_mail : {false, true}) {
        SCOPED_TRACE(by_mail ? "mail is on" : "FTP is on");
        StartedWorld world;
        PublishState& publish = world.state().publish;
        (by_mail ? publish.NimbryFTPSetup.ChkSendMail : publish.NimbryFTPSetup.ChkEnableFTP) = true;
        publish.uloadftpbusy.set();
        cycles(world, 32);
        EXPECT_TRUE(publish.uloadftpbusy);
        world.copy().timers.stop(TimerId::TimerFTP);
        world.state().setup.FTP.open = true;  // so that nothing else starts the timer
        cycle(world);
        EXPECT_TRUE(publish.upload.FtpTimedOut) << "whoever uploads gives up, and clears its flag";
        EXPECT_TRUE(world.copy().timers.running(TimerId::TimerFTP));
        EXPECT_EQ(world.state().run.FtpStuckCount, 0);
    }
}

TEST(StuckUpload, IsCountedFromItsBeginning) {
    StartedWorld world;
    world.state().publish.NimbryFTPSetup.ChkEnableFTP = true;
    world.state().publish.uloadftpbusy.set();
    cycles(world, 32);
    world.state().publish.uloadftpbusy.clear();
    cycle(world);
    EXPECT_EQ(world.state().run.FtpStuckCount, 0);
    world.state().publish.uloadftpbusy.set();
    cycles(world, 32);
    EXPECT_TRUE(world.state().publish.uloadftpbusy);
}

TEST(StuckUpload, IsNotLookedForWhileNothingIsPublished) {
    StartedWorld world;
    world.state().publish.uloadftpbusy.set();
    cycles(world, 50);
    EXPECT_TRUE(world.state().publish.uloadftpbusy);
}

TEST(SyncListener, OfAServerIsOpenedAfreshInTheThirteenthCycleThatFindsItClosed) {
    StartedWorld world("bcastnet=True\r\n");
    int& count = world.state().run.SyncWaitCount;
    cycles(world, 20);
    EXPECT_EQ(count, 0) << "the start has opened it";
    drop_syncsock(world.state().network);
    cycles(world, 12);
    EXPECT_EQ(count, 12);
    EXPECT_FALSE(world.streams.listening(60131));
    cycle(world);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(world.streams.listening(60131));
}

TEST(SyncListener, IsTriedAgainWhenItCannotBeOpened) {
    StartedWorld world("bcastnet=True\r\n");
    drop_syncsock(world.state().network);
    world.streams.unlistenable = SendFault{98, "Address already in use"};
    cycles(world, 39);
    EXPECT_EQ(world.streams.listens.size(), 4U) << "at the start and after 13, 26 and 39 cycles";
    world.streams.unlistenable.reset();
    cycles(world, 13);
    EXPECT_TRUE(world.streams.listening(60131));
}

TEST(SyncListener, IsNotWatchedInACopyWithoutClientsNorInAClient) {
    for (const char* lines : {"", "fromnet=True\r\nbcastnet=True\r\n"}) {
        SCOPED_TRACE(lines);
        StartedWorld world(lines);
        cycles(world, 5);
        EXPECT_EQ(world.state().run.SyncWaitCount, 0);
    }
}

// Menu, colours, flags

TEST(CycleMenu, IsOpenedByEveryCycleWithoutUploadOrMail) {
    StartedWorld world;
    MainMenu& menu = world.state().menu;
    Box* const entries[] = {&menu.mnuLogs,    &menu.mnuReports,        &menu.mnuExit,    &menu.mnuSetup,
                            &menu.mnuDisplay, &menu.mnuDisplayAlmanac, &menu.mnuProgLog, &menu.mnuClearProgLog,
                            &menu.mnuAlMonth, &menu.mnuAutoReport,     &menu.fmb[0],     &menu.fmb[5]};
    const auto lock = [&] {
        for (Box* entry : entries) entry->enabled = false;
    };
    lock();
    world.state().publish.uloadftpbusy.set();
    cycle(world);
    for (const Box* entry : entries) EXPECT_FALSE(entry->enabled) << entry->text;
    world.state().publish.uloadftpbusy.clear();
    world.state().publish.emailbusy.set();
    cycle(world);
    for (const Box* entry : entries) EXPECT_FALSE(entry->enabled) << entry->text;
    world.state().publish.emailbusy.clear();
    cycle(world);
    for (const Box* entry : entries) EXPECT_TRUE(entry->enabled) << entry->text;
}

TEST(CycleColours, TurnFaultRedBackToBlackAndLeaveOtherColours) {
    StartedWorld world;
    MainPanel& panel = world.panel();
    Box* const boxes[] = {&panel.Text2[0], &panel.Text2[1], &panel.Text2[2], &panel.Text2[4],
                          &panel.Text2[5], &panel.Text2[6], &panel.Text2[9]};
    for (Box* box : boxes) {
        box->fore = colours::red;
        box->text = "Error";
        box->back = colours::alarm_back;
    }
    panel.Text2[3].fore = 0x123456;
    cycle(world);
    for (const Box* box : boxes) {
        EXPECT_EQ(box->fore, colours::black);
        EXPECT_EQ(box->text, "Error");
        EXPECT_EQ(box->back, colours::alarm_back);
    }
    EXPECT_EQ(panel.Text2[3].fore, 0x123456u);
}

struct OnceCase {
    const char* lines;
    bool kept;
};

TEST(CycleFaults, AreForgottenOnlyWhereColdClimateFaultsAloneAreSilenced) {
    const OnceCase cases[] = {{"ErrorPop=False\r\nCCPop=False\r\n", true},
                              {"ErrorPop=False\r\nCCPop=True\r\n", false},
                              {"ErrorPop=True\r\nCCPop=False\r\n", true},
                              {"ErrorPop=True\r\nCCPop=True\r\n", true}};
    for (const OnceCase& row : cases) {
        SCOPED_TRACE(row.lines);
        StartedWorld world(row.lines);
        world.state().sensors.pernerr.once = true;
        world.state().sensors.pewgerr.raised = true;
        cycle(world);
        EXPECT_EQ(world.state().sensors.pernerr.once, row.kept);
        EXPECT_TRUE(world.state().sensors.pewgerr.raised) << "the two-strike flag is another thing";
    }
}

TEST(CycleFlags, TheEndOfTheCycleLetsTheNextFrameIn) {
    StartedWorld world;
    world.state().comm.gotcomms = true;
    world.state().comm.dworkingb.set();
    cycle(world);
    EXPECT_FALSE(world.state().comm.gotcomms);
    EXPECT_FALSE(world.state().comm.dworkingb);
}

// Uptime and caption

TEST(CycleUptime, CountsFromTheTimeInTheConfiguration) {
    StartedWorld world;
    world.clock.set_computer_time(at(15, 0, 59, 7));
    cycle(world);
    EXPECT_EQ(world.state().additional.txtRunning.text, "2 Days 1 Hour 0 Minutes");
    world.copy().ini.SaveSetting("Main", "UpTime", "7 Oct 2026 14:59:59");
    cycle(world);
    EXPECT_EQ(world.state().additional.txtRunning.text, "0 Days 0 Hours 1 Minute");
    world.copy().ini.SaveSetting("Main", "UpTime", "10/07/26 2:59 PM");
    cycle(world);
    EXPECT_EQ(world.state().additional.txtRunning.text, "") << "another program's form shows nothing";
}

TEST(CycleCaption, ShowsTheWeatherWhileTheWindowIsMinimised) {
    StartedWorld world;
    world.state().window.minimised = true;
    world.send_trains(2);
    EXPECT_EQ(world.state().window.caption, "+12.3 \260C : 54 %");
    world.state().window.minimised = false;
    world.send_trains(1);
    EXPECT_EQ(world.state().window.caption, "Nimbry 2.02 - WM-918 Weather Monitoring");
}

// Refused dates and waiting cycles

TEST(Cycle, DoesNotRunForATrainWithAnImpossibleDate) {
    StartedWorld world;
    StationReadings readings;
    readings.clock = {0, 0, 14, 31, 2};
    world.deliver(write_train(readings));
    EXPECT_FALSE(world.state().run.fullystarted);
    EXPECT_FALSE(world.state().comm.dworkingb);
    world.send_train();
    EXPECT_TRUE(world.state().run.fullystarted);
}

TEST(Cycle, HoldsTheLineOffWhileItWaits) {
    StartedWorld world("tmidnight=False\r\n");
    world.clock.set_computer_time(at(23, 59, 50));
    world.send_trains(1);
    world.files.put("rnslm.dat", "");
    world.files.set_in_use("rnslm.dat", true);
    world.send_trains(2);  // 00:00:00 waits for the file; 00:00:10 comes meanwhile
    EXPECT_TRUE(world.state().comm.dworkingb);
    EXPECT_EQ(world.state().comm.counters.trains, 2u) << "what comes meanwhile is thrown away";
    world.files.set_in_use("rnslm.dat", false);
    world.run_for(1s);
    EXPECT_FALSE(world.state().comm.dworkingb);
    world.send_trains(1);
    EXPECT_EQ(world.state().comm.counters.trains, 3u);
}

}  // namespace
}  // namespace nimbry::test
