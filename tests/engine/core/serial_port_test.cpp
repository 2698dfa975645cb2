#include "engine/core/serial_port.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "engine/core/initprog.h"
#include "engine/core/main_settings.h"
#include "engine/setup/comms_dialog.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const Engine::StartOptions with_window{.has_window = true, .device = ""};

/// When the port was tried, in milliseconds from `begin`.
std::vector<Milliseconds::rep> attempts_since(const ScriptedLine& line, Instant begin) {
    std::vector<Milliseconds::rep> times;
    for (const ScriptedLine::Attempt& attempt : line.attempts()) {
        if (attempt.at < begin) continue;
        times.push_back(std::chrono::duration_cast<Milliseconds>(attempt.at - begin).count());
    }
    return times;
}

struct FailureCase {
    const char* error;
    int number;
    const char* text;
};

TEST(PortFailureText, EachErrorHasItsWords) {
    const FailureCase cases[] = {
        {"no such port", 8002, "Please check that the selected port exists"},
        {"open already", 8005, "The selected COM port is already open,"},
        {"locked", 8010, "The selected COM port is locked by another device,"},
        {"not to be opened", 8012, "The selected COM port could not be opened,"},
        {"open in another way", 8013, "The selected COM port is already open,"},
        {"busy", 8019, "The selected COM port is busy,"},
        {"any other", 8020, "(8020) has ocurred with the selected COM port,"},
    };
    for (const FailureCase& row : cases) {
        SCOPED_TRACE(row.error);
        EXPECT_EQ(port_failure_text(row.number), row.text);
    }
}

TEST(SerialPort, IsOpenedTwiceWithHalfASecondBetween) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    const Instant begin = world.clock.monotonic();
    world.begin_start();
    EXPECT_THAT(attempts_since(world.line, begin), ElementsAre(0));
    EXPECT_FALSE(world.line.is_open()) << "closed between the two";
    world.run_for(499ms);
    EXPECT_FALSE(world.state().comm.SerComReady);
    EXPECT_FALSE(world.copy().timers.running(TimerId::TimComFail));
    world.run_for(1ms);
    EXPECT_THAT(attempts_since(world.line, begin), ElementsAre(0, 500));
    EXPECT_TRUE(world.state().comm.SerComReady);
    EXPECT_EQ(world.copy().timers.wake_at(), begin + 60500ms) << "the no-data watch runs from the second open";
}

TEST(SerialPort, WhatItHeldAtTheOpenIsThrownAway) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.line.hold_at_open(Bytes(13, 0x55));
    world.start();
    world.send_train();
    EXPECT_EQ(world.state().comm.counters.trains, 1u);
}

TEST(SerialPort, AnOpenedPortStartsTheNoDataWatchAfresh) {
    StartedWorld world;
    world.state().comm.Rflagb = true;
    world.state().comm.ccheckflagb = true;
    world.act([&] { open_serial_port(world.copy()); });
    EXPECT_FALSE(world.state().comm.SerComReady);
    world.run_for(500ms);
    EXPECT_TRUE(world.state().comm.SerComReady);
    EXPECT_FALSE(world.state().comm.Rflagb);
    EXPECT_FALSE(world.state().comm.ccheckflagb);
}

struct DeviceCase {
    const char* what;
    const char* lines;
    std::string device;
};

TEST(SerialPort, TheHighestNumberedPortThatIsTrueIsOpened) {
    const DeviceCase cases[] = {
        {"defaults", "", default_device(1)},
        {"port 2, while port 1 still has its default", "fcom2=True\r\n", default_device(2)},
        {"two of them", "fcom2=True\r\nfcom4=True\r\n", default_device(4)},
        {"none", "fcom1=False\r\n", default_device(1)},
        {"a device of its own", "SerialPort1=/dev/serial/by-id/usb-1\r\n", "/dev/serial/by-id/usb-1"},
        {"a device of a port not chosen", "fcom3=True\r\nSerialPort1=/dev/ttyUSB0\r\n", default_device(3)},
    };
    for (const DeviceCase& row : cases) {
        SCOPED_TRACE(row.what);
        StartedWorld world(row.lines);
        EXPECT_EQ(world.line.device(), row.device);
    }
}

