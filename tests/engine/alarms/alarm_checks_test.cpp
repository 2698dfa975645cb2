#include "engine/alarms/alarm_checks.h"

#include <cmath>
#include <limits>
#include <ostream>
#include <string>

#include "engine/displays/box_list.h"
#include "tests/engine/station/decoding.h"

namespace nimbry::test {
namespace {

/// One threshold, and a station that says exactly its value.
struct ThresholdCase {
    const char* what;
    AlarmId id;
    float value;
    void (*say)(StationReadings&);
    const char* box;
    Colour normal;
    const char* clause;
};

const ThresholdCase threshold_cases[]{
    {"outdoor temperature, high", AlarmId::ATempHi, 37.8F, [](StationReadings& s) { s.temperature.outdoor = 37.8; },
     "Text2(0)", 0x80FF80, "the outside temperature is above the alarm threshold"},
    {"outdoor temperature, low", AlarmId::ATempLo, -12.4F, [](StationReadings& s) { s.temperature.outdoor = -12.4; },
     "Text2(0)", 0x80FF80, "the outside temperature is below the alarm threshold"},
    {"humidity, high", AlarmId::AHumHi, 95, [](StationReadings& s) { s.humidity.outdoor = 95; }, "Text2(2)", 0x80FF80,
     "the humidity is above the alarm threshold"},
    {"humidity, low", AlarmId::AHumLo, 20, [](StationReadings& s) { s.humidity.outdoor = 20; }, "Text2(2)", 0x80FF80,
     "the humidity is below the alarm threshold"},
    {"barometer, high", AlarmId::ABarHi, 1030, [](StationReadings& s) { s.barometer.hpa = 1030; }, "Text2(4)", 0x80FF80,
     "the barometric pressure is above the alarm threshold"},
    {"barometer, low", AlarmId::ABarLo, 995, [](StationReadings& s) { s.barometer.hpa = 995; }, "Text2(4)", 0x80FF80,
     "the barometric pressure is below the alarm threshold"},
    {"gust", AlarmId::AWindHi, 17.3F, [](StationReadings& s) { s.wind.gust_ms = 17.3; }, "Text2(6)", 0x80FF80,
     "the wind speed is above the alarm threshold"},
    {"peak rain rate", AlarmId::ARainHi, 50, [](StationReadings& s) { s.rain.rate_mm = 50; }, "TxtPeakRain", 0xFF80FF,
     "the peak rainfall rate is above the alarm threshold"},
    // The counter stands at 123 mm when the day's rain begins to be counted.
    {"rain of the day", AlarmId::ARainAm, 25, [](StationReadings& s) { s.rain.total_mm = 148; }, "TxtRainToday",
     0xFF80FF, "the rainfall amount since 9.00am is above the alarm threshold"},
    // 20 degrees at 50 percent: 9.25 by the formula, 9.3 as a reading.
    {"dew point, high", AlarmId::ADewHi, 9.3F,
     [](StationReadings& s) {
         s.temperature.outdoor = 20;
         s.humidity.outdoor = 50;
     },
     "Text2(1)", 0x80FF80, "the dew point is above the alarm threshold"},
    // -10 degrees at 80 percent: -12.78 by the formula, -12.8 as a reading.
    {"dew point, low", AlarmId::ADewLo, -12.8F,
     [](StationReadings& s) {
         s.temperature.outdoor = -10;
         s.humidity.outdoor = 80;
     },
     "Text2(1)", 0x80FF80, "the dew point is below the alarm threshold"},
    {"indoor temperature, high", AlarmId::AItempHi, 25.7F, [](StationReadings& s) { s.temperature.indoor = 25.7; },
     "Text2(8)", 0x80FF80, "the indoor temperature is above the alarm threshold"},
    {"indoor temperature, low", AlarmId::AItempLo, 10, [](StationReadings& s) { s.temperature.indoor = 10; },
     "Text2(8)", 0x80FF80, "the indoor temperature is below the alarm threshold"},
};

void PrintTo(const ThresholdCase& c, std::ostream* out) {
    *out << c.what;
}

class AlarmDecoding : public Decoding {
protected:
    // The second train is the first that is decoded: it gives the rain of the day its base.
    AlarmDecoding() { train(); }

