#include "engine/station/sensor_faults.h"

#include <string>

#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

/// What holds beside the two strikes that every sensor has.
class SensorFaultsRules : public Decoding {
protected:
    [[nodiscard]] std::size_t fault_lines() { return world.log_lines().size(); }
};

TEST_F(SensorFaultsRules, TheEndsOfTheSoundRangesAreSound) {
    struct Case {
        const char* what;
        int hpa, direction;
    };
    for (const Case& c : {
             Case{"the lowest pressure", 796, 0},
             Case{"the highest pressure and direction", 1049, 359},
         }) {
        SCOPED_TRACE(c.what);
        station.barometer.hpa = c.hpa;
        station.wind.gust_direction = c.direction;
        train();
        EXPECT_FALSE(state.sensors.pebarerr.raised);
        EXPECT_FALSE(state.sensors.pewgerr.raised);
    }
}

TEST_F(SensorFaultsRules, AnAverageDirectionBeyondTheCircleIsNoFault) {
    station.wind.average_direction = 400;
    train();
    EXPECT_FALSE(state.sensors.pewgerr.raised);
}

TEST_F(SensorFaultsRules, AFailedBarometerSendsLettersAndIsOutOfItsRange) {
    for (int n = 0; n < 2; ++n) {
        now += 10s;
        station.clock = station_moment(now);
        Bytes bytes = write_train(station);
        for (const int place : {12, 9, 10, 7}) set_digit(bytes, 0xAF, place, 14);
        seal(bytes);
        world.frame(bytes);
    }
    EXPECT_EQ(panel.Text2[4].text, "Error");
}

TEST_F(SensorFaultsRules, TrainsAndLoneGroupsShareTheWindsStrikes) {
    station.wind.fault_bits = 4;
    train();
    EXPECT_TRUE(state.sensors.pewgerr.raised);
    lone();
    EXPECT_FALSE(state.sensors.pewgerr.raised);
    EXPECT_EQ(panel.Text2[6].text, "Error");
    EXPECT_EQ(fault_lines(), 1U);
    lone();
    EXPECT_TRUE(state.sensors.pewgerr.raised);
    train();
    EXPECT_FALSE(state.sensors.pewgerr.raised);
}

TEST_F(SensorFaultsRules, ALoneGroupTestsNoOtherSensor) {
    station.temperature.outdoor_fault = true;
    train();
    lone();
    lone();
    EXPECT_TRUE(state.sensors.peoterr.raised);
    EXPECT_NE(panel.Text2[0].text, "Error");
}

TEST_F(SensorFaultsRules, AWindErrorEmptiesTheWordsAndZeroesTheLog) {
    train();
    station.wind.fault_bits = 8;
    train();
    EXPECT_EQ(readings.gwcompaf, "SW");
    EXPECT_EQ(state.log_fields.logwindgs, "15.1");
    train();
    EXPECT_EQ(readings.gwcompaf, "");
    EXPECT_EQ(readings.gwcompas, "");
    EXPECT_EQ(readings.awcompaf, "");
    EXPECT_EQ(readings.awcompas, "");
    EXPECT_EQ(state.log_fields.logwindgs, "0");
    EXPECT_EQ(state.log_fields.logwindas, "0");
    EXPECT_EQ(state.log_fields.logwindad, "200") << "the other columns keep their last text";
}

TEST_F(SensorFaultsRules, BothWindsAreSoundOnlyWithoutAFaultInTrainAndLoneGroup) {
    train();
    EXPECT_TRUE(both_winds_sound(world.copy)) << "no lone group has come";
    lone();
    train();
    EXPECT_TRUE(both_winds_sound(world.copy));
    station.wind.fault_bits = 4;
    lone();
    station.wind.fault_bits = 0;
    train();
    EXPECT_TRUE(sensor_sound(world.copy, Sensor::wind));
    EXPECT_FALSE(both_winds_sound(world.copy));
    lone();
    station.wind.fault_bits = 4;
    train();
    EXPECT_FALSE(both_winds_sound(world.copy));
}