TEST(SerialPort, TheDeviceOfTheCommandLineCountsForThisRun) {
    StartedWorld world("fcom2=True\r\n", {.has_window = false, .device = "/dev/pts/7"});
    EXPECT_EQ(world.line.device(), "/dev/pts/7");
    EXPECT_EQ(world.setting("Main", "SerialPort2"), "");
}

// With a window

TEST(SerialPortWithAWindow, AFailedOpenAsksAndRetryRepeatsIt) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.line.answer_opens(
        {PortOpenResult::locked, PortOpenResult::not_found, PortOpenResult::ok, PortOpenResult::failed});
    for (int i = 0; i < 3; ++i) world.notices.will_answer(Answer::retry);
    world.start(with_window);
    ASSERT_EQ(world.notices.boxes.size(), 3u);
    const MessageBox& box = world.notices.boxes[0].what;
    EXPECT_EQ(box.title, "Nimbry");
    EXPECT_EQ(box.icon, "!");
    EXPECT_EQ(box.choices, Choices::retry_cancel);
    EXPECT_EQ(box.detail, "The device is " + default_device(1));
    EXPECT_EQ(box.other_choice, "Choose &port ...");
    EXPECT_EQ(
        box.text,
        "COM Port Error,\r\nThe selected COM port is locked by another device,\r\nClick Retry, or Cancel to Quit.");
    EXPECT_EQ(world.notices.boxes[1].what.text,
              "COM Port Error,\r\nPlease check that the selected port exists\r\nClick Retry, or Cancel to Quit.");
    // The second open failed once: it alone was repeated.
    EXPECT_EQ(world.line.attempts().size(), 5u);
    EXPECT_TRUE(world.state().comm.SerComReady);
    EXPECT_THAT(world.log(), IsEmpty());
}

TEST(SerialPortWithAWindow, CancelEndsTheProgramAtOnceWithoutStopLine) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.line.refuse(default_device(1), PortOpenResult::failed);
    world.notices.will_answer(Answer::cancel, 5s);
    world.begin_start(with_window);
    world.run_for(4999ms);
    EXPECT_FALSE(world.engine.gone());
    world.run_for(1ms);
    EXPECT_TRUE(world.engine.gone());
    EXPECT_TRUE(world.state().run.ProgramClosing);
    EXPECT_EQ(world.engine.exit_status(), 0);
    EXPECT_EQ(world.engine.wake_at(), std::nullopt);
    EXPECT_EQ(world.lines("nbyprog.log").size(), 3u);
    EXPECT_THAT(world.log(), ElementsAre("05 Oct 2026 14:00:05 (Computer time) COM Port Error, The selected COM port "
                                         "could not be opened (" +
                                         default_device(1) + "): cancelled"));
    EXPECT_THAT(world.sounds.played, IsEmpty());
}

// `nimbryctl apply comms` opens another port while nobody has answered the box.
TEST(SerialPortWithAWindow, AnAnswerThatComesAfterALaterOpeningChangesNothing) {
    for (const Answer answer : {Answer::cancel, Answer::retry, Answer::other}) {
        SCOPED_TRACE(static_cast<int>(answer));
        World world;
        world.files.put("Nimbry.ini", main_section());
        world.line.refuse(default_device(1), PortOpenResult::not_found);
        world.notices.will_answer(answer, 10s);
        world.begin_start(with_window);
        world.state().settings.SerialPort1 = "/dev/ttyUSB7";
        world.act([&] { open_serial_port(world.copy()); });
        world.run_for(20s);
        EXPECT_FALSE(world.engine.gone());
        EXPECT_EQ(world.line.device(), "/dev/ttyUSB7");
        EXPECT_EQ(world.line.attempts().size(), 3u);
        EXPECT_TRUE(world.state().comm.SerComReady);
        EXPECT_THAT(world.notices.windows, IsEmpty());
        EXPECT_THAT(world.log(), IsEmpty());
    }
}

