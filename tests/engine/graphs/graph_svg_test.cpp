#include "engine/graphs/graph_svg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/control/verbs.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_view.h"
#include "tests/engine/control/recording_asker.h"
#include "tests/world/bare_copy.h"
#include "tests/world/front_day.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

int count(const std::string& text, std::string_view what) {
    int found = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++found;
    return found;
}

std::string front(GraphKind kind, PictureSize size = {}) {
    WeatherState state;
    reset_main_panel(state);
    fill_with_a_front(state, VirtualClock::usual_start);
    return graph_svg(state, kind, size);
}

TEST(GraphSvg, IsOfTheSizeAskedFor) {
    EXPECT_THAT(front(GraphKind::wind), HasSubstr("width=\"880\" height=\"360\" viewBox=\"0 0 880 360\""));
    EXPECT_THAT(front(GraphKind::wind, {400, 200}), HasSubstr("width=\"400\" height=\"200\" viewBox=\"0 0 400 200\""));
}

TEST(GraphSvg, HasTitleLegendAndLabelsInUtf8) {
    const std::string picture = front(GraphKind::temperature);
    EXPECT_THAT(picture, testing::StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\""));
    EXPECT_THAT(picture, HasSubstr("<title>Temperature \xC2\260C</title>"));
    for (const char* text : {">Temperature \xC2\260C</text>", ">Outdoor</text>", ">Dew Point</text>", ">Indoor</text>"})
        EXPECT_THAT(picture, HasSubstr(text));
    EXPECT_THAT(picture, testing::EndsWith("</svg>\n"));
    EXPECT_EQ(count(picture, "<svg"), count(picture, "</svg>"));
    EXPECT_EQ(count(picture, "<text"), count(picture, "</text>"));
    EXPECT_EQ(count(picture, "<g"), count(picture, "</g>"));
}

/// The attribute of the text element that has this text.
std::string attribute_of(const std::string& picture, const std::string& name, const std::string& text) {
    const std::size_t element = picture.rfind("<text", picture.find(">" + text + "</text>"));
    const std::size_t value = picture.find(" " + name + "=\"", element) + name.size() + 3;
    return picture.substr(value, picture.find('"', value) - value);
}

struct LegendCase {
    const char* law;
    PictureSize size;
    const char* line;  ///< the height of the legend's letters
    const char* graph;
};

TEST(GraphSvg, TheLegendNeverRunsIntoTheTitle) {
    // 14 letters of the title in bold are 120 wide, the legend's 22 and their three samples 288; rims and gap are 36.
    const LegendCase cases[] = {
        {"beside the title", {880, 360}, "20", "translate(0 30)"},
        {"just beside it", {444, 200}, "20", "translate(0 30)"},
        {"below it, and the graph moves down", {443, 200}, "38", "translate(0 48)"},
        {"still below it", {308, 200}, "38", "translate(0 48)"},
    };
    for (const LegendCase& c : cases) {
        SCOPED_TRACE(c.law);
        const std::string picture = front(GraphKind::temperature, c.size);
        for (const char* text : {"Outdoor", "Dew Point", "Indoor"})
            EXPECT_EQ(attribute_of(picture, "y", text), c.line) << text;
        EXPECT_THAT(picture, HasSubstr(c.graph));
    }
    EXPECT_THAT(front(GraphKind::temperature, {307, 200}), Not(HasSubstr("Outdoor"))) << "no room for it";
    EXPECT_THAT(front(GraphKind::barometer, {160, 100}), HasSubstr("translate(0 30)")) << "no legend needs none";
}

TEST(GraphSvg, TellsItsSeriesApartByDashAsWellAsByColour) {
    const std::string picture = front(GraphKind::temperature);
    EXPECT_EQ(count(picture, "stroke=\"#00ffff\""), 2) << "its line and its sample in the legend";
    EXPECT_EQ(count(picture, "stroke=\"#ffa500\""), 2);
    EXPECT_EQ(count(picture, "stroke=\"#ffff00\""), 2);
    EXPECT_EQ(count(picture, "stroke-dasharray=\"7.5 3.8\""), 2) << "five and two and a half pen widths";
    EXPECT_EQ(count(picture, "stroke-dasharray=\"1.5 3\""), 2);
}

TEST(GraphSvg, ShowsDirectionsAsDots) {
    const std::string picture = front(GraphKind::direction);
    EXPECT_EQ(count(picture, "stroke-linecap=\"round\""), 1);
    EXPECT_EQ(count(picture, "h0.01"), 1440) << "one each: they lie more than half a pixel apart";
    EXPECT_THAT(picture, HasSubstr(">ne</text>"));
}

TEST(GraphSvg, OfAnEmptyStoreHasItsAxes) {
    WeatherState state;
    reset_main_panel(state);
    setgraphscales(state);
    const std::string picture = graph_svg(state, GraphKind::rain);
    EXPECT_EQ(count(picture, "stroke=\"#00ff00\""), 2 + 2) << "axes and two ticks";
    EXPECT_THAT(picture, HasSubstr(">Rainfall mm/Hr</text>"));
}

TEST(GraphSvg, LeavesTheIndoorSeriesOutWithItsSwitch) {
    WeatherState state;
    reset_main_panel(state);
    fill_with_a_front(state, VirtualClock::usual_start);
    state.menu.mnuInGraphs.checked = false;
    EXPECT_THAT(graph_svg(state, GraphKind::humidity), Not(HasSubstr("Indoor")));
}

