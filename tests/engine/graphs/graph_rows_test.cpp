#include "engine/graphs/graph_rows.h"

#include <gtest/gtest.h>

#include <string>

namespace nimbry {
namespace {

GraphRow sample(float value) {
    GraphRow row;
    for (int s = 0; s < series::count; ++s) row.set_gdata(s, value + static_cast<float>(s) / 16);
    row.set_gtime("t" + std::to_string(static_cast<int>(value)));
    return row;
}

/// A store of `count` samples; that of row r has the value r and the stamp "t<r>".
GraphRows filled(int count) {
    GraphRows rows;
    for (int r = 1; r <= count; ++r) rows.append(sample(static_cast<float>(r)));
    return rows;
}

TEST(GraphRows, ASampleGoesBehindTheLastOneInEverySeriesAndIsCounted) {
    const GraphRows rows = filled(3);
    EXPECT_EQ(rows.windsamples(), 3);
    for (int s = 0; s < series::count; ++s) {
        EXPECT_EQ(rows.gdata(s, 0), 3) << "row 0 counts";
        EXPECT_EQ(rows.gdata(s, 3), 3 + static_cast<float>(s) / 16);
    }
    EXPECT_EQ(rows.gtime(1), "t1");
    EXPECT_EQ(rows.gtime(3), "t3");
    EXPECT_EQ(rows.gtime(0), "") << "row 0 has no time";
}

TEST(GraphRows, AFullDayIs1440RowsAndTheNextSampleScrollsIt) {
    GraphRows rows = filled(1440);
    EXPECT_EQ(rows.windsamples(), 1440);
    EXPECT_EQ(rows.gdata(0, 1), 1);
    rows.append(sample(1441));
    EXPECT_EQ(rows.windsamples(), 1440);
    EXPECT_EQ(rows.gdata(9, 0), 1440);
    EXPECT_EQ(rows.gdata(0, 1), 2) << "the oldest is lost";
    EXPECT_EQ(rows.gtime(1), "t2") << "and its stamp with it";
    EXPECT_EQ(rows.gdata(9, 1439), 1440 + 9.0F / 16);
    EXPECT_EQ(rows.gdata(0, 1440), 1441);
    EXPECT_EQ(rows.gtime(1440), "t1441");
}

TEST(GraphRows, ACountIsKeptWithinTheRows) {
    GraphRows rows;
    rows.set_windsamples(1441);
    EXPECT_EQ(rows.windsamples(), 1440);
    EXPECT_EQ(rows.gdata(5, 0), 1440);
    rows.set_windsamples(-1);
    EXPECT_EQ(rows.windsamples(), 0);
}

struct AgeCase {
    const char* law;
    int samples, minutes;
    int used;         ///< rows in use afterwards
    int first_value;  ///< what row 1 then holds
    int last_kept;    ///< the highest row that still has a time of its own
    int kept_value;   ///< and its value
};

TEST(GraphRows, TimeThatPassedUnseenIsAFlatStretch) {
    const AgeCase cases[] = {
        {"no time changes nothing", 1000, 0, 1000, 1, 1000, 1000},
        {"a gap that fits in behind the samples", 1000, 100, 1100, 1, 1000, 1000},
        {"one row short of the end", 1000, 439, 1439, 1, 1000, 1000},
        {"the gap that just reaches the end moves everything", 1000, 440, 1440, 441, 560, 1000},
        {"a full day moves by the gap", 1440, 10, 1440, 11, 1430, 1440},
        {"a minute", 1440, 1, 1440, 2, 1439, 1440},
        {"almost full, and a minute", 1439, 1, 1440, 2, 1438, 1439},
        {"all but one sample leave", 1440, 1439, 1440, 1440, 1, 1440},
        {"nothing but the last value is left", 1440, 1440, 1440, 1440, 0, 0},
        {"a short store moved out of sight", 10, 1435, 1440, 10, 0, 0},
        {"one sample, one row short", 1, 1438, 1439, 1, 1, 1},
    };
    for (const AgeCase& c : cases) {
        SCOPED_TRACE(c.law);
        GraphRows rows = filled(c.samples);
        rows.age(c.minutes);
        EXPECT_EQ(rows.windsamples(), c.used);
        for (int s = 0; s < series::count; ++s) {
            const float shift = static_cast<float>(s) / 16;
            EXPECT_EQ(rows.gdata(s, 0), static_cast<float>(c.used));
            EXPECT_EQ(rows.gdata(s, 1), static_cast<float>(c.first_value) + shift);
            EXPECT_EQ(rows.gdata(s, c.used), static_cast<float>(c.samples) + shift) << "the last sample stands on";
        }
        if (c.last_kept > 0) {
            EXPECT_EQ(rows.gdata(0, c.last_kept), static_cast<float>(c.kept_value));
            EXPECT_EQ(rows.gtime(c.last_kept), "t" + std::to_string(c.kept_value));
        }
        for (int r = c.last_kept + 1; r <= c.used; ++r) {
            ASSERT_EQ(rows.gtime(r), "??") << r;
            ASSERT_EQ(rows.gdata(3, r), static_cast<float>(c.samples) + 3.0F / 16) << r;
        }
    }
}

TEST(GraphRows, AnEmptyStoreDoesNotAge) {
    GraphRows rows;
    rows.age(100);
    EXPECT_EQ(rows.windsamples(), 0);
}

TEST(GraphRows, ClearingEmptiesEveryRowAndEveryCount) {
    GraphRows rows = filled(1440);
    rows.clear();
    EXPECT_EQ(rows.windsamples(), 0);
    for (int r = 0; r <= pmm1; ++r) {
        ASSERT_EQ(rows.gtime(r), "");
        for (int s = 0; s < series::count; ++s) ASSERT_EQ(rows.gdata(s, r), 0);
    }
}

struct NumberCase {
    const char* law;
    float value;
    const char* line;
};

TEST(GraphRow, ANumberStandsBetweenBlanksOrBehindItsSign) {
    const NumberCase cases[] = {
        {"a whole number", 12, " 12 \r\n"},
        {"one decimal, as a single has it", 12.3F, " 12.3 \r\n"},
        {"a zero before the point", 0.5F, " 0.5 \r\n"},
        {"a sign in the blank's place", -3.2F, "-3.2 \r\n"},
        {"no negative zero", -0.0F, " 0 \r\n"},
        {"no exponent", 1e10F, " 10000000000 \r\n"},
    };
    for (const NumberCase& c : cases) EXPECT_EQ(number_line(c.value), c.line) << c.law;
}

TEST(GraphRow, ItsLinesAreThePaddedStampAndTenNumbers) {
    GraphRow row;
    row.set_gtime("??");
    row.set_gdata(0, 1.5F);
    row.set_gdata(9, -2);
    EXPECT_EQ(row.lines(),
              "??                  \r\n 1.5 \r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n 0 \r\n-2 \r\n");
}

TEST(GraphRow, ItsLinesFollowEveryChange) {
    GraphRow row;
    const std::string blank(20, ' ');
    EXPECT_TRUE(row.lines().starts_with(blank + "\r\n 0 "));
    row.set_gtime("05 Oct 2026 14:00:33");
    EXPECT_TRUE(row.lines().starts_with("05 Oct 2026 14:00:33\r\n 0 \r\n"));
    row.set_gdata(0, 7);
    EXPECT_TRUE(row.lines().starts_with("05 Oct 2026 14:00:33\r\n 7 \r\n"));
}

TEST(GraphRow, AStampIsTwentyCharacters) {
    GraphRow row;
    row.set_gtime("05 Oct 2026 14:00:33 and more");
    EXPECT_EQ(row.gtime(), "05 Oct 2026 14:00:33");
}

}  // namespace
}  // namespace nimbry
