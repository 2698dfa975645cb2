#include "tests/world/memory_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "tests/world/virtual_clock.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class MemoryFilesTest : public testing::Test {
protected:
    VirtualClock clock;
    Journal journal;
    MemoryFiles files{clock, &journal};
    std::string bytes;
};

TEST_F(MemoryFilesTest, AppendMakesAFileAndAddsToIt) {
    EXPECT_EQ(files.append("a", "one"), FileResult::ok);
    EXPECT_EQ(files.append("a", "two"), FileResult::ok);
    EXPECT_EQ(files.read("a", bytes), FileResult::ok);
    EXPECT_EQ(bytes, "onetwo");
    EXPECT_EQ(files.read("a", bytes, 4), FileResult::ok);
    EXPECT_EQ(bytes, "onet");
}

TEST_F(MemoryFilesTest, AMissingFileIsNotFoundAndGivesNoBytes) {
    bytes = "old";
    EXPECT_EQ(files.read("a", bytes), FileResult::not_found);
    EXPECT_EQ(bytes, "");
    EXPECT_EQ(files.remove("a"), FileResult::not_found);
    EXPECT_EQ(files.sync("a"), FileResult::not_found);
    EXPECT_EQ(files.rename("a", "b"), FileResult::not_found);
    EXPECT_EQ(files.copy("a", "b"), FileResult::not_found);
    EXPECT_FALSE(files.exists("a"));
    EXPECT_EQ(files.modified("a"), std::nullopt);
}

TEST_F(MemoryFilesTest, RewriteAndReplaceLeaveTheNewContentsAlone) {
    files.put("a", "a long text");
    EXPECT_EQ(files.rewrite("a", "short"), FileResult::ok);
    EXPECT_EQ(files.contents("a"), "short");
    EXPECT_EQ(files.replace("a", "x"), FileResult::ok);
    EXPECT_EQ(files.contents("a"), "x");
}

TEST_F(MemoryFilesTest, AReplaceThatAsksForItMakesTheFilePrivateForGood) {
    files.put("old", "");
    EXPECT_FALSE(files.is_private("old"));
    files.replace("old", "x", true);
    files.replace("new", "x", true);
    EXPECT_TRUE(files.is_private("old"));
    EXPECT_TRUE(files.is_private("new"));
    files.replace("new", "y", false);
    EXPECT_TRUE(files.is_private("new"));
}

TEST_F(MemoryFilesTest, RenameAndCopyNeverOverwrite) {
    files.put("a", "A");
    files.put("b", "B");
    EXPECT_EQ(files.rename("a", "b"), FileResult::exists);
    EXPECT_EQ(files.copy("a", "b"), FileResult::exists);
    EXPECT_EQ(files.contents("b"), "B");
    EXPECT_EQ(files.copy("a", "c"), FileResult::ok);
    EXPECT_EQ(files.rename("a", "d"), FileResult::ok);
    EXPECT_THAT(files.names(), ElementsAre("b", "c", "d"));
    EXPECT_EQ(files.remove("d"), FileResult::ok);
    EXPECT_FALSE(files.exists("d"));
}

TEST_F(MemoryFilesTest, OtherFoldersMustBeMadeFirst) {
    EXPECT_EQ(files.append("/save/a", "x"), FileResult::not_found);
    files.add_folder("/save");
    EXPECT_EQ(files.append("/save/a", "x"), FileResult::ok);
    EXPECT_EQ(files.append("/save", "x"), FileResult::not_a_file);
    EXPECT_EQ(files.read("/save", bytes), FileResult::not_a_file);
    EXPECT_EQ(files.path("/save/a"), "/save/a");
    EXPECT_EQ(files.path("a"), "/nimbry/a");
}

TEST_F(MemoryFilesTest, AFileIsInUseAsLongAsTheTestSaysAndItIsThere) {
    files.set_in_use("a", true);
    EXPECT_FALSE(files.in_use("a")) << "a missing file is in nobody's use";
    files.put("a", "");
    EXPECT_TRUE(files.in_use("a"));
    files.set_in_use("a", false);
    EXPECT_FALSE(files.in_use("a"));
}

TEST_F(MemoryFilesTest, TheDateOfChangeIsTheComputers) {
    files.append("a", "x");
    const CivilTime made = clock.computer_time();
    clock.advance(1h);
    EXPECT_EQ(files.modified("a"), made);
    files.append("a", "x");
    EXPECT_EQ(files.modified("a"), made + 1h);
}

TEST_F(MemoryFilesTest, TheNthCallFailsAndChangesNothing) {
    files.put("a", "A");
    files.fail_call(2, FileResult::disk_full);
    EXPECT_EQ(files.append("a", "1"), FileResult::ok);
    EXPECT_EQ(files.append("a", "2"), FileResult::disk_full);
    EXPECT_EQ(files.append("a", "3"), FileResult::ok);
    EXPECT_EQ(files.contents("a"), "A13");
}

