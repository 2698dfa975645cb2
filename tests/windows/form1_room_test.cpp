#include "windows/form1.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include "tests/windows/font_scale.h"
#include "tests/windows/room_for_words.h"
#include "tests/windows/sample_states.h"
#include "windows/caption_label.h"
#include "windows/screen_room.h"
#include "windows/value_box.h"

namespace nimbry::test {
namespace {

using windows::CaptionLabel;
using windows::Form1;
using windows::ValueBox;

// Room for every text.

struct RoomCase {
    const char* law;
    void (*fill)(WeatherState&);
    QSize size;
    double font_scale;
};

const RoomCase room_cases[]{
    {"a plain day at the ideal size", fill_with_a_plain_day, {1180, 800}, 1},
    {"a plain day at the smallest size", fill_with_a_plain_day, {980, 660}, 1},
    {"the longest texts at the smallest size", fill_with_long_texts, {980, 660}, 1},
    {"faults and alarms at the smallest size", fill_with_trouble, {980, 660}, 1},
    {"letters of one and a half size", fill_with_long_texts, {980, 660}, 1.5},
    {"letters of double size", fill_with_long_texts, {980, 660}, 2},
};

TEST(Form1Room, CutsNoTextAtAnySize) {
    for (const RoomCase& c : room_cases) {
        SCOPED_TRACE(c.law);
        const FontScale font(c.font_scale);
        WeatherState state;
        c.fill(state);
        Form1 form(state, {});
        form.show();
        form.resize(c.size);
        QApplication::processEvents();
        EXPECT_EQ(form.size(), c.size);
        for (const ValueBox* box : form.findChildren<ValueBox*>()) {
            EXPECT_LE(box->text_width(), box->room_for_text()) << box->objectName().toStdString();
            EXPECT_LE(box->minimumSizeHint().height(), box->height()) << box->objectName().toStdString();
        }
        for (const CaptionLabel* caption : form.findChildren<CaptionLabel*>()) {
            if (!caption->isVisible()) continue;
            const QStringList lines = caption->lines();
            for (const QString& line : lines)
                EXPECT_LE(caption->fontMetrics().horizontalAdvance(line), caption->width()) << line.toStdString();
            EXPECT_LE(caption->fontMetrics().height() * static_cast<int>(lines.size()), caption->height())
                << caption->text().toStdString();
        }
        expect_room_for_words(form);
    }
}

TEST(Form1Room, GivesEachButtonTheSameWidth) {
    WeatherState state;
    fill_with_a_plain_day(state);
    Form1 form(state, {});
    form.show();
    form.resize(980, 660);
    QApplication::processEvents();
    const int first = form.findChild<QWidget*>("fmb_0")->width();
    for (int n = 1; n < 7; ++n)
        EXPECT_NEAR(form.findChild<QWidget*>(QStringLiteral("fmb_%1").arg(n))->width(), first, 1) << n;
}

TEST(Form1Room, OpensNoLargerThanTheScreen) {
    WeatherState state;
    fill_with_a_plain_day(state);
    Form1 form(state, {});
    EXPECT_EQ(form.size(), windows::size_on_screen({1180, 800}, form.screen()->availableSize()));
    EXPECT_LT(form.height(), form.screen()->availableSize().height());
    EXPECT_LT(form.width(), form.screen()->availableSize().width());
}

struct ScreenCase {
    const char* law;
    QSize screen, opened;
};

TEST(SizeOnScreen, LeavesRoomForTheFrameOfTheDesktop) {
    const ScreenCase cases[]{{"there is room for all of it", {1920, 1050}, {1180, 800}},
                             {"a low screen", {1366, 738}, {1180, 678}},
                             {"a screen of 1920 x 1080 at 200 %", {960, 540}, {940, 480}},
                             {"exactly enough", {1200, 860}, {1180, 800}},
                             {"one pixel less", {1199, 859}, {1179, 799}}};
    for (const ScreenCase& c : cases) EXPECT_EQ(windows::size_on_screen({1180, 800}, c.screen), c.opened) << c.law;
}

TEST(Form1Room, NeedsNoScrollingAtItsSmallestSize) {
    for (auto* fill : {fill_with_a_plain_day, fill_with_long_texts, fill_with_trouble}) {
        WeatherState state;
        fill(state);
        Form1 form(state, {});
        form.show();
        form.resize(980, 660);
        QApplication::processEvents();
        const auto* scroll = qobject_cast<QScrollArea*>(form.centralWidget());
        ASSERT_NE(scroll, nullptr);
        EXPECT_EQ(scroll->horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(scroll->verticalScrollBar()->maximum(), 0);
    }
}

TEST(Form1Room, ScrollsWhenItIsMadeSmaller) {
    WeatherState state;
    fill_with_a_plain_day(state);
    Form1 form(state, {});
    form.show();
    form.resize(600, 400);
    QApplication::processEvents();
    const auto* scroll = qobject_cast<QScrollArea*>(form.centralWidget());
    EXPECT_GT(scroll->horizontalScrollBar()->maximum(), 0);
    EXPECT_GT(scroll->verticalScrollBar()->maximum(), 0);
}

TEST(Form1Room, KeepsTheStatusInItsPlaceWhenTheBatteryRunsLow) {
    WeatherState state;
    fill_with_a_plain_day(state);
    Form1 form(state, {});
    form.show();
    QApplication::processEvents();
    const auto* status = form.findChild<QWidget*>("lblStatus");
    const int before = status->mapTo(&form, QPoint(0, 0)).x();
    state.panel.lblLowBattery.visible = true;
    form.refresh();
    QApplication::processEvents();
    EXPECT_EQ(status->mapTo(&form, QPoint(0, 0)).x(), before);
}

}  // namespace
}  // namespace nimbry::test
