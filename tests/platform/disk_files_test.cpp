#include "platform/disk_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "platform/descriptor.h"
#include "tests/platform/disk_folder.h"
#include "tests/platform/system_calls.h"

namespace nimbry::platform::test {
namespace {

class DiskFilesTest : public DiskFolder {};

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
    std::string long_text;
    long_text.resize(10'000'003, 'n');
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

TEST_F(DiskFilesTest, ARewriteWhoseRoomCannotBeReservedIsWrittenAllTheSame) {
    folder.put("a", "old text");
    SystemCalls calls;
    calls.fallocate_error = EOPNOTSUPP;
    const std::string longer_than_a_block(100'000, 'n');
    EXPECT_EQ(files.rewrite("a", longer_than_a_block), FileResult::ok);
    EXPECT_EQ(folder.contents("a"), longer_than_a_block);
}

TEST_F(DiskFilesTest, ARewriteForWhichThereIsNoRoomChangesNothing) {
    folder.put("a", "old text");
    const std::string longer_than_a_block(100'000, 'n');
    SystemCalls calls;
    for (const int error : {ENOSPC, EDQUOT}) {
        calls.fallocate_error = error;
        EXPECT_EQ(files.rewrite("a", longer_than_a_block), FileResult::disk_full);
        EXPECT_EQ(folder.contents("a"), "old text");
    }
}

TEST_F(DiskFilesTest, ARewriteWithinTheRoomThatTheFileHasAsksForNone) {
    folder.put("a", std::string(4000, 'o'));
    EXPECT_EQ(files.rewrite("a", "short"), FileResult::ok);
    SystemCalls calls;
    calls.fallocate_error = ENOSPC;
    EXPECT_EQ(files.rewrite("a", "a bit longer"), FileResult::ok);
    EXPECT_EQ(folder.contents("a"), "a bit longer");
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

    EXPECT_EQ(files.replace("a", "new"), FileResult::ok);
    struct stat after {};
    ASSERT_EQ(::stat(folder.path("a").c_str(), &after), 0);
    EXPECT_EQ(after.st_mode & 07777U, 0640U);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_NE(after.st_ino, before.st_ino) << "it is another file under the old name";
}

TEST_F(DiskFilesTest, AFileThatOthersCouldReadIsPrivateFromAReplaceOnThatAsksForIt) {
    folder.put("a", "old");
    ASSERT_EQ(::chmod(folder.path("a").c_str(), 0644), 0);
    EXPECT_EQ(files.replace("a", "new", true), FileResult::ok);
    EXPECT_EQ(mode_of("a"), 0600U);
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

}  // namespace
}  // namespace nimbry::platform::test
