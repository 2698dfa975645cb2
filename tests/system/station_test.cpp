#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <memory>

#include "engine/station/group_layout.h"
#include "engine/station/stream_file.h"
#include "tests/station/decoded.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/system/running_copy.h"

namespace nimbry::system_test {
namespace {

using simulator::Decoded;
using simulator::wrong_checksums;

/// A program that reads the line: collects bytes until 30 ms bring none, as receivers of this station do.
class Reader {
public:
    explicit Reader(const std::string& path) : fd_(open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {}
    ~Reader() {
        if (fd_ >= 0) close(fd_);
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    [[nodiscard]] bool is_open() const { return fd_ >= 0; }

    /// The next frame; empty when the line has gone or a minute brings none.
    [[nodiscard]] Bytes frame() const {
        constexpr int a_minute = 60'000, settling = 30;
        Bytes bytes;
        pollfd line{fd_, POLLIN, 0};
        while (poll(&line, 1, bytes.empty() ? a_minute : settling) > 0) {
            std::array<std::uint8_t, 256> some{};
            const ssize_t count = read(fd_, some.data(), some.size());
            if (count <= 0) return {};
            bytes.insert(bytes.end(), some.begin(), some.begin() + count);
        }
        return bytes;
    }

    /// The next whole train with right checksums; empty when the line has gone or a hundred frames are none. A frame
    /// that the machine holds up on its way is none.
    [[nodiscard]] Bytes train() const { return whole(train_length); }
    /// The same for a lone wind group.
    [[nodiscard]] Bytes lone() const { return whole(lone_length); }

    /// How many bytes wait to be read.
    [[nodiscard]] std::size_t unread() const {
        int count = 0;
        EXPECT_EQ(ioctl(fd_, FIONREAD, &count), 0);
        return static_cast<std::size_t>(count);
    }

private:
    [[nodiscard]] Bytes whole(std::size_t length) const {
        for (int n = 0; n < 100; ++n) {
            Bytes bytes = frame();
            if (bytes.empty() || (bytes.size() == length && wrong_checksums(bytes) == 0)) return bytes;
        }
        return {};
    }

    int fd_;
};

class StationTest : public testing::Test {
protected:
    [[nodiscard]] std::string line() const { return folder.path("line"); }

    /// Starts the program on the line and waits until it is ready.
    std::unique_ptr<Process> station(std::vector<std::string> more) {
        more.insert(more.begin(), {"--link", line()});
        auto process = std::make_unique<Process>(NIMBRY_STATION, more);
        EXPECT_TRUE(eventually([&] { return !process->standard_output().empty() || !process->runs(); }));
        EXPECT_EQ(process->standard_output(), "ready " + line() + "\n") << process->standard_error();
        return process;
    }

    /// What the program says about bad usage or a failure, after its name; checks that it is one line and the status.
    static std::string complaint(const std::vector<std::string>& arguments, int status) {
        Process process(NIMBRY_STATION, arguments);
        EXPECT_EQ(process.ending(), exited(status));
        EXPECT_EQ(process.standard_output(), "");
        std::string text = process.standard_error();
        EXPECT_EQ(text.find('\n'), text.size() - 1) << text;
        EXPECT_TRUE(text.starts_with("nimbry-station: ")) << text;
        return text.substr(std::min<std::size_t>(16, text.size()));
    }

    TemporaryFolder folder;
};

TEST_F(StationTest, PlaysTrainsAndLoneWindGroupsThatAReaderCanFrame) {
    const auto process = station({"--start", "2026-10-31 22:00:00", "--speed", "20"});
    const Reader reader(line());
    const Decoded first(reader.train());
    ASSERT_TRUE(first.clock.set);
    EXPECT_EQ(first.clock_text().substr(0, 3), "22:");
    EXPECT_FALSE(reader.lone().empty());
    EXPECT_TRUE(Decoded(reader.train()).clock.set);
}

TEST_F(StationTest, EndsCleanlyByEachSignalAndTakesItsLinkAway) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const auto process = station({});
        EXPECT_TRUE(folder.holds("line"));
        process->signal(signal);
        EXPECT_EQ(process->ending(), exited(0));
        EXPECT_FALSE(folder.holds("line"));
        EXPECT_EQ(process->standard_error(), "");
    }
}

TEST_F(StationTest, GoesOnWhenItsReaderGoesAndComesBack) {
    const auto process = station({"--speed", "20"});
    for (int visit = 0; visit < 3; ++visit) {
        const Reader reader(line());
        ASSERT_TRUE(reader.is_open());
        EXPECT_FALSE(reader.train().empty());
    }
    EXPECT_TRUE(process->runs());
}

TEST_F(StationTest, DropsWhatNobodyReads) {
    // The recording tells when two dozen frames have been sent to nobody.
    const auto process = station({"--speed", "30", "--record", folder.path("sent")});
    ASSERT_TRUE(eventually([&] {
        const StreamReading read = read_stream(folder.contents("sent"));
        return read.stream && read.stream->pieces.size() >= 24;
    }));
    const Reader reader(line());
    // A train left behind and the one under way, at most.
    EXPECT_LE(reader.unread(), 2 * train_length + 2 * lone_length);
    EXPECT_FALSE(reader.train().empty());
}

TEST_F(StationTest, TakesTheTerminalBackFromAReaderThatClaimedItForGood) {
    const auto process = station({"--speed", "20"});
    const std::string terminal = std::filesystem::read_symlink(line()).string();
    platform::test::OrdinaryUser::give(terminal);
    const platform::test::OrdinaryUser user;  // root may open a claimed terminal
    const auto opened = [&] { return open(terminal.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC); };
    const int claimed = opened();
    ASSERT_GE(claimed, 0);
    ioctl(claimed, TIOCEXCL);
    close(claimed);
    EXPECT_TRUE(eventually([&] {
        const int again = opened();
        if (again >= 0) close(again);
        return again >= 0;
    }));
}

TEST_F(StationTest, FollowsItsScenarioAndPullsAndReplacesTheCable) {
    // Again and again: a reader that is held up sees the next time.
    std::string scenario = "at +0s set outdoor-temperature -4.7\n";
    for (int n = 0; n < 20; ++n) scenario += "at +" + std::to_string(40 + 100 * n) + "s unplug for 40s\n";
    folder.put("a.scenario", scenario);
    const auto process = station({"--scenario", folder.path("a.scenario"), "--speed", "20"});
    const auto reads_until_the_line_goes = [&] {
        const Reader reader(line());
        if (!reader.is_open()) return false;
        const Bytes train = reader.train();
        if (train.empty()) return false;
        EXPECT_EQ(Decoded(train).outdoor_text(), "-04.7");
        while (!reader.frame().empty()) {
        }
        return true;
    };
    EXPECT_TRUE(eventually(reads_until_the_line_goes));
    EXPECT_TRUE(eventually(reads_until_the_line_goes)) << "its cable was replaced";
}

TEST_F(StationTest, PlaysWhatItRecorded) {
    {
        const auto process = station(
            {"--seed", "8", "--start", "2026-02-28 23:59:30", "--speed", "20", "--record", folder.path("sent")});
        ASSERT_TRUE(eventually([&] {
            const StreamReading read = read_stream(folder.contents("sent"));
            return read.stream && read.stream->pieces.size() >= 6;
        }));
        process->signal(SIGTERM);
        ASSERT_EQ(process->ending(), exited(0));
    }
    const StreamReading sent = read_stream(folder.contents("sent"));
    ASSERT_TRUE(sent.stream) << sent.error;
    EXPECT_EQ(sent.stream->shows, "a simulated station, seed 8, speed 20");

    // Each has a second more before it, so that the reader is there before the first byte, and takes every frame
    // although it is held up for a while. It may see a frame in two pieces.
    StreamFile later = *sent.stream;
    later.pieces.resize(6);
    Bytes all;
    for (std::size_t n = 0; n < later.pieces.size(); ++n) {
        later.pieces[n].at += std::chrono::seconds(1 + n);
        all.insert(all.end(), later.pieces[n].bytes.begin(), later.pieces[n].bytes.end());
    }
    folder.put("played", write_stream(later));
    const auto process = station({"--play", folder.path("played")});
    const Reader reader(line());
    Bytes played;
    for (Bytes frame; played.size() < all.size() && !(frame = reader.frame()).empty();)
        played.insert(played.end(), frame.begin(), frame.end());
    EXPECT_EQ(played, all);
}

TEST_F(StationTest, AWholeCopyTakesItsTrains) {
    const auto process = station({"--speed", "20"});
    RunningCopy copy(folder, line());
    ASSERT_TRUE(copy.listens());
    EXPECT_TRUE(eventually([&] { return copy.frames("trains") >= 3 && copy.frames("lone") >= 2; }));
    EXPECT_EQ(copy.frames("bad_checksum"), 0);
}

TEST_F(StationTest, ReplacesALinkThatAKilledStationLeft) {
    {
        const auto process = station({});
        process->signal(SIGKILL);
        process->ending();
    }
    EXPECT_TRUE(folder.holds("line"));
    const auto process = station({"--speed", "20"});
    EXPECT_FALSE(Reader(line()).train().empty());
}

TEST_F(StationTest, LeavesAFileInItsPlaceAlone) {
    folder.put("line", "precious");
    EXPECT_EQ(complaint({"--link", line()}, 1), line() + ": the link cannot be made: File exists\n");
    EXPECT_EQ(folder.contents("line"), "precious");
}

TEST_F(StationTest, LeavesALinkAloneThatAnotherStationHasTakenOver) {
    const auto first = station({}), second = station({"--speed", "20"});
    first->signal(SIGTERM);
    EXPECT_EQ(first->ending(), exited(0));
    EXPECT_FALSE(Reader(line()).train().empty());
}

TEST_F(StationTest, NamesWhatIsWrongInOneLine) {
    folder.put("bad.scenario", "at +1s unplug\nat +2s explode\n");
    folder.put("bad.stream", "no stream\n");
    EXPECT_EQ(complaint({}, 2), "--link PATH or --device PATH is needed (--help tells more)\n");
    EXPECT_EQ(complaint({"--link", line(), "--scenario", folder.path("bad.scenario")}, 1),
              folder.path("bad.scenario") + ": line 2: nothing is called 'explode'\n");
    EXPECT_NE(complaint({"--link", line(), "--play", folder.path("bad.stream")}, 1).find("line 1: "),
              std::string::npos);
    EXPECT_EQ(complaint({"--link", line(), "--scenario", folder.path("none")}, 1),
              folder.path("none") + ": cannot be read: No such file or directory\n");
    EXPECT_EQ(complaint({"--link", line(), "--scenario", folder.path("")}, 1),
              folder.path("") + ": cannot be read: Is a directory\n");
    EXPECT_EQ(complaint({"--device", folder.path("none")}, 1),
              folder.path("none") + ": cannot be opened: No such file or directory\n");
    EXPECT_EQ(complaint({"--device", folder.path("bad.stream")}, 1),
              folder.path("bad.stream") + ": is no serial line: Inappropriate ioctl for device\n");
    EXPECT_EQ(complaint({"--link", line(), "--record", folder.path("no/where")}, 1),
              folder.path("no/where") + ": cannot be written\n");
    EXPECT_FALSE(folder.holds("line"));
}

TEST_F(StationTest, TellsItsHelpAndVersion) {
    Process help(NIMBRY_STATION, {"--help"}), version(NIMBRY_STATION, {"--version"});
    EXPECT_EQ(help.ending(), exited(0));
    EXPECT_TRUE(help.standard_output().starts_with("Usage: nimbry-station --link PATH"));
    EXPECT_EQ(version.ending(), exited(0));
    EXPECT_EQ(version.standard_output(), "nimbry-station 2.02\n");
}

TEST_F(StationTest, WritesToARealLineAtItsSettings) {
    // A pseudo-terminal stands for the real line.
    PseudoTerminal cable;
    Process process(NIMBRY_STATION, {"--device", cable.device(), "--speed", "20"});
    ASSERT_TRUE(eventually([&] { return process.standard_output() == "ready " + cable.device() + "\n"; }));
    const termios settings = cable.settings();
    EXPECT_EQ(cfgetospeed(&settings), static_cast<speed_t>(B9600));
    EXPECT_EQ(settings.c_cflag & CSIZE, static_cast<tcflag_t>(CS8));
    EXPECT_EQ(settings.c_cflag & (PARENB | CSTOPB), 0U);
    EXPECT_EQ(settings.c_lflag & (ECHO | ICANON), 0U);
    process.signal(SIGTERM);
    EXPECT_EQ(process.ending(), exited(0));
    EXPECT_EQ(process.standard_error(), "");
}

}  // namespace
}  // namespace nimbry::system_test
