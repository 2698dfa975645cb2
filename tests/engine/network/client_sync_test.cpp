#include "engine/network/client_sync.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "engine/core/initprog.h"
#include "engine/network/syncsock.h"
#include "tests/engine/network/syncing_client.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

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