TEST_F(MemoryFilesTest, EveryKindOfCallCanFail) {
    files.put("a", "A");
    const auto fails_next = [&](auto call) {
        files.fail_call(1, FileResult::failed);
        return call() == FileResult::failed;
    };
    EXPECT_TRUE(fails_next([&] { return files.read("a", bytes); }));
    EXPECT_TRUE(fails_next([&] { return files.append("a", "x"); }));
    EXPECT_TRUE(fails_next([&] { return files.rewrite("a", "x"); }));
    EXPECT_TRUE(fails_next([&] { return files.replace("a", "x"); }));
    EXPECT_TRUE(fails_next([&] { return files.rename("a", "b"); }));
    EXPECT_TRUE(fails_next([&] { return files.copy("a", "b"); }));
    EXPECT_TRUE(fails_next([&] { return files.remove("a"); }));
    EXPECT_TRUE(fails_next([&] { return files.sync("a"); }));
    EXPECT_THAT(files.names(), ElementsAre("a"));
    EXPECT_EQ(files.contents("a"), "A");
}

TEST_F(MemoryFilesTest, ANameIsRefusedUntilItIsAllowedAsTargetToo) {
    files.put("a", "A");
    files.refuse("b", FileResult::permission);
    EXPECT_EQ(files.copy("a", "b"), FileResult::permission);
    EXPECT_EQ(files.read("b", bytes), FileResult::permission);
    EXPECT_EQ(files.append("a", "x"), FileResult::ok);
    files.allow();
    EXPECT_EQ(files.append("b", "x"), FileResult::ok);
}

TEST_F(MemoryFilesTest, ADiskThatTakesNoChangesCanBeRead) {
    files.put("a", "A");
    files.refuse_changes(FileResult::disk_full);
    EXPECT_EQ(files.read("a", bytes), FileResult::ok);
    EXPECT_EQ(files.append("b", "x"), FileResult::disk_full);
    EXPECT_FALSE(files.exists("b"));
}

TEST_F(MemoryFilesTest, ARewriteOnAFullDiskHasWrittenOverTheRoomTheFileHad) {
    files.put("a", "12345");
    files.refuse_changes(FileResult::disk_full);
    EXPECT_EQ(files.rewrite("a", "abcdefgh"), FileResult::disk_full);
    EXPECT_EQ(files.contents("a"), "abcde");
}

TEST_F(MemoryFilesTest, EntriesAreTheFilesAndFoldersOfTheProgramsFolderAlone) {
    files.add_folder("/elsewhere");
    files.add_folder("inner");
    files.put("a", "");
    files.put("/elsewhere/b", "");
    EXPECT_THAT(files.entries(), testing::UnorderedElementsAre("a", "inner"));
}

TEST_F(MemoryFilesTest, EveryCallIsRemembered) {
    files.append("a", "12");
    files.rename("a", "b");
    files.read("b", bytes);
    ASSERT_EQ(files.calls().size(), 3u);
    EXPECT_EQ(files.calls()[0].operation, "append");
    EXPECT_EQ(files.calls()[0].bytes, 2u);
    EXPECT_EQ(files.calls()[1].other, "b");
    EXPECT_EQ(files.calls()[2].operation, "read");
    EXPECT_EQ(files.calls()[2].bytes, 2u);
    EXPECT_THAT(journal.lines(), ElementsAre("append a", "rename a to b"));
    files.forget_calls();
    EXPECT_THAT(files.calls(), IsEmpty());
}

struct PowerCutCase {
    const char* what;
    void (*before)(MemoryFiles&);
    std::vector<std::string> names;
    std::string a;  // what file "a" holds
};

TEST(MemoryFilesPowerCut, KeepsWhatWasSyncedAndNoMore) {
    const PowerCutCase cases[] = {
        {"a new file", [](MemoryFiles& f) { f.append("a", "1"); }, {}, ""},
        {"a synced file",
         [](MemoryFiles& f) {
             f.append("a", "1");
             f.sync("a");
         },
         {"a"},
         "1"},
        {"what came after the sync",
         [](MemoryFiles& f) {
             f.append("a", "1");
             f.sync("a");
             f.append("a", "2");
         },
         {"a"},
         "1"},
        {"a replaced file has its new contents",
         [](MemoryFiles& f) {
             f.put("a", "old");
             f.replace("a", "new");
         },
         {"a"},
         "new"},
        {"a rename without sync has not happened",
         [](MemoryFiles& f) {
             f.put("b", "1");
             f.rename("b", "a");
         },
         {"b"},
         ""},
        {"a rename with sync has",
         [](MemoryFiles& f) {
             f.put("b", "1");
             f.rename("b", "a");
             f.sync("a");
         },
         {"a"},
         "1"},
        {"a removal has not happened",
         [](MemoryFiles& f) {
             f.put("a", "1");
             f.remove("a");
         },
         {"a"},
         "1"},
    };
    for (const PowerCutCase& row : cases) {
        SCOPED_TRACE(row.what);
        const VirtualClock clock;
        MemoryFiles files(clock);
        row.before(files);
        files.power_cut();
        EXPECT_EQ(files.names(), row.names);
        EXPECT_EQ(files.contents("a"), row.a);
    }
}

