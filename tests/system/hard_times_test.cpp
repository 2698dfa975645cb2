#include <gtest/gtest.h>
#include <unistd.h>

#include <QJsonObject>
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

    /// What the copy has counted by now, by its kind.
    static QJsonObject counted(const RunningCopy& copy) {
        QJsonObject frames;
        EXPECT_TRUE(eventually([&] { return !(frames = copy.status()["frames"].toObject()).isEmpty(); }));
        return frames;
    }
    /// The same once it is no longer `before`.
    static QJsonObject counted_since(const RunningCopy& copy, const QJsonObject& before) {
        QJsonObject frames;
        EXPECT_TRUE(eventually([&] { return (frames = counted(copy)) != before; }));
        return frames;
    }
    static QJsonObject with_a_train_more(QJsonObject frames) {
        frames["trains"] = frames["trains"].toInt() + 1;
        return frames;
    }
    /// Sends a train at a time until one is counted and nothing else is. Then no byte is under way.
    [[nodiscard]] bool comes_into_step(const RunningCopy& copy) const {
        for (int tries = 0; tries < 20; ++tries) {
            const QJsonObject before = counted(copy);
            station.send(train_of_now());
            if (counted_since(copy, before) == with_a_train_more(before)) return true;
        }
        return false;
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

    // A copy that leaves may be about to do so only now.
    for (const int next : {1, 2}) {
        EXPECT_TRUE(eventually([&] {
            if (!copy->runs()) copy = std::make_unique<RunningCopy>(folder, station.device());
            const int before = copy->frames("trains");
            station.send(train_of_now());
            usleep(longer_than_both_settling_times);
            return before >= 0 && copy->frames("trains") > before;
        })) << next
            << copy->standard_error();
    }
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
    constexpr int enough = 5;
    int judged = 0;
    for (const auto end = steady_clock::now() + 90s; judged < enough && steady_clock::now() < end;) {
        ASSERT_TRUE(comes_into_step(copy));
        const QJsonObject before = counted(copy);
        const auto longest = send_paced(station, train_of_now());
        // The sender has no time either. A pause of its own would rightly be taken for the end of a frame.
        if (longest > 20ms) {
            counted_since(copy, before);
            usleep(2 * longer_than_both_settling_times);
            continue;
        }
        ++judged;
        EXPECT_EQ(counted_since(copy, before), with_a_train_more(before));
    }
    if (judged == 0) GTEST_SKIP() << "the sender itself never got the time for a train";
}

}  // namespace
}  // namespace nimbry::system_test
