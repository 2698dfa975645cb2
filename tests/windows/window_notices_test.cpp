#include "windows/window_notices.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <memory>
#include <optional>

#include "engine/displays/main_panel.h"
#include "platform/loop_pauses.h"
#include "platform/system_clock.h"
#include "tests/windows/comes_about.h"
#include "windows/balloon_tip.h"
#include "windows/form1.h"
#include "windows/message_dialog.h"
#include "windows/sensor_window.h"
#include "windows/svg_pictures.h"
#include "windows/tray_icon.h"

namespace nimbry::test {
namespace {

using namespace nimbry::windows;

template <class Widget>
Widget* top_level(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == QString::fromLatin1(name) && widget->isVisible()) {
            return qobject_cast<Widget*>(widget);
        }
    }
    return nullptr;
}

class Notices : public testing::Test {
protected:
    Notices() : pauses(clock), form(state, {}, [this] { return has_tray; }), notices(pauses) {
        reset_main_panel(state);
        QObject::connect(form.findChild<TrayIcon*>(), &TrayIcon::told,
                         [this](const QString& title) { told_in_tray.append(title); });
        notices.set_main_window(&form);
        form.show();
    }
    void TearDown() override {
        pauses.finish();
        notices.set_main_window(nullptr);
    }

    static BalloonTip* tip() { return top_level<BalloonTip>("frmTip"); }
    static QString label(const QWidget* window, const char* name) {
        return window->findChild<QLabel*>(QString::fromLatin1(name))->text();
    }

    platform::SystemClock clock;
    platform::LoopPauses pauses;
    WeatherState state;
    bool has_tray = false;
    QStringList told_in_tray;
    Form1 form;
    WindowNotices notices;
};

TEST_F(Notices, ABalloonStandsBelowItsAnchor) {
    notices.balloon(
        {.title = "Comms Error",
         .text = "No data is being received from the weather station\r\nor the data being received is faulty.",
         .icon = "!",
         .anchor = "TxtWindChill"});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    EXPECT_EQ(label(tip(), "lblTitle"), "Comms Error");
    EXPECT_EQ(label(tip(), "lblText"),
              "No data is being received from the weather station\nor the data being received is faulty.");
    EXPECT_FALSE(tip()->hasFocus());
    EXPECT_TRUE(tip()->testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_GE(tip()->width(), 312);
    EXPECT_GE(tip()->height(), 108);
    const QWidget* anchor = form.widget_of("TxtWindChill");
    const QRect rect(anchor->mapToGlobal(QPoint(0, 0)), anchor->size());
    EXPECT_EQ(tip()->pos(), BalloonTip::place(rect, tip()->size(), tip()->screen()->availableGeometry()));
}

TEST_F(Notices, ABalloonStandsAtTheHeatIndexUnlessItSaysWhere) {
    notices.balloon({.title = "One", .text = "1"});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    const QWidget* anchor = form.widget_of("TxtHeatInd");
    ASSERT_NE(anchor, nullptr);
    const QRect rect(anchor->mapToGlobal(QPoint(0, 0)), anchor->size());
    EXPECT_EQ(tip()->pos(), BalloonTip::place(rect, tip()->size(), tip()->screen()->availableGeometry()));
}

TEST_F(Notices, ABalloonMayHaveACloseMarkAndATimeOfItsOwn) {
    notices.balloon({.title = "Both", .text = "1", .bShowClose = true});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    auto* close = tip()->findChild<QAbstractButton*>("imgClose");
    EXPECT_TRUE(close->isVisible());
    const auto* timer = tip()->findChild<QTimer*>("timAutoClose");
    EXPECT_TRUE(timer->isActive());
    close->click();
    EXPECT_EQ(tip(), nullptr);
    EXPECT_FALSE(timer->isActive());
}

TEST_F(Notices, ABalloonIsNoSmallerThanItSays) {
    notices.balloon({.title = "Small", .text = "1"});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    EXPECT_EQ(tip()->size(), QSize(312, 108)) << "4680 and 1620 twips of 15 to the pixel";
    notices.balloon({.title = "Large", .text = "1", .lHeight = 3000, .lWidth = 7500});
    ASSERT_TRUE(comes_about([] { return label(tip(), "lblTitle") == "Large"; }));
    EXPECT_EQ(tip()->size(), QSize(500, 200));
}

TEST_F(Notices, AWindowThatIsNotToBeSeenHasItsBalloonsInTheTrayToo) {
    has_tray = true;
    const auto tell = [this](const char* title) {
        notices.balloon({.title = title, .text = "1"});
        EXPECT_TRUE(comes_about([&] { return tip() != nullptr && label(tip(), "lblTitle") == title; }));
    };
    tell("Shown");
    form.showMinimized();
    tell("Minimised");
    form.restore();
    tell("Shown again");
    form.hide_now();
    tell("Hidden");
    EXPECT_EQ(told_in_tray, (QStringList{"Minimised", "Hidden"}));
}

TEST_F(Notices, ANewBalloonReplacesTheOneThatShows) {
    notices.balloon({.title = "One", .text = "1"});
    notices.balloon({.title = "Two", .text = "2"});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr && label(tip(), "lblTitle") == "Two"; }));
    int tips = 0;
    for (const QWidget* widget : QApplication::topLevelWidgets()) tips += widget->objectName() == "frmTip" ? 1 : 0;
    EXPECT_EQ(tips, 1);
}

