#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/network/start_network.h"
#include "engine/network/syncsock.h"
#include "tests/engine/network/syncing_server.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(SyncServer, ListensFromTheStartAndGreetsWhoConnects) {
    SyncingServer server;
    EXPECT_EQ(syncstate(server.state().network), StreamState::listening);
    server.clock.set_computer_time(VirtualClock::usual_start);
    const ScriptedPeerPtr client = server.connect();
    ASSERT_NE(client, nullptr);
    EXPECT_EQ(client->heard(), "cmdAcceptCNX,");
    EXPECT_EQ(syncstate(server.state().network), StreamState::connected);
    EXPECT_THAT(server.log(),
                ElementsAre("05 Oct 2026 14:00:00 (Computer time) A client machine at 127.0.0.2 connected"));
}

TEST(SyncServer, TheLogLineBearsTheStationsTimeOnceItIsKnown) {
    SyncingServer server;
    server.state().readings.dtvar = VirtualClock::usual_start + 1min;
    server.connect("10.1.2.3");
    EXPECT_THAT(server.log(), ElementsAre("05 Oct 2026 14:01:00 A client machine at 10.1.2.3 connected"));
}

TEST(SyncServer, TheLogLineComesWhenTheGreetingIsOutOrItsTimeIsOver) {
    SyncingServer server;
    const ScriptedPeerPtr client = server.streams.call(60131, "127.0.0.2");
    client->stall(true);
    server.run_for(1'005ms);
    EXPECT_EQ(client->heard(), "cmdAcceptCNX,");
    EXPECT_THAT(server.log(), IsEmpty());
    server.run_for(10ms);
    EXPECT_THAT(server.log(), testing::SizeIs(1));
}

TEST(SyncServer, HoldsAClientThatIsLetGoUntilItHasWhatWasSentLast) {
    SyncingServer server;
    const ScriptedPeerPtr client = server.connect();
    client->stall(true);
    client->say("cmdServerStatus,");
    server.run_for(50ms);
    const std::size_t waiting = server.pauses.waiting();
    client->say("cmdResetServerSocket,");
    server.run_for(50ms);
    EXPECT_EQ(syncstate(server.state().network), StreamState::listening) << "others can come meanwhile";
    EXPECT_EQ(server.pauses.waiting(), waiting + 1);
    client->stall(false);
    server.run_for(50ms);
    EXPECT_EQ(server.pauses.waiting(), 0U);
}

TEST(SyncServer, ServesOneClientAndRefusesTheOthersMeanwhile) {
    SyncingServer server;
    const ScriptedPeerPtr first = server.connect();
    EXPECT_EQ(server.connect(), nullptr);
    first->say("cmdResetServerSocket,");
    server.run_for(5ms);
    EXPECT_TRUE(first->left());
    const ScriptedPeerPtr second = server.connect();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->heard(), "cmdAcceptCNX,");
}

TEST(SyncServer, WithoutGraphDataDropsWhoeverConnectsWithoutAWord) {
    SyncingServer server;
    server.state().havegrafdata = false;
    const ScriptedPeerPtr client = server.connect();
    ASSERT_NE(client, nullptr);
    EXPECT_EQ(client->heard(), "");
    EXPECT_TRUE(client->left());
    EXPECT_EQ(syncstate(server.state().network), StreamState::listening);
    EXPECT_THAT(server.log(), IsEmpty());
}

TEST(SyncServer, ListensAgainWhenTheClientCloses) {
    SyncingServer server;
    const ScriptedPeerPtr client = server.connect();
    client->close();
    server.run_for(5ms);
    EXPECT_EQ(syncstate(server.state().network), StreamState::listening);
    EXPECT_THAT(server.log(), testing::SizeIs(1)) << "a client that leaves is no event";
}

TEST(SyncServer, OnlyAServerListens) {
    for (const char* lines : {"", "fromnet=True\r\n", "bcastnet=True\r\nfromnet=True\r\n"}) {
        SCOPED_TRACE(lines);
        StartedWorld world(lines);
        EXPECT_THAT(world.streams.listens, IsEmpty());
        EXPECT_EQ(syncstate(world.state().network), StreamState::closed);
    }
}

TEST(SyncServer, BindsItsListenerToItsOwnAddressIfItHasOne) {
    StartedWorld world("bcastnet=True\r\nLocalIP=127.0.0.5\r\n");
    ASSERT_EQ(world.streams.listens.size(), 1U);
    EXPECT_EQ(world.streams.listens[0].port, 60131);
    EXPECT_EQ(world.streams.listens[0].local_address, "127.0.0.5");
    EXPECT_EQ(world.datasock.bound_address, "127.0.0.5");
}

