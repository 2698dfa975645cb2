#include "programs/nimbry-station/scenario.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace nimbry::simulator {
namespace {

using namespace std::chrono_literals;

constexpr CivilTime start = std::chrono::local_days{std::chrono::year{2026} / 10 / 31} + 23h + 58min;

std::vector<Step> steps_of(std::string_view text) {
    ScenarioReading read = read_scenario(text, start);
    if (read.error) ADD_FAILURE() << "line " << read.error->line << ": " << read.error->what;
    return read.steps;
}

/// The only step of a text, as the action it must be.
template <typename Kind>
Kind only(std::string_view text) {
    const std::vector<Step> steps = steps_of(text);
    EXPECT_EQ(steps.size(), 1U) << text;
    const Kind* action = steps.size() == 1 ? std::get_if<Kind>(&steps.front().action) : nullptr;
    if (action == nullptr) ADD_FAILURE() << "another kind of action: " << text;
    return action != nullptr ? *action : Kind{};
}

TEST(Scenario, OfNothingButCommentsAndBlanksHasNoSteps) {
    EXPECT_TRUE(steps_of("").empty());
    EXPECT_TRUE(steps_of("# a quiet day\n\n   \t\r\n#at +1s unplug").empty());
}

struct NamedTime {
    const char* what;
    const char* text;
    std::chrono::seconds at;
};

TEST(Scenario, TimesAreOffsetsTimesOfDayOrDates) {
    for (const NamedTime& time : {
             NamedTime{"an offset", "at +90s unplug", 90s},
             NamedTime{"an offset of parts", "at +1h30m unplug", 90min},
             NamedTime{"the start itself", "at +0s unplug", 0s},
             NamedTime{"a time of this day", "at 23:59 unplug", 60s},
             NamedTime{"the time of the start", "at 23:58:00 unplug", 0s},
             NamedTime{"a time that is past is tomorrow's", "at 23:57:59 unplug", 24h - 1s},
             NamedTime{"after midnight", "at 00:00:30 unplug", 150s},
             NamedTime{"a date and time", "at 2026-11-01 00:00:05 unplug", 125s},
             NamedTime{"a date and time without seconds", "at 2026-11-02 00:00 unplug", 24h + 2min},
             NamedTime{"blanks, tabs and a comment do not matter", "\t at   +5s\tunplug  # here\r\n", 5s},
         }) {
        SCOPED_TRACE(time.what);
        const std::vector<Step> steps = steps_of(time.text);
        ASSERT_EQ(steps.size(), 1U);
        EXPECT_EQ(steps.front().at, time.at);
    }
}

TEST(Scenario, StepsComeInOrderOfTimeAndThoseOfOneMomentInOrderOfTheFile) {
    const std::vector<Step> steps = steps_of("at +20s unplug\nat +10s reset rain\nat +20s silence\nat +10s speak\n");
    ASSERT_EQ(steps.size(), 4U);
    EXPECT_TRUE(std::holds_alternative<ResetRain>(steps[0].action));
    EXPECT_TRUE(std::holds_alternative<Silence>(steps[1].action));
    EXPECT_TRUE(std::holds_alternative<Plug>(steps[2].action));
    EXPECT_TRUE(std::holds_alternative<Silence>(steps[3].action));
}

TEST(Scenario, EveryReadingCanBeSetAtBothEndsOfItsRange) {
    for (std::size_t n = 0; n < reading_infos.size(); ++n) {
        const ReadingInfo& info = reading_infos[n];
        for (const double value : {info.low, info.high}) {
            SCOPED_TRACE(info.name);
            const auto hold = only<HoldReading>("at +1s set " + std::string(info.name) + " " + std::to_string(value));
            EXPECT_EQ(hold.reading, static_cast<Reading>(n));
            EXPECT_EQ(hold.value, value);
            EXPECT_EQ(hold.over, 0s);
        }
    }
}

TEST(Scenario, AReadingCanMoveSlowlyAndBeReleasedByItself) {
    const std::vector<Step> steps = steps_of("at +1m set gust 31.5 over 20m for 1h");
    ASSERT_EQ(steps.size(), 2U);
    const auto hold = std::get<HoldReading>(steps[0].action);
    EXPECT_EQ(hold.reading, Reading::gust);
    EXPECT_EQ(hold.value, 31.5);
    EXPECT_EQ(hold.over, 20min);
    EXPECT_EQ(steps[1].at, 61min);
    EXPECT_EQ(std::get<ReleaseReading>(steps[1].action).reading, Reading::gust);
}

TEST(Scenario, ReleaseNamesAReadingOrAllOrTheDigits) {
    EXPECT_EQ(only<ReleaseReading>("at +1s release barometer").reading, Reading::barometer);
    EXPECT_EQ(only<ReleaseReading>("at +1s release all").reading, std::nullopt);
    only<ReleaseDigits>("at +1s release digits");
}

TEST(Scenario, EveryFaultCanBeginAndEnd) {
    for (std::size_t n = 0; n < fault_names.size(); ++n) {
        SCOPED_TRACE(fault_names[n]);
        EXPECT_EQ(only<BeginFault>("at +1s fault " + std::string(fault_names[n])).fault, static_cast<Fault>(n));
        EXPECT_EQ(only<EndFault>("at +1s mend " + std::string(fault_names[n])).fault, static_cast<Fault>(n));
    }
    EXPECT_EQ(only<EndFault>("at +1s mend all").fault, std::nullopt);
    const std::vector<Step> steps = steps_of("at +1m fault rain for 30s");
    ASSERT_EQ(steps.size(), 2U);
    EXPECT_EQ(steps[1].at, 90s);
    EXPECT_EQ(std::get<EndFault>(steps[1].action).fault, Fault::rain);
}

TEST(Scenario, DamageStrikesAnyFrameOneGroupOrALoneWindGroup) {
    const auto any = only<FlipBits>("at +1s flip 3");
    EXPECT_EQ(any.count, 3);
    EXPECT_EQ(any.target, Target{});
    EXPECT_EQ(only<FlipBits>("at +1s flip 1 in BF").target, (Target{Target::Kind::train_group, 0xBF}));
    const auto drop = only<DropBytes>("at +1s drop 2 in lone");
    EXPECT_EQ(drop.count, 2);
    EXPECT_EQ(drop.target, (Target{Target::Kind::lone_group, 0xCF}));
    EXPECT_EQ(only<DropBytes>("at +1s drop 2 in 8f").target, (Target{Target::Kind::train_group, 0x8F}));
}

TEST(Scenario, StrayBytesAreGivenOrRandomNowOrInFrontOfAGroup) {
    const auto given = only<StrayBytes>("at +1s stray hex FF 00 cf");
    EXPECT_EQ(given.bytes, (Bytes{0xFF, 0x00, 0xCF}));
    EXPECT_EQ(given.random_count, 0);
    EXPECT_EQ(given.before, std::nullopt);
    const auto random = only<StrayBytes>("at +1s stray 5 before 9F");
    EXPECT_TRUE(random.bytes.empty());
    EXPECT_EQ(random.random_count, 5);
    EXPECT_EQ(random.before, (Target{Target::Kind::train_group, 0x9F}));
    const auto both = only<StrayBytes>("at +1s stray hex 01 before lone");
    EXPECT_EQ(both.bytes, Bytes{0x01});
    EXPECT_EQ(both.before, (Target{Target::Kind::lone_group, 0xCF}));
}

TEST(Scenario, ADigitHasItsGroupPlaceAndHexadecimalValue) {
    const auto digit = only<SetDigit>("at +1s digit 8F 12 f");
    EXPECT_EQ(digit.tag, 0x8F);
    EXPECT_EQ(digit.place, 12);
    EXPECT_EQ(digit.value, 15);
    EXPECT_EQ(only<SetDigit>("at +1s digit 8F 68 0").place, 68) << "the last before the checksum of 35 bytes";
    EXPECT_EQ(only<SetDigit>("at +1s digit CF 52 0").place, 52);
}

TEST(Scenario, SilencePlugResetsAndClockAreRead) {
    EXPECT_TRUE(only<Silence>("at +1s silence").on);
    EXPECT_FALSE(only<Silence>("at +1s speak").on);
    EXPECT_FALSE(only<Plug>("at +1s unplug").in);
    EXPECT_TRUE(only<Plug>("at +1s replug").in);
    only<ResetRain>("at +1s reset rain");
    only<ResetRecords>("at +1s reset records");
    EXPECT_EQ(only<TurnClock>("at +1s clock +1h").by, 1h);
    EXPECT_EQ(only<TurnClock>("at +1s clock -90s").by, -90s);
    EXPECT_EQ(steps_of("at +1s unplug for 10s").at(1).at, 11s);
    EXPECT_EQ(steps_of("at +1s silence for 2m").at(1).at, 121s);
}

struct Unreadable {
    const char* text;
    const char* what;
};

TEST(Scenario, WhatCannotBeReadIsNamedWithItsLine) {
    const char* ranges = "outdoor-temperature is -79.9 to 79.9 (degrees C), not '80'";
    for (const Unreadable& bad : {
             Unreadable{"on +1s unplug", "a line begins with 'at', not 'on'"},
             Unreadable{"at", "the time is missing"},
             Unreadable{"at +5 unplug", "there is no duration '+5'; one is written +90s, +10m or +1h30m"},
             Unreadable{"at noon unplug",
                        "there is no time 'noon'; one is written +10m, 08:15:00 or 2026-10-31 08:15:00"},
             Unreadable{"at 2026-02-30 10:00 unplug",
                        "there is no time '2026-02-30'; one is written +10m, 08:15:00 or 2026-10-31 08:15:00"},
             Unreadable{"at 2026-10-31 23:57:59 unplug",
                        "the time '2026-10-31 23:57:59' lies before the station's start"},
             Unreadable{"at +1s", "what happens is missing"},
             Unreadable{"at +1s explode", "nothing is called 'explode'"},
             Unreadable{"at +1s set", "the reading is missing"},
             Unreadable{"at +1s set sunshine 3", "there is no reading 'sunshine'"},
             Unreadable{"at +1s set gust", "the value is missing"},
             Unreadable{"at +1s set outdoor-temperature 80", ranges},
             Unreadable{"at +1s set gust 3,5", "gust is 0 to 99.9 (m/s), not '3,5'"},
             Unreadable{"at +1s set gust 3 over", "the duration is missing"},
             Unreadable{"at +1s set gust 3 over night",
                        "there is no duration 'night'; one is written 90s, 10m or 1h30m"},
             Unreadable{"at +1s release wetness", "there is no reading 'wetness'"},
             Unreadable{"at +1s fault keyboard", "there is no fault 'keyboard'"},
             Unreadable{"at +1s mend", "the fault is missing"},
             Unreadable{"at +1s flip", "the count is missing"},
             Unreadable{"at +1s flip 0", "the count is 1 to 1000, not '0'"},
             Unreadable{"at +1s drop 1 in DF", "there is no group 'DF'; they are 8F, 9F, AF, BF and CF"},
             Unreadable{"at +1s drop 1 in", "the group is missing"},
             Unreadable{"at +1s stray hex", "the byte is missing"},
             Unreadable{"at +1s stray hex 1", "a byte is two hexadecimal digits, not '1'"},
             Unreadable{"at +1s stray hex GG", "a byte is two hexadecimal digits, not 'GG'"},
             Unreadable{"at +1s digit 8F 2 1", "the digit's number is 3 to 68, not '2'"},
             Unreadable{"at +1s digit BF 27 1", "the digit's number is 3 to 26, not '27'"},
             Unreadable{"at +1s digit 8F 3 G", "a digit is 0 to 9 or A to F, not 'G'"},
             Unreadable{"at +1s reset clock", "rain or records can be reset, not 'clock'"},
             Unreadable{"at +1s clock 1h", "the clock is turned by +1h or -30m, not by '1h'"},
             Unreadable{"at +1s unplug now", "nothing may follow here: 'now'"},
         }) {
        SCOPED_TRACE(bad.text);
        const ScenarioReading read =
            read_scenario("# first\nat +1s replug\n" + std::string(bad.text) + "\nat +2s unplug", start);
        ASSERT_TRUE(read.error);
        EXPECT_EQ(read.error->line, 3);
        EXPECT_EQ(read.error->what, bad.what);
        EXPECT_TRUE(read.steps.empty());
    }
}

TEST(Scenario, BytesThatAreNoTextAreRefusedAndNothingElseHappens) {
    std::string garbage;
    for (int n = 0; n < 4096; ++n) garbage += static_cast<char>((n * 197 + 31) % 256);
    EXPECT_TRUE(read_scenario(garbage, start).error);
}

TEST(Scenario, EveryExampleIsReadable) {
    int examples = 0;
    for (const auto& entry : std::filesystem::directory_iterator(NIMBRY_SCENARIOS)) {
        SCOPED_TRACE(entry.path().filename().string());
        std::ifstream file(entry.path());
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        EXPECT_FALSE(steps_of(text).empty());
        ++examples;
    }
    EXPECT_GE(examples, 4);
}

}  // namespace
}  // namespace nimbry::simulator
