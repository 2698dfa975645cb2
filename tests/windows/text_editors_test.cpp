// The comment editors and the editor of the days since rain.

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <optional>
#include <utility>
#include <vector>

#include "tests/world/bare_copy.h"
#include "windows/comment_window.h"
#include "windows/rain_days_window.h"
#include "windows/setup_dialogs.h"

namespace nimbry::test {
namespace {

using namespace nimbry::windows;

QPushButton* button(const QWidget& window, const char* name) {
    return window.findChild<QPushButton*>(QString::fromLatin1(name));
}
QLineEdit* line(const QWidget& window, const char* name) {
    return window.findChild<QLineEdit*>(QString::fromLatin1(name));
}
QString label(const QWidget& window, const char* name) {
    return window.findChild<QLabel*>(QString::fromLatin1(name))->text();
}

class CommentEditorWindow : public testing::Test {
protected:
    WeatherState state;
    std::vector<std::string> accepted;
    CommentWindow window{state, Comment::first, [this](const CommentDialog& d) { accepted.push_back(d.txtComment); }};
    CommentWindow second{state, Comment::second, [this](const CommentDialog& d) { accepted.push_back(d.txtComment); }};
};

TEST_F(CommentEditorWindow, HasItsNameTitleAndButtons) {
    EXPECT_EQ(window.objectName(), "NimbryComment");
    EXPECT_EQ(window.windowTitle(), "Nimbry Comment");
    EXPECT_EQ(second.objectName(), "NimbryComment2");
    EXPECT_EQ(second.windowTitle(), "Nimbry Comment 2");
    for (const CommentWindow* each : {&window, &second}) {
        EXPECT_EQ(button(*each, "Command1")->text().remove(u'&'), "Clear");
        EXPECT_EQ(button(*each, "Command2")->text(), "OK");
        EXPECT_FALSE(each->isModal());
    }
}

TEST_F(CommentEditorWindow, ShowsTheCommentInForceEachTimeItOpens) {
    state.settings.WebComment = "<!--empty-->";
    state.settings.WebComment2 = "caf\xE9";
    window.present();
    second.present();
    EXPECT_EQ(line(window, "txtComment")->text(), "");
    EXPECT_EQ(line(second, "txtComment")->text(), QStringLiteral("caf\u00E9"));
    second.close();
    state.settings.WebComment2 = "tea";
    second.present();
    EXPECT_EQ(line(second, "txtComment")->text(), "tea");
}

TEST_F(CommentEditorWindow, HandsItsTextOverAndCloses) {
    window.present();
    QTest::keyClicks(line(window, "txtComment"), QStringLiteral("dry at last"));
    button(window, "Command2")->click();
    EXPECT_EQ(accepted, std::vector<std::string>{"dry at last"});
    EXPECT_FALSE(window.isVisible());
}

TEST_F(CommentEditorWindow, ClearEmptiesTheBoxAndNothingElse) {
    state.settings.WebComment = "old";
    window.present();
    button(window, "Command1")->click();
    EXPECT_EQ(line(window, "txtComment")->text(), "");
    EXPECT_TRUE(accepted.empty());
    EXPECT_TRUE(window.isVisible());
    button(window, "Command2")->click();
    EXPECT_EQ(accepted, std::vector<std::string>{""});
}

TEST_F(CommentEditorWindow, ClosingInAnotherWayDropsTheText) {
    state.settings.WebComment = "old";
    window.present();
    line(window, "txtComment")->selectAll();
    QTest::keyClicks(line(window, "txtComment"), QStringLiteral("new"));
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(accepted.empty());
    EXPECT_FALSE(window.isVisible());
    window.present();
    EXPECT_EQ(line(window, "txtComment")->text(), "old");
}

TEST_F(CommentEditorWindow, CountsItsCharactersAndTakesTwoThousand) {
    state.settings.WebComment = "old";
    window.present();
    EXPECT_EQ(label(window, "lblCount"), "3 of 2000 characters");
    QTest::keyClick(line(window, "txtComment"), Qt::Key_X);
    EXPECT_EQ(label(window, "lblCount"), "4 of 2000 characters");
    button(window, "Command1")->click();
    EXPECT_EQ(label(window, "lblCount"), "0 of 2000 characters");
    EXPECT_EQ(line(window, "txtComment")->maxLength(), 2000);
}

class RainDaysEditorWindow : public testing::Test {
protected:
    RainDaysEditorWindow() {
        state.records.DaySinceRain = 3;
        state.records.LastRain = 2.5F;
        window.present();
    }

