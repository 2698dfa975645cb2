#include "engine/publish/internet.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/world/bare_copy.h"

namespace nimbry::test {
namespace {

TEST(Internet, IsThereWhileTheMachineIsOnANetwork) {
    BareCopy world;
    EXPECT_TRUE(isconnected(world.copy, "ftp.example.net"));
    world.transfers.online = false;
    EXPECT_FALSE(isconnected(world.copy, "ftp.example.net"));
    EXPECT_EQ(world.transfers.reachability_asked, (std::vector<std::string>{"ftp.example.net", "ftp.example.net"}));
}

TEST(Internet, NeedsNoNetworkForAServerOnThisMachine) {
    BareCopy world;
    world.transfers.online = false;
    EXPECT_TRUE(isconnected(world.copy, "127.0.0.1"));
}

TEST(Internet, IsTestedOnceWhenItIsThereAndTwiceWhenItIsNot) {
    BareCopy world;
    EXPECT_TRUE(go_online(world.copy, "a"));
    EXPECT_EQ(world.transfers.reachability_asked.size(), 1U);
    world.transfers.online = false;
    for (const bool allowed : {false, true}) {
        world.transfers.reachability_asked.clear();
        world.state.publish.NimbryFTPSetup.ChkDial = allowed;
        EXPECT_FALSE(go_online(world.copy, "a"));
        EXPECT_EQ(world.transfers.reachability_asked.size(), 2U);
    }
}

TEST(Internet, IsNotDialledBySystemsWithoutDialUp) {
    BareCopy world;
    dial(world.copy);
    EXPECT_FALSE(world.state.publish.ProgramDialled);
}

TEST(Internet, IsHungUpOnlyByWhoDialled) {
    BareCopy world;
    hangup(world.copy);
    EXPECT_EQ(world.desktop.hang_ups, 0);
    world.state.publish.ProgramDialled = true;
    hangup(world.copy);
    EXPECT_EQ(world.desktop.hang_ups, 1);
    EXPECT_FALSE(world.state.publish.ProgramDialled);
    hangup(world.copy);
    EXPECT_EQ(world.desktop.hang_ups, 1);
}

TEST(Internet, IsLeftAfterAnUploadIfTheUserWantsIt) {
    for (const bool wanted : {false, true}) {
        BareCopy world;
        world.state.publish.ProgramDialled = true;
        world.state.publish.NimbryFTPSetup.ChkHangup = wanted;
        leave_line(world.copy);
        EXPECT_EQ(world.desktop.hang_ups, wanted ? 1 : 0);
    }
}

TEST(Internet, IsNotLeftWhileAnotherUploadRunsOrWaits) {
    struct Case {
        const char* name;
        std::function<void(PublishState&)> busy;
    };
    for (const Case& c : {Case{"an upload runs", [](PublishState& p) { p.uloadftpbusy.set(); }},
                          Case{"a mail goes out", [](PublishState& p) { p.emailbusy.set(); }},
                          Case{"the services are being told", [](PublishState& p) { p.wubusy.set(); }},
                          Case{"an upload waits", [](PublishState& p) { p.revisitftp = true; }},
                          Case{"a mail waits", [](PublishState& p) { p.revisitmail = true; }},
                          Case{"the services wait", [](PublishState& p) { p.revisitwu = true; }}}) {
        SCOPED_TRACE(c.name);
        BareCopy world;
        world.state.publish.ProgramDialled = world.state.publish.NimbryFTPSetup.ChkHangup = true;
        c.busy(world.state.publish);
        leave_line(world.copy);
        EXPECT_EQ(world.desktop.hang_ups, 0);
    }
}

}  // namespace
}  // namespace nimbry::test
