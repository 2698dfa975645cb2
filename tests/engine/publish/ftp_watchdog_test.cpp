#include "engine/publish/ftp_watchdog.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/engine/publish/upload_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

const std::string time_out_popup =
    "FTP upload failure:  FTP has not responded for more than 45 seconds\r\nand the upload has been cancelled.";
const std::string time_out_line = " FTP routine has timed out and the upload has been cancelled";
const std::string connection_popup = "FTP Error: Nimbry has encountered an FTP connection problem";

/// The seconds after which an upload to a silent server is over.
std::chrono::seconds::rep seconds_until_over(UploadWorld& world) {
    const Instant begun = world.clock.monotonic();
    FTPupload(world.copy);
    return std::chrono::duration_cast<std::chrono::seconds>(world.clock.monotonic() - begun).count();
}

TEST(FtpWatchdog, EndsASilentLoginByTheInterval) {
    for (const auto& [minutes, seconds] :
         std::map<int, long>{{0, 50}, {1, 50}, {2, 100}, {4, 200}, {5, 200}, {60, 200}}) {
        UploadWorld world;
        world.state.publish.FtpMinutes = minutes;
        world.transfers.ftp.connect.after = std::nullopt;
        EXPECT_EQ(seconds_until_over(world), seconds) << minutes;
        EXPECT_EQ(world.logged(), Texts{time_out_line});
        EXPECT_EQ(world.popups(), (Texts{time_out_popup, connection_popup}));
        EXPECT_EQ(world.transfers.ftp.dropped, 1);
        EXPECT_FALSE(world.state.publish.uloadftpbusy);
        EXPECT_FALSE(world.upload().FtpTimedOut);
        EXPECT_FALSE(world.timers.running(TimerId::TimFTPTOT));
        EXPECT_EQ(world.state.publish.last_ftp.result, time_out_line.substr(1));
    }
}

TEST(FtpWatchdog, StartsAnewWithEachFile) {
    UploadWorld world;
    world.files.put("wx.wml", "x");
    world.files.put("nimbryraw.txt", "x");
    world.transfers.ftp.puts["index.html"].after = 90s;
    world.transfers.ftp.puts["wx.wml"].after = 90s;
    world.transfers.ftp.puts["nimbryraw.txt"].after = std::nullopt;
    EXPECT_EQ(seconds_until_over(world), 280);
    EXPECT_EQ(world.sent(), (Texts{"index.html", "wx.wml", "nimbryraw.txt"}));
    EXPECT_EQ(world.popups(), (Texts{time_out_popup, connection_popup}));
}

TEST(FtpWatchdog, WatchesTheLeaveTaking) {
    UploadWorld world;
    world.state.publish.FtpMinutes = 1;
    world.transfers.ftp.quit.after = std::nullopt;
    EXPECT_EQ(seconds_until_over(world), 50);
    EXPECT_EQ(world.transfers.ftp.quits, 1);
    EXPECT_EQ(world.popups(), (Texts{time_out_popup, connection_popup}));
}

TEST(FtpWatchdog, TellsEvenThoseWhoSuppressMessages) {
    UploadWorld world;
    world.state.settings.NoFTPop = true;
    world.transfers.ftp.connect.after = std::nullopt;
    FTPupload(world.copy);
    EXPECT_EQ(world.popups(), Texts{time_out_popup});
}

TEST(FtpWatchdog, ForgetsWhatWasPutOffAndHangsUp) {
    UploadWorld world;
    PublishState& publish = world.state.publish;
    world.transfers.ftp.connect.after = std::nullopt;
    world.settings().ChkHangup = publish.ProgramDialled = true;
    world.pauses.start([&] { FTPupload(world.copy); });
    world.pauses.pause(99s);
    publish.revisitftp = publish.revisitmail = true;
    EXPECT_EQ(world.desktop.hang_ups, 0);
    world.pauses.pause(2s);
    EXPECT_FALSE(publish.revisitftp);
    EXPECT_FALSE(publish.revisitmail);
    EXPECT_EQ(world.desktop.hang_ups, 1);
}

TEST(FtpWatchdog, ForgetsTheTextOfTheMailThatWaitedAndOfNoOther) {
    struct Case {
        const char* name;
        void (*end)(Copy&);
    };
    for (const Case& c : {Case{"time-out",
                               [](Copy& copy) {
                                   copy.state.publish.upload.watchdog_ticks = 3;
                                   ftp_time_out(copy);
                               }},
                          Case{"stuck", cancel_ftp}}) {
        SCOPED_TRACE(c.name);
        UploadWorld world;
        PublishState& publish = world.state.publish;
        const auto upload = publish.uloadftpbusy.try_hold();
        send_alarm_mail(world.copy);
        ASSERT_TRUE(publish.revisitmail);
        {
            const auto made_now = publish.emailbusy.try_hold();
            c.end(world.copy);
            EXPECT_TRUE(publish.pending_mail) << "it is another mail's by now";
        }
        publish.revisitmail = true;
        c.end(world.copy);
        EXPECT_FALSE(publish.pending_mail);
        EXPECT_EQ(world.state.reports.mail_body, "");
    }
}