/// A copy with a window whose port is not there; the box is answered by the choice of another port.
struct PortToChoose : testing::Test {
    PortToChoose() {
        world.files.put("Nimbry.ini", main_section());
        world.line.refuse(default_device(1), PortOpenResult::not_found);
        world.notices.will_answer(Answer::other);
    }
    /// What the person at the dialog does, before closing it.
    void accept(void (*change)(CommsDialog&)) {
        CommsDialog dialog = comms_dialog(world.state().settings);
        change(dialog);
        world.act([&] { accept_comms(world.copy(), dialog); });
        close();
    }
    void close() {
        world.state().setup.Form2.open = false;
        world.run_for(1s);
    }

    World world;
};

TEST_F(PortToChoose, IsChosenInTheDialogAndOpenedInTheSameStart) {
    world.begin_start(with_window);
    ASSERT_THAT(world.notices.windows, ElementsAre("Form2"));
    EXPECT_TRUE(world.state().setup.Form2.open);
    world.run_for(1h);
    EXPECT_EQ(world.line.attempts().size(), 1u) << "nothing is tried while the dialog is open";
    accept([](CommsDialog& dialog) { dialog.SerialPort1 = "/dev/ttyUSB0"; });
    EXPECT_EQ(world.line.device(), "/dev/ttyUSB0");
    EXPECT_EQ(world.line.attempts().size(), 3u);
    EXPECT_TRUE(world.state().comm.SerComReady);
    EXPECT_EQ(world.setting("Main", "SerialPort1"), "/dev/ttyUSB0");
    EXPECT_EQ(world.notices.boxes.size(), 1u);
    EXPECT_THAT(world.log(), IsEmpty());
}

TEST_F(PortToChoose, LeavesTheDialogAsItWasForWhatIsAcceptedLater) {
    world.begin_start(with_window);
    accept([](CommsDialog& dialog) { dialog.SerialPort1 = "/dev/ttyUSB0"; });
    accept([](CommsDialog& dialog) { dialog.SerialPort1 = "/dev/ttyUSB1"; });
    EXPECT_EQ(world.line.device(), "/dev/ttyUSB1") << "nobody waits for it now: the dialog opens the port itself";
    EXPECT_TRUE(world.state().comm.SerComReady);
}

TEST_F(PortToChoose, IsAskedAboutAgainWhenTheDialogWasLeftWithoutAChoice) {
    world.notices.will_answer(Answer::cancel);
    world.begin_start(with_window);
    close();
    EXPECT_EQ(world.notices.boxes.size(), 2u);
    EXPECT_TRUE(world.engine.gone());
}

TEST_F(PortToChoose, CountsForMoreThanTheDeviceOfTheCommandLine) {
    world.line.refuse("/dev/pts/9", PortOpenResult::not_found);
    world.begin_start({.has_window = true, .device = "/dev/pts/9"});
    ASSERT_EQ(world.notices.boxes.size(), 1u);
    EXPECT_EQ(world.notices.boxes[0].what.detail, "The device is /dev/pts/9");
    accept([](CommsDialog& dialog) { dialog.SerialPort1 = "/dev/ttyUSB0"; });
    EXPECT_EQ(world.line.device(), "/dev/ttyUSB0");
}

TEST_F(PortToChoose, IsNoneInACopyThatBecomesAClientInstead) {
    world.begin_start(with_window);
    accept([](CommsDialog& dialog) { dialog.Check2 = true; });
    EXPECT_EQ(world.line.attempts().size(), 1u);
    EXPECT_EQ(world.datasock.port(), 60135);
    world.run_for(5s);
    EXPECT_FALSE(world.state().comm.splashing) << "the start has gone on";
    EXPECT_EQ(world.notices.boxes.size(), 1u);
}

TEST_F(PortToChoose, IsLeftAloneOnceALaterOpeningHasTakenOver) {
    world.begin_start(with_window);
    world.state().settings.SerialPort1 = "/dev/ttyUSB7";
    world.act([&] { open_serial_port(world.copy()); });
    world.run_for(1s);
    close();
    EXPECT_EQ(world.line.device(), "/dev/ttyUSB7");
    EXPECT_EQ(world.line.attempts().size(), 3u);
    EXPECT_TRUE(world.state().comm.SerComReady);
}

