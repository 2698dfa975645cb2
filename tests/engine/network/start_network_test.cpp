#include "engine/network/start_network.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/core/main_settings.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

struct RoleCase {
    const char* role;
    const char* lines;
    std::vector<std::uint16_t> binds;
};

TEST(StartNetwork, EachRoleBindsItsOwnPort) {
    const RoleCase cases[] = {
        {"alone", "", {}},
        {"server", "bcastnet=True\r\n", {60137}},
        {"client", "fromnet=True\r\n", {60135}},
        {"both: the client wins", "bcastnet=True\r\nfromnet=True\r\n", {60135}},
    };
    for (const RoleCase& row : cases) {
        SCOPED_TRACE(row.role);
        StartedWorld world(row.lines);
        EXPECT_EQ(world.datasock.binds, row.binds);
    }
}

TEST(StartNetwork, IsTheLastActOfTheStart) {
    StartedWorld world("bcastnet=True\r\n");
    const std::vector<std::string> acts = world.journal.lines();
    ASSERT_GE(acts.size(), 2U);
    EXPECT_EQ(acts[acts.size() - 2], "bind 60137");
    EXPECT_EQ(acts.back(), "listen 60131");
    EXPECT_THAT(acts, testing::Contains("line open " + default_device(1)));
}

TEST(StartNetwork, ARoleThatIsGivenUpClosesItsSocket) {
    StartedWorld world("bcastnet=True\r\n");
    world.state().settings.bcastnet = false;
    startnetwork(world.copy());
    EXPECT_FALSE(world.datasock.is_open());
}

TEST(StartNetwork, BothRolesTrueStayAsTheyStandInTheFile) {
    StartedWorld world("bcastnet=True\r\nfromnet=True\r\n");
    EXPECT_EQ(world.setting("Main", "bcastnet"), "True");
}

TEST(StartNetwork, AClientsPortThatIsTakenIsLoggedOnceAndTriedEveryTenSeconds) {
    World world;
    world.files.put("Nimbry.ini", main_section("fromnet=True\r\n"));
    world.datasock.bindable = false;
    world.begin_start();
    world.run_for(30s);
    EXPECT_EQ(world.datasock.binds.size(), 4u) << "at 0, 10, 20 and 30 s";
    EXPECT_THAT(world.log(),
                ElementsAre("05 Oct 2026 14:00:00 (Computer time) UDP port 60135 is in use by another program"));
    world.datasock.bindable = true;
    world.run_for(10s);
    EXPECT_EQ(world.datasock.port(), 60135);
    world.run_for(1min);
    EXPECT_EQ(world.datasock.binds.size(), 5u);
}

TEST(StartNetwork, ASecondStartWhileThePortIsTriedStartsNoSecondRow) {
    World world;
    world.files.put("Nimbry.ini", main_section("fromnet=True\r\n"));
    world.datasock.bindable = false;
    world.begin_start();
    startnetwork(world.copy());
    world.run_for(10s);
    EXPECT_EQ(world.datasock.binds.size(), 3u);
    EXPECT_EQ(world.log().size(), 1u);
}

TEST(StartNetwork, ACopyThatIsNoClientAnyMoreStopsTrying) {
    World world;
    world.files.put("Nimbry.ini", main_section("fromnet=True\r\n"));
    world.datasock.bindable = false;
    world.begin_start();
    world.state().settings.fromnet = false;
    world.run_for(1h);
    EXPECT_EQ(world.datasock.binds.size(), 1u);
    EXPECT_EQ(world.pauses.waiting(), 0u);
}

TEST(StartNetwork, DoesNothingWhileTheProgramCloses) {
    StartedWorld world("bcastnet=True\r\n");
    world.act([&] { world.engine.menu_exit(); });
    startnetwork(world.copy());
    EXPECT_FALSE(world.datasock.is_open());
}

}  // namespace
}  // namespace nimbry::test
