#include "engine/core/exits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/derived/dates.h"
#include "engine/displays/status_message.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(MenuExit, BeforeAnyGroupTheStopLineBearsTheComputersTime) {
    StartedWorld world;
    world.run_for(8s);
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_THAT(world.log(), ElementsAre("05 Oct 2026 14:00:10 (Computer time) Program stopped, normal exit"));
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.engine.exit_status(), 0);
}

TEST(MenuExit, AfterAnAcceptedDateTheStopLineBearsTheStationsTime) {
    StartedWorld world;
    world.send_train({}, civil_time({2026, 10, 5, 13, 58, 41}));
    world.run_for(1h);
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_EQ(world.log().back(), "05 Oct 2026 13:58:41 Program stopped, normal exit");
}

TEST(MenuExit, ClicksSavesLogsAndClosesInThisOrder) {
    StartedWorld world("bcastnet=True\r\n");
    world.journal.clear();
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_THAT(world.journal.lines(),
                ElementsAre("sound click.WAV", "append nbyprog.log", "line close", "socket close", "listener closed"));
}

TEST(MenuExit, StopsTheTimersAndWakesNoMore) {
    StartedWorld world;
    world.send_trains(2);
    world.act([&] { world.engine.menu_exit(); });
    for (std::size_t i = 0; i < timer_count; ++i) EXPECT_FALSE(world.copy().timers.running(static_cast<TimerId>(i)));
    EXPECT_EQ(world.engine.wake_at(), std::nullopt);
    EXPECT_TRUE(world.state().run.ProgramClosing);
}

TEST(MenuExit, WithoutAProgramLogThereIsNoStopLine) {
    StartedWorld world;
    world.files.take_away("nbyprog.log");
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_FALSE(world.files.exists("nbyprog.log"));
    EXPECT_TRUE(world.engine.gone());
}

TEST(MenuExit, ALogThatCannotBeWrittenDoesNotKeepTheProgram) {
    StartedWorld world;
    world.files.refuse_changes(FileResult::disk_full);
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.engine.exit_status(), 0);
    EXPECT_FALSE(world.line.is_open());
    EXPECT_THAT(world.notices.boxes, IsEmpty());
}

TEST(MenuExit, ASaveThatIsRunningAlreadyIsAwaitedAndNotRepeated) {
    StartedWorld world;
    struct Save {
        const char* name;
        BusyFlag& flag;
    };
    const Save saves[] = {{"graph save", world.state().run.savingrafs}, {"day's save", world.state().run.tdaysaving}};
    for (const Save& save : saves) save.flag.set();
    world.act([&] { world.engine.menu_exit(); });
    for (const Save& save : saves) {
        SCOPED_TRACE(save.name);
        world.run_for(10s);
        EXPECT_FALSE(world.engine.gone());
        EXPECT_TRUE(world.line.is_open());
        EXPECT_TRUE(save.flag) << "nobody else has let it go";
        save.flag.clear();
        world.run_for(1ms);
    }
    EXPECT_TRUE(world.engine.gone());
}

TEST(MenuExit, BothSavesHaveLetTheirFlagsGo) {
    StartedWorld world;
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_FALSE(world.state().run.savingrafs);
    EXPECT_FALSE(world.state().run.tdaysaving);
}

TEST(MenuExit, SavesTheDayBeforeItsStopLine) {
    StartedWorld world;
    world.send_trains(3);
    world.journal.clear();
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_THAT(world.journal.lines(), testing::IsSupersetOf({"rewrite nimbrTDay.log", "append nbyprog.log"}));
    EXPECT_EQ(world.journal.lines().back(), "line close");
    EXPECT_TRUE(world.files.exists("nimbrTDay.log"));
}

TEST(MenuExit, BeforeTheRecordsHaveBeenFilledLeavesTheDaysFileAlone) {
    StartedWorld world;
    world.files.put("nimbrTDay.log", "yesterday's work");
    world.send_trains(1);
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_EQ(world.files.contents("nimbrTDay.log"), "yesterday's work");
    EXPECT_TRUE(world.engine.gone());
}

