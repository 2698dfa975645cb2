#include "engine/sun/sun_texts.h"

#include <gtest/gtest.h>

#include "tests/engine/records/weather_days.h"
#include "tests/world/bare_copy.h"

namespace nimbry {
namespace {

using std::chrono::hours;
using std::chrono::local_days;
using std::chrono::minutes;
using std::chrono::seconds;

CivilTime at(int year, unsigned month, unsigned day, int hour, int minute = 0, int second = 0) {
    return local_days{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}} + hours{hour} +
           minutes{minute} + seconds{second};
}

// The times were worked out with a separate calculation of the sun's formulas in Python. Sydney Observatory in October:
// ten hours ahead of Greenwich and an hour of summer time.
struct SunTexts : testing::Test {
    test::BareCopy world;
    SunState& sun = world.state.sun;
    AdditionalPanel& panel = world.state.additional;

    void place(const char* latitude, const char* longitude, minutes ahead_of_utc) {
        world.state.settings.Latitude = latitude;
        world.state.settings.Longitude = longitude;
        world.clock.set_zone(ahead_of_utc);
    }
    void sydney() { place("-33.857100", "151.214900", hours{11}); }
    void refresh(CivilTime now) {
        world.clock.set_computer_time(now);
        refresh_sun_texts(world.copy);
        show_sun_picture(world.copy);
    }
};

TEST_F(SunTexts, BeforeSunriseEverythingOfTheDayIsToComeAndTomorrowIsNotShownYet) {
    sydney();
    refresh(at(2026, 10, 5, 6, 2, 21));
    EXPECT_EQ(panel.TxtSunrise.text, "Sunrise today (05 October 2026) will be at 06:27:28");
    EXPECT_EQ(panel.TxtSunset.text, "and Sunset will be at 18:59:51");
    EXPECT_EQ(panel.TxtSunrise.balloon, "Sunrise today will be at\r\n06:27:28");
    EXPECT_EQ(panel.TxtSunset.balloon, "Sunset today will be at\r\n18:59:51");
    EXPECT_EQ(panel.TxtSunriseTom.text, "");
    EXPECT_EQ(panel.TxtSunsetTom.text, "");
    EXPECT_EQ(panel.txtTwiStart.text, "Civil twilight today (05 October 2026) will start at 06:02:21")
        << "in its very second it has not passed";
    EXPECT_EQ(sun.risewasis, " will be ");
}

TEST_F(SunTexts, OnceTheSunHasRisenTomorrowIsShownToo) {
    sydney();
    refresh(at(2026, 10, 5, 6, 27, 28));
    EXPECT_EQ(panel.TxtSunriseTom.text, "");
    refresh(at(2026, 10, 5, 6, 27, 29));
    EXPECT_EQ(panel.TxtSunrise.text, "Sunrise today (05 October 2026) was at 06:27:28");
    EXPECT_EQ(panel.TxtSunrise.balloon, "Sunrise today was at\r\n06:27:28");
    EXPECT_EQ(panel.TxtSunriseTom.text, "Sunrise tomorrow (06 October 2026) will be at 06:26:06");
    EXPECT_EQ(panel.TxtSunsetTom.text, "and Sunset will be at 19:00:37");
    EXPECT_EQ(sun.risewasis, " was ");
    EXPECT_EQ(sun.setwasis, " will be ");
}

TEST_F(SunTexts, InTheEveningTheDayIsToldInThePast) {
    sydney();
    refresh(at(2026, 10, 5, 19, 24, 58));
    EXPECT_EQ(panel.TxtSunset.text, "and Sunset was at 18:59:51");
    EXPECT_EQ(panel.TxtSunset.balloon, "Sunset today was at\r\n18:59:51");
    EXPECT_EQ(panel.txtTwiStart.text, "Civil twilight today (05 October 2026) started at 06:02:21");
    EXPECT_EQ(panel.txtTwiEnd.text, "Civil twilight today (05 October 2026) will end at 19:24:59");
    refresh(at(2026, 10, 5, 19, 25, 0));
    EXPECT_EQ(panel.txtTwiEnd.text, "Civil twilight today (05 October 2026) ended at 19:24:59");
    EXPECT_EQ(sun.setwasis, " was ");
    EXPECT_EQ(sun.webtwend, "ended at 19:24:59");
}

TEST_F(SunTexts, TheTagsHaveTheirOwnWordsAndPlainTimes) {
    sydney();
    refresh(at(2026, 10, 5, 14));
    EXPECT_EQ(sun.websunrise, "at 06:27:28");
    EXPECT_EQ(sun.websunset, "at 18:59:51");
    EXPECT_EQ(sun.twebsunrise, " will be at 06:26:06");
    EXPECT_EQ(sun.twebsunset, " will be at 19:00:37");
    EXPECT_EQ(sun.trisewasis, " will be ");
    EXPECT_EQ(sun.tsetwasis, " will be ");
    EXPECT_EQ(sun.webtwstart, "started at 06:02:21");
    EXPECT_EQ(sun.webtwend, "will end at 19:24:59");
    EXPECT_EQ(sun.numwebsunrise, "06:27:28");
    EXPECT_EQ(sun.numwebsunset, "18:59:51");
    EXPECT_EQ(sun.numtwebsunrise, "06:26:06");
    EXPECT_EQ(sun.numtwebsunset, "19:00:37");
    EXPECT_EQ(sun.nwebtwstart, "06:02:21");
    EXPECT_EQ(sun.nwebtwend, "19:24:59");
}

TEST_F(SunTexts, SolarNoonAndTheLengthsFillTheirBoxesWithTheRestOfAMinuteCutOff) {
    sydney();
    refresh(at(2026, 10, 5, 14));
    EXPECT_EQ(sun.websolarnoon, "12:43:22");
    EXPECT_EQ(sun.webdaylength, "12 hours 31 minutes") << "12.5328 hours are 31 minutes and 58 seconds";
    EXPECT_EQ(sun.webvislight, "13 hours 22 minutes");
    EXPECT_EQ(panel.txtSolarNoon.text, sun.websolarnoon);
    EXPECT_EQ(panel.txtDayLength.text, sun.webdaylength);
    EXPECT_EQ(panel.txtVisLight.text, sun.webvislight);
}

TEST_F(SunTexts, WestIsNegativeAndSummerTimeCountsOnce) {
    place("40.7128", "-74.006", -hours{4});
    refresh(at(2026, 6, 21, 12));
    EXPECT_EQ(sun.numwebsunrise, "05:25:17");
    EXPECT_EQ(sun.numwebsunset, "20:29:36");
}

TEST_F(SunTexts, AZoneOfHalfHoursMovesEverythingWithIt) {
    place("0.000000", "0.000000", minutes{330});
    refresh(at(2026, 10, 5, 12));
    EXPECT_EQ(sun.numwebsunrise, "11:14:50") << "05:44:50 in UTC";
}

TEST_F(SunTexts, ADecimalCommaIsAPoint) {
    place("-33,8571", "151,2149", hours{11});
    refresh(at(2026, 10, 5, 12));
    EXPECT_EQ(sun.numwebsunrise, "06:27:28");
}

TEST_F(SunTexts, UnderTheMidnightSunAllTimesAreNoonAndTheDayHasNoLength) {
    place("70", "0", minutes{0});
    refresh(at(2026, 6, 21, 12, 1, 23));
    EXPECT_EQ(panel.TxtSunrise.text, "Sunrise today (21 June 2026) was at 12:01:22");
    EXPECT_EQ(panel.TxtSunset.text, "and Sunset was at 12:01:22");
    EXPECT_EQ(panel.txtTwiStart.text, "Civil twilight today (21 June 2026) started at 12:01:22");
    EXPECT_EQ(sun.websolarnoon, "12:01:22");
    EXPECT_EQ(sun.webdaylength, "0 hours 0 minutes");
    EXPECT_EQ(sun.webvislight, "0 hours 0 minutes");
}

TEST_F(SunTexts, WhereTheZoneMovesTheSunriseToTheNextDateItIsStillToComeAtTwoInTheAfternoon) {
    place("1.872", "-157.43", hours{14});
    refresh(at(2026, 3, 20, 14));
    EXPECT_EQ(panel.TxtSunrise.text, "Sunrise today (20 March 2026) will be at 06:34:23");
    EXPECT_EQ(panel.TxtSunriseTom.text, "");
}

TEST_F(SunTexts, ThePictureAndTheBoxesStandWhereTheLabelWasAsSoonAsALocationIsEntered) {
    refresh(at(2026, 10, 5, 12));
    EXPECT_FALSE(panel.Picture1.visible);
    EXPECT_FALSE(panel.TxtSunrise.visible);
    EXPECT_FALSE(panel.txtVisLight.visible);
    EXPECT_TRUE(panel.lblNoSun.visible);
    sydney();
    refresh(at(2026, 10, 5, 12));
    EXPECT_TRUE(panel.Picture1.visible);
    EXPECT_TRUE(panel.TxtSunrise.visible);
    EXPECT_TRUE(panel.txtVisLight.visible);
    EXPECT_FALSE(panel.lblNoSun.visible);
}

TEST(SunOfARunningCopy, IsToldAnewInEveryCycleFromTheSecondTrainOn) {
    test::WeatherDays days(at(2026, 10, 5, 6, 27), "Latitude=-33.857100\r\nLongitude=151.214900\r\n");
    days.world.clock.set_zone(hours{11});
    days.start();
    const AdditionalPanel& panel = days.world.state().additional;
    days.train(at(2026, 10, 5, 6, 27, 8));
    EXPECT_EQ(panel.TxtSunrise.text, "");
    days.train(at(2026, 10, 5, 6, 27, 18));
    EXPECT_EQ(panel.TxtSunrise.text, "Sunrise today (05 October 2026) will be at 06:27:28");
    EXPECT_EQ(panel.TxtSunriseTom.text, "");
    EXPECT_TRUE(panel.Picture1.visible);
    days.train(at(2026, 10, 5, 6, 27, 38));
    EXPECT_EQ(panel.TxtSunrise.text, "Sunrise today (05 October 2026) was at 06:27:28");
    EXPECT_EQ(panel.TxtSunriseTom.text, "Sunrise tomorrow (06 October 2026) will be at 06:26:06");
    days.world.state().settings.Latitude = "999";
    days.train(at(2026, 10, 5, 6, 27, 48));
    EXPECT_EQ(panel.TxtSunrise.text, "Can't calculate Sunrise as no location entered");
    EXPECT_FALSE(panel.Picture1.visible);
}

struct NoLocation {
    const char* name;
    const char *latitude, *longitude;
};

const NoLocation no_locations[] = {
    {"nothing entered", "999", "999"},
    {"a latitude alone", "-33.8571", "999"},
    {"a longitude alone", "999.000000", "151.2149"},
    {"empty texts", "", ""},
    {"words", "south", "east"},
    {"a latitude beyond the pole", "90.000001", "0"},
};

TEST_F(SunTexts, WithoutALocationTheTwoBoxesSaySoAndNothingElseIsLeftOver) {
    for (const NoLocation& c : no_locations) {
        SCOPED_TRACE(c.name);
        sydney();
        refresh(at(2026, 10, 5, 12));
        place(c.latitude, c.longitude, hours{11});
        refresh(at(2026, 10, 5, 12));
        EXPECT_EQ(panel.TxtSunrise.text, "Can't calculate Sunrise as no location entered");
        EXPECT_EQ(panel.TxtSunset.text, "Can't calculate Sunset as no location entered");
        EXPECT_EQ(sun.websunrise, panel.TxtSunrise.text);
        EXPECT_EQ(sun.websunset, panel.TxtSunset.text);
        for (const Box* box : {&panel.TxtSunriseTom, &panel.TxtSunsetTom, &panel.txtTwiStart, &panel.txtTwiEnd,
                               &panel.txtSolarNoon, &panel.txtDayLength, &panel.txtVisLight})
            EXPECT_EQ(box->text, "");
        EXPECT_EQ(panel.TxtSunrise.balloon, "");
        for (const std::string* text :
             {&sun.twebsunrise, &sun.twebsunset, &sun.webtwstart, &sun.webtwend, &sun.websolarnoon, &sun.numwebsunrise,
              &sun.numwebsunset, &sun.numtwebsunrise, &sun.numtwebsunset, &sun.nwebtwstart, &sun.nwebtwend,
              &sun.webdaylength, &sun.webvislight, &sun.risewasis, &sun.tsetwasis})
            EXPECT_EQ(*text, "");
    }
}

}  // namespace
}  // namespace nimbry
