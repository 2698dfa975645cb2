#include "platform/disk_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "platform/descriptor.h"
#include "tests/support/temporary_folder.h"

namespace nimbry::platform::test {
namespace {

class DiskFilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    DiskFiles files{folder.path()};

    [[nodiscard]] std::string read(const std::string& name) const {
        std::string bytes = "left over";
        EXPECT_EQ(files.read(name, bytes), FileResult::ok);
        return bytes;
    }
    [[nodiscard]] mode_t mode_of(const std::string& name) const {
        struct stat facts {};
        EXPECT_EQ(::stat(folder.path(name).c_str(), &facts), 0);
        return facts.st_mode & 07777U;
    }
    /// Every call that needs the file itself, as it answers for `name`.
    struct Named {
        const char* what;
        std::function<FileResult()> call;
    };
    std::vector<Named> calls_on(const std::string& name) {
        return {
            {"read",
             [=, this] {
                 std::string bytes;
                 return files.read(name, bytes);
             }},
            {"append", [=, this] { return files.append(name, "x"); }},
            {"rewrite", [=, this] { return files.rewrite(name, "x"); }},
            {"replace", [=, this] { return files.replace(name, "x"); }},
            {"rename", [=, this] { return files.rename(name, "other name"); }},
            {"copy", [=, this] { return files.copy(name, "other name"); }},
            {"sync", [=, this] { return files.sync(name); }},
        };
    }
};

/// While it lives no file can grow beyond a length: the next byte fails as on a full disk.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t longest) {
        ::getrlimit(RLIMIT_FSIZE, &was_);
        const rlimit now{longest, was_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &now);
    }
    ~SmallDisk() { ::setrlimit(RLIMIT_FSIZE, &was_); }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    rlimit was_{};
};

std::string bytes_of_every_kind() {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    return bytes;
}

TEST_F(DiskFilesTest, EveryByteComesBackAsItWasWritten) {
    EXPECT_EQ(files.rewrite("a", bytes_of_every_kind()), FileResult::ok);
    EXPECT_EQ(folder.contents("a"), bytes_of_every_kind());
    EXPECT_EQ(read("a"), bytes_of_every_kind());
}

TEST_F(DiskFilesTest, AReadStopsAtItsLimit) {
    folder.put("a", "0123456789");
    std::string bytes;
    EXPECT_EQ(files.read("a", bytes, 4), FileResult::ok);
    EXPECT_EQ(bytes, "0123");
    EXPECT_EQ(files.read("a", bytes, 0), FileResult::ok);
    EXPECT_EQ(bytes, "");
    EXPECT_EQ(files.read("a", bytes, 11), FileResult::ok);
    EXPECT_EQ(bytes, "0123456789");
}

TEST_F(DiskFilesTest, ALongFileIsReadWhole) {
    const std::string long_text(10'000'003, 'n');
    folder.put("a", long_text);
    EXPECT_EQ(read("a"), long_text);
}

TEST_F(DiskFilesTest, AFailedReadLeavesNothingInTheText) {
    std::string bytes = "left over";
    EXPECT_EQ(files.read("missing", bytes), FileResult::not_found);
    EXPECT_EQ(bytes, "");
}

TEST_F(DiskFilesTest, AppendMakesTheFileAndThenAddsAtItsEnd) {
    EXPECT_EQ(files.append("log", "one\r\n"), FileResult::ok);
    EXPECT_EQ(files.append("log", "two\r\n"), FileResult::ok);
    EXPECT_EQ(folder.contents("log"), "one\r\ntwo\r\n");
}

TEST_F(DiskFilesTest, AnAppendThatFailsHalfWayIsCutOffAgain) {
    folder.put("log", "one\r\n");
    {
        const SmallDisk disk(8);  // three of the next line's bytes still fit
        EXPECT_EQ(files.append("log", "two\r\n"), FileResult::disk_full);
    }
    EXPECT_EQ(folder.contents("log"), "one\r\n");
    EXPECT_EQ(files.append("log", "two\r\n"), FileResult::ok);
    EXPECT_EQ(folder.contents("log"), "one\r\ntwo\r\n");
}

