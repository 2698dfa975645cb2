#include "engine/graphs/graph_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "engine/derived/dates.h"

namespace nimbry {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

const CivilTime saved = *civil_time({2026, 10, 5, 14, 0, 40});

/// `count` samples; row r of series s holds r + s / 8.
void fill(GraphState& graphs, int count) {
    for (int r = 1; r <= count; ++r) {
        GraphRow row;
        row.set_gtime(stamp_text(saved - minutes{count - r}));
        for (int s = 0; s < series::count; ++s) row.set_gdata(s, static_cast<float>(r) + static_cast<float>(s) / 8);
        graphs.rows.append(row);
    }
    for (std::size_t r = 0; r < graphs.gscale.size(); ++r) graphs.gscale[r] = {static_cast<float>(r), 2.5F, -1};
}

std::string file_of(int count) {
    GraphState graphs;
    fill(graphs, count);
    return graph_file_text(graphs, saved);
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", from), text.size());
        lines.push_back(text.substr(from, end - from));
        from = end + 2;
    }
    return lines;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    return text;
}

/// Every stamp and value in use, and every count.
std::string day_of(const GraphState& graphs) {
    std::string text = std::to_string(graphs.rows.windsamples()) + "\n";
    for (int r = 0; r <= graphs.rows.windsamples(); ++r) text += graphs.rows.row(r).lines();
    return text;
}

// --- The text

TEST(GraphFile, HasItsLinesInOrder) {
    const std::vector<std::string> lines = lines_of(file_of(2));
    ASSERT_EQ(lines.size(), 63U + 11 * 3);
    EXPECT_EQ(lines[0], "05 Oct 2026 14:00:40");
    EXPECT_EQ(lines[1], " 2 ");
    EXPECT_EQ(lines[2], " 2 ");
    EXPECT_EQ(lines[3], " 0 ") << "row 0 of the scales";
    EXPECT_EQ(lines[4], " 2.5 ");
    EXPECT_EQ(lines[5], "-1 ");
    EXPECT_EQ(lines[6], " 1 ");
    EXPECT_EQ(lines[60], " 19 ") << "row 19, the last: the spare row is not in the file";
    EXPECT_EQ(lines[63], std::string(20, ' ')) << "row 0 has no stamp";
    for (std::size_t s = 0; s < 10; ++s) EXPECT_EQ(lines[64 + s], " 2 ") << "and holds the counts";
    EXPECT_EQ(lines[74], "05 Oct 2026 13:59:40");
    EXPECT_EQ(lines[75], " 1 ");
    EXPECT_EQ(lines[84], " 2.125 ");
    EXPECT_EQ(lines[85], "05 Oct 2026 14:00:40");
    EXPECT_EQ(lines[95], " 3.125 ");
}

TEST(GraphFile, Is63LinesAnd11ForEachRowAndRow0) {
    for (const int count : {1, 60, 1440}) {
        EXPECT_EQ(lines_of(file_of(count)).size(), 63U + 11U * (static_cast<unsigned>(count) + 1)) << count;
    }
}

TEST(GraphFile, WhatWasSavedLoadsAsTheSameDay) {
    for (const int count : {1, 2, 59, 1440}) {
        SCOPED_TRACE(count);
        GraphState before, after;
        fill(before, count);
        EXPECT_EQ(read_graph_file(graph_file_text(before, saved), saved, after), GraphFileOutcome::loaded);
        EXPECT_EQ(day_of(after), day_of(before));
        for (std::size_t r = 0; r < 20; ++r) EXPECT_EQ(after.gscale[r], before.gscale[r]) << r;
        EXPECT_EQ(after.gscale[20], (std::array<float, 3>{}));
        EXPECT_EQ(after.grmax, count);
        EXPECT_EQ(after.grafage, 0);
    }
}

// --- Its age

struct AgeCase {
    const char* law;
    seconds later;
    GraphFileOutcome outcome;
    int grafage;
};

TEST(GraphFile, IsGoodForADay) {
    const AgeCase cases[] = {
        {"at once", seconds{0}, GraphFileOutcome::loaded, 0},
        {"less than a minute", seconds{59}, GraphFileOutcome::loaded, 0},
        {"a minute", seconds{60}, GraphFileOutcome::loaded, 1},
        {"whole minutes only", seconds{3659}, GraphFileOutcome::loaded, 60},
        {"exactly a day", seconds{86400}, GraphFileOutcome::loaded, 1440},
        {"a second more", seconds{86401}, GraphFileOutcome::too_old, 0},
        {"a year", seconds{31536000}, GraphFileOutcome::too_old, 0},
        {"the clock went back a second", seconds{-1}, GraphFileOutcome::from_the_future, 0},
        {"a century", seconds{-3153600000}, GraphFileOutcome::from_the_future, 0},
    };
    for (const AgeCase& c : cases) {
        SCOPED_TRACE(c.law);
        GraphState graphs;
        EXPECT_EQ(read_graph_file(file_of(100), saved + c.later, graphs), c.outcome);
        EXPECT_EQ(graphs.grafage, c.grafage);
        const int filled = c.outcome == GraphFileOutcome::loaded ? std::min(100 + c.grafage, 1440) : 0;
        EXPECT_EQ(graphs.rows.windsamples(), filled);
    }
}