// Without a window

TEST(SerialPortWithoutAWindow, AFailedOpenIsLoggedOnceAndTriedAgainForEver) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.line.refuse(default_device(1), PortOpenResult::not_found);
    const Instant begin = world.clock.monotonic();
    world.begin_start();
    world.run_for(110s);
    EXPECT_THAT(attempts_since(world.line, begin), ElementsAre(0, 1000, 3000, 8000, 18000, 48000, 78000, 108000));
    EXPECT_THAT(
        world.log(),
        ElementsAre("05 Oct 2026 14:00:00 (Computer time) COM Port Error, Please check that the selected port exists"));
    EXPECT_THAT(world.notices.boxes, IsEmpty());
    ASSERT_EQ(world.notices.balloons.size(), 1u) << "the first failure alone";
    EXPECT_EQ(world.notices.balloons[0].what.title, "Comms Error");
    EXPECT_EQ(world.notices.balloons[0].what.text, "COM Port Error, Please check that the selected port exists (" +
                                                       default_device(1) + ")\r\nNimbry tries again by itself.");
    EXPECT_FALSE(world.copy().timers.running(TimerId::TimComFail));
    EXPECT_EQ(world.state().additional.txtStarted.text, "05 Oct 2026 14:00:00") << "the load went on";
    EXPECT_EQ(world.state().comm.PortTrouble,
              "COM Port Error, Please check that the selected port exists (" + default_device(1) + ")");

    world.line.plug_in(default_device(1));
    world.run_for(29s);
    EXPECT_TRUE(world.state().comm.SerComReady);
    EXPECT_TRUE(world.copy().timers.running(TimerId::TimComFail));
    EXPECT_EQ(world.log().size(), 1u);
    EXPECT_EQ(world.state().comm.PortTrouble, "");
}

TEST(SerialPortWithoutAWindow, ASecondOpenThatFailsIsTriedAgainToo) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.line.answer_opens({PortOpenResult::ok, PortOpenResult::already_open});
    const Instant begin = world.clock.monotonic();
    world.begin_start();
    world.run_for(1s);
    EXPECT_EQ(world.state().comm.PortTrouble,
              "COM Port Error, The selected COM port is already open (" + default_device(1) + ")")
        << "the comma leads on to the box's next line";
    world.run_for(1s);
    EXPECT_THAT(attempts_since(world.line, begin), ElementsAre(0, 500, 1500, 2000));
    EXPECT_TRUE(world.state().comm.SerComReady);
    EXPECT_THAT(
        world.log(),
        ElementsAre("05 Oct 2026 14:00:00 (Computer time) COM Port Error, The selected COM port is already open,"));
}

// A port that is lost while the program runs

class LostPort : public testing::TestWithParam<bool> {};

