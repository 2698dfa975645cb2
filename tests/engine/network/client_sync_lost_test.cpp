#include "engine/network/client_sync.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "engine/network/start_network.h"
#include "engine/network/syncsock.h"
#include "tests/engine/network/syncing_client.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

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

}  // namespace
}  // namespace nimbry::test
