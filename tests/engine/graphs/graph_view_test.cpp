#include "engine/graphs/graph_view.h"

#include <gtest/gtest.h>

#include "engine/core/switches.h"
#include "engine/derived/dates.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_store.h"
#include "tests/world/bare_copy.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

/// A copy with four samples, the last two of a calm and a direction of 225.
struct View : BareCopy {
    View() {
        setgraphscales(state);
        add("05 Oct 2026 14:00:33", {8.1F, 4.2F, 54, 9.7F, 1013, 2, 14.4F, 45, 20.5F, 40});
        add("05 Oct 2026 14:01:33", {8.2F, 4.3F, 55, 9.8F, 1013, 2.5F, 14.5F, 225, 20.6F, 41});
        add("05 Oct 2026 14:02:33", {8.3F, 4.4F, 56, 0, 1013, 0, 0, 0, 20.7F, 42});
        add("??", {8.4F, 4.5F, 57, 0, 0, 0, 0, 225, 20.8F, 43});
        drawgraph(state);
    }
    void add(const char* stamp, const std::array<float, 10>& values) {
        GraphRow row;
        row.set_gtime(stamp);
        for (int s = 0; s < series::count; ++s) row.set_gdata(s, values[static_cast<std::size_t>(s)]);
        state.graphs.rows.append(row);
    }
    [[nodiscard]] const std::string& title() const { return state.panel.gLabel12.text; }
    [[nodiscard]] const std::string& tip() const { return state.panel.gPicture1[0].tip; }
};

const std::string plain_tip = "Main display graph  -  values are updated every minute";

// --- Labels and panes

TEST(GraphView, TheWindowOpensWithTheTemperature) {
    WeatherState state;
    reset_main_panel(state);
    EXPECT_EQ(state.panel.gLabel12.text, "Temperature \260C");
    EXPECT_EQ(state.panel.gLabel13.text, "Outdoor");
    EXPECT_EQ(state.panel.gLabel14.text, "Dew Point");
    EXPECT_EQ(state.panel.gLabel15.text, "Indoor");
    EXPECT_EQ(state.panel.gPicture1[0].tip, plain_tip);
    for (std::size_t pane = 1; pane < 6; ++pane)
        EXPECT_EQ(state.panel.gPicture1[pane].tip, "Click to display full size");
}

TEST(GraphView, TheTitleTakesTheUnitOfTheSettingsAtTheStart) {
    StartedWorld world("fTempF=True\r\n");
    EXPECT_EQ(world.panel().gLabel12.text, "Temperature \260F");
}

struct ClickCase {
    const char* law;
    int pane;
    const char* title;
    const char* legend13;
    const char* legend14;
    const char* legend15;
};

TEST(GraphView, AClickBringsThePanesGraphToTheMainPane) {
    const ClickCase cases[] = {
        {"the main pane: the next", 0, "Humidity %", "Outdoor", "Indoor", ""},
        {"and the next", 0, "Wind Speed km/h", "Average", "Gust", ""},
        {"the third small one", 3, "Wind Direction \xB0", "", "", ""},
        {"round and round", 1, "Temperature \260C", "Outdoor", "Dew Point", "Indoor"},
        {"the last", 5, "Wind Direction \xB0", "", "", ""},
        {"back by one", 5, "Rainfall mm/Hr", "", "", ""},
        {"and another", 5, "Barometer mB", "", "", ""},
    };
    View view;
    for (const ClickCase& c : cases) {
        SCOPED_TRACE(c.law);
        const int draws = view.state.graphs.draws;
        click_graph(view.state, c.pane);
        EXPECT_EQ(view.title(), c.title);
        const std::pair<const Box*, const char*> legends[] = {{&view.state.panel.gLabel13, c.legend13},
                                                              {&view.state.panel.gLabel14, c.legend14},
                                                              {&view.state.panel.gLabel15, c.legend15}};
        for (const auto& legend : legends) {
            EXPECT_EQ(legend.first->text, legend.second);
            EXPECT_EQ(legend.first->visible, *legend.second != '\0') << "hidden when not used";
        }
        EXPECT_EQ(view.state.graphs.draws, draws + 1);
        for (int pane = 0; pane < 6; ++pane) {
            const GraphDrawing& drawing = view.state.graphs.panes[static_cast<std::size_t>(pane)];
            EXPECT_EQ(drawing.kind, graph_after(graph_of_title(c.title), pane));
            EXPECT_EQ(drawing.main, pane == 0);
        }
    }
}

