#include "tests/world/world.h"

#include <gtest/gtest.h>

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

TEST(WorldTest, ACopyStartsAndShowsTheWeatherOfTheSecondTrain) {
    World world;
    world.files.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\n");
    world.start();
    EXPECT_TRUE(world.state().comm.SerComReady);
    world.send_trains(2);
    EXPECT_EQ(world.panel().Text2[0].text, "+12.3 \260C");
    EXPECT_EQ(world.state().comm.counters.trains, 2u);
}

TEST(WorldTest, BytesMayArriveAtThePaceOfTheLine) {
    World world;
    world.start();
    const Bytes train = write_train({});
    const Instant begin = world.clock.monotonic();
    EXPECT_EQ(world.send_paced(train) - begin, 141 * 1040us);
    world.run_for(141 * 1040us + 29ms);
    EXPECT_EQ(world.state().comm.counters.trains, 0u) << "the line settles for 30 ms";
    world.run_for(1ms);
    EXPECT_EQ(world.state().comm.counters.trains, 1u);
}

TEST(WorldTest, QuietComesWhenNothingIsScriptedAndNobodyWaits) {
    World world;
    const Instant begin = world.clock.monotonic();
    world.act([&] { world.pauses.pause(40s); });
    world.pauses.after(90s, [] {});
    EXPECT_TRUE(world.run_until_quiet());
    EXPECT_EQ(world.clock.monotonic() - begin, 90s);
    world.act([&] { world.pauses.pause(2h); });
    EXPECT_FALSE(world.run_until_quiet());
}

}  // namespace
}  // namespace nimbry::test
