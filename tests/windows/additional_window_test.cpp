#include "windows/additional_window.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "engine/displays/box_list.h"
#include "engine/displays/main_panel.h"
#include "platform/text_bytes.h"
#include "tests/windows/sample_states.h"
#include "windows/card_group.h"
#include "windows/display_windows.h"
#include "windows/value_box.h"

namespace nimbry::test {
namespace {

using windows::AdditionalWindow;
using windows::ValueBox;

class AdditionalDataWindow : public testing::Test {
protected:
    AdditionalDataWindow() {
        fill_with_a_plain_day(state);
        fill_additional_data(state);
        state.additional.Additional_Open = true;
        AdditionalWindow::Actions actions;
        actions.to_front = [this] { ++to_front; };
        actions.hide = [this] { ++hidden; };
        actions.closed = [this] { ++closed; };
        window = std::make_unique<AdditionalWindow>(state, actions);
        window->present();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    template <class Widget>
    Widget* find(const char* name) {
        return window->findChild<Widget*>(QString::fromLatin1(name));
    }

    WeatherState state;
    int to_front = 0, hidden = 0, closed = 0;
    std::unique_ptr<AdditionalWindow> window;
};

/// The boxes of this window in the model, from the first to the one before its labels.
std::vector<NamedConstBox> readings_of(const WeatherState& state) {
    std::vector<NamedConstBox> found;
    bool inside = false;
    for (const NamedConstBox& entry : named_boxes(state)) {
        inside = inside || entry.name == "txtWetBulb";
        if (entry.name == "lblNoSun") break;
        if (inside) found.push_back(entry);
    }
    return found;
}

TEST_F(AdditionalDataWindow, ShowsEveryBoxOfTheModelUnderItsNameAndFollowsIt) {
    ASSERT_EQ(readings_of(state).size(), 30U);
    for (const char* text : {"first", "second"}) {
        for (const NamedConstBox& entry : readings_of(state))
            find_box(state, entry.name)->text = text + std::string(entry.name);
        window->refresh();
        for (const NamedConstBox& entry : readings_of(state)) {
            SCOPED_TRACE(std::string(entry.name));
            const auto* box = window->findChild<ValueBox*>(QString::fromStdString(object_name(entry.name)));
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->text().toStdString(), text + std::string(entry.name));
            EXPECT_NE(box->accessibleName(), QString());
            EXPECT_TRUE(box->isVisibleTo(window.get()));
        }
    }
}

TEST_F(AdditionalDataWindow, HasItsTitleItsGroupsAndItsCaptions) {
    EXPECT_EQ(window->objectName(), "NimbryAdditional");
    EXPECT_EQ(window->windowTitle(), "Nimbry Additional Data");
    std::vector<std::string> groups, captions;
    for (const auto* group : window->findChildren<windows::CardGroup*>())
        groups.push_back(group->accessibleName().toStdString());
    for (const auto* label : window->findChildren<QLabel*>()) captions.push_back(label->text().toStdString());
    for (const char* group :
         {"Additional Current Conditions (calculated)", "Extreme Conditions", "Rainfall Statistics"}) {
        EXPECT_EQ(std::count(groups.begin(), groups.end(), group), 1) << group;
    }
    for (const char* caption :
         {"Wet Bulb Temperature", "Wet Bulb Depression", "Base height of convective (Cu) cloud", "Maximum Dew Point",
          "Minimum Dew Point", "Minimum Wind Chill", "Maximum Heat Index", "Maximum Indoor Temp", "Minimum Indoor Temp",
          "Days Since rain", "Last Rain Amount", "Monthly Rainfall", "Number of rain days", "Total This Month",
          "Solar noon", "Length of day", "Length of visible light", "Nimbry was started at",
          "and has been running for"}) {
        EXPECT_EQ(std::count(captions.begin(), captions.end(), caption), 1) << caption;
    }
}

TEST_F(AdditionalDataWindow, NamesTheColumnBeforeTheCaptionToAScreenReader) {
    EXPECT_EQ(find<ValueBox>("txtYMinWC")->accessibleName(), "Yesterday, Minimum Wind Chill");
    EXPECT_EQ(find<ValueBox>("txtMinWC")->accessibleName(), "Today, Minimum Wind Chill");
    EXPECT_EQ(find<ValueBox>("txtDSR")->accessibleName(), "Days Since rain");
    EXPECT_EQ(find<QLabel>("lblYesterday")->text(), platform::unicode(state.panel.lblYesterday.text));
}

TEST_F(AdditionalDataWindow, PutsTheLabelInTheSunsPlaceWithoutALocation) {
    EXPECT_TRUE(find<QWidget>("Picture1")->isVisibleTo(window.get()));
    EXPECT_FALSE(find<QLabel>("lblNoSun")->isVisibleTo(window.get()));
    const QSize before = window->minimumSizeHint();
    show_no_sun(state);
    window->refresh();
    EXPECT_FALSE(find<QWidget>("Picture1")->isVisibleTo(window.get()));
    EXPECT_FALSE(find<ValueBox>("TxtSunrise")->isVisibleTo(window.get()));
    EXPECT_FALSE(find<ValueBox>("txtSolarNoon")->isVisibleTo(window.get()));
    EXPECT_TRUE(find<QLabel>("lblNoSun")->isVisibleTo(window.get()));
    EXPECT_EQ(find<QLabel>("lblNoSun")->text(),
              "Sunrise and Sunset data are not available as no location has been entered");
    EXPECT_EQ(window->minimumSizeHint(), before);
}

TEST_F(AdditionalDataWindow, TellsThatItHasComeToTheFront) {
    EXPECT_EQ(to_front, 1);
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_EQ(to_front, 1);
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    EXPECT_EQ(to_front, 2);
}

TEST_F(AdditionalDataWindow, ItsButtonEscapeAndTheCloseMarkHideIt) {
    auto* button = find<QPushButton>("Command1");
    EXPECT_EQ(button->text(), "      Close Window") << "with the room for its picture";
    EXPECT_EQ(button->accessibleName(), "Close Window");
    button->click();
    EXPECT_FALSE(window->isVisible());
    window->present();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    window->present();
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(closed, 3);
    EXPECT_EQ(hidden, 0);
}

TEST_F(AdditionalDataWindow, ItsMenuEntryLeavesItToTheModel) {
    auto* entry = find<QAction>("mnuHide");
    EXPECT_EQ(entry->text(), "&Hide");
    EXPECT_EQ(entry->menu(), nullptr) << "it acts at once";
    entry->trigger();
    EXPECT_EQ(hidden, 1);
    EXPECT_TRUE(window->isVisible());
    state.additional.Additional_Open = false;
    window->refresh();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(closed, 0);
}

TEST_F(AdditionalDataWindow, F6GoesThroughItsGroups) {
    find<QWidget>("txtWetBulb")->setFocus(Qt::TabFocusReason);
    std::vector<std::string> visited;
    for (int n = 0; n < 6; ++n) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
        visited.push_back(QApplication::focusWidget()->objectName().toStdString());
    }
    EXPECT_EQ(visited,
              (std::vector<std::string>{"txtMaxDew", "TxtSunrise", "txtDSR", "txtStarted", "Command1", "txtWetBulb"}));
}

TEST_F(AdditionalDataWindow, BringsWhatF6ReachesIntoSight) {
    window->resize(480, 320);
    QApplication::processEvents();
    find<QWidget>("txtWetBulb")->setFocus(Qt::TabFocusReason);
    for (int n = 0; n < 6; ++n) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
        EXPECT_FALSE(QApplication::focusWidget()->visibleRegion().isEmpty())
            << QApplication::focusWidget()->objectName().toStdString();
    }
}