TEST_F(DiskFilesTest, RewriteKeepsTheSameFileAndCutsItToTheNewLength) {
    folder.put("a", "a long first text");
    const Descriptor reader(::open(folder.path("a").c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_TRUE(reader);

    EXPECT_EQ(files.rewrite("a", "short"), FileResult::ok);
    EXPECT_EQ(folder.contents("a"), "short");
    char seen[32];
    EXPECT_EQ(::read(reader.number(), seen, sizeof seen), 5) << "a reader that had it open sees the same file";

    EXPECT_EQ(files.rewrite("a", ""), FileResult::ok);
    EXPECT_EQ(folder.contents("a"), "");
}

TEST_F(DiskFilesTest, ARewriteThatDoesNotFitLeavesTheOldTextOrItsLength) {
    folder.put("a", "old text");
    {
        const SmallDisk disk(10);
        EXPECT_EQ(files.rewrite("a", "a new text of twenty-eight.."), FileResult::disk_full);
    }
    EXPECT_GE(folder.contents("a").size(), std::string("old text").size());
}

TEST_F(DiskFilesTest, AReaderOfAReplacedFileSeesTheOldContents) {
    folder.put("a", "old text");
    const Descriptor reader(::open(folder.path("a").c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_TRUE(reader);
    EXPECT_EQ(files.replace("a", "new"), FileResult::ok);
    EXPECT_EQ(folder.contents("a"), "new");
    char seen[32];
    EXPECT_EQ(::read(reader.number(), seen, sizeof seen), 8);
}

TEST_F(DiskFilesTest, ReplaceKeepsTheModeAndTheOwner) {
    folder.put("a", "old");
    ASSERT_EQ(::chmod(folder.path("a").c_str(), 0640), 0);
    OrdinaryUser::give(folder.path("a"));
    struct stat before {};
    ASSERT_EQ(::stat(folder.path("a").c_str(), &before), 0);

    EXPECT_EQ(files.replace("a", "new", true), FileResult::ok);
    struct stat after {};
    ASSERT_EQ(::stat(folder.path("a").c_str(), &after), 0);
    EXPECT_EQ(after.st_mode & 07777U, 0640U);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_NE(after.st_ino, before.st_ino) << "it is another file under the old name";
}

TEST_F(DiskFilesTest, ANewFileIsPrivateWhenItIsAskedToBe) {
    const mode_t mask = ::umask(022);
    EXPECT_EQ(files.replace("open", "x"), FileResult::ok);
    EXPECT_EQ(files.replace("private", "x", true), FileResult::ok);
    ::umask(mask);
    EXPECT_EQ(mode_of("open"), 0644U);
    EXPECT_EQ(mode_of("private"), 0600U);
}

TEST_F(DiskFilesTest, AReplaceThatDoesNotFitLeavesTheOldFileAndNoTemporary) {
    folder.put("a", "old text");
    {
        const SmallDisk disk(10);
        EXPECT_EQ(files.replace("a", "a new text of twenty-eight.."), FileResult::disk_full);
    }
    EXPECT_EQ(folder.contents("a"), "old text");
    EXPECT_EQ(folder.count(), 1);
}

TEST_F(DiskFilesTest, ATemporaryThatACrashLeftIsNoHindrance) {
    folder.put(".Nimbry.ini.new", "half a fi");
    EXPECT_EQ(files.replace("Nimbry.ini", "[Main]\r\n"), FileResult::ok);
    EXPECT_EQ(folder.contents("Nimbry.ini"), "[Main]\r\n");
    EXPECT_EQ(folder.count(), 1);
}

TEST_F(DiskFilesTest, ReplaceThroughALinkReplacesTheFileItLeadsTo) {
    folder.put("real", "old");
    std::filesystem::create_symlink("real", folder.path("link"));
    EXPECT_EQ(files.replace("link", "new"), FileResult::ok);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
    EXPECT_EQ(folder.contents("real"), "new");
}

TEST_F(DiskFilesTest, ALinkThatLeadsNowhereIsAMissingFile) {
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

TEST_F(DiskFilesTest, RenameGivesAnotherNameAndNeverOverwrites) {
    folder.put("a", "first");
    EXPECT_EQ(files.rename("a", "b"), FileResult::ok);
    EXPECT_EQ(folder.contents("b"), "first");
    EXPECT_FALSE(folder.holds("a"));

    folder.put("a", "second");
    EXPECT_EQ(files.rename("a", "b"), FileResult::exists);
    EXPECT_EQ(folder.contents("a"), "second");
    EXPECT_EQ(folder.contents("b"), "first");
    EXPECT_EQ(files.rename("missing", "b"), FileResult::not_found);
    EXPECT_EQ(files.rename("b", "no such folder/b"), FileResult::not_found);
}

TEST_F(DiskFilesTest, RenameReachesAnotherFileSystem) {
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

TEST_F(DiskFilesTest, CopyKeepsTheBytesAndTheModeAndNeverOverwrites) {
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

TEST_F(DiskFilesTest, ACopyThatDoesNotFitIsRemoved) {
    folder.put("a", "twelve bytes");
    {
        const SmallDisk disk(10);
        EXPECT_EQ(files.copy("a", "b"), FileResult::disk_full);
    }
    EXPECT_FALSE(folder.holds("b"));
}

TEST_F(DiskFilesTest, RemoveDeletesOneFile) {
    folder.put("a", "x");
    EXPECT_EQ(files.remove("a"), FileResult::ok);
    EXPECT_FALSE(folder.holds("a"));
    EXPECT_EQ(files.remove("a"), FileResult::not_found);
}

TEST_F(DiskFilesTest, AFolderUnderTheNameIsNoFile) {
    std::filesystem::create_directory(folder.path("nbyprog.log"));
    EXPECT_FALSE(files.exists("nbyprog.log"));
    EXPECT_FALSE(files.in_use("nbyprog.log"));
    EXPECT_EQ(files.modified("nbyprog.log"), std::nullopt);
    for (const Named& named : calls_on("nbyprog.log")) {
        EXPECT_EQ(named.call(), FileResult::not_a_file) << named.what;
    }
    EXPECT_EQ(files.remove("nbyprog.log"), FileResult::not_a_file);
    EXPECT_TRUE(folder.holds("nbyprog.log"));
    EXPECT_EQ(folder.count(), 1);
}

TEST_F(DiskFilesTest, AFolderUnderTheNewNameIsInTheWay) {
    std::filesystem::create_directory(folder.path("taken"));
    folder.put("a", "x");
    EXPECT_EQ(files.rename("a", "taken"), FileResult::exists);
    EXPECT_EQ(files.copy("a", "taken"), FileResult::exists);
    EXPECT_EQ(folder.contents("a"), "x");
}

TEST_F(DiskFilesTest, APipeUnderTheNameIsNoFileAndHoldsNobodyUp) {
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(files.exists("pipe"));
    EXPECT_FALSE(files.in_use("pipe"));
    for (const Named& named : calls_on("pipe")) EXPECT_EQ(named.call(), FileResult::not_a_file) << named.what;
}

TEST_F(DiskFilesTest, AMissingFolderIsNotFound) {
    for (const Named& named : calls_on("no such folder/a"))
        EXPECT_EQ(named.call(), FileResult::not_found) << named.what;
    EXPECT_EQ(files.remove("no such folder/a"), FileResult::not_found);
}

TEST_F(DiskFilesTest, AReadOnlyFolderTakesNoNewFileAndLosesNone) {
    folder.put("a", "x");
    OrdinaryUser::give(folder.path());
    OrdinaryUser::give(folder.path("a"));
    ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
    const OrdinaryUser user;

    EXPECT_EQ(files.append("new", "x"), FileResult::permission);
    EXPECT_EQ(files.rewrite("new", "x"), FileResult::permission);
    EXPECT_EQ(files.replace("new", "x"), FileResult::permission);
    EXPECT_EQ(files.replace("a", "y"), FileResult::permission);
    EXPECT_EQ(files.copy("a", "new"), FileResult::permission);
    EXPECT_EQ(files.rename("a", "new"), FileResult::permission);
    EXPECT_EQ(files.remove("a"), FileResult::permission);
    EXPECT_EQ(folder.contents("a"), "x");
}

TEST_F(DiskFilesTest, AProtectedFileIsNotWrittenInAnyWay) {
    folder.put("a", "x");
    OrdinaryUser::give(folder.path());
    OrdinaryUser::give(folder.path("a"));
    ASSERT_EQ(::chmod(folder.path("a").c_str(), 0444), 0);
    const OrdinaryUser user;

    EXPECT_EQ(files.append("a", "y"), FileResult::permission);
    EXPECT_EQ(files.rewrite("a", "y"), FileResult::permission);
    EXPECT_EQ(files.replace("a", "y"), FileResult::permission);
    EXPECT_EQ(folder.contents("a"), "x");
}

TEST_F(DiskFilesTest, AFileWithoutReadingRightsIsNotRead) {
    folder.put("a", "x");
    OrdinaryUser::give(folder.path("a"));
    ASSERT_EQ(::chmod(folder.path("a").c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    const OrdinaryUser user;
    std::string bytes;
    EXPECT_EQ(files.read("a", bytes), FileResult::permission);
    EXPECT_TRUE(files.exists("a"));
}

TEST_F(DiskFilesTest, TheLongestNameOfTheSystemCanBeUsedInEveryWay) {
    const std::string longest(255, 'n');
    EXPECT_EQ(files.append(longest, "one"), FileResult::ok);
    EXPECT_EQ(files.replace(longest, "two"), FileResult::ok);
    EXPECT_EQ(read(longest), "two");
    EXPECT_EQ(files.append(longest + "n", "one"), FileResult::failed);
    EXPECT_EQ(files.replace(longest + "n", "one"), FileResult::failed);
}

TEST_F(DiskFilesTest, AnAbsoluteNameIsTakenAsItIs) {
    const TemporaryFolder elsewhere;
    EXPECT_EQ(files.append(elsewhere.path("page.html"), "x"), FileResult::ok);
    EXPECT_EQ(elsewhere.contents("page.html"), "x");
    EXPECT_EQ(files.path(elsewhere.path("page.html")), elsewhere.path("page.html"));
    EXPECT_EQ(files.path("page.html"), folder.path("page.html"));
}

TEST_F(DiskFilesTest, ANameInWindows1252IsSpelledAsUtf8OnTheDisk) {
    EXPECT_EQ(files.append("f\xFCr uns \x80", "x"), FileResult::ok);
    EXPECT_EQ(folder.contents("für uns €"), "x");
    EXPECT_EQ(files.append("für uns €", "y"), FileResult::ok) << "a name in UTF-8 is that name already";
    EXPECT_EQ(folder.contents("für uns €"), "xy");
}

TEST_F(DiskFilesTest, AFileIsInUseWhileSomebodyHasItOpen) {
    folder.put("a", "x");
    EXPECT_FALSE(files.in_use("a"));
    {
        const Descriptor reader(::open(folder.path("a").c_str(), O_RDONLY | O_CLOEXEC));
        EXPECT_TRUE(files.in_use("a")) << "a reader";
    }
    {
        const Descriptor writer(::open(folder.path("a").c_str(), O_WRONLY | O_CLOEXEC));
        EXPECT_TRUE(files.in_use("a")) << "a writer";
    }
    EXPECT_FALSE(files.in_use("a"));
    EXPECT_FALSE(files.in_use("missing"));
}

TEST_F(DiskFilesTest, LookingWhetherAFileIsInUseLeavesNoLeaseBehind) {
    folder.put("a", "x");
    ASSERT_FALSE(files.in_use("a"));
    const Descriptor other(::open(folder.path("a").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_TRUE(other) << "with a lease on it this open would be refused";
}

TEST_F(DiskFilesTest, AFileOfAnotherOwnerCountsAsFree) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can make a file of another owner";
    folder.put("a", "x");
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    const Descriptor reader(::open(folder.path("a").c_str(), O_RDONLY | O_CLOEXEC));
    const OrdinaryUser user;
    EXPECT_FALSE(files.in_use("a"));
}

TEST_F(DiskFilesTest, TheSignalsOfALeaseAndOfAFileLimitEndNothing) {
    EXPECT_EQ(std::raise(SIGIO), 0);
    EXPECT_EQ(std::raise(SIGXFSZ), 0);
}

TEST_F(DiskFilesTest, TheTimeOfTheLastChangeIsCivilTimeOfTheComputersZone) {
    folder.put("a", "x");
    // 1 January 2026 12:00:00 UTC and 1 July 2026 12:00:00 UTC.
    struct Case {
        std::time_t moment;
        int offset_hours;
    };
    const char* zone = std::getenv("TZ");
    const std::string was = zone == nullptr ? "" : zone;
    ::setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    ::tzset();
    for (const Case& c : {Case{1767268800, 1}, Case{1782907200, 2}}) {
        const timespec times[2] = {{c.moment, 0}, {c.moment, 999'000'000}};
        ASSERT_EQ(::utimensat(AT_FDCWD, folder.path("a").c_str(), times, 0), 0);
        const CivilTime expected{std::chrono::seconds{c.moment} + std::chrono::hours{c.offset_hours}};
        EXPECT_EQ(files.modified("a"), expected);
    }
    zone == nullptr ? ::unsetenv("TZ") : ::setenv("TZ", was.c_str(), 1);
    ::tzset();
    EXPECT_EQ(files.modified("missing"), std::nullopt);
}

TEST_F(DiskFilesTest, NothingStaysOpenBetweenCalls) {
    const auto open_descriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    const auto before = open_descriptors();
    folder.put("a", "x");
    std::filesystem::create_directory(folder.path("b"));
    for (const std::string name : {"a", "b", "missing/a"}) {
        for (const Named& named : calls_on(name)) {
            (void)named.call();
            (void)files.remove("other name");
        }
        (void)files.in_use(name);
        (void)files.modified(name);
    }
    EXPECT_EQ(open_descriptors(), before);
}

}  // namespace
}  // namespace nimbry::platform::test
