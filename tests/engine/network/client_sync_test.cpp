#include "engine/network/client_sync.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "engine/core/initprog.h"
#include "engine/network/start_network.h"
#include "engine/network/syncsock.h"
#include "engine/station/train_writer.h"
#include "tests/world/cycles.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const std::string server_address = "10.0.0.1";

/// The settings of a server that shows degrees Fahrenheit, and the files that it sends, by the request for each.
const std::string server_settings =
    "False\r\nFalse\r\nTrue\r\nFalse\r\nTrue\r\nFalse\r\nTrue\r\nFalse\r\nTrue\r\nFalse\r\nFalse\r\n"
    "True\r\nFalse\r\n905\r\nFalse\r\n51.5\r\n-0.25\r\n";

std::string rain_file() {
    std::string text = "5\r\n60\r\n";
    for (int n = 0; n < 62; ++n) text += (n == 3 ? "4" : "0") + std::string("\r\n");
    return text;
}

/// A client, and a server that answers as a real one does, unless the test says otherwise.
struct Client : World {
    std::map<std::string, std::string> answers{
        {"cmdRequestSyncFile,", server_settings}, {"cmdRequestGraphFile,", "graphs"},
        {"cmdRequestTdayFile,", "today"},         {"cmdRequestYdayFile,", "yesterday"},
        {"cmdRequestRainLH,", rain_file()},       {"cmdRequestAlmanac,", "almanac"}};
    std::string status_answer = "cmdServerIsOK,";
    std::string greeting = "cmdAcceptCNX,";
    std::set<std::string> missing;                       ///< requests that are answered with "no such file"
    std::function<void(const std::string&)> on_request;  ///< looks at each thing the client says first
    std::string address = server_address;                ///< where the first datagram comes from
    ScriptedPeerPtr server;
    Instant begun;

    explicit Client(const std::string& lines = "") {
        files.put("Nimbry.ini", main_section("fromnet=True\r\n" + lines));
        start();
        streams.answer(server_address, 60131, [this](const ScriptedPeerPtr& peer) {
            server = peer;
            peer->on_heard([this](ScriptedPeer&, const std::string& words) { answer(words); });
            if (!greeting.empty()) peer->say(greeting);
        });
    }

    void answer(const std::string& words) {
        if (on_request) on_request(words);
        if (missing.contains(words)) return server->say("cmdInvalidFile,");
        if (words == "cmdServerStatus,") {
            if (!status_answer.empty()) server->say(status_answer);
            return;
        }
        const auto found = answers.find(words);
        if (found == answers.end()) return;
        pauses.pause(310ms);
        if (!found->second.empty()) server->say(found->second);
        pauses.pause(20ms);
        server->say("cmdfilended,");
    }

    /// The first datagram comes, and the conversation runs.
    void begin() {
        begun = clock.monotonic();
        send_datagram(write_train({}), address);
        run_for(2ms);
    }
    void synchronise_whole() {
        begin();
        run_for(10min);
    }

    /// The status lines, without those of the six files unless asked for.
    [[nodiscard]] std::vector<std::string> told() const {
        std::vector<std::string> told;
        for (const auto& shown : notices.lines) told.push_back(shown.what);
        return told;
    }
    /// What the client sent: "ms after the first datagram: text".
    [[nodiscard]] std::vector<std::string> said() const {
        std::vector<std::string> said;
        for (const auto& sent : server->sent()) {
            const auto at = std::chrono::duration_cast<Milliseconds>(sent.at - begun).count();
            said.push_back(std::to_string(at) + ": " + sent.bytes);
        }
        return said;
    }
    [[nodiscard]] int count_said(const std::string& text) const {
        int count = 0;
        for (const auto& sent : server->sent()) count += sent.bytes == text ? 1 : 0;
        return count;
    }
    [[nodiscard]] const NetworkState& network() { return state().network; }
};

