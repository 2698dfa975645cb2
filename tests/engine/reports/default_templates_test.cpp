#include "engine/reports/default_templates.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "engine/publish/mail_body.h"
#include "engine/publish/publishing.h"
#include "engine/reports/genhtml.h"
#include "engine/reports/tag_table.h"
#include "engine/reports/template_scanner.h"
#include "engine/reports/wxtext.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using testing::HasSubstr;
using testing::Not;

// The monthly summary has a template of its own kind, whose markers begin with SUM.
bool is_summary(const DefaultTemplate& file) {
    return file.name == "nimbrysummarytemplate.html";
}

TEST(DefaultTemplates, AreTheFilesOfTheirFolderByteForByte) {
    std::set<std::string> names;
    for (const DefaultTemplate& file : default_templates()) {
        names.insert(std::string(file.name));
        std::ifstream disk(std::string(NIMBRY_SOURCE_DIR) + "/templates/" + std::string(file.name), std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(disk), {});
        EXPECT_EQ(file.bytes, bytes) << file.name;
    }
    for (const char* name : {"myhtml.html", "nimbrywap.wml", "wxtexttemplate.txt", "mail_template.txt",
                             "mail_alm_template.txt", "mail_co_template.txt", "webfiletag.txt"})
        EXPECT_TRUE(names.contains(name)) << name;
}

TEST(DefaultTemplates, EveryMarkerInThemIsATag) {
    for (const DefaultTemplate& file : default_templates()) {
        if (is_summary(file)) continue;
        std::string rest;
        fill_template(
            file.bytes,
            [&](std::string_view marker) {
                EXPECT_NE(tag_named(marker.substr(2, 10)), nullptr) << marker << " in " << file.name;
                return std::string();
            },
            rest);
        EXPECT_EQ(rest.find('~'), std::string::npos) << file.name << " has a tilde that opens no marker";
    }
}

TEST(DefaultTemplates, HaveLineEndsOfCrLfAndNoByteThatNeedsACodePage) {
    for (const DefaultTemplate& file : default_templates()) {
        if (is_summary(file)) continue;
        for (std::size_t at = 0; at < file.bytes.size(); ++at) {
            const char c = file.bytes[at];
            ASSERT_TRUE(c == '\r' || c == '\n' || (c >= ' ' && c <= '~')) << file.name << " at " << at;
            if (c == '\n') {
                ASSERT_TRUE(at > 0 && file.bytes[at - 1] == '\r') << file.name << " at " << at;
            }
        }
    }
}

/// A copy with the templates in its folder.
struct InstalledState : KnownState {
    InstalledState() {
        for (const DefaultTemplate& file : default_templates())
            files.put(std::string(file.name), std::string(file.bytes));
    }
};

TEST(DefaultTemplates, ThePageDeclaresTheCodePageOfItsDegreeSigns) {
    InstalledState world;
    genhtml(world.copy);
    const std::string page = world.files.contents("nbyxauto.html");
    EXPECT_THAT(page, HasSubstr("<meta charset=\"windows-1252\">"));
    EXPECT_THAT(page, HasSubstr(">+8.1 \260C</p>"));
    EXPECT_THAT(page, HasSubstr("98\260 (E)"));
    EXPECT_THAT(page, Not(HasSubstr("\xC2\260"))) << "no UTF-8";
}

TEST(DefaultTemplates, ThePageNeedsNothingFromOutside) {
    InstalledState world;
    genhtml(world.copy);
    const std::string page = world.files.contents("nbyxauto.html");
    for (const char* outside : {"http://", "https://", "src=", "url(", "@import", "<link"})
        EXPECT_THAT(page, Not(HasSubstr(outside)));
}

TEST(DefaultTemplates, TheWapPageHasNoByteBeyondAscii) {
    InstalledState world;
    genhtml(world.copy);
    const std::string page = world.files.contents("wx.wml");
    EXPECT_THAT(page, HasSubstr("<b>+8.1 Deg.C</b> Partly Cloudy"));
    EXPECT_TRUE(std::all_of(page.begin(), page.end(), [](char c) { return c > 0; }));
}

TEST(DefaultTemplates, TheReportAndTheMailsTellTheWeather) {
    InstalledState world;
    wxtext(world.copy);
    EXPECT_THAT(world.files.contents("wxtext.txt"), HasSubstr("\r\nTemperature          +8.1 \260C\r\n"));
    genmail(world.copy);
    EXPECT_TRUE(world.state.reports.mail_body.starts_with("Weather at Home\r\n***"));
    EXPECT_THAT(world.state.reports.mail_body, HasSubstr("\r\nOutdoors    +8.1 \260C, humidity 54 %"));
    gencomail(world.copy);
    EXPECT_THAT(world.state.reports.mail_body, HasSubstr("highest +12.3 \260C at 13:02"));
    world.state.alarms.AlarmReason = "the dew point is below the alarm threshold";
    genAlarmMail(world.copy);
    EXPECT_TRUE(world.state.reports.mail_body.starts_with("Automatic ALARM email from Nimbry 2.02\r\n"));
}

}  // namespace
}  // namespace nimbry::test
