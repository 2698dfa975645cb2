#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "engine/derived/number_text.h"
#include "tests/station/played.h"

namespace nimbry::simulator {
namespace {

struct Held {
    const char* reading;
    const char* value;
    std::string expected;  ///< as the digits read
};

TEST(StationScenario, HoldsEachReadingAtItsValueInTheGroups) {
    for (const Held& held : {
             Held{"outdoor-temperature", "-4.7", "-04.7"},
             Held{"outdoor-humidity", "33", "33"},
             Held{"indoor-temperature", "-0.3", "-00.3"},
             Held{"indoor-humidity", "7", "07"},
             Held{"barometer", "987", "0987"},
             Held{"trend", "4", "4"},
             Held{"outlook", "8", "8"},
             Held{"rain-rate", "998", "998"},
             Held{"rain-total", "4321", "4321"},
             Held{"gust", "31.5", "31.5"},
             Held{"gust-direction", "360", "360"},
             Held{"wind", "12", "12.0"},
             Held{"wind-direction", "5", "005"},
             Held{"wind-chill", "-17", "17"},
             Held{"high-temperature", "41.9", "41.9"},
             Held{"low-temperature", "-31.2", "31.2"},
             Held{"high-humidity", "97", "97"},
             Held{"low-humidity", "9", "09"},
             Held{"record-gust", "49.8", "49.8"},
             Held{"record-direction", "271", "271"},
         }) {
        SCOPED_TRACE(held.reading);
        const Decoded d(train_at("at +0s set " + std::string(held.reading) + " " + held.value, 3s));
        const std::string found[] = {
            d.outdoor_text(),
            text(d.clock, digits_8f::outdoor_humidity),
            d.indoor_text(),
            text(d.clock, digits_8f::indoor_humidity),
            text(d.barometer, digits_af::barometer),
            text(d.barometer, digits_af::trend),
            text(d.barometer, digits_af::outlook),
            text(d.rain, digits_bf::rate),
            text(d.rain, digits_bf::total),
            text(d.wind, digits_cf::gust, 1),
            text(d.wind, digits_cf::gust_direction),
            text(d.wind, digits_cf::average, 1),
            text(d.wind, digits_cf::average_direction),
            text(d.wind, digits_cf::chill),
            text(d.temperature, digits_9f::outdoor_high, 1),
            text(d.temperature, digits_9f::outdoor_low, 1),
            text(d.clock, digits_8f::humidity_high),
            text(d.clock, digits_8f::humidity_low),
            text(d.wind, digits_cf::record_gust, 1),
            text(d.wind, digits_cf::record_direction),
        };
        EXPECT_EQ(found[static_cast<std::size_t>(reading_named(held.reading).value())], held.expected);
    }
}

TEST(StationScenario, SendsTheSignsOfRecordsAndChill) {
    const Decoded d(
        train_at("at +0s set low-temperature -31.2\nat +0s set high-temperature -1\nat +0s set wind-chill -17", 3s));
    EXPECT_TRUE(flag_set(d.temperature, digits_9f::outdoor_low_minus));
    EXPECT_TRUE(flag_set(d.temperature, digits_9f::outdoor_high_minus));
    EXPECT_TRUE(flag_set(d.wind, digits_cf::chill_minus));
}

TEST(StationScenario, MovesAReadingInAStraightLineAndThenHoldsIt) {
    // The line runs from 10 degrees at +0 to 20 at +100: 12.2 at +22, 20 from +100 on.
    const std::string scenario = "at +0s set outdoor-temperature 10\nat +0s set outdoor-temperature 20 over 100s";
    EXPECT_EQ(Decoded(train_at(scenario, 23s)).outdoor_text(), "+12.2");
    EXPECT_EQ(Decoded(train_at(scenario, 93s)).outdoor_text(), "+19.2");
    EXPECT_EQ(Decoded(train_at(scenario, 113s)).outdoor_text(), "+20.0");
}

TEST(StationScenario, ReleasesAReadingOrAllOfThem) {
    const std::string quiet = train_at("", 23s).empty() ? "" : Decoded(train_at("", 23s)).outdoor_text();
    const std::string held = "at +0s set outdoor-temperature -40\nat +0s set indoor-temperature -41\n";
    EXPECT_EQ(Decoded(train_at(held, 23s)).outdoor_text(), "-40.0");
    const Decoded one(train_at(held + "at +15s release outdoor-temperature", 23s));
    EXPECT_EQ(one.outdoor_text(), quiet);
    EXPECT_EQ(one.indoor_text(), "-41.0");
    const Decoded all(train_at(held + "at +15s release all", 23s));
    EXPECT_EQ(all.outdoor_text(), quiet);
    EXPECT_NE(all.indoor_text(), "-41.0");
    EXPECT_EQ(Decoded(train_at("at +0s set outdoor-temperature -40 for 15s", 23s)).outdoor_text(), quiet);
}

TEST(StationScenario, CountsTheRainThatAScenarioLetsFall) {
    // 360 mm an hour are 1 mm each ten seconds: from the hold at +2 to the train at +102, ten of them.
    const std::string rain = "at +0s set rain-total 100\nat +2s release rain-total\nat +2s set rain-rate 360";
    const Decoded d(train_at(rain, 103s));
    EXPECT_EQ(text(d.rain, digits_bf::rate), "360");
    EXPECT_EQ(text(d.rain, digits_bf::total), "0110");
}

TEST(StationScenario, RollsTheRainCounterOverAfter9999) {
    const std::string rain = "at +0s set rain-total 9999\nat +2s release rain-total\nat +2s set rain-rate 360";
    EXPECT_EQ(text(Decoded(train_at(rain, 33s)).rain, digits_bf::total), "0002");
}

TEST(StationScenario, ResetsTheRainCounterAndDatesTheReset) {
    const std::string rain = "at +0s set rain-total 77 for 1s\nat +0s set rain-rate 0\nat +60s reset rain";
    const Decoded before(train_at(rain, 53s)), after(train_at(rain, 63s));
    EXPECT_EQ(text(before.rain, digits_bf::total), "0077");
    EXPECT_EQ(text(after.rain, digits_bf::total), "0000");
    EXPECT_EQ(text(after.rain, digits_bf::reset_at.hour) + text(after.rain, digits_bf::reset_at.minute), "2359");
    EXPECT_EQ(text(after.rain, digits_bf::reset_at.day) + text(after.rain, digits_bf::reset_at.month), "31A");
    EXPECT_EQ(text(before.rain, digits_bf::reset_at.day), "01") << "thirty days before the start";
}

TEST(StationScenario, KeepsRecordsOfWhatIsHeldWithTheirMoments) {
    const std::string warm =
        "at +0s set outdoor-temperature 39.5 for 30s\nat +60s set gust 45.5 for 10s\n"
        "at +60s set gust-direction 123 for 10s";
    const Decoded d(train_at(warm, 93s));
    EXPECT_EQ(text(d.temperature, digits_9f::outdoor_high, 1), "39.5");
    EXPECT_EQ(
        text(d.temperature, digits_9f::outdoor_high_at.hour) + text(d.temperature, digits_9f::outdoor_high_at.minute),
        "2358");
    EXPECT_EQ(
        text(d.temperature, digits_9f::outdoor_high_at.day) + text(d.temperature, digits_9f::outdoor_high_at.month),
        "31A");
    EXPECT_EQ(text(d.wind, digits_cf::record_gust, 1), "45.5");
    EXPECT_EQ(text(d.wind, digits_cf::record_at.minute), "59");
}

TEST(StationScenario, ResetsTheRecordsToTheReadingsOfNow) {
    const std::string cold =
        "at +0s set outdoor-temperature 3.3\nat +0s set outdoor-humidity 55\nat +60s reset records";
    const Decoded d(train_at(cold, 63s));
    EXPECT_EQ(text(d.temperature, digits_9f::outdoor_high, 1), "03.3");
    EXPECT_EQ(text(d.temperature, digits_9f::outdoor_low, 1), "03.3");
    EXPECT_EQ(text(d.clock, digits_8f::humidity_high), "55");
    EXPECT_EQ(text(d.clock, digits_8f::humidity_low), "55");
    EXPECT_EQ(text(d.clock, digits_8f::humidity_low_at.minute), "59");
}

TEST(StationScenario, TurnsTheStationsClockWithoutStoppingTheRain) {
    EXPECT_EQ(Decoded(train_at("at +5s clock +2m", 13s)).clock_text(), "00:00:12 01/B");
    EXPECT_EQ(Decoded(train_at("at +5s clock -1h", 13s)).clock_text(), "22:58:12 31/A");
    const std::string rain =
        "at +0s set rain-total 100\nat +2s release rain-total\nat +2s set rain-rate 360\nat +50s clock -1h";
    EXPECT_EQ(text(Decoded(train_at(rain, 103s)).rain, digits_bf::total), "0110");
}

TEST(StationScenario, TrendAndForecastFollowABarometerThatIsHeld) {
    const Decoded falling(train_at("at +0s set barometer 1000\nat +10s set barometer 985 over 1m", 93s));
    EXPECT_EQ(text(falling.barometer, digits_af::trend), "4");
    EXPECT_EQ(text(falling.barometer, digits_af::outlook), "8");
    const Decoded rising(train_at("at +0s set barometer 1040", 13s));
    EXPECT_EQ(text(rising.barometer, digits_af::trend), "1");
    EXPECT_EQ(text(rising.barometer, digits_af::outlook), "1");
}

}  // namespace
}  // namespace nimbry::simulator
