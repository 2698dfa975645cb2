#include "engine/graphs/graph_drawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "engine/core/weather_state.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_file.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_view.h"

namespace nimbry {
namespace {

std::string contents(const char* name) {
    std::ifstream file(std::string(NIMBRY_SOURCE_DIR "/tests/graphs/") + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

const char* name_of(GraphPen pen) {
    switch (pen) {
        case GraphPen::axis: return "axis";
        case GraphPen::tick: return "tick";
        case GraphPen::grid: return "grid";
        case GraphPen::first: return "first";
        case GraphPen::second: return "second";
        case GraphPen::indoor: break;
    }
    return "indoor";
}

std::string text_of(TwipPoint at) {
    char text[40];
    std::snprintf(text, sizeof text, "%.1f,%.1f", static_cast<double>(at.x), static_cast<double>(at.y));
    return text;
}

template <class Stroke>
std::string text_of(const char* what, const Stroke& stroke) {
    std::string text = std::string(what) + " " + name_of(stroke.pen);
    for (const TwipPoint at : stroke.points) text += " " + text_of(at);
    return text;
}

std::vector<std::string> lines_of(const GraphDrawing& drawing) {
    std::vector<std::string> lines{"# " + std::string(graph_name(drawing.kind)) + (drawing.main ? " main" : " small")};
    for (const GraphLine& line : drawing.lines) lines.push_back(text_of("line", line));
    for (const GraphDots& dots : drawing.dots) lines.push_back(text_of("dots", dots));
    for (const GraphLabel& label : drawing.labels) {
        lines.push_back(std::string("label ") + (label.side == GraphLabel::Side::left ? "left " : "below ") +
                        text_of(label.at) + " [" + label.text + "]");
    }
    return lines;
}

/// The words of a line, its points taken apart.
std::vector<std::string> words_of(std::string line) {
    for (char& c : line)
        if (c == ',') c = ' ';
    std::istringstream in(line);
    std::vector<std::string> words;
    for (std::string word; in >> word;) words.push_back(word);
    return words;
}

/// Words are equal; numbers are within a tenth of a twip.
void expect_same(const std::string& line, const std::string& golden) {
    const auto got = words_of(line), wanted = words_of(golden);
    ASSERT_EQ(got.size(), wanted.size()) << line << "\n" << golden;
    for (std::size_t n = 0; n < got.size(); ++n) {
        if (IsNumeric(got[n]) && IsNumeric(wanted[n])) {
            ASSERT_NEAR(Val(got[n]), Val(wanted[n]), 0.11) << line << "\n" << golden;
        } else {
            ASSERT_EQ(got[n], wanted[n]) << line << "\n" << golden;
        }
    }
}

/// The ninety minutes of tests/graphs/make_front.py.
void load_front(WeatherState& state) {
    const auto now = civil_time({2026, 10, 6, 0, 9, 53});
    ASSERT_EQ(read_graph_file(contents("front.dat"), *now, state.graphs), GraphFileOutcome::loaded);
    ASSERT_EQ(state.graphs.rows.windsamples(), 90);
    setgraphscales(state);
}

TEST(GraphDrawing, AllSixGraphsAreDrawnAsWorkedOutByHand) {
    WeatherState state;
    load_front(state);
    level_scales(state.graphs, true);
    std::vector<std::string> lines;
    for (int n = 0; n < graph_count; ++n) {
        for (const bool main : {true, false}) {
            const auto one = lines_of(graph_drawing(state.graphs, static_cast<GraphKind>(n), true, main));
            lines.insert(lines.end(), one.begin(), one.end());
        }
    }
    std::istringstream golden(contents("front.drawings"));
    std::size_t n = 0;
    for (std::string line; std::getline(golden, line); ++n) {
        ASSERT_LT(n, lines.size());
        expect_same(lines[n], line);
    }
    EXPECT_EQ(n, lines.size());
    EXPECT_GT(n, 150U);
}

/// A store of `count` equal samples, one a minute up to 23:59:33.
void fill(WeatherState& state, int count, float barometer = 1013) {
    setgraphscales(state);
    const CivilTime last = *civil_time({2026, 10, 5, 23, 59, 33});
    for (int r = 1; r <= count; ++r) {
        GraphRow row;
        row.set_gtime(stamp_text(last - std::chrono::minutes{count - r}));
        row.set_gdata(series::barometer, barometer);
        state.graphs.rows.append(row);
    }
    level_scales(state.graphs, true);
}

GraphDrawing barometer_of(const WeatherState& state, bool main = true) {
    return graph_drawing(state.graphs, GraphKind::barometer, true, main);
}

struct TickCase {
    int rows;
    std::size_t ticks;
    double step, last;
    const char* first_hour;
    const char* last_hour;
};

TEST(GraphDrawing, HoursAreTickedAlongTheTimeAxis) {
    const TickCase cases[] = {
        {1440, 25, 248, 6432, "00", "23"}, {1000, 17, 357, 6192, "07", "23"}, {90, 2, 3968, 4448, "22", "23"},
        {60, 2, 5952, 6432, "23", "23"},   {59, 2, 5952, 6432, "23", "23"},   {1, 2, 5952, 6432, "23", "23"},
        {0, 2, 5952, 6432, "??", "??"},    {120, 3, 2976, 6432, "22", "23"},
    };
    for (const TickCase& c : cases) {
        SCOPED_TRACE(c.rows);
        WeatherState state;
        fill(state, c.rows);
        const GraphDrawing drawing = barometer_of(state);
        std::vector<TwipPoint> ticks;
        for (const GraphLine& line : drawing.lines)
            if (line.pen == GraphPen::tick) ticks.push_back(line.points.front());
        std::vector<std::string> hours;
        for (const GraphLabel& label : drawing.labels)
            if (label.side == GraphLabel::Side::below) hours.push_back(label.text);
        ASSERT_EQ(ticks.size(), c.ticks);
        EXPECT_EQ(ticks.front(), (TwipPoint{480, 2400}));
        EXPECT_EQ(ticks[1].x - ticks[0].x, static_cast<float>(c.step));
        EXPECT_EQ(ticks.back().x, static_cast<float>(c.last));
        ASSERT_EQ(hours.size(), c.ticks);
        EXPECT_EQ(hours.front(), c.first_hour);
        EXPECT_EQ(hours.back(), c.last_hour);
    }
}

TEST(GraphDrawing, AnHourWhoseTimeIsUnknownHasQuestionMarks) {
    WeatherState state;
    fill(state, 1440);
    state.graphs.rows.row(1).set_gtime("??");
    state.graphs.rows.row(1440).set_gtime("rubbish");
    const GraphDrawing drawing = barometer_of(state);
    EXPECT_EQ(drawing.labels[0].text, "??");
    EXPECT_EQ(drawing.labels[1].text, "01");
    EXPECT_EQ(drawing.labels[24].text, "??");
}

struct XCase {
    int row, count;
    double main_x, small_x;
};

TEST(GraphDrawing, EachRowStandsInTheMiddleOfItsShareOfTheAxis) {
    const XCase cases[] = {
        {1, 1440, 482.0667, 300.4375},
        {1440, 1440, 6429.9333, 1559.5625},
        {1, 1, 3456, 930},
        {1, 2, 1968, 615},
        {2, 2, 4944, 1245},
        {45, 90, 3422.9333, 923},
    };
    for (const XCase& c : cases) {
        EXPECT_NEAR(row_x(main_plot, c.row, c.count), c.main_x, 1e-3);
        EXPECT_NEAR(row_x(small_plot, c.row, c.count), c.small_x, 1e-3);
        EXPECT_EQ(row_at(row_x(main_plot, c.row, c.count), c.count), c.row);
    }
}

struct RowCase {
    const char* law;
    double x;
    int count, row;
};

TEST(GraphDrawing, APlaceOnTheAxisBelongsToOneRow) {
    const RowCase cases[] = {
        {"the first row begins at the axis", 480, 1440, 1},
        {"and ends 4.13 twips on", 484.13, 1440, 1},
        {"where the second begins", 484.14, 1440, 2},
        {"the end of the axis", 6432, 1440, 1440},
        {"left of it", -500, 1440, 1},
        {"right of it", 9000, 1440, 1440},
        {"a short store has wide rows", 3455, 2, 1},
        {"and the next", 3457, 2, 2},
        {"an empty store has none", 3000, 0, 0},
    };
    for (const RowCase& c : cases) EXPECT_EQ(row_at(c.x, c.count), c.row) << c.law;
}

TEST(GraphDrawing, AValueStandsBetweenTheEndsOfItsAxis) {
    EXPECT_EQ(value_y(main_plot, 0, 0, 100), 2400);
    EXPECT_EQ(value_y(main_plot, 100, 0, 100), 385);
    EXPECT_EQ(value_y(main_plot, 25, 0, 100), 1896.25);
    EXPECT_EQ(value_y(small_plot, 0, 0, 100), 550);
    EXPECT_EQ(value_y(small_plot, 100, 0, 100), 150);
    EXPECT_EQ(value_y(small_plot, 50, 0, 100), 350);
}

TEST(GraphDrawing, OneSampleAloneIsADot) {
    WeatherState state;
    fill(state, 1);
    const GraphDrawing drawing = barometer_of(state, false);
    ASSERT_EQ(drawing.dots.size(), 1U);
    EXPECT_EQ(drawing.dots[0].points, (std::vector<TwipPoint>{{930, 550}}));
    EXPECT_EQ(drawing.lines.size(), 2U) << "the axes";
}

TEST(GraphDrawing, AnEmptyStoreHasAxesOnly) {
    WeatherState state;
    fill(state, 0);
    EXPECT_TRUE(barometer_of(state).dots.empty());
    for (const GraphLine& line : barometer_of(state).lines) EXPECT_NE(line.pen, GraphPen::first);
}

TEST(GraphDrawing, ASmallPaneHasNeitherTicksNorGridNorLabels) {
    WeatherState state;
    fill(state, 100);
    const GraphDrawing drawing = barometer_of(state, false);
    EXPECT_TRUE(drawing.labels.empty());
    for (const GraphLine& line : drawing.lines) {
        EXPECT_NE(line.pen, GraphPen::tick);
        EXPECT_NE(line.pen, GraphPen::grid);
    }
}

TEST(GraphDrawing, TheIndoorSeriesAreDrawnOnlyWithTheirSwitch) {
    WeatherState state;
    load_front(state);
    level_scales(state.graphs, false);
    for (const GraphKind kind : {GraphKind::temperature, GraphKind::humidity}) {
        for (const GraphLine& line : graph_drawing(state.graphs, kind, false, true).lines)
            EXPECT_NE(line.pen, GraphPen::indoor);
    }
}

TEST(GraphDrawing, PensHaveTheirColoursAndDifferInDash) {
    EXPECT_EQ(look_of(GraphPen::axis).colour, 65280U);
    EXPECT_EQ(look_of(GraphPen::grid).colour, 0x808080U) << "grey";
    EXPECT_EQ(look_of(GraphPen::first).colour, 0xFFFF00U) << "cyan";
    EXPECT_TRUE(look_of(GraphPen::first).dash.empty());
    EXPECT_EQ(look_of(GraphPen::second).colour, 0x00A5FFU) << "orange";
    EXPECT_EQ(look_of(GraphPen::indoor).colour, 0x00FFFFU) << "yellow";
    EXPECT_FALSE(look_of(GraphPen::second).dash.empty());
    EXPECT_FALSE(look_of(GraphPen::indoor).dash.empty());
    EXPECT_NE(look_of(GraphPen::second).dash, look_of(GraphPen::indoor).dash);
}

}  // namespace
}  // namespace nimbry
