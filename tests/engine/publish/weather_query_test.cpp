#include "engine/publish/weather_query.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

class WeatherItems : public testing::Test {
protected:
    [[nodiscard]] std::string items() { return weather_items(world.state, world.clock.utc_time()); }
    /// The value of an item, or "(none)".
    std::string item(const std::string& name) {
        const std::string all = items();
        const std::size_t at = all.find("&" + name + "=");
        if (at == std::string::npos) return "(none)";
        const std::size_t from = at + name.size() + 2;
        return all.substr(from, all.find('&', from) - from);
    }
    /// The rain item of the next report, with so many millimetres more.
    std::string after_rain(float mm) {
        world.state.rain.rainnow += mm;
        return item("rainin");
    }
    KnownState world;
};

TEST_F(WeatherItems, StandInTheirOrderAsTheyAre) {
    world.state.readings.MaxGustMph = 9;
    // 3.4 m/s = 7.6 mph; 8.1 C = 46.58 F; 1013 hPa * 0.029528750668088 = 29.91; -0.6 C = 30.92 F.
    EXPECT_EQ(items(),
              "&dateutc=2026-10-21 03:05:07&winddir=098&windspeedmph=007&windgustmph=009&tempf=46.6&rainin=0.00"
              "&baromin=29.91&dewptf=30.9&humidity=54&weather=&clouds=&softwaretype=Nimbry 2.02");
}

TEST_F(WeatherItems, WithoutWindThereIsNoDirection) {
    world.state.readings.rawwindas = "0";
    EXPECT_EQ(item("winddir"), "(none)");
    EXPECT_EQ(item("windspeedmph"), "000");
    world.state.readings.rawwindas = "0.3";
    EXPECT_EQ(item("winddir"), "098") << "0.67 mph is wind";
    EXPECT_EQ(item("windspeedmph"), "000");
}

struct GustCase {
    double mph;
    const char* text;
};

TEST_F(WeatherItems, TheGustIsThePeakSinceTheLastReportAndHasThreeCharactersAtLeast) {
    for (const GustCase& c :
         std::vector<GustCase>{{9, "009"}, {12, "012"}, {9.5, "9.5"}, {12.5, "12.5"}, {100, "100"}}) {
        world.state.readings.MaxGustMph = c.mph;
        EXPECT_EQ(item("windgustmph"), c.text);
        EXPECT_EQ(item("windgustmph"), "000") << "the peak begins anew";
    }
}

TEST_F(WeatherItems, OfSensorsThatFailAreEmptyOrLeftOut) {
    world.state.readings.MaxGustMph = 9;
    world.fail_every_sensor();
    EXPECT_EQ(items(),
              "&dateutc=2026-10-21 03:05:07&windspeedmph=0&windgustmph=0&tempf=&rainin=0.00"
              "&weather=&clouds=&softwaretype=Nimbry 2.02");
}

TEST_F(WeatherItems, TheDewPointKeepsItsLastValueWithoutATemperature) {
    world.state.sensors.peoterr.failed = true;
    EXPECT_EQ(item("tempf"), "");
    EXPECT_EQ(item("dewptf"), "30.9");
}

TEST_F(WeatherItems, TemperaturesBelowZeroHaveTheirSignAndNoOther) {
    world.state.readings.rawostemp = "-18.0";  // -0.4 F
    EXPECT_EQ(item("tempf"), "-0.4");
}

TEST_F(WeatherItems, HumidityAtTheTopOfItsRangeIsAHundred) {
    world.station.humidity.outdoor = 97;
    world.train(world.station);
    EXPECT_EQ(item("humidity"), "97");
    world.station.humidity.outdoor_over_range = true;
    world.train(world.station);
    EXPECT_EQ(item("humidity"), "100");
}

TEST_F(WeatherItems, RainIsThatOfTheReportsOfTheLastHour) {
    world.state.publish.NimbryFTPSetup.txtWUMins = "20";  // three slots
    EXPECT_EQ(after_rain(50), "0.00") << "the first report has nothing to compare with";
    EXPECT_EQ(after_rain(0), "0");
    EXPECT_EQ(after_rain(5), "0.2");    // 5 mm = 0.197
    EXPECT_EQ(after_rain(10), "0.59");  // 15 mm = 0.591
    EXPECT_EQ(after_rain(1), "0.63");   // 0, 5, 10 and the oldest is replaced: 16 mm = 0.630
    EXPECT_EQ(after_rain(0), "0.43");   // 1, 0, 10
    EXPECT_EQ(after_rain(0), "0.04");   // 1 mm
    EXPECT_EQ(after_rain(0), "0");
}

