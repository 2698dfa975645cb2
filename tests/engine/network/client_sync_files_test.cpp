#include "engine/network/client_sync.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/engine/network/syncing_client.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::Contains;
using testing::Not;

// The server's status

TEST(ClientSync, ABusyServerIsAskedSevenTimes) {
    for (const char* answer : {"cmdServerIsBusy,", ""}) {
        SCOPED_TRACE(answer);
        Client client;
        client.status_answer = answer;
        client.begin();
        client.run_for(60s);
        EXPECT_EQ(client.count_said("cmdServerStatus,"), 7);
        const std::vector<std::string> told = client.told();
        EXPECT_EQ(std::count(told.begin(), told.end(), "Client is waiting for a server status response"), 7);
        ASSERT_THAT(client.notices.boxes, testing::SizeIs(1));
        EXPECT_EQ(client.notices.boxes[0].what.text,
                  "Nimbry was unable to get a response from\r\nthe Nimbry server to synchronise the files.\r\n"
                  "Local data (if any) will be used");
        // Seven times 10 ms and a little over 5 s, behind the 22 ms of the connection.
        EXPECT_GE(client.notices.boxes[0].at - client.begun, 35'092ms);
        EXPECT_LE(client.notices.boxes[0].at - client.begun, 35'110ms);
        EXPECT_FALSE(client.network().frmSync.open);
        EXPECT_THAT(client.datasock.binds, testing::SizeIs(2)) << "no initprog";
        EXPECT_EQ(client.network().sync_result, "no answer");
        EXPECT_EQ(client.notices.restored, 1);
    }
}

TEST(ClientSync, AServerThatBecomesFreeIsTakenAtItsNextAnswer) {
    Client client;
    client.status_answer = "cmdServerIsBusy,";
    client.begin();
    client.run_for(12s);
    client.status_answer = "cmdServerIsOK,";
    client.run_for(60s);
    EXPECT_EQ(client.count_said("cmdServerStatus,"), 4);
    EXPECT_EQ(client.network().sync_result, "all files");
}

// Files that do not come

TEST(ClientSync, ASilentServerIsAskedAgainForEachFile) {
    Client client;
    client.answers.clear();
    client.synchronise_whole();
    EXPECT_EQ(client.count_said("cmdRequestSyncFile,"), 4);
    EXPECT_EQ(client.count_said("cmdRequestGraphFile,"), 5);
    EXPECT_EQ(client.count_said("cmdRequestTdayFile,"), 4);
    EXPECT_EQ(client.count_said("cmdRequestYdayFile,"), 4);
    EXPECT_EQ(client.count_said("cmdRequestRainLH,"), 4);
    EXPECT_EQ(client.count_said("cmdRequestAlmanac,"), 4);
    EXPECT_EQ(client.count_said("cmdfilended,"), 19);
    EXPECT_THAT(client.told(), AllOf(Contains("Client failed to receive configuration data"),
                                     Contains("Client failed to receive the graph data"),
                                     Contains("Client failed to receive today's extremes"),
                                     Contains("Client failed to receive yesterday's extremes"),
                                     Contains("Client failed to receive rainfall in last hour data"),
                                     Contains("Client failed to receive the almanac data"), Contains("Attempt # 5")));
    EXPECT_TRUE(client.network().frmSync.Text1.ends_with(
        "\r\n\r\nSome remote files could not be transferred.\r\nLocal data will be used if available\r\n"
        "Nimbry client is now starting ....\r\n"));
    EXPECT_EQ(client.network().sync_result, "some files failed");
    // 40 + 100 + 4 x 40 s of silence, 19 pauses of 100 ms before a retry, 100 ms before the end.
    const auto whole = client.server->left_at() - client.begun;
    EXPECT_GE(whole, 302s);
    EXPECT_LE(whole, 303s);
    for (const std::string& name : client.files.entries()) EXPECT_FALSE(name.ends_with(".tmp")) << name;
    EXPECT_FALSE(client.files.exists("tempsync.cfg"));
}

TEST(ClientSync, AFileOfTheOwnStaysWhenTheServersDoesNotCome) {
    Client client;
    client.files.put("grafdata.dat", "own");
    client.answers.erase("cmdRequestGraphFile,");
    client.synchronise_whole();
    EXPECT_EQ(client.files.contents("grafdata.dat"), "own");
    EXPECT_EQ(client.files.contents("nimbrTDay.log"), "today") << "the next files are fetched all the same";
}

TEST(ClientSync, CountsWhatComesWithoutACommand) {
    Client client;
    client.synchronise_whole();
    // Six files of a piece each; the last letter of "almanac" may begin a command, and is a piece of its own.
    EXPECT_EQ(client.network().data_arrivals, 7U);
}

TEST(ClientSync, AMissingFileIsAskedForFourTimes) {
    Client client;
    client.missing = {"cmdRequestYdayFile,"};
    client.synchronise_whole();
    EXPECT_THAT(client.said(), Contains("1025: cmdRequestYdayFile,"));
    EXPECT_EQ(client.count_said("cmdRequestYdayFile,"), 4);
    EXPECT_THAT(client.said(), Contains("1126: cmdRequestYdayFile,")) << "a tenth of a second later";
    EXPECT_THAT(client.told(), Contains("Client failed to receive yesterday's extremes"));
    EXPECT_THAT(client.told(), Contains("Client has received rainfall in last hour data"));
}

TEST(ClientSync, TheLimitIsThatOfTheLastFailure) {
    struct Case {
        const char* what;
        bool fourth_is_invalid;
        int attempts;
    };
    for (const Case& row : {Case{"the fourth is silence: a fifth follows", false, 5},
                            Case{"the fourth is an invalid one: failed", true, 4}}) {
        SCOPED_TRACE(row.what);
        Client client;
        int asked = 0;
        client.answers.erase("cmdRequestGraphFile,");
        client.on_request = [&](const std::string& words) {
            if (words != "cmdRequestGraphFile,") return;
            ++asked;
            if (asked == 3 || (asked == 4 && row.fourth_is_invalid)) client.server->say("cmdInvalidFile,");
        };
        client.synchronise_whole();
        EXPECT_EQ(asked, row.attempts);
    }
}

TEST(ClientSync, ALateAnswerDoesNotEndTheNextRequest) {
    Client client;
    client.answers.erase("cmdRequestTdayFile,");
    int asked = 0;
    client.on_request = [&](const std::string& words) {
        // The answer comes in the pause before the next attempt.
        if (words == "cmdRequestTdayFile," && ++asked < 4) {
            client.pauses.pause(10'050ms);
            client.server->say("cmdInvalidFile,");
        }
    };
    client.synchronise_whole();
    EXPECT_EQ(client.count_said("cmdRequestTdayFile,"), 4);
    // Four times 10 s of silence, none cut short by the answer to the attempt before.
    EXPECT_GE(client.server->left_at() - client.begun, 40s);
    EXPECT_EQ(client.files.contents("nimbrYDay.log"), "yesterday");
}

TEST(ClientSync, TheLastCommandHasASecondToGoOut) {
    Client client;
    client.on_request = [&](const std::string& words) {
        if (words == "cmdRequestAlmanac,") client.server->stall(true);
    };
    client.begin();
    // The last command is sent at 2118 ms; 1.01 s for the system to take it, and 1 s more.
    client.run_for(4'100ms);
    EXPECT_TRUE(client.network().syncing);
    client.run_for(100ms);
    EXPECT_FALSE(client.network().syncing);
    EXPECT_EQ(client.network().sync_result, "all files");
}

// Errors

TEST(ClientSync, AnErrorEndsItWithOneNotice) {
    struct Case {
        const char* what;
        std::function<void(Client&)> scene;
        const char* lines;
    };
    std::string long_rain = rain_file() + "0\r\n";
    const Case cases[] = {
        {"settings of 16 lines", [](Client& client) { client.answers["cmdRequestSyncFile,"] = "False\r\nTrue\r\n"; },
         "Error number: 62\r\nInput past end of file\r\n"},
        {"a rain file of one line", [](Client& client) { client.answers["cmdRequestRainLH,"] = "5\r\n"; },
         "Error number: 62\r\nInput past end of file\r\n"},
        {"a number that 16 bits do not hold",
         [](Client& client) { client.answers["cmdRequestRainLH,"] = "5\r\n32768\r\n"; },
         "Error number: 6\r\nOverflow\r\n"},
        {"a 63rd element", [&](Client& client) { client.answers["cmdRequestRainLH,"] = long_rain; },
         "Error number: 9\r\nSubscript out of range\r\n"},
        {"no room for a file", [](Client& client) { client.files.refuse("nimbrTDay.tmp", FileResult::disk_full); },
         "Error number: 61\r\nDisk full\r\n"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        Client client;
        row.scene(client);
        client.synchronise_whole();
        ASSERT_THAT(client.notices.balloons, testing::SizeIs(1));
        const Balloon& balloon = client.notices.balloons[0].what;
        EXPECT_EQ(balloon.title, "Synchronization Error");
        EXPECT_EQ(balloon.text, std::string("There was an error synchronising files with the server.\r\n") + row.lines +
                                    "Local data (if any) will be used");
        EXPECT_EQ(balloon.anchor, "TxtHeatInd");
        EXPECT_EQ(balloon.closes_after, 10s);
        EXPECT_FALSE(client.network().syncing);
        EXPECT_FALSE(client.state().comm.dworkingb);
        EXPECT_FALSE(client.network().frmSync.open);
        EXPECT_EQ(client.network().frmSync.Text1, "");
        EXPECT_EQ(client.notices.restored, 1);
        EXPECT_TRUE(client.server->left());
        EXPECT_THAT(client.datasock.binds, testing::SizeIs(2)) << "no initprog";
        EXPECT_FALSE(client.state().run.HaveError) << "the program goes on";
        EXPECT_THAT(client.network().sync_result, testing::StartsWith("error "));
    }
}

TEST(ClientSync, SettingsThatCameBeforeAnErrorStand) {
    Client client;
    client.answers["cmdRequestSyncFile,"] = "True\r\nFalse\r\nFalse\r\n";
    client.synchronise_whole();
    EXPECT_EQ(client.setting("Main", "fBarhpa"), "True");
    EXPECT_EQ(client.setting("Main", "fRainin"), "") << "not in the file";
    EXPECT_TRUE(client.files.exists("tempsync.cfg"));
}

TEST(ClientSync, AFileThatCannotBeWrittenOnIsAnError) {
    Client client;
    client.answers.erase("cmdRequestGraphFile,");
    client.on_request = [&](const std::string& words) {
        if (words != "cmdRequestGraphFile,") return;
        client.files.fail_call(1, FileResult::disk_full);
        client.server->say("graphs");
    };
    client.synchronise_whole();
    EXPECT_EQ(client.network().sync_result, "error 61");
    EXPECT_FALSE(client.files.exists("grafdata.tmp"));
    EXPECT_FALSE(client.files.exists("grafdata.dat"));
    EXPECT_TRUE(client.files.exists("tempsync.cfg")) << "it has been read already";
}

// The almanac of a new month

TEST(ClientSync, AMissingAlmanacIsNoFailureInANewMonth) {
    Client client;
    client.clock.set_computer_time(std::chrono::local_days{std::chrono::November / 1 / 2026} + 14h);
    client.files.put("nbextreme.log", "of the old month");
    client.missing = {"cmdRequestAlmanac,"};
    client.synchronise_whole();
    EXPECT_EQ(client.count_said("cmdRequestAlmanac,"), 1);
    EXPECT_THAT(client.told(), Contains("No almanac exists yet as it has been archived"));
    EXPECT_THAT(client.told(), Not(Contains("Client failed to receive the almanac data")));
    EXPECT_THAT(client.told(), Not(Contains("Client has received the almanac data")));
    EXPECT_FALSE(client.files.exists("nbextreme.log"));
    EXPECT_FALSE(client.files.exists("nbextreme.tmp"));
    EXPECT_EQ(client.network().sync_result, "all files");
}

TEST(ClientSync, OnAnyOtherDayItIs) {
    Client client;
    client.files.put("nbextreme.log", "the own");
    client.missing = {"cmdRequestAlmanac,"};
    client.synchronise_whole();
    EXPECT_EQ(client.count_said("cmdRequestAlmanac,"), 4);
    EXPECT_THAT(client.told(), Contains("Client failed to receive the almanac data"));
    EXPECT_EQ(client.files.contents("nbextreme.log"), "the own");
}

}  // namespace
}  // namespace nimbry::test