TEST(GraphFile, TheTimeSinceItsSaveIsAFlatStretchOfUnknownTime) {
    GraphState graphs;
    read_graph_file(file_of(100), saved + minutes{30}, graphs);
    EXPECT_EQ(graphs.rows.windsamples(), 130);
    EXPECT_EQ(graphs.rows.gtime(100), "05 Oct 2026 14:00:40");
    EXPECT_EQ(graphs.rows.gtime(101), "??");
    EXPECT_EQ(graphs.rows.gdata(2, 130), 100.25F);
    EXPECT_EQ(graphs.rows.gdata(7, 0), 130);
    EXPECT_EQ(graphs.grmax, 100) << "of the file";
}

// --- Bad files

/// Loads, and proves that whatever came of it the store takes samples: the last one is there afterwards.
GraphFileOutcome load_and_go_on(const std::string& text, GraphState& graphs, CivilTime now = saved) {
    const GraphFileOutcome outcome = read_graph_file(text, now, graphs);
    const int before = graphs.rows.windsamples();
    EXPECT_EQ(before > 0, outcome == GraphFileOutcome::loaded);
    for (int s = 0; s < series::count; ++s) EXPECT_EQ(graphs.rows.gdata(s, 0), static_cast<float>(before));
    GraphRow row;
    row.set_gdata(4, 1013);
    graphs.rows.append(row);
    EXPECT_EQ(graphs.rows.windsamples(), std::min(before + 1, 1440));
    EXPECT_EQ(graphs.rows.gdata(4, graphs.rows.windsamples()), 1013);
    return outcome;
}

TEST(GraphFile, CutShortAnywhereItIsAsGoodAsNone) {
    const std::string whole = file_of(3);
    const std::size_t last_line = whole.rfind("\r\n", whole.size() - 3) + 2;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        GraphState graphs;
        const GraphFileOutcome outcome = load_and_go_on(whole.substr(0, length), graphs);
        if (length <= last_line) {
            EXPECT_NE(outcome, GraphFileOutcome::loaded);
            EXPECT_EQ(graphs.gscale, GraphScales{});
            EXPECT_EQ(graphs.grmax, 0);
        } else {
            EXPECT_EQ(outcome, GraphFileOutcome::loaded) << "only the last number is cut";
        }
    }
}

TEST(GraphFile, ATextInAnyLinesPlace) {
    const std::vector<std::string> whole = lines_of(file_of(3));
    for (const char* text : {"rubbish", "", "12,5", "1E99", "nan", "inf", "--1", "0x10", "1 2", "\xB0"}) {
        for (std::size_t n = 0; n < whole.size(); ++n) {
            SCOPED_TRACE(std::string(text) + " in line " + std::to_string(n + 1));
            std::vector<std::string> lines = whole;
            lines[n] = text;
            GraphState graphs;
            const GraphFileOutcome outcome = load_and_go_on(joined(lines), graphs);
            if (n == 0) {
                EXPECT_EQ(outcome, GraphFileOutcome::bad_date);
            } else if (n <= 2) {
                EXPECT_EQ(outcome, GraphFileOutcome::bad_count);
            } else {
                EXPECT_EQ(outcome, GraphFileOutcome::loaded);
            }
        }
    }
}

TEST(GraphFile, ALineThatIsNoNumberKeepsTheValueThatWasThere) {
    std::vector<std::string> lines = lines_of(file_of(2));
    lines[7] = "x";                 // gscale(1, 1)
    lines[63 + 11 + 3] = "twelve";  // gdata(2, 1)
    GraphState graphs;
    graphs.gscale[1][1] = 77;
    graphs.rows.row(1).set_gdata(2, 42);
    graphs.rows.row(1).set_gdata(3, 42);
    EXPECT_EQ(read_graph_file(joined(lines), saved, graphs), GraphFileOutcome::loaded);
    EXPECT_EQ(graphs.gscale[1][1], 77);
    EXPECT_EQ(graphs.rows.gdata(2, 1), 42);
    EXPECT_EQ(graphs.rows.gdata(3, 1), 1.375F) << "a good line is taken";
}

