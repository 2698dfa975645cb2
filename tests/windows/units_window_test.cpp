#include "windows/units_window.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <optional>
#include <vector>

namespace nimbry::test {
namespace {

using windows::UnitsWindow;

/// The window over a state, with what it asks for kept: the state follows only where a test lets it.
struct UnitsDialogWindow : testing::Test {
    WeatherState state;
    std::optional<UnitsDialog> accepted;
    int opened = 0;
    int closed = 0;
    std::vector<bool> changeovers, hours;
    bool rollover_is_free = true;
    UnitsWindow window{state, actions()};

    UnitsWindow::Actions actions() {
        return {.opened = [this] { ++opened; },
                .closed = [this] { ++closed; },
                .accepted = [this](const UnitsDialog& values) { accepted = values; },
                .choose_rollover =
                    [this](UnitsDialog& values, bool first_day) {
                        if (!rollover_is_free) return;
                        values.OptFirst = first_day;
                        values.OptLast = !first_day;
                    },
                .choose_changeover = [this](bool midnight) { changeovers.push_back(midnight); },
                .set_one_hour = [this](bool on) { hours.push_back(on); }};
    }
    void open() {
        window.present();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    QAbstractButton* option(const char* name) {
        auto* button = window.findChild<QAbstractButton*>(QString::fromLatin1(name));
        EXPECT_NE(button, nullptr) << name;
        return button;
    }
    void done() { window.findChild<QPushButton*>(QStringLiteral("Command1"))->click(); }
};

TEST_F(UnitsDialogWindow, ShowsWhatIsInForce) {
    state.settings.fTempC = state.settings.fBarmb = state.settings.fRainmm = state.settings.fWindkph = false;
    state.settings.fTempF = state.settings.fBarhpa = state.settings.fRainin = state.settings.fWindms = true;
    state.settings.alRoll = "905";
    state.settings.AddOneHour = true;
    open();
    EXPECT_EQ(window.windowTitle(), "Nimbry Units Setup");
    for (const char* on :
         {"optTempF", "optBarhpa", "optRainin", "optWindms", "OptLast", "optNineam", "optonehour", "chkNewWC"})
        EXPECT_TRUE(option(on)->isChecked()) << on;
    for (const char* off : {"optTempC", "optBarinhg", "optBarmb", "optRainmm", "optWindkph", "optWindmph",
                            "optWindknots", "OptFirst", "optMidnight"})
        EXPECT_FALSE(option(off)->isChecked()) << off;
}

TEST_F(UnitsDialogWindow, DoneHandsOverWhatWasChosen) {
    open();
    option("optWindknots")->click();
    option("optTempF")->click();
    option("chkNewWC")->click();
    EXPECT_FALSE(accepted) << "nothing before it is accepted";
    done();
    ASSERT_TRUE(accepted);
    UnitsDialog expected;
    expected.optWindkph = expected.optTempC = expected.chkNewWC = false;
    expected.optWindknots = expected.optTempF = true;
    EXPECT_EQ(*accepted, expected);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(UnitsDialogWindow, TellsWhenItOpensAndWhenItCloses) {
    open();
    open();
    EXPECT_EQ(opened, 1) << "an open window is only brought to the front";
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(accepted);
    open();
    done();
    EXPECT_EQ(opened, 2);
    EXPECT_EQ(closed, 2);
}

TEST_F(UnitsDialogWindow, TheChangeoverIsAskedForAndShownAsItIsInForce) {
    open();
    option("optMidnight")->click();
    EXPECT_EQ(changeovers, std::vector<bool>{true});
    EXPECT_TRUE(option("optNineam")->isChecked()) << "it was not granted";
    option("optMidnight")->click();
    state.settings.tmidnight = true;
    state.settings.tnineam = false;
    window.refresh();
    EXPECT_TRUE(option("optMidnight")->isChecked());
}

TEST_F(UnitsDialogWindow, TheHourIsSetAtOnce) {
    open();
    option("optonehour")->click();
    EXPECT_EQ(hours, std::vector<bool>{true});
}

TEST_F(UnitsDialogWindow, ARolloverThatIsRefusedGoesBackSilently) {
    rollover_is_free = false;
    open();
    option("OptLast")->click();
    EXPECT_TRUE(option("OptFirst")->isChecked());
    rollover_is_free = true;
    option("OptLast")->click();
    EXPECT_TRUE(option("OptLast")->isChecked());
    done();
    EXPECT_TRUE(accepted->OptLast);
}

TEST_F(UnitsDialogWindow, AnOpenWindowFollowsWhatIsCommittedElsewhere) {
    open();
    option("optTempF")->click();
    state.settings.fWindkph = false;
    state.settings.fWindmph = true;
    window.refresh();
    EXPECT_TRUE(option("optWindmph")->isChecked());
    EXPECT_TRUE(option("optTempF")->isChecked()) << "and keeps what was chosen in it";
}

TEST_F(UnitsDialogWindow, ARunningChangeoverLocksIt) {
    open();
    state.setup.Units.caption = "Temporarily Locked";
    state.setup.Units.enabled = false;
    window.refresh();
    EXPECT_EQ(window.windowTitle(), "Temporarily Locked");
    EXPECT_FALSE(window.isEnabled());
    state.setup.Units = SetupWindows{}.Units;
    window.refresh();
    EXPECT_TRUE(window.isEnabled());
}

}  // namespace
}  // namespace nimbry::test