TEST_F(WeatherItems, ACounterThatFellCountsAsItComes) {
    EXPECT_EQ(after_rain(0), "0.00");
    EXPECT_EQ(after_rain(-100), "-3.94");
}

TEST_F(WeatherItems, AForcedReportHasNoRainAndLeavesTheRingAlone) {
    world.state.publish.FtpForced = true;
    EXPECT_EQ(after_rain(4), "");
    world.state.publish.FtpForced = false;
    EXPECT_EQ(after_rain(0), "0.00") << "still the first";
    world.state.publish.FtpForced = true;
    EXPECT_EQ(after_rain(25.4F), "");
    world.state.publish.FtpForced = false;
    EXPECT_EQ(after_rain(0), "0.98");  // 25 whole mm
}

TEST_F(WeatherItems, SlotsLeftFromAShorterIntervalDoNotCount) {
    world.state.publish.NimbryFTPSetup.txtWUMins = "5";  // twelve slots
    EXPECT_EQ(after_rain(0), "0.00");
    for (int n = 0; n < 5; ++n) after_rain(10);
    EXPECT_EQ(after_rain(0), "1.97");                     // 50 mm
    world.state.publish.NimbryFTPSetup.txtWUMins = "30";  // two slots: the first two of the ten each
    EXPECT_EQ(after_rain(0), "0.39");                     // the first is replaced
}

TEST_F(WeatherItems, AnIntervalBeyondAnHourHasOneSlotAndOneBelowFourMinutesFifteen) {
    world.state.publish.NimbryFTPSetup.txtWUMins = "90";
    EXPECT_EQ(after_rain(0), "0.00");
    EXPECT_EQ(after_rain(10), "0.39");
    EXPECT_EQ(after_rain(0), "0");
    world.state.publish.interval_rain = {};
    world.state.publish.NimbryFTPSetup.txtWUMins = "1";
    EXPECT_EQ(after_rain(0), "0.00");
    EXPECT_EQ(after_rain(10), "0.39");
    for (int n = 0; n < 14; ++n) EXPECT_EQ(after_rain(0), "0.39");
    EXPECT_EQ(after_rain(0), "0");
}

TEST(ReportInterval, IsTheNumberItsTextBeginsWithAndAtLeastOne) {
    InternetDialog settings;
    for (const auto& [text, minutes] : std::vector<std::pair<const char*, int>>{
             {"10", 10}, {"5 min", 5}, {"2", 2}, {"0", 1}, {"-3", 1}, {"often", 1}, {"", 1}}) {
        settings.txtWUMins = text;
        EXPECT_EQ(report_interval(settings), minutes) << text;
    }
}

TEST(WeatherRequest, IsEndpointUserPasswordAndItems) {
    InternetDialog settings;
    settings.WUuser = "KTEST1";
    settings.WUpass = "se#c et";
    settings.HWuser = "TEST2";
    settings.HWpass = "p";
    EXPECT_EQ(
        weather_request(weather_underground(), settings, "&x=1"),
        "http://weatherstation.wunderground.com/weatherstation/updateweatherstation.php?action=updateraw&ID=KTEST1"
        "&PASSWORD=se#c et&x=1");
    EXPECT_EQ(weather_request(hamweather(), settings, "&x=1"),
              "http://www.hamweather.net/weatherstations/vwsupdate.php?ID=TEST2&PASSWORD=p&x=1");
}

struct HostCase {
    const char *setting, *request, *host;
};

TEST(WeatherRequest, GoesToAHostOfTheUsersOwn) {
    for (const HostCase& c :
         std::vector<HostCase>{{"127.0.0.1:8080", "http://127.0.0.1:8080/weatherstations/", "127.0.0.1"},
                               {" https://my.net/ ", "https://my.net/weatherstations/", "my.net"},
                               {"HTTP://my.net:80", "http://my.net:80/weatherstations/", "my.net"},
                               {"https://[::1]:8443", "https://[::1]:8443/weatherstations/", "::1"}}) {
        InternetDialog settings;
        settings.HWhost = c.setting;
        EXPECT_TRUE(weather_request(hamweather(), settings, "").starts_with(c.request)) << c.setting;
        EXPECT_EQ(host_of(hamweather(), settings), c.host);
        EXPECT_EQ(host_of(weather_underground(), settings), "weatherstation.wunderground.com");
    }
}

}  // namespace
}  // namespace nimbry::test
