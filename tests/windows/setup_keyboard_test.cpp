// What every setup window promises to somebody without a mouse, or without eyes.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "engine/displays/main_panel.h"
#include "windows/accessibility.h"
#include "windows/alarms_window.h"
#include "windows/comment_window.h"
#include "windows/comms_window.h"
#include "windows/internet_window.h"
#include "windows/location_window.h"
#include "windows/marquee_window.h"
#include "windows/rain_days_window.h"
#include "windows/setting_bar.h"
#include "windows/units_window.h"

namespace nimbry::test {
namespace {

struct Asked {
    int accepted = 0;
};

struct WindowCase {
    const char* name;
    std::unique_ptr<windows::SetupDialog> (*make)(const WeatherState&, Asked&);
};

const WindowCase cases[]{
    {"alarms",
     [](const WeatherState& state, Asked& asked) -> std::unique_ptr<windows::SetupDialog> {
         return std::make_unique<windows::AlarmsWindow>(state, [&asked](const AlarmsDialog&) { ++asked.accepted; });
     }},
    {"location",
     [](const WeatherState& state, Asked& asked) -> std::unique_ptr<windows::SetupDialog> {
         return std::make_unique<windows::LocationWindow>(state, [&asked](const LocationDialog&) { ++asked.accepted; });
     }},
    {"marquee",
     [](const WeatherState& state, Asked& asked) -> std::unique_ptr<windows::SetupDialog> {
         return std::make_unique<windows::MarqueeWindow>(state, [&asked](const MarqueeDialog&) { ++asked.accepted; });
     }},
    {"units",
     [](const WeatherState& state, Asked& asked) -> std::unique_ptr<windows::SetupDialog> {
         windows::UnitsWindow::Actions actions;
         actions.opened = actions.closed = [] {};
         actions.accepted = [&asked](const UnitsDialog&) { ++asked.accepted; };
         actions.choose_changeover = actions.set_one_hour = [](bool) {};
         actions.choose_rollover = [](UnitsDialog&, bool) {};
         return std::make_unique<windows::UnitsWindow>(state, actions);
     }},
    {"communications",
     [](const WeatherState& state, Asked& asked) -> std::unique_ptr<windows::SetupDialog> {
         windows::CommsWindow::Actions actions;
         actions.serial_devices = [] { return std::vector<std::string>{"/dev/ttyUSB0"}; };
         actions.opened = actions.closed = [] {};
         actions.ticked_role = [](bool&) {};
         actions.add_address = [](CommsDialog&) {};
         actions.accepted = [&asked](CommsDialog&) {
             ++asked.accepted;
             return true;
         };
         return std::make_unique<windows::CommsWindow>(state, actions);
     }},
    {"comment",
     [](const WeatherState& state, Asked& asked) -> std::unique_ptr<windows::SetupDialog> {
         return std::make_unique<windows::CommentWindow>(state, Comment::first,
                                                         [&asked](const CommentDialog&) { ++asked.accepted; });
     }},
    {"rain_days",
     [](const WeatherState& state, Asked& asked) -> std::unique_ptr<windows::SetupDialog> {
         return std::make_unique<windows::RainDaysWindow>(state, [&asked](const RainDaysDialog&) { ++asked.accepted; });
     }},
    {"internet",
     [](const WeatherState& state, Asked& asked) -> std::unique_ptr<windows::SetupDialog> {
         windows::InternetWindow::Actions actions;
         actions.opened = actions.closed = [] {};
         actions.accepted = [&asked](const InternetDialog&) { ++asked.accepted; };
         return std::make_unique<windows::InternetWindow>(state, actions);
     }},
};

class SetupKeyboard : public testing::TestWithParam<WindowCase> {
protected:
    SetupKeyboard() {
        windows::install_accessibility();
        reset_main_panel(state);
        window = GetParam().make(state, asked);
        window->present();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    /// The controls that a person can work with.
    QList<QWidget*> controls() {
        QList<QWidget*> found;
        for (QWidget* widget : window->findChildren<QWidget*>()) {
            const bool is_control = qobject_cast<QAbstractButton*>(widget) != nullptr ||
                                    qobject_cast<QComboBox*>(widget) != nullptr ||
                                    qobject_cast<windows::SettingBar*>(widget) != nullptr ||
                                    qobject_cast<QAbstractItemView*>(widget) != nullptr ||
                                    (qobject_cast<QLineEdit*>(widget) != nullptr &&
                                     qobject_cast<QComboBox*>(widget->parentWidget()) == nullptr &&
                                     qobject_cast<QAbstractSpinBox*>(widget->parentWidget()) == nullptr) ||
                                    qobject_cast<QAbstractSpinBox*>(widget) != nullptr;
            if (is_control && widget->isVisible() && widget->isEnabled()) found.append(widget);
        }
        return found;
    }

    WeatherState state;
    Asked asked;
    std::unique_ptr<windows::SetupDialog> window;
};

TEST_P(SetupKeyboard, TheWindowHoldsNothingUp) {
    EXPECT_FALSE(window->isModal());
}

TEST_P(SetupKeyboard, EnterAcceptsAndEscapeDoesNot) {
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_EQ(asked.accepted, 1);
    EXPECT_FALSE(window->isVisible());
    window->present();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_EQ(asked.accepted, 1);
    EXPECT_FALSE(window->isVisible());
}

TEST_P(SetupKeyboard, TabGoesThroughEveryControlOnceAndComesBack) {
    // A group of options is one stop; arrows go on from there.
    std::set<QWidget*> stops;
    QWidget* const first = QApplication::focusWidget();
    ASSERT_NE(first, nullptr);
    QWidget* now = first;
    do {
        EXPECT_TRUE(stops.insert(now).second) << now->objectName().toStdString();
        QTest::keyClick(now, Qt::Key_Tab);
        now = QApplication::focusWidget();
    } while (now != first && stops.size() < 200);
    for (QWidget* control : controls()) {
        const auto* option = qobject_cast<QAbstractButton*>(control);
        const bool in_group = option != nullptr && option->autoExclusive() && !option->isChecked();
        const bool by_its_own =
            stops.count(control) > 0 || (control->focusProxy() != nullptr && stops.count(control->focusProxy()) > 0);
        EXPECT_TRUE(by_its_own || in_group) << control->objectName().toStdString();
    }
}

TEST_P(SetupKeyboard, EveryCheckBoxAndOptionHasALetterOfItsOwn) {
    std::map<QKeySequence, std::string> letters;
    for (QWidget* control : controls()) {
        auto* button = qobject_cast<QAbstractButton*>(control);
        if (button == nullptr || qobject_cast<QToolButton*>(button) != nullptr) continue;  // one belongs to its field
        const std::string name = button->objectName().toStdString();
        const auto* push = qobject_cast<QPushButton*>(button);
        if ((push != nullptr && push->isDefault()) || name == "cmdCancel") continue;  // Enter and Escape
        if (name.starts_with("cmdForce")) continue;  // what they start is not to be met by a slip of the hand
        ASSERT_FALSE(button->shortcut().isEmpty()) << name;
        const auto [place, is_new] = letters.emplace(button->shortcut(), name);
        EXPECT_TRUE(is_new) << name << " and " << place->second;
    }
}

TEST_P(SetupKeyboard, EveryControlHasANameToBeSpoken) {
    for (QWidget* control : controls()) {
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(control);
        ASSERT_NE(spoken, nullptr);
        EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << control->objectName().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Window, SetupKeyboard, testing::ValuesIn(cases),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace nimbry::test
