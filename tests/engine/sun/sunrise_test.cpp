#include "engine/sun/sunrise.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/derived/dates.h"

namespace nimbry {
namespace {

using std::chrono::day;
using std::chrono::local_days;
using std::chrono::month;
using std::chrono::year;

local_days date(int y, unsigned m, unsigned d) {
    return local_days{year{y} / month{m} / day{d}};
}

struct SunCase {
    const char* name;
    local_days day;
    double latitude, west, zone;
    bool daylight_saving, twilight;
    const char *sunrise, *sunset, *noon;
};

// Worked out with a separate calculation of the same formulas in Python.
const SunCase sun_cases[] = {
    {"Greenwich at midsummer", date(2026, 6, 21), 51.4779, 0, 0, false, false, "21 Jun 2026 03:43:28",
     "21 Jun 2026 20:19:18", "21 Jun 2026 12:01:22"},
    {"Greenwich at midwinter", date(2026, 12, 21), 51.4779, 0, 0, false, false, "21 Dec 2026 08:01:50",
     "21 Dec 2026 15:54:25", "21 Dec 2026 11:58:08"},
    {"civil twilight moves both ends outward", date(2026, 6, 21), 51.4779, 0, 0, false, true, "21 Jun 2026 02:56:02",
     "21 Jun 2026 21:06:43", "21 Jun 2026 12:01:22"},
    {"west longitude with daylight saving", date(2026, 6, 21), 40.7128, 74.006, 5, true, false, "21 Jun 2026 05:25:17",
     "21 Jun 2026 20:29:36", "21 Jun 2026 12:57:26"},
    {"the same place on standard time", date(2026, 3, 20), 40.7128, 74.006, 5, false, false, "20 Mar 2026 06:00:44",
     "20 Mar 2026 18:07:56", "20 Mar 2026 12:03:59"},
    {"a longitude of the wrong sign falls on the day before", date(2026, 3, 20), 40.7128, -74.006, 5, true, false,
     "19 Mar 2026 21:09:23", "20 Mar 2026 09:15:27", "20 Mar 2026 03:12:04"},
    {"south and far east, where the hour estimate is negative", date(2026, 1, 1), -33.8688, -151.2093, -11, false,
     false, "01 Jan 2026 05:47:33", "01 Jan 2026 20:08:40", "01 Jan 2026 12:58:10"},
    {"on the equator", date(2026, 3, 20), 0, 78.4678, 5, false, false, "20 Mar 2026 06:18:35", "20 Mar 2026 18:25:05",
     "20 Mar 2026 12:21:50"},
    {"day 366 of a leap year still divides by 365", date(2028, 12, 31), 51.4779, 0, 0, false, false,
     "31 Dec 2028 08:04:23", "31 Dec 2028 16:02:10", "31 Dec 2028 12:03:12"},
    {"midnight sun: all three at noon", date(2026, 6, 21), 70, 0, 0, false, false, "21 Jun 2026 12:01:22",
     "21 Jun 2026 12:01:22", "21 Jun 2026 12:01:22"},
    {"the north pole counts as 89.8", date(2026, 6, 21), 90, 0, 0, false, false, "21 Jun 2026 12:01:22",
     "21 Jun 2026 12:01:22", "21 Jun 2026 12:01:22"},
    {"the south pole in its summer", date(2026, 12, 21), -90, 0, 0, false, false, "21 Dec 2026 11:58:08",
     "21 Dec 2026 11:58:08", "21 Dec 2026 11:58:08"},
    {"the sun rises at the north pole, as at 89.8", date(2026, 3, 19), 90, 0, 0, false, false, "19 Mar 2026 05:06:04",
     "19 Mar 2026 12:08:16", "19 Mar 2026 12:08:20"},
    {"near the north pole, as at 89.8", date(2026, 3, 19), 89.85, 0, 0, false, false, "19 Mar 2026 05:06:04",
     "19 Mar 2026 12:08:16", "19 Mar 2026 12:08:20"},
    {"the sun sets at the south pole, as at 89.8", date(2026, 3, 23), -90, 0, 0, false, false, "23 Mar 2026 05:12:38",
     "23 Mar 2026 12:06:59", "23 Mar 2026 12:07:06"},
    {"the season's edge: a sunrise, and no sunset", date(2026, 6, 8), 66.5, 0, 0, false, false, "08 Jun 2026 00:06:46",
     "08 Jun 2026 11:58:45", "08 Jun 2026 11:58:39"},
    {"the date line: everything falls on the next date", date(2026, 3, 20), 1.872, 157.43, -14, false, false,
     "21 Mar 2026 06:34:23", "21 Mar 2026 18:40:52", "21 Mar 2026 12:37:36"},
};

clsSunrise sun_of(const SunCase& c) {
    clsSunrise sun;
    sun.Latitude = c.latitude;
    sun.Longitude = c.west;
    sun.TimeZone = c.zone;
    sun.DaySavings = c.daylight_saving;
    sun.twilight = c.twilight;
    sun.DateDay = c.day;
    return sun;
}

TEST(Sunrise, IsExactToTheSecondAtEveryPlaceAndDate) {
    for (const SunCase& c : sun_cases) {
        SCOPED_TRACE(c.name);
        clsSunrise sun = sun_of(c);
        sun.CalculateSun();
        ASSERT_TRUE(sun.Sunrise() && sun.Sunset() && sun.SolarNoon());
        EXPECT_EQ(stamp_text(*sun.Sunrise()), c.sunrise);
        EXPECT_EQ(stamp_text(*sun.Sunset()), c.sunset);
        EXPECT_EQ(stamp_text(*sun.SolarNoon()), c.noon);
    }
}

TEST(Sunrise, ReadingAResultCalculatesNothing) {
    const clsSunrise sun = sun_of(sun_cases[0]);
    EXPECT_FALSE(sun.Sunrise().has_value());
    EXPECT_FALSE(sun.Sunset().has_value());
    EXPECT_FALSE(sun.SolarNoon().has_value());
}

TEST(Sunrise, ALatitudeThatIsNoneLeavesTheResultsAsTheyWere) {
    for (const double latitude : {999.0, 90.0001, -90.0001}) {
        SCOPED_TRACE(latitude);
        clsSunrise sun = sun_of(sun_cases[0]);
        sun.CalculateSun();
        sun.Latitude = latitude;
        sun.DateDay = date(2026, 12, 21);
        sun.CalculateSun();
        EXPECT_EQ(stamp_text(*sun.Sunrise()), "21 Jun 2026 03:43:28");
        EXPECT_EQ(sun.Latitude, latitude);
    }
}

TEST(Sunrise, ALongitudeThatIsNoAngleLeavesTheResultsAsTheyWere) {
    for (const double longitude : {1e300, -1e300, 1000001.0}) {
        SCOPED_TRACE(longitude);
        clsSunrise sun = sun_of(sun_cases[0]);
        sun.CalculateSun();
        const auto before = sun.Sunrise();
        sun.Longitude = longitude;
        sun.CalculateSun();
        EXPECT_EQ(sun.Sunrise(), before);
    }
}

TEST(Sunrise, APolarLatitudeIsClampedForTheCalculationOnly) {
    clsSunrise sun = sun_of(sun_cases[10]);
    sun.CalculateSun();
    EXPECT_EQ(sun.Latitude, 90);
}

TEST(Sunrise, TheDayLengthComesFromTheHourAngleOfTheRise) {
    clsSunrise sun = sun_of(sun_cases[0]);
    sun.CalculateSun();
    EXPECT_NEAR(sun.daylength(), 16.59457311371627, 1e-9);
    sun.twilight = true;
    sun.CalculateSun();
    EXPECT_NEAR(sun.daylength(), 18.17488505403933, 1e-9);
}

TEST(Sunrise, ADayOfMidnightSunHasNoLength) {
    clsSunrise sun = sun_of(sun_cases[9]);
    sun.CalculateSun();
    EXPECT_EQ(sun.daylength(), 0);
}

TEST(Sunrise, TheArccosineIsZeroWhereItHasNone) {
    EXPECT_EQ(arccos(1), 0);
    EXPECT_EQ(arccos(-1), 0);
    EXPECT_EQ(arccos(-1.2283), 0);
    EXPECT_EQ(arccos(1.5), 0);
    EXPECT_NEAR(arccos(0), 1.5707963267948966, 1e-12);
    EXPECT_NEAR(arccos(0.5), 1.0471975511965979, 1e-12);
    EXPECT_NEAR(arccos(-0.5), 2.0943951023931957, 1e-12);
}

TEST(Sunrise, TheDayOfTheYearKnowsLeapYears) {
    EXPECT_EQ(day_of_year(date(2026, 1, 1)), 1);
    EXPECT_EQ(day_of_year(date(2026, 3, 1)), 60);
    EXPECT_EQ(day_of_year(date(2028, 3, 1)), 61);
    EXPECT_EQ(day_of_year(date(2100, 3, 1)), 60);
    EXPECT_EQ(day_of_year(date(2000, 12, 31)), 366);
}

TEST(Sunrise, ThePublishedDigitIsNotUsedInTheEquationOfTime) {
    // At gamma 0 every sine is 0: 229.18 * (0.000075 + 0.001568 - 0.014615).
    EXPECT_NEAR(equationoftime(0), 229.18 * (0.000075 + 0.001568 - 0.014615), 1e-12);
    // 0.006918 - 0.399912 - 0.006758
    EXPECT_NEAR(declination(0), -0.399752, 1e-12);
}

}  // namespace
}  // namespace nimbry