TEST_F(SensorFaultsRules, ARejectedTrainAdvancesNoTest) {
    train();
    station.temperature.outdoor_fault = true;
    train();
    EXPECT_TRUE(state.sensors.peoterr.raised);
    station.clock = {.second = 0, .minute = 0, .hour = 12, .day = 31, .month = 2};
    world.train(station);
    EXPECT_TRUE(state.sensors.peoterr.raised);
    lone();
    EXPECT_TRUE(state.sensors.peoterr.raised);
    EXPECT_EQ(fault_lines(), 0U);
}

struct FrostCase {
    const char* what;
    double celsius;
    bool cold_climate;
    bool reported;
};

TEST_F(SensorFaultsRules, InAColdClimateTheFrostSilencesTheOutdoorHumidity) {
    for (const FrostCase& c : {
             FrostCase{"below -9.0", -9.1, true, false},
             FrostCase{"at -9.0", -9.0, true, true},
             FrostCase{"warm", 12.3, true, true},
             FrostCase{"below -9.0, but not silenced", -9.1, false, true},
         }) {
        SCOPED_TRACE(c.what);
        BareCopy fresh;
        fresh.state.settings.CCPop = c.cold_climate;
        StationReadings cold;
        cold.temperature.outdoor = c.celsius;
        cold.clock = station.clock;
        fresh.train(cold);
        fresh.train(cold);
        cold.humidity.outdoor_fault = true;
        fresh.train(cold);
        fresh.train(cold);
        EXPECT_EQ(fresh.log_lines().size(), c.reported ? 1U : 0U);
        EXPECT_EQ(fresh.notices.windows.size(), c.reported ? 1U : 0U);
        EXPECT_EQ(fresh.state.panel.Text2[2].text, "Error") << "the panel always tells";
    }
}

TEST_F(SensorFaultsRules, AFaultSilencedByTheFrostIsNotYetLogged) {
    state.settings.CCPop = true;
    state.settings.ErrorPop = true;
    station.temperature.outdoor = -20;
    train();
    station.humidity.outdoor_fault = true;
    train();
    train();
    EXPECT_FALSE(state.sensors.peoherr.once);
    EXPECT_EQ(panel.Text2[2].text, "Error");
    station.temperature.outdoor = 1;
    train();
    train();
    EXPECT_EQ(fault_lines(), 1U) << "in the thaw it is";
}

TEST_F(SensorFaultsRules, TheRedOfALoneGroupOutlastsIt) {
    station.wind.fault_bits = 4;
    train();
    lone();
    EXPECT_EQ(panel.Text2[6].fore, colours::red);
    station.wind.fault_bits = 0;
    lone();
    EXPECT_EQ(panel.Text2[6].fore, colours::black);
}

TEST_F(SensorFaultsRules, TheFrostSilencesNoOtherSensor) {
    state.settings.CCPop = true;
    station.temperature.outdoor = -20;
    train();
    station.humidity.indoor_fault = true;
    train();
    train();
    EXPECT_EQ(fault_lines(), 1U);
}

TEST_F(SensorFaultsRules, TheFrostIsThatOfTheTrainBefore) {
    state.settings.CCPop = true;
    station.temperature.outdoor = 5;
    station.humidity.outdoor_fault = true;
    train();
    station.temperature.outdoor = -20;
    train();
    EXPECT_EQ(fault_lines(), 1U) << "the humidity comes before the temperature of its own train";
}

TEST_F(SensorFaultsRules, AFaultAppendsItsLineBeforeItShowsAndPaints) {
    station.rain.fault = true;
    train();
    world.files.refuse(std::string(ProgramLog::file), FileResult::disk_full);
    EXPECT_THROW(train(), UnrecoverableError);
    EXPECT_TRUE(world.notices.windows.empty());
    EXPECT_NE(panel.Text2[5].text, "Error");
}

}  // namespace
}  // namespace nimbry::test
