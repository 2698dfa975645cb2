#include <gtest/gtest.h>

#include "engine/core/process_cycle.h"
#include "tests/world/cycles.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

// The save counter. The record is open from the second cycle of a real train on; here it is opened by hand.

TEST(SaveCounter, SavesInTheThirtiethCycleAndTheSixtieth) {
    StartedWorld world;
    world.state().run.firstrun = false;
    cycles(world, 29);
    EXPECT_EQ(world.state().run.SaveCounter, 29);
    EXPECT_EQ(world.state().run.SaveRounds, 0);
    cycle(world);
    EXPECT_EQ(world.state().run.SaveCounter, 0);
    EXPECT_EQ(world.state().run.SaveRounds, 1);
    cycles(world, 29);
    EXPECT_EQ(world.state().run.SaveRounds, 1);
    cycle(world);
    EXPECT_EQ(world.state().run.SaveRounds, 2);
}

TEST(SaveCounter, RunsOnWhileTheRecordIsLockedAndSavesInTheFirstOpenCycle) {
    StartedWorld world;
    WeatherState& state = world.state();
    state.run.DuplicateError = true;  // keeps the records closed
    cycles(world, 34);
    EXPECT_TRUE(state.run.firstrun);
    EXPECT_EQ(state.run.SaveCounter, 34);
    EXPECT_EQ(state.run.SaveRounds, 0);
    state.run.firstrun = false;
    cycle(world);
    EXPECT_EQ(state.run.SaveCounter, 0);
    EXPECT_EQ(state.run.SaveRounds, 1);
}

TEST(SaveCounter, ASaveForgetsTheAlarmAndTheSeventhAllowsAnotherMail) {
    StartedWorld world;
    AlarmState& alarms = world.state().alarms;
    alarms.AlarmMailSent = true;
    for (int save = 1; save <= 7; ++save) {
        SCOPED_TRACE(save);
        alarms.AlarmCondition = true;
        alarms.AlarmReason = "the wind speed is above the alarm threshold";
        world.state().run.firstrun = false;
        cycles(world, 29);
        EXPECT_TRUE(alarms.AlarmCondition);
        EXPECT_TRUE(alarms.AlarmMailSent);
        cycle(world);
        EXPECT_FALSE(alarms.AlarmCondition);
        EXPECT_EQ(alarms.AlarmReason, "");
        EXPECT_EQ(alarms.AlarmMailSent, save < 7);
        EXPECT_EQ(world.state().run.SaveRounds, save < 7 ? save : 0);
    }
}

TEST(SaveCounter, BothSavesLetTheirFlagsGo) {
    StartedWorld world;
    world.state().run.firstrun = false;
    cycles(world, 30);
    EXPECT_FALSE(world.state().run.tdaysaving);
    EXPECT_FALSE(world.state().run.savingrafs);
}

// The alarm mail

TEST(AlarmMail, IsStartedOnceForAnAlarm) {
    StartedWorld world;
    AlarmState& alarms = world.state().alarms;
    alarms.frmAlarms.chkAlarmMail = true;
    cycle(world);
    EXPECT_FALSE(alarms.AlarmMailSent) << "no alarm";
    alarms.AlarmCondition = true;
    cycle(world);
    EXPECT_TRUE(alarms.AlarmMailSent);
}

struct NoMailCase {
    const char* why;
    void (*spoil)(WeatherState&);
};

TEST(AlarmMail, IsNotStarted) {
    const NoMailCase cases[] = {
        {"while the option is off", [](WeatherState& s) { s.alarms.frmAlarms.chkAlarmMail = false; }},
        {"while another mail is under way", [](WeatherState& s) { s.publish.emailbusy.set(); }},
        {"in a client", [](WeatherState& s) { s.settings.fromnet = true; }},
        {"in the cycle of a save, which comes first",
         [](WeatherState& s) {
             s.run.firstrun = false;
             s.run.SaveCounter = 29;
         }},
    };
    for (const NoMailCase& row : cases) {
        SCOPED_TRACE(row.why);
        StartedWorld world;
        world.state().alarms.frmAlarms.chkAlarmMail = true;
        world.state().alarms.AlarmCondition = true;
        row.spoil(world.state());
        cycle(world);
        EXPECT_FALSE(world.state().alarms.AlarmMailSent);
    }
}

}  // namespace
}  // namespace nimbry::test