TEST(ClientSync, TheConversationFromBeginToEnd) {
    Client client;
    client.synchronise_whole();
    // 20 ms to lock on and 1 ms to connect; 10 ms after the status; 330 ms a file.
    EXPECT_THAT(client.said(),
                ElementsAre("22: cmdServerStatus,", "32: cmdRequestSyncFile,", "363: cmdRequestGraphFile,",
                            "694: cmdRequestTdayFile,", "1025: cmdRequestYdayFile,", "1356: cmdRequestRainLH,",
                            "1687: cmdRequestAlmanac,", "2118: cmdResetServerSocket,"));
    EXPECT_TRUE(client.server->left());
    EXPECT_THAT(
        client.told(),
        ElementsAre("A Nimbry server was detected at 10.0.0.1", "Client is requesting a connection",
                    "Client and Server have established a connection", "Client is requesting the server status",
                    "Client got a server OK response", "Client is requesting files from server",
                    "Client is requesting configuration data", "Attempt # 1", "Client has received configuration data",
                    "Client is requesting the graph data", "Attempt # 1", "Client has received the graph data",
                    "Client is requesting today's extremes", "Attempt # 1", "Client has received today's extremes",
                    "Client is requesting yesterday's extremes", "Attempt # 1",
                    "Client has received yesterday's extremes", "Client is requesting rainfall in last hour data",
                    "Attempt # 1", "Client has received rainfall in last hour data",
                    "Client is requesting the almanac data", "Attempt # 1", "Client has received the almanac data",
                    "Synchronisation with the Nimbry server completed", "All files have been transferred successfully",
                    "Nimbry client is now starting ...."));
    EXPECT_TRUE(client.network().frmSync.Text1.ends_with(
        "Client has received the almanac data\r\n\r\nSynchronisation with the Nimbry server completed\r\n"
        "All files have been transferred successfully\r\nNimbry client is now starting ....\r\n"));
    EXPECT_EQ(client.network().sync_result, "all files");
    EXPECT_FALSE(client.network().syncing);
    EXPECT_FALSE(client.state().comm.dworkingb);
    EXPECT_FALSE(client.network().FilesTransferred);
    EXPECT_THAT(client.notices.boxes, IsEmpty());
}

TEST(ClientSync, TheFilesAreThereAfterwardsAndNoTemporaryOnes) {
    Client client;
    client.files.put("nimbrYDay.log", "an older one");
    client.files.put("grafdata.tmp", "the rest of an attempt that never ended, longer than what comes");
    client.synchronise_whole();
    EXPECT_EQ(client.files.contents("tempsync.cfg"), server_settings);
    EXPECT_EQ(client.files.contents("grafdata.dat"), "graphs");
    EXPECT_EQ(client.files.contents("nimbrTDay.log"), "today");
    EXPECT_EQ(client.files.contents("nimbrYDay.log"), "yesterday");
    EXPECT_EQ(client.files.contents("rainlh.log"), rain_file());
    EXPECT_EQ(client.files.contents("nbextreme.log"), "almanac");
    for (const std::string& name : client.files.entries()) EXPECT_FALSE(name.ends_with(".tmp")) << name;
    EXPECT_FALSE(client.files.exists("sync.cfg"));
}

TEST(ClientSync, TheServersSettingsAreInForceAndStored) {
    Client client("fTempC=True\r\n");
    client.synchronise_whole();
    EXPECT_EQ(client.setting("Main", "fTempF"), "True");
    EXPECT_EQ(client.setting("Main", "tmidnight"), "True");
    EXPECT_EQ(client.setting("Main", "alRoll"), "905");
    EXPECT_EQ(client.setting("Main", "Latitude"), "51.5");
    EXPECT_EQ(client.setting("Main", "Longitude"), "-0.25");
    EXPECT_EQ(client.setting("FTP", "LocalSave"), "False");
    EXPECT_EQ(client.setting("Main", "fromnet"), "True");
    EXPECT_EQ(client.state().units.temperature, TemperatureUnit::fahrenheit);
    EXPECT_TRUE(client.state().settings.tmidnight);
    EXPECT_FALSE(client.state().settings.tnineam);
    EXPECT_EQ(client.state().settings.alRoll, "905");
    EXPECT_THAT(client.sounds.played, IsEmpty());
    EXPECT_FALSE(client.state().records.unitschanged) << "or the next cycle would throw away the graphs just received";
    EXPECT_EQ(client.state().rain.LastHourRing[3], 4);
    EXPECT_EQ(client.state().rain.LastHourIndex, 5);
    EXPECT_EQ(client.state().rain.LastHourPrev, std::nullopt);
}

