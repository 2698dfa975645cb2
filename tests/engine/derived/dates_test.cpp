#include "engine/derived/dates.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace nimbry {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

CivilTime at(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return civil_time({year, month, day, hour, minute, second}).value();
}

TEST(CivilTime, CountsFromTheStartOf1970) {
    EXPECT_EQ(at(1970, 1, 1).time_since_epoch(), seconds{0});
    // 56 years of 365 days, 14 leap days, then 277 days of 2026, then 14:00:10.
    EXPECT_EQ(at(2026, 10, 5, 14, 0, 10).time_since_epoch(), days{56 * 365 + 14 + 277} + hours{14} + seconds{10});
}

TEST(CivilTime, TakesOnlyDatesAndTimesThatThereAre) {
    struct Case {
        const char* law;
        DateParts parts;
        bool possible;
    };
    const std::vector<Case> cases{
        {"a leap day in a leap year", {2024, 2, 29, 0, 0, 0}, true},
        {"none in a common year", {2026, 2, 29, 0, 0, 0}, false},
        {"a century is a common year", {2100, 2, 29, 0, 0, 0}, false},
        {"but each fourth is not", {2000, 2, 29, 0, 0, 0}, true},
        {"no 31 February", {2026, 2, 31, 0, 0, 0}, false},
        {"30 April", {2026, 4, 30, 0, 0, 0}, true},
        {"no 31 April", {2026, 4, 31, 0, 0, 0}, false},
        {"no day nought", {2026, 1, 0, 0, 0, 0}, false},
        {"no month nought", {2026, 0, 1, 0, 0, 0}, false},
        {"no thirteenth month", {2026, 13, 1, 0, 0, 0}, false},
        {"a month that would wrap in a byte", {2026, 257, 1, 0, 0, 0}, false},
        {"a day that would wrap in a byte", {2026, 1, 257, 0, 0, 0}, false},
        {"the last second of a day", {2026, 12, 31, 23, 59, 59}, true},
        {"no hour 24", {2026, 1, 1, 24, 0, 0}, false},
        {"no minute 60", {2026, 1, 1, 0, 60, 0}, false},
        {"no second 60", {2026, 1, 1, 0, 0, 60}, false},
        {"no hour below nought", {2026, 1, 1, -1, 0, 0}, false},
        {"no year nought", {0, 1, 1, 0, 0, 0}, false},
        {"no year of five digits", {10000, 1, 1, 0, 0, 0}, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.law);
        EXPECT_EQ(civil_time(c.parts).has_value(), c.possible);
    }
}

TEST(IsoText, IsReadBackAsTheSameMoment) {
    EXPECT_EQ(clock_text(at(2026, 10, 5, 9, 5, 7)), "09:05:07");
    EXPECT_EQ(iso_text(at(2026, 10, 5, 9, 5, 7)), "2026-10-05 09:05:07");
    EXPECT_EQ(iso_text(at(7, 1, 2)), "0007-01-02 00:00:00");
    EXPECT_EQ(read_iso("2026-10-31 23:58:09"), at(2026, 10, 31, 23, 58, 9));
    EXPECT_EQ(read_iso(iso_text(at(2024, 2, 29, 0, 0, 1))), at(2024, 2, 29, 0, 0, 1));
}

TEST(IsoText, OfAnotherFormOrOfNoDateIsNothing) {
    for (const char* text : {"", "2026-10-31", "2026-10-31 23:58", "2026-10-31 23:58:0", "2026-10-31 23:58:000",
                             " 2026-10-31 23:58:00", "2026-10-31 23:58:00 ", "2026-10-31T23:58:00", "26-10-31 23:58:00",
                             "2026-1-31 23:58:00", "2026/10/31 23:58:00", "2026-10-31 23.58.00", "2026-10-+1 23:58:00",
                             "2026-02-29 00:00:00", "2026-10-31 24:00:00", "0000-10-31 00:00:00"})
        EXPECT_FALSE(read_iso(text)) << text;
}

TEST(CivilTime, ComesApartIntoThePartsItWasMadeOf) {
    // Every 31 hours, 7 minutes and 13 seconds over three centuries meets every day and hour of leap and common years.
    const auto step = hours{31} + minutes{7} + seconds{13};
    for (CivilTime time = at(1900, 1, 1); time < at(2200, 1, 1); time += step)
        ASSERT_EQ(civil_time(parts_of(time)), time) << stamp_text(time);
}

