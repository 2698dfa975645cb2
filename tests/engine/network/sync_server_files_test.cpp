#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/network/start_network.h"
#include "engine/network/syncsock.h"
#include "tests/engine/network/syncing_server.h"
#include "tests/world/cycles.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(SyncServer, SendsAFileInPiecesWithItsPauses) {
    SyncingServer server;
    server.files.put("nimbrYDay.log", std::string(8192, 'a') + std::string(8192, 'b') + std::string(500, 'c'));
    const ScriptedPeerPtr client = server.connect();
    EXPECT_THAT(server.answers(client, "cmdRequestYdayFile,"),
                ElementsAre("300: 8192 bytes", "310: 8192 bytes", "320: 500 bytes", "340: cmdfilended,"));
    EXPECT_EQ(client->sent()[1].bytes, std::string(8192, 'a'));
    EXPECT_EQ(client->sent()[3].bytes, std::string(500, 'c'));
}

TEST(SyncServer, AnEmptyFileIsAnEndMarkAfter310Milliseconds) {
    SyncingServer server;
    server.files.put("nimbrYDay.log", "");
    const ScriptedPeerPtr client = server.connect();
    EXPECT_THAT(server.answers(client, "cmdRequestYdayFile,"), ElementsAre("310: cmdfilended,"));
}

TEST(SyncServer, AMissingFileIsToldAtOnce) {
    SyncingServer server;
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
        SyncingServer server;
        // Before the first train the writers write nothing; then the file goes out as it is.
        server.files.put(row.file, "as it is");
        const ScriptedPeerPtr client = server.connect();
        EXPECT_THAT(server.answers(client, row.request), ElementsAre("300: as it is", "320: cmdfilended,"));
        EXPECT_FALSE(server.state().run.savingrafs);
        EXPECT_FALSE(server.state().run.tdaysaving);
    }
}

TEST(SyncServer, WritesTheSettingsAfreshForEachRequest) {
    SyncingServer server("fTempC=False\r\nfTempF=True\r\nalRoll=905\r\nLatitude=51.5\r\n");
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
    SyncingServer server;
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
    SyncingServer server;
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
        SyncingServer server;
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
    SyncingServer server;
    server.files.put("nimbrYDay.log", std::string(20'000, 'a'));
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(305ms);
    server.files.put("nimbrYDay.log", "b");
    server.run_for(1s);
    EXPECT_EQ(client->heard(), "cmdAcceptCNX," + std::string(20'000, 'a') + "cmdfilended,");
}

TEST(SyncServer, AFileThatCannotBeWrittenLeavesTheRequestUnanswered) {
    SyncingServer server;
    const ScriptedPeerPtr client = server.connect();
    server.files.refuse("sync.cfg", FileResult::disk_full);
    EXPECT_THAT(server.answers(client, "cmdRequestSyncFile,", 5s), IsEmpty());
    EXPECT_FALSE(server.state().run.HaveError);
    server.files.allow();
    EXPECT_THAT(server.answers(client, "cmdRequestSyncFile,", 5s), testing::SizeIs(2)) << "the next one is";
}

TEST(SyncServer, ANewRequestEndsTheAnswerToTheOneBefore) {
    SyncingServer server;
    server.files.put("nimbrYDay.log", std::string(100'000, 'a'));
    server.files.put("nbextreme.log", "almanac");
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(325ms);
    ASSERT_EQ(client->sent().size(), 4U) << "three pieces are out";
    EXPECT_THAT(server.answers(client, "cmdRequestAlmanac,"), ElementsAre("300: almanac", "320: cmdfilended,"));
}

TEST(SyncServer, TheSameWhileTheFirstOneIsStillInItsFirstPause) {
    SyncingServer server;
    server.files.put("nimbrYDay.log", "yesterday");
    server.files.put("nbextreme.log", "almanac");
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(100ms);
    EXPECT_THAT(server.answers(client, "cmdRequestAlmanac,"), ElementsAre("300: almanac", "320: cmdfilended,"));
}

TEST(SyncServer, AnEndMarkFromTheClientEndsNothing) {
    SyncingServer server;
    server.files.put("nimbrYDay.log", "yesterday");
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(100ms);
    EXPECT_THAT(server.answers(client, "cmdfilended,"), ElementsAre("200: yesterday", "220: cmdfilended,"));
}

TEST(SyncServer, StatusIsAnsweredAtOnceWhileAFileIsSent) {
    SyncingServer server;
    server.files.put("nimbrYDay.log", std::string(100'000, 'a'));
    const ScriptedPeerPtr client = server.connect();
    client->say("cmdRequestYdayFile,");
    server.run_for(305ms);
    EXPECT_EQ(server.answers(client, "cmdServerStatus,")[0], "0: cmdServerIsOK,");
}

TEST(SyncServer, AClientThatGoesEndsTheAnswer) {
    for (const bool says_goodbye : {true, false}) {
        SCOPED_TRACE(says_goodbye ? "with its last command" : "by closing");
        SyncingServer server;
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
    SyncingServer server;
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
    SyncingServer server;
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
    SyncingServer server;
    server.files.put("nimbrYDay.log", std::string(10'000, 'a'));
    const ScriptedPeerPtr client = server.connect();
    client->stall(true);
    EXPECT_THAT(server.answers(client, "cmdRequestYdayFile,", 5s),
                ElementsAre("300: 8192 bytes", "1320: 1808 bytes", "2350: cmdfilended,"));
    EXPECT_THAT(server.notices.balloons, IsEmpty()) << "that it did not go is not told";
}

TEST(SendData, AFailureIsOneNoticeAndOneLineAndEndsTheFile) {
    SyncingServer server;
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

}  // namespace
}  // namespace nimbry::test
