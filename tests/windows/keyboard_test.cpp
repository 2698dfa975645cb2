#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <QToolTip>
#include <memory>
#include <string>
#include <vector>

#include "engine/displays/main_panel.h"
#include "tests/windows/comes_about.h"
#include "tests/windows/sample_states.h"
#include "windows/form1.h"

namespace nimbry::test {
namespace {

using windows::Form1;

class Keyboard : public testing::Test {
protected:
    Keyboard() {
        fill_with_a_plain_day(state);
        form = std::make_unique<Form1>(state, Form1::Actions{});
        form->show();
        form->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.get()));
    }

    void focus(const char* name) { form->findChild<QWidget*>(QString::fromLatin1(name))->setFocus(Qt::TabFocusReason); }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    static std::string focused() { return QApplication::focusWidget()->objectName().toStdString(); }

    WeatherState state;
    std::unique_ptr<Form1> form;
};

TEST_F(Keyboard, F6GoesThroughTheAreasAndBackToTheFirst) {
    focus("TxtTime");
    std::vector<std::string> visited;
    for (int n = 0; n < 8; ++n) {
        press(Qt::Key_F6);
        visited.push_back(focused());
    }
    EXPECT_EQ(visited, (std::vector<std::string>{"Text2_0", "Text2_6", "Text2_5", "Text2_4", "TxtTempMax",
                                                 "gPicture1_0", "fmb_0", "TxtTime"}));
    press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "fmb_0");
}

TEST_F(Keyboard, TabStopsOnceInEachArea) {
    focus("Text2_0");
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), "Text2_6");
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "Text2_0");
}

struct ArrowCase {
    const char* law;
    const char* from;
    Qt::Key key;
    const char* to;
};

TEST_F(Keyboard, ArrowsMoveInsideAnArea) {
    const ArrowCase cases[]{
        {"down a column", "Text2_0", Qt::Key_Down, "Text2_2"},
        {"up a column", "Text2_2", Qt::Key_Up, "Text2_0"},
        {"to the side", "Text2_7", Qt::Key_Right, "TxtWinDir"},
        {"along a row of the table", "TxtHumMax", Qt::Key_Right, "TxtYHumMax"},
        {"and on", "TxtYHumMax", Qt::Key_Right, "TxtOsHumHi"},
        {"down the table", "TxtYHumMax", Qt::Key_Down, "TxtYHumMin"},
        {"from button to button", "fmb_0", Qt::Key_Right, "fmb_1"},
        {"not out of the area at its top", "Text2_0", Qt::Key_Up, "Text2_0"},
        {"not out of the area at its side", "TxtHeatInd", Qt::Key_Right, "TxtHeatInd"},
    };
    for (const ArrowCase& c : cases) {
        SCOPED_TRACE(c.law);
        focus(c.from);
        press(c.key);
        EXPECT_EQ(focused(), c.to);
    }
}

TEST_F(Keyboard, AnAreaIsEnteredWhereItWasLeft) {
    focus("TxtWindChill");
    press(Qt::Key_F6);
    press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "TxtWindChill");
}

TEST_F(Keyboard, CtrlCCopiesTheText) {
    focus("Text2_6");
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), " 23.8 km/h");
}

TEST_F(Keyboard, SpaceShowsTheTipAndEscClosesIt) {
    state.menu.mnuCpop.checked = false;
    state.panel.Text2[0].balloon = "Temperature +12.6 \260C";
    form->refresh();
    focus("Text2_0");
    press(Qt::Key_Space);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("The current outdoor temperature\nTemperature +12.6 \u00B0C"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(comes_about([] { return !QToolTip::isVisible(); }));
}

TEST_F(Keyboard, ATipThatLooksLikeMarkupIsShownAsItStands) {
    state.menu.mnuCpop.checked = false;
    state.panel.Text2[0].tip = "<b>bold</b>";
    state.panel.Text2[0].balloon.clear();
    form->refresh();
    focus("Text2_0");
    press(Qt::Key_Space);
    EXPECT_EQ(QToolTip::text(), "&lt;b&gt;bold&lt;/b&gt;");
    QToolTip::hideText();
}

struct ExplainedCase {
    const char* widget;
    const char* tip;
};

TEST_F(Keyboard, ReachesWhatIsExplainedBesideTheBoxes) {
    const ExplainedCase cases[]{{"Picture2_2", "Indicates data is being received"},
                                {"lblRainT", "Rainfall so far today since 9:00 am"},
                                {"lblRainY", "Rainfall for the 24 hours prior to 9:00 am"}};
    for (const ExplainedCase& c : cases) {
        SCOPED_TRACE(c.widget);
        focus(c.widget);
        ASSERT_EQ(focused(), c.widget);
        press(Qt::Key_Space);
        EXPECT_EQ(QToolTip::text(), c.tip);
        press(Qt::Key_Escape);
        EXPECT_TRUE(comes_about([] { return !QToolTip::isVisible(); }));
    }
    focus("TxtTime");
    press(Qt::Key_Right);
    EXPECT_EQ(focused(), "Picture2_2");
    press(Qt::Key_Right);
    EXPECT_EQ(focused(), "lblStatus");
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "Current Conditions");
    focus("TxtRainLH");
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), "lblRainT");
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), "TxtRainToday");
}

TEST_F(Keyboard, BringsWhatItReachesIntoSight) {
    form->resize(600, 400);
    QApplication::processEvents();
    focus("TxtTime");
    for (int n = 0; n < 8; ++n) {
        press(Qt::Key_F6);
        EXPECT_FALSE(QApplication::focusWidget()->visibleRegion().isEmpty()) << focused();
    }
    focus("TxtTempMax");
    QApplication::processEvents();
    for (int n = 0; n < 7; ++n) press(Qt::Key_Down);
    EXPECT_EQ(focused(), "TxtBarMin");
    EXPECT_EQ(QApplication::focusWidget()->visibleRegion().boundingRect(), QApplication::focusWidget()->rect());
    press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_FALSE(QApplication::focusWidget()->visibleRegion().isEmpty()) << "backwards: " << focused();
}

TEST_F(Keyboard, F10GoesToTheMenuBar) {
    focus("Text2_0");
    press(Qt::Key_F10);
    EXPECT_EQ(QApplication::focusWidget(), form->menuBar());
}

}  // namespace
}  // namespace nimbry::test