TEST(GraphView, WithoutTheIndoorValuesThereIsNoLegendForThem) {
    View view;
    view.state.menu.mnuInGraphs.checked = false;
    drawgraph(view.state);
    EXPECT_EQ(view.state.panel.gLabel15.text, "");
    EXPECT_FALSE(view.state.panel.gLabel15.visible);
    click_graph(view.state, 1);
    EXPECT_EQ(view.state.panel.gLabel13.text, "Outdoor");
    EXPECT_EQ(view.state.panel.gLabel14.text, "");
}

TEST(GraphView, LevelsTheScalesBeforeItDraws) {
    View view;
    EXPECT_EQ(drawn_axis(view.state.graphs, 0).low, 4);
    EXPECT_EQ(drawn_axis(view.state.graphs, 8).low, 4);
    EXPECT_EQ(drawn_axis(view.state.graphs, 1).high, 22) << "20 is the first tick, and an axis has two";
}

// --- Switched off

TEST(GraphView, SwitchedOffNothingIsDrawnAndThePanesAreHidden) {
    View view;
    const int draws = view.state.graphs.draws;
    click_switch(view.copy, *switch_named("mnuDisableGraphs"));
    drawgraph(view.state);
    EXPECT_EQ(view.state.graphs.draws, draws);
    EXPECT_FALSE(view.state.panel.gLabel12.visible);
    EXPECT_FALSE(view.state.panel.gLabel13.visible);
    for (const Box& pane : view.state.panel.gPicture1) EXPECT_FALSE(pane.visible);
    click_switch(view.copy, *switch_named("mnuDisableGraphs"));
    EXPECT_EQ(view.state.graphs.draws, draws + 1) << "on again it draws at once";
    EXPECT_TRUE(view.state.panel.gLabel12.visible);
    EXPECT_TRUE(view.state.panel.gPicture1[5].visible);
}

TEST(GraphView, TheKeyThatSwitchesDrawingOffHoldsFromTheStart) {
    StartedWorld world("DrwGrafs=True\r\n");
    EXPECT_FALSE(world.panel().gPicture1[0].visible);
    StartedWorld other("DrwGrafs=False\r\n");
    EXPECT_TRUE(other.panel().gPicture1[0].visible);
}

TEST(GraphView, TheSwitchOfTheIndoorValuesDrawsAtOnce) {
    View view;
    const int draws = view.state.graphs.draws;
    click_switch(view.copy, *switch_named("mnuInGraphs"));
    EXPECT_EQ(view.state.graphs.draws, draws + 1);
    EXPECT_FALSE(view.state.panel.gLabel15.visible);
}

// --- Reading off

struct ReadingCase {
    GraphKind kind;
    int row;
    const char* text;
};

TEST(GraphReading, NamesEachValueItsUnitAndTheTime) {
    const ReadingCase cases[] = {
        {GraphKind::temperature, 1, "Outdoor 8.1 \260C Dew 4.2 \260C Indoor 20.5 \260C at 05 Oct 2026 14:00:33"},
        {GraphKind::humidity, 1, "Outdoor 54 % Indoor 40 % at 05 Oct 2026 14:00:33"},
        {GraphKind::wind, 1, "Average 9.7 km/h Gust 14.4 km/h at 05 Oct 2026 14:00:33"},
        {GraphKind::barometer, 1, "1013 mB at 05 Oct 2026 14:00:33"},
        {GraphKind::rain, 1, "2 mm/Hr at 05 Oct 2026 14:00:33"},
        {GraphKind::rain, 2, "2.5 mm/Hr at 05 Oct 2026 14:01:33"},
        {GraphKind::direction, 2, "225\xB0 at 05 Oct 2026 14:01:33"},
        {GraphKind::direction, 3, "Nil Wind at 05 Oct 2026 14:02:33"},
        {GraphKind::direction, 4, "225\xB0 at ??"},
        {GraphKind::barometer, 4, "at ??"},
    };
    View view;
    for (const ReadingCase& c : cases) EXPECT_EQ(graph_reading(view.state, c.kind, c.row), c.text);
}

