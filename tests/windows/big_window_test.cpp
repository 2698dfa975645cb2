#include "windows/big_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
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
#include "windows/display_windows.h"
#include "windows/marquee_window.h"
#include "windows/value_box.h"

namespace nimbry::test {
namespace {

using windows::BigWindow;
using windows::MarqueeWindow;
using windows::ValueBox;

class BigDisplayWindow : public testing::Test {
protected:
    BigDisplayWindow() {
        fill_with_a_plain_day(state);
        BigWindow::Actions actions;
        actions.closed = [this] { ++closed; };
        actions.marquee = [this] { ++marquee; };
        window = std::make_unique<BigWindow>(state, actions);
        window->present();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    ValueBox& box(const char* name) { return *window->findChild<ValueBox*>(QString::fromLatin1(name)); }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window.get(), static_cast<Qt::Key>(key), modifiers);
    }

    WeatherState state;
    int closed = 0, marquee = 0;
    std::unique_ptr<BigWindow> window;
};

TEST_F(BigDisplayWindow, ShowsItsBoxesUnderTheirNamesAndFollowsTheMainWindows) {
    EXPECT_EQ(window->objectName(), "NimbryBIG");
    for (const char* text : {"first", "second"}) {
        state.big.txtDisTimDat.text = state.big.Label9.text = state.big.Label10.text = text;
        for (const char* of :
             {"Text2(0)", "Text2(2)", "Text2(3)", "Text2(4)", "Text2(6)", "Text2(7)", "TxtWinDir", "TxtBarTrend"}) {
            Box& source = *find_box(state, of);
            source.text = text + std::string(of);
            source.back = colours::alarm_back;
            source.fore = colours::red;
        }
        window->refresh();
        for (const char* name : {"txtDisTimDat", "txtDisTemp", "txtDisHum", "txtDisWGS", "txtDisWGD", "txtWAS",
                                 "txtWAD", "txtDisBar", "txtDisBarTrend", "Label9", "Label10"}) {
            SCOPED_TRACE(name);
            ASSERT_NE(window->findChild<ValueBox*>(QString::fromLatin1(name)), nullptr);
            EXPECT_EQ(box(name).shown(), *find_box(state, name)) << "text and colours";
            EXPECT_NE(box(name).accessibleName(), QString());
        }
        EXPECT_EQ(box("txtWAD").text().toStdString(), text + std::string("TxtWinDir"));
    }
}

TEST_F(BigDisplayWindow, TellsItsTwoDirectionsApart) {
    EXPECT_EQ(box("txtDisTemp").accessibleName(), "Outdoor Temp.");
    EXPECT_EQ(box("txtDisWGD").accessibleName(), "Wind Direction, gust");
    EXPECT_EQ(box("txtWAD").accessibleName(), "Wind Direction, average");
}

TEST_F(BigDisplayWindow, GivesTheWholeLineToTheNameWithoutAValue) {
    turn_marquee(state);
    window->refresh();
    EXPECT_EQ(box("Label9").text(), "**  Nimbry  **");
    EXPECT_FALSE(box("Label10").isVisible());
    fill_big_display(state);
    window->refresh();
    EXPECT_TRUE(box("Label10").isVisible());
    EXPECT_EQ(box("Label10").accessibleName(), "Maximum wind gust in last hour");
}

TEST_F(BigDisplayWindow, F11GoesToTheFullScreenAndBack) {
    press(Qt::Key_F11);
    EXPECT_TRUE(window->isFullScreen());
    press(Qt::Key_F11);
    EXPECT_FALSE(window->isFullScreen());
    EXPECT_EQ(closed, 0);
}

TEST_F(BigDisplayWindow, EscapeClosesItFromTheFullScreenToo) {
    press(Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(closed, 1);
    window->present();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    press(Qt::Key_F11);
    EXPECT_TRUE(window->isFullScreen());
    press(Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(closed, 2);
    window->present();
    EXPECT_FALSE(window->isFullScreen()) << "it comes back as a window";
}

TEST_F(BigDisplayWindow, ItsButtonAndItsMenuOpenTheMarquee) {
    auto* button = window->findChild<QPushButton*>(QStringLiteral("cmdMarquee"));
    EXPECT_EQ(button->text(), "Marquee...");
    button->click();
    EXPECT_EQ(marquee, 1);
    press(Qt::Key_F10, Qt::ShiftModifier);
    auto* menu = window->findChild<QMenu*>(QStringLiteral("menu_NimbryBIG"));
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    QStringList entries;
    for (const QAction* action : menu->actions()) entries.append(action->text());
    EXPECT_EQ(entries, QStringList({"&Marquee...", "&Full Screen", "&Close"}));
    menu->actions().constFirst()->trigger();
    EXPECT_EQ(marquee, 2);
    menu->close();
}

TEST_F(BigDisplayWindow, ItsTypeGrowsWithIt) {
    window->resize(700, 560);
    QApplication::processEvents();
    const double before = box("txtDisTemp").text_width();
    window->resize(1400, 1120);
    QApplication::processEvents();
    EXPECT_GT(box("txtDisTemp").text_width(), 1.7 * before);
}

TEST_F(BigDisplayWindow, CutsNoTextAtItsSmallestAndOnAWideScreen) {
    for (void (*fill)(WeatherState&) : {fill_with_a_plain_day, fill_with_long_texts, fill_with_trouble}) {
        fill(state);
        fill_big_display(state);
        window->refresh();
        for (const QSize size : {window->minimumSizeHint(), QSize(760, 620), QSize(1920, 1080), QSize(500, 1000)}) {
            window->resize(size);
            QApplication::processEvents();
            for (const auto* shown : window->findChildren<ValueBox*>()) {
                EXPECT_LE(shown->text_width(), shown->room_for_text() + 0.5)
                    << shown->objectName().toStdString() << " at " << size.width();
            }
        }
    }
}

TEST_F(BigDisplayWindow, F6GoesThroughItsParts) {
    box("txtDisTimDat").setFocus(Qt::TabFocusReason);
    fill_big_display(state);
    window->refresh();
    std::vector<std::string> visited;
    for (int n = 0; n < 4; ++n) {
        press(Qt::Key_F6);
        visited.push_back(QApplication::focusWidget()->objectName().toStdString());
    }
    EXPECT_EQ(visited, (std::vector<std::string>{"txtDisTemp", "Label9", "cmdMarquee", "txtDisTimDat"}));
}

TEST(MarqueeDialogWindow, HasElevenCheckBoxesInTheLinesOrder) {
    WeatherState state;
    MarqueeWindow window(state, [](const MarqueeDialog&) {});
    window.present();
    EXPECT_EQ(window.objectName(), "FrmMarquee");
    std::vector<std::string> names, captions;
    auto boxes = window.findChildren<QCheckBox*>();
    std::sort(boxes.begin(), boxes.end(), [](const auto* a, const auto* b) { return a->y() < b->y(); });
    for (const QCheckBox* check : boxes) {
        names.push_back(check->objectName().toStdString());
        captions.push_back(check->text().remove(u'&').toStdString());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"chkHI", "chkDew", "chkChill", "chkRain", "chkRainTot", "chkInTemp",
                                               "chkInHum", "chkRainLH", "chkSunrise", "chkSunset", "chkWindGLH"}));
    EXPECT_EQ(captions,
              (std::vector<std::string>{"Heat Index", "Dew Point", "Wind Chill", "Rainfall Since 9.00am",
                                        "Total Rainfall", "Indoor Temp.", "Indoor Humidity", "Rainfall in last hour",
                                        "Sunrise", "Sunset", "Maximum wind gust in last hour"}));
    EXPECT_EQ(window.findChild<QPushButton*>("Command1")->text(), "OK");
}

TEST(MarqueeDialogWindow, EditsACopyAndHandsItOver) {
    WeatherState state;
    state.big.FrmMarquee.chkDew = true;
    std::vector<MarqueeDialog> accepted;
    MarqueeWindow window(state, [&accepted](const MarqueeDialog& values) { accepted.push_back(values); });
    window.present();
    EXPECT_TRUE(window.findChild<QCheckBox*>("chkDew")->isChecked());
    window.findChild<QCheckBox*>("chkSunset")->click();
    EXPECT_FALSE(state.big.FrmMarquee.chkSunset);
    state.big.FrmMarquee.chkHI = true;  // by nimbryctl, meanwhile
    state.settings.tmidnight = true;
    window.refresh();
    EXPECT_TRUE(window.findChild<QCheckBox*>("chkHI")->isChecked());
    EXPECT_EQ(window.findChild<QCheckBox*>("chkRain")->text(), "&Rainfall Since midnight");
    window.findChild<QPushButton*>("Command1")->click();
    MarqueeDialog expected;
    expected.chkDew = expected.chkSunset = expected.chkHI = true;
    ASSERT_EQ(accepted.size(), 1U);
    EXPECT_EQ(accepted[0], expected);
    EXPECT_FALSE(window.isVisible());
}

TEST(DisplayWindows, TheLargeOneStandsApartFromTheMainWindow) {
    WeatherState state;
    reset_main_panel(state);
    QWidget main;
    int closed = 0;
    windows::DisplayWindows displays(state, {.big_closed = [&closed] { ++closed; }, .accept_marquee = {}}, &main);
    displays.show_big();
    const auto shown = [] {
        std::vector<BigWindow*> found;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* big = qobject_cast<BigWindow*>(widget); big != nullptr) found.push_back(big);
        return found;
    };
    EXPECT_TRUE(shown().empty()) << "the model has it closed";
    state.big.open = true;
    displays.show_big();
    displays.show_big();
    ASSERT_EQ(shown().size(), 1U);
    BigWindow* big = shown().front();
    EXPECT_EQ(big->parentWidget(), nullptr);
    big->findChild<QPushButton*>("cmdMarquee")->click();
    ASSERT_NE(big->findChild<MarqueeWindow*>(), nullptr);
    EXPECT_TRUE(big->findChild<MarqueeWindow*>()->isVisible());
    big->close();
    EXPECT_EQ(closed, 1);
}

}  // namespace
}  // namespace nimbry::test
