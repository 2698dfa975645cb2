#include "windows/small_windows.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <map>
#include <memory>
#include <string>

#include "engine/displays/main_panel.h"
#include "engine/displays/status_message.h"
#include "tests/windows/screens.h"
#include "tests/world/world.h"
#include "windows/about_window.h"
#include "windows/accessibility.h"
#include "windows/link_label.h"
#include "windows/palette_colours.h"
#include "windows/sensor_window.h"
#include "windows/splash.h"
#include "windows/text_window.h"
#include "windows/window_notices.h"

namespace nimbry::test {
namespace {

using namespace nimbry::windows;

QString label(const QWidget& window, const char* name) {
    return window.findChild<QLabel*>(QString::fromLatin1(name))->text();
}

TEST(SensorWindow, HasItsTextWithoutAnEnd) {
    const SensorWindow window;
    EXPECT_EQ(window.windowTitle(), "Nimbry Sensor Error Message");
    EXPECT_EQ(
        label(window, "Label1"),
        "Nimbry has detected invalid data from one or more of your weather station sensors at some point. This may be "
        "due to a faulty or intermittent sensor or there may have been an out of range condition. The program will "
        "have "
        "continued");
    EXPECT_EQ(window.findChild<QPushButton*>("Command1")->text(), "Close");
    EXPECT_EQ(window.findChild<QLabel*>("Picture1")->pixmap().deviceIndependentSize(), QSizeF(72, 72));
    EXPECT_FALSE(window.isModal());
}

TEST(SensorWindow, IsNeverShownTwice) {
    WeatherState state;
    QWidget parent;
    SmallWindows windows(state, &parent);
    windows.show_sensor_window();
    windows.show_sensor_window();
    EXPECT_EQ(parent.findChildren<SensorWindow*>().size(), 1);
    auto* window = parent.findChild<SensorWindow*>();
    EXPECT_TRUE(window->isVisible());
    window->findChild<QPushButton*>("Command1")->click();
    EXPECT_FALSE(window->isVisible());
    windows.show_sensor_window();
    EXPECT_TRUE(window->isVisible());
}

TEST(Splash, NamesTheProduct) {
    const Splash splash;
    EXPECT_EQ(label(splash, "lblProduct"), "Nimbry 2.02");
    EXPECT_EQ(label(splash, "lblLoading"), "Program loading .....");
    EXPECT_EQ(splash.size(), QSize(420, 240));
    EXPECT_FALSE(splash.mask().contains(QPoint(0, 0))) << "its corners are round where nothing blends windows, too";
    EXPECT_TRUE(splash.mask().contains(splash.rect().center()));
}

struct StampCase {
    const char* stamp;
    const char* version;
    const char* build;
};

TEST(AboutWindow, ReadsTheVersionStamp) {
    const StampCase cases[]{{"Nimbry|202|251003", "Version 2.02", "Build 251003"},
                            {"Nimbry|210|260101", "Version 2.10", "Build 260101"},
                            {"Nimbry|202", "Version 2.02", ""},
                            {"Nimbry", "", ""},
                            {"", "", ""}};
    for (const StampCase& c : cases) {
        SCOPED_TRACE(c.stamp);
        EXPECT_EQ(about_lines(c.stamp).version, c.version);
        EXPECT_EQ(about_lines(c.stamp).build, c.build);
    }
    const AboutWindow window("Nimbry|202|251003");
    EXPECT_EQ(window.windowTitle(), "Nimbry About...");
    EXPECT_EQ(label(window, "lblTitle"), "Nimbry");
    EXPECT_EQ(label(window, "lblVersion"), "Version 2.02");
    EXPECT_EQ(label(window, "lblBuild"), "Build 251003");
    EXPECT_EQ(label(window, "lblDescription"),
              "Weather monitoring software for the WM-918/WX-200 electronic weather station");
}

TEST(AboutWindow, BuildsTheMailLinkFromTheVersion) {
    EXPECT_EQ(mail_link("somebody@example.org", "2.02"), "mailto:somebody@example.org?SUBJECT=Nimbry: 2.02");
    EXPECT_EQ(about_lines("Nimbry|205|1").number, "2.05");
    EXPECT_EQ(about_lines("Nimbry").number, "");
}

TEST(AboutWindow, HasThreeLinksForMouseAndKeyboard) {
    install_accessibility();
    AboutWindow window("Nimbry|202|251003");
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QStringList asked;
    QObject::connect(&window, &AboutWindow::asked_for, [&asked](const QString& target) { asked.append(target); });
    const std::map<std::string, QString> targets{
        {"lblUrl", QStringLiteral("https://nimbry.example/")},
        {"lblForum", QStringLiteral("https://nimbry.example/forum/")},
        {"lblEmail", QStringLiteral("mailto:nimbry@nimbry.example?SUBJECT=Nimbry: 2.02")}};
    for (const auto& [name, target] : targets) {
        SCOPED_TRACE(name);
        auto* link = window.findChild<LinkLabel*>(QString::fromStdString(name));
        ASSERT_NE(link, nullptr);
        asked.clear();
        QTest::mouseClick(link, Qt::LeftButton);
        EXPECT_EQ(asked, QStringList{target});
        link->setFocus(Qt::TabFocusReason);
        EXPECT_TRUE(link->hasFocus());
        QTest::keyClick(link, Qt::Key_Space);
        QTest::keyClick(link, Qt::Key_Return);
        EXPECT_EQ(asked, (QStringList{target, target, target}));
        EXPECT_TRUE(window.isVisible()) << "Enter was the link's";
        EXPECT_EQ(QAccessible::queryAccessibleInterface(link)->role(), QAccessible::Link);
        EXPECT_EQ(QAccessible::queryAccessibleInterface(link)->text(QAccessible::Name), link->text());
    }
}

TEST(AboutWindow, ColoursTheLinkUnderThePointerLegiblyInBothThemes) {
    const QPalette light = QApplication::palette();
    for (const QPalette& theme : {light, dark_palette()}) {
        QApplication::setPalette(theme);
        AboutWindow window("Nimbry|202|251003");
        window.show();
        auto* link = window.findChild<LinkLabel*>("lblForum");
        const QColor usual = link->palette().color(QPalette::WindowText);
        EXPECT_FALSE(link->font().underline());
        QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QApplication::sendEvent(link, &enter);
        const QColor lit = link->palette().color(QPalette::WindowText);
        EXPECT_NE(lit, usual);
        EXPECT_TRUE(link->font().underline()) << "not by colour alone";
        for (const QColor& colour : {usual, lit})
            EXPECT_GE(contrast(colour, link->palette().color(QPalette::Window)), 4.5) << colour.name().toStdString();
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(link, &leave);
        EXPECT_EQ(link->palette().color(QPalette::WindowText), usual);
        EXPECT_FALSE(link->font().underline());
    }
    QApplication::setPalette(light);
}

TEST(StatusMessage, ShowsForThreeSecondsAndNineTenths) {
    World world;
    world.start();
    show_status_message(world.copy(), "Synchronising");
    EXPECT_EQ(world.notices.windows.back(), "NimbryDisplay");
    EXPECT_TRUE(world.state().status_message.open);
    EXPECT_EQ(world.state().status_message.text, "Synchronising");
    world.run_for(std::chrono::milliseconds{3899});
    EXPECT_TRUE(world.state().status_message.open);
    world.run_for(std::chrono::milliseconds{1});
    EXPECT_FALSE(world.state().status_message.open);
    world.run_for(std::chrono::seconds{60});
    EXPECT_FALSE(world.state().status_message.open) << "the timer has stopped";
}

/// The windows that the model has shown by their names, over the port for notices.
struct ByName {
    ByName() { windows.offer_to(notices); }
    QWidget* show(const char* name) {
        notices.show_window(name);
        QCoreApplication::processEvents();
        return parent.findChild<QWidget*>(QString::fromLatin1(name));
    }

