#include "engine/publish/perform_upload.h"

#include <gtest/gtest.h>

#include <map>

#include "engine/displays/additional_window.h"
#include "engine/publish/ftp_watchdog.h"
#include "engine/publish/published_files.h"
#include "tests/engine/publish/upload_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using Names = std::vector<std::string>;

TEST(PerformUpload, LogsInAsTheSettingsSay) {
    UploadWorld world;
    FTPupload(world.copy);
    ASSERT_EQ(world.transfers.ftp.logins.size(), 1U);
    const FtpServer& server = world.transfers.ftp.logins.front();
    EXPECT_EQ(server.host, "ftp.example.net");
    EXPECT_EQ(server.port, 21);
    EXPECT_EQ(server.user, "me");
    EXPECT_EQ(server.password, "secret");
    EXPECT_EQ(server.directory, "web");
    EXPECT_TRUE(server.active);
    EXPECT_EQ(server.encryption, Encryption::none);
}

TEST(PerformUpload, GoesPassivelySecurelyAndToAnotherPort) {
    UploadWorld world;
    world.settings().FTPact = false;
    world.settings().FTPRemDir = "  ";
    for (const auto& [word, encryption] : std::map<std::string, Encryption>{{"none", Encryption::none},
                                                                            {"Explicit ", Encryption::explicit_tls},
                                                                            {"implicit", Encryption::implicit_tls},
                                                                            {"whatever", Encryption::none}}) {
        world.settings().FTPSecurity = word;
        FTPupload(world.copy);
        EXPECT_EQ(world.transfers.ftp.logins.back().encryption, encryption) << word;
        EXPECT_FALSE(world.transfers.ftp.logins.back().active);
        EXPECT_EQ(world.transfers.ftp.logins.back().directory, "");
    }
    for (const auto& [text, port] : std::map<std::string, int>{
             {"2121", 2121}, {"65535", 65535}, {"65536", 21}, {"0", 21}, {"-1", 21}, {"", 21}, {"x", 21}}) {
        world.state.settings.FTPPort = text;
        FTPupload(world.copy);
        EXPECT_EQ(world.transfers.ftp.logins.back().port, port) << text;
    }
}

/// Everything that an upload can send.
struct FullFolder : UploadWorld {
    FullFolder() {
        for (const char* name : {"myhtml3.html", "myhtml99.html", "myhtml100.html"}) files.put(name, "page");
        for (const char* name : {"VidCap.jpg", "VidCap.png", "nimbrywap.wml", "nimbrysummary.html", "extra.txt",
                                 "listed.txt", "NimbData.txt", "nimbryUI.txt", "wxtext.txt"})
            files.put(name, "x");
        files.put("NBYFiles.txt", "listed.txt\r\n");
        settings().Additional_Files = "extra.txt";
        upload().ExtraFileCounter = 1;
        state.records.summary_uploaded = false;
    }
};

const Names everything{"index.html", "index3.html",        "index99.html",  "VidCap.jpg", "VidCap.png",
                       "wx.wml",     "nimbrysummary.html", "nimbryraw.txt", "extra.txt",  "listed.txt"};

TEST(PerformUpload, SendsInThisOrderAndTakesLeave) {
    FullFolder world;
    FTPupload(world.copy);
    EXPECT_EQ(world.sent(), everything);
    EXPECT_EQ(world.transfers.ftp.sent.front().local, world.files.path("nbyxauto.html"));
    EXPECT_EQ(world.transfers.ftp.quits, 1);
    EXPECT_EQ(world.transfers.ftp.open, 0);
    EXPECT_EQ(world.transfers.ftp.dropped, 0);
    EXPECT_TRUE(world.popups().empty());
    EXPECT_TRUE(world.logged().empty());
}

TEST(PerformUpload, PausesBeforeEachFile) {
    FullFolder world;
    FTPupload(world.copy);
    const auto& sent = world.transfers.ftp.sent;
    // 10 ms for a file, then 50 ms; the pictures have 50 ms of their own.
    EXPECT_EQ(sent[1].at - sent[0].at, 60ms);
    EXPECT_EQ(sent[3].at - sent[2].at, 110ms);
    EXPECT_EQ(sent[4].at - sent[3].at, 60ms);
}

TEST(PerformUpload, PausesBeforeItLooksAndBeforeItTakesLeave) {
    UploadWorld world;
    const Instant begun = world.clock.monotonic();
    FTPupload(world.copy);
    const auto& sent = world.transfers.ftp.sent;
    ASSERT_EQ(world.sent(), (Names{"index.html", "nimbryraw.txt"}));
    EXPECT_EQ(sent[0].at - begun, 110ms);                   // 50, the login's 10, 50
    EXPECT_EQ(sent[1].at - sent[0].at, 110ms);              // its own 10, 50 before the pictures, 50
    EXPECT_EQ(world.clock.monotonic() - sent[1].at, 70ms);  // its own 10, 50, the leave's 10
}