struct CountCase {
    const char* law;
    const char* grmax;
    const char* windsamples;
    GraphFileOutcome outcome;
};

TEST(GraphFile, CountsThatTheRowsCannotHaveMakeItAsGoodAsNone) {
    const CountCase cases[] = {
        {"as saved", " 3 ", " 3 ", GraphFileOutcome::loaded},
        {"fewer samples than rows", " 3 ", " 2 ", GraphFileOutcome::loaded},
        {"fewer rows than the file has", " 2 ", " 2 ", GraphFileOutcome::loaded},
        {"more samples than rows", " 3 ", " 4 ", GraphFileOutcome::bad_count},
        {"more rows than the file has", " 4 ", " 3 ", GraphFileOutcome::cut_short},
        {"more than a day", " 1441 ", " 3 ", GraphFileOutcome::bad_count},
        {"far more", " 1e30 ", " 3 ", GraphFileOutcome::bad_count},
        {"and more", " 99999999999 ", " 99999999999 ", GraphFileOutcome::bad_count},
        {"negative", "-1 ", " 3 ", GraphFileOutcome::bad_count},
        {"negative samples", " 3 ", "-3 ", GraphFileOutcome::bad_count},
        {"none", " 0 ", " 0 ", GraphFileOutcome::empty},
        {"no samples", " 3 ", " 0 ", GraphFileOutcome::empty},
        {"no number", " many ", " 3 ", GraphFileOutcome::bad_count},
        {"a fraction is rounded", " 2.9 ", " 2.9 ", GraphFileOutcome::loaded},
    };
    for (const CountCase& c : cases) {
        SCOPED_TRACE(c.law);
        std::vector<std::string> lines = lines_of(file_of(3));
        lines[1] = c.grmax;
        lines[2] = c.windsamples;
        GraphState graphs;
        EXPECT_EQ(load_and_go_on(joined(lines), graphs), c.outcome);
    }
}

TEST(GraphFile, TheCountsOfRow0GiveWayToTheNumberOfSamples) {
    std::vector<std::string> lines = lines_of(file_of(3));
    for (std::size_t s = 0; s < 10; ++s) lines[64 + s] = " 1e9 ";
    GraphState graphs;
    EXPECT_EQ(load_and_go_on(joined(lines), graphs), GraphFileOutcome::loaded);
    EXPECT_EQ(graphs.rows.windsamples(), 4);
}

TEST(GraphFile, ItsLineEndsMayBeOfEitherKindAndTheLastMayBeMissing) {
    std::string text = file_of(3);
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    text.pop_back();
    GraphState graphs;
    EXPECT_EQ(read_graph_file(text, saved, graphs), GraphFileOutcome::loaded);
    EXPECT_EQ(graphs.rows.gdata(9, 3), 4.125F);
}

TEST(GraphFile, AStampThatIsNoDateIsKeptAsItStands) {
    std::vector<std::string> lines = lines_of(file_of(2));
    lines[74] = "  some other time of the year  ";
    GraphState graphs;
    EXPECT_EQ(read_graph_file(joined(lines), saved, graphs), GraphFileOutcome::loaded);
    EXPECT_EQ(graphs.rows.gtime(1), "some other time of t");
}

struct LineCase {
    const char* line;
    std::optional<float> number;
};

TEST(GraphFile, ANumberMayBeWrittenInManyWaysAndAlwaysWithAPoint) {
    const LineCase cases[] = {
        {" 12.5 ", 12.5F},      {"12.5", 12.5F},        {"   12.5", 12.5F},
        {"-12.5 ", -12.5F},     {" .5 ", 0.5F},         {"-.5", -0.5F},
        {" 0.5 ", 0.5F},        {"+3", 3.0F},           {" 1.5E2 ", 150.0F},
        {" 1e-1 ", 0.1F},       {"5.", 5.0F},           {"12,5", std::nullopt},
        {"", std::nullopt},     {"  ", std::nullopt},   {"-", std::nullopt},
        {"+", std::nullopt},    {"1 2", std::nullopt},  {"12.5 C", std::nullopt},
        {"nan", std::nullopt},  {"-inf", std::nullopt}, {"infinity", std::nullopt},
        {"1e99", std::nullopt}, {"+-1", std::nullopt},  {".", std::nullopt},
    };
    for (const LineCase& c : cases) EXPECT_EQ(line_number(c.line), c.number) << '[' << c.line << ']';
}

}  // namespace
}  // namespace nimbry