TEST(ClientSync, ValuesLoseControlCharactersAndEndAt64) {
    Client client;
    client.answers["cmdRequestSyncFile,"] =
        server_settings.substr(0, server_settings.find("51.5")) + "5\a1.5\r\n" + std::string(100, '9') + "\r\n";
    client.synchronise_whole();
    EXPECT_EQ(client.setting("Main", "Latitude"), "51.5");
    EXPECT_EQ(client.setting("Main", "Longitude"), std::string(64, '9'));
}

TEST(ClientSync, WhatAClientMustNotUseIsDisabledAndGivenBackAfterwards) {
    Client client;
    client.synchronise_whole();
    client.send_datagram(write_train({}));
    client.run_for(100ms);
    ASSERT_TRUE(client.state().run.fullystarted);
    MainMenu& menu = client.state().menu;
    Box* const entries[] = {&menu.mnulogFTP,  &menu.mnulogMail,  &menu.mnuLogWU,     &menu.mnuLogHW,
                            &menu.mnuLogAPRS, &menu.mnuNoFTPPop, &menu.mnuNoMailPop, &menu.mnuLatLong,
                            &menu.mnuAlarms,  &menu.mnuInternet};
    for (const Box* entry : entries) EXPECT_FALSE(entry->enabled) << entry->text;

    client.copy().ini.SaveFlag("Main", "fromnet", false);
    client.act([&] { initprog(client.copy()); });
    client.run_for(2s);
    for (const Box* entry : entries) EXPECT_TRUE(entry->enabled) << entry->text;
    EXPECT_TRUE(menu.mnuFTPdebug.enabled);
    EXPECT_TRUE(menu.mnuEditComment.enabled);
}

TEST(ClientSync, TheyStayDisabledWhenTheRestFails) {
    Client client;
    client.begin();
    client.run_for(500ms);
    client.server->close();
    client.run_for(1s);
    EXPECT_FALSE(client.state().menu.mnuAlarms.enabled);
    EXPECT_FALSE(client.state().menu.mnuNoMailPop.enabled);
}

// The first datagram

TEST(ClientSync, AnyFirstDatagramBeginsIt) {
    struct Case {
        const char* what;
        Bytes bytes;
        bool initflag;
    };
    for (const Case& row : {Case{"a train", write_train({}), false}, Case{"an empty one", {}, false},
                            Case{"one byte", {0}, false}, Case{"while a dialog holds data off", {1, 2}, true}}) {
        SCOPED_TRACE(row.what);
        Client client;
        client.state().comm.initflag = row.initflag;
        client.send_datagram(row.bytes, "10.0.0.1");
        client.run_for(100ms);
        EXPECT_TRUE(client.network().syncing);
        EXPECT_TRUE(client.network().gotnetdata);
        EXPECT_EQ(client.network().foundIP, "10.0.0.1");
        EXPECT_TRUE(client.network().frmSync.open);
        EXPECT_THAT(client.notices.windows, ElementsAre("frmSync"));
        EXPECT_EQ(client.state().comm.counters.trains, 0U) << "it is thrown away";
    }
}

TEST(ClientSync, LockingOnBindsTheSameSocketAgainAfter20Milliseconds) {
    Client client;
    ASSERT_THAT(client.datasock.binds, ElementsAre(60135));
    client.send_datagram({}, server_address);
    client.run_for(19ms);
    EXPECT_FALSE(client.datasock.is_open());
    EXPECT_FALSE(client.network().gotnetdata);
    client.run_for(2ms);
    EXPECT_THAT(client.datasock.binds, ElementsAre(60135, 60135));
    EXPECT_EQ(client.datasock.bound_use, PortUse::shared);
}

TEST(ClientSync, HappensOnceARun) {
    Client client;
    client.synchronise_whole();
    // The scripted server's extremes are words, with which a copy would not go on.
    client.files.remove("nimbrTDay.log");
    client.files.remove("nimbrYDay.log");
    for (int n = 0; n < 3; ++n) {
        client.send_datagram(write_train({}), "10.0.0.77");
        client.run_for(1s);
    }
    EXPECT_THAT(client.streams.connects, testing::SizeIs(1));
    EXPECT_EQ(client.state().comm.counters.trains, 3U) << "from whomever they come";
}

