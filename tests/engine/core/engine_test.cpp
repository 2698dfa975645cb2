#include "engine/core/engine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

TEST(Engine, AsksNothingOfItsPortsBeforeTheStart) {
    World world;
    EXPECT_TRUE(world.journal.lines().empty());
    EXPECT_TRUE(world.files.calls().empty());
    EXPECT_EQ(world.engine.wake_at(), std::nullopt);
    EXPECT_FALSE(world.engine.gone());
}

TEST(Engine, WantsToBeWokenForWhicheverIsNearerTheLineOrATimer) {
    StartedWorld world;  // its no-data watch is due at 60.5 s, 58.5 s from now
    EXPECT_EQ(world.engine.wake_at(), world.clock.monotonic() + 58500ms);
    world.send(write_train({}));
    world.run_for(0s);
    EXPECT_EQ(world.engine.wake_at(), world.clock.monotonic() + 30ms) << "141 bytes settle, counted as 27 and more";
    world.run_for(1s);
    EXPECT_EQ(world.engine.wake_at(), world.clock.monotonic() + 560ms) << "the lamp was lit after 60 ms, for 1.5 s";
}

TEST(Engine, OfASettlingTimeAndATickAtOneInstantTheLineComesFirst) {
    StartedWorld world;      // the no-data watch is due 58.5 s from now
    world.run_for(58440ms);  // a train is settled 60 ms after it came
    world.send(write_train({}));
    world.run_for(60ms);
    EXPECT_EQ(world.state().comm.counters.trains, 1u);
    EXPECT_TRUE(world.notices.balloons.empty()) << "the watch looked after the train had been taken";
    EXPECT_TRUE(world.state().comm.ccheckflagb) << "and it has looked";
}

TEST(Engine, DoesNothingWhenItIsWokenTooEarly) {
    StartedWorld world;
    const std::optional<Instant> due = world.engine.wake_at();
    world.act([&] { world.engine.wake(); });
    EXPECT_EQ(world.engine.wake_at(), due);
    EXPECT_TRUE(world.notices.balloons.empty());
}

TEST(Engine, TheLampGoesDarkAndTheLabelSaysWhereThingsStand) {
    struct LabelCase {
        bool havegrafdata;
        const char* text;
        Colour fore;
    };
    for (const LabelCase& row : {LabelCase{false, "Program Starting", colours::salmon},
                                 LabelCase{true, "Current Conditions", colours::green}}) {
        SCOPED_TRACE(row.text);
        StartedWorld world;
        world.state().havegrafdata = row.havegrafdata;
        world.send_train();
        EXPECT_EQ(world.panel().Lamp.fore, colours::red);
        world.panel().lblStatus.text = "Framing Error";
        world.run_for(1459ms);
        EXPECT_EQ(world.panel().Lamp.fore, colours::red);
        world.run_for(1ms);
        EXPECT_EQ(world.panel().Lamp.fore, 0u);
        EXPECT_EQ(world.panel().lblStatus.text, row.text);
        EXPECT_EQ(world.panel().lblStatus.fore, row.fore);
        EXPECT_FALSE(world.copy().timers.running(TimerId::Timer2)) << "it stops itself";
    }
}

TEST(Engine, TheStatusWindowsTimerStopsItself) {
    StartedWorld world;
    world.copy().timers.start(TimerId::TimDisplay, world.clock.monotonic());
    world.run_for(3900ms);
    EXPECT_FALSE(world.copy().timers.running(TimerId::TimDisplay));
}

TEST(Engine, AHalfFrameFollowedByAReopenedPortIsForgotten) {
    StartedWorld world;
    world.send(Bytes(13, 0x55));
    world.run_for(1s);
    EXPECT_TRUE(world.state().comm.dworkingb);
    ++world.state().run.port_opening;  // as a closing and opening that brought no byte would leave it
    world.send_train();
    EXPECT_EQ(world.state().comm.counters.trains, 1u);
}

TEST(Engine, AWholeDayPassesWithEveryTrainTaken) {
    StartedWorld world;
    world.send_trains(8640);
    EXPECT_EQ(world.state().comm.counters.trains, 8640u);
    EXPECT_EQ(world.state().run.SaveRounds, 1) << "288 saves, in rounds of seven: 288 = 41 * 7 + 1";
    EXPECT_TRUE(world.notices.balloons.empty());
    EXPECT_THAT(world.log(), Each(Not(HasSubstr("error"))));
    EXPECT_EQ(world.state().additional.txtRunning.text, "0 Days 23 Hours 59 Minutes");
}

}  // namespace
}  // namespace nimbry::test
