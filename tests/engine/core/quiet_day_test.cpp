#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "engine/derived/dates.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

/// An hour of a quiet summer day: what the station sends, and what the panel shows of it.
struct Hour {
    struct Sent {
        double celsius;
        int humidity, hpa, trend, outlook;
        double gust_ms, average_ms;
    } sent;
    const char *temperature, *heat_index, *dew_point, *wet_bulb, *cloud_base, *wind_chill, *gust, *average;
};

// Worked out in Python from the formulas. The humidity is shown as it is sent.
constexpr Hour day[] = {
    {{11.2, 88, 1019, 2, 1, 0.9, 0.0},
     "+11.2",
     "n.a.",
     "+9.3",
     "+10.2",
     "237 meters. (778 feet)",
     "+11.2",
     "3.2",
     "Calm"},
    {{10.4, 91, 1019, 2, 1, 0.4, 0.0}, "+10.4", "n.a.", "+9", "+9.7", "175 meters. (574 feet)", "+10.4", "1.4", "Calm"},
    {{9.7, 94, 1019, 2, 1, 0.0, 0.0}, "+9.7", "n.a.", "+8.8", "+9.2", "112 meters. (368 feet)", "+9.7", "Calm", "Calm"},
    {{9.1, 96, 1020, 1, 1, 0.0, 0.0}, "+9.1", "n.a.", "+8.5", "+8.8", "74 meters. (245 feet)", "+9.1", "Calm", "Calm"},
    {{8.6, 97, 1020, 1, 1, 0.0, 0.0}, "+8.6", "n.a.", "+8.2", "+8.4", "50 meters. (164 feet)", "+8.6", "Calm", "Calm"},
    {{8.9, 97, 1021, 1, 1, 0.6, 0.1}, "+8.9", "n.a.", "+8.4", "+8.6", "62 meters. (205 feet)", "+8.9", "2.2", "0.4"},
    {{10.5, 93, 1021, 1, 1, 1.1, 0.4}, "+10.5", "n.a.", "+9.4", "+9.9", "137 meters. (450 feet)", "+10.5", "4", "1.4"},
    {{12.9, 85, 1022, 1, 1, 1.8, 0.9},
     "+12.9",
     "n.a.",
     "+10.4",
     "+11.5",
     "312 meters. (1025 feet)",
     "+12.9",
     "6.5",
     "3.2"},
    {{15.4, 76, 1022, 2, 1, 2.4, 1.3},
     "+15.4",
     "n.a.",
     "+11.2",
     "+13",
     "525 meters. (1722 feet)",
     "+15.4",
     "8.6",
     "4.7"},
    {{17.6, 67, 1022, 2, 1, 2.9, 1.6},
     "+17.6",
     "n.a.",
     "+11.4",
     "+14.1",
     "775 meters. (2542 feet)",
     "+17.6",
     "10.4",
     "5.8"},
    {{19.3, 60, 1022, 2, 1, 3.3, 1.9},
     "+19.3",
     "n.a.",
     "+11.3",
     "+14.8",
     "1000 meters. (3280 feet)",
     "+19.3",
     "11.9",
     "6.8"},
    {{20.8, 54, 1021, 4, 4, 3.8, 2.2},
     "+20.8",
     "+24.4",
     "+11.1",
     "+15.3",
     "1212 meters. (3977 feet)",
     "+20.8",
     "13.7",
     "7.9"},
    {{22.1, 49, 1021, 4, 4, 4.2, 2.4},
     "+22.1",
     "+24.4",
     "+10.9",
     "+15.8",
     "1400 meters. (4592 feet)",
     "+22.1",
     "15.1",
     "8.6"},
    {{23.0, 45, 1020, 4, 4, 4.5, 2.6},
     "+23",
     "+24.6",
     "+10.4",
     "+16",
     "1575 meters. (5166 feet)",
     "+23",
     "16.2",
     "9.4"},
    {{23.6, 43, 1020, 4, 4, 4.7, 2.8},
     "+23.6",
     "+24.7",
     "+10.3",
     "+16.2",
     "1662 meters. (5453 feet)",
     "+23.6",
     "16.9",
     "10.1"},
    {{23.8, 42, 1019, 4, 4, 4.9, 2.7},
     "+23.8",
     "+24.8",
     "+10.1",
     "+16.3",
     "1712 meters. (5617 feet)",
     "+23.8",
     "17.6",
     "9.7"},
    {{23.4, 44, 1019, 4, 4, 4.4, 2.5},
     "+23.4",
     "+24.7",
     "+10.4",
     "+16.2",
     "1624 meters. (5329 feet)",
     "+23.4",
     "15.8",
     "9"},
    {{22.6, 47, 1018, 2, 4, 3.9, 2.1},
     "+22.6",
     "+24.5",
     "+10.7",
     "+15.9",
     "1487 meters. (4879 feet)",
     "+22.6",
     "14",
     "7.6"},
    {{21.3, 52, 1018, 2, 2, 3.2, 1.7},
     "+21.3",
     "+24.3",
     "+11",
     "+15.5",
     "1287 meters. (4223 feet)",
     "+21.3",
     "11.5",
     "6.1"},
    {{19.9, 58, 1018, 2, 2, 2.6, 1.4},
     "+19.9",
     "n.a.",
     "+11.4",
     "+15.1",
     "1062 meters. (3484 feet)",
     "+19.9",
     "9.4",
     "5"},
    {{18.0, 66, 1019, 1, 2, 2.0, 1.0}, "+18", "n.a.", "+11.5", "+14.3", "812 meters. (2665 feet)", "+18", "7.2", "3.6"},
    {{16.2, 73, 1019, 1, 1, 1.5, 0.7},
     "+16.2",
     "n.a.",
     "+11.4",
     "+13.5",
     "599 meters. (1967 feet)",
     "+16.2",
     "5.4",
     "2.5"},
    {{14.6, 79, 1020, 1, 1, 1.2, 0.4},
     "+14.6",
     "n.a.",
     "+11",
     "+12.6",
     "449 meters. (1475 feet)",
     "+14.6",
     "4.3",
     "1.4"},
    {{13.1, 84, 1020, 2, 1, 1.0, 0.2},
     "+13.1",
     "n.a.",
     "+10.5",
     "+11.7",
     "324 meters. (1065 feet)",
     "+13.1",
     "3.6",
     "0.7"},
};

