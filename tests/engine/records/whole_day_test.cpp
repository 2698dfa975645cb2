#include <gtest/gtest.h>

#include "tests/engine/records/weather_days.h"

namespace nimbry {
namespace {

using test::at;
using test::WeatherDays;

StationReadings weather(double outdoor, int humidity, double indoor, int hpa, double gust, int bearing, double average,
                        int rate, int counter) {
    StationReadings readings;
    readings.temperature.outdoor = outdoor;
    readings.temperature.indoor = indoor;
    readings.humidity.outdoor = humidity;
    readings.barometer.hpa = hpa;
    readings.wind.gust_ms = gust;
    readings.wind.gust_direction = bearing;
    readings.wind.average_ms = average;
    readings.rain.rate_mm = rate;
    readings.rain.total_mm = counter;
    return readings;
}

// A weather day from 9.00am to 9.00am. Dew points, chills and the one heat index (25.6 C, 78.1 F) were worked out apart
// from the program.
void live_through(WeatherDays& days) {
    days.start();
    days.train(at(10, 4, 9, 10));                                                            // primes
    days.train(at(10, 4, 9, 20), weather(12.3, 54, 21.5, 1013, 4.2, 225, 3.1, 0, 123));      // dew 3.3, chill 11.2
    days.train(at(10, 4, 13, 40), weather(25.4, 40, 23.0, 1009, 9.0, 350, 5.0, 0, 123));     // dew 10.8, chill 25.4
    days.train(at(10, 4, 18, 15), weather(15.0, 96, 22.0, 1004, 17.5, 10, 8.0, 12, 130));    // dew 14.4, chill 13.2
    days.train(at(10, 5, 3, 30), weather(-3.5, 88, 17.9, 1016, 1.0, 90, 0.8, 0, 135));       // dew -5.2, chill -4.2
    days.train(at(10, 5, 8, 59, 55), weather(2.0, 70, 19.0, 1021, 17.5, 20, 6.0, 12, 136));  // dew -2.9, chill -2.9
}

// Base units, whatever is displayed; of the equal gusts the later, of the equal rain rates the first.
const std::vector<std::string> finished_day{"05 Oct 2026 08:58:55",
                                            "25.4",
                                            "13:40",
                                            "-3.5",
                                            "03:30",
                                            "96",
                                            "18:15",
                                            "40",
                                            "13:40",
                                            "12",
                                            "18:15",
                                            "1021",
                                            "08:59",
                                            "1004",
                                            "18:15",
                                            "17.5",
                                            "08:59",
                                            "20\xB0",
                                            "13",
                                            "136",
                                            "14.4",
                                            "18:15",
                                            "-5.2",
                                            "03:30",
                                            "23",
                                            "13:40",
                                            "17.9",
                                            "03:30",
                                            "-4.2",
                                            "03:30",
                                            "25.6",
                                            "13:40"};

TEST(WholeDay, InMetricUnits) {
    WeatherDays days(at(10, 4, 9, 10));
    live_through(days);
    EXPECT_EQ(days.world.lines("nimbrYDay.log"), finished_day);
    ASSERT_EQ(days.rows().size(), 1U);
    EXPECT_EQ(
        days.rows()[0],
        "5,Oct,+25.4,13:40,-3.5,03:30,96,18:15,40,13:40,+14.4,18:15,-5.2,03:30,+23,13:40,+17.9,03:30,-4.2,03:30,+25.6,"
        "13:40,12,18:15,1021,08:59,1004,18:15,63,08:59,20,13,0,13");
    const MainPanel& panel = days.world.panel();
    EXPECT_EQ(panel.TxtYTempMax.text, "+25.4 \260C at 13:40");
    EXPECT_EQ(panel.TxtYGustMax.text, " 63 km/h, 20\xB0 at 08:59");
    EXPECT_EQ(panel.TxtYRainMax.text, " 12 mm/hour at 18:15");
    EXPECT_EQ(panel.TxtRainYest.text, " 13 mm");
    EXPECT_EQ(days.world.state().additional.txtAmtLastRain.text, " 13 mm");
}

TEST(WholeDay, InUsUnits) {
    WeatherDays days(at(10, 4, 9, 10), test::us_units);
    live_through(days);
    EXPECT_EQ(days.world.lines("nimbrYDay.log"), finished_day);
    ASSERT_EQ(days.rows().size(), 1U);
    EXPECT_EQ(
        days.rows()[0],
        "5,Oct,+77.7,13:40,+25.7,03:30,96,18:15,40,13:40,+57.9,18:15,+22.6,03:30,+73.4,13:40,+64.2,03:30,+24.4,03:30,"
        "+78.1,13:40,0.47,18:15,30.15,08:59,29.65,18:15,39.1,08:59,20,0.51,0,0.51");
    const MainPanel& panel = days.world.panel();
    EXPECT_EQ(panel.TxtYTempMin.text, "+25.7 \260F at 03:30");
    EXPECT_EQ(panel.TxtYBarMax.text, " 30.15 In.Hg at 08:59");
    EXPECT_EQ(panel.TxtYGustMax.text, " 39.1 MPH, 20\xB0 at 08:59");
    EXPECT_EQ(panel.TxtRainYest.text, " 0.51 In.");
    EXPECT_EQ(days.world.state().additional.txtYMaxHI.text, "+78.1 \260F at 13:40");
    EXPECT_EQ(days.world.state().additional.txtAmtLastRain.text, " 0.51 In.");
}

TEST(WholeDay, ItsSummaryInUsUnits) {
    WeatherDays days(at(10, 4, 9, 10), test::us_units);
    live_through(days);
    const std::string f = " \260F";
    EXPECT_EQ(days.world.files.contents("NBYSummary.txt"),
              "Nimbry monthly summary for the current month\r\n"
              "------------------------------------------------------------\r\n"
              "\r\n"
              "There are 1 entries in the selected almanac file\r\n"
              "covering the period 04 October to 05 October.\r\n"
              "(Entries are for the 24 hours ending at 9.00 am on the indicated dates)\r\n"
              "\r\n"
              "Maximums and minimums\r\n"
              "Maximum temperature: +77.7" +
                  f +
                  " at 13:40:00 on 04 October\r\n"
                  "Minimum temperature: +25.7" +
                  f +
                  " at 03:30:00 on 05 October\r\n"
                  "Maximum humidity: 96 % at 18:15:00 on 04 October\r\n"
                  "Minimum humidity: 40 % at 13:40:00 on 04 October\r\n"
                  "Maximum dew point: +57.9" +
                  f +
                  " at 18:15:00 on 04 October\r\n"
                  "Minimum dew point: +22.6" +
                  f +
                  " at 03:30:00 on 05 October\r\n"
                  "Minimum wind chill: +24.4" +
                  f +
                  " at 03:30:00 on 05 October\r\n"
                  "Maximum heat index: +78.1" +
                  f +
                  " at 13:40:00 on 04 October\r\n"
                  "Maximum barometric pressure: 30.15 In.Hg at 08:59:00 on 05 October\r\n"
                  "Minimum barometric pressure: 29.65 In.Hg at 18:15:00 on 04 October\r\n"
                  "Maximum wind gust: 39.1 MPH, 20\xB0 at 08:59:00 on 05 October\r\n"
                  "Maximum indoor temperature: +73.4" +
                  f +
                  " at 13:40:00 on 04 October\r\n"
                  "Minimum indoor temperature: +64.2" +
                  f +
                  " at 03:30:00 on 05 October\r\n"
                  "\r\n"
                  "Averages\r\n"
                  "Average maximum temperature: +77.7" +
                  f +
                  "\r\n"
                  "Average minimum temperature: +25.7" +
                  f +
                  "\r\n"
                  "Average temperature: +51.7" +
                  f +
                  "\r\n"
                  "Average maximum humidity: 96 %\r\n"
                  "Average minimum humidity: 40 %\r\n"
                  "Average humidity: 68 %\r\n"
                  "Average maximum dew point: +57.9" +
                  f +
                  "\r\n"
                  "Average minimum dew point: +22.6" +
                  f +
                  "\r\n"
                  "Average dew point: +40.2" +
                  f +
                  "\r\n"
                  "Average minimum wind chill: +24.4" +
                  f +
                  "\r\n"
                  "Average maximum heat index: +78.1" +
                  f +
                  "\r\n"
                  "Average maximum barometric pressure: 30.2 In.Hg\r\n"
                  "Average minimum barometric pressure: 29.6 In.Hg\r\n"
                  "Average barometric pressure: 29.9 In.Hg\r\n"
                  "Average maximum indoor temperature: +73.4" +
                  f +
                  "\r\n"
                  "Average minimum indoor temperature: +64.2" +
                  f +
                  "\r\n"
                  "Average indoor temperature: +68.8" +
                  f +
                  "\r\n"
                  "Average of daily peak wind gusts: 39.1 MPH\r\n"
                  "Average of daily peak wind gust direction: 20\xB0\r\n"
                  "\r\n"
                  "Rainfall summary:\r\n"
                  "Total rainfall for 04 October to 05 October: 0.51 In.\r\n"
                  "Number of rainfall days: 1\r\n"
                  "Maximum peak rainfall rate: 0.47 In./hour at 18:15:00 on 04 October\r\n"
                  "Days Since Rain: 0\r\n"
                  "Last rainfall amount: 0.51 In.\r\n");
}

}  // namespace
}  // namespace nimbry
