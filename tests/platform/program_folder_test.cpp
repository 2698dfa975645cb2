#include "platform/program_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/temporary_folder.h"

namespace nimbry::platform::test {
namespace {

namespace fs = std::filesystem;

class ProgramFolderTest : public testing::Test {
protected:
    ProgramFolderTest() {
        for (const char* name : {"dir", "home", "bin", "data"}) fs::create_directory(place.path(name));
    }
    /// All four hints, each to a folder of its own.
    [[nodiscard]] FolderHints all() const {
        return {place.path("dir"), place.path("home"), place.path("bin"), place.path("data")};
    }
    TemporaryFolder place;
};

TEST_F(ProgramFolderTest, TheOptionComesFirstThenTheVariableThenTheExecutablesFolderThenTheDataFolder) {
    place.put("bin/Nimbry.ini", "");
    FolderHints hints = all();
    EXPECT_EQ(program_folder(hints).path, place.path("dir"));
    hints.dir.reset();
    EXPECT_EQ(program_folder(hints).path, place.path("home"));
    hints.home_variable = "";
    EXPECT_EQ(program_folder(hints).path, place.path("bin"));
    fs::remove(place.path("bin/Nimbry.ini"));
    EXPECT_EQ(program_folder(hints).path, place.path("data/nimbry"));
}

TEST_F(ProgramFolderTest, TheUsersOwnFolderIsMadeAtFirstUseForNobodyElse) {
    FolderHints hints{std::nullopt, "", place.path("bin"), place.path("data/not yet")};
    const ProgramFolder folder = program_folder(hints);
    ASSERT_TRUE(folder) << folder.error;
    EXPECT_EQ(folder.path, place.path("data/not yet/nimbry"));
    EXPECT_EQ(fs::status(folder.path).permissions(), fs::perms::owner_all);
}

TEST_F(ProgramFolderTest, AMissingNamedFolderIsMadeWithItsParents) {
    FolderHints hints = all();
    hints.dir = place.path("new/station");
    EXPECT_EQ(program_folder(hints).path, place.path("new/station"));
    EXPECT_TRUE(fs::is_directory(place.path("new/station")));
    hints.dir.reset();
    hints.home_variable = place.path("by variable");
    EXPECT_EQ(program_folder(hints).path, place.path("by variable"));
}

TEST_F(ProgramFolderTest, AProgramThatOnlyAsksMakesNoFolder) {
    FolderHints hints = all();
    hints.dir = place.path("new");
    const ProgramFolder folder = program_folder(hints, false);
    EXPECT_EQ(folder.error, "The folder " + place.path("new") + " cannot be used: there is no such folder");
    EXPECT_FALSE(place.holds("new"));
}

TEST_F(ProgramFolderTest, EverySpellingOfAFolderGivesOnePath) {
    fs::create_directory_symlink("dir", place.path("link"));
    for (const char* spelling : {"dir", "dir/", "./dir/.", "bin/../dir", "link", "link/"}) {
        FolderHints hints = all();
        hints.dir = place.path(spelling);
        EXPECT_EQ(program_folder(hints).path, place.path("dir")) << spelling;
    }
}

TEST_F(ProgramFolderTest, AFileUnderTheNameIsRefusedInOneLine) {
    place.put("file", "x");
    FolderHints hints = all();
    hints.dir = place.path("file");
    const ProgramFolder folder = program_folder(hints);
    EXPECT_FALSE(folder);
    EXPECT_EQ(folder.path, "");
    EXPECT_EQ(folder.error, "The folder " + place.path("file") + " cannot be used: it is not a folder");
    hints.dir = place.path("file/below");
    EXPECT_EQ(program_folder(hints).error,
              "The folder " + place.path("file/below") + " cannot be used: Not a directory");
}

TEST_F(ProgramFolderTest, AFolderThatCannotBeMadeIsRefusedInOneLine) {
    fs::permissions(place.path(), fs::perms::owner_read | fs::perms::owner_exec);
    OrdinaryUser::give(place.path());
    FolderHints hints = all();
    hints.dir = place.path("new");
    const OrdinaryUser user;
    EXPECT_EQ(program_folder(hints).error, "The folder " + place.path("new") + " cannot be used: Permission denied");
}

TEST_F(ProgramFolderTest, AnEmptyOptionIsRefused) {
    FolderHints hints = all();
    hints.dir = "";
    EXPECT_EQ(program_folder(hints).error, "--dir needs the name of a folder");
}

TEST_F(ProgramFolderTest, WithoutAnyHintTheOptionIsAskedFor) {
    EXPECT_EQ(program_folder({}).error, "There is no home folder: name the program's folder with --dir");
}

TEST_F(ProgramFolderTest, TheProcessTellsItsOwnHints) {
    ::setenv("NIMBRY_HOME", "/weather", 1);
    ::setenv("XDG_DATA_HOME", "/some/data", 1);
    const FolderHints hints = FolderHints::of_process("x");
    EXPECT_EQ(hints.dir, "x");
    EXPECT_EQ(hints.home_variable, "/weather");
    EXPECT_EQ(hints.data_folder, "/some/data");
    EXPECT_TRUE(fs::exists(hints.executable_folder + "/platform_tests"));

    ::unsetenv("NIMBRY_HOME");
    ::setenv("XDG_DATA_HOME", "relative", 1);
    ::setenv("HOME", "/home/me", 1);
    EXPECT_EQ(FolderHints::of_process({}).home_variable, "");
    EXPECT_EQ(FolderHints::of_process({}).data_folder, "/home/me/.local/share");
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(FolderHints::of_process({}).data_folder, "/home/me/.local/share");
}

}  // namespace
}  // namespace nimbry::platform::test
