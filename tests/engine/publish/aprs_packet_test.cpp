#include "engine/publish/aprs_packet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/sun/location_dialog.h"
#include "tests/engine/reports/tag_states.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

class AprsPacket : public testing::Test {
protected:
    [[nodiscard]] std::string weather() const { return weather_string(world.state); }
    void outdoor(const char* celsius) { world.state.readings.rawostemp = celsius; }
    KnownState world;
};

TEST_F(AprsPacket, TheWeatherInItsOrder) {
    EXPECT_EQ(weather(), "098/007g012t046r008P028b10130h54NBY");
}

TEST_F(AprsPacket, WithoutSoundWindItIsDotsAndTheLastDirection) {
    world.station.wind.fault_bits = 4;
    world.train(world.station);
    EXPECT_EQ(weather().substr(0, 11), "098/007g012") << "the first fault is not believed";
    world.train(world.station);
    EXPECT_EQ(weather().substr(0, 12), "098/...g...t");
    world.station.wind.fault_bits = 0;
    world.train(world.station);
    EXPECT_EQ(weather().substr(0, 11), "098/007g012");
}

TEST_F(AprsPacket, WhatFailsIsLeftOutWithItsLetterAndTheRestClosesUp) {
    world.fail_every_sensor();
    EXPECT_EQ(weather(), "098/...g...r008P028NBY");
}

TEST(AprsPacketBeforeAnyData, HasZerosAndDots) {
    UnsetState world;
    EXPECT_EQ(weather_string(world.state), "000/...g...r000P000NBY");
}

TEST_F(AprsPacket, SpeedsAreCutToWholeMiles) {
    world.state.readings.rawwindas = "0.4";  // 0.89
    world.state.readings.rawwindgs = "45";   // 100.66
    EXPECT_EQ(weather().substr(0, 11), "098/000g100");
}

TEST_F(AprsPacket, TheTemperatureGoesDownToWholeDegreesAndBelowZeroHasTwoDigitsAtMost) {
    struct Case {
        const char* celsius;
        const char* field;
    };
    for (const Case& row : std::vector<Case>{
             {"+00.0", "t032"},  // 32
             {"+38.0", "t100"},  // 100.4
             {"+02.2", "t036"},  // 35.96, rounded to 36 before it is cut
             {"-17.8", "t000"},  // -0.04, rounded to 0
             {"-18.0", "t-1"},   // -0.4
             {"-20.5", "t-5"},   // -4.9
             {"-26.1", "t-15"},  // -15
             {"-73.4", "t-01"},  // -100.1 goes down to -101
         }) {
        outdoor(row.celsius);
        const std::string text = weather();
        EXPECT_EQ(text.substr(11, text.find('r') - 11), row.field) << row.celsius;
    }
}

TEST_F(AprsPacket, RainOfTheLastHourIsNeverCutAndRainSinceMidnightIs) {
    world.state.rain.LastHourSum = world.state.rain.RainSinceMidnight = 254;  // ten inches
    EXPECT_NE(weather().find("r1000P100b"), std::string::npos) << weather();
    world.state.rain.RainSinceMidnight = -3;
    EXPECT_NE(weather().find("P000b"), std::string::npos) << weather();
}

TEST_F(AprsPacket, ThreeDigitsOfPressureGetAZeroInFront) {
    world.station.barometer.hpa = 998;
    world.train(world.station);
    EXPECT_NE(weather().find("b09980h54NBY"), std::string::npos) << weather();
}

TEST_F(AprsPacket, HumidityHasTwoDigitsOrIsAHundred) {
    world.station.humidity.outdoor = 5;
    world.train(world.station);
    EXPECT_TRUE(weather().ends_with("h05NBY")) << weather();
    world.station.humidity.outdoor = 97;
    world.station.humidity.outdoor_over_range = true;
    world.train(world.station);
    EXPECT_TRUE(weather().ends_with("h100NBY")) << weather();
}

struct PositionCase {
    const char *latitude, *longitude;
    const char *aprs_latitude, *aprs_longitude;
};

TEST_F(AprsPacket, ThePositionIsDegreesAndMinutesNeverCarried) {
    for (const PositionCase& row : std::vector<PositionCase>{
             {"-33.8568", "151.2093", "3351.41S", "15112.56E"},
             {"0", "0", "0000.00N", "00000.00E"},
             {"59.999999", "-122.999999", "5960.00N", "12260.00W"},
             {"999", "151.2", "", ""},
             {"-33.8", "999", "", ""},
             {"here", "there", "", ""},
             {"1E30", "1", "99900.00N", "00100.00E"},
         }) {
        world.state.settings.Latitude = row.latitude;
        world.state.settings.Longitude = row.longitude;
        aprsposition(world.state);
        EXPECT_EQ(world.state.publish.aprs_latitude, row.aprs_latitude) << row.latitude;
        EXPECT_EQ(world.state.publish.aprs_longitude, row.aprs_longitude) << row.longitude;
    }
}

TEST_F(AprsPacket, ThePositionIsMadeInEveryCycle) {
    EXPECT_EQ(world.state.publish.aprs_latitude, "3351.41S");
    world.state.settings.Longitude = "999";
    world.train(world.station);
    EXPECT_EQ(world.state.publish.aprs_latitude, "");
}

TEST_F(AprsPacket, ThePositionFollowsTheLocationDialogAtOnce) {
    LocationDialog dialog = location_dialog("10.5", "-20.25");
    EXPECT_FALSE(accept_location(world.copy, dialog));
    EXPECT_EQ(world.state.publish.aprs_latitude, "1030.00N");
    EXPECT_EQ(world.state.publish.aprs_longitude, "02015.00W");
    forget_location(world.copy);
    EXPECT_EQ(world.state.publish.aprs_latitude, "");
}

TEST(AprsPosition, IsThereFromTheStart) {
    StartedWorld world("Latitude=-33.8568\r\nLongitude=151.2093\r\n");
    EXPECT_EQ(world.state().publish.aprs_latitude, "3351.41S");
}

}  // namespace
}  // namespace nimbry::test
