#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/platform/disk_folder.h"
#include "tests/platform/system_calls.h"

namespace nimbry::platform::test {
namespace {

class DiskNamesTest : public DiskFolder {};

struct RenameCase {
    const char* disk;
    int renameat2_error;  ///< 0: the call works
};

TEST_F(DiskNamesTest, RenameGivesAnotherNameAndNeverOverwrites) {
    for (const RenameCase& c : {RenameCase{"renames without overwriting", 0},
                                RenameCase{"a file system that cannot be told to leave a file alone", EINVAL},
                                RenameCase{"a system that has no such call", ENOSYS}}) {
        SCOPED_TRACE(c.disk);
        const TemporaryFolder place;
        DiskFiles disk(place.path());
        SystemCalls calls;
        calls.renameat2_error = c.renameat2_error;
        place.put("a", "first");
        EXPECT_EQ(disk.rename("a", "b"), FileResult::ok);
        EXPECT_EQ(place.contents("b"), "first");
        EXPECT_FALSE(place.holds("a"));

        place.put("a", "second");
        EXPECT_EQ(disk.rename("a", "b"), FileResult::exists);
        EXPECT_EQ(place.contents("a"), "second");
        EXPECT_EQ(place.contents("b"), "first");
        EXPECT_EQ(disk.rename("missing", "c"), FileResult::not_found);
        EXPECT_EQ(disk.rename("a", "no such folder/b"), FileResult::not_found);
        std::filesystem::create_symlink("nowhere", place.path("link"));
        EXPECT_EQ(disk.rename("a", "link"), FileResult::exists) << "a link that leads nowhere takes the name too";
    }
}

TEST_F(DiskNamesTest, RenameReachesAnotherFileSystem) {
    struct stat here {
    }, there{};
    ASSERT_EQ(::stat(folder.path().c_str(), &here), 0);
    const std::string target = "/dev/shm/nimbry-rename-" + std::to_string(::getpid());
    if (::stat("/dev/shm", &there) != 0 || here.st_dev == there.st_dev) GTEST_SKIP() << "there is only one file system";
    folder.put("a", "bytes");
    EXPECT_EQ(files.rename("a", target), FileResult::ok);
    EXPECT_FALSE(folder.holds("a"));
    EXPECT_EQ(read(target), "bytes");
    EXPECT_EQ(files.remove(target), FileResult::ok);
}

TEST_F(DiskNamesTest, ARenameThatFailsForAnotherReasonIsNotTriedInAnotherWay) {
    SystemCalls calls;
    calls.renameat2_error = EIO;
    folder.put("a", "bytes");
    EXPECT_EQ(files.rename("a", "b"), FileResult::failed);
    EXPECT_EQ(folder.contents("a"), "bytes");
    EXPECT_FALSE(folder.holds("b"));
}

TEST_F(DiskNamesTest, CopyKeepsTheBytesAndTheModeAndNeverOverwrites) {
    folder.put("a", bytes_of_every_kind());
    ASSERT_EQ(::chmod(folder.path("a").c_str(), 0600), 0);
    EXPECT_EQ(files.copy("a", "b"), FileResult::ok);
    EXPECT_EQ(folder.contents("a"), bytes_of_every_kind());
    EXPECT_EQ(folder.contents("b"), bytes_of_every_kind());
    EXPECT_EQ(mode_of("b"), 0600U);

    folder.put("c", "other");
    EXPECT_EQ(files.copy("a", "c"), FileResult::exists);
    EXPECT_EQ(folder.contents("c"), "other");
    EXPECT_EQ(files.copy("a", "a"), FileResult::exists);
    EXPECT_EQ(files.copy("missing", "d"), FileResult::not_found);
}

TEST_F(DiskNamesTest, ACopyThatDoesNotFitIsRemoved) {
    folder.put("a", "twelve bytes");
    {
        const SmallDisk disk(10);
        EXPECT_EQ(files.copy("a", "b"), FileResult::disk_full);
    }
    EXPECT_FALSE(folder.holds("b"));
}

TEST_F(DiskNamesTest, RemoveDeletesOneFile) {
    folder.put("a", "x");
    EXPECT_EQ(files.remove("a"), FileResult::ok);
    EXPECT_FALSE(folder.holds("a"));
    EXPECT_EQ(files.remove("a"), FileResult::not_found);
}

TEST_F(DiskNamesTest, AFolderUnderTheNewNameIsInTheWay) {
    std::filesystem::create_directory(folder.path("taken"));
    folder.put("a", "x");
    EXPECT_EQ(files.rename("a", "taken"), FileResult::exists);
    EXPECT_EQ(files.copy("a", "taken"), FileResult::exists);
    EXPECT_EQ(folder.contents("a"), "x");
}

TEST_F(DiskNamesTest, TheLongestNameOfTheSystemCanBeUsedInEveryWay) {
    const std::string longest(255, 'n');
    EXPECT_EQ(files.append(longest, "one"), FileResult::ok);
    EXPECT_EQ(files.replace(longest, "two"), FileResult::ok);
    EXPECT_EQ(read(longest), "two");
    EXPECT_EQ(files.append(longest + "n", "one"), FileResult::failed);
    EXPECT_EQ(files.replace(longest + "n", "one"), FileResult::failed);
}

TEST_F(DiskNamesTest, AnAbsoluteNameIsTakenAsItIs) {
    const TemporaryFolder elsewhere;
    EXPECT_EQ(files.append(elsewhere.path("page.html"), "x"), FileResult::ok);
    EXPECT_EQ(elsewhere.contents("page.html"), "x");
    EXPECT_EQ(files.path(elsewhere.path("page.html")), elsewhere.path("page.html"));
    EXPECT_EQ(files.path("page.html"), folder.path("page.html"));
}

TEST_F(DiskNamesTest, ANameInWindows1252IsSpelledAsUtf8OnTheDisk) {
    EXPECT_EQ(files.append("f\xFCr uns \x80", "x"), FileResult::ok);
    EXPECT_EQ(folder.contents("für uns €"), "x");
    EXPECT_EQ(files.append("für uns €", "y"), FileResult::ok) << "a name in UTF-8 is that name already";
    EXPECT_EQ(folder.contents("für uns €"), "xy");
}

TEST_F(DiskNamesTest, ALinkThatLeadsNowhereIsAMissingFile) {
    std::filesystem::create_symlink("nowhere", folder.path("link"));
    std::string bytes;
    EXPECT_FALSE(files.exists("link"));
    EXPECT_EQ(files.read("link", bytes), FileResult::not_found);
    folder.put("a", "x");
    EXPECT_EQ(files.copy("a", "link"), FileResult::exists) << "the name is taken all the same";
    EXPECT_EQ(files.rename("a", "link"), FileResult::exists);
    EXPECT_EQ(files.replace("link", "new"), FileResult::ok);
    EXPECT_EQ(folder.contents("link"), "new");
    EXPECT_FALSE(folder.holds("nowhere"));
}

TEST_F(DiskNamesTest, EntriesAreTheFilesAndFoldersOfTheFolder) {
    EXPECT_TRUE(files.entries().empty());
    EXPECT_EQ(files.append("a", ""), FileResult::ok);
    EXPECT_EQ(files.append(".b", ""), FileResult::ok);
    ASSERT_EQ(::mkdir(folder.path("inner").c_str(), 0700), 0);
    EXPECT_EQ(files.append("inner/c", ""), FileResult::ok);
    std::vector<std::string> entries = files.entries();
    std::sort(entries.begin(), entries.end());
    EXPECT_EQ(entries, (std::vector<std::string>{".b", "a", "inner"}));
}

TEST_F(DiskNamesTest, AFolderThatIsNotThereHasNoEntries) {
    EXPECT_TRUE(DiskFiles(folder.path("none")).entries().empty());
}

}  // namespace
}  // namespace nimbry::platform::test