    WeatherState state;
    std::optional<RainDaysDialog> accepted;
    RainDaysWindow window{state, [this](const RainDaysDialog& values) { accepted = values; }};
};

TEST_F(RainDaysEditorWindow, HasItsNameTitleAndFields) {
    EXPECT_EQ(window.objectName(), "NimbryEditDSR");
    EXPECT_EQ(window.windowTitle(), "Nimbry Edit Days Since rain");
    EXPECT_EQ(line(window, "txtEDSR")->text(), "3");
    EXPECT_EQ(line(window, "txtALR")->text(), "2.5");
    EXPECT_EQ(button(window, "cmdDone")->text(), "Done");
    QStringList captions;
    for (const QLabel* each : window.findChildren<QLabel*>())
        if (each->buddy() != nullptr) captions.append(each->buddy()->objectName() + u' ' + each->text().remove(u'&'));
    captions.sort();
    EXPECT_EQ(captions, (QStringList{"txtALR Amount of Last Rain", "txtEDSR Days Since Rain"}));
}

TEST_F(RainDaysEditorWindow, NamesTheRainUnitInForce) {
    EXPECT_EQ(label(window, "lblRainUnit"), "mm");
    window.close();
    state.settings.fRainin = true;
    state.units = units_from(state.settings);
    window.present();
    EXPECT_EQ(label(window, "lblRainUnit"), "In.");
}

TEST_F(RainDaysEditorWindow, HandsOverWhateverIsTypedAndCloses) {
    line(window, "txtEDSR")->selectAll();
    QTest::keyClicks(line(window, "txtEDSR"), QStringLiteral("no days"));
    button(window, "cmdDone")->click();
    EXPECT_EQ(accepted, (RainDaysDialog{"no days", "2.5"}));
    EXPECT_FALSE(window.isVisible());
}

TEST(SetupDialogs, KeepOneEditorForEachComment) {
    WeatherState state;
    QWidget parent;
    std::vector<std::pair<Comment, std::string>> accepted;
    int rain_days = 0;
    SetupDialogs::Actions actions;
    actions.accept_comment = [&](Comment which, const CommentDialog& d) { accepted.emplace_back(which, d.txtComment); };
    actions.accept_rain_days = [&](const RainDaysDialog&) { ++rain_days; };
    SetupDialogs dialogs(state, actions, &parent);
    for (int n = 0; n < 2; ++n) {
        dialogs.show_comment(Comment::first);
        dialogs.show_comment(Comment::second);
        dialogs.show_rain_days();
    }
    ASSERT_EQ(parent.findChildren<CommentWindow*>().size(), 2);
    ASSERT_EQ(parent.findChildren<RainDaysWindow*>().size(), 1);
    QTest::keyClicks(line(*parent.findChild<CommentWindow*>("NimbryComment2"), "txtComment"), QStringLiteral("two"));
    button(*parent.findChild<CommentWindow*>("NimbryComment2"), "Command2")->click();
    button(*parent.findChild<CommentWindow*>("NimbryComment"), "Command2")->click();
    button(*parent.findChild<RainDaysWindow*>(), "cmdDone")->click();
    EXPECT_EQ(accepted, (std::vector<std::pair<Comment, std::string>>{{Comment::second, "two"}, {Comment::first, ""}}));
    EXPECT_EQ(rain_days, 1);
}

}  // namespace
}  // namespace nimbry::test