TEST(PerformUpload, SendsNoPageUnderANameWithoutDot) {
    FullFolder world;
    world.files.take_away("myhtml100.html");  // it has no name to link to
    world.settings().FTPRemoteFile = "index";
    FTPupload(world.copy);
    EXPECT_EQ(world.sent(), Names(everything.begin() + 3, everything.end()));
    EXPECT_TRUE(world.popups().empty());
}

TEST(PerformUpload, LeavesOutOldPictures) {
    for (const auto& [age, names] :
         std::map<std::chrono::seconds, Names>{{359s, {"VidCap.jpg", "VidCap.png"}}, {360s, {"VidCap.png"}}}) {
        UploadWorld world;
        world.settings().FTPRemoteFile = "none";
        world.state.publish.FtpMinutes = 2;
        world.files.put("VIDCAP.JPG", "x");
        world.clock.set_computer_time(world.clock.computer_time() + age);
        world.files.put("VidCap.png", "x");
        PerformUpload(world.copy);
        EXPECT_EQ(world.sent(), names) << age.count();
    }
}

TEST(PerformUpload, SendsASummaryOnceWhileItIsFresh) {
    UploadWorld world;
    world.files.put("nimbrysummary.html", "x");
    world.state.records.summary_uploaded = false;
    const auto sends = [&] {
        world.transfers.ftp.sent.clear();
        PerformUpload(world.copy);
        const Names names = world.sent();
        return std::find(names.begin(), names.end(), "nimbrysummary.html") != names.end();
    };
    EXPECT_TRUE(sends());
    EXPECT_TRUE(world.state.records.summary_uploaded);
    EXPECT_FALSE(sends());

    world.state.records.summary_uploaded = false;
    world.transfers.ftp.puts["nimbrysummary.html"] = {.end = {.fault = "553 No"}};
    EXPECT_TRUE(sends());
    EXPECT_FALSE(world.state.records.summary_uploaded);
    world.transfers.ftp.puts.clear();

    world.settings().ChkEnableFTP = false;
    EXPECT_FALSE(sends());
    world.settings().ChkEnableFTP = true;
    world.clock.set_computer_time(world.clock.computer_time() + 6min);
    EXPECT_FALSE(sends());
}

TEST(PerformUpload, SendsAdditionalFilesWithEverySoManyUploads) {
    for (const auto& [count, uploads] : std::map<std::string, std::vector<int>>{{"1", {2, 3, 4, 5, 6, 7, 8}},
                                                                                {"2", {2, 4, 6, 8}},
                                                                                {"3", {2, 5, 8}},
                                                                                {"0", {2, 3, 4, 5, 6, 7, 8}},
                                                                                {"-4", {2, 3, 4, 5, 6, 7, 8}},
                                                                                {"x", {2, 3, 4, 5, 6, 7, 8}}}) {
        UploadWorld world;
        world.files.put("extra.txt", "x");
        world.settings().Additional_Files = "extra.txt";
        world.settings().UploadCount = count;
        std::vector<int> with;
        for (int upload = 1; upload <= 8; ++upload) {
            world.transfers.ftp.sent.clear();
            PerformUpload(world.copy);
            if (!world.sent().empty() && world.sent().back() == "extra.txt") with.push_back(upload);
        }
        EXPECT_EQ(with, uploads) << count;
    }
}

TEST(PerformUpload, CountsOnlyUploadsThatGetPastTheAdditionalFiles) {
    UploadWorld world;
    world.files.put("extra.txt", "x");
    world.files.put("wx.wml", "x");
    world.settings().Additional_Files = "extra.txt";
    world.transfers.ftp.puts["wx.wml"] = {.end = {.fault = "553 No"}};
    PerformUpload(world.copy);
    EXPECT_EQ(world.upload().ExtraFileCounter, 0);
    world.transfers.ftp.puts.clear();
    world.upload().ExtraFileCounter = 1;
    world.transfers.ftp.puts["extra.txt"] = {.end = {.fault = "553 No"}};
    PerformUpload(world.copy);
    EXPECT_EQ(world.upload().ExtraFileCounter, 1);
}

