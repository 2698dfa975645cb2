#include "engine/graphs/graph_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "engine/core/weather_state.h"
#include "engine/graphs/graph_scales.h"
#include "tests/world/front_day.h"
#include "tests/world/virtual_clock.h"

namespace nimbry::test {
namespace {

/// Letters of equal width.
LetterSize letters(double width, double height) {
    return {[width](std::string_view text) { return width * static_cast<double>(text.size()); }, height};
}

const GraphDrawing& day(GraphKind kind, bool main = true) {
    static const auto drawings = [] {
        WeatherState state;
        fill_with_a_front(state, VirtualClock::usual_start);
        level_scales(state.graphs, true);
        std::vector<GraphDrawing> all;
        for (const bool large : {true, false})
            for (int n = 0; n < graph_count; ++n)
                all.push_back(graph_drawing(state.graphs, static_cast<GraphKind>(n), true, large));
        return all;
    }();
    return drawings[static_cast<std::size_t>(kind) + (main ? 0U : std::size_t{graph_count})];
}

struct SizeCase {
    const char* law;
    double width, height;
    double letter_width, letter_height;
};

const SizeCase sizes[] = {
    {"the smallest main pane", 440, 180, 6, 13}, {"a usual one", 520, 260, 6, 13},
    {"a large one", 1400, 900, 6, 13},           {"letters of double size", 440, 180, 12, 26},
    {"letters far too large", 440, 180, 40, 90}, {"a pane too small for anything", 20, 10, 6, 13},
};

bool overlap(const PlacedLabel& a, const PlacedLabel& b, double height) {
    return a.left < b.left + b.width && b.left < a.left + a.width && std::abs(a.middle - b.middle) < height;
}

TEST(GraphLayout, NoTwoLabelsTouchAndNoneIsCut) {
    for (const SizeCase& c : sizes) {
        for (int n = 0; n < graph_count; ++n) {
            SCOPED_TRACE(std::string(c.law) + ", graph " + std::to_string(n));
            const GraphLayout layout(day(static_cast<GraphKind>(n)), c.width, c.height,
                                     letters(c.letter_width, c.letter_height));
            const auto& labels = layout.labels();
            for (std::size_t a = 0; a < labels.size(); ++a)
                for (std::size_t b = a + 1; b < labels.size(); ++b)
                    EXPECT_FALSE(overlap(labels[a], labels[b], c.letter_height)) << labels[a].text << labels[b].text;
            if (c.width < 100 || c.letter_height > 60) continue;
            for (const PlacedLabel& label : labels) {
                EXPECT_GE(label.left, 0) << label.text;
                EXPECT_LE(label.left + label.width, c.width) << label.text;
                EXPECT_GE(label.middle - c.letter_height / 2, 0) << label.text;
                EXPECT_LE(label.middle + c.letter_height / 2, c.height) << label.text;
            }
        }
    }
}

std::vector<std::string> texts(const GraphLayout& layout) {
    std::vector<std::string> all;
    for (const PlacedLabel& label : layout.labels()) all.push_back(label.text);
    return all;
}

TEST(GraphLayout, WritesEveryLabelWhereThereIsRoom) {
    const GraphLayout layout(day(GraphKind::direction), 1400, 900, letters(6, 13));
    EXPECT_EQ(layout.labels().size(), 9U + 25U);
}

TEST(GraphLayout, LeavesOutHoursInEqualStepsWhereThereIsNone) {
    // 440 pixels less the margins are 16.7 an hour; two figures of 7 and the gap need 18.
    const GraphLayout layout(day(GraphKind::direction), 440, 180, letters(7, 13));
    const auto all = texts(layout);
    EXPECT_EQ(all.size(), 9U + 13U);
    EXPECT_EQ(all[9], day(GraphKind::direction).labels[0].text);
    EXPECT_EQ(all[10], day(GraphKind::direction).labels[2].text);
}

TEST(GraphLayout, KeepsBothEndsOfTheValueAxisWhileItCan) {
    const GraphLayout layout(day(GraphKind::direction), 440, 180, letters(12, 40));
    const auto all = texts(layout);
    EXPECT_EQ(all[0], "00");
    EXPECT_NE(std::find(all.begin(), all.end(), " N"), all.end());
}

TEST(GraphLayout, TheGraphTakesWhatTheLabelsLeave) {
    const GraphLayout layout(day(GraphKind::direction), 500, 200, letters(6, 12));
    // Labels are three letters at most: 18, a rim of 4, and half an hour's width and 1 to the axis.
    EXPECT_DOUBLE_EQ(layout.x(480), 18 + 4 + 7);
    EXPECT_DOUBLE_EQ(layout.x(6432), 500 - 6 - 4);
    EXPECT_DOUBLE_EQ(layout.y(385), 7);
    EXPECT_DOUBLE_EQ(layout.y(2440), 200 - 12 - 4) << "the ticks end above the hours";
}

TEST(GraphLayout, ASmallPaneIsFilledButForARim) {
    const GraphLayout layout(day(GraphKind::wind, false), 100, 60, letters(6, 12));
    EXPECT_DOUBLE_EQ(layout.x(300), 6);
    EXPECT_DOUBLE_EQ(layout.x(1560), 94);
    EXPECT_DOUBLE_EQ(layout.y(150), 6);
    EXPECT_DOUBLE_EQ(layout.y(550), 54);
    EXPECT_TRUE(layout.labels().empty());
}

TEST(GraphLayout, FindsTheWayBackFromAPixel) {
    const GraphLayout layout(day(GraphKind::barometer), 517, 233, letters(7, 15));
    for (const double twips : {480.0, 3456.0, 6432.0}) EXPECT_NEAR(layout.twips_of(layout.x(twips)), twips, 1e-6);
}

/// A small pane in which 12.6 twips are a pixel: x 300 is its pixel 6, and y 550 its pixel 54.
GraphLayout small_pane() {
    return {day(GraphKind::wind, false), 112, 60, letters(6, 12)};
}

TEST(GraphLayout, OfAColumnOfPixelsALineKeepsTheHighestAndTheLowestPointInTheirOrder) {
    const GraphLayout layout = small_pane();
    const auto path = layout.path({{300, 550}, {303, 150}, {306, 350}, {309, 400}, {330, 350}, {331, 350}, {360, 150}});
    ASSERT_EQ(path.size(), 4U);
    EXPECT_DOUBLE_EQ(path[0].y, 54);
    EXPECT_DOUBLE_EQ(path[1].y, 6) << "of the first four";
    EXPECT_DOUBLE_EQ(path[2].y, layout.y(350)) << "two of one height are one";
    EXPECT_DOUBLE_EQ(path[3].x, layout.x(360));
    const auto falling = layout.path({{300, 150}, {303, 550}});
    EXPECT_DOUBLE_EQ(falling[0].y, 6) << "the higher one came first";
}

TEST(GraphLayout, ALineOfFewPointsKeepsThemAll) {
    const GraphLayout layout = small_pane();
    const auto path = layout.path({{1560, 550}, {300, 550}});
    ASSERT_EQ(path.size(), 2U);
    EXPECT_NEAR(path[0].x, 106, 1e-9);
    EXPECT_NEAR(path[1].x, 6, 1e-9);
    EXPECT_TRUE(layout.path({}).empty());
}

TEST(GraphLayout, AFullDayInASmallPaneIsNoMoreThanTwoPointsAColumn) {
    const GraphLayout layout = small_pane();
    for (const GraphLine& line : day(GraphKind::wind, false).lines) EXPECT_LE(layout.path(line.points).size(), 202U);
}

TEST(GraphLayout, AStraightLineOfManyPointsIsOneOfItsEnds) {
    const GraphLayout layout = small_pane();
    std::vector<TwipPoint> rising, level;
    for (int n = 0; n < 400; ++n) {
        rising.push_back({300 + 3.0F * static_cast<float>(n), 550 - static_cast<float>(n)});
        level.push_back({300 + 3.0F * static_cast<float>(n), 400});
    }
    for (const std::vector<TwipPoint>& points : {rising, level}) {
        const auto path = layout.path(points);
        ASSERT_EQ(path.size(), 2U);
        EXPECT_DOUBLE_EQ(path[1].x, layout.x(1497));
    }
}

TEST(GraphLayout, ALinePassesEveryPointThatItLeavesOutWithinATenthOfAPixel) {
    const GraphLayout layout = small_pane();
    // Half a wave and a flat stretch: one point a column, 12.6 twips apart.
    std::vector<TwipPoint> points;
    for (int n = 0; n < 100; ++n) {
        const double y = n < 60 ? 350 + 150 * std::sin(0.1 * n) : 308;
        points.push_back({306 + 12.6F * static_cast<float>(n), static_cast<float>(y)});
    }
    const auto path = layout.path(points);
    EXPECT_LT(path.size(), 40U);
    std::size_t end = 1;
    for (const TwipPoint at : points) {
        const double x = layout.x(static_cast<double>(at.x)), y = layout.y(static_cast<double>(at.y));
        while (end + 1 < path.size() && path[end].x < x) ++end;
        const PixelPoint from = path[end - 1], to = path[end];
        EXPECT_NEAR(from.y + (to.y - from.y) * (x - from.x) / (to.x - from.x), y, 0.1 + 1e-9) << x;
    }
    // Three points in three columns: the middle one 0.09 and 0.11 pixels, of 12.6 twips, off the line.
    EXPECT_EQ(layout.path({{306, 400}, {319, 400 + 0.09F * 8.33F}, {332, 400}}).size(), 2U);
    EXPECT_EQ(layout.path({{306, 400}, {319, 400 + 0.11F * 8.34F}, {332, 400}}).size(), 3U);
}

TEST(GraphLayout, DotsThatLieOnEachOtherAreOne) {
    const GraphLayout layout = small_pane();
    EXPECT_EQ(layout.spots({{300, 550}, {305, 550}, {307, 550}, {307, 540}, {307, 536}}).size(), 3U);
}

}  // namespace
}  // namespace nimbry::test
