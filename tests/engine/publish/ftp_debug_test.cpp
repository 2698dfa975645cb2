#include "engine/publish/ftp_debug.h"

#include <gtest/gtest.h>

#include "engine/core/switches.h"
#include "tests/engine/publish/upload_world.h"

namespace nimbry::test {
namespace {

/// A server that is heard.
struct TalkingServer : UploadWorld {
    TalkingServer() {
        transfers.ftp.connect.said = {{"", "220 ready"}, {"USER me", "331 password"}, {"PASS ****", "230 in"}};
        transfers.ftp.put.said = {{"STOR index.html", "226 done"}};
        transfers.ftp.quit.said = {{"QUIT", "221 bye"}};
        settings().FTPact = false;
    }
};

TEST(FtpDebugWindow, ShowsTheExchangeWhileItIsOpen) {
    TalkingServer world;
    world.state.menu.mnuFTPdebug.checked = true;
    world.files.take_away("nimbryraw.txt");
    FTPupload(world.copy);
    EXPECT_TRUE(
        world.upload().debug_text.starts_with("Waiting for next FTP upload ....\r\n"
                                              "\r\n220 ready\r\n"
                                              "USER me\r\n331 password\r\n"
                                              "PASS ****\r\n230 in\r\n"
                                              "Sending index.html\r\n"
                                              "STOR index.html\r\n226 done\r\n"))
        << world.upload().debug_text;
    EXPECT_TRUE(world.upload().debug_text.ends_with("QUIT\r\n221 bye\r\n"));
    EXPECT_EQ(world.upload().debug_text.find("secret"), std::string::npos);
}

TEST(FtpDebugWindow, KeepsNothingWhileItIsClosed) {
    TalkingServer world;
    FTPupload(world.copy);
    EXPECT_EQ(world.upload().debug_text, "");
}

TEST(FtpDebugWindow, BeginsEmptyEachTime) {
    TalkingServer world;
    world.state.menu.mnuFTPdebug.checked = true;
    add_to_debug_window(world.state, "old");
    click_switch(world.copy, *switch_named("mnuFTPdebug"));
    EXPECT_EQ(world.upload().debug_text, "");
    EXPECT_FALSE(world.state.menu.mnuFTPdebug.checked);
}

TEST(FtpDebugWindow, LosesWholeLinesAtItsTop) {
    TalkingServer world;
    world.state.menu.mnuFTPdebug.checked = true;
    const std::string line(98, 'x');
    for (int n = 0; n < 640; ++n) add_to_debug_window(world.state, line + "\r\n");
    EXPECT_EQ(world.upload().debug_text.size(), 64'000U);
    add_to_debug_window(world.state, "last\r\n");
    EXPECT_EQ(world.upload().debug_text.size(), 63'906U);
    EXPECT_TRUE(world.upload().debug_text.starts_with(line + "\r\n"));
    EXPECT_TRUE(world.upload().debug_text.ends_with("x\r\nlast\r\n"));
}

TEST(FtpLogFile, HasALineForEachReplyIfTheUserWantsIt) {
    TalkingServer world;
    world.settings().FTPRemoteFile = "none";
    FTPupload(world.copy);
    EXPECT_FALSE(world.files.exists("NimbryFTPLOG.txt"));
    world.files.take_away("nimbryraw.txt");
    world.settings().chkLogResponses = true;
    world.transfers.ftp.put.said.clear();
    FTPupload(world.copy);
    EXPECT_EQ(world.files.contents("NimbryFTPLOG.txt"),
              " 220 ready\r\nUSER me 331 password\r\nPASS **** 230 in\r\nQUIT 221 bye\r\n");
    FTPupload(world.copy);
    EXPECT_EQ(world.files.contents("NimbryFTPLOG.txt").size(), 2U * (12 + 22 + 18 + 14));
}

TEST(FtpLogFile, ThatCannotBeWrittenHoldsNothingUp) {
    TalkingServer world;
    world.settings().chkLogResponses = true;
    world.files.refuse("NimbryFTPLOG.txt", FileResult::disk_full);
    FTPupload(world.copy);
    EXPECT_EQ(world.transfers.ftp.quits, 1);
    EXPECT_TRUE(world.popups().empty());
}

}  // namespace
}  // namespace nimbry::test
