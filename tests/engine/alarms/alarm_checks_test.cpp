#include "engine/alarms/alarm_checks.h"

#include <cmath>
#include <limits>
#include <string>

#include "tests/engine/alarms/alarm_decoding.h"

namespace nimbry::test {
namespace {

class Thresholds : public AlarmDecoding, public testing::WithParamInterface<ThresholdCase> {
protected:
    /// A train with the value, against this threshold: true when the alarm fired, in each of its signs alike.
    bool fires_against(float threshold) {
        const ThresholdCase& c = GetParam();
        calm(c);
        c.say(station);
        set(c.id, threshold);
        train();
        EXPECT_EQ(back(c.box), alarms.AlarmCondition ? 0xC0C0FFU : c.normal);
        EXPECT_EQ(alarms.AlarmReason, alarms.AlarmCondition ? c.clause : "");
        return alarms.AlarmCondition;
    }
};

constexpr float infinite = std::numeric_limits<float>::infinity();

TEST_P(Thresholds, AreQuietAtEqualityAndFireAtTheNextSingle) {
    const ThresholdCase& c = GetParam();
    const bool above = alarm_row(c.id).above;
    EXPECT_FALSE(fires_against(c.value)) << "equal";
    EXPECT_EQ(fires_against(std::nextafter(c.value, -infinite)), above) << "the reading is just above";
    EXPECT_EQ(fires_against(std::nextafter(c.value, infinite)), !above) << "the reading is just below";
}

TEST_P(Thresholds, AreNotLookedAtWhileTheirBoxIsNotChecked) {
    const ThresholdCase& c = GetParam();
    c.say(station);
    dialog.*alarm_row(c.id).threshold = alarm_row(c.id).above ? -1000.0F : 2000.0F;
    train();
    EXPECT_FALSE(alarms.AlarmCondition);
    EXPECT_EQ(back(c.box), c.normal);
    EXPECT_FALSE(world.timers.running(TimerId::TimAlarm));
}

TEST_P(Thresholds, WaitForTheSecondTrain) {
    const ThresholdCase& c = GetParam();
    BareCopy fresh;
    AlarmsDialog& settings = fresh.state.alarms.frmAlarms;
    settings.*alarm_row(c.id).threshold = alarm_row(c.id).above ? -1000.0F : 2000.0F;
    settings.*alarm_row(c.id).enabled = true;
    fresh.train(station);
    EXPECT_FALSE(fresh.state.alarms.AlarmCondition) << "the first train only primes the cycle";
    fresh.train(station);
    EXPECT_TRUE(fresh.state.alarms.AlarmCondition);
}

INSTANTIATE_TEST_SUITE_P(Each, Thresholds, testing::ValuesIn(threshold_cases),
                         [](const auto& c) { return std::string(alarm_row(c.param.id).key); });

struct SensorOfAlarmCase {
    const char* what;
    AlarmId id;
    void (*breaks)(StationReadings&);
};

TEST(Alarms, AreNotAskedWhileTheirSensorFails) {
    const SensorOfAlarmCase cases[]{
        {"outdoor temperature, high", AlarmId::ATempHi, [](StationReadings& s) { s.temperature.outdoor_fault = true; }},
        {"outdoor temperature, low", AlarmId::ATempLo, [](StationReadings& s) { s.temperature.outdoor_fault = true; }},
        {"humidity, high", AlarmId::AHumHi, [](StationReadings& s) { s.humidity.outdoor_fault = true; }},
        {"humidity, low", AlarmId::AHumLo, [](StationReadings& s) { s.humidity.outdoor_fault = true; }},
        {"barometer, high", AlarmId::ABarHi, [](StationReadings& s) { s.barometer.hpa = 1050; }},
        {"barometer, low", AlarmId::ABarLo, [](StationReadings& s) { s.barometer.hpa = 795; }},
        {"gust", AlarmId::AWindHi, [](StationReadings& s) { s.wind.fault_bits = 4; }},
        {"peak rain rate", AlarmId::ARainHi, [](StationReadings& s) { s.rain.fault = true; }},
        {"rain of the day", AlarmId::ARainAm, [](StationReadings& s) { s.rain.fault = true; }},
        {"dew point without a temperature", AlarmId::ADewHi,
         [](StationReadings& s) { s.temperature.outdoor_fault = true; }},
        {"dew point without a humidity", AlarmId::ADewLo, [](StationReadings& s) { s.humidity.outdoor_fault = true; }},
        {"indoor temperature, high", AlarmId::AItempHi, [](StationReadings& s) { s.temperature.indoor_fault = true; }},
        {"indoor temperature, low", AlarmId::AItempLo, [](StationReadings& s) { s.temperature.indoor_fault = true; }},
    };
    for (const SensorOfAlarmCase& c : cases) {
        SCOPED_TRACE(c.what);
        BareCopy copy;
        StationReadings station;
        copy.train(station);
        AlarmState& alarms = copy.state.alarms;
        alarms.frmAlarms.*alarm_row(c.id).threshold = alarm_row(c.id).above ? -1000.0F : 2000.0F;
        alarms.frmAlarms.*alarm_row(c.id).enabled = true;
        c.breaks(station);
        for (int strike = 1; strike <= 3; ++strike) {
            SCOPED_TRACE(strike);
            copy.train(station);
            EXPECT_FALSE(alarms.AlarmCondition);
        }
        copy.train(StationReadings{});
        EXPECT_TRUE(alarms.AlarmCondition) << "the sensor is back";
    }
}

// Singles

TEST_F(AlarmDecoding, AThresholdOfATenthIsTheSameSingleAsTheReading) {
    // 37.8 as a single is below 37.8 as a double: compared as they are, equality would sound.
    set(AlarmId::ATempHi, 37.8F);
    station.temperature.outdoor = 37.8;
    train();
    EXPECT_FALSE(alarms.AlarmCondition);
    station.temperature.outdoor = 37.9;
    train();
    EXPECT_TRUE(alarms.AlarmCondition);
}

TEST_F(AlarmDecoding, AGustAlarmLeftAtZeroSoundsForAnyGust) {
    dialog.chkAWindHi = true;
    EXPECT_EQ(dialog.AWindHi, 0);
    station.wind.gust_ms = 0;
    train();
    EXPECT_FALSE(alarms.AlarmCondition) << "no gust at all";
    station.wind.gust_ms = 0.1;
    train();
    EXPECT_TRUE(alarms.AlarmCondition) << "though it is shown as calm in m/s";
}

TEST_F(AlarmDecoding, AnOverRangeHumidityIsCompared97NotAs100) {
    set(AlarmId::AHumHi, 97);
    station.humidity.outdoor = 97;
    station.humidity.outdoor_over_range = true;
    train();
    EXPECT_EQ(panel.Text2[2].text, " 100 %");
    EXPECT_FALSE(alarms.AlarmCondition);
    dialog.AHumHi = 96;
    train();
    EXPECT_TRUE(alarms.AlarmCondition);
}

TEST_F(AlarmDecoding, ThresholdsAreInBaseUnitsWhateverIsShown) {
    use(TemperatureUnit::fahrenheit);
    use(WindUnit::mph);
    use(BarometerUnit::inhg);
    use(RainUnit::inches);
    struct Case {
        AlarmId id;
        float quiet, loud;
    };
    // The station's usual readings: 12.3 C, 4.2 m/s, 1013 hPa, rain rate 40 mm.
    station.rain.rate_mm = 40;
    for (const Case& c : {Case{AlarmId::ATempHi, 12.3F, 12.2F}, Case{AlarmId::AWindHi, 4.2F, 4.1F},
                          Case{AlarmId::ABarHi, 1013, 1012}, Case{AlarmId::ARainHi, 40, 39}}) {
        SCOPED_TRACE(alarm_row(c.id).key);
        alarms = {};
        set(c.id, c.quiet);
        train();
        EXPECT_FALSE(alarms.AlarmCondition);
        set(c.id, c.loud);
        train();
        EXPECT_TRUE(alarms.AlarmCondition);
    }
}

TEST_F(AlarmDecoding, ANumberWithAnExponentAmongItsDigitsIsStillANumber) {
    set(AlarmId::ARainHi, 50);
    state.readings.rdatpeakrain = "9E99";
    check_peak_rain(world.copy);
    EXPECT_TRUE(alarms.AlarmCondition);
}

// Dew point and temperature

struct EqualCase {
    const char* what;
    const char* temperature;
    double dew;
    bool fires;
};

TEST_F(AlarmDecoding, TheDewPointThatReachesTheTemperatureSounds) {
    for (const EqualCase& c : {EqualCase{"below", "+12.4", 12.3, false}, EqualCase{"equal", "+12.3", 12.3, true},
                               EqualCase{"above", "+12.2", 12.3, true}, EqualCase{"below, frost", "-04.7", -4.8, false},
                               EqualCase{"equal, frost", "-04.7", -4.7, true}, EqualCase{"zero", "-00.0", 0, true}}) {
        SCOPED_TRACE(c.what);
        alarms = {};
        dialog.chkADewCur = true;
        panel.Text2[1].back = colours::reading_back;
        readings.rawostemp = c.temperature;
        readings.dewnative = c.dew;
        check_dew_point(world.copy);
        EXPECT_EQ(alarms.AlarmCondition, c.fires);
        EXPECT_EQ(alarms.AlarmReason, c.fires ? "the temperature and dew point are equal" : "");
        EXPECT_EQ(panel.Text2[1].back, c.fires ? 0xC0C0FFU : 0x80FF80U);
        EXPECT_EQ(panel.Text2[0].back, 0x80FF80U) << "the temperature keeps its colour";
    }
    alarms = {};
    check_dew_point(world.copy);
    EXPECT_FALSE(alarms.AlarmCondition) << "its box is not checked";
}

TEST_F(AlarmDecoding, FogSoundsTheEqualityAlarm) {
    dialog.chkADewCur = true;
    station.temperature.outdoor = 0;
    station.humidity.outdoor = 97;
    station.humidity.outdoor_over_range = true;  // 100 percent: the dew point is -0.00002, which is 0.0 as a reading
    train();
    EXPECT_EQ(alarms.AlarmReason, "the temperature and dew point are equal");
    station.humidity.outdoor_over_range = false;
    alarms.AlarmReason.clear();
    train();
    EXPECT_EQ(alarms.AlarmReason, "") << "97 percent: -0.4";
}

}  // namespace
}  // namespace nimbry::test