TEST(CivilTime, ArithmeticIsPlainCalendarArithmetic) {
    EXPECT_EQ(stamp_text(at(2026, 3, 1) - minutes{1}), "28 Feb 2026 23:59:00");
    EXPECT_EQ(stamp_text(at(2024, 3, 1) - hours{24}), "29 Feb 2024 00:00:00");
    EXPECT_EQ(stamp_text(at(2026, 1, 20) - days{25}), "26 Dec 2025 00:00:00");
    // The nights in which Europe changes its clocks are nights like any other.
    EXPECT_EQ(stamp_text(at(2026, 3, 29, 1, 59, 59) + seconds{1}), "29 Mar 2026 02:00:00");
    EXPECT_EQ(at(2026, 10, 26) - at(2026, 10, 25), hours{24});
}

TEST(Months, HaveEnglishNames) {
    const std::array names{"January", "February", "March",     "April",   "May",      "June",
                           "July",    "August",   "September", "October", "November", "December"};
    const std::array short_names{"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    for (int month = 1; month <= 12; ++month) {
        const auto index = static_cast<std::size_t>(month - 1);
        EXPECT_EQ(full_month_name(month), names[index]);
        EXPECT_EQ(month_name(month), short_names[index]);
        EXPECT_EQ(month_number(short_names[index]), month);
    }
    for (const int none : {0, 13, -1, 15}) {
        EXPECT_EQ(month_name(none), "");
        EXPECT_EQ(full_month_name(none), "");
    }
}

TEST(Months, AreReadInAnyCaseAndByTheirThreeLettersOnly) {
    EXPECT_EQ(month_number("oct"), 10);
    EXPECT_EQ(month_number("MAY"), 5);
    for (const char* none : {"", "Oc", "October", "Okt", " Oct", "10"}) EXPECT_EQ(month_number(none), 0) << none;
}

TEST(DateText, HasATwoDigitDayAndTheShortMonth) {
    EXPECT_EQ(stamp_text(at(2026, 10, 5, 14, 0, 10)), "05 Oct 2026 14:00:10");
    EXPECT_EQ(stamp_text(at(2026, 12, 31, 0, 0, 0)), "31 Dec 2026 00:00:00");
    EXPECT_EQ(date_text(at(2026, 10, 5, 14, 0, 10)), "05 Oct 2026");
    EXPECT_EQ(date_text(at(987, 1, 2)), "02 Jan 0987");
}

TEST(ParseStamp, ReadsWhatStampTextWrites) {
    for (const CivilTime time : {at(2026, 10, 5, 14, 0, 10), at(1999, 12, 31, 23, 59, 59), at(2024, 2, 29)})
        EXPECT_EQ(parse_stamp(stamp_text(time)), time);
}

TEST(ParseStamp, TakesAOneDigitDayAnyCaseAndOuterBlanks) {
    const CivilTime expected = at(2026, 10, 5, 14, 0, 10);
    EXPECT_EQ(parse_stamp("5 Oct 2026 14:00:10"), expected);
    EXPECT_EQ(parse_stamp("  05 OCT 2026 14:00:10  "), expected);
}

TEST(ParseStamp, RefusesAnythingElse) {
    for (const char* no :
         {"", " ", "yesterday", "31 Feb 2026 00:00:00", "05 Oct 2026", "05 Oct 2026 14:00", "05 Oct 2026 24:00:00",
          "05 Oct 26 14:00:10", "05-Oct-2026 14:00:10", "05 Okt 2026 14:00:10", "005 Oct 2026 14:00:10",
          "05 Oct 2026 14:00:10 x", "05 Oct 2026 4:00:10", "05 Oct 2026  14:00:10", "0 Oct 2026 14:00:10",
          "05 Oct 2026 14:00:60", "Oct 05 2026 14:00:10", "05 Oct 2026 14.00.10"})
        EXPECT_EQ(parse_stamp(no), std::nullopt) << no;
}

TEST(MinutesBetween, CountsTheMinuteBoundaries) {
    EXPECT_EQ(minutes_between(at(2026, 1, 1, 12, 0, 59), at(2026, 1, 1, 12, 1, 0)), 1);
    EXPECT_EQ(minutes_between(at(2026, 1, 1, 12, 0, 0), at(2026, 1, 1, 12, 0, 59)), 0);
    EXPECT_EQ(minutes_between(at(2026, 1, 1, 12, 1, 0), at(2026, 1, 1, 12, 0, 59)), -1);
    EXPECT_EQ(minutes_between(at(2026, 1, 1), at(2026, 1, 2)), 24 * 60);
    EXPECT_EQ(minutes_between(at(1969, 12, 31, 23, 59, 59), at(1970, 1, 1)), 1);
}

TEST(Padded, HasLeadingNoughtsUpToTheWidth) {
    EXPECT_EQ(padded(7, 2), "07");
    EXPECT_EQ(padded(0, 3), "000");
    EXPECT_EQ(padded(1234, 3), "1234");
    EXPECT_EQ(padded(5, 0), "5");
}

}  // namespace
}  // namespace nimbry
