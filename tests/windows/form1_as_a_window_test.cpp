#include "windows/form1.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <vector>

namespace nimbry::test {
namespace {

using windows::Form1;

// The window as a whole.

TEST(Form1AsAWindow, LeavesTheClosingToTheEngine) {
    WeatherState state;
    reset_main_panel(state);
    int asked = 0;
    Form1::Actions actions;
    actions.close = [&asked] { ++asked; };
    Form1 form(state, actions);
    form.show();
    EXPECT_FALSE(form.close());
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(form.isVisible());
}

TEST(Form1AsAWindow, BearsTheCaptionOfTheModel) {
    WeatherState state;
    reset_main_panel(state);
    Form1 form(state, {});
    EXPECT_EQ(form.windowTitle(), "Nimbry 2.02 - WM-918 Weather Monitoring");
    state.window.caption = "+9.8 \260C : 93 %";
    form.refresh();
    EXPECT_EQ(form.windowTitle(), QStringLiteral("+9.8 \u00B0C : 93 %"));
}

TEST(Form1AsAWindow, TellsTheModelWhereItIs) {
    WeatherState state;
    reset_main_panel(state);
    std::vector<std::pair<bool, bool>> places;
    Form1::Actions actions;
    actions.moved = [&](bool minimised, bool in_tray) {
        places.emplace_back(minimised, in_tray);
        state.window.minimised = minimised;
        state.window.in_tray = in_tray;
    };
    Form1 form(state, actions);
    form.show();
    form.showMinimized();
    QApplication::processEvents();
    ASSERT_FALSE(places.empty());
    EXPECT_EQ(places.back(), std::pair(true, false));
    form.restore();
    QApplication::processEvents();
    EXPECT_EQ(places.back(), std::pair(false, false));
    EXPECT_FALSE(form.isMinimized());
}

TEST(Form1AsAWindow, MinimisesWhenTheModelSaysSo) {
    WeatherState state;
    reset_main_panel(state);
    Form1 form(state, {});
    form.show();
    state.window.minimised = true;
    form.refresh();
    EXPECT_TRUE(form.isMinimized());
    state.window.minimised = false;
    form.refresh();
    EXPECT_FALSE(form.isMinimized());
}

TEST(Form1AsAWindow, IsMinimisedWhereThereIsNoTrayToHideIn) {
    WeatherState state;
    reset_main_panel(state);
    std::pair<bool, bool> place;
    int clicks = 0;
    Form1::Actions actions;
    actions.moved = [&place](bool minimised, bool in_tray) { place = {minimised, in_tray}; };
    actions.click = [&clicks] { ++clicks; };
    Form1 form(state, actions);
    form.show();
    form.findChild<QAction*>("mnuHideNow")->trigger();
    EXPECT_TRUE(form.isVisible());
    EXPECT_TRUE(form.isMinimized());
    EXPECT_EQ(place, std::pair(true, false));
    EXPECT_EQ(clicks, 1);
}

TEST(Form1AsAWindow, FindsTheWidgetThatANoticeStandsAt) {
    WeatherState state;
    reset_main_panel(state);
    const Form1 form(state, {});
    ASSERT_NE(form.widget_of("TxtWindChill"), nullptr);
    EXPECT_EQ(form.widget_of("TxtWindChill")->objectName(), "TxtWindChill");
    EXPECT_EQ(form.widget_of("Text2(6)")->objectName(), "Text2_6");
    EXPECT_EQ(form.widget_of("NoSuchBox"), nullptr);
}

}  // namespace
}  // namespace nimbry::test
