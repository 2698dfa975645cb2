#include "engine/core/program_log_pruning.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/core/run_time_error.h"
#include "tests/world/world.h"

namespace nimbry {
namespace {

using Texts = std::vector<std::string>;

const std::string log_file = "nbyprog.log";
const std::string copy_file = "nbyprog.tmp";

// "line 1", "line 2", ... up to `count`, from `first` on.
std::string numbered(int first, int count, const std::string& line_end = "\r\n") {
    std::string text;
    for (int n = first; n < first + count; ++n) text += "line " + std::to_string(n) + line_end;
    return text;
}

struct PruneCase {
    const char* law;
    std::string before;
    Pruning result;
    std::string after;
};

class Pruned : public testing::TestWithParam<PruneCase> {};

TEST_P(Pruned, LogHasItsLastTenEntries) {
    SCOPED_TRACE(GetParam().law);
    test::VirtualClock clock;
    test::MemoryFiles disk{clock};
    disk.put(log_file, GetParam().before);
    EXPECT_EQ(prune_program_log(disk), GetParam().result);
    EXPECT_EQ(disk.contents(log_file), GetParam().after);
    EXPECT_FALSE(disk.exists(copy_file));
}

const std::string separator(52, '*');

INSTANTIATE_TEST_SUITE_P(
    Case, Pruned,
    testing::Values(PruneCase{"an empty log is not touched", "", Pruning::few_entries, ""},
                    PruneCase{"ten entries are not touched", numbered(1, 10), Pruning::few_entries, numbered(1, 10)},
                    PruneCase{"nor their bytes", numbered(1, 10, "\n"), Pruning::few_entries, numbered(1, 10, "\n")},
                    PruneCase{"nor ten of which the last has no end", numbered(1, 9) + "line 10", Pruning::few_entries,
                              numbered(1, 9) + "line 10"},
                    PruneCase{"of eleven the first goes", numbered(1, 11), Pruning::done, numbered(2, 10)},
                    PruneCase{"a last line without an end counts, and gets one", numbered(1, 10) + "line 11",
                              Pruning::done, numbered(2, 10)},
                    PruneCase{"of many the last ten stay, in order", numbered(1, 5000), Pruning::done,
                              numbered(4991, 10)},
                    PruneCase{"line feeds become CR LF", numbered(1, 12, "\n"), Pruning::done, numbered(3, 10)},
                    PruneCase{"a separator is an entry", numbered(1, 2) + separator + "\r\n" + numbered(3, 9),
                              Pruning::done, separator + "\r\n" + numbered(3, 9)},
                    PruneCase{"an empty line is an entry", numbered(1, 2) + "\r\n" + numbered(3, 9), Pruning::done,
                              "\r\n" + numbered(3, 9)},
                    PruneCase{"the bytes of a line stay", numbered(1, 10) + "a\rb \xB0\r\n", Pruning::done,
                              numbered(2, 9) + "a\rb \xB0\r\n"}));

class LogMenu : public testing::Test {
protected:
    void given(const std::string& log) { world.files.put(log_file, log); }
    std::string log() const { return world.files.contents(log_file); }