TEST(MenuExit, ASaveThatFailsIsPassedOverAndTheRestStillHappens) {
    StartedWorld world;
    world.send_trains(3);
    world.files.refuse("nimbrTDay.log", FileResult::disk_full);
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_TRUE(world.engine.gone());
    EXPECT_THAT(world.notices.boxes, IsEmpty());
    EXPECT_EQ(world.engine.exit_status(), 0);
    EXPECT_THAT(world.log().back(), testing::EndsWith(" Program stopped, normal exit"));
    EXPECT_FALSE(world.state().run.tdaysaving);
    EXPECT_FALSE(world.line.is_open());
}

TEST(MenuExit, AfterAnErrorSavesNothing) {
    StartedWorld world;
    world.send_trains(3);
    world.journal.clear();
    world.act([&] { report_unrecoverable(world.copy(), {ErrorNumber::index, "OnComm"}); });
    EXPECT_THAT(world.journal.lines(), testing::Not(testing::Contains("rewrite nimbrTDay.log")));
    EXPECT_TRUE(world.engine.gone());
}

// The modem

TEST(MenuExit, OffersToHangUpALineThatThisProgramHasDialled) {
    struct Case {
        const char* what;
        Answer answer;
        std::vector<std::string> after_the_question;
    };
    for (const Case& row :
         {Case{"yes", Answer::yes, {"hang up", "line close"}}, Case{"no", Answer::no, {"line close"}}}) {
        SCOPED_TRACE(row.what);
        StartedWorld world;
        world.state().publish.ProgramDialled = true;
        world.notices.will_answer(row.answer, 1min);
        world.journal.clear();
        world.act([&] { world.engine.menu_exit(); });
        EXPECT_FALSE(world.engine.gone()) << "the exit waits for the answer";
        world.run_for(1min);
        EXPECT_TRUE(world.engine.gone());
        std::vector<std::string> steps{"sound click.WAV", "append nbyprog.log", "box Nimbry message"};
        steps.insert(steps.end(), row.after_the_question.begin(), row.after_the_question.end());
        EXPECT_EQ(world.journal.lines(), steps);
        ASSERT_EQ(world.notices.boxes.size(), 1u);
        const MessageBox& box = world.notices.boxes[0].what;
        EXPECT_EQ(box.title, "Nimbry message");
        EXPECT_EQ(box.text, "Do you wish to hang up the modem");
        EXPECT_EQ(box.choices, Choices::yes_no);
    }
}

TEST(MenuExit, LeavesALineAloneThatOthersHaveDialled) {
    StartedWorld world;
    world.act([&] { world.engine.menu_exit(); });
    EXPECT_THAT(world.notices.boxes, IsEmpty());
    EXPECT_EQ(world.desktop.hang_ups, 0);
}

TEST(WindowClose, AsksNothingAboutTheModem) {
    StartedWorld world;
    world.state().publish.ProgramDialled = true;
    world.act([&] { world.engine.window_close(); });
    EXPECT_TRUE(world.engine.gone());
    EXPECT_THAT(world.notices.boxes, IsEmpty());
    EXPECT_EQ(world.desktop.hang_ups, 0);
}

TEST(WindowClose, SaysThatItWasForcedAndMakesNoSound) {
    StartedWorld world;
    world.journal.clear();
    world.act([&] { world.engine.window_close(); });
    EXPECT_THAT(world.journal.lines(), ElementsAre("append nbyprog.log", "line close"));
    EXPECT_THAT(world.log(),
                ElementsAre("05 Oct 2026 14:00:02 (Computer time) Program stopped, forced exit (Windows closing)"));
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.engine.exit_status(), 0);
}

TEST(WindowClose, ClosesTheStatusWindowBeforeItWaitsForAnything) {
    StartedWorld world;
    world.act([&] { show_status_message(world.copy(), "Synchronising"); });
    world.state().run.savingrafs.set();
    world.act([&] { world.engine.window_close(); });
    EXPECT_FALSE(world.engine.gone());
    EXPECT_FALSE(world.state().status_message.open);
    world.state().run.savingrafs.clear();
    world.run_for(1ms);
    EXPECT_TRUE(world.engine.gone());
}

