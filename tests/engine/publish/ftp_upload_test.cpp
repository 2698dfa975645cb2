#include "engine/publish/ftp_upload.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/core/process_cycle.h"
#include "engine/publish/forced_run.h"
#include "engine/publish/publishing.h"
#include "tests/engine/publish/upload_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

/// A copy that puts its pages into a folder.
class FtpUpload : public testing::Test {
protected:
    FtpUpload() {
        world.files.put("myhtml.html", "~~WEBOSHUMID~~");
        world.files.add_folder("/web");
        world.state.publish.NimbryFTPSetup.chkLocal = true;
        world.state.publish.NimbryFTPSetup.txtLocalPath = "/web";
        world.state.publish.NimbryFTPSetup.FTPRemoteFile = "index.html";
    }
    /// The seconds since TimerFTP's start at which the pages were made, within so many ticks of ten seconds.
    std::vector<int> uploads(int ticks) {
        std::vector<int> seconds;
        for (int tick = 1; tick <= ticks; ++tick) {
            world.files.take_away("nbyxauto.html");
            ftp_schedule(world.copy);
            if (world.files.exists("nbyxauto.html")) seconds.push_back(tick * 10);
        }
        return seconds;
    }
    [[nodiscard]] bool made() const { return world.files.exists("nbyxauto.html"); }

    KnownState world;
};

TEST_F(FtpUpload, TheFirstComesAfterThirtySecondsThenByTheInterval) {
    world.state.publish.FtpMinutes = 2;
    EXPECT_EQ(uploads(50), (std::vector<int>{30, 150, 260, 370, 480}));
}

TEST_F(FtpUpload, WithFiveMinutes) {
    world.state.publish.FtpMinutes = 5;
    EXPECT_EQ(uploads(65), (std::vector<int>{30, 330, 620}));
}

TEST_F(FtpUpload, TicksDuringOtherWorkDoNotCount) {
    world.state.publish.FtpMinutes = 2;
    {
        const auto busy = world.state.publish.emailbusy.try_hold();
        EXPECT_TRUE(uploads(5).empty());
    }
    {
        const auto busy = world.state.reports.htmlGenBusy.try_hold();
        EXPECT_TRUE(uploads(5).empty());
    }
    {
        const auto busy = world.state.reports.mailGenBusy.try_hold();
        EXPECT_TRUE(uploads(5).empty());
    }
    world.state.comm.changebusy.set();
    EXPECT_TRUE(uploads(5).empty());
    world.state.comm.changebusy.clear();
    world.state.settings.fromnet = true;
    EXPECT_TRUE(uploads(5).empty());
    world.state.settings.fromnet = false;
    EXPECT_EQ(uploads(3), (std::vector<int>{30}));
}

TEST_F(FtpUpload, ThePagesAreMadeAndPutIntoTheUsersFolder) {
    FTPupload(world.copy);
    EXPECT_EQ(world.files.contents("nbyxauto.html"), "54 %");
    EXPECT_EQ(world.files.contents("/web/index.html"), "54 %");
    EXPECT_FALSE(world.state.publish.uloadftpbusy);
}

TEST_F(FtpUpload, NothingIsMadeWithoutACustomer) {
    world.state.publish.NimbryFTPSetup.chkLocal = false;
    FTPupload(world.copy);
    EXPECT_FALSE(made());
    world.state.publish.NimbryFTPSetup.ChkEnableFTP = true;
    FTPupload(world.copy);
    EXPECT_TRUE(made());
}

TEST_F(FtpUpload, NeitherAClientNorAProgramThatClosesNorASecondOneUploads) {
    world.state.settings.fromnet = true;
    FTPupload(world.copy);
    world.state.settings.fromnet = false;
    world.state.run.ProgramClosing = true;
    FTPupload(world.copy);
    world.state.run.ProgramClosing = false;
    {
        const auto busy = world.state.publish.uloadftpbusy.try_hold();
        FTPupload(world.copy);
    }
    {
        const auto busy = world.state.reports.LocalSaveBusy.try_hold();
        FTPupload(world.copy);
    }
    EXPECT_FALSE(made());
}

TEST_F(FtpUpload, DuringAMailOrAChangeoverItIsPutOff) {
    {
        const auto busy = world.state.reports.mailGenBusy.try_hold();
        FTPupload(world.copy);
    }
    EXPECT_TRUE(world.state.publish.revisitftp);
    world.state.publish.revisitftp = false;
    world.state.comm.changebusy.set();
    FTPupload(world.copy);
    EXPECT_TRUE(world.state.publish.revisitftp);
    EXPECT_FALSE(made());
    EXPECT_FALSE(world.state.publish.uloadftpbusy);
}