using Disk = std::map<std::string, std::string>;

/// Every disk that some choice makes of it.
std::set<Disk> disks_after(void (*before)(MemoryFiles&)) {
    std::set<Disk> disks;
    for (std::uint32_t choice = 0; choice < 400; ++choice) {
        const VirtualClock clock;
        MemoryFiles files(clock);
        before(files);
        files.power_cut(choice);
        Disk disk;
        for (const std::string& name : files.names()) disk[name] = files.contents(name);
        disks.insert(disk);
    }
    return disks;
}

struct ChoiceCase {
    const char* what;
    void (*before)(MemoryFiles&);
    std::set<Disk> disks;
};

TEST(MemoryFilesPowerCut, MayLeaveEveryDiskThatHoldsWhatWasSynced) {
    const ChoiceCase cases[] = {
        {"what is synced stays",
         [](MemoryFiles& f) {
             f.append("a", "12");
             f.sync("a");
             f.replace("b", "34");
         },
         {{{"a", "12"}, {"b", "34"}}}},
        {"a new file is there as far as it was written, or is not",
         [](MemoryFiles& f) { f.append("a", "12"); },
         {{}, {{"a", ""}}, {{"a", "1"}}, {{"a", "12"}}}},
        {"one that has grown keeps what it had",
         [](MemoryFiles& f) {
             f.put("a", "1");
             f.append("a", "23");
         },
         {{{"a", "1"}}, {{"a", "12"}}, {{"a", "123"}}}},
        {"one that has shrunk as well",
         [](MemoryFiles& f) {
             f.put("a", "12");
             f.rewrite("a", "1");
         },
         {{{"a", "1"}}, {{"a", "12"}}}},
        {"one that was written over may be cut",
         [](MemoryFiles& f) {
             f.put("a", "1");
             f.rewrite("a", "2");
         },
         {{{"a", "1"}}, {{"a", ""}}, {{"a", "2"}}}},
        {"a later change may be there without an earlier one",
         [](MemoryFiles& f) {
             f.put("a", "1");
             f.put("b", "1");
             f.remove("a");
             f.remove("b");
         },
         {{}, {{"a", "1"}}, {{"b", "1"}}, {{"a", "1"}, {"b", "1"}}}},
        {"a rename has happened or not, and what followed it as well",
         [](MemoryFiles& f) {
             f.put("a", "1");
             f.rename("a", "b");
             f.rename("b", "c");
             f.append("a", "2");
         },
         {{{"a", "1"}}, {{"c", "1"}}, {{"a", ""}, {"c", "1"}}, {{"a", "2"}, {"c", "1"}}}},
        {"a rename may outlive the bytes",
         [](MemoryFiles& f) {
             f.append("a", "1");
             f.rename("a", "b");
         },
         {{}, {{"a", ""}}, {{"a", "1"}}, {{"b", ""}}, {{"b", "1"}}}},
        {"a synced file in the place of a renamed one says that the rename has happened",
         [](MemoryFiles& f) {
             f.put("a", "1");
             f.rename("a", "b");
             f.append("a", "2");
             f.sync("a");
         },
         {{{"a", "2"}, {"b", "1"}}}},
    };
    for (const ChoiceCase& row : cases) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(disks_after(row.before), row.disks);
    }
}

// The sectors of a file that is written over reach the disk in any order.
TEST(MemoryFilesPowerCut, MayMixOldSectorsWithNewOnes) {
    const auto disks = disks_after([](MemoryFiles& f) {
        f.put("a", std::string(1024, 'o'));
        f.rewrite("a", std::string(1024, 'n'));
    });
    const std::string old(512, 'o'), now(512, 'n');
    EXPECT_TRUE(disks.contains({{"a", old + now}}));
    EXPECT_TRUE(disks.contains({{"a", now + old}}));
}

TEST(MemoryFilesPowerCut, TheSameChoiceGivesTheSameDisk) {
    std::set<std::string> contents;
    for (int times = 0; times < 2; ++times) {
        const VirtualClock clock;
        MemoryFiles files(clock);
        files.append("a", std::string(100'000, 'a'));
        files.power_cut(7);
        contents.insert(files.contents("a"));
    }
    EXPECT_EQ(contents.size(), 1U);
}

}  // namespace
}  // namespace nimbry::test
