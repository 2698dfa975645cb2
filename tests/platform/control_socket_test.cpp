#include <sys/stat.h>
#include <sys/un.h>

#include <optional>
#include <string>

#include "tests/platform/control_server_fixture.h"

namespace nimbry::platform::test {
namespace {

using ControlSocketTest = ControlServerTest;

TEST_F(ControlSocketTest, TheSocketLiesInTheFolderForItsOwnerAloneAndGoesWithTheCopy) {
    struct stat facts {};
    ASSERT_EQ(::lstat(folder.path("nimbry.socket").c_str(), &facts), 0);
    EXPECT_TRUE(S_ISSOCK(facts.st_mode));
    EXPECT_EQ(facts.st_mode & 0777U, 0600U);
    server.reset();
    EXPECT_EQ(folder.count(), 0);
    EXPECT_FALSE(TestCaller(folder.path()).connected());
}

TEST_F(ControlSocketTest, AnotherUserCannotOpenIt) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can become another user";
    std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
    const OrdinaryUser user;
    EXPECT_FALSE(TestCaller(folder.path()).connected());
}

TEST_F(ControlSocketTest, AnotherUsersCopyCountsOnlyForTheOwnerOfTheFolder) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can become another user";
    server.reset();
    std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
    {
        const OrdinaryUser user;
        serve(folder.path());
        ASSERT_EQ(server->error(), "");
    }
    EXPECT_FALSE(TestCaller(folder.path()).connected()) << "a stranger's socket in root's folder";
    OrdinaryUser::give(folder.path());
    EXPECT_TRUE(TestCaller(folder.path()).connected()) << "root asks the copy of the folder's owner";
}

TEST_F(ControlSocketTest, AFoldersNameMayBeOfAnyLength) {
    std::string deep = folder.path();
    for (int n = 0; n < 6; ++n) deep += '/' + std::string(200, 'n');
    std::filesystem::create_directories(deep);
    server.reset();
    serve(deep);
    EXPECT_EQ(server->error(), "");
    EXPECT_TRUE(std::filesystem::exists(deep + "/nimbry.socket"));
    TestCaller caller(deep);
    caller.ask({"x"});
    EXPECT_EQ(caller.answer(), std::string("{\"out\":\"x\\n\"}\n") + done_line);
}

TEST_F(ControlSocketTest, TheSocketOfAKilledCopyIsReplaced) {
    server.reset();
    {
        // What a killed copy leaves: a name that nobody listens at.
        const Descriptor left(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        folder.path("nimbry.socket").copy(address.sun_path, sizeof address.sun_path - 1);
        ASSERT_EQ(::bind(left.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    }
    ASSERT_TRUE(folder.holds("nimbry.socket"));
    EXPECT_FALSE(TestCaller(folder.path()).connected());
    serve(folder.path());
    EXPECT_TRUE(TestCaller(folder.path()).connected());
}

TEST_F(ControlSocketTest, WhereTheFolderTakesNoSocketTheCopyIsReachedAllTheSame) {
    server.reset();
    folder.put("nimbry.socket", "somebody's file");
    serve(folder.path());
    EXPECT_EQ(server->error(), "");
    EXPECT_EQ(folder.contents("nimbry.socket"), "somebody's file");
    EXPECT_TRUE(TestCaller(folder.path()).connected());

    struct stat facts {};
    ASSERT_EQ(::stat(folder.path().c_str(), &facts), 0);
    const std::string name =
        "/tmp/nimbry-" + std::to_string(facts.st_dev) + '-' + std::to_string(facts.st_ino) + ".socket";
    EXPECT_TRUE(std::filesystem::exists(name));
    server.reset();
    EXPECT_FALSE(std::filesystem::exists(name));
}

TEST_F(ControlSocketTest, AMissingFolderHasNoSocketAndNoCopy) {
    server.reset();
    serve(folder.path("missing"));
    EXPECT_EQ(server->error(), "No such file or directory");
    EXPECT_FALSE(TestCaller(folder.path("missing")).connected());
}

}  // namespace
}  // namespace nimbry::platform::test