TEST_F(Notices, ANewBalloonHasItsOwnTime) {
    notices.balloon({.title = "Stays", .text = "1", .closes_after = Milliseconds{0}});
    notices.balloon({.title = "Usual", .text = "2"});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr && label(tip(), "lblTitle") == "Usual"; }));
    const auto* timer = tip()->findChild<QTimer*>("timAutoClose");
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 5000);
    EXPECT_FALSE(tip()->findChild<QAbstractButton*>("imgClose")->isVisible());
    notices.balloon({.title = "Stays again", .text = "3", .closes_after = Milliseconds{0}});
    ASSERT_TRUE(comes_about([] { return label(tip(), "lblTitle") == "Stays again"; }));
    EXPECT_FALSE(timer->isActive());
}

TEST_F(Notices, ABalloonIsAToolTipOfTheMainWindow) {
    notices.balloon({.title = "One", .text = "1"});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    EXPECT_EQ(tip()->parentWidget(), &form);
    EXPECT_EQ(tip()->windowType(), Qt::ToolTip);
    EXPECT_TRUE(tip()->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
}

TEST_F(Notices, ABalloonWithoutAKnownIconHidesIt) {
    notices.balloon({.title = "One", .text = "1", .icon = "I9"});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    const auto* icon = tip()->findChild<QLabel*>("imgDisplayIcon");
    EXPECT_TRUE(icon->isVisible());
    notices.balloon({.title = "Two", .text = "2", .icon = "star"});
    ASSERT_TRUE(comes_about([] { return label(tip(), "lblTitle") == "Two"; }));
    EXPECT_FALSE(icon->isVisible());
}

TEST_F(Notices, AHiddenWindowHasItsBalloonsInTheCornerOfTheScreen) {
    form.hide();
    notices.balloon({.title = "Corner", .text = "1"});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    const QRect screen = tip()->screen()->availableGeometry();
    EXPECT_EQ(tip()->geometry().bottomRight(), screen.bottomRight() - QPoint(9, 9));
}

TEST_F(Notices, ABalloonClosesByItself) {
    notices.balloon({.title = "Long", .text = "1", .closes_after = Milliseconds{100'000}});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    auto* timer = tip()->findChild<QTimer*>("timAutoClose");
    EXPECT_EQ(timer->interval(), 100'000);
    timer->start(0);  // its time is over
    EXPECT_TRUE(comes_about([] { return tip() == nullptr; }));
}

TEST_F(Notices, ABalloonThatStaysHasACloseMark) {
    notices.balloon({.title = "Stays", .text = "1", .closes_after = Milliseconds{0}});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    EXPECT_FALSE(tip()->findChild<QTimer*>("timAutoClose")->isActive());
    auto* close = tip()->findChild<QAbstractButton*>("imgClose");
    EXPECT_TRUE(close->isVisible());
    close->click();
    EXPECT_EQ(tip(), nullptr);
}

TEST_F(Notices, ABalloonHasRoundCornersOnAnyScreen) {
    notices.balloon({.title = "Round", .text = "1"});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    const QRect whole = tip()->rect();
    for (const QPoint corner : {whole.topLeft(), whole.topRight(), whole.bottomLeft(), whole.bottomRight()})
        EXPECT_FALSE(tip()->mask().contains(corner));
    EXPECT_TRUE(tip()->mask().contains(whole.center()));
    EXPECT_TRUE(tip()->mask().contains(QPoint(whole.center().x(), whole.bottom() - 1))) << "the last line but one";
}

TEST_F(Notices, ATallerTextMakesATallerBalloon) {
    std::string text;
    for (int n = 0; n < 60; ++n) text += "weather station ";
    notices.balloon({.title = "Long", .text = text});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    EXPECT_GT(tip()->height(), 108);
}

TEST_F(Notices, AMinimisedWindowHasItsBalloonsInTheCornerOfTheScreen) {
    form.showMinimized();
    notices.balloon({.title = "Corner", .text = "1"});
    ASSERT_TRUE(comes_about([] { return tip() != nullptr; }));
    const QRect screen = tip()->screen()->availableGeometry();
    EXPECT_EQ(tip()->geometry().bottomRight(), screen.bottomRight() - QPoint(9, 9));
}

TEST(BalloonPlace, IsBelowTheAnchorAndOnItsScreen) {
    const QRect screen(0, 0, 1000, 700);
    EXPECT_EQ(BalloonTip::place({100, 200, 50, 20}, {312, 108}, screen), QPoint(100, 228));
    EXPECT_EQ(BalloonTip::place({900, 200, 50, 20}, {312, 108}, screen), QPoint(688, 228)) << "moved to the left";
    EXPECT_EQ(BalloonTip::place({100, 660, 50, 20}, {312, 108}, screen), QPoint(100, 592)) << "moved up";
    EXPECT_EQ(BalloonTip::place({-400, 200, 50, 20}, {312, 108}, {-500, 0, 500, 700}), QPoint(-400, 228))
        << "on a screen to the left of the first";
}

struct IconCase {
    const char* code;
    const char* picture;
};

TEST(NoticeIcons, AreComparedInLowerCase) {
    const IconCase cases[]{{"i", "notice-information"},
                           {"I", "notice-information"},
                           {"x", "notice-error"},
                           {"!", "notice-warning"},
                           {"i9", "notice-information-9"},
                           {"I9", "notice-information-9"},
                           {"X9", "notice-error-9"},
                           {"!9", "notice-warning-9"},
                           {"?", "notice-question"},
                           {"", ""},
                           {"q", ""},
                           {"i8", ""},
                           {"info", ""}};
    for (const IconCase& c : cases) EXPECT_EQ(notice_picture(c.code), c.picture) << c.code;
}

// --- Boxes

struct AnswerCase {
    const char* law;
    Choices choices;
    QMessageBox::StandardButton pressed;  ///< NoButton: the close mark
    Answer answer;
};

TEST_F(Notices, ABoxAnswersTheConversationThatAsked) {
    const AnswerCase cases[]{
        {"ok", Choices::ok, QMessageBox::Ok, Answer::ok},
        {"ok by the close mark", Choices::ok, QMessageBox::NoButton, Answer::ok},
        {"ok of two", Choices::ok_cancel, QMessageBox::Ok, Answer::ok},
        {"cancel of two", Choices::ok_cancel, QMessageBox::Cancel, Answer::cancel},
        {"cancel of two by the close mark", Choices::ok_cancel, QMessageBox::NoButton, Answer::cancel},
        {"yes", Choices::yes_no, QMessageBox::Yes, Answer::yes},
        {"no", Choices::yes_no, QMessageBox::No, Answer::no},
        {"no by the close mark", Choices::yes_no, QMessageBox::NoButton, Answer::no},
        {"retry", Choices::retry_cancel, QMessageBox::Retry, Answer::retry},
        {"cancel", Choices::retry_cancel, QMessageBox::Cancel, Answer::cancel},
        {"cancel by the close mark", Choices::retry_cancel, QMessageBox::NoButton, Answer::cancel},
    };
    for (const AnswerCase& c : cases) {
        SCOPED_TRACE(c.law);
        std::optional<Answer> answer;
        pauses.start([&] {
            answer = notices.box({.title = "Nimbry", .text = "One,\r\ntwo", .icon = "?", .choices = c.choices});
        });
        EXPECT_FALSE(answer.has_value()) << "start() has returned: nothing blocks";
        ASSERT_TRUE(comes_about([] { return top_level<MessageDialog>("MessageBox") != nullptr; }));
        auto* dialog = top_level<MessageDialog>("MessageBox");
        EXPECT_EQ(dialog->windowTitle(), "Nimbry");
        EXPECT_EQ(dialog->text(), "One,\ntwo");
        if (c.pressed == QMessageBox::NoButton) {
            dialog->close();
        } else {
            dialog->button(c.pressed)->click();
        }
        ASSERT_TRUE(comes_about([&] { return answer.has_value(); }));
        EXPECT_EQ(*answer, c.answer);
        EXPECT_TRUE(comes_about([] { return top_level<MessageDialog>("MessageBox") == nullptr; }));
    }
}

TEST_F(Notices, TheStationIsHeardWhileABoxStands) {
    int heard = 0;
    pauses.start([&] { (void)notices.box({.text = "Retry?", .choices = Choices::retry_cancel}); });
    pauses.start([&] {
        for (int n = 0; n < 3; ++n) {
            pauses.pause(Milliseconds{1});
            ++heard;
        }
    });
    EXPECT_TRUE(comes_about([&] { return heard == 3; }));
    EXPECT_NE(top_level<MessageDialog>("MessageBox"), nullptr) << "it stands still";
}

TEST_F(Notices, AClosingProgramTakesItsBoxesAlong) {
    bool answered = false;
    pauses.start([&] {
        (void)notices.box({.text = "Anything?"});
        answered = true;
    });
    ASSERT_TRUE(comes_about([] { return top_level<MessageDialog>("MessageBox") != nullptr; }));
    pauses.cancel_all();
    EXPECT_TRUE(comes_about([] { return top_level<MessageDialog>("MessageBox") == nullptr; }));
    EXPECT_FALSE(answered);
}

TEST_F(Notices, AnAlarmBringsTheWindowBack) {
    form.showMinimized();
    notices.restore_main_window();
    EXPECT_TRUE(comes_about([&] { return form.isVisible() && !form.isMinimized(); }));
}

TEST_F(Notices, AWindowThatNobodyOffersIsNotShown) {
    int opened = 0;
    notices.set_opener("NimbrySensor", [&opened] { ++opened; });
    notices.show_window("NoSuchWindow");
    notices.show_window("NimbrySensor");
    EXPECT_TRUE(comes_about([&] { return opened == 1; }));
}

}  // namespace
}  // namespace nimbry::test
