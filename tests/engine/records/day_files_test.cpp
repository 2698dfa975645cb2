#include "engine/records/day_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"

namespace nimbry {
namespace {

DayExtremes a_day() {
    DayExtremes day;
    day.maxtemp = 12.3F, day.maxtemptime = "14:05";
    day.mintemp = -4.7F, day.mintemptime = "06:40";
    day.maxhum = 100, day.maxhumtime = "07:00";
    day.minhum = 54, day.minhumtime = "15:10";
    day.maxrain = 12, day.maxraintime = "03:30";
    day.maxbar = 1019, day.maxbartime = "08:00";
    day.minbar = 1003, day.minbartime = "20:00";
    day.maxwind = 21.4F, day.maxwindtime = "16:20";
    day.maxwindir = "225\xB0";
    day.maxdew = 9.8F, day.maxdewtime = "13:00";
    day.mindew = -6.1F, day.mindewtime = "06:41";
    day.maxintemp = 22.5F, day.maxintemptime = "18:00";
    day.minintemp = 17.9F, day.minintemptime = "07:10";
    day.minwc = -11.2F, day.minwctime = "06:50";
    return day;  // no heat index that day
}

const std::string middle =
    "12.3\r\n14:05\r\n-4.7\r\n06:40\r\n100\r\n07:00\r\n54\r\n15:10\r\n12\r\n03:30\r\n1019\r\n08:00\r\n1003\r\n20:00\r\n"
    "21.4\r\n16:20\r\n225\xB0\r\n";
const std::string ending =
    "9.8\r\n13:00\r\n-6.1\r\n06:41\r\n22.5\r\n18:00\r\n17.9\r\n07:10\r\n-11.2\r\n06:50\r\n-999\r\n\r\n";

// Line 19 is the rain of the day, line 20 the days since rain, line 33 the last rain.
const std::string today = "05 Oct 2026 14:00:20\r\n" + middle + "3\r\n0\r\n" + ending + "2.54\r\n";
// Line 20 is the counter at the changeover.
const std::string yesterday = "05 Oct 2026 08:58:52\r\n" + middle + "7\r\n123\r\n" + ending;

const CivilTime today_stamp = *civil_time({2026, 10, 5, 14, 0, 20});
const CivilTime yesterday_stamp = *civil_time({2026, 10, 5, 8, 58, 52});

int lines(const std::string& text) {
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

// The text with its n-th line (from 1) replaced.
std::string with_line(const std::string& text, int n, const std::string& line) {
    std::size_t from = 0;
    for (int i = 1; i < n; ++i) from = text.find('\n', from) + 1;
    return text.substr(0, from) + line + text.substr(text.find("\r\n", from));
}

ErrorNumber error_in(const std::string& text, bool of_today) {
    try {
        if (of_today) {
            (void)read_today(text);
        } else {
            (void)read_yesterday(text);
        }
    } catch (const RunTimeError& error) {
        return error.number;
    }
    return ErrorNumber::other;
}

TEST(DayFiles, TodaysFileHas33LinesOfShortestNumbers) {
    const std::string text = today_text(today_stamp, {a_day(), 3, 0, 2.54F});
    EXPECT_EQ(text, today);
    EXPECT_EQ(lines(text), 33);
}

TEST(DayFiles, YesterdaysFileHas32LinesAndTheCounterInLine20) {
    const std::string text = yesterday_text(yesterday_stamp, {a_day(), 7, 123});
    EXPECT_EQ(text, yesterday);
    EXPECT_EQ(lines(text), 32);
}

TEST(DayFiles, ASavedDayLoadsAsTheSameDay) {
    const TodayRecord record = read_today(today);
    EXPECT_EQ(today_text(today_stamp, record), today);
    EXPECT_EQ(record.raintoday, 3.0F);
    EXPECT_EQ(record.DaySinceRain, 0);
    EXPECT_EQ(record.LastRain, 2.54F);
    const YesterdayRecord before = read_yesterday(yesterday);
    EXPECT_EQ(yesterday_text(yesterday_stamp, before), yesterday);
    EXPECT_EQ(before.rainatchange, 123.0F);
    EXPECT_EQ(day_file_stamp(today), today_stamp);
}

TEST(DayFiles, ABlankAroundANumberADecimalCommaAndAMissingLastLineEndAreTaken) {
    std::string text = with_line(today, 2, " 12,3 ");
    text.resize(text.size() - 2);
    EXPECT_EQ(today_text(today_stamp, read_today(text)), today);
}

TEST(DayFiles, WhatStandsBehindTheLastLineIsIgnored) {
    EXPECT_EQ(today_text(today_stamp, read_today(today + "the tail of a longer file\r\n")), today);
}

TEST(DayFiles, EveryTruncationAtALineIsAReadPastTheEnd) {
    for (std::size_t end = today.find('\n'); end + 1 < today.size(); end = today.find('\n', end + 1)) {
        SCOPED_TRACE(end);
        EXPECT_EQ(error_in(today.substr(0, end + 1), true), ErrorNumber::past_end);
    }
    EXPECT_EQ(error_in("", true), ErrorNumber::past_end);
    EXPECT_EQ(error_in("", false), ErrorNumber::past_end);
}

TEST(DayFiles, ATextWhereANumberShouldBeIsATypeMismatchButInTheTwoDayCounts) {
    const int times_and_direction[] = {1, 3, 5, 7, 9, 11, 13, 15, 17, 18, 22, 24, 26, 28, 30, 32};
    for (int n = 1; n <= 33; ++n) {
        SCOPED_TRACE(n);
        const bool text_line = std::find(std::begin(times_and_direction), std::end(times_and_direction), n) !=
                               std::end(times_and_direction);
        const bool forgiven = n == 20 || n == 33;
        EXPECT_EQ(error_in(with_line(today, n, "rubbish"), true),
                  text_line || forgiven ? ErrorNumber::other : ErrorNumber::type_mismatch);
    }
    EXPECT_EQ(read_today(with_line(today, 20, "rubbish")).DaySinceRain, 0);
    EXPECT_EQ(read_today(with_line(today, 33, "")).LastRain, 0.0F);
    EXPECT_EQ(error_in(with_line(yesterday, 20, "rubbish"), false), ErrorNumber::type_mismatch);
}

TEST(DayFiles, AHugeDayCountStaysWithinAnInteger) {
    EXPECT_EQ(read_today(with_line(today, 20, "1e30")).DaySinceRain, 1000000000);
}

TEST(DayFiles, ANumberThatNoReadingCanBeIsATypeMismatch) {
    EXPECT_EQ(read_today(with_line(today, 2, "-1000000000")).extremes.maxtemp, -1e9F);
    for (const char* number : {"1000000100", "-1e10", "3e38", "1e39", "-1e308"}) {
        SCOPED_TRACE(number);
        EXPECT_EQ(error_in(with_line(today, 2, number), true), ErrorNumber::type_mismatch);
        EXPECT_EQ(error_in(with_line(yesterday, 20, number), false), ErrorNumber::type_mismatch);
    }
}

TEST(DayFiles, AnAmountOfRainThatNoSingleHoldsIsNone) {
    EXPECT_EQ(read_today(with_line(today, 33, "3e38")).LastRain, 3e38F);
    EXPECT_EQ(read_today(with_line(today, 33, "1e39")).LastRain, 0.0F);
    EXPECT_EQ(read_today(with_line(today, 20, "1e39")).DaySinceRain, 0);
}

TEST(DayFiles, AStampThatIsNoDateIsATypeMismatch) {
    EXPECT_THROW((void)day_file_stamp(with_line(today, 1, "31 Feb 2026 10:00:00")), RunTimeError);
    EXPECT_THROW((void)day_file_stamp(""), RunTimeError);
}

TEST(DayExtremes, AResetPutsTheNumbersBackAndLeavesTheTimes) {
    DayExtremes day = a_day();
    day.reset_values();
    EXPECT_EQ(
        today_text(today_stamp, {day, 0, 0, 0}),
        "05 Oct 2026 14:00:20\r\n-999\r\n14:05\r\n999\r\n06:40\r\n-999\r\n07:00\r\n999\r\n15:10\r\n-999\r\n03:30\r\n"
        "-999\r\n08:00\r\n9999\r\n20:00\r\n-999\r\n16:20\r\n225\xB0\r\n0\r\n0\r\n-999\r\n13:00\r\n999\r\n06:41\r\n"
        "-999\r\n18:00\r\n999\r\n07:10\r\n999\r\n06:50\r\n-999\r\n\r\n0\r\n");
}

TEST(DayExtremes, ADayIsIncompleteWhileOneOfTheEightOutdoorRecordsIsMissing) {
    EXPECT_FALSE(a_day().outdoor_record_missing());
    float DayExtremes::*const outdoor[] = {&DayExtremes::maxtemp, &DayExtremes::mintemp, &DayExtremes::maxhum,
                                           &DayExtremes::minhum,  &DayExtremes::maxrain, &DayExtremes::maxbar,
                                           &DayExtremes::minbar,  &DayExtremes::maxwind};
    const DayExtremes fresh;
    for (const auto field : outdoor) {
        DayExtremes day = a_day();
        day.*field = fresh.*field;
        EXPECT_TRUE(day.outdoor_record_missing());
    }
    DayExtremes day = a_day();
    day.maxdew = fresh.maxdew, day.mindew = fresh.mindew, day.minwc = fresh.minwc, day.maxintemp = fresh.maxintemp;
    EXPECT_FALSE(day.outdoor_record_missing());
}

}  // namespace
}  // namespace nimbry