TEST(GraphReading, LeavesTheIndoorValueOutWithItsSwitch) {
    View view;
    view.state.menu.mnuInGraphs.checked = false;
    EXPECT_EQ(graph_reading(view.state, GraphKind::temperature, 1),
              "Outdoor 8.1 \260C Dew 4.2 \260C at 05 Oct 2026 14:00:33");
    EXPECT_EQ(graph_reading(view.state, GraphKind::humidity, 1), "Outdoor 54 % at 05 Oct 2026 14:00:33");
}

TEST(GraphReading, UsesTheUnitsInForce) {
    View view;
    view.state.settings.fTempF = view.state.settings.fBarinhg = view.state.settings.fRainin = true;
    view.state.settings.fWindmph = true;
    view.state.units = units_from(view.state.settings);
    setgraphscales(view.state);
    EXPECT_EQ(graph_reading(view.state, GraphKind::wind, 1), "Average 9.7 MPH Gust 14.4 MPH at 05 Oct 2026 14:00:33");
    EXPECT_EQ(graph_reading(view.state, GraphKind::rain, 1), "2 In./Hr at 05 Oct 2026 14:00:33");
    EXPECT_EQ(graph_reading(view.state, GraphKind::barometer, 1), "at 05 Oct 2026 14:00:33")
        << "1013 inches are outside the limits";
}

TEST(GraphReading, FollowsThePointerAndEndsWhenItLeaves) {
    View view;
    move_over_graph(view.state, 480);
    EXPECT_TRUE(view.tip().starts_with("Outdoor 8.1 ")) << view.tip();
    move_over_graph(view.state, 3000);
    EXPECT_TRUE(view.tip().starts_with("Outdoor 8.2 ")) << view.tip();
    leave_graph(view.state);
    EXPECT_EQ(view.tip(), plain_tip);
    EXPECT_FALSE(view.state.graphs.marker);
}

TEST(GraphReading, MarksItsRowAndTheValuesOnIt) {
    View view;
    click_graph(view.state, 2);  // wind
    read_graph_row(view.state, 1);
    ASSERT_TRUE(view.state.graphs.marker);
    const GraphMarker& marker = *view.state.graphs.marker;
    EXPECT_EQ(marker.row, 1);
    EXPECT_DOUBLE_EQ(marker.x, 1224);
    EXPECT_EQ(marker.text, view.tip());
    ASSERT_EQ(marker.dots.size(), 2U);
    EXPECT_EQ(marker.dots[0].pen, GraphPen::first);
    EXPECT_EQ(marker.dots[1].pen, GraphPen::second);
    EXPECT_NEAR(marker.dots[1].points[0].y, 2400 - 2015 * 14.4 / 14.5, 0.01);
}

TEST(GraphReading, OfARowByNumberIsKeptWithinThoseInUse) {
    View view;
    read_graph_row(view.state, -3);
    EXPECT_EQ(view.state.graphs.marker->row, 1);
    read_graph_row(view.state, 99);
    EXPECT_EQ(view.state.graphs.marker->row, 4);
}

TEST(GraphReading, OfAnEmptyStoreLeavesTheFixedTip) {
    View view;
    view.state.graphs.rows.clear();
    move_over_graph(view.state, 3000);
    EXPECT_EQ(view.tip(), plain_tip);
    EXPECT_FALSE(view.state.graphs.marker);
}

TEST(GraphReading, StaysAtItsPlaceWhileTheDayMovesOn) {
    View view;
    move_over_graph(view.state, 6400);
    const double x = view.state.graphs.marker->x;
    view.add("05 Oct 2026 14:04:33", {9.9F, 4.2F, 54, 9.7F, 1013, 2, 14.4F, 45, 20.5F, 40});
    drawgraph(view.state);
    EXPECT_EQ(view.state.graphs.marker->row, row_at(x, 5));
}

TEST(GraphReading, EndsWithAClickAndWithAReset) {
    View view;
    move_over_graph(view.state, 3000);
    click_graph(view.state, 0);
    EXPECT_EQ(view.tip(), plain_tip);
    move_over_graph(view.state, 3000);
    discard_graphs(view.copy);
    EXPECT_EQ(view.tip(), plain_tip);
}

}  // namespace
}  // namespace nimbry::test
