#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <memory>
#include <thread>
#include <vector>

#include "engine/station/train_writer.h"
#include "tests/system/running_copy.h"
#include "tests/system/station_line.h"

namespace nimbry::system_test {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr useconds_t longer_than_both_settling_times = 150'000;

class HardTimes : public testing::Test {
protected:
    /// A train is counted; the first ones may go into finding the way into the stream again.
    [[nodiscard]] bool takes_a_train(const RunningCopy& copy) const {
        const int before = copy.frames("trains");
        return eventually([&] {
            station.send(train_of_now());
            usleep(longer_than_both_settling_times);
            return copy.frames("trains") > before;
        });
    }

    TemporaryFolder folder;
    StationLine station;
};

// A disk that is unmounted for a moment, a folder that somebody renames and renames back: whether the copy lives on or
// leaves, which a save at the wrong moment makes it do, there is nothing to be mended by hand.
TEST_F(HardTimes, AFolderThatIsAwayForTenSecondsCostsNothingThatWasThere) {
    folder.put("Nimbry.ini", "[Main]\r\nHasRun=True\r\nfwrtlog=True\r\nLogMin=1\r\n");
    auto copy = std::make_unique<RunningCopy>(folder, station.device());
    ASSERT_TRUE(copy->listens());
    for (int n = 0; n < 3; ++n) ASSERT_TRUE(takes_a_train(*copy));
    copy->signal(SIGINT);  // which saves the day
    ASSERT_EQ(copy->ending(), exited(0));
    copy = std::make_unique<RunningCopy>(folder, station.device());
    ASSERT_TRUE(copy->listens());
    ASSERT_TRUE(takes_a_train(*copy));
    ASSERT_TRUE(takes_a_train(*copy));
    const std::string ini = folder.contents("Nimbry.ini");

    const std::string elsewhere = folder.path() + ".away";
    std::filesystem::rename(folder.path(), elsewhere);
    for (const auto back = steady_clock::now() + 10s; steady_clock::now() < back;) {
        station.send(train_of_now());
        usleep(longer_than_both_settling_times);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path())) << "a new folder, which the old one cannot replace";
    std::filesystem::rename(elsewhere, folder.path());

    if (!copy->runs()) {
        copy = std::make_unique<RunningCopy>(folder, station.device());
        ASSERT_TRUE(copy->listens());
    }
    ASSERT_TRUE(takes_a_train(*copy)) << copy->standard_error();
    ASSERT_TRUE(takes_a_train(*copy));
    EXPECT_EQ(folder.contents("Nimbry.ini").substr(0, 6), ini.substr(0, 6));
    EXPECT_NE(folder.contents("Nimbry.ini").find("LogMin=1\r\n"), std::string::npos);
    copy->signal(SIGINT);
    EXPECT_EQ(copy->ending(), exited(0));
    const std::string today = folder.contents("nimbrTDay.log");
    EXPECT_EQ(std::count(today.begin(), today.end(), '\n'), 33);
    EXPECT_TRUE(copy->last_logged().ends_with(" Program stopped, normal exit")) << copy->last_logged();
}

/// A thread for each core that wants all of it.
class BusyCores {
public:
    BusyCores() {
        for (unsigned n = 0; n < std::max(1U, std::thread::hardware_concurrency()); ++n)
            threads_.emplace_back([this] {
                while (!rest_) {
                }
            });
    }
    ~BusyCores() {
        rest_ = true;
        for (std::thread& thread : threads_) thread.join();
    }
    BusyCores(const BusyCores&) = delete;
    BusyCores& operator=(const BusyCores&) = delete;

private:
    std::atomic<bool> rest_ = false;
    std::vector<std::thread> threads_;
};

/// Sends a train at the speed of the line; the longest time between two of its bytes.
steady_clock::duration send_paced(const StationLine& station, const Bytes& train) {
    steady_clock::duration longest{};
    auto last = steady_clock::now();
    for (const std::uint8_t byte : train) {
        station.send({byte});
        const auto sent = steady_clock::now();
        longest = std::max(longest, sent - last);
        last = sent;
        usleep(1040);
    }
    return longest;
}

// The copy looks at its line by timers of some milliseconds. On a machine that has no time they come late, which
// must not make two frames of one train.
TEST_F(HardTimes, WithAllCoresBusyATrainIsOneFrame) {
    RunningCopy copy(folder, station.device());
    ASSERT_TRUE(copy.listens());
    const BusyCores busy;
    ASSERT_TRUE(takes_a_train(copy));
    constexpr int enough = 5;
    int judged = 0;
    for (const auto end = steady_clock::now() + 90s; judged < enough && steady_clock::now() < end;) {
        const int trains = copy.frames("trains"), thrown_away = copy.frames("bytes_thrown_away");
        const auto longest = send_paced(station, train_of_now());
        usleep(2 * longer_than_both_settling_times);
        // The sender has no time either. A pause of its own would rightly be taken for the end of a frame.
        if (longest > 20ms) {
            ASSERT_TRUE(takes_a_train(copy));
            continue;
        }
        ++judged;
        EXPECT_TRUE(eventually([&] { return copy.frames("trains") == trains + 1; }));
        EXPECT_EQ(copy.frames("bytes_thrown_away"), thrown_away);
    }
    if (judged == 0) GTEST_SKIP() << "the sender itself never got the time for a train";
}

}  // namespace
}  // namespace nimbry::system_test
