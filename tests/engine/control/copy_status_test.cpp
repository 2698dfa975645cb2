#include "engine/control/copy_status.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/world/world.h"

namespace nimbry::test {
namespace {

class CopyStatusTest : public testing::Test {
protected:
    [[nodiscard]] std::string lines() { return status_lines(copy_status(world.copy())); }
    [[nodiscard]] bool tells(const std::string& line) { return lines().find(line + '\n') != std::string::npos; }

    World world;
};

TEST_F(CopyStatusTest, BeforeTheFirstTrainTheStationTimeIsUnknown) {
    world.start({.has_window = false, .device = "/dev/ttyUSB7"});
    EXPECT_EQ(status_json(copy_status(world.copy())),
              R"({"version":"2.02","folder":")" + world.files.path("").substr(0, world.files.path("").size() - 1) +
                  R"(","role":"alone","fullystarted":false,"station_time":null,)"
                  R"("serial":{"device":"/dev/ttyUSB7","open":true},"alarms":{"active":null},)"
                  R"("frames":{"trains":0,"lone":0,"bad_checksum":0,"wrong_length":0,"unknown_tag":0,)"
                  R"("before_first_train":0,"bytes_thrown_away":0},)"
                  R"("uploads":{"ftp":{"last_end":null,"last_result":null,"next_due":null},)"
                  R"("mail":{"last_end":null,"last_result":null,"next_due":null},)"
                  R"("weather":{"last_end":null,"last_result":null,"next_due":null},)"
                  R"("aprs":{"last_end":null,"last_result":null,"next_due":null}},)"
                  R"("pages":{"name":null,"local_folder":null,"local_folder_found":null},)"
                  R"("network":{"peers":null,"last_datagram":null},)"
                  R"("sync":{"running":false,"peer":null,"last_end":null,"last_result":null},"waiting_for":null})"
                  "\n");
}

TEST_F(CopyStatusTest, FramesAreCountedAndTheStationsTimeIsTold) {
    world.start();
    world.deliver(write_lone_wind({}));
    world.send_train();
    world.run_for(std::chrono::seconds{10});
    world.deliver(write_lone_wind({}));
    Bytes spoiled = write_train({});
    spoiled.back() = static_cast<std::uint8_t>(spoiled.back() + 1);
    world.deliver(spoiled);
    EXPECT_TRUE(tells("fullystarted\ttrue"));
    EXPECT_TRUE(tells("station_time\t05 Oct 2026 14:00:02")) << lines();
    EXPECT_TRUE(tells("frames.trains\t1"));
    EXPECT_TRUE(tells("frames.lone\t1"));
    EXPECT_TRUE(tells("frames.bad_checksum\t1"));
    EXPECT_TRUE(tells("frames.before_first_train\t1"));
}

TEST_F(CopyStatusTest, NamesTheMachineThatAServerIsSynchronisingWith) {
    world.files.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\nbcastnet=True\r\nnumofentries=1\r\niplist(1)=10.1.2.3\r\n");
    world.start();
    world.state().havegrafdata = true;
    EXPECT_TRUE(tells("sync.running\tfalse"));
    const ScriptedPeerPtr client = world.streams.call(60131, "10.1.2.3");
    world.run_for(std::chrono::milliseconds{20});
    EXPECT_TRUE(tells("sync.running\ttrue"));
    EXPECT_TRUE(tells("sync.peer\t10.1.2.3")) << lines();
}

TEST_F(CopyStatusTest, TheRoleFollowsTheSettings) {
    struct Case {
        const char* what;
        bool fromnet, bcastnet;
        const char* role;
    };
    for (const Case& c : {Case{"neither", false, false, "alone"}, Case{"it forwards", false, true, "server"},
                          Case{"it takes groups from the network", true, false, "client"},
                          Case{"both: a client is no server", true, true, "client"}}) {
        SCOPED_TRACE(c.what);
        world.state().settings.fromnet = c.fromnet;
        world.state().settings.bcastnet = c.bcastnet;
        EXPECT_TRUE(tells(std::string("role\t") + c.role));
    }
}

