#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/core/main_settings.h"
#include "engine/displays/box_list.h"
#include "engine/setup/comms_dialog.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// What the accept button of the communications dialog leads to in a running copy.
struct CommsApplied : testing::Test {
    void accept(World& world, void (*change)(CommsDialog&)) {
        CommsDialog dialog = comms_dialog(world.state().settings);
        change(dialog);
        ASSERT_FALSE(unfit_comms(world.copy(), dialog));
        world.act([&world, dialog] { accept_comms(world.copy(), dialog); });
        world.run_for(2s);
    }
    static std::vector<std::string> disabled(World& world) {
        std::vector<std::string> names;
        for (const char* name : {"mnuInternet", "mnuAlarms", "mnuLatLong", "mnuEditComment", "mnuEditComment2",
                                 "mnuEditDSR", "mnulogFTP", "mnulogMail", "mnuLogWU", "mnuLogHW", "mnuLogAPRS",
                                 "mnuNoFTPPop", "mnuNoMailPop", "mnuFTPdebug", "SetupComms", "SetupUnits"})
            if (!find_box(world.state(), name)->enabled) names.emplace_back(name);
        return names;
    }
};

void become_client(CommsDialog& dialog) {
    dialog.Check2 = true;
}
void become_alone(CommsDialog& dialog) {
    dialog.Check1 = dialog.Check2 = false;
}
void become_server(CommsDialog& dialog) {
    dialog.Check1 = true;
    dialog.IPList = {"127.0.0.1"};
}

TEST_F(CommsApplied, ACopyThatBecomesAClientClosesItsPortAndListensToTheNetwork) {
    StartedWorld world;
    world.send_trains(2);
    ASSERT_TRUE(world.line.is_open());
    accept(world, become_client);
    EXPECT_FALSE(world.line.is_open());
    EXPECT_FALSE(world.state().comm.SerComReady);
    EXPECT_EQ(world.datasock.port(), 60135);
    EXPECT_EQ(world.setting("Main", "fromnet"), "True");
    world.run_for(5min);
    EXPECT_TRUE(world.notices.balloons.empty()) << "a client has no line whose silence it could tell of";
}

TEST_F(CommsApplied, AClientThatIsNoneAnyMoreOpensItsPort) {
    StartedWorld world("fromnet=True\r\n");
    ASSERT_THAT(world.line.attempts(), IsEmpty());
    accept(world, become_alone);
    EXPECT_EQ(world.line.device(), default_device(1));
    EXPECT_EQ(world.line.attempts().size(), 2U) << "twice, as at a start";
    EXPECT_TRUE(world.state().comm.SerComReady);
    EXPECT_FALSE(world.datasock.is_open());
    world.send_trains(2);
    EXPECT_EQ(world.state().comm.counters.trains, 2U);
}

TEST_F(CommsApplied, AServerIsHeardFromItsOwnPortAndSilentAgainWithoutTheRole) {
    StartedWorld world;
    accept(world, become_server);
    EXPECT_EQ(world.datasock.port(), 60137);
    world.send_train();
    EXPECT_EQ(world.datasock.sent.size(), 1U);
    accept(world, become_alone);
    EXPECT_FALSE(world.datasock.is_open());
    world.send_train();
    EXPECT_EQ(world.datasock.sent.size(), 1U);
    EXPECT_EQ(world.line.attempts().size(), 2U) << "none of that touches the line";
}

TEST_F(CommsApplied, ClientWinsOverServerAndBothKeysStayAsTheyWereTicked) {
    StartedWorld world;
    accept(world, [](CommsDialog& dialog) {
        become_server(dialog);
        become_client(dialog);
    });
    EXPECT_EQ(world.datasock.port(), 60135);
    EXPECT_EQ(world.setting("Main", "bcastnet"), "True");
    EXPECT_EQ(world.setting("Main", "fromnet"), "True");
}

TEST_F(CommsApplied, AnotherPortIsOpenedAtOnce) {
    StartedWorld world;
    accept(world, [](CommsDialog& dialog) {
        dialog.Option1 = false;
        dialog.Option2 = true;
        dialog.SerialPort2 = "/dev/serial/by-id/usb-Adapter_A1";
    });
    EXPECT_EQ(world.line.device(), "/dev/serial/by-id/usb-Adapter_A1");
    EXPECT_EQ(world.setting("Main", "SerialPort2"), "/dev/serial/by-id/usb-Adapter_A1");
    world.send_train();
    EXPECT_EQ(world.state().comm.counters.trains, 1U);
}

TEST_F(CommsApplied, TheSamePortStaysOpen) {
    StartedWorld world;
    accept(world, [](CommsDialog& dialog) {
        dialog.Check3 = true;
        dialog.TxtLogMins = "5";
        dialog.SerialPort4 = "/dev/ttyUSB7";
    });
    EXPECT_EQ(world.line.attempts().size(), 2U) << "those of the start";
    EXPECT_TRUE(world.state().settings.fwrtlog);
}

TEST_F(CommsApplied, TheDeviceThatTheProgramWasStartedWithIsNoneOfTheDialogs) {
    StartedWorld world("", {.has_window = false, .device = "/dev/pts/7"});
    accept(world, [](CommsDialog& dialog) { dialog.SerialPort1 = "/dev/ttyUSB0"; });
    EXPECT_EQ(world.line.device(), "/dev/pts/7");
    EXPECT_EQ(world.setting("Main", "SerialPort1"), "/dev/ttyUSB0");
}

