#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/network/rain_history.h"
#include "engine/network/start_network.h"
#include "engine/network/syncsock.h"
#include "tests/world/cycles.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// A server that has graph data to send, and a client that has connected.
struct Server : StartedWorld {
    explicit Server(const std::string& lines = "") : StartedWorld("bcastnet=True\r\n" + lines) {
        state().havegrafdata = true;
    }

    ScriptedPeerPtr connect(const std::string& address = "127.0.0.2") {
        ScriptedPeerPtr peer = streams.call(60131, address);
        run_for(5ms);
        return peer;
    }

    /// What a client hears from now on until a time has passed: "ms after now: text", long content by its size.
    std::vector<std::string> hears(const ScriptedPeerPtr& client, MonotonicClock::duration for_time) {
        const std::size_t before = client->sent().size();
        const Instant begun = clock.monotonic();
        run_for(for_time);
        std::vector<std::string> heard;
        for (std::size_t n = before; n < client->sent().size(); ++n) {
            const ScriptedPeer::Sent& sent = client->sent()[n];
            const auto at = std::chrono::duration_cast<Milliseconds>(sent.at - begun).count();
            heard.push_back(std::to_string(at) + ": " +
                            (sent.bytes.size() > 100 ? std::to_string(sent.bytes.size()) + " bytes" : sent.bytes));
        }
        return heard;
    }

    /// The same after the client has said something.
    std::vector<std::string> answers(const ScriptedPeerPtr& client, const std::string& words,
                                     MonotonicClock::duration for_time = 1s) {
        client->say(words);
        return hears(client, for_time);
    }
};

TEST(SyncServer, ListensFromTheStartAndGreetsWhoConnects) {
    Server server;
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
    Server server;
    server.state().readings.dtvar = VirtualClock::usual_start + 1min;
    server.connect("10.1.2.3");
    EXPECT_THAT(server.log(), ElementsAre("05 Oct 2026 14:01:00 A client machine at 10.1.2.3 connected"));
}

TEST(SyncServer, TheLogLineComesWhenTheGreetingIsOutOrItsTimeIsOver) {
    Server server;
    const ScriptedPeerPtr client = server.streams.call(60131, "127.0.0.2");
    client->stall(true);
    server.run_for(1'005ms);
    EXPECT_EQ(client->heard(), "cmdAcceptCNX,");
    EXPECT_THAT(server.log(), IsEmpty());
    server.run_for(10ms);
    EXPECT_THAT(server.log(), testing::SizeIs(1));
}

TEST(SyncServer, HoldsAClientThatIsLetGoUntilItHasWhatWasSentLast) {
    Server server;
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
    Server server;
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
    Server server;
    server.state().havegrafdata = false;
    const ScriptedPeerPtr client = server.connect();
    ASSERT_NE(client, nullptr);
    EXPECT_EQ(client->heard(), "");
    EXPECT_TRUE(client->left());
    EXPECT_EQ(syncstate(server.state().network), StreamState::listening);
    EXPECT_THAT(server.log(), IsEmpty());
}

TEST(SyncServer, ListensAgainWhenTheClientCloses) {
    Server server;
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
    Server server;
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
        Server server;
        const ScriptedPeerPtr client = server.connect();
        if (row.changeover) server.state().comm.changebusy.set();
        if (row.upload) server.state().publish.uloadftpbusy.set();
        EXPECT_THAT(server.answers(client, "cmdServerStatus,"), ElementsAre(row.answer));
    }
}

// Files

TEST(SyncServer, SendsAFileInPiecesWithItsPauses) {
    Server server;
    server.files.put("nimbrYDay.log", std::string(8192, 'a') + std::string(8192, 'b') + std::string(500, 'c'));
    const ScriptedPeerPtr client = server.connect();
    EXPECT_THAT(server.answers(client, "cmdRequestYdayFile,"),
                ElementsAre("300: 8192 bytes", "310: 8192 bytes", "320: 500 bytes", "340: cmdfilended,"));
    EXPECT_EQ(client->sent()[1].bytes, std::string(8192, 'a'));
    EXPECT_EQ(client->sent()[3].bytes, std::string(500, 'c'));
}

