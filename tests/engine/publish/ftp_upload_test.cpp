#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/core/process_cycle.h"
#include "engine/publish/publishing.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

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

}  // namespace
}  // namespace nimbry::test