struct RoomCase {
    const char* law;
    double font_scale;
};

TEST(AdditionalDataRoom, CutsNoTextWhateverTheLetters) {
    for (const RoomCase& c : {RoomCase{"usual letters", 1}, {"one and a half", 1.5}, {"double", 2}}) {
        SCOPED_TRACE(c.law);
        const QFont usual = QApplication::font();
        QFont font = usual;
        font.setPointSizeF(usual.pointSizeF() * c.font_scale);
        QApplication::setFont(font);
        {
            WeatherState state;
            fill_with_long_texts(state);
            fill_additional_data_with_long_texts(state);
            state.additional.Additional_Open = true;
            AdditionalWindow window(state, {});
            window.present();
            QApplication::processEvents();
            for (const auto* box : window.findChildren<ValueBox*>()) {
                EXPECT_LE(box->text_width(), box->room_for_text() + 0.5) << box->objectName().toStdString();
            }
        }
        QApplication::setFont(usual);
    }
}

TEST(DisplayWindows, ShowTheAdditionalDataOnceAndOnlyWhileTheModelHasItOpen) {
    WeatherState state;
    reset_main_panel(state);
    QWidget parent;
    windows::DisplayWindows displays(state, {}, &parent);
    displays.show_additional();
    EXPECT_EQ(parent.findChildren<AdditionalWindow*>().size(), 0);
    state.additional.Additional_Open = true;
    displays.show_additional();
    displays.show_additional();
    ASSERT_EQ(parent.findChildren<AdditionalWindow*>().size(), 1);
    EXPECT_TRUE(parent.findChild<AdditionalWindow*>()->isVisible());
    state.additional.Additional_Open = false;
    displays.refresh();
    EXPECT_FALSE(parent.findChild<AdditionalWindow*>()->isVisible());
}

}  // namespace
}  // namespace nimbry::test
