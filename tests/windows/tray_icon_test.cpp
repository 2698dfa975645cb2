#include "windows/tray_icon.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <string>

namespace nimbry::test {
namespace {

using windows::BoxBinding;
using windows::TrayIcon;

class Tray : public testing::Test {
protected:
    Tray()
        : icon(
              menu, binding,
              {.hide = [this] { done += "hide "; },
               .restore = [this] { done += "restore "; },
               .clicked = [this] { done += "clicked "; }},
              [this] { return has_tray; }, nullptr) {
        reset_main_menu(menu);
        binding.refresh();
    }
    [[nodiscard]] QAction* entry(int n) const { return icon.menu().actions().at(n); }
    [[nodiscard]] QSystemTrayIcon* system_icon() const { return icon.findChild<QSystemTrayIcon*>(); }

    MainMenu menu;
    BoxBinding binding;
    bool has_tray = true;
    std::string done;
    TrayIcon icon;
};

TEST_F(Tray, NamesTheProgramAndItsVersion) {
    EXPECT_EQ(icon.tip(), "Nimbry version 2.02");
}

TEST_F(Tray, OffersTheModelsPairAndFollowsIt) {
    ASSERT_EQ(icon.menu().actions().size(), 2);
    EXPECT_EQ(entry(0)->text(), "Hide");
    EXPECT_EQ(entry(1)->text(), "Restore Nimbry");
    EXPECT_TRUE(entry(0)->isEnabled());
    EXPECT_FALSE(entry(1)->isEnabled());
    entry(0)->trigger();
    EXPECT_EQ(done, "hide ");

    menu.mnuHideNow.text = "Away";
    menu.mnuHideNow.enabled = false;
    menu.mnuRestore.text = "Back";
    menu.mnuRestore.enabled = true;
    binding.refresh();
    EXPECT_EQ(entry(0)->text(), "Away");
    EXPECT_EQ(entry(1)->text(), "Back");
    EXPECT_FALSE(entry(0)->isEnabled());
    EXPECT_TRUE(entry(1)->isEnabled());
    entry(1)->trigger();
    EXPECT_EQ(done, "hide restore ");
}

TEST_F(Tray, IsThereWhileTheSystemHasATray) {
    EXPECT_TRUE(icon.is_there());
    has_tray = false;
    EXPECT_FALSE(icon.is_there());
}

TEST_F(Tray, ComesIntoATrayThatStartsAfterTheProgram) {
    BoxBinding own;
    const TrayIcon early(
        menu, own, {}, [] { return false; }, nullptr);
    EXPECT_TRUE(early.findChild<QSystemTrayIcon*>()->isVisible()) << "Qt adds an icon that is shown to a later tray";
}

TEST_F(Tray, TellsOfAClickOnItAndOfNothingElse) {
    emit system_icon()->activated(QSystemTrayIcon::Context);
    emit system_icon()->activated(QSystemTrayIcon::MiddleClick);
    EXPECT_EQ(done, "");
    emit system_icon()->activated(QSystemTrayIcon::Trigger);
    EXPECT_EQ(done, "clicked ");
    emit system_icon()->activated(QSystemTrayIcon::DoubleClick);
    EXPECT_EQ(done, "clicked clicked ");
}

struct NoticeCase {
    const char* code;
    QSystemTrayIcon::MessageIcon icon;
};

TEST_F(Tray, TellsANoticeWithThePictureOfItsKind) {
    const NoticeCase cases[]{{"i", QSystemTrayIcon::Information}, {"I9", QSystemTrayIcon::Information},
                             {"!", QSystemTrayIcon::Warning},     {"!9", QSystemTrayIcon::Warning},
                             {"x", QSystemTrayIcon::Critical},    {"X9", QSystemTrayIcon::Critical},
                             {"star", QSystemTrayIcon::NoIcon},   {"", QSystemTrayIcon::NoIcon}};
    QStringList texts;
    QSystemTrayIcon::MessageIcon shown{};
    int time = -1;
    QObject::connect(&icon, &TrayIcon::told,
                     [&](const QString& title, const QString& text, QSystemTrayIcon::MessageIcon kind, int ms) {
                         texts = {title, text};
                         shown = kind;
                         time = ms;
                     });
    for (const NoticeCase& c : cases) {
        SCOPED_TRACE(c.code);
        icon.message({.title = "Frost", .text = "-0.4 \260C\r\nat 7:00", .icon = c.code});
        EXPECT_EQ(texts, (QStringList{"Frost", QStringLiteral("-0.4 \u00B0C\nat 7:00")}));
        EXPECT_EQ(shown, c.icon);
        EXPECT_EQ(time, 5000);
    }
}

}  // namespace
}  // namespace nimbry::test