    test::World world;
};

TEST_F(LogMenu, AsksAndClears) {
    given(numbered(1, 20));
    world.notices.will_answer(Answer::yes);
    EXPECT_EQ(mnuClearProgLog(world.copy()), Pruning::done);
    EXPECT_EQ(log(), numbered(11, 10));
    ASSERT_EQ(world.notices.boxes.size(), 1U);
    const MessageBox& box = world.notices.boxes[0].what;
    EXPECT_EQ(box.title, "Nimbry message");
    EXPECT_EQ(box.text, "Are you sure you want to clear all but\r\nthe last 10 entries from the program log?");
    EXPECT_EQ(box.choices, Choices::yes_no);
    EXPECT_TRUE(world.notices.balloons.empty());
    EXPECT_EQ(world.sounds.played, Texts{"click.WAV"});
}

TEST_F(LogMenu, LeavesTheLogAfterANo) {
    given(numbered(1, 20));
    world.notices.will_answer(Answer::no);
    EXPECT_EQ(mnuClearProgLog(world.copy()), Pruning::declined);
    EXPECT_EQ(log(), numbered(1, 20));
    EXPECT_TRUE(world.notices.balloons.empty());
}

TEST_F(LogMenu, AsksBeforeItCounts) {
    given(numbered(1, 10));
    world.notices.will_answer(Answer::yes);
    EXPECT_EQ(mnuClearProgLog(world.copy()), Pruning::few_entries);
    EXPECT_EQ(world.notices.boxes.size(), 1U);
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    const Balloon& balloon = world.notices.balloons[0].what;
    EXPECT_EQ(balloon.title, "Log File");
    EXPECT_EQ(balloon.text, "There are already 10 or less entries in the program log");
    EXPECT_EQ(balloon.icon, "i");
    EXPECT_EQ(log(), numbered(1, 10));
}

TEST_F(LogMenu, ClearsNothingWithoutALog) {
    EXPECT_EQ(mnuClearProgLog(world.copy()), Pruning::no_log);
    EXPECT_TRUE(world.notices.boxes.empty());
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    const Balloon& balloon = world.notices.balloons[0].what;
    EXPECT_EQ(balloon.title, "Log File Error");
    EXPECT_EQ(balloon.text, "No program log file exists");
    EXPECT_EQ(balloon.icon, "!");
    EXPECT_FALSE(world.files.exists(log_file));
    EXPECT_EQ(world.sounds.played, Texts{"click.WAV"});
}

TEST_F(LogMenu, TellsOfALogThatWentAwayDuringTheQuestion) {
    given(numbered(1, 20));
    world.notices.will_answer(Answer::yes, Milliseconds{1000});
    world.pauses.after(std::chrono::milliseconds{500}, [&] { world.files.take_away(log_file); });
    EXPECT_EQ(mnuClearProgLog(world.copy()), Pruning::no_log);
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    EXPECT_EQ(world.notices.balloons[0].what.text, "No program log file exists");
}

TEST_F(LogMenu, KeepsWhatIsWrittenDuringTheQuestion) {
    given(numbered(1, 20));
    world.notices.will_answer(Answer::yes, Milliseconds{1000});
    world.pauses.after(std::chrono::milliseconds{500}, [&] { world.copy().log.event(" x"); });
    EXPECT_EQ(mnuClearProgLog(world.copy()), Pruning::done);
    EXPECT_EQ(log(), numbered(12, 9) + "05 Oct 2026 14:00:00 (Computer time) x\r\n");
}

TEST_F(LogMenu, OverwritesACopyThatACrashLeft) {
    given(numbered(1, 11));
    world.files.put(copy_file, "left over, and longer than what comes" + std::string(1000, '.'));
    world.notices.will_answer(Answer::yes);
    EXPECT_EQ(mnuClearProgLog(world.copy()), Pruning::done);
    EXPECT_EQ(log(), numbered(2, 10));
    EXPECT_FALSE(world.files.exists(copy_file));
}

TEST_F(LogMenu, LosesNoneOfTheLastEntriesWhicheverDiskCallFails) {
    // Read, copy, delete, rename.
    for (std::size_t n = 1; n <= 4; ++n) {
        SCOPED_TRACE(n);
        given(numbered(1, 20));
        world.files.take_away(copy_file);
        world.files.fail_call(n, FileResult::disk_full);
        world.notices.will_answer(Answer::yes);
        try {
            static_cast<void>(mnuClearProgLog(world.copy()));
            FAIL() << "no error";
        } catch (const UnrecoverableError& error) {
            EXPECT_EQ(error.number, ErrorNumber::disk_full);
            EXPECT_EQ(error.tag, "mnuClearProgLog");
        }
        const std::string& kept = n == 4 ? copy_file : log_file;
        EXPECT_TRUE(world.files.contents(kept).ends_with(numbered(11, 10)));
        world.files.allow();
        world.files.take_away(log_file);
    }
}

TEST_F(LogMenu, OpensTheViewerOnlyOnALog) {
    given("x\r\n");
    EXPECT_TRUE(mnuProgLog(world.copy()));
    EXPECT_TRUE(world.notices.balloons.empty());
    world.files.take_away(log_file);
    EXPECT_FALSE(mnuProgLog(world.copy()));
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    EXPECT_EQ(world.notices.balloons[0].what.title, "Program Log File Error");
    EXPECT_EQ(world.notices.balloons[0].what.text, "No program log file has been created yet");
    EXPECT_EQ(world.sounds.played, (Texts{"click.WAV", "click.WAV"}));
}

}  // namespace
}  // namespace nimbry
