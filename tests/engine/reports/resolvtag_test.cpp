#include "engine/reports/resolvtag.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "engine/publish/mail_body.h"
#include "engine/reports/tag_table.h"
#include "tests/engine/reports/tag_cases.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

TEST(Resolvtag, EveryTagWithItsReadingKnown) {
    KnownState world;
    for (const TagCase& row : tag_cases()) EXPECT_EQ(world.tag(row.name), row.known) << row.name;
}

TEST(Resolvtag, EveryTagBeforeAnythingIsReceived) {
    UnsetState world;
    for (const TagCase& row : tag_cases()) EXPECT_EQ(world.tag(row.name), row.unset) << row.name;
}

TEST(Resolvtag, EveryTagAfterEverySensorHasFailed) {
    KnownState world;
    world.fail_every_sensor();
    for (const TagCase& row : tag_cases()) EXPECT_EQ(world.tag(row.name), row.failed) << row.name;
}

TEST(Resolvtag, ASensorThatIsSoundAgainGivesItsReadingAgain) {
    KnownState world;
    const StationReadings sound = world.station;
    world.fail_every_sensor();
    world.train(sound);
    for (const char* name : {"WEBOUTTEMP", "WEBOUTTMPC", "WEBWINDGSD", "WBNWNDASMS", "WEBBARMBHP", "WEBRNRATMM",
                             "WEBINTEMPF", "WBNWNDCHLC", "WEBINHUMID"}) {
        const auto cases = tag_cases();
        const auto row = std::find_if(cases.begin(), cases.end(), [&](const TagCase& c) { return c.name == name; });
        EXPECT_EQ(world.tag(name), row->known) << name;
    }
}

TEST(Resolvtag, TheTagsAreThese166InThisOrder) {
    const std::vector<TagCase> cases = tag_cases();
    ASSERT_EQ(cases.size(), 166U);
    ASSERT_EQ(tag_table().size(), cases.size());
    for (std::size_t n = 0; n < cases.size(); ++n) EXPECT_EQ(tag_table()[n].name, cases[n].name);
}

TEST(Resolvtag, TheExampleOfEveryTagIsWhatItPrintsThatAfternoon) {
    KnownState world;
    world.state.reports.short_text = short_weather_text(world.copy);
    for (const TagRow& row : tag_table()) {
        const std::string text = world.tag(std::string(row.name));
        if (row.example.ends_with(" ...")) {
            EXPECT_TRUE(text.starts_with(row.example.substr(0, row.example.size() - 4))) << row.name << ": " << text;
        } else {
            EXPECT_EQ(text, row.example) << row.name;
        }
        EXPECT_FALSE(row.example.empty()) << row.name;
    }
}

TEST(Resolvtag, AMarkerThatIsNoTagPrintsNothing) {
    KnownState world;
    for (const char* marker : {"~~webouttemp~~", "~~WEBOUTTEMQ~~", "~xWEBOUTTEMP~~", "x~WEBOUTTEMP~~", "~~WEBOUTTEMP~x",
                               "~~WEBOUTTEMP~", "~~WEBOUTTEMP~~~", "~~            ~~", "~~WEBCOMMEN2~~", ""}) {
        EXPECT_EQ(resolvtag(world.copy, marker), "") << marker;
    }
}

TEST(Resolvtag, EveryByteOfANameCounts) {
    for (const TagRow& row : tag_table()) {
        for (std::size_t at = 0; at < row.name.size(); ++at) {
            std::string name(row.name);
            name[at] = '?';
            EXPECT_EQ(tag_named(name), nullptr) << name;
        }
        EXPECT_EQ(tag_named(row.name), &row);
    }
}

TEST(Resolvtag, ATagChangesNothing) {
    KnownState world;
    const auto seen = [&] {
        std::string all;
        for (const TagCase& row : tag_cases()) all += world.tag(row.name) + '\n';
        return all;
    };
    const std::string once = seen();
    EXPECT_EQ(seen(), once);
    EXPECT_EQ(world.state.reports.mail_body, "");
}

