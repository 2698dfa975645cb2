#include "windows/form1.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>

#include "tests/windows/sample_states.h"
#include "windows/caption_label.h"
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

class FontScale {
public:
    explicit FontScale(double factor) : usual_(QApplication::font()) {
        QFont larger = usual_;
        larger.setPointSizeF(usual_.pointSizeF() * factor);
        QApplication::setFont(larger);
    }
    ~FontScale() { QApplication::setFont(usual_); }
    FontScale(const FontScale&) = delete;
    FontScale& operator=(const FontScale&) = delete;

private:
    QFont usual_;
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
    }
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