TEST(ClientSync, TheConnectionComesFromTheOwnAddressIfThereIsOne) {
    Client client("LocalIP=127.0.0.6\r\n");
    client.synchronise_whole();
    EXPECT_EQ(client.streams.connects.at(0).local_address, "127.0.0.6");
    EXPECT_EQ(client.datasock.bound_address, "127.0.0.6");
}

// The connection

TEST(ClientSync, WithoutAConnectionItGivesUpAfter20Seconds) {
    struct Case {
        const char* what;
        std::function<void(Client&)> scene;
    };
    const Case cases[] = {
        {"nobody answers", [](Client& client) { client.streams.ignore(server_address, 60131); }},
        {"greeted before it asked",
         [](Client& client) {
             client.streams.ignore(server_address, 60131);
             client.state().network.syncIPcnx = true;
         }},
        {"refused", [](Client& client) { client.address = "10.0.0.99"; }},
        {"connected and never greeted", [](Client& client) { client.greeting.clear(); }},
        {"connected, closed without a word",
         [](Client& client) {
             client.streams.answer(server_address, 60131, [](const ScriptedPeerPtr& peer) { peer->close(); });
         }},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        Client client;
        row.scene(client);
        client.begin();
        client.run_for(20'015ms);
        EXPECT_THAT(client.notices.boxes, IsEmpty());
        EXPECT_TRUE(client.network().syncing);
        client.run_for(20ms);
        ASSERT_THAT(client.notices.boxes, testing::SizeIs(1));
        EXPECT_EQ(client.notices.boxes[0].what.title, "Nimbry");
        EXPECT_EQ(client.notices.boxes[0].what.text,
                  "Nimbry was unable to establish a connection\r\nto a Nimbry server to synchronise the files.\r\n"
                  "Local data (if any) will be used");
        EXPECT_THAT(client.streams.connects, testing::SizeIs(1)) << "one attempt only";
        EXPECT_FALSE(client.network().syncing);
        EXPECT_FALSE(client.state().comm.dworkingb);
        EXPECT_FALSE(client.network().frmSync.open);
        EXPECT_EQ(client.network().frmSync.Text1, "");
        EXPECT_EQ(client.notices.restored, 1);
        EXPECT_EQ(client.network().sync_result, "no connection");
        EXPECT_EQ(syncstate(client.network()), StreamState::closed);
        EXPECT_THAT(client.datasock.binds, testing::SizeIs(2)) << "the start and the locking on: no initprog";

        client.send_datagram(write_train({}));
        client.run_for(1s);
        EXPECT_EQ(client.state().comm.counters.trains, 1U) << "live data is used";
    }
}

TEST(ClientSync, UntilTheBoxIsAnsweredTheClientIsDeaf) {
    Client client;
    client.streams.ignore(server_address, 60131);
    client.notices.will_answer(Answer::ok, 1h);
    client.begin();
    client.run_for(30min);
    EXPECT_TRUE(client.network().syncing);
    client.run_for(1h);
    EXPECT_FALSE(client.network().syncing);
}

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

// The connection is lost

TEST(ClientSync, AServerThatGoesEndsItAtOnce) {
    struct Case {
        const char* what;
        Milliseconds at;
        std::function<void(Client&)> scene;
    };
    const Case cases[] = {
        {"while its status is awaited", 2s, [](Client& client) { client.status_answer.clear(); }},
        {"while a file is awaited", 200ms, [](Client&) {}},
        {"while a file comes", 355ms, [](Client&) {}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        Client client;
        row.scene(client);
        client.begin();
        client.run_for(row.at);
        client.server->close();
        client.run_for(10ms);
        EXPECT_FALSE(client.network().syncing);
        EXPECT_FALSE(client.state().comm.dworkingb);
        EXPECT_FALSE(client.network().ssscnx);
        EXPECT_EQ(client.told().back(), "Client has lost the connection to the server");
        EXPECT_TRUE(client.network().frmSync.open) << "until the user closes it";
        EXPECT_EQ(client.network().sync_result, "connection lost");
        EXPECT_EQ(client.count_said("cmdResetServerSocket,"), 0);
        EXPECT_FALSE(client.files.exists("grafdata.tmp"));
        EXPECT_THAT(client.datasock.binds, testing::SizeIs(2)) << "no initprog";
        client.send_datagram(write_train({}));
        client.run_for(1s);
        EXPECT_EQ(client.state().comm.counters.trains, 1U);
        EXPECT_TRUE(client.network().frmSync.open);
    }
}

TEST(ClientSync, AnEndMarkAndAnEndTogetherAreALostConnection) {
    Client client;
    client.answers.erase("cmdRequestGraphFile,");
    client.on_request = [&](const std::string& words) {
        if (words != "cmdRequestGraphFile,") return;
        client.server->say("graphs");
        client.pauses.pause(10ms);
        client.server->say("cmdfilended,");
        client.server->close();
    };
    client.synchronise_whole();
    EXPECT_EQ(client.network().sync_result, "connection lost");
    EXPECT_FALSE(client.files.exists("grafdata.dat"));
    EXPECT_FALSE(client.files.exists("grafdata.tmp"));
}

TEST(ClientSync, AFileWithoutEndIsALostConnection) {
    Client client;
    client.answers.erase("cmdRequestGraphFile,");
    client.on_request = [&](const std::string& words) {
        for (int n = 0; words == "cmdRequestGraphFile," && n < 100 && !client.server->left(); ++n) {
            client.server->say(std::string(100'000, '1'));
            client.pauses.pause(1ms);
        }
    };
    client.synchronise_whole();
    EXPECT_EQ(client.network().sync_result, "connection lost");
    EXPECT_TRUE(client.server->left());
    EXPECT_FALSE(client.files.exists("grafdata.tmp"));
}

TEST(ClientSync, AFileHasFourMebibytesAtMost) {
    for (const std::size_t beyond : {0U, 1U}) {
        SCOPED_TRACE(beyond);
        Client client;
        client.answers["cmdRequestAlmanac,"] = std::string(std::size_t{4} * 1024 * 1024 + beyond, '1');
        client.synchronise_whole();
        EXPECT_EQ(client.network().sync_result, beyond == 0 ? "all files" : "connection lost");
        EXPECT_EQ(client.files.exists("nbextreme.log"), beyond == 0);
        EXPECT_FALSE(client.files.exists("nbextreme.tmp"));
    }
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

// Another role, or the same one again, in the middle of it

TEST(ClientSync, AcceptingTheCommunicationsDialogDoesNotEndIt) {
    Client client;
    client.begin();
    client.run_for(500ms);
    client.act([&] { startnetwork(client.copy()); });
    client.run_for(1min);
    EXPECT_EQ(client.network().sync_result, "all files");
    EXPECT_THAT(client.streams.connects, testing::SizeIs(1));
}

TEST(ClientSync, ACopyThatBecomesAServerLetsItsOwnServerGo) {
    Client client;
    client.begin();
    client.run_for(500ms);
    client.state().settings.fromnet = false;
    client.state().settings.bcastnet = true;
    client.act([&] { startnetwork(client.copy()); });
    client.run_for(1s);
    EXPECT_TRUE(client.server->left());
    EXPECT_FALSE(client.network().syncing);
    EXPECT_FALSE(client.state().comm.dworkingb);
    EXPECT_EQ(client.network().sync_result, "connection lost");
    EXPECT_EQ(syncstate(client.network()), StreamState::listening);
}

TEST(ClientSync, GivingUpLeavesTheListenerOfACopyThatHasBecomeAServer) {
    Client client;
    client.streams.ignore(server_address, 60131);
    client.begin();
    client.run_for(500ms);
    client.state().settings.fromnet = false;
    client.state().settings.bcastnet = true;
    client.act([&] { startnetwork(client.copy()); });
    client.run_for(30s);
    EXPECT_EQ(client.network().sync_result, "no connection");
    EXPECT_EQ(syncstate(client.network()), StreamState::listening);
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

// Around it

TEST(ClientSync, TheFirstCycleClosesTheWindow) {
    Client client;
    client.synchronise_whole();
    EXPECT_TRUE(client.network().frmSync.open);
    client.send_datagram(write_train({}));
    client.run_for(100ms);
    EXPECT_FALSE(client.network().frmSync.open);
}

TEST(ClientSync, GroupsThatQueueUpMeanwhileAreThrownAway) {
    Client client;
    client.begin();
    client.run_for(50ms);
    for (int n = 0; n < 5; ++n) {
        client.send_datagram(write_train({}));
        client.run_for(100ms);
    }
    EXPECT_EQ(client.datasock.waiting(), 5U);
    client.run_for(1min);
    EXPECT_EQ(client.datasock.waiting(), 0U);
    EXPECT_EQ(client.state().comm.counters.trains, 0U);
}

TEST(ClientSync, AWaitThatSpansMidnightDoesNotTimeOut) {
    Client client;
    client.clock.set_computer_time(std::chrono::local_days{std::chrono::October / 6 / 2026} - 10s);
    client.streams.ignore(server_address, 60131);
    client.begin();
    client.run_for(10min);
    EXPECT_TRUE(client.network().syncing);
    EXPECT_THAT(client.notices.boxes, IsEmpty());
}

TEST(ClientSync, TheProgramsEndEndsItWithoutABox) {
    for (const Milliseconds at : {Milliseconds{10}, Milliseconds{200}, Milliseconds{355}}) {
        SCOPED_TRACE(at.count());
        Client client;
        if (at == Milliseconds{10}) client.streams.ignore(server_address, 60131);
        client.begin();
        client.run_for(at);
        client.act([&] { client.engine.menu_exit(); });
        client.run_for(1s);
        EXPECT_TRUE(client.engine.gone());
        EXPECT_THAT(client.notices.boxes, IsEmpty());
        EXPECT_EQ(syncstate(client.network()), StreamState::closed);
        EXPECT_FALSE(client.files.exists("grafdata.tmp"));
    }
}

TEST(ClientSync, AClientAnswersAServersQuestionsToo) {
    Client client;
    client.begin();
    client.run_for(100ms);
    client.server->say("cmdServerStatus,");
    client.run_for(5ms);
    EXPECT_EQ(client.count_said("cmdServerIsOK,"), 1);
    client.files.put("nimbrYDay.log", "the client's own");
    client.server->say("cmdRequestYdayFile,");
    client.run_for(305ms);
    EXPECT_EQ(client.count_said("the client's own"), 1);
}

TEST(ClientSync, TheNextStartReadsWhatTheServerSent) {
    struct Case {
        const char* what;
        const char* file;
        std::string text;
        bool taken;
    };
    for (const Case& row : {Case{"tempsync.cfg", "tempsync.cfg", server_settings, true},
                            Case{"sync.cfg", "sync.cfg", server_settings, true},
                            Case{"one without all its lines", "tempsync.cfg", "False\r\nTrue\r\n", false}}) {
        SCOPED_TRACE(row.what);
        World world;
        world.files.put("Nimbry.ini", main_section("fromnet=True\r\n"));
        world.files.put(row.file, row.text);
        world.start();
        EXPECT_EQ(world.state().units.temperature == TemperatureUnit::fahrenheit, row.taken);
        EXPECT_EQ(world.state().settings.tmidnight, row.taken);
        EXPECT_EQ(world.setting("Main", "tmidnight"), "") << "into the state only";
    }
    World both;
    both.files.put("Nimbry.ini", main_section("fromnet=True\r\n"));
    both.files.put("tempsync.cfg", server_settings);
    both.files.put("sync.cfg",
                   "False\r\nFalse\r\nTrue\r\nFalse\r\nTrue\r\nTrue\r\nFalse\r\nFalse\r\nTrue\r\nFalse\r\nFalse\r\n"
                   "False\r\nTrue\r\n5\r\nFalse\r\n999\r\n999\r\n");
    both.start();
    EXPECT_EQ(both.state().units.temperature, TemperatureUnit::fahrenheit) << "tempsync.cfg comes first";
    EXPECT_TRUE(both.state().settings.tmidnight);

    StartedWorld alone;
    alone.files.put("tempsync.cfg", server_settings);
    alone.act([&] { initprog(alone.copy()); });
    alone.run_for(2s);
    EXPECT_EQ(alone.state().units.temperature, TemperatureUnit::celsius) << "only a client reads it";
}

}  // namespace
}  // namespace nimbry::test