TEST_F(CommsApplied, DataThatArrivesMeanwhileIsThrownAway) {
    StartedWorld world;
    CommsDialog dialog = comms_dialog(world.state().settings);
    dialog.SerialPort1 = "/dev/ttyUSB0";
    world.act([&] { accept_comms(world.copy(), dialog); });
    EXPECT_TRUE(world.state().comm.initflag) << "between the two opens";
    world.run_for(1s);
    EXPECT_FALSE(world.state().comm.initflag);
    EXPECT_TRUE(world.state().comm.SerComReady);
}

TEST_F(CommsApplied, APortThatDoesNotOpenIsAskedAboutAsAtTheStart) {
    StartedWorld world("", {.has_window = true, .device = ""});
    world.run_for(5s);
    world.line.refuse("/dev/ttyUSB9", PortOpenResult::not_found);
    world.notices.will_answer(Answer::cancel);
    CommsDialog dialog = comms_dialog(world.state().settings);
    dialog.SerialPort1 = "/dev/ttyUSB9";
    world.act([&] { accept_comms(world.copy(), dialog); });
    world.run_for(1s);
    ASSERT_EQ(world.notices.boxes.size(), 1U);
    EXPECT_EQ(world.notices.boxes[0].what.text,
              "COM Port Error,\r\nPlease check that the selected port exists\r\nClick Retry, or Cancel to Quit.");
    EXPECT_TRUE(world.engine.gone());
}

// --- The menu

TEST_F(CommsApplied, AClientsMenuHasNothingToPublishWith) {
    StartedWorld world("mlogftp=True\r\nmlogmail=True\r\n");
    world.send_trains(2);
    EXPECT_THAT(disabled(world), IsEmpty());
    world.state().menu.mnuFTPdebug.checked = true;
    accept(world, become_client);
    EXPECT_THAT(disabled(world),
                ElementsAre("mnuInternet", "mnuEditComment", "mnuEditComment2", "mnuEditDSR", "mnulogFTP", "mnulogMail",
                            "mnuLogWU", "mnuLogHW", "mnuLogAPRS", "mnuFTPdebug"));
    const MainMenu& menu = world.state().menu;
    EXPECT_FALSE(menu.mnulogFTP.checked || menu.mnulogMail.checked || menu.mnuFTPdebug.checked);
    EXPECT_EQ(world.setting("Main", "mlogftp"), "True") << "the keys wait for another role";
}

TEST_F(CommsApplied, TheMenuComesBackWithTheRole) {
    StartedWorld world("mlogftp=True\r\nmlogmail=True\r\nNoFTPop=True\r\n");
    world.send_trains(2);
    accept(world, become_client);
    // What a client's synchronisation takes away beyond that.
    MainMenu& menu = world.state().menu;
    for (Box* entry : {&menu.mnuAlarms, &menu.mnuLatLong, &menu.mnuNoFTPPop, &menu.mnuNoMailPop})
        entry->enabled = false;
    accept(world, become_alone);
    EXPECT_THAT(disabled(world), IsEmpty());
    EXPECT_TRUE(menu.mnulogFTP.checked && menu.mnulogMail.checked && menu.mnuNoFTPPop.checked);
}

TEST_F(CommsApplied, BeforeTheFirstTrainWhatNeedsOneStaysOff) {
    StartedWorld world("fromnet=True\r\n");
    accept(world, become_alone);
    EXPECT_THAT(disabled(world), ElementsAre("mnuInternet", "mnuEditComment", "mnuEditComment2", "mnuEditDSR",
                                             "mnulogFTP", "mnulogMail", "mnuLogWU", "mnuLogHW", "mnuLogAPRS"));
    world.send_trains(1);
    EXPECT_THAT(disabled(world), IsEmpty());
}

TEST_F(CommsApplied, AClientsSecondStartGivesNothingBack) {
    StartedWorld world("fromnet=True\r\n");
    MainMenu& menu = world.state().menu;
    menu.mnuAlarms.enabled = menu.mnuLatLong.enabled = false;
    accept(world, [](CommsDialog&) {});
    EXPECT_FALSE(menu.mnuAlarms.enabled || menu.mnuLatLong.enabled);
}

// --- The first run

TEST_F(CommsApplied, InAFirstRunTheStartTakesWhatTheWindowHasWritten) {
    World world;
    world.begin_start({.has_window = true, .device = ""});
    ASSERT_THAT(world.notices.windows, ElementsAre("Form2"));
    accept(world, [](CommsDialog& dialog) {
        dialog.Option1 = false;
        dialog.Option2 = true;
        dialog.SerialPort2 = "/dev/ttyUSB0";
    });
    EXPECT_THAT(world.line.attempts(), IsEmpty()) << "not while the window is open";
    EXPECT_TRUE(world.state().comm.initflag);
    world.state().setup.Form2.open = false;
    world.run_for(1s);
    EXPECT_EQ(world.line.device(), "/dev/ttyUSB0");
    EXPECT_EQ(world.line.attempts().size(), 2U);
    EXPECT_EQ(world.setting("Main", "HasRun"), "True");
    EXPECT_FALSE(world.state().comm.initflag);
}

TEST_F(CommsApplied, TheFirstWindowBeginsWithWhatTheFileHoldsAlready) {
    World world;
    world.files.put("Nimbry.ini", "[Main]\r\nfTempF=True\r\nfTempC=False\r\nLogMin=3\r\nfcom2=True\r\n");
    world.begin_start({.has_window = true, .device = ""});
    EXPECT_EQ(comms_dialog(world.state().settings).TxtLogMins, "3");
    EXPECT_TRUE(comms_dialog(world.state().settings).Option2);
    accept(world, [](CommsDialog&) {});
    world.state().setup.Form2.open = false;
    world.run_for(1s);
    EXPECT_EQ(world.state().units.temperature, TemperatureUnit::fahrenheit) << "accepting loses no other setting";
}

}  // namespace
}  // namespace nimbry::test