    AlarmState& alarms = state.alarms;
    AlarmsDialog& dialog = alarms.frmAlarms;

    void set(AlarmId id, float threshold) {
        dialog.*alarm_row(id).threshold = threshold;
        dialog.*alarm_row(id).enabled = true;
    }
    [[nodiscard]] Colour back(const char* box) { return find_box(state, box)->back; }
    /// What a save of the extremes and the end of TimAlarm would do.
    void calm(const ThresholdCase& c) {
        alarms.AlarmCondition = false;
        alarms.AlarmReason.clear();
        find_box(state, c.box)->back = c.normal;
    }
};

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

// The sentence

TEST_F(AlarmDecoding, TheSameAlarmAgainLengthensTheSentence) {
    set(AlarmId::ABarLo, 2000);
    train();
    EXPECT_EQ(alarms.AlarmReason, "the barometric pressure is below the alarm threshold");
    train();
    EXPECT_EQ(alarms.AlarmReason,
              "the barometric pressure is below the alarm threshold and the barometric pressure is below the alarm "
              "threshold");
    train();
    EXPECT_EQ(alarms.AlarmReason,
              "the barometric pressure is below the alarm threshold and the barometric pressure is below the alarm "
              "threshold and the barometric pressure is below the alarm threshold");
}

TEST_F(AlarmDecoding, TheEqualityAlarmAgainLengthensItToo) {
    dialog.chkADewCur = true;
    readings.rawostemp = "+12.3";
    readings.dewnative = 12.3;
    check_dew_point(world.copy);
    check_dew_point(world.copy);
    EXPECT_EQ(alarms.AlarmReason,
              "the temperature and dew point are equal and the temperature and dew point are equal");
}

TEST_F(AlarmDecoding, TheRainAlarmAgainLengthensItToo) {
    set(AlarmId::ARainAm, -1);
    train();
    train();
    EXPECT_EQ(alarms.AlarmReason,
              "the rainfall amount since 9.00am is above the alarm threshold and the rainfall amount since 9.00am is "
              "above the alarm threshold");
}

TEST_F(AlarmDecoding, ADifferentAlarmReplacesTheSentence) {
    set(AlarmId::ABarLo, 2000);
    train();
    train();
    dialog.chkABarLo = false;
    set(AlarmId::AHumHi, 0);
    train();
    EXPECT_EQ(alarms.AlarmReason, "the humidity is above the alarm threshold");
}

TEST_F(AlarmDecoding, HighAndLowOfOneReadingAreDifferentAlarms) {
    set(AlarmId::ATempHi, -1000);
    set(AlarmId::ATempLo, 1000);
    train();
    EXPECT_EQ(alarms.AlarmReason, "the outside temperature is below the alarm threshold") << "the low comes second";
}

struct ChangeoverCase {
    const char* what;
    bool tmidnight, AddOneHour;
    const char* clause;
};

TEST_F(AlarmDecoding, TheRainClauseNamesTheChangeover) {
    for (const ChangeoverCase& c : {
             ChangeoverCase{"midnight", true, false, "the rainfall amount since midnight is above the alarm threshold"},
             ChangeoverCase{"midnight, the hour does not count", true, true,
                            "the rainfall amount since midnight is above the alarm threshold"},
             ChangeoverCase{"nine", false, false, "the rainfall amount since 9.00am is above the alarm threshold"},
             ChangeoverCase{"ten", false, true, "the rainfall amount since 10.00am is above the alarm threshold"},
         }) {
        SCOPED_TRACE(c.what);
        alarms = {};
        set(AlarmId::ARainAm, -1);
        state.settings.tmidnight = c.tmidnight;
        state.settings.tnineam = !c.tmidnight;
        state.settings.AddOneHour = c.AddOneHour;
        train();
        EXPECT_EQ(alarms.AlarmReason, c.clause);
    }
}

// The checks in the order in which a train asks them, rain amount last, with a threshold that always fires.
constexpr AlarmId order_in_a_train[]{AlarmId::AHumHi,   AlarmId::AHumLo,   AlarmId::ATempHi, AlarmId::ATempLo,
                                     AlarmId::AItempHi, AlarmId::AItempLo, AlarmId::ABarHi,  AlarmId::ABarLo,
                                     AlarmId::ADewHi,   AlarmId::ADewLo,   AlarmId::ARainHi, AlarmId::AWindHi,
                                     AlarmId::ARainAm};

TEST_F(AlarmDecoding, OfSeveralAlarmsTheLastOfTheTrainStandsAlone) {
    const auto fire = [&](AlarmId id) { set(id, alarm_row(id).above ? -1000.0F : 2000.0F); };
    const auto clause = [](AlarmId id) {
        for (const ThresholdCase& c : threshold_cases)
            if (c.id == id) return std::string(c.clause);
        return std::string();
    };
    for (std::size_t n = 0; n + 1 < std::size(order_in_a_train); ++n) {
        alarms = {};
        fire(order_in_a_train[n]);
        fire(order_in_a_train[n + 1]);
        train();
        EXPECT_EQ(alarms.AlarmReason, clause(order_in_a_train[n + 1])) << "after " << clause(order_in_a_train[n]);
    }
    alarms = {};
    for (const AlarmId id : order_in_a_train) fire(id);
    train();
    EXPECT_EQ(alarms.AlarmReason, "the rainfall amount since 9.00am is above the alarm threshold");
    for (const ThresholdCase& c : threshold_cases) EXPECT_EQ(back(c.box), 0xC0C0FFU) << c.what;
}

TEST_F(AlarmDecoding, TheEqualityTestStandsBetweenDewPointAndRainRate) {
    dialog.chkADewCur = true;
    set(AlarmId::ADewLo, 1000);
    readings.rawostemp = "-20.0";
    check_dew_point(world.copy);
    EXPECT_EQ(alarms.AlarmReason, "the temperature and dew point are equal") << "after the low dew point";

    station.temperature.outdoor = 0;
    station.humidity.outdoor = 97;
    station.humidity.outdoor_over_range = true;
    set(AlarmId::ARainHi, -1);
    train();
    EXPECT_EQ(alarms.AlarmReason, "the peak rainfall rate is above the alarm threshold") << "before the rain rate";
}

// Lone wind groups

TEST_F(AlarmDecoding, LoneWindGroupsAreCheckedToo) {
    set(AlarmId::AWindHi, 10);
    station.wind.gust_ms = 10;
    lone();
    EXPECT_FALSE(alarms.AlarmCondition);
    station.wind.gust_ms = 10.1;
    lone();
    lone();
    EXPECT_EQ(alarms.AlarmReason,
              "the wind speed is above the alarm threshold and the wind speed is above the alarm threshold")
        << "one breach, two groups";
    EXPECT_EQ(panel.Text2[6].back, 0xC0C0FFU);
    train();
    EXPECT_EQ(alarms.AlarmReason,
              "the wind speed is above the alarm threshold and the wind speed is above the alarm threshold and the "
              "wind speed is above the alarm threshold");
}

TEST_F(AlarmDecoding, ALoneGroupOfAFaultyWindIsNot) {
    set(AlarmId::AWindHi, 10);
    station.wind.gust_ms = 30;
    station.wind.fault_bits = 8;
    for (int strike = 1; strike <= 3; ++strike) {
        lone();
        EXPECT_FALSE(alarms.AlarmCondition);
    }
}

// The gust that is kept for the mail

TEST_F(AlarmDecoding, ATrainsWindAlarmKeepsItsGustForTheMail) {
    set(AlarmId::AWindHi, 10);
    station.wind.gust_ms = 24.6;
    train();
    ASSERT_TRUE(alarms.gust);
    EXPECT_EQ(alarms.gust->text, "88.6 km/h");  // 24.6 * 3.6 = 88.56
    EXPECT_EQ(alarms.gust->number, "88.6");
    EXPECT_EQ(alarms.gust->ms, 24.6);
    station.wind.gust_ms = 5;
    train();
    EXPECT_EQ(alarms.gust->text, "88.6 km/h") << "a gust that raises no alarm leaves it";
    station.wind.gust_ms = 11;
    train();
    EXPECT_EQ(alarms.gust->text, "39.6 km/h") << "the next alarm's replaces it";
}

TEST_F(AlarmDecoding, ACalmGustIsKeptAsItIsShown) {
    use(WindUnit::ms);
    set(AlarmId::AWindHi, 0);
    station.wind.gust_ms = 0.1;
    train();
    ASSERT_TRUE(alarms.gust);
    EXPECT_EQ(alarms.gust->text, "Calm");
    EXPECT_EQ(alarms.gust->number, "0");
    EXPECT_EQ(alarms.gust->ms, 0.1);
}

TEST_F(AlarmDecoding, ALoneGroupsWindAlarmKeepsNoGust) {
    set(AlarmId::AWindHi, 10);
    station.wind.gust_ms = 24.6;
    lone();
    EXPECT_TRUE(alarms.AlarmCondition);
    EXPECT_FALSE(alarms.gust);
}

TEST_F(AlarmDecoding, AnotherAlarmKeepsNoGust) {
    set(AlarmId::ABarLo, 2000);
    train();
    EXPECT_TRUE(alarms.AlarmCondition);
    EXPECT_FALSE(alarms.gust);
}

// What an alarm does to the program

TEST_F(AlarmDecoding, TheSoundFollowsItsSwitch) {
    set(AlarmId::ABarLo, 2000);
    train();
    EXPECT_TRUE(world.sounds.played.empty());
    dialog.chkASound = true;
    train();
    train();
    EXPECT_EQ(world.sounds.played, (std::vector<std::string>{"Nimbry.WAV", "Nimbry.WAV"})) << "at each decoding";
}

TEST_F(AlarmDecoding, AHiddenWindowComesBack) {
    set(AlarmId::ABarLo, 2000);
    for (const bool in_tray : {false, true}) {
        SCOPED_TRACE(in_tray);
        state.window.minimised = true;
        state.window.in_tray = in_tray;
        world.notices.restored = 0;
        train();
        EXPECT_EQ(world.notices.restored, 1);
        EXPECT_FALSE(state.window.minimised);
        EXPECT_FALSE(state.window.in_tray);
        EXPECT_EQ(state.window.caption, "Nimbry 2.02 - WM-918 Weather Monitoring");
    }
    train();
    EXPECT_EQ(world.notices.restored, 1) << "one that is there is left alone";
}

TEST_F(AlarmDecoding, AQuietTrainLeavesAHiddenWindowHidden) {
    set(AlarmId::ABarLo, 900);
    state.window.minimised = true;
    train();
    EXPECT_EQ(world.notices.restored, 0);
    EXPECT_TRUE(state.window.minimised);
    EXPECT_TRUE(state.menu.mnuHide.enabled);
}

TEST_F(AlarmDecoding, TheHideSwitchIsDisabled) {
    EXPECT_TRUE(state.menu.mnuHide.enabled);
    set(AlarmId::ABarLo, 2000);
    train();
    EXPECT_FALSE(state.menu.mnuHide.enabled);
}

TEST_F(AlarmDecoding, AClientsDisplaysAreColouredToo) {
    state.settings.fromnet = true;
    set(AlarmId::ABarLo, 2000);
    dialog.chkAlarmMail = true;
    train();
    EXPECT_EQ(panel.Text2[4].back, 0xC0C0FFU);
    EXPECT_EQ(alarms.AlarmReason, "the barometric pressure is below the alarm threshold");
    EXPECT_FALSE(alarms.AlarmMailSent);
}

}  // namespace
}  // namespace nimbry::test
