#include "engine/publish/aprs_upload.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "engine/publish/forced_run.h"
#include "engine/publish/publishing.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

constexpr const char* packet =
    "N0CALL>APRS,TCPXX*,qAX,N0CALL:@030507z3351.41S/15112.56E_098/007g012t046r008P028b10130h54NBY\r\n";

class AprsUpload : public testing::Test {
protected:
    AprsUpload() {
        settings.chkAPRS = true;
        settings.txtAPRSID = " N0CALL ";
        settings.APRSpass = " 12345 ";
        world.state.settings.APRSserver = " first.net ";
        world.state.settings.APRSport = " 14580 ";
        world.state.settings.APRS2server = "second.net";
        world.state.menu.mnuLogAPRS.checked = true;
    }
    void TearDown() override { world.pauses.end_all(); }

    /// A server that answers the login with this.
    void serve(const char* host, std::uint16_t port, const std::string& answer) {
        world.streams.answer(host, port, [this, answer](const ScriptedPeerPtr& peer) {
            server = peer;
            peer->say("# aprsc 2.1\r\n");
            peer->on_heard([answer](ScriptedPeer& end, const std::string& line) {
                if (line.starts_with("user ")) end.say(answer);
            });
        });
    }
    [[nodiscard]] MonotonicClock::duration upload() {
        const Instant begin = world.clock.monotonic();
        aprsupload(world.copy);
        return world.clock.monotonic() - begin;
    }
    [[nodiscard]] std::vector<std::string> failures() const {
        std::vector<std::string> lines;
        for (const std::string& line : world.log_lines())
            if (line.find(" APRS upload") != std::string::npos) lines.push_back(line.substr(20));
        return lines;
    }
    using Lines = std::vector<std::string>;

    KnownState world;
    PublishState& publish = world.state.publish;
    InternetDialog& settings = publish.NimbryFTPSetup;
    ScriptedPeerPtr server;
};

TEST_F(AprsUpload, LogsInSendsThePacketAndCloses) {
    serve("first.net", 14580, "# logresp N0CALL verified\r\n");
    const Instant begin = world.clock.monotonic();
    EXPECT_GE(upload(), 3500ms) << "1 s, the answer, 1 s, 1.5 s";
    ASSERT_EQ(server->sent().size(), 2U);
    EXPECT_EQ(server->sent()[0].bytes, "user N0CALL pass 12345 vers NBY V2.02\r\n");
    EXPECT_GE(server->sent()[0].at - begin, 1s);
    EXPECT_EQ(server->sent()[1].bytes, packet);
    EXPECT_GE(server->sent()[1].at - server->sent()[0].at, 1s);
    EXPECT_TRUE(server->left());
    EXPECT_GE(server->left_at() - server->sent()[1].at, 1500ms);
    EXPECT_EQ(failures(), Lines{" APRS upload success "});
    EXPECT_EQ(publish.last_aprs.result, "ok");
    EXPECT_EQ(world.files.contents("APRS.txt"), packet);
    EXPECT_EQ(world.state.menu.fmb[2].fore, colours::black);
    EXPECT_TRUE(world.notices.balloons.empty());
}

TEST_F(AprsUpload, TheButtonIsRedMeanwhile) {
    serve("first.net", 14580, "N0CALL");
    world.pauses.start([&] { aprsupload(world.copy); });
    world.pauses.pause(500ms);
    EXPECT_EQ(world.state.menu.fmb[2].fore, colours::red);
}

TEST_F(AprsUpload, WhatTheServerSaidBeforeTheLoginIsNoAnswerToIt) {
    world.streams.answer("first.net", 14580, [this](const ScriptedPeerPtr& peer) {
        server = peer;
        peer->say("hello N0CALL\r\n");
    });
    EXPECT_GE(upload(), 11s);
    EXPECT_EQ(failures(), Lines{" APRS upload Failure. No response to the user command"});
    EXPECT_EQ(server->sent().size(), 1U) << "no packet";
    EXPECT_TRUE(server->left());
    EXPECT_EQ(publish.last_aprs.result, "No response to the user command");
}

TEST_F(AprsUpload, TheAnswerMayComeInPieces) {
    world.streams.answer("first.net", 14580, [this](const ScriptedPeerPtr& peer) {
        server = peer;
        peer->on_heard([this](ScriptedPeer& end, const std::string& line) {
            if (!line.starts_with("user ")) return;
            end.say("# logresp N0");
            world.pauses.pause(3s);
            end.say("CALL verified");
        });
    });
    aprsupload(world.copy);
    EXPECT_EQ(server->sent().size(), 2U);
}

struct ResponseCase {
    const char* setting;
    bool waits;
};

TEST_F(AprsUpload, WaitsForAnAnswerOnlyFromAServerThatGivesOne) {
    for (const ResponseCase& c :
         std::vector<ResponseCase>{{"yes", true}, {" Yes ", true}, {"no", false}, {"", false}, {"perhaps", false}}) {
        SCOPED_TRACE(c.setting);
        world.state.settings.APRS_server_responds = c.setting;
        world.state.settings.APRS_2server_responds = "yes";
        serve("first.net", 14580, "");
        aprsupload(world.copy);
        EXPECT_EQ(server->sent().size(), c.waits ? 1U : 2U);
    }
}

