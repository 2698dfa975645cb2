#include <gtest/gtest.h>

#include "engine/records/almanac_file.h"
#include "engine/records/extremes_display.h"
#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::WeatherDays;

// A row whose only field of interest is the 32nd, the day's rain.
std::string row_of(const std::string& rain) {
    return "4,Oct" + std::string(30, ',') + rain + ",0,0\r\n";
}

TEST(AlmanacRain, CountsTheRowsWithRainAndAddsThemUp) {
    const AlmanacRain rain = almanac_rain("head\r\n" + row_of("0") + row_of("2.5") + row_of("-3") + row_of("0.01"));
    EXPECT_EQ(rain.days, 2);
    EXPECT_DOUBLE_EQ(rain.total, 2.51);
}

TEST(AlmanacRain, ADamagedRowCountsForNothing) {
    EXPECT_EQ(almanac_rain("4,Oct,+1\r\n" + row_of("rubbish") + row_of("1")).days, 1);
    EXPECT_EQ(almanac_rain("").days, 0);
}

TEST(AlmanacRain, AnAmountThatNoDayCanHaveCountsForNothing) {
    const AlmanacRain rain = almanac_rain(row_of("1e308") + row_of("1e308") + row_of("1000000001") + row_of("2"));
    EXPECT_EQ(rain.days, 1);
    EXPECT_DOUBLE_EQ(rain.total, 2);
}

TEST(MonthlyRain, OfADamagedAlmanacLetsTheCopyGoOn) {
    WeatherDays days(at(10, 5, 14, 0));
    days.world.files.put("nbextreme.log", "head\r\n" + row_of("1e308") + row_of("1e308"));
    days.start();
    EXPECT_FALSE(days.world.engine.gone());
    EXPECT_EQ(days.world.state().additional.txtMnthTotal.text, "0 mm");
}

TEST(MonthlyRain, IsShownFromTheStartOn) {
    WeatherDays none(at(10, 5, 14, 0), "fRainin=True\r\n");
    none.start();
    EXPECT_EQ(none.world.state().additional.txtRainDays.text, "0");
    EXPECT_EQ(none.world.state().additional.txtMnthTotal.text, "0 In.");
    WeatherDays some(at(10, 5, 14, 0));
    some.world.files.put("nbextreme.log", "head\r\n" + row_of("2.256") + row_of("1"));
    some.start();
    EXPECT_EQ(some.world.state().additional.txtRainDays.text, "2");
    EXPECT_EQ(some.world.state().additional.txtMnthTotal.text, "3.26 mm");
}

TEST(MonthlyRain, GrowsWithEachAlmanacRowAndFallsWithTheArchive) {
    WeatherDays days(at(10, 30, 23, 59, 30), "tmidnight=True\r\ntnineam=False\r\n");
    days.start();
    days.trains(at(10, 30, 23, 59, 30), at(10, 30, 23, 59, 40));
    StationReadings wet;
    wet.rain.total_mm = 126;
    days.train(at(10, 30, 23, 59, 50), wet);
    EXPECT_EQ(days.world.state().additional.txtRainDays.text, "1");
    EXPECT_EQ(days.world.state().additional.txtMnthTotal.text, "3 mm");
    wet.rain.total_mm = 127;
    days.trains(at(10, 31, 23, 59, 40), at(10, 31, 23, 59, 50), wet);
    ASSERT_TRUE(days.world.files.exists("alOct26.csv"));
    EXPECT_EQ(days.world.state().additional.txtRainDays.text, "0");
    EXPECT_EQ(days.world.state().additional.txtMnthTotal.text, "0 mm");
}

}  // namespace
}  // namespace nimbry
