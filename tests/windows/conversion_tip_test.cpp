#include "windows/conversion_tip.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QTest>
#include <QToolTip>
#include <memory>

#include "tests/windows/sample_states.h"
#include "windows/form1.h"
#include "windows/value_box.h"

namespace nimbry::test {
namespace {

using windows::ConversionTip;
using windows::Form1;
using windows::ValueBox;

class Conversions : public testing::Test {
protected:
    Conversions() {
        fill_with_a_plain_day(state);
        form = std::make_unique<Form1>(state, Form1::Actions{});
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
        tip = form->findChild<ConversionTip*>("Nimbryconv");
    }
    void TearDown() override { QToolTip::hideText(); }

    [[nodiscard]] ValueBox* box(const char* name) const { return form->findChild<ValueBox*>(name); }

    /// The pointer rests on a box.
    void hover(const char* name) const {
        const QPoint middle = box(name)->rect().center();
        QHelpEvent help(QEvent::ToolTip, middle, box(name)->mapToGlobal(middle));
        QApplication::sendEvent(box(name), &help);
    }
    [[nodiscard]] QString label(const char* name) const { return tip->findChild<QLabel*>(name)->text(); }
    [[nodiscard]] QRect on_screen(const char* name) const {
        return {box(name)->mapToGlobal(QPoint(0, 0)), box(name)->size()};
    }

    WeatherState state;
    std::unique_ptr<Form1> form;
    ConversionTip* tip = nullptr;
};

TEST_F(Conversions, HoveringShowsTheReadingInEveryUnitInPlaceOfTheTip) {
    hover("Text2_0");
    EXPECT_EQ(tip->shown_at(), box("Text2_0"));
    EXPECT_EQ(label("Label1"), "Current outside temperature");
    EXPECT_EQ(label("Label2"), QStringLiteral("+12.6 \u00B0C\n+54.7 \u00B0F"));
    EXPECT_EQ(QToolTip::text(), "") << "the tip does not come as well";
    EXPECT_EQ(tip->accessibleName(), label("Label1"));
    EXPECT_EQ(tip->accessibleDescription(), label("Label2"));
    EXPECT_FALSE(tip->isActiveWindow());
}

TEST_F(Conversions, WhereThereIsNothingToConvertTheTipIsShown) {
    hover("Text2_2");
    EXPECT_EQ(tip->shown_at(), nullptr);
    EXPECT_EQ(QToolTip::text(), "The current outdoor humidity");
}

TEST_F(Conversions, WithoutTheSwitchTheTipIsShown) {
    state.menu.mnuCpop.checked = false;
    hover("Text2_0");
    EXPECT_EQ(tip->shown_at(), nullptr);
    EXPECT_EQ(QToolTip::text(), "The current outdoor temperature");
}

TEST_F(Conversions, SpaceShowsItAndEscClosesIt) {
    box("Text2_4")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(box("Text2_4"), Qt::Key_Space);
    EXPECT_EQ(tip->shown_at(), box("Text2_4"));
    EXPECT_EQ(label("Label2"), "1016 mB\n1016 hPa\n30 In.Hg");
    EXPECT_TRUE(box("Text2_4")->hasFocus());
    QTest::keyClick(box("Text2_4"), Qt::Key_Escape);
    EXPECT_EQ(tip->shown_at(), nullptr);
}

TEST_F(Conversions, ItGoesWithThePointerAndWithTheFocus) {
    hover("Text2_0");
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(box("Text2_0"), &leave);
    EXPECT_EQ(tip->shown_at(), nullptr);
    box("Text2_0")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(box("Text2_0"), Qt::Key_Space);
    ASSERT_EQ(tip->shown_at(), box("Text2_0"));
    QTest::keyClick(box("Text2_0"), Qt::Key_Down);
    EXPECT_EQ(tip->shown_at(), nullptr) << "the arrow has moved on to the next box";
    hover("Text2_0");
    QTest::mouseClick(box("Text2_0"), Qt::LeftButton);
    EXPECT_EQ(tip->shown_at(), nullptr);
}

TEST_F(Conversions, OneReplacesTheOther) {
    hover("Text2_0");
    hover("TxtWindHiG");
    EXPECT_EQ(tip->shown_at(), box("TxtWindHiG"));
    EXPECT_EQ(label("Label1"), "Maximum wind speed");
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(box("Text2_0"), &leave);
    EXPECT_EQ(tip->shown_at(), box("TxtWindHiG")) << "the box before is not its box any more";
}

TEST_F(Conversions, ItFollowsTheReadingWhileItShows) {
    hover("Text2_0");
    state.readings.rawostemp = "+13.0";
    state.panel.Text2[0].text = "+13 \260C";
    form->refresh();
    EXPECT_EQ(label("Label2"), QStringLiteral("+13 \u00B0C\n+55.4 \u00B0F"));
    state.panel.Text2[0].text = "Error";
    form->refresh();
    EXPECT_EQ(tip->shown_at(), nullptr) << "there is nothing to tell any more";
    state.panel.Text2[0].text = "+13 \260C";
    hover("Text2_0");
    state.menu.mnuCpop.checked = false;
    form->refresh();
    EXPECT_EQ(tip->shown_at(), nullptr) << "switched off";
}

TEST_F(Conversions, ItStandsAtItsBoxAndPointsToIt) {
    hover("Text2_0");
    const auto place = ConversionTip::place(on_screen("Text2_0"), tip->size(), tip->screen()->availableGeometry());
    EXPECT_EQ(tip->pos(), place.corner);
    EXPECT_TRUE(tip->mask().contains(QPoint(place.point, place.below ? 1 : tip->height() - 2))) << "the pointer";
    EXPECT_FALSE(tip->mask().contains(QPoint(0, 0)));
    EXPECT_FALSE(tip->mask().contains(QPoint(tip->width() - 1, place.below ? 0 : tip->height() - 1)));
    EXPECT_TRUE(tip->mask().contains(tip->rect().center()));
}

struct PlaceCase {
    const char* law;
    QRect anchor;
    QPoint corner;
    int point;
    bool below;
};

TEST(ConversionPlace, IsAtTheBoxAndOnItsScreen) {
    const QRect screen(0, 0, 1000, 700);
    const QSize size(200, 80);
    // The middle of the anchor is left + (width - 1) / 2; the pointer keeps 16 away from the card's corners.
    for (const PlaceCase& c :
         {PlaceCase{"below, centred", {400, 100, 101, 20}, {350, 120}, 100, true},
          PlaceCase{"above at the screen's lower end", {400, 620, 101, 20}, {350, 540}, 100, false},
          PlaceCase{"just room below", {400, 600, 101, 20}, {350, 620}, 100, true},
          PlaceCase{"moved in from the left", {10, 100, 101, 20}, {0, 120}, 60, true},
          PlaceCase{"moved in from the right", {880, 100, 101, 20}, {800, 120}, 130, true},
          PlaceCase{"an anchor in the corner", {0, 100, 11, 20}, {0, 120}, 16, true}}) {
        SCOPED_TRACE(c.law);
        const auto place = ConversionTip::place(c.anchor, size, screen);
        EXPECT_EQ(place.corner, c.corner);
        EXPECT_EQ(place.point, c.point);
        EXPECT_EQ(place.below, c.below);
    }
}

}  // namespace
}  // namespace nimbry::test
