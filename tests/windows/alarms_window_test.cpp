#include "windows/alarms_window.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "engine/displays/main_panel.h"
#include "tests/windows/comes_about.h"
#include "windows/accessibility.h"
#include "windows/setting_bar.h"
#include "windows/setup_dialogs.h"

namespace nimbry::test {
namespace {

using windows::AlarmsWindow;
using windows::SettingBar;

class AlarmsDialogWindow : public testing::Test {
protected:
    AlarmsDialogWindow() {
        reset_main_panel(state);
        windows::install_accessibility();
    }

    void open() {
        window =
            std::make_unique<AlarmsWindow>(state, [this](const AlarmsDialog& values) { accepted.push_back(values); });
        window->present();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    template <class Widget>
    Widget* find(std::string_view name) {
        auto* widget = window->findChild<Widget*>(QString::fromUtf8(name.data(), static_cast<int>(name.size())));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QCheckBox* check(const char* name) { return find<QCheckBox>(name); }
    SettingBar* bar(const char* name) { return find<SettingBar>(name); }
    QString text(const char* name) { return find<QLabel>(name)->text(); }
    void press(const char* name, Qt::Key key) {
        find<QWidget>(name)->setFocus(Qt::TabFocusReason);
        QTest::keyClick(find<QWidget>(name), key);
    }
    void accept() { find<QPushButton>("Command1")->click(); }

    WeatherState state;
    AlarmsDialog& committed = state.alarms.frmAlarms;
    std::unique_ptr<AlarmsWindow> window;
    std::vector<AlarmsDialog> accepted;
};

TEST_F(AlarmsDialogWindow, ShowsEveryValueInForce) {
    float value = 1;
    for (const AlarmRow& row : alarm_rows()) {
        committed.*row.threshold = range_of(row.quantity).first < 0 ? value / 2 : 800 + value;
        value += 1;
    }
    committed.AHumHi = 77;
    committed.AHumLo = 11;
    committed.AWindHi = 13;
    committed.chkAInTempLo = committed.chkADewCur = committed.chkAlarmMail = true;
    open();
    EXPECT_EQ(window->windowTitle(), "Nimbry Alarms Setup");
    for (const AlarmRow& row : alarm_rows()) {
        SCOPED_TRACE(row.key);
        const AlarmRange range = range_of(row.quantity);
        EXPECT_EQ(find<SettingBar>(row.scroll_bar)->minimum(), range.first);
        EXPECT_EQ(find<SettingBar>(row.scroll_bar)->maximum(), range.last);
        EXPECT_EQ(find<SettingBar>(row.scroll_bar)->place(), committed.*row.threshold);
        EXPECT_EQ(find<QCheckBox>(row.check_box)->isChecked(), row.check_box == "chkAInTempLo");
    }
    EXPECT_TRUE(check("chkADewCur")->isChecked());
    EXPECT_TRUE(check("chkAlarmMail")->isChecked());
    EXPECT_FALSE(check("chkASound")->isChecked());
    EXPECT_EQ(text("lblATempHi"), QStringLiteral("0.5 \u00B0C"));
    EXPECT_EQ(text("lblAHumHi"), "77 %");
    EXPECT_EQ(text("lblAWindHi"), "46.8 km/h");
}

TEST_F(AlarmsDialogWindow, EditsItsValuesByCheckBoxAndBar) {
    open();
    check("chkAOuTempHi")->click();
    check("chkASound")->click();
    bar("hsbATempHi")->setValue(305);
    EXPECT_EQ(text("lblATempHi"), QStringLiteral("30.5 \u00B0C"));
    bar("hsbARainAm")->setValue(40);
    EXPECT_EQ(text("lblARainAm"), "40 mm");
    EXPECT_EQ(committed, AlarmsDialog{}) << "nothing is in force before the accept button";
    accept();
    AlarmsDialog expected;
    expected.chkAOuTempHi = expected.chkASound = true;
    expected.ATempHi = 30.5F;
    expected.ARainAm = 40;
    EXPECT_EQ(accepted, std::vector<AlarmsDialog>{expected});
    EXPECT_FALSE(window->isVisible());
}

TEST_F(AlarmsDialogWindow, EveryControlEditsTheValueOfItsName) {
    open();
    AlarmsDialog expected;
    for (const AlarmRow& row : alarm_rows()) {
        find<QCheckBox>(row.check_box)->click();
        auto* moved = find<SettingBar>(row.scroll_bar);
        moved->setValue(moved->value() + 1);
        expected.*row.enabled = true;
        expected.*row.threshold = moved->place();
    }
    for (const AlarmSwitch& which : alarm_switches()) {
        find<QCheckBox>(which.check_box)->click();
        expected.*which.enabled = true;
    }
    EXPECT_EQ(expected.ATempHi, 37.9F);
    EXPECT_EQ(expected.ABarLo, 996);
    accept();
    EXPECT_EQ(accepted, std::vector<AlarmsDialog>{expected});
}

struct CloseCase {
    const char* how;
    void (*close)(AlarmsWindow&);
};

TEST_F(AlarmsDialogWindow, ClosedOtherwiseItDropsTheCopy) {
    for (const CloseCase& c :
         {CloseCase{"by Escape", [](AlarmsWindow& w) { QTest::keyClick(&w, Qt::Key_Escape); }},
          CloseCase{"by the close mark", [](AlarmsWindow& w) { w.close(); }},
          CloseCase{"by Cancel", [](AlarmsWindow& w) { w.findChild<QPushButton*>("cmdCancel")->click(); }}}) {
        SCOPED_TRACE(c.how);
        open();
        check("chkABarHi")->click();
        bar("hsbABarHi")->setValue(1000);
        c.close(*window);
        EXPECT_FALSE(window->isVisible());
        EXPECT_TRUE(accepted.empty());
        window->present();
        EXPECT_FALSE(check("chkABarHi")->isChecked()) << "a fresh copy";
        EXPECT_EQ(text("lblABarHi"), "1030 HPA");
    }
}

TEST_F(AlarmsDialogWindow, PresentedAgainWhileOpenItKeepsWhatWasEdited) {
    open();
    check("chkABarHi")->click();
    window->present();
    EXPECT_TRUE(check("chkABarHi")->isChecked());
}

TEST_F(AlarmsDialogWindow, KeepsAValueThatNoBarReachesUntilItsBarIsMoved) {
    committed.ATempHi = 80;     // the bar ends at 60
    committed.ADewHi = 12.34F;  // between two tenths
    committed.AWindHi = 1e9F;
    open();
    EXPECT_EQ(bar("hsbATempHi")->value(), 600);
    EXPECT_EQ(text("lblATempHi"), QStringLiteral("80 \u00B0C"));
    EXPECT_EQ(bar("hsbADewHi")->value(), 123);
    EXPECT_EQ(text("lblADewHi"), QStringLiteral("12.34 \u00B0C"));
    bar("hsbATempLo")->setValue(20);
    press("hsbATempHi", Qt::Key_Right);
    EXPECT_EQ(text("lblATempHi"), QStringLiteral("80 \u00B0C")) << "the bar is at its end";
    press("hsbADewHi", Qt::Key_Right);
    EXPECT_EQ(text("lblADewHi"), QStringLiteral("12.4 \u00B0C"));
    accept();
    ASSERT_EQ(accepted.size(), 1u);
    EXPECT_EQ(accepted[0].ATempHi, 80);
    EXPECT_EQ(accepted[0].ADewHi, 12.4F);
    EXPECT_EQ(accepted[0].AWindHi, 1e9F);
}

// What changes while it is open

TEST_F(AlarmsDialogWindow, FollowsTheUnitsOfDisplay) {
    open();
    bar("hsbAWindHi")->setValue(17);
    state.settings.fTempF = state.settings.fBarinhg = state.settings.fRainin = state.settings.fWindknots = true;
    state.units = units_from(state.settings);
    window->refresh();
    EXPECT_EQ(text("lblATempHi"), QStringLiteral("100 \u00B0F"));
    EXPECT_EQ(text("lblADewLo"), QStringLiteral("33.8 \u00B0F"));
    EXPECT_EQ(text("lblABarHi"), "30.41 In.Hg");
    EXPECT_EQ(text("lblARainHi"), "1.97 In./Hr");
    EXPECT_EQ(text("lblARainAm"), "0.98 In.");
    EXPECT_EQ(text("lblAWindHi"), "33.5 KT");
    accept();
    EXPECT_EQ(accepted[0].ATempHi, 37.8F) << "a unit changes no threshold";
    EXPECT_EQ(accepted[0].AWindHi, 17);
}

TEST_F(AlarmsDialogWindow, NamesTheChangeoverInForce) {
    open();
    EXPECT_EQ(check("chkARainAm")->text().remove('&'), "Alarm if Rainfall since 9.00am is more than ...");
    state.settings.tmidnight = true;
    window->refresh();
    EXPECT_EQ(check("chkARainAm")->text().remove('&'), "Alarm if Rainfall since midnight is more than ...");
}

TEST_F(AlarmsDialogWindow, TakesOverWhatIsSetElsewhere) {
    open();
    bar("hsbABarHi")->setValue(1020);
    committed.ATempHi = 33;
    committed.chkADewHi = true;
    window->refresh();
    EXPECT_EQ(bar("hsbATempHi")->place(), 33);
    EXPECT_EQ(text("lblATempHi"), QStringLiteral("33 \u00B0C"));
    EXPECT_TRUE(check("chkADewHi")->isChecked());
    EXPECT_EQ(bar("hsbABarHi")->place(), 1020) << "what was edited stays";
}

// Keyboard, mouse, screen reader

struct KeyCase {
    Qt::Key key;
    int steps;
};

TEST_F(AlarmsDialogWindow, ABarGoesByTenthsOrUnitsAndByTens) {
    open();
    for (const KeyCase& c : {KeyCase{Qt::Key_Right, 1}, KeyCase{Qt::Key_Left, -1}, KeyCase{Qt::Key_Up, 1},
                             KeyCase{Qt::Key_Down, -1}, KeyCase{Qt::Key_PageUp, 10}, KeyCase{Qt::Key_PageDown, -10}}) {
        for (const char* name : {"hsbATempHi", "hsbAHumHi"}) {
            SCOPED_TRACE(name);
            bar(name)->setValue(50);
            press(name, c.key);
            EXPECT_EQ(bar(name)->value(), 50 + c.steps);
        }
    }
    press("hsbATempHi", Qt::Key_Home);
    EXPECT_EQ(text("lblATempHi"), QStringLiteral("-40 \u00B0C"));
    press("hsbATempHi", Qt::Key_End);
    EXPECT_EQ(text("lblATempHi"), QStringLiteral("60 \u00B0C"));
}

TEST_F(AlarmsDialogWindow, TheWheelMovesABarOnlyWhileItHasTheFocus) {
    open();
    check("chkAOuTempHi")->setFocus();
    const auto roll = [this] {
        SettingBar* target = bar("hsbATempHi");
        const QPointF middle = target->rect().center();
        QWheelEvent wheel(middle, target->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(target, &wheel);
    };
    roll();
    EXPECT_EQ(bar("hsbATempHi")->value(), 378);
    bar("hsbATempHi")->setFocus();
    roll();
    EXPECT_GT(bar("hsbATempHi")->value(), 378);
}

TEST_F(AlarmsDialogWindow, TabGoesRowByRowThenToTheButtons) {
    open();
    check("chkAOuTempHi")->setFocus(Qt::TabFocusReason);
    std::vector<std::string> expected;
    for (const char* row :
         {"AOuTempHi ATempHi", "AOuTempLo ATempLo", "AOuHumHi AHumHi", "AOuHumLo AHumLo", "ABarHi ABarHi",
          "ABarLo ABarLo", "AWindHi AWindHi", "ARainHi ARainHi", "ARainAm ARainAm", "ADewHi ADewHi", "ADewLo ADewLo"}) {
        const std::string pair = row;
        expected.push_back("chk" + pair.substr(0, pair.find(' ')));
        expected.push_back("hsb" + pair.substr(pair.find(' ') + 1));
    }
    for (const char* name : {"chkADewCur", "chkAInTempHi", "hsbAItempHi", "chkAInTempLo", "hsbAItempLo", "chkASound",
                             "chkAlarmMail", "Command1", "cmdCancel"}) {
        expected.emplace_back(name);
    }
    std::vector<std::string> visited;
    for (std::size_t n = 0; n < expected.size(); ++n) {
        visited.push_back(QApplication::focusWidget()->objectName().toStdString());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(visited, expected);
    EXPECT_EQ(QApplication::focusWidget(), check("chkAOuTempHi")) << "and round again";
}

TEST_F(AlarmsDialogWindow, EnterAcceptsFromAnywhere) {
    open();
    press("hsbATempHi", Qt::Key_Return);
    EXPECT_EQ(accepted.size(), 1u);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(AlarmsDialogWindow, EachCheckBoxHasALetterOfItsOwn) {
    open();
    std::set<QString> letters;
    int boxes = 0;
    for (const QCheckBox* box : window->findChildren<QCheckBox*>()) {
        ++boxes;
        const auto mark = box->text().indexOf(u'&');
        ASSERT_GE(mark, 0) << box->text().toStdString();
        EXPECT_TRUE(letters.insert(box->text().mid(mark + 1, 1).toUpper()).second) << box->text().toStdString();
        if (box->objectName() != "chkASound" && box->objectName() != "chkAlarmMail") {
            EXPECT_TRUE(box->text().startsWith("Alarm if ")) << box->text().toStdString();
        }
    }
    EXPECT_EQ(boxes, 16);
    QTest::keyClick(window.get(), Qt::Key_W, Qt::AltModifier);
    EXPECT_TRUE(comes_about([this] { return check("chkAWindHi")->isChecked(); }));
}

TEST_F(AlarmsDialogWindow, ABarTellsItsNameItsNumberAndItsText) {
    open();
    SettingBar* told = bar("hsbATempHi");
    EXPECT_EQ(told->accessibleName(), "Alarm if Outdoor Temperature is more than");
    EXPECT_EQ(told->accessibleDescription(), QStringLiteral("37.8 \u00B0C"));
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(told);
    ASSERT_NE(accessible, nullptr);
    ASSERT_NE(accessible->valueInterface(), nullptr);
    EXPECT_EQ(accessible->valueInterface()->currentValue().toDouble(), 37.8);
    EXPECT_EQ(accessible->valueInterface()->minimumValue().toDouble(), -40);
    EXPECT_EQ(accessible->valueInterface()->maximumValue().toDouble(), 60);
    EXPECT_EQ(accessible->valueInterface()->minimumStepSize().toDouble(), 0.1);
    accessible->valueInterface()->setCurrentValue(21.5);
    EXPECT_EQ(text("lblATempHi"), QStringLiteral("21.5 \u00B0C"));
    EXPECT_EQ(told->accessibleDescription(), QStringLiteral("21.5 \u00B0C"));
}

TEST_F(AlarmsDialogWindow, ScrollsItsRowsOnASmallScreenAndKeepsItsButtons) {
    open();
    window->resize(window->width(), 300);
    QApplication::processEvents();
    EXPECT_TRUE(window->rect().contains(find<QPushButton>("Command1")->geometry()));
    press("chkAlarmMail", Qt::Key_Space);
    const QRect seen(check("chkAlarmMail")->mapTo(window.get(), QPoint(0, 0)), check("chkAlarmMail")->size());
    EXPECT_TRUE(window->rect().contains(seen)) << "the focus brings its row into view";
}

// The window among the others

TEST(SetupDialogs, AreOneOfEach) {
    WeatherState state;
    reset_main_panel(state);
    QWidget parent;
    windows::SetupDialogs::Actions actions;
    actions.units.opened = actions.comms.opened = actions.internet.opened = [] {};
    actions.comms.serial_devices = [] { return std::vector<std::string>{}; };
    windows::SetupDialogs dialogs(state, actions, &parent);
    struct Case {
        const char* name;
        void (windows::SetupDialogs::*show)();
    };
    for (const Case& c :
         {Case{"frmAlarms", &windows::SetupDialogs::show_alarms},
          Case{"NimbryLatlong", &windows::SetupDialogs::show_location},
          Case{"frmSetupUnits", &windows::SetupDialogs::show_units}, Case{"Form2", &windows::SetupDialogs::show_comms},
          Case{"NimbryFTPSetup", &windows::SetupDialogs::show_internet}}) {
        SCOPED_TRACE(c.name);
        (dialogs.*c.show)();
        (dialogs.*c.show)();
        const auto windows = parent.findChildren<QDialog*>(QString::fromLatin1(c.name));
        ASSERT_EQ(windows.size(), 1);
        EXPECT_TRUE(windows.front()->isVisible());
    }
}

TEST(SetupDialogs, ShowOneAlarmDialogAndHandItsValuesOn) {
    WeatherState state;
    reset_main_panel(state);
    QWidget parent;
    std::vector<AlarmsDialog> accepted;
    windows::SetupDialogs dialogs(
        state, {.accept_alarms = [&](const AlarmsDialog& values) { accepted.push_back(values); }}, &parent);
    dialogs.refresh();
    dialogs.show_alarms();
    dialogs.show_alarms();
    ASSERT_EQ(parent.findChildren<AlarmsWindow*>().size(), 1);
    auto* window = parent.findChild<AlarmsWindow*>("frmAlarms");
    state.alarms.frmAlarms.chkAWindHi = true;
    dialogs.refresh();
    EXPECT_TRUE(window->findChild<QCheckBox*>("chkAWindHi")->isChecked());
    window->findChild<QPushButton*>("Command1")->click();
    ASSERT_EQ(accepted.size(), 1u);
    EXPECT_TRUE(accepted[0].chkAWindHi);
}

}  // namespace
}  // namespace nimbry::test