TEST(PerformUpload, SendsAdditionalFilesUnderTheirBareNames) {
    UploadWorld world;
    world.files.put("/elsewhere/a.txt", "x");
    world.files.put("b.txt", "x");
    world.files.put("sub\\c.txt", "x");
    world.settings().Additional_Files = " /elsewhere/a.txt ,, gone.txt,b.txt, sub\\c.txt ,";
    world.upload().ExtraFileCounter = 1;
    PerformUpload(world.copy);
    EXPECT_EQ(world.sent(), (Names{"a.txt", "b.txt", "c.txt"}));
    EXPECT_EQ(world.transfers.ftp.sent.front().local, "/elsewhere/a.txt");
}

TEST(PerformUpload, SendsAndDeletesTheUsersList) {
    UploadWorld world;
    world.files.put("/elsewhere/a.txt", "x");
    world.files.put("b.txt", "x");
    world.files.put("NBYFiles.txt", "  /elsewhere/a.txt\r\n\r\ngone.txt\nb.txt");
    PerformUpload(world.copy);
    EXPECT_EQ(world.sent(), (Names{"a.txt", "b.txt"}));
    EXPECT_FALSE(world.files.exists("NBYFiles.txt"));

    world.files.put("NBYFiles.txt", "");
    PerformUpload(world.copy);
    EXPECT_FALSE(world.files.exists("NBYFiles.txt"));
}

TEST(PerformUpload, KeepsTheListWhenOneOfItsFilesFails) {
    UploadWorld world;
    world.files.put("a.txt", "x");
    world.files.put("NBYFiles.txt", "a.txt\r\n");
    world.transfers.ftp.puts["a.txt"] = {.end = {.fault = "553 No"}};
    PerformUpload(world.copy);
    EXPECT_TRUE(world.files.exists("NBYFiles.txt"));
}

TEST(PerformUpload, EndsWithTheFirstFileThatFails) {
    FullFolder world;
    world.transfers.ftp.puts["VidCap.jpg"] = {.end = {.fault = "553 Could not create file."}};
    FTPupload(world.copy);
    EXPECT_EQ(world.sent(), Names(everything.begin(), everything.begin() + 4));
    EXPECT_EQ(world.transfers.ftp.quits, 0);
    EXPECT_EQ(world.transfers.ftp.open, 0);
    EXPECT_EQ(world.logged(), Names{" FTP 553 Could not create file."});
    EXPECT_EQ(world.popups(), Names{"FTP Error: Nimbry has encountered an FTP upload problem"});
    EXPECT_FALSE(world.upload().FtpTransferError);
}

TEST(PerformUpload, DoesNotBeginWhereTheWatchdogHasBarkedAlready) {
    UploadWorld world;
    world.upload().FtpTimedOut = true;
    restart_watchdog(world.copy);
    PerformUpload(world.copy);
    EXPECT_TRUE(world.transfers.ftp.logins.empty());
    EXPECT_TRUE(world.upload().FtpConnectFailed);
    EXPECT_FALSE(world.upload().FtpTimedOut);
    EXPECT_FALSE(world.timers.running(TimerId::TimFTPTOT));
}

TEST(PerformUpload, NamesWhyItCouldNotConnect) {
    for (const auto& [number, name] : std::map<int, std::string>{{4009, "Login Refused"},
                                                                 {5001, "Unknown Host"},
                                                                 {5002, "No Reply"},
                                                                 {5004, "Connect Rejected"},
                                                                 {5007, "Timed out"},
                                                                 {6001, "Unexpected Answer"},
                                                                 {27, "27"}}) {
        UploadWorld world;
        world.transfers.ftp.connect = {.end = {.status = number}};
        FTPupload(world.copy);
        EXPECT_TRUE(world.sent().empty());
        EXPECT_EQ(world.transfers.ftp.quits, 0);
        EXPECT_EQ(world.logged(), Names{" Unable to make a connection to the remote FTP server: " + name});
        EXPECT_EQ(world.popups(), Names{"FTP Error: Nimbry has encountered an FTP connection problem"});
        EXPECT_FALSE(world.upload().FtpConnectFailed);
        EXPECT_EQ(world.state.publish.last_ftp.result, "Unable to make a connection to the remote FTP server: " + name);
    }
}

TEST(PerformUpload, SaysThatThereIsNoServerToConnectTo) {
    UploadWorld world;
    world.settings().FTPServer = " ";
    world.transfers.ftp.connect = {.end = {.status = 3, .words = "URL using bad/illegal format or missing URL"}};
    FTPupload(world.copy);
    EXPECT_EQ(world.state.publish.last_ftp.result,
              "Unable to make a connection to the remote FTP server: 3 (The Remote FTP Server field has not been "
              "completed.)");
    world.settings().FTPServer = "ftp.example.net";
    FTPupload(world.copy);
    EXPECT_EQ(world.state.publish.last_ftp.result,
              "Unable to make a connection to the remote FTP server: 3 (URL using bad/illegal format or missing URL)");
}

