#include "engine/core/process_cycle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/derived/dates.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// Runs one cycle as the end of a train would.
void cycle(World& world) {
    world.act([&] { processcycle(world.copy()); });
}

void cycles(World& world, int count) {
    for (int i = 0; i < count; ++i) cycle(world);
}

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

// The first cycle

TEST(FirstCycle, MarksThatDataHasFlowedInBothRoles) {
    for (const char* role : {"fromnet=False\r\n", "fromnet=True\r\n"}) {
        SCOPED_TRACE(role);
        StartedWorld world(role);
        EXPECT_FALSE(world.state().comm.Rflagb);
        EXPECT_FALSE(world.state().run.LoneAllowed);
        cycle(world);
        EXPECT_TRUE(world.state().comm.Rflagb);
        EXPECT_TRUE(world.state().run.LoneAllowed);
        EXPECT_TRUE(world.state().run.fullystarted);
    }
}

TEST(FirstCycle, DecodesNothingButTheClockAndStillCounts) {
    StartedWorld world;
    world.send_train();
    EXPECT_EQ(world.panel().Text2[0].text, "");
    EXPECT_EQ(world.panel().TxtTime.text, "14:00:02");
    EXPECT_EQ(world.state().run.SaveCounter, 1);
    EXPECT_TRUE(world.state().run.firstrun) << "the records wait for the second train";
    EXPECT_EQ(world.state().additional.txtRunning.text, "0 Days 0 Hours 0 Minutes");
    world.send_train();
    EXPECT_EQ(world.panel().Text2[0].text,
              "+12.3 \xB0"
              "C");
    EXPECT_FALSE(world.state().run.firstrun);
}

struct MenuCase {
    const char* entry;
    Box MainMenu::*box;
    bool server, client;  // enabled after the first cycle
};

TEST(FirstCycle, EnablesWhatNeededATrain) {
    const MenuCase cases[] = {
        {"mnuInternet", &MainMenu::mnuInternet, true, false},
        {"mnulogFTP", &MainMenu::mnulogFTP, true, false},
        {"mnulogMail", &MainMenu::mnulogMail, true, false},
        {"mnuEditComment", &MainMenu::mnuEditComment, true, false},
        {"mnuEditComment2", &MainMenu::mnuEditComment2, true, false},
        {"mnuEditDSR", &MainMenu::mnuEditDSR, true, false},
        {"mnuLogWU", &MainMenu::mnuLogWU, true, false},
        {"mnuLogHW", &MainMenu::mnuLogHW, true, false},
        {"mnuLogAPRS", &MainMenu::mnuLogAPRS, true, false},
        {"mnuDisplayLog", &MainMenu::mnuDisplayLog, true, true},
        {"mnuDisplayAlmanac", &MainMenu::mnuDisplayAlmanac, true, true},
    };
    for (const MenuCase& row : cases) {
        for (const bool client : {false, true}) {
            SCOPED_TRACE(std::string(row.entry) + (client ? " of a client" : " of a server"));
            StartedWorld world(client ? "fromnet=True\r\n" : "");
            EXPECT_FALSE((world.state().menu.*row.box).enabled);
            cycle(world);
            EXPECT_EQ((world.state().menu.*row.box).enabled, client ? row.client : row.server);
        }
    }
}

TEST(FirstCycle, StartsTheTimersOfARunningCopy) {
    StartedWorld world;
    const Timers& timers = world.copy().timers;
    for (const TimerId id : {TimerId::TimLog, TimerId::GrFailTimer, TimerId::TimUI}) EXPECT_FALSE(timers.running(id));
    cycle(world);
    for (const TimerId id : {TimerId::TimLog, TimerId::GrFailTimer, TimerId::TimUI}) EXPECT_TRUE(timers.running(id));
    EXPECT_FALSE(timers.running(TimerId::TimerFTP));
    EXPECT_FALSE(timers.running(TimerId::timWU));
}

TEST(FirstCycle, LaterOnesLeaveRunningTimersAlone) {
    StartedWorld world;
    cycle(world);
    world.copy().timers.stop(TimerId::TimComFail);
    const std::optional<Instant> due = world.copy().timers.wake_at();  // GrFailTimer
    world.run_for(5s);
    cycle(world);
    EXPECT_EQ(world.copy().timers.wake_at(), due);
    world.copy().timers.stop(TimerId::TimLog);
    cycle(world);
    EXPECT_FALSE(world.copy().timers.running(TimerId::TimLog)) << "the first cycle alone starts it";
}

struct HideCase {
    const char* what;
    const char* lines;
    bool minimised, in_tray;
};

TEST(FirstCycle, MinimisesTheWindowOnceWhereThatIsWanted) {
    const HideCase cases[] = {
        {"not wanted", "", false, false},
        {"minimise after start", "Hide=True\r\n", true, false},
        {"to the tray", "Hide=True\r\nMinSysTray=True\r\n", true, true},
        {"the tray alone", "MinSysTray=True\r\n", false, false},
    };
    for (const HideCase& row : cases) {
        SCOPED_TRACE(row.what);
        StartedWorld world(row.lines);
        EXPECT_FALSE(world.state().window.minimised);
        cycle(world);
        EXPECT_EQ(world.state().window.minimised, row.minimised);
        EXPECT_EQ(world.state().window.in_tray, row.in_tray);
        world.state().window.minimised = false;
        cycle(world);
        EXPECT_FALSE(world.state().window.minimised) << "once";
    }
}

// The save counter. The record is open from the second cycle of a real train on; here it is opened by hand.