struct SizeCase {
    const char* text;
    bool good;
};

TEST(GraphSvg, ASizeIsTwoWholeNumbersWithinReason) {
    const SizeCase cases[] = {
        {"880x360", true},   {"160x100", true},  {"10000x10000", true},
        {"159x100", false},  {"160x99", false},  {"10001x360", false},
        {"880", false},      {"880x", false},    {"x360", false},
        {"880x360x", false}, {"880X360", false}, {"-880x360", false},
        {"880x 360", false}, {"", false},        {"99999999999x360", false},
    };
    for (const SizeCase& c : cases) EXPECT_EQ(picture_size(c.text).has_value(), c.good) << c.text;
    EXPECT_EQ(picture_size("400x200")->width, 400);
    EXPECT_EQ(picture_size("400x200")->height, 200);
}

// --- The files beside the pages

TEST(GraphFiles, AreWrittenOnlyWhenTheirKeyAsksForThem) {
    BareCopy world;
    setgraphscales(world.state);
    write_graph_files(world.copy, "genhtml");
    EXPECT_TRUE(world.files.names().empty());
    world.ini.SaveFlag("Main", "GraphFiles", true);
    write_graph_files(world.copy, "genhtml");
    EXPECT_THAT(world.files.names(), ElementsAre("Nimbry.ini", "graph1.svg", "graph2.svg", "graph3.svg", "graph4.svg",
                                                 "graph5.svg", "graph6.svg"));
    EXPECT_THAT(world.files.contents("graph1.svg"), HasSubstr("<title>Temperature"));
    EXPECT_THAT(world.files.contents("graph6.svg"), HasSubstr("viewBox=\"0 0 480 270\"")) << "large letters on a page";
    EXPECT_THAT(world.files.contents("graph6.svg"), HasSubstr("<title>Wind Direction"));
}

TEST(GraphFiles, OneThatCannotBeWrittenIsLoggedAndTheRestIsThere) {
    BareCopy world;
    setgraphscales(world.state);
    world.state.readings.dtvar = VirtualClock::usual_start;
    world.ini.SaveFlag("Main", "GraphFiles", true);
    world.files.refuse("graph2.svg", FileResult::permission);
    write_graph_files(world.copy, "genhtml");
    EXPECT_FALSE(world.files.exists("graph2.svg"));
    EXPECT_TRUE(world.files.exists("graph6.svg"));
    EXPECT_THAT(world.log_lines(), ElementsAre("05 Oct 2026 14:00:00 Error 70 encountered in genhtml."));
}

// --- The verb

class GraphVerb : public testing::Test {
protected:
    VerbStatus ask(const std::vector<std::string>& arguments) {
        asker = {};
        auto status = VerbStatus::failed;
        world.act([&] { status = answer_request(world.copy(), arguments, asker); });
        return status;
    }
    StartedWorld world;
    RecordingAsker asker;
};

TEST_F(GraphVerb, WritesThePictureOrPrintsIt) {
    EXPECT_EQ(ask({"graph", "wind", "--svg", "/elsewhere/g.svg"}), VerbStatus::failed);
    EXPECT_THAT(asker.complaints, ElementsAre(HasSubstr("The picture could not be written: ")));
    world.files.add_folder("/elsewhere");
    EXPECT_EQ(ask({"graph", "wind", "--svg", "/elsewhere/g.svg"}), VerbStatus::done);
    EXPECT_EQ(asker.out, "");
    const std::string written = world.files.contents("/elsewhere/g.svg");
    EXPECT_THAT(written, HasSubstr("<title>Wind Speed km/h</title>"));
    EXPECT_EQ(ask({"graph", "wind"}), VerbStatus::done);
    EXPECT_EQ(asker.out, written);
}

TEST_F(GraphVerb, TakesItsSize) {
    EXPECT_EQ(ask({"graph", "--size", "400x200", "rain"}), VerbStatus::done);
    EXPECT_THAT(asker.out, HasSubstr("width=\"400\" height=\"200\""));
}

TEST_F(GraphVerb, KnowsSixGraphs) {
    for (const char* name : {"temperature", "humidity", "wind", "barometer", "rain", "direction"})
        EXPECT_EQ(ask({"graph", name}), VerbStatus::done) << name;
}

TEST_F(GraphVerb, WorksWithDrawingSwitchedOff) {
    world.state().menu.mnuDisableGraphs.checked = true;
    EXPECT_EQ(ask({"graph", "rain"}), VerbStatus::done);
}

TEST_F(GraphVerb, RefusesWhatIsNotItsOwn) {
    const std::vector<std::vector<std::string>> cases{
        {"graph"},
        {"graph", "snow"},
        {"graph", "Wind"},
        {"graph", "wind", "rain"},
        {"graph", "wind", "--svg"},
        {"graph", "wind", "--svg", ""},
        {"graph", "wind", "--size", "large"},
        {"graph", "wind", "--size"},
        {"graph", "wind", "--colour"},
        {"graph", "--svg", "a.svg"},
    };
    for (const auto& arguments : cases) {
        EXPECT_EQ(ask(arguments), VerbStatus::bad_usage) << arguments.back();
        EXPECT_THAT(asker.complaints,
                    ElementsAre(HasSubstr("graph temperature|humidity|wind|barometer|rain|direction [--svg FILE")));
    }
}

}  // namespace
}  // namespace nimbry::test