TEST_P(LostPort, IsLoggedOnceWhenItGoesAndOnceWhenItIsBackAndNeverAsksAnybody) {
    StartedWorld world("", {.has_window = GetParam(), .device = ""});
    world.run_for(8s);  // 14:00:10; a splash is over
    world.unplug();
    world.run_for(0s);
    EXPECT_EQ(world.panel().lblStatus.text, "Comms Error");
    EXPECT_EQ(world.panel().lblStatus.fore, colours::blue);
    world.run_for(500ms);
    const Instant lost = world.clock.monotonic();
    ASSERT_EQ(world.notices.balloons.size(), 1u);
    EXPECT_EQ(world.notices.balloons[0].what.title, "Comms Error");
    EXPECT_EQ(world.notices.balloons[0].what.anchor, "TxtWindChill");
    EXPECT_EQ(world.notices.balloons[0].what.text,
              "Serial port lost (" + default_device(1) + ")\r\nNimbry tries to open it again by itself.");
    EXPECT_THAT(world.log(), ElementsAre("05 Oct 2026 14:00:10 (Computer time) Serial port lost"));
    world.run_for(60s);
    EXPECT_THAT(attempts_since(world.line, lost), ElementsAre(1000, 3000, 8000, 18000, 48000));
    EXPECT_EQ(world.notices.boxes.size(), 0u);
    EXPECT_EQ(world.state().comm.PortTrouble, "Serial port lost (" + default_device(1) + ")");
    EXPECT_EQ(world.panel().lblStatus.tip, world.state().comm.PortTrouble);

    world.line.plug_in(default_device(1));
    world.run_for(18s);
    EXPECT_FALSE(world.state().comm.SerComReady) << "the second open is still to come";
    world.run_for(500ms);
    EXPECT_TRUE(world.state().comm.SerComReady);
    EXPECT_EQ(world.state().comm.PortTrouble, "");
    EXPECT_EQ(world.panel().lblStatus.tip, "");
    EXPECT_EQ(world.notices.balloons.back().what.icon, "i");
    EXPECT_EQ(world.notices.balloons.back().what.text, "Serial port opened again (" + default_device(1) + ")");
    EXPECT_THAT(world.log(),
                ElementsAre("05 Oct 2026 14:00:10 (Computer time) Serial port lost",
                            "05 Oct 2026 14:01:00 (Computer time) Communications error - no data being received",
                            "05 Oct 2026 14:01:29 (Computer time) Serial port opened again"));
    world.send_train();
    EXPECT_EQ(world.state().comm.counters.trains, 1u);

    world.unplug();
    world.run_for(1s);
    EXPECT_EQ(world.log().back(), "05 Oct 2026 14:01:29 Serial port lost") << "a second loss is another line";
}

INSTANTIATE_TEST_SUITE_P(BothPrograms, LostPort, testing::Bool(),
                         [](const auto& param) { return param.param ? "WithAWindow" : "WithoutAWindow"; });

TEST(LostPortOnce, StaysInTheLabelThoughAFrameHadJustCome) {
    StartedWorld world;
    world.send_trains(1);
    world.send_train();
    ASSERT_TRUE(world.copy().timers.running(TimerId::Timer2)) << "the lamp still flashes";
    world.unplug();
    world.run_for(5s);
    EXPECT_EQ(world.panel().lblStatus.text, "Comms Error");
    EXPECT_EQ(world.panel().lblStatus.fore, colours::blue);
    EXPECT_EQ(world.panel().Lamp.fore, colours::black);
}

TEST(LostPortOnce, HalfAFrameOfTheOldPortIsNoPartOfTheFirstOfTheNew) {
    StartedWorld world;
    world.send(Bytes(13, 0x55));
    world.run_for(1s);
    world.unplug();
    world.run_for(600ms);
    world.line.plug_in(default_device(1));
    world.run_for(2s);
    ASSERT_TRUE(world.state().comm.SerComReady);
    world.send_train();
    EXPECT_EQ(world.state().comm.counters.trains, 1u);
}

TEST(LostPortOnce, ALaterOpeningTakesOverFromTheOneThatIsStillTrying) {
    StartedWorld world;
    world.unplug();
    world.run_for(600ms);
    world.copy().ini.SaveFlag("Main", "fcom2", true);
    world.act([&] { initprog(world.copy()); });
    world.run_for(1h);
    EXPECT_EQ(world.line.device(), default_device(2));
    EXPECT_EQ(world.line.attempts().size(), 4u) << "two at the start, two of the new port, none of the old one";
    EXPECT_EQ(world.log().size() - 1, 59u) << "the line of the loss, and each minute of silence";
}

TEST(LostPortOnce, ACopyThatBecomesAClientStopsTrying) {
    StartedWorld world;
    world.unplug();
    world.run_for(600ms);
    world.copy().ini.SaveFlag("Main", "fromnet", true);
    world.act([&] { initprog(world.copy()); });
    world.line.plug_in(default_device(1));
    world.run_for(10min);
    EXPECT_FALSE(world.line.is_open());
    EXPECT_EQ(world.line.attempts().size(), 2u);
    EXPECT_EQ(world.state().comm.PortTrouble, "") << "a client has no port that could fail";
}

}  // namespace
}  // namespace nimbry::test
