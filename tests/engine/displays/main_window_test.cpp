#include "engine/displays/main_window.h"

#include <gtest/gtest.h>

#include "engine/core/weather_state.h"

namespace nimbry {
namespace {

constexpr const char* plain = "Nimbry 2.02 - WM-918 Weather Monitoring";

struct CaptionCase {
    const char* what;
    bool minimised, in_tray;
    const char* temperature;
    const char* humidity;
    const char* caption;
};

TEST(MainWindowCaption, ShowsTheWeatherOnlyWhileMinimisedOutsideTheTray) {
    const CaptionCase cases[] = {
        {"shown", false, false, "+9.8 \260C", "93 %", plain},
        {"minimised", true, false, "+9.8 \260C", " 93 % ", "+9.8 \260C : 93 %"},
        {"minimised before any reading", true, false, "", "", " : "},
        {"in the tray", true, true, "+9.8 \260C", "93 %", plain},
    };
    for (const CaptionCase& row : cases) {
        SCOPED_TRACE(row.what);
        MainWindow window;
        window.minimised = row.minimised;
        window.in_tray = row.in_tray;
        MainPanel panel;
        panel.Text2[0].text = row.temperature;
        panel.Text2[2].text = row.humidity;
        update_caption(window, panel);
        EXPECT_EQ(window.caption, row.caption);
    }
}

TEST(MainWindowCaption, IsPlainAtFirstAndAgainWhenTheWindowComesBack) {
    MainWindow window;
    const MainPanel panel;
    EXPECT_EQ(window.caption, plain);
    window.minimised = true;
    update_caption(window, panel);
    window.minimised = false;
    update_caption(window, panel);
    EXPECT_EQ(window.caption, plain);
}

struct PlaceCase {
    const char* what;
    bool minimised, in_tray;
    const char* caption;
};

TEST(MainWindowPlace, TakesTheCaptionAndTheTraysPairAlong) {
    const PlaceCase cases[] = {
        {"minimised", true, false, "+9.8 : 93 %"},
        {"in the tray", true, true, plain},
        {"shown", false, false, plain},
    };
    WeatherState state;
    reset_main_panel(state);
    state.panel.Text2[0].text = "+9.8";
    state.panel.Text2[2].text = "93 %";
    for (const PlaceCase& row : cases) {
        SCOPED_TRACE(row.what);
        place_window(state, row.minimised, row.in_tray);
        EXPECT_EQ(state.window.minimised, row.minimised);
        EXPECT_EQ(state.window.in_tray, row.in_tray);
        EXPECT_EQ(state.window.caption, row.caption);
        EXPECT_EQ(state.menu.mnuHideNow.enabled, !row.minimised);
        EXPECT_EQ(state.menu.mnuRestore.enabled, row.minimised);
    }
}

}  // namespace
}  // namespace nimbry