struct BoxCase {
    const char* name;
    Box MainPanel::*main = nullptr;
    Box AdditionalPanel::*additional = nullptr;
};

TEST(Resolvtag, TheBoxTagsPrintTheirBoxAsItStandsBlanksToo) {
    using M = MainPanel;
    using A = AdditionalPanel;
    const std::vector<BoxCase> cases{
        {"WEBTTMPMAX", &M::TxtTempMax},        {"WEBTTMPMIN", &M::TxtTempMin},
        {"WEBTHUMMAX", &M::TxtHumMax},         {"WEBTHUMMIN", &M::TxtHumMin},
        {"WEBTGSTMAX", &M::TxtGustMax},        {"WEBTBARMAX", &M::TxtBarMax},
        {"WEBTBARMIN", &M::TxtBarMin},         {"WEBTRAINMX", &M::TxtRainMax},
        {"WEBRAINYST", &M::TxtRainYest},       {"WEBYTMPMAX", &M::TxtYTempMax},
        {"WEBYTMPMIN", &M::TxtYTempMin},       {"WEBYHUMMAX", &M::TxtYHumMax},
        {"WEBYHUMMIN", &M::TxtYHumMin},        {"WEBYGSTMAX", &M::TxtYGustMax},
        {"WEBYBARMAX", &M::TxtYBarMax},        {"WEBYBARMIN", &M::TxtYBarMin},
        {"WEBYRAINMX", &M::TxtYRainMax},       {"WEBTTEMPHI", &M::TxtOShi},
        {"WEBTTEMPLO", &M::TxtOSLo},           {"WEBTHUMIHI", &M::TxtOsHumHi},
        {"WEBTHUMILO", &M::TxtOsHumLo},        {"WEBTWINDHI", &M::TxtWindHiG},
        {"WEBTDWPMAX", {}, &A::txtMaxDew},     {"WEBTDWPMIN", {}, &A::txtMinDew},
        {"WEBTCHLMIN", {}, &A::txtMinWC},      {"WEBTHIXMAX", {}, &A::txtMaxHI},
        {"WEBTINTMAX", {}, &A::txtMaxInTemp},  {"WEBTINTMIN", {}, &A::txtMinInTemp},
        {"WEBYDWPMAX", {}, &A::txtYMaxDew},    {"WEBYDWPMIN", {}, &A::txtYMinDew},
        {"WEBYCHLMIN", {}, &A::txtYMinWC},     {"WEBYHIXMAX", {}, &A::txtYMaxHI},
        {"WEBYINTMAX", {}, &A::txtYMaxInTemp}, {"WEBYINTMIN", {}, &A::txtYMinInTemp},
        {"WEBWETBULB", {}, &A::txtWetBulb},    {"WEBWBDEPRS", {}, &A::txtWBDep},
        {"WEBHTCUCLD", {}, &A::txtCloudBase},
    };
    KnownState world;
    for (const BoxCase& row : cases) {
        Box& box = row.main != nullptr ? world.state.panel.*row.main : world.state.additional.*row.additional;
        box.text = "  as " + std::string(row.name) + " stands ";
        EXPECT_EQ(world.tag(row.name), "  as " + std::string(row.name) + " stands ");
    }
}

TEST(RefreshTagSources, AServersUtcIsTheComputersAtThatMoment) {
    UnsetState world;
    world.clock.advance(std::chrono::seconds{61});
    EXPECT_EQ(world.tag("WEBUTCTIME"), "03:05:07");
    world.refresh();
    EXPECT_EQ(world.tag("WEBUTCTIME"), "03:06:08");
}

TEST(RefreshTagSources, AClientKeepsTheUtcOfItsLastTrain) {
    UnsetState world;
    world.state.settings.fromnet = true;
    world.clock.advance(std::chrono::seconds{61});
    world.refresh();
    EXPECT_EQ(world.tag("WEBUTCTIME"), "03:05:07");
}

}  // namespace
}  // namespace nimbry::test