TEST(SyncServer, AListenerThatCannotBeOpenedIsOneLineInTheLogUntilItCan) {
    SyncingServer server;
    server.streams.unlistenable = SendFault{98, "Address already in use"};
    for (int n = 0; n < 3; ++n) open_sync_listener(server.copy());
    EXPECT_THAT(server.log(),
                ElementsAre(testing::EndsWith(" TCP port 60131 cannot be opened: Address already in use")));
    server.streams.unlistenable.reset();
    open_sync_listener(server.copy());
    server.streams.unlistenable = SendFault{13, "Permission denied"};
    open_sync_listener(server.copy());
    EXPECT_THAT(server.log(), testing::SizeIs(2));
}

TEST(SyncServer, IsBusyWhileAChangeoverOrAnUploadRuns) {
    struct Case {
        const char* what;
        bool changeover, upload;
        const char* answer;
    };
    for (const Case& row :
         {Case{"neither", false, false, "0: cmdServerIsOK,"}, Case{"a changeover", true, false, "0: cmdServerIsBusy,"},
          Case{"an upload", false, true, "0: cmdServerIsBusy,"}}) {
        SCOPED_TRACE(row.what);
        SyncingServer server;
        const ScriptedPeerPtr client = server.connect();
        if (row.changeover) server.state().comm.changebusy.set();
        if (row.upload) server.state().publish.uloadftpbusy.set();
        EXPECT_THAT(server.answers(client, "cmdServerStatus,"), ElementsAre(row.answer));
    }
}

// Bad peers

TEST(SyncServer, NobodyGetsAFileThatIsNotAmongTheSix) {
    SyncingServer server;
    server.files.put("secret.txt", "secret");
    const ScriptedPeerPtr client = server.connect();
    for (const char* words : {"cmdRequestFile,secret.txt", "cmdRequestSyncFile,../../secret.txt",
                              "GET / HTTP/1.0\r\n\r\n", "cmdRequestYdayFile", "cmd,", ",", "cmdREQUESTSYNCFILE,"}) {
        SCOPED_TRACE(words);
        server.answers(client, words);
        EXPECT_EQ(client->heard().find("secret"), std::string::npos);
    }
}

TEST(SyncServer, GarbageWithoutEndIsThrownAway) {
    SyncingServer server;
    const ScriptedPeerPtr client = server.connect();
    const std::vector<std::string> before = server.files.entries();
    for (int n = 0; n < 200; ++n) {
        client->say(std::string(50'000, static_cast<char>(n)));
        server.run_for(1ms);
    }
    EXPECT_EQ(server.files.entries(), before);
    EXPECT_THAT(server.answers(client, "cmdServerStatus,"), ElementsAre("0: cmdServerIsOK,"));
}

TEST(SyncServer, CommandsInPiecesOfAByteAreObeyed) {
    SyncingServer server;
    const ScriptedPeerPtr client = server.connect();
    for (const char letter : std::string("cmdServerStatus,cmdServerStatus,")) {
        client->say(std::string(1, letter));
        server.run_for(50ms);
    }
    EXPECT_EQ(client->heard(), "cmdAcceptCNX,cmdServerIsOK,cmdServerIsOK,");
}

TEST(SyncServer, HalfACommandIsForgottenAfterAWhile) {
    SyncingServer server;
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdServer");
    server.run_for(1s);
    EXPECT_EQ(server.state().network.receiver.held(), 0U);
    EXPECT_THAT(server.answers(client, "Status,"), IsEmpty());
    EXPECT_THAT(server.answers(client, "cmdServerStatus,"), testing::SizeIs(1));
}

TEST(SyncServer, CommandsOfAServerChangeNothingInOne) {
    SyncingServer server;
    const ScriptedPeerPtr client = server.connect();
    EXPECT_THAT(server.answers(client, "cmdAcceptCNX,cmdServerIsOK,cmdInvalidFile,cmdfilended,content"), IsEmpty());
    EXPECT_EQ(syncstate(server.state().network), StreamState::connected);
}

TEST(SyncServer, TheProgramsEndDropsTheClient) {
    SyncingServer server;
    const ScriptedPeerPtr client = server.connect();
    server.act([&] { server.engine.menu_exit(); });
    server.run_for(1s);
    EXPECT_TRUE(server.engine.gone());
    EXPECT_TRUE(client->left());
}

}  // namespace
}  // namespace nimbry::test