    WeatherState state;
    QWidget parent;
    VirtualClock clock;
    VirtualPauses pauses{clock};
    WindowNotices notices{pauses};
    SmallWindows windows{state, &parent};
};

TEST(StatusMessage, StandsInAWindowThatTakesNoFocusUntilTheModelHasItGone) {
    ByName shown;
    shown.state.status_message = {true, "Forced FTP upload"};
    shown.windows.refresh();
    EXPECT_EQ(shown.parent.findChild<QWidget*>("NimbryDisplay"), nullptr) << "it is opened by its name";
    QWidget* window = shown.show("NimbryDisplay");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowTitle(), "Nimbry Status Message");
    EXPECT_EQ(label(*window, "Label1"), "Forced FTP upload");
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(window->testAttribute(Qt::WA_ShowWithoutActivating));

    shown.state.status_message.text = "Forced email send";
    shown.show("NimbryDisplay");
    EXPECT_EQ(label(*window, "Label1"), "Forced email send");
    shown.state.status_message.open = false;
    shown.windows.refresh();
    EXPECT_FALSE(window->isVisible());
    shown.show("NimbryDisplay");
    EXPECT_FALSE(window->isVisible()) << "its moment was over before the window came to it";
}

TEST(SyncWindow, FollowsItsTextAndClosesWhenTheModelSaysSo) {
    ByName shown;
    SyncProgress& model = shown.state.network.frmSync;
    model.open = true;
    model.Text1 = "A Nimbry server was detected at 10.0.0.1\r\n";
    QWidget* window = shown.show("frmSync");
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowTitle(), "Nimbry Client/Server Synchronization");
    auto* text = window->findChild<QPlainTextEdit*>("Text1");
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->isReadOnly());
    EXPECT_EQ(text->toPlainText(), "A Nimbry server was detected at 10.0.0.1\n");

    model.Text1 += "Client is requesting a connection\r\n";
    shown.windows.refresh();
    EXPECT_TRUE(text->toPlainText().endsWith("connection\n"));
    EXPECT_TRUE(text->textCursor().atEnd());
    model = {};
    shown.windows.refresh();
    EXPECT_FALSE(window->isVisible());
}