struct SecondExit {
    const char* order;
    bool menu_first, menu_second;
    const char* word;
};

TEST(Exits, ASecondOneIsPassedOver) {
    const SecondExit cases[] = {
        {"menu, then window", true, false, "normal exit"},
        {"menu twice", true, true, "normal exit"},
        {"window, then menu", false, true, "forced exit (Windows closing)"},
        {"window twice", false, false, "forced exit (Windows closing)"},
    };
    for (const SecondExit& row : cases) {
        SCOPED_TRACE(row.order);
        StartedWorld world;
        const auto leave = [&](bool by_menu) {
            world.act([&, by_menu] { by_menu ? world.engine.menu_exit() : world.engine.window_close(); });
        };
        world.state().run.savingrafs.set();  // the first exit stands in its save
        leave(row.menu_first);
        world.run_for(1s);
        leave(row.menu_second);
        world.run_for(1s);
        EXPECT_FALSE(world.engine.gone());
        world.state().run.savingrafs.clear();
        world.run_for(1s);
        leave(row.menu_second);
        EXPECT_THAT(world.log(),
                    ElementsAre("05 Oct 2026 14:00:04 (Computer time) Program stopped, " + std::string(row.word)));
    }
}

TEST(Exits, EndEveryStandingWaitButTheirOwn) {
    StartedWorld world;
    bool cancelled = false;
    world.act([&] {
        try {
            world.pauses.pause(1h);
        } catch (const WaitCancelled&) {
            cancelled = true;
            throw;
        }
    });
    world.act([&] { world.engine.window_close(); });
    world.run_for(0s);
    EXPECT_TRUE(cancelled);
    EXPECT_TRUE(world.engine.gone());
}

TEST(Exits, MayComeInTheMiddleOfTheStart) {
    World world;
    world.files.put("Nimbry.ini", main_section());
    world.begin_start();
    world.run_for(200ms);  // between the two opens
    world.act([&] { world.engine.window_close(); });
    world.run_for(10min);
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.line.attempts().size(), 1u);
    EXPECT_FALSE(world.state().comm.SerComReady);
    EXPECT_THAT(world.log(),
                ElementsAre("05 Oct 2026 14:00:00 (Computer time) Program stopped, forced exit (Windows closing)"));
}

TEST(Exits, MayComeWhileTheFirstRunWindowStands) {
    World world;
    world.begin_start({.has_window = true, .device = ""});
    world.run_for(1s);
    world.act([&] { world.engine.menu_exit(); });
    world.run_for(1s);
    EXPECT_TRUE(world.engine.gone());
    EXPECT_EQ(world.setting("Main", "HasRun"), "") << "the newcomer has not seen it through";
}

TEST(Exits, MayComeWhileALostPortIsTriedAgain) {
    StartedWorld world;
    world.unplug();
    world.run_for(10s);
    world.act([&] { world.engine.window_close(); });
    EXPECT_TRUE(world.engine.gone());
    const std::size_t attempts = world.line.attempts().size();
    world.run_for(10min);
    EXPECT_EQ(world.line.attempts().size(), attempts);
}

TEST(Exits, NothingThatComesAfterwardsDoesAnyWork) {
    StartedWorld world;
    world.state().run.tdaysaving.set();
    world.act([&] { world.engine.menu_exit(); });
    world.send_train();
    world.run_for(10min);
    EXPECT_EQ(world.state().comm.counters.trains, 0u);
    EXPECT_FALSE(world.state().readings.dtvar);
    EXPECT_THAT(world.notices.balloons, IsEmpty()) << "the no-data watch is silent";
    world.act([&] { world.engine.line_fault(LineFault::framing); });
    EXPECT_EQ(world.state().comm.ErrorWord, "");
}

}  // namespace
}  // namespace nimbry::test
