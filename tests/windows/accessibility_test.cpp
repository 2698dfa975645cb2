// What a screen reader is told, and what it is left alone with.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QStringList>
#include <memory>
#include <utility>

#include "engine/displays/main_panel.h"
#include "engine/ports/notices.h"
#include "tests/windows/sample_states.h"
#include "windows/balloon_tip.h"
#include "windows/form1.h"
#include "windows/status_window.h"

namespace {

QStringList alerts;

}  // namespace

// No test machine has a screen reader that would switch Qt's own on: what the windows tell one ends here.
void QAccessible::updateAccessibility(QAccessibleEvent* event) {
    if (event->type() == QAccessible::Alert) alerts.append(event->object()->objectName());
}

namespace nimbry::test {
namespace {

using windows::Form1;

/// Listens in a screen reader's place.
class ScreenReader : public testing::Test {
protected:
    ScreenReader() {
        fill_with_a_plain_day(state);
        form = std::make_unique<Form1>(state, Form1::Actions{});
        form->show();
        alerts.clear();
    }

    /// The names of the widgets that the reader was told of since the last call.
    QStringList told() {
        form->refresh();
        return std::exchange(alerts, QStringList());
    }
    [[nodiscard]] QAccessibleInterface* of(const char* name) const {
        return QAccessible::queryAccessibleInterface(form->widget_of(name));
    }

    WeatherState state;
    std::unique_ptr<Form1> form;
};

TEST_F(ScreenReader, HasTheNameTheValueAndTheTipOfEachReading) {
    state.panel.Text2[2].text = " 54 % ";
    state.panel.Text2[2].balloon = "Dry";
    form->refresh();
    const QAccessibleInterface* reading = of("Text2(2)");
    ASSERT_NE(reading, nullptr);
    EXPECT_EQ(reading->text(QAccessible::Name), "Outdoor Humidity");
    EXPECT_EQ(reading->text(QAccessible::Value), "54 %");
    EXPECT_EQ(reading->text(QAccessible::Description), "The current outdoor humidity\nDry");
    EXPECT_TRUE(reading->state().readOnly);
    state.panel.Text2[2].text = "55 %";
    form->refresh();
    EXPECT_EQ(reading->text(QAccessible::Value), "55 %");
}

TEST_F(ScreenReader, IsNotToldOfAValueThatMovesOn) {
    state.panel.Text2[0].text = "+1.0";
    state.panel.TxtTempMax.text = "+20.0 at 14:00";
    state.panel.TxtTime.text = "14:00:10";
    EXPECT_EQ(told(), QStringList());
}

TEST_F(ScreenReader, IsToldOnceOfAFaultAndAgainOfTheNext) {
    state.panel.Text2[4].text = "Error";
    state.panel.Text2[4].fore = colours::red;
    EXPECT_EQ(told(), QStringList("Text2_4"));
    state.panel.Text2[4].fore = colours::black;
    EXPECT_EQ(told(), QStringList()) << "the cycle takes the red away, the fault stays";
    state.panel.Text2[4].text = "1013 mB";
    EXPECT_EQ(told(), QStringList());
    state.panel.Text2[4].text = "Error";
    EXPECT_EQ(told(), QStringList("Text2_4"));
}

TEST_F(ScreenReader, IsToldOnceOfAnAlarm) {
    state.panel.Text2[6].back = colours::alarm_back;
    EXPECT_EQ(told(), QStringList("Text2_6"));
    state.panel.Text2[6].text = "99 km/h";
    EXPECT_EQ(told(), QStringList()) << "the alarm goes on";
    state.panel.Text2[6].back = colours::reading_back;
    EXPECT_EQ(told(), QStringList());
}

TEST_F(ScreenReader, IsToldOfAChangedStatusAndOfALowBattery) {
    state.panel.lblStatus.text = "Communications Error";
    EXPECT_EQ(told(), QStringList("lblStatus"));
    state.panel.lblStatus.fore = 0xFF0000;
    EXPECT_EQ(told(), QStringList()) << "the same words in another colour";
    state.panel.lblLowBattery.visible = true;
    EXPECT_EQ(told(), QStringList("lblLowBattery"));
}

TEST_F(ScreenReader, IsToldOfANotice) {
    windows::BalloonTip tip(form.get());
    tip.show_at({.title = "Comms Error", .text = "No data"}, QRect(0, 0, 10, 10));
    EXPECT_EQ(told(), QStringList("frmTip"));
    EXPECT_EQ(tip.accessibleName(), "Comms Error");
    EXPECT_EQ(tip.accessibleDescription(), "No data");
    tip.show_in_corner({.title = "Clock Error", .text = "..."}, QRect(0, 0, 800, 600));
    EXPECT_EQ(told(), QStringList("frmTip"));
    windows::StatusWindow status;
    status.show_text(QStringLiteral("Forced FTP upload"));
    EXPECT_EQ(told(), QStringList("NimbryDisplay"));
    EXPECT_EQ(status.accessibleDescription(), "Forced FTP upload");
}

}  // namespace
}  // namespace nimbry::test
