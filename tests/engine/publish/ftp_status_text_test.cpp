#include "engine/publish/ftp_status_text.h"

#include <gtest/gtest.h>

#include "engine/publish/ftp_watchdog.h"
#include "tests/engine/publish/upload_world.h"

namespace nimbry::test {
namespace {

using Lines = std::vector<std::string>;

TEST(FtpStatusEvent, OfAFailureIsTakenOnceAndASuccessStillAfterIt) {
    UploadWorld world;
    restart_watchdog(world.copy);
    status_event(world.copy, 4009);
    EXPECT_TRUE(world.upload().FtpConnectFailed);
    EXPECT_FALSE(world.timers.running(TimerId::TimFTPTOT));
    const Lines told{" Unable to make a connection to the remote FTP server: Login Refused"};
    EXPECT_EQ(world.logged(), told);
    status_event(world.copy, 5001);
    EXPECT_EQ(world.logged(), told);
    EXPECT_FALSE(world.upload().FtpConnected);
    status_event(world.copy, 3000);
    EXPECT_TRUE(world.upload().FtpConnected);
    EXPECT_FALSE(world.upload().FtpConnectFailed);
    EXPECT_EQ(world.logged(), told);
}

TEST(FtpStatusEvent, WithoutANameIsToldByItsDigitsAndToThoseWhoAskInWordsToo) {
    UploadWorld world;
    status_event(world.copy, 27, "Out of memory");
    EXPECT_EQ(world.logged(), Lines{" Unable to make a connection to the remote FTP server: 27"});
    EXPECT_EQ(world.upload().fault, "Unable to make a connection to the remote FTP server: 27 (Out of memory)");
}

TEST(FtpTransferFailureEvent, IsTakenOnce) {
    UploadWorld world;
    restart_watchdog(world.copy);
    transfer_failure_event(world.copy, "553 Could not create file.");
    EXPECT_TRUE(world.upload().FtpTransferError);
    EXPECT_FALSE(world.timers.running(TimerId::TimFTPTOT));
    transfer_failure_event(world.copy, "550 Permission denied.");
    EXPECT_EQ(world.logged(), Lines{" FTP 553 Could not create file."});
    EXPECT_EQ(world.upload().fault, "FTP 553 Could not create file.");
}

}  // namespace
}  // namespace nimbry::test
