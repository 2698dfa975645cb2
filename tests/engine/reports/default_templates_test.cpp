#include "engine/reports/default_templates.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
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
using testing::IsEmpty;
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

/// A page without what lies between these two, and without them.
std::string without(std::string page, std::string_view from, std::string_view to) {
    for (std::size_t at = page.find(from); at != std::string::npos; at = page.find(from, at))
        page.erase(at, page.find(to, at) + to.size() - at);
    return page;
}

/// What is wrong with the elements of a page: an end tag that ends another element, one that is left open, an id given
/// twice or asked for in vain, a "<" or "&" that begins nothing. Empty when nothing is. `void_elements` have no end
/// tag.
std::vector<std::string> faults_of(std::string page, const std::set<std::string>& void_elements) {
    page = without(without(page, "<!--", "-->"), "<style>", "</style>");
    page = without(without(page, "<!DOCTYPE", ">"), "<?xml", ">");
    const std::regex tag(R"re(<(/?)([A-Za-z][A-Za-z0-9]*)((?:\s+[A-Za-z:-]+="[^"<]*")*)\s*(/?)>)re");
    std::vector<std::string> faults, open;
    std::set<std::string> ids, wanted;
    for (std::sregex_iterator at(page.begin(), page.end(), tag), end; at != end; ++at) {
        const std::string name = (*at)[2], attributes = (*at)[3];
        std::smatch value;
        if (std::regex_search(attributes, value, std::regex(" id=\"([^\"]*)\"")) && !ids.insert(value[1]).second)
            faults.push_back("id twice: " + value[1].str());
        if (std::regex_search(attributes, value, std::regex(" (?:aria-labelledby|href)=\"#?([^\"]*)\"")))
            wanted.insert(value[1]);
        if ((*at)[1].length() == 0) {
            if ((*at)[4].length() == 0 && !void_elements.contains(name)) open.push_back(name);
        } else if (open.empty() || open.back() != name) {
            faults.push_back("ends nothing: " + at->str());
        } else {
            open.pop_back();
        }
    }
    for (const std::string& name : open) faults.push_back("left open: " + name);
    for (const std::string& id : wanted)
        if (!ids.contains(id)) faults.push_back("no such id: " + id);
    const std::string text = std::regex_replace(page, tag, "");
    if (text.find('<') != std::string::npos) faults.push_back("begins nothing: " + text.substr(text.find('<'), 40));
    std::smatch sign;
    if (std::regex_search(text, sign, std::regex("&(?!#?[a-z0-9]+;)"))) faults.emplace_back("a bare &");
    return faults;
}

TEST(DefaultTemplates, ThePagesElementsEndWhereTheyShould) {
    const std::set<std::string> void_elements{"meta", "br"};
    InstalledState known;
    genhtml(known.copy);
    EXPECT_THAT(faults_of(known.files.contents("nbyxauto.html"), void_elements), IsEmpty());
    EXPECT_THAT(faults_of(known.files.contents("wx.wml"), {}), IsEmpty());

    UnsetState unset;
    for (const char* name : {"myhtml.html", "nimbrywap.wml"}) unset.files.put(name, known.files.contents(name));
    genhtml(unset.copy);
    EXPECT_THAT(faults_of(unset.files.contents("nbyxauto.html"), void_elements), IsEmpty());
    EXPECT_THAT(faults_of(unset.files.contents("wx.wml"), {}), IsEmpty());
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