TEST_F(FtpUpload, WithNothingToSendItSaysSo) {
    world.files.take_away("myhtml.html");
    world.files.put("myhtml100.html", "of the second hundred: never sent");
    FTPupload(world.copy);
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    EXPECT_EQ(world.notices.balloons[0].what.title, "Template error");
    EXPECT_EQ(world.notices.balloons[0].what.text,
              "Nimbry was unable to complete FTP Upload!\r\nThe template files are missing");
    EXPECT_EQ(world.log_lines().back(), "21 Oct 2026 14:05:07 FTP Upload Failure. Missing template files.");
    for (const char* name : {"myhtml99.html", "nimbrywap.wml", "VidCap.jpg", "VidCap.png"}) {
        world.files.put(name, "x");
        FTPupload(world.copy);
        EXPECT_EQ(world.notices.balloons.size(), 1U) << name;
        world.files.take_away(name);
    }
}

TEST_F(FtpUpload, ItsTimerRunsForTheLocalSaveAlone) {
    processcycle(world.copy);
    EXPECT_TRUE(world.timers.running(TimerId::TimerFTP));
}

TEST_F(FtpUpload, TheSettingsOfSectionFTPAreTaken) {
    world.files.put("Nimbry.ini",
                    "[FTP]\r\nFTPen=True\r\nFTPHours=2\r\nFTPMins=5\r\nFTPRemoteFile=weather.htm\r\n"
                    "MailTitle=Home\r\nAPRSuser=N0CALL\r\nLocalSave=True\r\nLocalPath=/web\r\n");
    world.ini.read();
    getFTP(world.copy);
    const PublishState& publish = world.state.publish;
    EXPECT_TRUE(publish.NimbryFTPSetup.ChkEnableFTP);
    EXPECT_EQ(publish.FtpMinutes, 125);
    EXPECT_EQ(publish.NimbryFTPSetup.FTPRemoteFile, "weather.htm");
    EXPECT_EQ(publish.NimbryFTPSetup.MailTitle, "Home");
    EXPECT_EQ(publish.NimbryFTPSetup.txtAPRSID, "N0CALL");
    EXPECT_TRUE(publish.NimbryFTPSetup.chkLocal);
    EXPECT_EQ(publish.NimbryFTPSetup.txtLocalPath, "/web");
}

TEST_F(FtpUpload, WithoutSettingsEverythingIsOffAndTheIntervalIsTwoMinutes) {
    getFTP(world.copy);
    const PublishState& publish = world.state.publish;
    EXPECT_FALSE(publish.NimbryFTPSetup.ChkEnableFTP);
    EXPECT_FALSE(publish.NimbryFTPSetup.chkLocal);
    EXPECT_EQ(publish.FtpMinutes, 2);
    EXPECT_EQ(publish.NimbryFTPSetup.FTPRemoteFile, "");
    EXPECT_EQ(publish.NimbryFTPSetup.txtLocalPath, "C:\\");
}

// On the line

TEST(FtpUploadOnTheLine, LocalSaveAloneDoesNotTouchTheNetwork) {
    UploadWorld world;
    world.settings().ChkEnableFTP = false;
    world.settings().chkLocal = true;
    FTPupload(world.copy);
    EXPECT_TRUE(world.transfers.ftp.logins.empty());
    EXPECT_TRUE(world.transfers.reachability_asked.empty());
    EXPECT_EQ(world.state.publish.last_ftp.runs, 0U);
}

TEST(FtpUploadOnTheLine, GoesOutForAForcedRunAndAfterAMailThatWantsIt) {
    struct Case {
        const char* name;
        bool forced, too;
        UploadCause cause;
        bool goes;
    };
    for (const Case& c : {Case{"forced", true, false, UploadCause::due, true},
                          Case{"after a mail", false, true, UploadCause::after_mail, true},
                          Case{"by the schedule", false, true, UploadCause::due, false},
                          Case{"a retry after a mail", false, false, UploadCause::after_mail, false}}) {
        SCOPED_TRACE(c.name);
        UploadWorld world;
        world.files.put("VidCap.jpg", "x");
        world.files.put("nimbrysummary.html", "x");
        world.state.records.summary_uploaded = false;
        world.settings().ChkEnableFTP = false;
        world.settings().chkLocal = true;
        world.state.publish.FtpForced = c.forced;
        world.settings().ChkDoEmailToo = c.too;
        FTPupload(world.copy, c.cause);
        EXPECT_EQ(world.transfers.ftp.logins.size(), c.goes ? 1U : 0U);
        // Pictures and summary ask for the switch itself.
        const std::vector<std::string> pages{"index.html", "nimbryraw.txt"};
        EXPECT_EQ(world.sent(), c.goes ? pages : std::vector<std::string>());
    }
}