TEST(SaveCounter, SavesInTheThirtiethCycleAndTheSixtieth) {
    StartedWorld world;
    world.state().run.firstrun = false;
    cycles(world, 29);
    EXPECT_EQ(world.state().run.SaveCounter, 29);
    EXPECT_EQ(world.state().run.SaveRounds, 0);
    cycle(world);
    EXPECT_EQ(world.state().run.SaveCounter, 0);
    EXPECT_EQ(world.state().run.SaveRounds, 1);
    cycles(world, 29);
    EXPECT_EQ(world.state().run.SaveRounds, 1);
    cycle(world);
    EXPECT_EQ(world.state().run.SaveRounds, 2);
}

TEST(SaveCounter, RunsOnWhileTheRecordIsLockedAndSavesInTheFirstOpenCycle) {
    StartedWorld world;
    WeatherState& state = world.state();
    state.run.DuplicateError = true;  // keeps the records closed
    cycles(world, 34);
    EXPECT_TRUE(state.run.firstrun);
    EXPECT_EQ(state.run.SaveCounter, 34);
    EXPECT_EQ(state.run.SaveRounds, 0);
    state.run.firstrun = false;
    cycle(world);
    EXPECT_EQ(state.run.SaveCounter, 0);
    EXPECT_EQ(state.run.SaveRounds, 1);
}

TEST(SaveCounter, ASaveForgetsTheAlarmAndTheSeventhAllowsAnotherMail) {
    StartedWorld world;
    AlarmState& alarms = world.state().alarms;
    alarms.AlarmMailSent = true;
    for (int save = 1; save <= 7; ++save) {
        SCOPED_TRACE(save);
        alarms.AlarmCondition = true;
        alarms.AlarmReason = "the wind speed is above the alarm threshold";
        world.state().run.firstrun = false;
        cycles(world, 29);
        EXPECT_TRUE(alarms.AlarmCondition);
        EXPECT_TRUE(alarms.AlarmMailSent);
        cycle(world);
        EXPECT_FALSE(alarms.AlarmCondition);
        EXPECT_EQ(alarms.AlarmReason, "");
        EXPECT_EQ(alarms.AlarmMailSent, save < 7);
        EXPECT_EQ(world.state().run.SaveRounds, save < 7 ? save : 0);
    }
}

TEST(SaveCounter, BothSavesLetTheirFlagsGo) {
    StartedWorld world;
    world.state().run.firstrun = false;
    cycles(world, 30);
    EXPECT_FALSE(world.state().run.tdaysaving);
    EXPECT_FALSE(world.state().run.savingrafs);
}

// The alarm mail

TEST(AlarmMail, IsStartedOnceForAnAlarm) {
    StartedWorld world;
    AlarmState& alarms = world.state().alarms;
    alarms.chkAlarmMail = true;
    cycle(world);
    EXPECT_FALSE(alarms.AlarmMailSent) << "no alarm";
    alarms.AlarmCondition = true;
    cycle(world);
    EXPECT_TRUE(alarms.AlarmMailSent);
}

struct NoMailCase {
    const char* why;
    void (*spoil)(WeatherState&);
};

TEST(AlarmMail, IsNotStarted) {
    const NoMailCase cases[] = {
        {"while the option is off", [](WeatherState& s) { s.alarms.chkAlarmMail = false; }},
        {"while another mail is under way", [](WeatherState& s) { s.publish.emailbusy.set(); }},
        {"in a client", [](WeatherState& s) { s.settings.fromnet = true; }},
        {"in the cycle of a save, which comes first",
         [](WeatherState& s) {
             s.run.firstrun = false;
             s.run.SaveCounter = 29;
         }},
    };
    for (const NoMailCase& row : cases) {
        SCOPED_TRACE(row.why);
        StartedWorld world;
        world.state().alarms.chkAlarmMail = true;
        world.state().alarms.AlarmCondition = true;
        row.spoil(world.state());
        cycle(world);
        EXPECT_FALSE(world.state().alarms.AlarmMailSent);
    }
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
        {"FTP on", [](WeatherState& s) { s.publish.ChkEnableFTP = true; }, true, false, true},
        {"mail alone starts none", [](WeatherState& s) { s.publish.ChkSendMail = true; }, false, false, true},
        {"WU on", [](WeatherState& s) { s.publish.chkWU = true; }, false, true, true},
        {"HW on", [](WeatherState& s) { s.publish.chkHW = true; }, false, true, true},
        {"FTP on in a client",
         [](WeatherState& s) {
             s.publish.ChkEnableFTP = s.publish.chkWU = true;
             s.settings.fromnet = true;
         },
         false, false, true},
        {"comms window open",
         [](WeatherState& s) {
             s.publish.ChkEnableFTP = s.publish.chkWU = true;
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
        (by_mail ? publish.ChkSendMail : publish.ChkEnableFTP) = true;
        publish.uloadftpbusy.set();
        cycles(world, 32);
        EXPECT_TRUE(publish.uloadftpbusy);
        world.copy().timers.stop(TimerId::TimerFTP);
        world.state().setup.FTP.open = true;  // so that nothing else starts the timer
        cycle(world);
        EXPECT_FALSE(publish.uloadftpbusy);
        EXPECT_TRUE(world.copy().timers.running(TimerId::TimerFTP));
        EXPECT_EQ(world.state().run.FtpStuckCount, 0);
    }
}

TEST(StuckUpload, IsCountedFromItsBeginning) {
    StartedWorld world;
    world.state().publish.ChkEnableFTP = true;
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
    cycles(world, 12);
    EXPECT_EQ(count, 12);
    cycle(world);
    EXPECT_EQ(count, 0);
    cycles(world, 5);
    world.state().network.listening = true;
    cycle(world);
    EXPECT_EQ(count, 0);
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
    EXPECT_EQ(world.state().window.caption,
              "+12.3 \xB0"
              "C : 54 %");
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
