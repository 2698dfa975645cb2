#include "platform/instance_lock.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <optional>

#include "platform/descriptor.h"
#include "tests/support/temporary_folder.h"

namespace nimbry::platform::test {
namespace {

using Result = InstanceLock::Result;

/// Another process that holds the lock of a folder until it is killed.
class OtherCopy {
public:
    explicit OtherCopy(const std::string& folder) {
        int ends[2];
        if (::pipe(ends) != 0) return;
        const Descriptor told(ends[0]);
        const Descriptor tells(ends[1]);
        pid = ::fork();
        if (pid == 0) {
            InstanceLock lock(folder);
            const char word = lock.take() == Result::held ? 'y' : 'n';
            if (::write(tells.number(), &word, 1) == 1) ::pause();
            ::_exit(1);
        }
        char word = 0;
        holds = ::read(told.number(), &word, 1) == 1 && word == 'y';
    }
    ~OtherCopy() { kill(); }
    OtherCopy(const OtherCopy&) = delete;
    OtherCopy& operator=(const OtherCopy&) = delete;

    void kill() {
        if (pid <= 0) return;
        ::kill(pid, SIGKILL);
        ::waitpid(pid, nullptr, 0);
        pid = -1;
    }

    pid_t pid = -1;
    bool holds = false;
};

TEST(InstanceLockTest, AFolderHasOneCopyAtATime) {
    const TemporaryFolder folder;
    std::optional<InstanceLock> first(std::in_place, folder.path());
    EXPECT_EQ(first->take(), Result::held);
    EXPECT_EQ(first->refusal(), "");
    EXPECT_TRUE(folder.holds("nimbry.lock"));

    first.reset();
    EXPECT_FALSE(folder.holds("nimbry.lock")) << "the lock goes with its copy";
    InstanceLock next(folder.path());
    EXPECT_EQ(next.take(), Result::held);
}

TEST(InstanceLockTest, ASecondCopyIsRefusedWithTheProcessOfTheFirst) {
    const TemporaryFolder folder;
    const OtherCopy other(folder.path());
    ASSERT_TRUE(other.holds);
    InstanceLock lock(folder.path());
    EXPECT_EQ(lock.take(), Result::other_instance);
    EXPECT_EQ(lock.refusal(),
              "Another copy of Nimbry (process " + std::to_string(other.pid) + ") has the folder " + folder.path());
}

TEST(InstanceLockTest, TheLockOfAKilledCopyIsTakenOver) {
    const TemporaryFolder folder;
    OtherCopy other(folder.path());
    ASSERT_TRUE(other.holds);
    other.kill();
    ASSERT_TRUE(folder.holds("nimbry.lock"));
    InstanceLock lock(folder.path());
    EXPECT_EQ(lock.take(), Result::held);
}

TEST(InstanceLockTest, TheLockOfACopyOnAnotherMachineIsNotTakenOver) {
    const TemporaryFolder folder;
    // Process, program, host, and the two identifiers of a machine and of its boot.
    folder.put("nimbry.lock", "4711\nnimbryd\nattic\n0123\n4567\n");
    InstanceLock lock(folder.path());
    EXPECT_EQ(lock.take(), Result::other_instance);
    EXPECT_EQ(lock.refusal(), "Another copy of Nimbry (process 4711 on attic) has the folder " + folder.path());
}

TEST(InstanceLockTest, TwoFoldersAreTwoCopies) {
    const TemporaryFolder one;
    const TemporaryFolder other;
    InstanceLock first(one.path());
    InstanceLock second(other.path());
    EXPECT_EQ(first.take(), Result::held);
    EXPECT_EQ(second.take(), Result::held);
}

TEST(InstanceLockTest, AFolderThatCannotBeWrittenIsSaidToBeThat) {
    const TemporaryFolder folder;
    OrdinaryUser::give(folder.path());
    std::filesystem::permissions(folder.path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    const OrdinaryUser user;
    InstanceLock lock(folder.path());
    EXPECT_EQ(lock.take(), Result::not_writable);
    EXPECT_EQ(lock.refusal(), "The folder " + folder.path() + " cannot be written");
}

}  // namespace
}  // namespace nimbry::platform::test
