#include "tests/engine/alarms/alarm_decoding.h"

#include <cstddef>
#include <iterator>
#include <string>

namespace nimbry::test {
namespace {

class AlarmSentence : public AlarmDecoding {};

TEST_F(AlarmSentence, TheSameAlarmAgainLengthensTheSentence) {
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

TEST_F(AlarmSentence, TheEqualityAlarmAgainLengthensItToo) {
    dialog.chkADewCur = true;
    readings.rawostemp = "+12.3";
    readings.dewnative = 12.3;
    check_dew_point(world.copy);
    check_dew_point(world.copy);
    EXPECT_EQ(alarms.AlarmReason,
              "the temperature and dew point are equal and the temperature and dew point are equal");
}

TEST_F(AlarmSentence, TheRainAlarmAgainLengthensItToo) {
    set(AlarmId::ARainAm, -1);
    train();
    train();
    EXPECT_EQ(alarms.AlarmReason,
              "the rainfall amount since 9.00am is above the alarm threshold and the rainfall amount since 9.00am is "
              "above the alarm threshold");
}

TEST_F(AlarmSentence, ADifferentAlarmReplacesTheSentence) {
    set(AlarmId::ABarLo, 2000);
    train();
    train();
    dialog.chkABarLo = false;
    set(AlarmId::AHumHi, 0);
    train();
    EXPECT_EQ(alarms.AlarmReason, "the humidity is above the alarm threshold");
}

TEST_F(AlarmSentence, HighAndLowOfOneReadingAreDifferentAlarms) {
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

TEST_F(AlarmSentence, TheRainClauseNamesTheChangeover) {
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

TEST_F(AlarmSentence, OfSeveralAlarmsTheLastOfTheTrainStandsAlone) {
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

TEST_F(AlarmSentence, TheEqualityTestStandsBetweenDewPointAndRainRate) {
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

}  // namespace
}  // namespace nimbry::test