TEST(FtpUploadOnTheLine, SaysThatThereIsNoConnection) {
    UploadWorld world;
    world.transfers.online = false;
    world.state.settings.NoFTPop = true;
    world.state.publish.revisitftp = true;
    FTPupload(world.copy);
    EXPECT_FALSE(world.state.publish.revisitftp) << "it is not tried again";
    EXPECT_EQ(world.transfers.reachability_asked, (std::vector<std::string>{"ftp.example.net", "ftp.example.net"}));
    EXPECT_TRUE(world.transfers.ftp.logins.empty());
    EXPECT_EQ(world.popups(),
              std::vector<std::string>{
                  "FTP Error: Nimbry was unable to make a connection\r\nand did not complete FTP Upload!"});
    EXPECT_EQ(world.logged(), std::vector<std::string>{" FTP Upload failed: Unable to connect to Internet"});
    EXPECT_FALSE(world.state.publish.uloadftpbusy);
}

TEST(FtpUploadOnTheLine, KeepsFailuresToItselfIfTheUserWantsIt) {
    UploadWorld world;
    world.state.settings.NoFTPop = true;
    world.transfers.ftp.put = {.end = {.fault = "553 No"}};
    FTPupload(world.copy);
    EXPECT_TRUE(world.popups().empty());
    EXPECT_EQ(world.logged(), std::vector<std::string>{" FTP 553 No"});
}

TEST(FtpUploadOnTheLine, TellsThePersonWhoForcedIt) {
    UploadWorld world;
    world.state.settings.NoFTPop = true;
    run_forced(world.copy, ForcedRun::ftp);
    EXPECT_EQ(world.popups(),
              (std::vector<std::string>{
                  "Nimbry Information: Performing a forced FTP upload.\r\nPlease wait until the upload completes\r\n"
                  "and the Internet Settings window re-appears.",
                  "FTP Message: Nimbry has successfully uploaded data to\r\nftp.example.net"}));
    EXPECT_FALSE(world.state.publish.FtpForced);
}

TEST(FtpUploadOnTheLine, HangsUpAfterwardsIfNobodyElseWaitsForTheLine) {
    for (const bool mail_waits : {false, true}) {
        UploadWorld world;
        world.state.publish.ProgramDialled = world.settings().ChkHangup = true;
        world.state.publish.revisitmail = mail_waits;
        FTPupload(world.copy);
        EXPECT_EQ(world.desktop.hang_ups, mail_waits ? 0 : 1);
    }
}

TEST(FtpUploadOnTheLine, IsNotRepeatedAfterItHasRun) {
    UploadWorld world;
    world.state.publish.revisitftp = true;
    FTPupload(world.copy);
    EXPECT_FALSE(world.state.publish.revisitftp);
}

TEST(FtpUploadOnTheLine, LetsASecondCallFallThrough) {
    UploadWorld world;
    world.transfers.ftp.connect.after = 5s;
    world.pauses.start([&] { FTPupload(world.copy); });
    FTPupload(world.copy);
    world.pauses.pause(1s);
    FTPupload(world.copy);
    world.pauses.pause(10s);
    EXPECT_EQ(world.transfers.ftp.logins.size(), 1U);
}

TEST(FtpUploadOnTheLine, EndsWithTheProgram) {
    UploadWorld world;
    world.transfers.ftp.connect.after = std::nullopt;
    world.timers.start(TimerId::TimComFail, world.clock.monotonic());
    world.pauses.start([&] { FTPupload(world.copy); });
    world.pauses.pause(1s);
    world.state.run.ProgramClosing = true;
    world.timers.stop_all();
    world.pauses.cancel_all();
    world.pauses.pause(1s);
    EXPECT_EQ(world.transfers.ftp.open, 0);
    EXPECT_FALSE(world.state.publish.uloadftpbusy);
    EXPECT_FALSE(world.timers.wake_at());
}

TEST(FtpUploadOnTheLine, ALongFirstOneIsNotTheFirstAgain) {
    UploadWorld world;
    world.transfers.ftp.connect.after = 45s;
    world.timers.start(TimerId::TimerFTP, world.clock.monotonic());
    world.pauses.pause(151s);
    EXPECT_EQ(world.transfers.ftp.logins.size(), 2U);  // at 30 and 150 s
}

}  // namespace
}  // namespace nimbry::test
