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
#include <filesystem>
#include <future>
#include <string>
#include <thread>

#include "platform/descriptor.h"
#include "tests/platform/disk_folder.h"

namespace nimbry::platform::test {
namespace {

class DiskLimitsTest : public DiskFolder {};

TEST_F(DiskLimitsTest, AFolderUnderTheNameIsNoFile) {
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

TEST_F(DiskLimitsTest, APipeUnderTheNameIsNoFileAndHoldsNobodyUp) {
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(files.exists("pipe"));
    EXPECT_FALSE(files.in_use("pipe"));
    for (const Named& named : calls_on("pipe")) EXPECT_EQ(named.call(), FileResult::not_a_file) << named.what;
}

TEST_F(DiskLimitsTest, AMissingFolderIsNotFound) {
    for (const Named& named : calls_on("no such folder/a"))
        EXPECT_EQ(named.call(), FileResult::not_found) << named.what;
    EXPECT_EQ(files.remove("no such folder/a"), FileResult::not_found);
}

TEST_F(DiskLimitsTest, AReadOnlyFolderTakesNoNewFileAndLosesNone) {
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

TEST_F(DiskLimitsTest, AProtectedFileIsNotWrittenInAnyWay) {
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

TEST_F(DiskLimitsTest, AFileWithoutReadingRightsIsNotRead) {
    folder.put("a", "x");
    OrdinaryUser::give(folder.path("a"));
    ASSERT_EQ(::chmod(folder.path("a").c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    const OrdinaryUser user;
    std::string bytes;
    EXPECT_EQ(files.read("a", bytes), FileResult::permission);
    EXPECT_TRUE(files.exists("a"));
}

TEST_F(DiskLimitsTest, AFileIsInUseWhileSomebodyHasItOpen) {
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

TEST_F(DiskLimitsTest, LookingWhetherAFileIsInUseLeavesNoLeaseBehind) {
    folder.put("a", "x");
    ASSERT_FALSE(files.in_use("a"));
    const Descriptor other(::open(folder.path("a").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_TRUE(other) << "with a lease on it this open would be refused";
}

// Somebody who holds a lease on the file is asked by the kernel to give it back; only in_use() goes on without it.
TEST_F(DiskLimitsTest, AWriteWaitsForTheLeaseOfAnother) {
    folder.put("a", "x");
    std::promise<void> leased;
    std::thread other([&] {
        const Descriptor holder(::open(folder.path("a").c_str(), O_RDONLY | O_CLOEXEC));
        const bool held = ::fcntl(holder.number(), F_SETLEASE, F_WRLCK) == 0;
        leased.set_value();
        // It no longer counts as held from the moment on that somebody's open asks for it.
        while (held && ::fcntl(holder.number(), F_GETLEASE) == F_WRLCK) std::this_thread::yield();
    });
    leased.get_future().wait();
    EXPECT_EQ(files.rewrite("a", "y"), FileResult::ok);
    other.join();
    EXPECT_EQ(folder.contents("a"), "y");
}

TEST_F(DiskLimitsTest, AFileOfAnotherOwnerCountsAsFree) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can make a file of another owner";
    folder.put("a", "x");
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    const Descriptor reader(::open(folder.path("a").c_str(), O_RDONLY | O_CLOEXEC));
    const OrdinaryUser user;
    EXPECT_FALSE(files.in_use("a"));
}

TEST_F(DiskLimitsTest, TheSignalsOfALeaseAndOfAFileLimitEndNothing) {
    EXPECT_EQ(std::raise(SIGIO), 0);
    EXPECT_EQ(std::raise(SIGXFSZ), 0);
}

TEST_F(DiskLimitsTest, TheTimeOfTheLastChangeIsCivilTimeOfTheComputersZone) {
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

TEST_F(DiskLimitsTest, NothingStaysOpenBetweenCalls) {
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
