#include <gtest/gtest.h>

#include "tests/engine/graphs/sampling.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

// What the samples of the minutes come to, and when one is taken.

using namespace std::chrono_literals;

// --- The highest gust of the last hour

void add_gusts(Sampling& world, int count, float gust) {
    GraphRow row;
    row.set_gdata(series::gust, gust);
    for (int n = 0; n < count; ++n) world.rows.append(row);
}

struct GustCase {
    const char* law;
    int before, one, after;  ///< rows of 5 km/h, a row of 88.6, rows of 5
    const char* text;
};

TEST(GraphGust, IsTheHighestOfAnHour) {
    const GustCase cases[] = {
        {"one sample", 0, 0, 0, "18.4 km/h"},
        {"a gust of this hour", 10, 1, 20, "88.6 km/h"},
        {"the first row of a young store", 0, 1, 58, "88.6 km/h"},
        {"row 1 of 61", 0, 1, 59, "88.6 km/h"},
        {"row 1 of 62 is past", 0, 1, 60, "18.4 km/h"},
        {"61 minutes of a long store count", 500, 1, 59, "88.6 km/h"},
        {"62 do not", 500, 1, 60, "18.4 km/h"},
    };
    for (const GustCase& c : cases) {
        SCOPED_TRACE(c.law);
        Sampling world;
        add_gusts(world, c.before, 5);
        add_gusts(world, c.one, 88.6F);
        add_gusts(world, c.after, 5);
        world.sample();
        EXPECT_EQ(world.state.panel.TxtWindGLH.text, c.text);
    }
}

TEST(GraphGust, NeverTakesTheCountForAGust) {
    Sampling world;
    add_gusts(world, 59, 5);
    world.state.readings.wstempsng = 7;
    world.sample();
    ASSERT_EQ(world.rows.windsamples(), 60);
    EXPECT_EQ(world.state.panel.TxtWindGLH.text, "7 km/h");
}

TEST(GraphGust, StandsInItsBoxWithTipAndLabel) {
    Sampling world;
    world.state.units.wind_text = "MPH";
    world.sample();
    const Box& box = world.state.panel.TxtWindGLH;
    EXPECT_EQ(box.text, "18.4 MPH");
    EXPECT_EQ(box.tip, "Maximum wind gust in the last hour: 18.4 MPH");
    EXPECT_EQ(box.balloon, "18.4 MPH\r\nMaximum wind gust in last hour");
}

TEST(GraphGust, OfACalmHourHasNoUnit) {
    Sampling world;
    world.box(6, "Calm");
    world.sample();
    const Box& box = world.state.panel.TxtWindGLH;
    EXPECT_EQ(box.text, "0 ");
    EXPECT_EQ(box.tip, "Maximum wind gust in the last hour: 0 ");
}

// --- Once a minute

TEST(GraphMinute, OneSampleAMinuteInItsSeconds30To39) {
    StartedWorld world;
    world.clock.set_computer_time(*civil_time({2026, 10, 5, 14, 0, 5}));
    world.send_trains(2);
    EXPECT_EQ(world.state().graphs.rows.windsamples(), 0);
    world.send_trains(30);
    EXPECT_EQ(world.state().graphs.rows.windsamples(), 5);
    EXPECT_EQ(world.state().graphs.rows.gtime(1), "05 Oct 2026 14:00:35");
    EXPECT_EQ(world.state().graphs.rows.gtime(5), "05 Oct 2026 14:04:35");
    EXPECT_TRUE(world.files.exists("grafdata.dat"));
}

TEST(GraphMinute, TheFirstSampleEndsTheStartingOfTheProgram) {
    StartedWorld world;
    world.clock.set_computer_time(*civil_time({2026, 10, 5, 14, 0, 5}));
    world.send_trains(3);
    EXPECT_EQ(world.panel().lblStatus.text, "Program Starting");
    world.send_trains(2);
    EXPECT_EQ(world.panel().lblStatus.text, "Current Conditions");
    EXPECT_EQ(world.panel().lblStatus.fore, colours::green);
}

// --- GrFailTimer

struct Undrawn : Sampling {
    Undrawn() {
        state.menu.mnuDisableGraphs.checked = true;
        state.graphs.grafsjustloaded = true;
    }
    void ticks(int count) {
        for (int n = 0; n < count; ++n) refresh_missing_graphs(copy);
    }
};

TEST(GrFailTimer, TakesASampleAtItsNinthTickAndOnlyOnce) {
    Undrawn world;
    world.ticks(8);
    EXPECT_EQ(world.rows.windsamples(), 0);
    world.ticks(1);
    EXPECT_EQ(world.rows.windsamples(), 1);
    EXPECT_FALSE(world.state.graphs.grafsjustloaded);
    EXPECT_EQ(world.state.graphs.GrFailCount, 0);
    world.ticks(100);
    EXPECT_EQ(world.rows.windsamples(), 1);
}

TEST(GrFailTimer, CountsOnlyARunningCopyThatHasDrawnNothing) {
    Undrawn starting;
    starting.state.run.fullystarted = false;
    starting.ticks(20);
    EXPECT_EQ(starting.state.graphs.GrFailCount, 0);
    EXPECT_EQ(starting.rows.windsamples(), 0);
    Undrawn drawn;
    drawn.state.graphs.GraphsDisplayed = true;
    drawn.ticks(20);
    EXPECT_EQ(drawn.state.graphs.GrFailCount, 0);
    EXPECT_EQ(drawn.rows.windsamples(), 0);
}

TEST(GrFailTimer, WithoutALoadedStoreWaitsForTheMinute) {
    Undrawn world;
    world.state.graphs.grafsjustloaded = false;
    world.ticks(20);
    EXPECT_EQ(world.rows.windsamples(), 0);
}

TEST(GrFailTimer, DrawsWhenDrawingIsSwitchedOnAgain) {
    Undrawn world;
    world.ticks(8);
    world.state.menu.mnuDisableGraphs.checked = false;
    world.ticks(1);
    EXPECT_EQ(world.state.graphs.draws, 1);
    EXPECT_TRUE(world.state.graphs.GraphsDisplayed);
}

TEST(GrFailTimer, TicksEveryTenSecondsFromTheFirstCycleOn) {
    StartedWorld world("DrwGrafs=True\r\n");
    world.clock.set_computer_time(*civil_time({2026, 10, 5, 14, 0, 5}));
    world.send_trains(2);
    world.state().graphs.grafsjustloaded = true;
    const int before = world.state().graphs.GrFailCount;
    world.run_for(20s);
    EXPECT_EQ(world.state().graphs.GrFailCount, before + 2);
    world.run_for(90s);
    EXPECT_EQ(world.state().graphs.rows.windsamples(), 1);
}

}  // namespace
}  // namespace nimbry::test