TEST_F(CopyStatusTest, TheDeviceIsTheChosenPortsUnlessOneWasGivenAndAClientHasNone) {
    world.state().settings.fcom2 = true;
    world.state().settings.SerialPort2 = "/dev/ttyACM1";
    EXPECT_TRUE(tells("serial.device\t/dev/ttyACM1"));
    world.state().run.device = "/dev/f\xFCr";
    EXPECT_TRUE(tells("serial.device\t/dev/für"));
    world.state().settings.fromnet = true;
    EXPECT_TRUE(tells("serial.device\t"));
    EXPECT_TRUE(tells("serial.open\tfalse"));
}

TEST_F(CopyStatusTest, TheReadingsInAlarmAreNamedWhileTheyAre) {
    world.start();
    EXPECT_TRUE(tells("alarms.active\t"));
    AlarmsDialog& dialog = world.state().alarms.frmAlarms;
    dialog.chkAOuTempHi = dialog.chkARainAm = true;
    dialog.ATempHi = 20;
    dialog.ARainAm = -1;
    StationReadings hot;
    hot.temperature.outdoor = 20.1;
    world.send_trains(2, hot);
    EXPECT_TRUE(tells("alarms.active\tOutdoor Temp., Rainfall")) << lines();
    // TimAlarm gives the boxes their own colour back.
    world.run_for(std::chrono::seconds{30});
    EXPECT_TRUE(tells("alarms.active\t")) << lines();
}

TEST_F(CopyStatusTest, WhatKeepsPagesFromGoingOutWithoutAWordIsTold) {
    struct Case {
        const char* what;
        const char* remote_file;
        bool local_save;
        const char* folder;
        const char* name;
        const char* local_folder;
        const char* found;
    };
    world.files.add_folder("/srv/www");
    for (const Case& c :
         {Case{"a new copy", "", false, "C:\\", "", "", ""},
          Case{"a name without a dot", "weather", false, "", "", "", ""},
          Case{"all is well", "index.html", true, "/srv/www", "index.html", "/srv/www", "true"},
          Case{"a separator at the end", " index.html ", true, "/srv/www/", "index.html", "/srv/www/", "true"},
          Case{"the local save switched on, with the folder as it was", "a.b", true, "C:\\", "a.b", "C:\\", "false"},
          Case{"a folder that is away", "a.b", true, "/mnt/n\xE4s", "a.b", "/mnt/näs", "false"},
          Case{"none is named", "a.b", true, "", "a.b", "", "false"}}) {
        SCOPED_TRACE(c.what);
        InternetDialog& settings = world.state().publish.NimbryFTPSetup;
        settings.FTPRemoteFile = c.remote_file;
        settings.chkLocal = c.local_save;
        settings.txtLocalPath = c.folder;
        EXPECT_TRUE(tells(std::string("pages.name\t") + c.name)) << lines();
        EXPECT_TRUE(tells(std::string("pages.local_folder\t") + c.local_folder)) << lines();
        EXPECT_TRUE(tells(std::string("pages.local_folder_found\t") + c.found)) << lines();
    }
}

TEST(StatusTextTest, FieldsWithPointsStandInObjectsAndUnknownOnesAreNull) {
    const std::vector<StatusField> fields{
        {"a", std::uint64_t{7}}, {"b.x", true}, {"b.c.y", std::string("\"")}, {"b.c.z", {}}, {"d", false}};
    EXPECT_EQ(status_json(fields), R"({"a":7,"b":{"x":true,"c":{"y":"\"","z":null}},"d":false})"
                                   "\n");
    EXPECT_EQ(status_lines(fields), "a\t7\nb.x\ttrue\nb.c.y\t\"\nb.c.z\t\nd\tfalse\n");
}

}  // namespace
}  // namespace nimbry::test
