#include "tests/engine/alarms/alarm_decoding.h"

#include <string>
#include <vector>

namespace nimbry::test {
namespace {

class AlarmEffects : public AlarmDecoding {};

// Lone wind groups

TEST_F(AlarmEffects, LoneWindGroupsAreCheckedToo) {
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

TEST_F(AlarmEffects, ALoneGroupOfAFaultyWindIsNot) {
    set(AlarmId::AWindHi, 10);
    station.wind.gust_ms = 30;
    station.wind.fault_bits = 8;
    for (int strike = 1; strike <= 3; ++strike) {
        lone();
        EXPECT_FALSE(alarms.AlarmCondition);
    }
}

// The gust that is kept for the mail

TEST_F(AlarmEffects, ATrainsWindAlarmKeepsItsGustForTheMail) {
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

TEST_F(AlarmEffects, ACalmGustIsKeptAsItIsShown) {
    use(WindUnit::ms);
    set(AlarmId::AWindHi, 0);
    station.wind.gust_ms = 0.1;
    train();
    ASSERT_TRUE(alarms.gust);
    EXPECT_EQ(alarms.gust->text, "Calm");
    EXPECT_EQ(alarms.gust->number, "0");
    EXPECT_EQ(alarms.gust->ms, 0.1);
}

TEST_F(AlarmEffects, ALoneGroupsWindAlarmKeepsNoGust) {
    set(AlarmId::AWindHi, 10);
    station.wind.gust_ms = 24.6;
    lone();
    EXPECT_TRUE(alarms.AlarmCondition);
    EXPECT_FALSE(alarms.gust);
}

TEST_F(AlarmEffects, AnotherAlarmKeepsNoGust) {
    set(AlarmId::ABarLo, 2000);
    train();
    EXPECT_TRUE(alarms.AlarmCondition);
    EXPECT_FALSE(alarms.gust);
}

// What an alarm does to the program

TEST_F(AlarmEffects, TheSoundFollowsItsSwitch) {
    set(AlarmId::ABarLo, 2000);
    train();
    EXPECT_TRUE(world.sounds.played.empty());
    dialog.chkASound = true;
    train();
    train();
    EXPECT_EQ(world.sounds.played, (std::vector<std::string>{"Nimbry.WAV", "Nimbry.WAV"})) << "at each decoding";
}

TEST_F(AlarmEffects, AHiddenWindowComesBack) {
    set(AlarmId::ABarLo, 2000);
    for (const bool in_tray : {false, true}) {
        SCOPED_TRACE(in_tray);
        place_window(state, true, in_tray);
        world.notices.restored = 0;
        train();
        EXPECT_EQ(world.notices.restored, 1);
        EXPECT_FALSE(state.window.minimised);
        EXPECT_FALSE(state.window.in_tray);
        EXPECT_EQ(state.window.caption, "Nimbry 2.02 - WM-918 Weather Monitoring");
        EXPECT_TRUE(state.menu.mnuHideNow.enabled);
        EXPECT_FALSE(state.menu.mnuRestore.enabled);
    }
    train();
    EXPECT_EQ(world.notices.restored, 1) << "one that is there is left alone";
}

TEST_F(AlarmEffects, AWindowThatALoneGroupBringsBackHasItsOwnCaptionAtOnce) {
    set(AlarmId::AWindHi, 10);
    station.wind.gust_ms = 24.6;
    state.window.minimised = true;
    state.window.caption = "+12.3 : 54 %";
    lone();
    EXPECT_EQ(world.notices.restored, 1);
    EXPECT_EQ(state.window.caption, "Nimbry 2.02 - WM-918 Weather Monitoring");
}

TEST_F(AlarmEffects, AQuietTrainLeavesAHiddenWindowHidden) {
    set(AlarmId::ABarLo, 900);
    state.window.minimised = true;
    train();
    EXPECT_EQ(world.notices.restored, 0);
    EXPECT_TRUE(state.window.minimised);
    EXPECT_TRUE(state.menu.mnuHide.enabled);
}

TEST_F(AlarmEffects, TheHideSwitchIsDisabled) {
    EXPECT_TRUE(state.menu.mnuHide.enabled);
    set(AlarmId::ABarLo, 2000);
    train();
    EXPECT_FALSE(state.menu.mnuHide.enabled);
}

TEST_F(AlarmEffects, AClientsDisplaysAreColouredToo) {
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
