// The main window with a tray to hide in, and with one that comes and goes.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <memory>
#include <utility>

#include "engine/displays/main_panel.h"
#include "windows/form1.h"
#include "windows/tray_icon.h"

namespace nimbry::test {
namespace {

using windows::Form1;
using windows::TrayIcon;

constexpr std::pair shown(false, false), minimised(true, false), hidden(true, true);

class Form1AndTheTray : public testing::Test {
protected:
    Form1AndTheTray() {
        reset_main_panel(state);
        state.panel.Text2[0].text = "+9.8";
        state.panel.Text2[2].text = "93 %";
        Form1::Actions actions;
        actions.click = [this] { ++clicks; };
        actions.moved = [this](bool is_minimised, bool in_tray) { place_window(state, is_minimised, in_tray); };
        form = std::make_unique<Form1>(state, actions, [this] { return has_tray; });
        tray = form->findChild<TrayIcon*>();
        QObject::connect(tray, &TrayIcon::told, [this](const QString& title) { told.append(title); });
        form->show();
        settle();
    }

    void settle() {
        QApplication::processEvents();
        form->refresh();
        QApplication::processEvents();
    }
    void minimise() {
        form->showMinimized();
        settle();
    }
    void choose(const char* entry) {
        form->findChild<QAction*>(QString::fromLatin1(entry))->trigger();
        settle();
    }
    [[nodiscard]] std::pair<bool, bool> place() const { return {state.window.minimised, state.window.in_tray}; }
    [[nodiscard]] bool offers_to_hide() const { return tray->menu().actions()[0]->isEnabled(); }
    [[nodiscard]] bool offers_to_restore() const { return tray->menu().actions()[1]->isEnabled(); }
    void tell(const char* title) { form->tell_in_tray({.title = title, .text = "..."}); }

    WeatherState state;
    bool has_tray = true;
    int clicks = 0;
    QStringList told;
    std::unique_ptr<Form1> form;
    TrayIcon* tray = nullptr;
};

TEST_F(Form1AndTheTray, MinimisedItStaysInTheTaskBarWithTheWeatherInItsCaption) {
    minimise();
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(form->isMinimized());
    EXPECT_EQ(place(), minimised);
    EXPECT_EQ(form->windowTitle(), "+9.8 : 93 %");
    EXPECT_FALSE(offers_to_hide());
    EXPECT_TRUE(offers_to_restore());
    choose("mnuRestore");
    EXPECT_FALSE(form->isMinimized());
    EXPECT_EQ(place(), shown);
    EXPECT_EQ(form->windowTitle(), "Nimbry 2.02 - WM-918 Weather Monitoring");
    EXPECT_TRUE(offers_to_hide());
    EXPECT_FALSE(offers_to_restore());
}

TEST_F(Form1AndTheTray, MinimisedItGoesToTheTrayIfThePersonWantsThat) {
    state.menu.mnusystray.checked = true;
    minimise();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(place(), hidden);
    EXPECT_EQ(form->windowTitle(), "Nimbry 2.02 - WM-918 Weather Monitoring");
    EXPECT_TRUE(offers_to_restore());
    choose("mnuRestore");
    EXPECT_TRUE(form->isVisible());
    EXPECT_FALSE(form->isMinimized());
    EXPECT_EQ(place(), shown);
    minimise();
    EXPECT_EQ(place(), hidden) << "and again";
}

TEST_F(Form1AndTheTray, MinimisedItStaysInTheTaskBarWhileThereIsNoTray) {
    state.menu.mnusystray.checked = true;
    has_tray = false;
    minimise();
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(place(), minimised);
    form->restore();
    has_tray = true;
    minimise();
    EXPECT_EQ(place(), hidden) << "a tray that has come later is used like any other";
}

TEST_F(Form1AndTheTray, HidesAndComesBackByTheEntriesWithAClickEach) {
    int heard = 0;
    for (const char* entry : {"mnuHideNow", "tray_mnuHideNow"}) {
        SCOPED_TRACE(entry);
        choose(entry);
        EXPECT_FALSE(form->isVisible());
        EXPECT_EQ(place(), hidden);
        EXPECT_FALSE(offers_to_hide());
        EXPECT_EQ(clicks, ++heard);
        choose("mnuRestore");
        EXPECT_TRUE(form->isVisible());
        EXPECT_EQ(place(), shown);
        EXPECT_EQ(clicks, ++heard);
    }
}

TEST_F(Form1AndTheTray, ComesBackAtAClickOnTheIconWhichIsNoMenuEntry) {
    choose("mnuHideNow");
    const int heard = clicks;
    emit tray->findChild<QSystemTrayIcon*>()->activated(QSystemTrayIcon::Trigger);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(place(), shown);
    EXPECT_EQ(clicks, heard);
}

TEST_F(Form1AndTheTray, FollowsTheModelIntoTheTrayAndOutOfIt) {
    place_window(state, true, true);
    settle();
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(place(), hidden);
    place_window(state, false, false);
    settle();
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(place(), shown);
}

TEST_F(Form1AndTheTray, IsMinimisedWhereTheModelHidesItAndThereIsNoTray) {
    has_tray = false;
    place_window(state, true, true);
    settle();
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(form->isMinimized());
    EXPECT_EQ(place(), minimised);
}

TEST_F(Form1AndTheTray, ComesToTheTaskBarWhenTheTrayGoes) {
    choose("mnuHideNow");
    form->refresh();
    EXPECT_FALSE(form->isVisible()) << "the tray is there";
    has_tray = false;
    settle();
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(form->isMinimized());
    EXPECT_EQ(place(), minimised);
}

TEST_F(Form1AndTheTray, TellsANoticeThereWhileItIsNotToBeSeen) {
    tell("shown");
    minimise();
    tell("minimised");
    form->restore();
    settle();
    choose("mnuHideNow");
    tell("hidden");
    EXPECT_EQ(told, (QStringList{"minimised", "hidden"}));
    has_tray = false;
    tell("hidden without a tray");
    settle();
    tell("minimised without a tray");
    EXPECT_EQ(told.size(), 2);
}

}  // namespace
}  // namespace nimbry::test
