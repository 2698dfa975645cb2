#include "platform/command_line.h"

#include <gtest/gtest.h>

namespace nimbry::platform {
namespace {

using Wish = CommandLine::Wish;
using Arguments = std::vector<std::string>;

TEST(CommandLine, EveryRightFormIsUnderstood) {
    struct Case {
        const char* what;
        Arguments arguments;
        Wish wish;
        std::optional<std::string> dir;
        std::string device;
    };
    const Case cases[] = {
        {"nothing", {}, Wish::run, std::nullopt, ""},
        {"a folder", {"--dir", "/var/weather"}, Wish::run, "/var/weather", ""},
        {"a folder after a sign", {"--dir=/var/weather"}, Wish::run, "/var/weather", ""},
        {"a value that holds a sign", {"--dir=a=b"}, Wish::run, "a=b", ""},
        {"a value that looks like an option", {"--dir", "--odd"}, Wish::run, "--odd", ""},
        {"a device", {"--device", "/dev/ttyUSB0"}, Wish::run, std::nullopt, "/dev/ttyUSB0"},
        {"both", {"--device=COM3", "--dir", "w"}, Wish::run, "w", "COM3"},
        {"the later of two counts", {"--dir", "a", "--dir", "b"}, Wish::run, "b", ""},
        {"the version", {"--version"}, Wish::version, std::nullopt, ""},
        {"help", {"--help"}, Wish::help, std::nullopt, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const CommandLine line = read_command_line(c.arguments);
        EXPECT_EQ(line.wish, c.wish);
        EXPECT_EQ(line.dir, c.dir);
        EXPECT_EQ(line.device, c.device);
        EXPECT_EQ(line.complaint, "");
    }
}

TEST(CommandLine, EveryWrongFormHasItsComplaint) {
    struct Case {
        const char* what;
        Arguments arguments;
        const char* complaint;
    };
    const Case cases[] = {
        {"an unknown option", {"--speed", "9600"}, "unknown option --speed"},
        {"an option in short form", {"-d"}, "unknown option -d"},
        {"a stray word", {"start"}, "unexpected argument start"},
        {"an empty word", {""}, "unexpected argument "},
        {"no value", {"--dir"}, "--dir needs a value"},
        {"no value after the sign", {"--device="}, "--device needs a value"},
        {"an empty value", {"--dir", ""}, "--dir needs a value"},
        {"a value for an option that takes none", {"--version=2"}, "unknown option --version=2"},
        {"something wrong after help", {"--help", "me"}, "unexpected argument me"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const CommandLine line = read_command_line(c.arguments);
        EXPECT_EQ(line.wish, Wish::bad_usage);
        EXPECT_EQ(line.complaint, c.complaint);
    }
}

TEST(CommandLine, TheAnswersNameTheProgram) {
    EXPECT_EQ(version_text("nimbryd"), "nimbryd 2.02\n");
    EXPECT_TRUE(help_text("nimbry").starts_with("Usage: nimbry [--dir DIR] [--device PATH]\n"));
    EXPECT_EQ(usage_complaint("nimbryd", "--dir needs a value"), "nimbryd: --dir needs a value (see nimbryd --help)");
}

}  // namespace
}  // namespace nimbry::platform
