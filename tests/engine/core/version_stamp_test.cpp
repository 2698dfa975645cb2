#include "engine/core/version_stamp.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/core/ini_file.h"
#include "tests/world/memory_files.h"
#include "tests/world/virtual_clock.h"

namespace nimbry {
namespace {

const std::string file = "Nimbry.ini";

struct StampCase {
    const char* law;
    std::string before, after;
};

class VersionStamp : public testing::TestWithParam<StampCase> {};

TEST_P(VersionStamp, AndTheFirstKeysStandInTheFile) {
    SCOPED_TRACE(GetParam().law);
    test::VirtualClock clock;
    test::MemoryFiles disk{clock};
    disk.put(file, GetParam().before);
    clsIniFile ini{disk, file};
    ASSERT_TRUE(ini.read());
    stamp_version(ini);
    EXPECT_EQ(disk.contents(file), GetParam().after);
}

const std::string rest = "WebComment=<!--empty-->\r\nWebComment2=<!--empty-->\r\nFTPPort=21\r\n";
const std::string stamped = "[Main]\r\nVersion=Nimbry|202|251003\r\n";

INSTANTIATE_TEST_SUITE_P(
    Case, VersionStamp,
    testing::Values(
        StampCase{"a first run", "", stamped + rest},
        StampCase{"an empty stamp is replaced", "[Main]\r\nVersion=\r\n", stamped + rest},
        StampCase{"any other text is replaced", "[Main]\r\nVersion=Nimbry|201|240101\r\n", stamped + rest},
        StampCase{"a stamp of another case is replaced", "[Main]\r\nVersion=NIMBRY|202|251003\r\n", stamped + rest},
        StampCase{"another build of the version stays", "[Main]\r\nVersion=Nimbry|202|999999\r\n",
                  "[Main]\r\nVersion=Nimbry|202|999999\r\n" + rest},
        StampCase{"any product that ends so stays", "[Main]\r\nVersion= Berry|202|x \r\n",
                  "[Main]\r\nVersion= Berry|202|x \r\n" + rest},
        StampCase{"a comment stays what it was", stamped + "WebComment=Hello; you\r\nWebComment2=b\r\nFTPPort=21\r\n",
                  stamped + "WebComment=Hello; you\r\nWebComment2=b\r\nFTPPort=21\r\n"},
        StampCase{"an empty comment stays empty", stamped + "WebComment=\r\nWebComment2=b\r\nFTPPort=21\r\n",
                  stamped + "WebComment=\r\nWebComment2=b\r\nFTPPort=21\r\n"},
        StampCase{"a comment in quotes loses them", stamped + "WebComment=\"a\"\r\nWebComment2='b'\r\nFTPPort=21\r\n",
                  stamped + "WebComment=a\r\nWebComment2=b\r\nFTPPort=21\r\n"},
        StampCase{"another port is left as it is", stamped + "WebComment=a\r\nWebComment2=b\r\nFTPPort=\"2121\"\r\n",
                  stamped + "WebComment=a\r\nWebComment2=b\r\nFTPPort=\"2121\"\r\n"},
        StampCase{"an empty port too", stamped + "WebComment=a\r\nWebComment2=b\r\nFTPPort=\r\n",
                  stamped + "WebComment=a\r\nWebComment2=b\r\nFTPPort=\r\n"}));

TEST(VersionStampOnce, IsOneWrite) {
    test::VirtualClock clock;
    test::MemoryFiles disk{clock};
    clsIniFile ini{disk, file};
    ASSERT_TRUE(ini.read());
    disk.forget_calls();
    stamp_version(ini);
    ASSERT_EQ(disk.calls().size(), 2U);
    EXPECT_EQ(disk.calls()[0].operation, "read");
    EXPECT_EQ(disk.calls()[1].operation, "replace");
}

}  // namespace
}  // namespace nimbry
