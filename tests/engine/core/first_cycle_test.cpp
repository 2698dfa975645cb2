#include <gtest/gtest.h>

#include "engine/core/process_cycle.h"
#include "tests/world/cycles.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

// What the first cycle of a run does, and what it leaves to the second.

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
    EXPECT_EQ(world.panel().Text2[0].text, "+12.3 \260C");
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
    world.run_for(std::chrono::seconds{5});
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
        EXPECT_EQ(world.state().menu.mnuRestore.enabled, row.minimised);
        world.state().window.minimised = false;
        cycle(world);
        EXPECT_FALSE(world.state().window.minimised) << "once";
    }
}

}  // namespace
}  // namespace nimbry::test