TEST(ProgramLogWindow, ShowsTheLogAndSearchesIt) {
    WeatherState state;
    QWidget parent;
    SmallWindows windows(state, &parent);
    windows.show_file("nbyprog.log", "05 Oct 2026 14:00:10 one\r\n05 Oct 2026 14:00:20 +4 \260C two\r\n");
    auto* text = parent.findChild<QPlainTextEdit*>("Text1");
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->toPlainText(), QStringLiteral("05 Oct 2026 14:00:10 one\n05 Oct 2026 14:00:20 +4 \u00B0C two\n"));
    EXPECT_TRUE(text->isReadOnly());
    EXPECT_TRUE(text->textCursor().atEnd());
    ASSERT_TRUE(QTest::qWaitForWindowActive(text->window()));
    auto* search = parent.findChild<QLineEdit*>("txtFind");
    QTest::keyClick(text, Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(search->isVisible());
    search->setText("14:00");
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(text->textCursor().selectionStart(), 12) << "from the end on it begins at the top again";
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(text->textCursor().selectionStart(), 25 + 12);
}

TEST(FtpDebugWindow, IsOpenWithItsMenuEntryAndFollowsTheConversation) {
    WeatherState state;
    QWidget parent;
    SmallWindows windows(state, &parent);
    int closed = 0;
    windows.on_debug_closed([&] {
        ++closed;
        state.menu.mnuFTPdebug.checked = false;
    });
    windows.refresh();
    EXPECT_EQ(parent.findChild<TextWindow*>(), nullptr);
    state.menu.mnuFTPdebug.checked = true;
    state.publish.upload.debug_text = "USER me\r\n331 password\r\n";
    windows.refresh();
    auto* window = parent.findChild<TextWindow*>();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    auto* text = window->findChild<QPlainTextEdit*>("Text1");
    EXPECT_EQ(text->toPlainText(), QStringLiteral("USER me\n331 password\n"));
    EXPECT_TRUE(text->isReadOnly());
    state.publish.upload.debug_text += "230 in\r\n";
    windows.refresh();
    EXPECT_EQ(text->toPlainText(), QStringLiteral("USER me\n331 password\n230 in\n"));
    EXPECT_TRUE(text->textCursor().atEnd());

    window->close();
    EXPECT_EQ(closed, 1);
    windows.refresh();
    state.menu.mnuFTPdebug.checked = true;
    windows.refresh();
    EXPECT_TRUE(window->isVisible());
    state.menu.mnuFTPdebug.checked = false;
    windows.refresh();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(closed, 1) << "it was the menu that closed it";
}

}  // namespace
}  // namespace nimbry::test