TEST(SyncServer, AnEmptyFileIsAnEndMarkAfter310Milliseconds) {
    Server server;
    server.files.put("nimbrYDay.log", "");
    const ScriptedPeerPtr client = server.connect();
    EXPECT_THAT(server.answers(client, "cmdRequestYdayFile,"), ElementsAre("310: cmdfilended,"));
}

TEST(SyncServer, AMissingFileIsToldAtOnce) {
    Server server;
    const ScriptedPeerPtr client = server.connect();
    EXPECT_THAT(server.answers(client, "cmdRequestYdayFile,"), ElementsAre("0: cmdInvalidFile,"));
    EXPECT_THAT(server.answers(client, "cmdRequestAlmanac,"), ElementsAre("0: cmdInvalidFile,"));
}

TEST(SyncServer, SendsTheFileThatIsAskedFor) {
    struct Case {
        const char* request;
        const char* file;
    };
    for (const Case& row :
         {Case{"cmdRequestYdayFile,", "nimbrYDay.log"}, Case{"cmdRequestAlmanac,", "nbextreme.log"},
          Case{"cmdRequestGraphFile,", "grafdata.dat"}, Case{"cmdRequestTdayFile,", "nimbrTDay.log"}}) {
        SCOPED_TRACE(row.request);
        Server server;
        // Before the first train the writers write nothing; then the file goes out as it is.
        server.files.put(row.file, "as it is");
        const ScriptedPeerPtr client = server.connect();
        EXPECT_THAT(server.answers(client, row.request), ElementsAre("300: as it is", "320: cmdfilended,"));
        EXPECT_FALSE(server.state().run.savingrafs);
        EXPECT_FALSE(server.state().run.tdaysaving);
    }
}

TEST(SyncServer, WritesTheSettingsAfreshForEachRequest) {
    Server server("fTempC=False\r\nfTempF=True\r\nalRoll=905\r\nLatitude=51.5\r\n");
    const ScriptedPeerPtr client = server.connect();
    const std::string expected =
        "False\r\nFalse\r\nTrue\r\nFalse\r\nTrue\r\nFalse\r\nTrue\r\nFalse\r\nTrue\r\nFalse\r\nFalse\r\n"
        "False\r\nTrue\r\n905\r\nFalse\r\n51.5\r\n999\r\n";
    server.answers(client, "cmdRequestSyncFile,");
    EXPECT_EQ(server.files.contents("sync.cfg"), expected);
    EXPECT_EQ(client->heard(), "cmdAcceptCNX," + expected + "cmdfilended,");

    server.copy().ini.SaveSetting("Main", "tmidnight", "True");
    server.answers(client, "cmdRequestSyncFile,");
    EXPECT_THAT(server.lines("sync.cfg")[11], "True");
}

TEST(SyncServer, WritesTheRainOfTheLastHourAfreshForEachRequest) {
    Server server;
    server.state().rain.LastHourIndex = 7;
    server.state().rain.LastHourRing[1] = 3;
    const ScriptedPeerPtr client = server.connect();
    server.answers(client, "cmdRequestRainLH,");
    const std::vector<std::string> lines = server.lines("rainlh.log");
    ASSERT_EQ(lines.size(), 64U);
    EXPECT_EQ(lines[0], "7");
    EXPECT_EQ(lines[1], "60");
    EXPECT_EQ(lines[2], "0");
    EXPECT_EQ(lines[3], "3");
    EXPECT_EQ(lines[63], "0");
}

TEST(SyncServer, SavesTodaysExtremesBeforeItSendsThem) {
    Server server;
    server.send_trains(3);
    server.state().havegrafdata = true;
    server.files.remove("nimbrTDay.log");
    const ScriptedPeerPtr client = server.connect();
    server.answers(client, "cmdRequestTdayFile,");
    EXPECT_EQ(client->heard(), "cmdAcceptCNX," + server.files.contents("nimbrTDay.log") + "cmdfilended,");
    EXPECT_GT(server.files.contents("nimbrTDay.log").size(), 100U);
}

