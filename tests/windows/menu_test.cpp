#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <string>
#include <vector>

#include "engine/displays/main_panel.h"
#include "tests/windows/menu_names.h"
#include "tests/windows/sample_states.h"
#include "windows/form1.h"

namespace nimbry::test {
namespace {

using windows::Form1;

std::vector<std::string> names_of(const QList<QAction*>& actions) {
    std::vector<std::string> names;
    for (const QAction* action : actions) {
        if (!action->isSeparator()) names.push_back(action->objectName().toStdString());
    }
    return names;
}

TEST(MenuBar, HasItsEntriesInOrder) {
    WeatherState state;
    reset_main_panel(state);
    const Form1 form(state, {});
    EXPECT_EQ(names_of(form.menuBar()->actions()),
              (std::vector<std::string>{"mnuExit", "mnuSetup", "mnuLogs", "mnuDisplay", "mnuAdditional", "mnuReports",
                                        "mnuHideNow", "mnuHelp"}));
    for (const MenuCase& c : menus) {
        SCOPED_TRACE(c.bar_entry);
        const QMenu* menu = form.findChild<QAction*>(QString::fromLatin1(c.bar_entry))->menu();
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(names_of(menu->actions()), c.entries);
    }
}

TEST(MenuBar, DisablesAnEntryThatDoesNothing) {
    WeatherState state;
    reset_main_panel(state);
    Form1::Actions actions;
    actions.menu["mnuAbout"] = [] {};
    const Form1 form(state, actions);
    EXPECT_TRUE(form.findChild<QAction*>("mnuAbout")->isEnabled());
    EXPECT_FALSE(form.findChild<QAction*>("mnuFHelp")->isEnabled());
    EXPECT_FALSE(form.findChild<QAction*>("mnuAdditional")->isEnabled());
    EXPECT_FALSE(form.findChild<QPushButton*>("fmb_4")->isEnabled()) << "the button that would do the same";
}

TEST(MenuBar, EnablesAnEntryOnlyWhileTheModelDoes) {
    WeatherState state;
    reset_main_panel(state);
    Form1::Actions actions;
    actions.menu["mnuInternet"] = [] {};
    Form1 form(state, actions);
    auto* entry = form.findChild<QAction*>("mnuInternet");
    EXPECT_FALSE(entry->isEnabled()) << "before the first train";
    state.menu.mnuInternet.enabled = true;
    form.refresh();
    EXPECT_TRUE(entry->isEnabled());
    state.menu.mnuLogs.enabled = false;
    form.refresh();
    EXPECT_FALSE(form.findChild<QAction*>("mnuLogs")->isEnabled());
}

TEST(MenuBar, ShowsACheckMarkAsTheModelHasIt) {
    WeatherState state;
    reset_main_panel(state);
    int clicks = 0;
    Form1::Actions actions;
    actions.menu["mnuHide"] = [&clicks] { ++clicks; };
    Form1 form(state, actions);
    auto* entry = form.findChild<QAction*>("mnuHide");
    EXPECT_TRUE(entry->isCheckable());
    EXPECT_FALSE(entry->isChecked());
    entry->trigger();
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(entry->isChecked()) << "the model has not flipped it";
    state.menu.mnuHide.checked = true;
    form.refresh();
    EXPECT_TRUE(entry->isChecked());
}

TEST(MenuBar, SoundsTheClickBeforeItOpensAWindow) {
    WeatherState state;
    reset_main_panel(state);
    std::string done;
    Form1::Actions actions;
    actions.click = [&done] { done += "click "; };
    actions.opens["mnuAbout"] = [&done] { done += "about "; };
    actions.menu["mnuExit1"] = [&done] { done += "exit "; };
    const Form1 form(state, actions);
    EXPECT_TRUE(form.findChild<QAction*>("mnuAbout")->isEnabled());
    form.findChild<QAction*>("mnuAbout")->trigger();
    EXPECT_EQ(done, "click about ");
    form.findChild<QAction*>("mnuExit1")->trigger();
    EXPECT_EQ(done, "click about exit ") << "an event of the engine has its own";
}

TEST(MenuBar, ActsOncePerClick) {
    WeatherState state;
    reset_main_panel(state);
    int exits = 0;
    Form1::Actions actions;
    actions.menu["mnuExit1"] = [&exits] { ++exits; };
    const Form1 form(state, actions);
    form.findChild<QAction*>("mnuExit1")->trigger();
    EXPECT_EQ(exits, 1);
}

struct LetterCase {
    Qt::Key letter;
    const char* opens;
};

TEST(MenuBar, OpensEachMenuWithItsLetter) {
    const LetterCase cases[]{{Qt::Key_X, "mnuExit"},    {Qt::Key_S, "mnuSetup"},   {Qt::Key_L, "mnuLogs"},
                             {Qt::Key_D, "mnuDisplay"}, {Qt::Key_R, "mnuReports"}, {Qt::Key_H, "mnuHelp"}};
    WeatherState state;
    reset_main_panel(state);
    open_menus(state);
    int opened = 0;
    Form1::Actions actions;
    actions.menu["mnuAdditional"] = [&opened] { ++opened; };
    Form1 form(state, actions);
    form.show();
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    for (const LetterCase& c : cases) {
        SCOPED_TRACE(c.opens);
        QMenu* menu = form.findChild<QAction*>(QString::fromLatin1(c.opens))->menu();
        QTest::keyClick(&form, c.letter, Qt::AltModifier);
        EXPECT_TRUE(menu->isVisible());
        menu->close();
    }
    QTest::keyClick(&form, Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(opened, 1);
}

struct ButtonCase {
    const char* button;
    const char* opens;
};

TEST(ButtonRow, OpensTheMenuOfItsName) {
    const ButtonCase cases[]{{"fmb_0", "mnuLogs"},    {"fmb_1", "mnuSetup"},   {"fmb_2", "mnuExit"},
                             {"fmb_3", "mnuDisplay"}, {"fmb_5", "mnuReports"}, {"fmb_6", "mnuHelp"}};
    WeatherState state;
    reset_main_panel(state);
    Form1 form(state, {});
    form.show();
    QApplication::processEvents();
    for (const ButtonCase& c : cases) {
        SCOPED_TRACE(c.button);
        QMenu* menu = form.findChild<QAction*>(QString::fromLatin1(c.opens))->menu();
        form.findChild<QPushButton*>(QString::fromLatin1(c.button))->click();
        EXPECT_TRUE(menu->isVisible());
        menu->close();
    }
}

TEST(ButtonRow, ActsAtOnceWithAdditional) {
    WeatherState state;
    reset_main_panel(state);
    int opened = 0;
    Form1::Actions actions;
    actions.menu["mnuAdditional"] = [&opened] { ++opened; };
    Form1 form(state, actions);
    form.show();
    form.findChild<QPushButton*>("fmb_4")->click();
    EXPECT_EQ(opened, 1);
}

TEST(ButtonRow, SaysInWordsWhatItsRedMeans) {
    WeatherState state;
    reset_main_panel(state);
    Form1 form(state, {});
    const auto* button = form.findChild<QPushButton*>("fmb_0");
    const QColor usual = button->palette().color(QPalette::ButtonText);
    state.menu.fmb[0].fore = 255;
    form.refresh();
    EXPECT_NE(button->palette().color(QPalette::ButtonText), usual);
    EXPECT_EQ(button->accessibleDescription(), "An upload is under way");
    state.menu.fmb[0].enabled = false;
    form.refresh();
    EXPECT_NE(button->palette().color(QPalette::Disabled, QPalette::ButtonText),
              form.palette().color(QPalette::Disabled, QPalette::ButtonText))
        << "it stays red while it is disabled";
    state.menu.fmb[0].fore = 0;
    form.refresh();
    EXPECT_EQ(button->accessibleDescription(), "");
}

}  // namespace
}  // namespace nimbry::test
