#include "engine/publish/forced_run.h"

#include "tests/engine/publish/upload_world.h"

namespace nimbry::test {
namespace {

struct ForcedCase {
    ForcedRun which;
    const char* status;
};

TEST(ForcedRuns, AreSaidInTheStatusWindowForItsMoment) {
    const ForcedCase cases[] = {{ForcedRun::ftp, "Forced FTP upload"},
                                {ForcedRun::mail, "Forced email send"},
                                {ForcedRun::weather, "Forced Underground upload"}};
    for (const ForcedCase& c : cases) {
        SCOPED_TRACE(c.status);
        UploadWorld world;
        world.pauses.start([&] { run_forced(world.copy, c.which); });
        EXPECT_EQ(world.notices.windows, std::vector<std::string>{"NimbryDisplay"});
        EXPECT_EQ(world.state.status_message.text, c.status);
        world.pauses.pause(std::chrono::milliseconds{3899});
        EXPECT_TRUE(world.state.status_message.open);
        world.pauses.pause(std::chrono::milliseconds{1});
        EXPECT_FALSE(world.state.status_message.open);
    }
}

TEST(ForcedRuns, AreSaidBeforeThePagesAreMade) {
    UploadWorld world;
    world.state.setup.FTP.open = true;
    const std::size_t notices = world.notices.balloons.size();
    world.pauses.start([&] { run_forced(world.copy, ForcedRun::ftp); });
    EXPECT_TRUE(world.state.setup.FTP.hidden);
    EXPECT_TRUE(world.state.status_message.open);
    EXPECT_EQ(world.notices.balloons.size(), notices) << "the upload has not come to its own word yet";
    world.pauses.pause(std::chrono::seconds{20});
    EXPECT_GT(world.notices.balloons.size(), notices);
}

TEST(ForcedRuns, AreSaidOnceOfTwo) {
    UploadWorld world;
    world.transfers.ftp.connect.after = std::chrono::seconds{5};
    world.pauses.start([&] { run_forced(world.copy, ForcedRun::ftp); });
    run_forced(world.copy, ForcedRun::mail);
    EXPECT_EQ(world.state.status_message.text, "Forced FTP upload");
    EXPECT_EQ(world.notices.windows.size(), 1U);
    world.pauses.pause(std::chrono::seconds{20});
}

}  // namespace
}  // namespace nimbry::test