TEST(FtpWatchdog, LetsNoOtherUploadInBeforeThisOneHasReturned) {
    UploadWorld world;
    world.transfers.ftp.connect.after = std::nullopt;
    world.timers.start(TimerId::TimComFail, world.clock.monotonic());
    world.pauses.start([&] { FTPupload(world.copy); });
    bool busy_at_time_out = false, others_go_on = false;
    world.pauses.after(99s, [&] {
        world.pauses.wait_until([&] { return world.upload().FtpTimedOut; });
        busy_at_time_out = static_cast<bool>(world.state.publish.uloadftpbusy);
        others_go_on = world.timers.running(TimerId::TimComFail);
    });
    world.pauses.pause(101s);
    EXPECT_TRUE(busy_at_time_out);
    EXPECT_TRUE(others_go_on) << "the time-out wakes the other timers, not only the end of the upload";
    EXPECT_FALSE(world.state.publish.uloadftpbusy);
}

TEST(FtpWatchdog, RestsWhenNobodyWaitsForAServer) {
    struct Case {
        const char* name;
        void (*scene)(UploadWorld&);
    };
    for (const Case& c :
         {Case{"after a good upload", [](UploadWorld&) {}},
          Case{"nothing to send", [](UploadWorld& w) { w.files.take_away("myhtml.html"); }},
          Case{"no network", [](UploadWorld& w) { w.transfers.online = false; }},
          Case{"during a mail", [](UploadWorld& w) { w.state.reports.mailGenBusy.set(); }},
          Case{"local only",
               [](UploadWorld& w) {
                   w.settings().ChkEnableFTP = false;
                   w.settings().chkLocal = true;
               }},
          Case{"login refused", [](UploadWorld& w) { w.transfers.ftp.connect = {.end = {.status = 4009}}; }},
          Case{"file refused", [](UploadWorld& w) { w.transfers.ftp.put = {.end = {.fault = "5"}}; }}}) {
        SCOPED_TRACE(c.name);
        UploadWorld world;
        c.scene(world);
        FTPupload(world.copy);
        EXPECT_FALSE(world.timers.running(TimerId::TimFTPTOT));
        world.pauses.pause(300s);
        EXPECT_FALSE(world.upload().FtpTimedOut);
    }
}

TEST(FtpWatchdog, OtherTimersRestDuringAnUploadAndGoOnAsTheyWere) {
    for (const bool ran : {true, false}) {
        UploadWorld world;
        if (ran) {
            world.timers.start(TimerId::TimComFail, world.clock.monotonic());
            world.timers.start(TimerId::TimAlarm, world.clock.monotonic());
        }
        world.transfers.ftp.connect.after = 5s;
        world.pauses.start([&] { FTPupload(world.copy); });
        world.pauses.pause(1s);
        EXPECT_FALSE(world.timers.running(TimerId::TimComFail));
        EXPECT_FALSE(world.timers.running(TimerId::TimAlarm));
        world.pauses.pause(6s);
        EXPECT_EQ(world.timers.running(TimerId::TimComFail), ran);
        EXPECT_EQ(world.timers.running(TimerId::TimAlarm), ran);
    }
}

TEST(FtpWatchdog, AnAlarmOfTheMeantimeGoesOn) {
    UploadWorld world;
    world.transfers.ftp.connect.after = 5s;
    world.pauses.start([&] { FTPupload(world.copy); });
    world.pauses.pause(1s);
    world.timers.start(TimerId::TimAlarm, world.clock.monotonic());
    world.pauses.pause(6s);
    EXPECT_TRUE(world.timers.running(TimerId::TimAlarm));
}

TEST(StuckFtp, IsBrokenOff) {
    UploadWorld world;
    PublishState& publish = world.state.publish;
    world.transfers.ftp.connect.after = std::nullopt;
    world.pauses.start([&] { FTPupload(world.copy); });
    world.pauses.pause(10s);
    publish.revisitftp = publish.revisitmail = publish.revisitwu = true;
    cancel_ftp(world.copy);
    EXPECT_FALSE(publish.revisitftp || publish.revisitmail || publish.revisitwu);
    world.pauses.pause(1s);
    EXPECT_FALSE(publish.uloadftpbusy);
    EXPECT_EQ(world.transfers.ftp.open, 0);
    EXPECT_EQ(world.popups(), Texts{connection_popup});
    EXPECT_FALSE(world.timers.running(TimerId::TimFTPTOT));
}

}  // namespace
}  // namespace nimbry::test
