#include "engine/core/file_wait.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/control/copy_status.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FileWait : public testing::Test {
protected:
    FileWait() { world.files.put("day.log", "x"); }

    /// Waits for the file in a conversation of its own; `ended` tells when it is over.
    void wait_for_file(const std::string& name = "day.log") {
        world.act([this, name] {
            wait_until_free(world.copy(), name);
            ended = true;
        });
    }
    [[nodiscard]] std::string status() { return status_lines(copy_status(world.copy())); }

    StartedWorld world;
    bool ended = false;
};

TEST_F(FileWait, AFreeFileIsNotWaitedFor) {
    wait_for_file();
    EXPECT_TRUE(ended);
}

TEST_F(FileWait, AMissingFileIsNotWaitedFor) {
    world.files.set_in_use("missing", true);
    wait_for_file("missing");
    EXPECT_TRUE(ended);
}

TEST_F(FileWait, EndsWithinAMillisecondOfVirtualTimeOnceTheFileIsFree) {
    world.files.set_in_use("day.log", true);
    wait_for_file();
    world.run_for(10s);
    EXPECT_FALSE(ended);
    world.files.set_in_use("day.log", false);
    world.run_for(1ms);
    EXPECT_TRUE(ended);
    EXPECT_THAT(world.log(), IsEmpty());
}

TEST_F(FileWait, IsLoggedOnceAfterAMinuteAndGoesOn) {
    world.files.set_in_use("day.log", true);
    wait_for_file();
    // The no-data watch logs too, each minute from the second minute on: it is kept quiet.
    world.copy().timers.stop(TimerId::TimComFail);
    world.run_for(59999ms);
    EXPECT_THAT(world.log(), IsEmpty());
    world.run_for(1ms);
    EXPECT_THAT(
        world.log(),
        ElementsAre("05 Oct 2026 14:01:02 (Computer time) Waiting for day.log, which another program has in use"));
    world.run_for(10min);
    EXPECT_FALSE(ended);
    EXPECT_EQ(world.log().size(), 1U);
    world.files.set_in_use("day.log", false);
    world.run_for(1ms);
    EXPECT_TRUE(ended);
}

TEST_F(FileWait, IsNamedByTheStatusForAsLongAsItLasts) {
    EXPECT_THAT(status(), HasSubstr("\nwaiting_for\t\n"));
    world.files.put("rain.dat", "x");
    world.files.set_in_use("day.log", true);
    world.files.set_in_use("rain.dat", true);
    wait_for_file();
    world.run_for(1s);
    wait_for_file("rain.dat");
    EXPECT_THAT(status(), HasSubstr("\nwaiting_for\tday.log, rain.dat\n")) << "the oldest first";
    EXPECT_THAT(status_json(copy_status(world.copy())), HasSubstr("\"waiting_for\":\"day.log, rain.dat\""));
    world.files.set_in_use("day.log", false);
    world.run_for(1ms);
    EXPECT_THAT(status(), HasSubstr("\nwaiting_for\train.dat\n"));
    world.files.set_in_use("rain.dat", false);
    world.run_for(1ms);
    EXPECT_THAT(status(), HasSubstr("\nwaiting_for\t\n"));
}

TEST_F(FileWait, TwoForOneFileAreTwo) {
    world.files.set_in_use("day.log", true);
    wait_for_file();
    wait_for_file();
    EXPECT_THAT(world.state().run.waits, ElementsAre("day.log", "day.log"));
    world.files.set_in_use("day.log", false);
    world.run_for(1ms);
    EXPECT_THAT(world.state().run.waits, IsEmpty());
}

TEST_F(FileWait, EndsWithTheProgram) {
    world.files.set_in_use("day.log", true);
    wait_for_file();
    world.act([this] { world.engine.window_close(); });
    world.run_for(0s);
    EXPECT_TRUE(world.engine.gone());
    EXPECT_FALSE(ended) << "the conversation has unwound";
    EXPECT_THAT(world.state().run.waits, IsEmpty());
}

TEST_F(FileWait, AnExitNamesTheSaveThatItWaitsFor) {
    world.state().run.savingrafs.set();
    world.act([this] { world.engine.menu_exit(); });
    EXPECT_THAT(world.state().run.waits, ElementsAre("savingrafs"));
    world.state().run.tdaysaving.set();
    world.state().run.savingrafs.clear();
    world.run_for(1ms);
    EXPECT_THAT(world.state().run.waits, ElementsAre("tdaysaving"));
    world.state().run.tdaysaving.clear();
    world.run_for(1ms);
    EXPECT_TRUE(world.engine.gone());
    EXPECT_THAT(world.state().run.waits, IsEmpty());
}

TEST_F(FileWait, AConditionThatHoldsIsNotWaitedFor) {
    world.act([this] {
        wait_for(world.copy(), "flag", [] { return true; });
        ended = true;
    });
    EXPECT_TRUE(ended);
}

}  // namespace
}  // namespace nimbry::test