std::string celsius(const char* number) {
    return std::string(number) + " \260C";
}
std::string speed(const char* number) {
    return number == std::string("Calm") ? "Calm" : " " + std::string(number) + " km/h";
}
std::string trend_word(int digit) {
    return digit == 1 ? "Rising" : digit == 2 ? "Steady" : "Falling";
}
std::string forecast_word(int digit) {
    return digit == 1 ? "Sunny" : digit == 2 ? "Cloudy" : "Partly Cloudy";
}

TEST(QuietDay, IsShownHourByHourAndNothingElseHappens) {
    World world(*civil_time({2026, 6, 5, 0, 0, 40}));
    world.files.put("Nimbry.ini", main_section("tmidnight=True\r\n"));
    world.start();
    world.send_train();
    world.run_for(50s);
    const WeatherState& state = world.state();
    const MainPanel& panel = world.panel();
    int hours = 0;
    for (const Hour& hour : day) {
        SCOPED_TRACE(hours++);
        StationReadings station;
        station.temperature.outdoor = hour.sent.celsius;
        station.humidity.outdoor = hour.sent.humidity;
        station.barometer = {hour.sent.hpa, hour.sent.trend, hour.sent.outlook};
        station.wind.gust_ms = hour.sent.gust_ms;
        station.wind.average_ms = hour.sent.average_ms;
        // Two trains a minute: one of them in the seconds that the last hour's rain is counted in.
        for (int half_minute = 0; half_minute < (hours < 24 ? 120 : 110); ++half_minute) {
            world.send_train(station);
            world.run_for(29900ms);
        }
        EXPECT_EQ(panel.Text2[0].text, celsius(hour.temperature));
        EXPECT_EQ(panel.Text2[2].text, std::to_string(hour.sent.humidity) + " %");
        EXPECT_EQ(panel.Text2[4].text, " " + std::to_string(hour.sent.hpa) + " mB");
        EXPECT_EQ(panel.TxtBarTrend.text, trend_word(hour.sent.trend));
        EXPECT_EQ(panel.TxtForecast.text, forecast_word(hour.sent.outlook));
        EXPECT_EQ(panel.TxtHeatInd.text, hour.heat_index == std::string("n.a.") ? "n.a." : celsius(hour.heat_index));
        EXPECT_EQ(panel.Text2[1].text, celsius(hour.dew_point));
        EXPECT_EQ(state.additional.txtWetBulb.text, celsius(hour.wet_bulb));
        EXPECT_EQ(state.additional.txtCloudBase.text, hour.cloud_base);
        EXPECT_EQ(panel.TxtWindChill.text, celsius(hour.wind_chill));
        EXPECT_EQ(panel.Text2[6].text, speed(hour.gust));
        EXPECT_EQ(panel.Text2[3].text, speed(hour.average));
        EXPECT_EQ(panel.TxtRainToday.text, " nil");
        EXPECT_EQ(panel.TxtRainLH.text, " 0 mm");
    }
    EXPECT_EQ(panel.Gauge1.maximum, 50) << "no gust beyond the scale it began with";
    EXPECT_THAT(world.notices.balloons, IsEmpty());
    EXPECT_THAT(world.notices.windows, IsEmpty());
    EXPECT_THAT(world.log(), IsEmpty());
}

}  // namespace
}  // namespace nimbry::test
