#include "programs/nimbry-station/options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nimbry::simulator {
namespace {

using Arguments = std::vector<const char*>;

Options read(const Arguments& arguments) {
    const auto parsed = parse_options(arguments);
    if (const auto* error = std::get_if<UsageError>(&parsed)) ADD_FAILURE() << error->what;
    const auto* options = std::get_if<Options>(&parsed);
    return options != nullptr ? *options : Options{};
}

std::string complaint(const Arguments& arguments) {
    const auto parsed = parse_options(arguments);
    const auto* error = std::get_if<UsageError>(&parsed);
    return error != nullptr ? error->what : "no complaint";
}

TEST(StationOptions, HaveTheirDefaults) {
    const Options options = read({"--link", "x"});
    EXPECT_EQ(options.link, "x");
    EXPECT_EQ(options.device, "");
    EXPECT_EQ(options.start, std::nullopt);
    EXPECT_EQ(options.speed, 1);
    EXPECT_EQ(options.seed, 1U);
    EXPECT_EQ(options.scenario + options.record + options.play, "");
    EXPECT_FALSE(options.help || options.version);
}

TEST(StationOptions, AreReadWithABlankOrAnEqualsSign) {
    const Options options = read({"--device=/dev/ttyS0", "--start", "2026-10-31 23:58:00", "--speed=30", "--seed", "99",
                                  "--scenario=a=b", "--record", "r"});
    EXPECT_EQ(options.device, "/dev/ttyS0");
    EXPECT_EQ(options.start, std::chrono::local_days{std::chrono::year{2026} / 10 / 31} + std::chrono::minutes(1438));
    EXPECT_EQ(options.speed, 30);
    EXPECT_EQ(options.seed, 99U);
    EXPECT_EQ(options.scenario, "a=b");
    EXPECT_EQ(options.record, "r");
    EXPECT_EQ(read({"--link", "x", "--play", "p"}).play, "p");
}

TEST(StationOptions, HelpAndVersionNeedNoLine) {
    EXPECT_TRUE(read({"--help"}).help);
    EXPECT_TRUE(read({"--version"}).version);
    EXPECT_TRUE(read({"--speed", "2", "--help", "--nonsense"}).help);
}

struct BadUsage {
    const char* why;
    Arguments arguments;
    const char* complaint;
};

TEST(StationOptions, BadUsageIsOneClearLine) {
    const char* speed = "--speed takes a whole number from 1 to 1000";
    for (const BadUsage& bad : std::initializer_list<BadUsage>{
             {"no line is named", {}, "--link PATH or --device PATH is needed"},
             {"two lines are named", {"--link", "x", "--device", "y"}, "--link and --device exclude each other"},
             {"an option nobody knows", {"--foo", "x"}, "unknown option --foo"},
             {"a bare word", {"x"}, "unknown option x"},
             {"an option without its value", {"--link"}, "--link needs a value"},
             {"an empty value", {"--link="}, "--link needs a value"},
             {"a start that is no date",
              {"--link", "x", "--start", "today"},
              "--start takes a date and time like \"2026-10-31 23:58:00\""},
             {"a station that stands still", {"--link", "x", "--speed", "0"}, speed},
             {"a broken speed", {"--link", "x", "--speed", "1.5"}, speed},
             {"a speed nobody can send", {"--link", "x", "--speed", "1001"}, speed},
             {"a seed that is a word", {"--link", "x", "--seed", "rain"}, "--seed takes a whole number, 0 or more"},
             {"weather and a recording at once",
              {"--link", "x", "--play", "p", "--scenario", "s"},
              "--play and --scenario exclude each other"},
             {"a recording of a recording",
              {"--link", "x", "--play", "p", "--record", "r"},
              "--play and --record exclude each other"},
         }) {
        SCOPED_TRACE(bad.why);
        EXPECT_EQ(complaint(bad.arguments), bad.complaint);
    }
}

TEST(StationOptions, HelpNamesEveryOption) {
    for (const char* option : {"--link", "--device", "--start", "--speed", "--seed", "--scenario", "--record", "--play",
                               "--help", "--version"}) {
        EXPECT_NE(help_text().find(std::string("  ") + option), std::string_view::npos) << option;
    }
}

}  // namespace
}  // namespace nimbry::simulator