TEST(PerformUpload, LogsSuccessIfTheUserWantsIt) {
    UploadWorld world;
    world.state.settings.mlogftp = true;
    FTPupload(world.copy);
    EXPECT_EQ(world.logged(), Names{" FTP Upload success"});
    EXPECT_EQ(world.state.publish.last_ftp.result, "ok");
    EXPECT_EQ(world.state.publish.last_ftp.runs, 1U);
}

TEST(PerformUpload, LocksThePanelsButtonsAndTurnsTheFirstRed) {
    UploadWorld world;
    std::array<Box, 7>& buttons = world.state.menu.fmb;
    buttons[0].fore = 5;
    for (Box& button : buttons) button.enabled = true;
    world.transfers.ftp.puts["index.html"] = {.after = 1s};
    world.pauses.start([&] { FTPupload(world.copy); });
    world.pauses.pause(500ms);
    EXPECT_EQ(buttons[0].fore, colours::red);
    for (const Box& button : buttons) EXPECT_FALSE(button.enabled);
    world.pauses.pause(5s);
    EXPECT_EQ(buttons[0].fore, 5U);
    for (const Box& button : buttons) EXPECT_TRUE(button.enabled);
}

TEST(PerformUpload, UnlocksTheButtonsAfterEachKindOfFailure) {
    for (const bool at_login : {true, false}) {
        UploadWorld world;
        if (at_login) {
            world.transfers.ftp.connect = {.end = {.status = 5002}};
        } else {
            world.transfers.ftp.put = {.end = {.fault = "553 No"}};
        }
        FTPupload(world.copy);
        for (const Box& button : world.state.menu.fmb) EXPECT_TRUE(button.enabled);
        EXPECT_FALSE(world.timers.running(TimerId::TimFTPTOT));
    }
}

struct MeetingCase {
    const char* law;
    bool succeeds, open_before, closed_within;
};

TEST(PerformUpload, LeavesTheButtonOfAnOpenWindowOff) {
    const MeetingCase cases[] = {
        {"the window is open when it ends", true, true, false},
        {"the window is open when it fails", false, true, false},
        {"the window closes while it runs", true, true, true},
        {"the window closes while it fails", false, true, true},
        {"the window is not open", true, false, false},
    };
    for (const MeetingCase& c : cases) {
        SCOPED_TRACE(c.law);
        UploadWorld world;
        const Box& button = world.state.menu.fmb[4];
        if (c.open_before) mnuAdditional(world.copy);
        world.transfers.ftp.puts["index.html"] = {.after = 1s};
        if (!c.succeeds) world.transfers.ftp.puts["index.html"].end = {.fault = "553 No"};
        world.pauses.start([&] { FTPupload(world.copy); });
        world.pauses.pause(500ms);
        EXPECT_FALSE(button.enabled);
        if (c.closed_within) additional_closed(world.copy);
        EXPECT_FALSE(button.enabled) << "with the rest of the row";
        EXPECT_FALSE(world.state.menu.fmb[3].enabled);
        world.pauses.pause(5s);
        EXPECT_TRUE(world.state.menu.fmb[3].enabled);
        EXPECT_EQ(button.enabled, c.closed_within || !c.open_before);
    }
}

TEST(PerformUpload, ReportsARunTimeErrorOfItsOwn) {
    UploadWorld world;
    world.files.put("NBYFiles.txt", "");
    world.transfers.ftp.connect.after = 1s;
    world.pauses.start([&] { FTPupload(world.copy); });
    world.pauses.pause(500ms);
    world.files.fail_call(2, FileResult::permission);  // the list is read, and then it cannot be deleted
    world.pauses.pause(5s);
    EXPECT_EQ(world.logged(), Names{" Error 70 in PerformUpload"});
    EXPECT_EQ(world.popups(), Names{"FTP Error: \r\nNimbry has encountered a general FTP problem"});
    EXPECT_FALSE(world.state.publish.uloadftpbusy);
}

TEST(PublishedFiles, HaveBareNames) {
    EXPECT_EQ(fnamesplit("/a/b.txt"), "b.txt");
    EXPECT_EQ(fnamesplit("C:\\a\\b.txt"), "b.txt");
    EXPECT_EQ(fnamesplit("a\\b/c.txt"), "c.txt");
    EXPECT_EQ(fnamesplit("c.txt"), "c.txt");
    EXPECT_EQ(fnamesplit("a/"), "");
}

}  // namespace
}  // namespace nimbry::test
