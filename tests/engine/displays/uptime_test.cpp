#include "engine/displays/uptime.h"

#include <gtest/gtest.h>

#include "engine/derived/dates.h"

namespace nimbry {
namespace {

struct UptimeCase {
    const char* what;
    DateParts started, now;
    const char* text;
};

TEST(Uptime, IsTheMinuteBoundariesPassedInDaysHoursAndMinutes) {
    const UptimeCase cases[] = {
        {"just started", {2026, 10, 5, 14, 0, 0}, {2026, 10, 5, 14, 0, 59}, "0 Days 0 Hours 0 Minutes"},
        {"a second over a boundary", {2026, 10, 5, 14, 0, 59}, {2026, 10, 5, 14, 1, 0}, "0 Days 0 Hours 1 Minute"},
        {"one hour", {2026, 10, 5, 14, 0, 0}, {2026, 10, 5, 15, 0, 0}, "0 Days 1 Hour 0 Minutes"},
        {"59 minutes", {2026, 10, 5, 14, 0, 0}, {2026, 10, 5, 14, 59, 59}, "0 Days 0 Hours 59 Minutes"},
        {"one of each", {2026, 10, 5, 14, 0, 0}, {2026, 10, 6, 15, 1, 0}, "1 Day 1 Hour 1 Minute"},
        {"two of each", {2026, 2, 28, 23, 30, 0}, {2026, 3, 3, 1, 32, 0}, "2 Days 2 Hours 2 Minutes"},
        {"a minute short of a day", {2026, 10, 5, 14, 0, 0}, {2026, 10, 6, 13, 59, 0}, "0 Days 23 Hours 59 Minutes"},
        {"a clock set back", {2026, 10, 5, 14, 0, 0}, {2026, 10, 4, 14, 0, 0}, "0 Days 0 Hours 0 Minutes"},
    };
    for (const UptimeCase& row : cases) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(uptime_text(*civil_time(row.started), *civil_time(row.now)), row.text);
    }
}

}  // namespace
}  // namespace nimbry
