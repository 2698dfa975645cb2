#include "platform/canberra_sounds.h"

#include <gtest/gtest.h>

#include "platform/disk_files.h"
#include "tests/support/temporary_folder.h"

namespace nimbry::platform {
namespace {

// Where a test runs there is seldom a device, and what there is must not be heard: a driver that plays nothing.
class CanberraSoundsTest : public testing::Test {
protected:
    void SetUp() override { setenv("CANBERRA_DRIVER", "null", 1); }
    void TearDown() override { unsetenv("CANBERRA_DRIVER"); }

    /// What playing `file` writes to standard error; it must return.
    std::string played(const std::string& file) {
        testing::internal::CaptureStderr();
        CanberraSounds sounds(files);
        sounds.play(file);
        return testing::internal::GetCapturedStderr();
    }

    test::TemporaryFolder folder;
    DiskFiles files{folder.path()};
};

TEST_F(CanberraSoundsTest, AMissingFileIsSilent) {
    EXPECT_EQ(played("click.WAV"), "");
}

TEST_F(CanberraSoundsTest, AFileThatIsNoSoundIsSilent) {
    folder.put("click.WAV", "no sound at all");
    EXPECT_EQ(played("click.WAV"), "");
}

TEST_F(CanberraSoundsTest, WithoutADeviceEverySoundIsSilent) {
    setenv("CANBERRA_DRIVER", "no-such-driver", 1);
    folder.put("click.WAV", "RIFF");
    EXPECT_EQ(played("click.WAV"), "");
}

TEST_F(CanberraSoundsTest, AFileOfTheFolderComesBeforeTheProgramsOwn) {
    const test::TemporaryFolder beside, shared;
    const CanberraSounds sounds(files, {beside.path(), shared.path()});
    EXPECT_EQ(sounds.path_of("click.WAV"), "") << "there is none";
    shared.put("click.WAV", "RIFF");
    EXPECT_EQ(sounds.path_of("click.WAV"), shared.path() + "/click.WAV");
    beside.put("click.WAV", "RIFF");
    EXPECT_EQ(sounds.path_of("click.WAV"), beside.path() + "/click.WAV");
    folder.put("click.WAV", "RIFF");
    EXPECT_EQ(sounds.path_of("click.WAV"), files.path("click.WAV"));
    EXPECT_EQ(sounds.path_of("Nimbry.WAV"), "");
}

TEST(SoundFolders, AreBesideTheProgramAndInTheSharedDataOfItsInstallation) {
    EXPECT_EQ(sound_folders("/usr/bin"), (std::vector<std::string>{"/usr/bin", "/usr/bin/../share/nimbry"}));
}

}  // namespace
}  // namespace nimbry::platform