TEST_F(AprsUpload, GoesToTheSecondServerWhenTheFirstIsSilentForTwentySeconds) {
    world.streams.ignore("first.net", 14580);
    serve("second.net", 23, "N0CALL");
    world.state.settings.APRS_server_responds = "no";
    EXPECT_GE(upload(), 23600ms);
    ASSERT_EQ(world.streams.connects.size(), 2U);
    EXPECT_GE(world.streams.connects[1].at - world.streams.connects[0].at, 20100ms);
    EXPECT_EQ(server->sent().size(), 2U);
    EXPECT_EQ(failures(),
              (Lines{" APRS upload Failure. Connection timed out on primary server", " APRS upload success "}));
    EXPECT_EQ(publish.last_aprs.runs, 1U);
    EXPECT_EQ(publish.last_aprs.result, "ok");
}

TEST_F(AprsUpload, ARefusalEndsTheWaitAtOnceWithTheSameWords) {
    EXPECT_LT(upload(), 2s);
    EXPECT_EQ(failures(), (Lines{" APRS upload Failure. Connection timed out on primary server",
                                 " APRS upload Failure. Connection timed out on secondary server"}));
    EXPECT_EQ(publish.last_aprs.result, "Connection timed out on secondary server");
    EXPECT_EQ(publish.last_aprs.runs, 1U);
    EXPECT_EQ(world.state.menu.fmb[2].fore, colours::black);
}

TEST_F(AprsUpload, IsLoggedOnlyWhereThatIsAskedFor) {
    world.state.menu.mnuLogAPRS.checked = false;
    aprsupload(world.copy);
    serve("first.net", 14580, "N0CALL");
    aprsupload(world.copy);
    EXPECT_TRUE(failures().empty());
}

TEST_F(AprsUpload, BelowTenMinutesEverySecondCallDoesNothingTheFirstToo) {
    serve("first.net", 14580, "N0CALL");
    settings.txtWUMins = "9";
    std::vector<std::size_t> tries;
    for (int call = 0; call < 5; ++call) {
        aprsupload(world.copy);
        tries.push_back(world.streams.connects.size());
    }
    EXPECT_EQ(tries, (std::vector<std::size_t>{0, 1, 1, 2, 2}));
    settings.txtWUMins = "10";
    aprsupload(world.copy);
    aprsupload(world.copy);
    EXPECT_EQ(world.streams.connects.size(), 4U);
}

TEST_F(AprsUpload, WithoutACallOrALocationDoesNothingAndIsNoTurn) {
    settings.txtWUMins = "5";
    settings.txtAPRSID = " NC ";
    aprsupload(world.copy);
    settings.txtAPRSID = "N0C";
    world.state.settings.Longitude = "999";
    aprsupload(world.copy);
    EXPECT_FALSE(publish.AprsSkipped);
    EXPECT_TRUE(world.streams.connects.empty());
    EXPECT_FALSE(world.files.exists("APRS.txt"));
}

TEST_F(AprsUpload, IsTheLastOfTheServicesAndGoesAloneToo) {
    serve("first.net", 14580, "N0CALL");
    wunderground(world.copy);
    EXPECT_EQ(world.streams.connects.size(), 1U);
    EXPECT_TRUE(world.transfers.asked.empty());
    EXPECT_EQ(world.transfers.reachability_asked.front(), "first.net");
    settings.chkAPRS = false;
    wunderground(world.copy);
    EXPECT_EQ(world.streams.connects.size(), 1U);
    run_forced(world.copy, ForcedRun::weather);
    EXPECT_EQ(world.streams.connects.size(), 2U) << "forced it goes although it is off";
    EXPECT_EQ(publish.last_weather.runs, 0U);
}

TEST_F(AprsUpload, WaitsWhileTheSmallFilesAreWritten) {
    serve("first.net", 14580, "N0CALL");
    auto busy = world.state.reports.genuibusy.try_hold();
    world.pauses.start([&] { aprsupload(world.copy); });
    world.pauses.pause(30s);
    EXPECT_TRUE(world.streams.connects.empty());
    busy.release();
    world.pauses.pause(1s);
    EXPECT_EQ(world.streams.connects.size(), 1U);
}

TEST_F(AprsUpload, AServerThatLeavesBeforeThePacketIsNoSuccessForTheStatus) {
    world.streams.answer("first.net", 14580, [this](const ScriptedPeerPtr& peer) {
        server = peer;
        peer->on_heard([](ScriptedPeer& end, const std::string&) {
            end.say("N0CALL");
            end.close();
        });
    });
    aprsupload(world.copy);
    EXPECT_EQ(server->sent().size(), 1U);
    EXPECT_EQ(failures(), Lines{" APRS upload success "}) << "the log is written whatever the server does";
    EXPECT_EQ(publish.last_aprs.result, "The server has closed the connection");
}

}  // namespace
}  // namespace nimbry::test
