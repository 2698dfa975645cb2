#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

// What a train does and a lone wind group does not, and what a fault keeps from both.

class TrainAndLoneWind : public Decoding {};

TEST_F(TrainAndLoneWind, OnlyATrainReadsTheBattery) {
    EXPECT_FALSE(panel.lblLowBattery.visible);
    station.wind.low_battery = true;
    lone();
    EXPECT_FALSE(panel.lblLowBattery.visible);
    train();
    EXPECT_TRUE(panel.lblLowBattery.visible);
    EXPECT_EQ(panel.lblLowBattery.text, "Low Battery !");
    station.wind.low_battery = false;
    lone();
    EXPECT_TRUE(panel.lblLowBattery.visible);
    train();
    EXPECT_FALSE(panel.lblLowBattery.visible);
}

TEST_F(TrainAndLoneWind, TheFirstTrainDoesNotReadTheBattery) {
    station.wind.low_battery = true;
    BareCopy fresh;
    fresh.train(station);
    EXPECT_FALSE(fresh.state.panel.lblLowBattery.visible);
    fresh.train(station);
    EXPECT_TRUE(fresh.state.panel.lblLowBattery.visible);
}

TEST_F(TrainAndLoneWind, TheBatteryIsReadWithAFaultyWindSensorToo) {
    station.wind.fault_bits = 8;
    station.wind.low_battery = true;
    train();
    EXPECT_TRUE(panel.lblLowBattery.visible);
}

TEST_F(TrainAndLoneWind, OnlyATrainMakesTheChillValid) {
    train();
    readings.ChillValid = false;
    panel.TxtWindChill.text.clear();
    lone();
    EXPECT_FALSE(readings.ChillValid);
    EXPECT_EQ(panel.TxtWindChill.text, "+11.2 \260C");
    train();
    EXPECT_TRUE(readings.ChillValid);
}

TEST_F(TrainAndLoneWind, ALoneGroupRunsNoCycleAndLetsTheLineGo) {
    state.comm.gotcomms = true;
    state.comm.dworkingb.set();
    lone();
    EXPECT_FALSE(state.comm.dworkingb);
    EXPECT_TRUE(state.comm.gotcomms) << "the cycle would have cleared it";
}

TEST_F(TrainAndLoneWind, ALoneGroupIsIgnoredBeforeACycleHasBeenCompleted) {
    state.run.LoneAllowed = false;
    state.comm.dworkingb.set();
    station.wind.gust_ms = 9;
    lone();
    EXPECT_EQ(panel.Text2[6].text, "");
    EXPECT_FALSE(state.comm.dworkingb);
}

TEST_F(TrainAndLoneWind, TheFirstTrainShowsNoWind) {
    BareCopy fresh;
    fresh.lone(station);
    EXPECT_EQ(fresh.state.panel.Text2[6].text, "");
    fresh.train(station);
    EXPECT_EQ(fresh.state.panel.Text2[6].text, "");
    EXPECT_FALSE(fresh.state.readings.HaveWind);
    fresh.train(station);
    EXPECT_EQ(fresh.state.panel.Text2[6].text, " 15.1 km/h");
    EXPECT_TRUE(fresh.state.readings.HaveWind);
}

TEST_F(TrainAndLoneWind, AFaultyWindLeavesGustAverageDirectionsChillAndRecordAsTheyAre) {
    train();
    const std::string record = panel.TxtWindHiG.text;
    const std::string chill = panel.TxtWindChill.text;
    station.wind = {
        .gust_ms = 9, .average_ms = 9, .gust_direction = 1, .average_direction = 1, .record_ms = 60, .fault_bits = 4};
    train();
    EXPECT_EQ(panel.Text2[6].text, " 15.1 km/h");
    EXPECT_EQ(panel.Text2[3].text, " 11.2 km/h");
    EXPECT_EQ(panel.Text2[7].text, "Gust 225\xB0");
    EXPECT_EQ(panel.TxtWinDir.text, "Avg. 200\xB0");
    EXPECT_EQ(panel.TxtWindChill.text, chill);
    EXPECT_EQ(panel.TxtWindHiG.text, record);
    EXPECT_EQ(readings.MaxGustMs, "4.2");
}

TEST_F(TrainAndLoneWind, ErrorsBearTheTagsOfTheTwoRoutines) {
    station.wind.fault_bits = 4;
    world.files.refuse(std::string(ProgramLog::file), FileResult::permission);
    train();
    try {
        lone();
        ADD_FAILURE() << "no error";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.tag, "WG group");
    }
    train();
    try {
        train();
        ADD_FAILURE() << "no error";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.tag, "CF Group");
        EXPECT_EQ(error.number, ErrorNumber::permission);
    }
}

}  // namespace
}  // namespace nimbry::test