TEST(SyncServer, ARequestDuringASaveWaitsForItAndSavesNoSecondTime) {
    struct Case {
        const char* request;
        const char* file;
        BusyFlag RunState::*flag;
    };
    for (const Case& row : {Case{"cmdRequestGraphFile,", "grafdata.dat", &RunState::savingrafs},
                            Case{"cmdRequestTdayFile,", "nimbrTDay.log", &RunState::tdaysaving}}) {
        SCOPED_TRACE(row.request);
        Server server;
        server.files.put(row.file, "old");
        const ScriptedPeerPtr client = server.connect();
        (server.state().run.*row.flag).set();
        EXPECT_THAT(server.answers(client, row.request, 10s), IsEmpty());
        EXPECT_THAT(server.state().run.waits, testing::SizeIs(1)) << "status names what is waited for";
        server.files.put(row.file, "fresh");
        (server.state().run.*row.flag).clear();
        server.run_for(1s);
        EXPECT_EQ(client->heard(), "cmdAcceptCNX,freshcmdfilended,");
    }
}

TEST(SyncServer, AFileThatChangesWhileItIsSentGoesOutAsItWas) {
    Server server;
    server.files.put("nimbrYDay.log", std::string(20'000, 'a'));
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(305ms);
    server.files.put("nimbrYDay.log", "b");
    server.run_for(1s);
    EXPECT_EQ(client->heard(), "cmdAcceptCNX," + std::string(20'000, 'a') + "cmdfilended,");
}

TEST(SyncServer, AFileThatCannotBeWrittenLeavesTheRequestUnanswered) {
    Server server;
    const ScriptedPeerPtr client = server.connect();
    server.files.refuse("sync.cfg", FileResult::disk_full);
    EXPECT_THAT(server.answers(client, "cmdRequestSyncFile,", 5s), IsEmpty());
    EXPECT_FALSE(server.state().run.HaveError);
    server.files.allow();
    EXPECT_THAT(server.answers(client, "cmdRequestSyncFile,", 5s), testing::SizeIs(2)) << "the next one is";
}

TEST(SyncServer, ANewRequestEndsTheAnswerToTheOneBefore) {
    Server server;
    server.files.put("nimbrYDay.log", std::string(100'000, 'a'));
    server.files.put("nbextreme.log", "almanac");
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(325ms);
    ASSERT_EQ(client->sent().size(), 4U) << "three pieces are out";
    EXPECT_THAT(server.answers(client, "cmdRequestAlmanac,"), ElementsAre("300: almanac", "320: cmdfilended,"));
}

TEST(SyncServer, TheSameWhileTheFirstOneIsStillInItsFirstPause) {
    Server server;
    server.files.put("nimbrYDay.log", "yesterday");
    server.files.put("nbextreme.log", "almanac");
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(100ms);
    EXPECT_THAT(server.answers(client, "cmdRequestAlmanac,"), ElementsAre("300: almanac", "320: cmdfilended,"));
}

TEST(SyncServer, AnEndMarkFromTheClientEndsNothing) {
    Server server;
    server.files.put("nimbrYDay.log", "yesterday");
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(100ms);
    EXPECT_THAT(server.answers(client, "cmdfilended,"), ElementsAre("200: yesterday", "220: cmdfilended,"));
}

TEST(SyncServer, StatusIsAnsweredAtOnceWhileAFileIsSent) {
    Server server;
    server.files.put("nimbrYDay.log", std::string(100'000, 'a'));
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(305ms);
    EXPECT_EQ(server.answers(client, "cmdServerStatus,")[0], "0: cmdServerIsOK,");
}

TEST(SyncServer, AClientThatGoesEndsTheAnswer) {
    for (const bool says_goodbye : {true, false}) {
        SCOPED_TRACE(says_goodbye ? "with its last command" : "by closing");
        Server server;
        server.files.put("nimbrYDay.log", std::string(100'000, 'a'));
        const ScriptedPeerPtr client = server.connect();
        client->say("cmdRequestYdayFile,");
        server.run_for(315ms);
        if (says_goodbye)
            client->say("cmdResetServerSocket,");
        else
            client->close();
        server.run_for(2s);
        EXPECT_EQ(client->heard().find("cmdfilended,"), std::string::npos);
        EXPECT_EQ(client->sent().size(), 3U);
        EXPECT_EQ(syncstate(server.state().network), StreamState::listening);
        EXPECT_THAT(server.notices.balloons, IsEmpty());
    }
}

TEST(SyncServer, TheThirteenthTrainCutsAClientAlsoInTheMiddleOfAFile) {
    Server server;
    server.files.put("nimbrYDay.log", std::string(4'000'000, 'a'));
    const ScriptedPeerPtr client = server.connect();
    cycles(server, 12);
    client->say("cmdRequestYdayFile,");
    server.run_for(400ms);
    EXPECT_FALSE(client->left());
    cycle(server);
    server.run_for(1s);
    EXPECT_TRUE(client->left());
    EXPECT_EQ(client->heard().find("cmdfilended,"), std::string::npos);
    EXPECT_TRUE(server.streams.listening(60131));
}

TEST(SyncServer, ListeningBetweenTwoClientsBeginsTheCountAnew) {
    Server server;
    server.connect();
    cycles(server, 12);
    open_sync_listener(server.copy());
    cycle(server);
    const ScriptedPeerPtr client = server.connect();
    cycles(server, 12);
    EXPECT_FALSE(client->left());
}

// Sending

TEST(SendData, WaitsForTheBytesToBeTakenAndNoLongerThanASecond) {
    Server server;
    server.files.put("nimbrYDay.log", std::string(10'000, 'a'));
    const ScriptedPeerPtr client = server.connect();
    client->stall(true);
    EXPECT_THAT(server.answers(client, "cmdRequestYdayFile,", 5s),
                ElementsAre("300: 8192 bytes", "1320: 1808 bytes", "2350: cmdfilended,"));
    EXPECT_THAT(server.notices.balloons, IsEmpty()) << "that it did not go is not told";
}

TEST(SendData, AFailureIsOneNoticeAndOneLineAndEndsTheFile) {
    Server server;
    server.state().readings.dtvar = VirtualClock::usual_start;
    server.files.put("nimbrYDay.log", std::string(100'000, 'a'));
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(315ms);
    client->break_sends({104, "Connection reset by peer"});
    server.run_for(5s);
    const std::string told = "05 Oct 2026 14:00:00 in SendData. Error # 104 Connection reset by peer Socket state 7";
    ASSERT_EQ(server.notices.balloons.size(), 1U);
    EXPECT_EQ(server.notices.balloons[0].what.text, told);
    EXPECT_EQ(server.log().back(), told);
    EXPECT_THAT(server.log(), testing::SizeIs(2));
}

// Bad peers

TEST(SyncServer, NobodyGetsAFileThatIsNotAmongTheSix) {
    Server server;
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
    Server server;
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
    Server server;
    const ScriptedPeerPtr client = server.connect();
    for (const char letter : std::string("cmdServerStatus,cmdServerStatus,")) {
        client->say(std::string(1, letter));
        server.run_for(50ms);
    }
    EXPECT_EQ(client->heard(), "cmdAcceptCNX,cmdServerIsOK,cmdServerIsOK,");
}

TEST(SyncServer, HalfACommandIsForgottenAfterAWhile) {
    Server server;
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdServer");
    server.run_for(1s);
    EXPECT_EQ(server.state().network.receiver.held(), 0U);
    EXPECT_THAT(server.answers(client, "Status,"), IsEmpty());
    EXPECT_THAT(server.answers(client, "cmdServerStatus,"), testing::SizeIs(1));
}

TEST(SyncServer, CommandsOfAServerChangeNothingInOne) {
    Server server;
    const ScriptedPeerPtr client = server.connect();
    EXPECT_THAT(server.answers(client, "cmdAcceptCNX,cmdServerIsOK,cmdInvalidFile,cmdfilended,content"), IsEmpty());
    EXPECT_EQ(syncstate(server.state().network), StreamState::connected);
}

TEST(SyncServer, TheProgramsEndDropsTheClient) {
    Server server;
    const ScriptedPeerPtr client = server.connect();
    server.act([&] { server.engine.menu_exit(); });
    server.run_for(1s);
    EXPECT_TRUE(server.engine.gone());
    EXPECT_TRUE(client->left());
}

}  // namespace
}  // namespace nimbry::test
