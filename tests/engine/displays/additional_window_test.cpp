#include "engine/displays/additional_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>

#include "engine/displays/box_list.h"
#include "engine/publish/perform_upload.h"
#include "tests/world/cycles.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

class AdditionalData : public testing::Test {
protected:
    AdditionalData() { world.state().run.fullystarted = true; }

    void open() {
        world.act([this] { mnuAdditional(world.copy()); });
    }
    [[nodiscard]] bool is_locked() { return !menu().mnuAdditional.enabled && !menu().fmb[4].enabled; }
    [[nodiscard]] bool is_free() { return menu().mnuAdditional.enabled && menu().fmb[4].enabled; }
    void enter_a_place() {
        world.state().settings.Latitude = "51.500000";
        world.state().settings.Longitude = "0.000000";
    }
    [[nodiscard]] std::ptrdiff_t clicks() {
        return std::count(world.sounds.played.begin(), world.sounds.played.end(), "click.WAV");
    }
    MainMenu& menu() { return world.state().menu; }
    AdditionalPanel& panel() { return world.state().additional; }

    StartedWorld world;
};

TEST_F(AdditionalData, OpensWithAClickAndLocksWhatOpensIt) {
    EXPECT_TRUE(is_free());
    open();
    EXPECT_TRUE(panel().Additional_Open);
    EXPECT_TRUE(is_locked());
    EXPECT_EQ(clicks(), 1);
}

TEST_F(AdditionalData, StaysLockedWhileItIsOpenWhateverTheCycleSwitchesOn) {
    menu().mnuReports.enabled = false;
    open();
    cycle(world);
    EXPECT_TRUE(menu().mnuReports.enabled) << "the cycle has opened the menu";
    EXPECT_TRUE(is_locked());
    additional_closed(world.copy());
    menu().mnuAdditional.enabled = false;
    cycle(world);
    EXPECT_TRUE(menu().mnuAdditional.enabled) << "of a closed window it is switched on like the others";
}

TEST_F(AdditionalData, ClosingInAnyWayPutsBackWhatOpensIt) {
    open();
    additional_closed(world.copy());
    EXPECT_FALSE(panel().Additional_Open);
    EXPECT_TRUE(is_free());
    EXPECT_EQ(clicks(), 1);
    open();
    hide_additional(world.copy());
    EXPECT_FALSE(panel().Additional_Open);
    EXPECT_TRUE(is_free());
    EXPECT_EQ(clicks(), 3) << "its menu entry sounds too";
}

TEST_F(AdditionalData, ShowsTheDaysSinceRainAfreshInFront) {
    world.state().records.DaySinceRain = 4;
    world.state().records.LastRain = 2.5F;
    open();
    EXPECT_EQ(panel().txtDSR.text, "4");
    EXPECT_EQ(panel().txtAmtLastRain.text, "2.5 mm");
    world.state().records.DaySinceRain = 5;
    world.state().units.rain_text = "In.";
    additional_comes_to_front(world.copy());
    EXPECT_EQ(panel().txtDSR.text, "5");
    EXPECT_EQ(panel().txtAmtLastRain.text, "2.5 In.") << "the amount stays, whatever the unit was on its day";
}

TEST_F(AdditionalData, ShowsTheSunOrWhyThereIsNone) {
    open();
    EXPECT_TRUE(panel().lblNoSun.visible);
    EXPECT_FALSE(panel().Picture1.visible);
    EXPECT_FALSE(panel().TxtSunrise.visible);
    EXPECT_EQ(panel().TxtSunrise.text, "Can't calculate Sunrise as no location entered") << "tags read it";
    EXPECT_EQ(panel().TxtSunset.text, "Can't calculate Sunset as no location entered");

    enter_a_place();
    cycle(world);
    additional_comes_to_front(world.copy());
    EXPECT_FALSE(panel().lblNoSun.visible);
    EXPECT_TRUE(panel().Picture1.visible);
    EXPECT_TRUE(panel().TxtSunrise.visible);
}

TEST_F(AdditionalData, WorksTheSunOutOnlyWhereNoCycleHasYet) {
    enter_a_place();
    open();
    EXPECT_TRUE(panel().TxtSunrise.text.starts_with("Sunrise today (05 October 2026) was at ")) << "before any cycle";
    EXPECT_TRUE(panel().Picture1.visible);
    panel().TxtSunrise.text = panel().TxtSunset.text = "as the cycle left it";
    additional_comes_to_front(world.copy());
    EXPECT_EQ(panel().TxtSunrise.text, "as the cycle left it") << "a look changes no tag";
    EXPECT_EQ(panel().TxtSunset.text, "as the cycle left it");
}

TEST_F(AdditionalData, ItsButtonIsOffWhileItIsOpenOrAnUploadHasTheRowOff) {
    const auto row = [this] {
        std::string on;
        for (const Box& button : menu().fmb) on += button.enabled ? '1' : '0';
        return on;
    };
    open();
    EXPECT_EQ(row(), "1111011");
    enable_panel_buttons(world.state(), false);
    EXPECT_EQ(row(), "0000000");
    enable_panel_buttons(world.state(), true);
    EXPECT_EQ(row(), "1111011") << "the upload has ended, the window is open";
    EXPECT_FALSE(menu().mnuAdditional.enabled);
    enable_panel_buttons(world.state(), false);
    additional_closed(world.copy());
    EXPECT_EQ(row(), "0000000") << "the window has closed, the upload runs";
    EXPECT_TRUE(menu().mnuAdditional.enabled) << "an upload locks no menu";
    open();
    additional_closed(world.copy());
    EXPECT_EQ(row(), "0000000");
    enable_panel_buttons(world.state(), true);
    EXPECT_EQ(row(), "1111111");
}

TEST_F(AdditionalData, TakesItsReadingsWhetherItIsOpenOrNot) {
    world.send_trains(3);
    EXPECT_FALSE(panel().Additional_Open);
    EXPECT_NE(panel().txtWetBulb.text, "");
    EXPECT_NE(panel().txtMaxDew.text, "");
    EXPECT_EQ(panel().txtRunning.text, "0 Days 0 Hours 0 Minutes");
}

TEST_F(AdditionalData, TellsForHowLongTheProgramHasBeenRunning) {
    const std::string started = panel().txtStarted.text;
    EXPECT_EQ(started, "05 Oct 2026 14:00:00");
    world.run_for(std::chrono::hours{25} + std::chrono::minutes{1});
    cycle(world);
    EXPECT_EQ(panel().txtRunning.text, "1 Day 1 Hour 1 Minute");
    EXPECT_EQ(panel().txtStarted.text, started) << "the start stays";
}

}  // namespace
}  // namespace nimbry::test
