#include "windows/internet_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace nimbry::test {
namespace {

using windows::InternetWindow;

/// The window over a state with a location, with what it asks for kept.
struct InternetDialogWindow : testing::Test {
    InternetDialogWindow() {
        state.settings.Latitude = "48.2";
        state.settings.Longitude = "16.4";
        state.publish.NimbryFTPSetup.FTPServer = "ftp.home.net";
        state.publish.NimbryFTPSetup.FTPPass = "p\xC3\xA4ss";
        state.publish.NimbryFTPSetup.MailList = {"07:00"};
        window.present();
    }

    template <class Widget>
    Widget& find(const char* name) {
        auto* found = window.findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr) throw std::runtime_error(name);
        return *found;
    }
    void type(const char* name, const QString& text) {
        auto& line = find<QLineEdit>(name);
        line.clear();
        QTest::keyClicks(&line, text);
    }
    [[nodiscard]] int tab() { return find<QTabWidget>("tabs").currentIndex(); }

    WeatherState state;
    int opened = 0, closed = 0;
    std::optional<InternetDialog> accepted;
    std::vector<std::pair<InternetDialog, ForcedRun>> forced;
    std::vector<std::string> refused;
    InternetWindow window{
        state,
        {.opened = [this] { ++opened; },
         .closed = [this] { ++closed; },
         .accepted = [this](const InternetDialog& values) { accepted = values; },
         .forced = [this](const InternetDialog& values, ForcedRun which) { forced.emplace_back(values, which); },
         .refused = [this](const std::string& message) { refused.push_back(message); }}};
};

TEST_F(InternetDialogWindow, HasAControlForEveryValue) {
    InternetDialog dialog;
    for (const DialogControl& control : dialog_controls(dialog)) {
        EXPECT_NE(window.findChild<QWidget*>(QString::fromStdString(std::string(control.name))), nullptr)
            << control.name;
    }
    for (const InternetPassword& password : internet_passwords())
        find<QLineEdit>(std::string(password.control).c_str());
    for (const char* name : {"cmdForceFTP", "cmdForceMail", "cmdForceWU", "Command1"}) find<QPushButton>(name);
    find<QLabel>("lblStatus");
    EXPECT_EQ(window.objectName(), "NimbryFTPSetup");
    EXPECT_EQ(window.windowTitle(), "Nimbry FTP / Email Setup");
}

TEST_F(InternetDialogWindow, HasItsFiveTabs) {
    auto& tabs = find<QTabWidget>("tabs");
    QStringList names;
    for (int n = 0; n < tabs.count(); ++n) names << tabs.tabText(n).remove(u'&');
    EXPECT_EQ(names, (QStringList{"FTP", "Email", "Weather services", "Local save", "Connection"}));
}

TEST_F(InternetDialogWindow, OpensAsTallAsItsTallestTabWhereTheScreenHasRoom) {
    auto& tabs = find<QTabWidget>("tabs");
    const int room = window.screen()->availableSize().height() - 60;
    EXPECT_LE(window.height(), std::max(room, window.minimumSizeHint().height()));
    for (int n = 0; n < tabs.count(); ++n) {
        tabs.setCurrentIndex(n);
        QApplication::processEvents();
        auto* scroll = qobject_cast<QScrollArea*>(tabs.widget(n));
        ASSERT_NE(scroll, nullptr);
        EXPECT_TRUE(scroll->viewport()->height() >= scroll->widget()->sizeHint().height() || window.height() >= room)
            << n << ": " << scroll->viewport()->height() << " of " << scroll->widget()->sizeHint().height();
    }
}

TEST_F(InternetDialogWindow, HandsOverWhatWasEditedAndCloses) {
    EXPECT_EQ(find<QLineEdit>("txtFTPServer").text(), "ftp.home.net");
    type("txtMailServer", "mail.home.net");
    find<QCheckBox>("chkLocal").click();
    find<QSpinBox>("txtFTPMins").setValue(15);
    auto& security = find<QComboBox>("cboMailSecurity");
    security.setCurrentIndex(2);
    emit security.activated(2);
    find<QPushButton>("Command1").click();
    ASSERT_TRUE(accepted);
    EXPECT_EQ(accepted->MailServer, "mail.home.net");
    EXPECT_TRUE(accepted->chkLocal);
    EXPECT_EQ(accepted->FTPMins, "15");
    EXPECT_EQ(accepted->MailSecurity, "tls");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(closed, 1);
}

TEST_F(InternetDialogWindow, TellsInWordsHowOftenAdditionalFilesAreSent) {
    auto& uploads = find<QSpinBox>("txtUploadCount");
    EXPECT_EQ(uploads.text(), "with every upload");
    uploads.setValue(3);
    EXPECT_EQ(uploads.text(), "once in 3 uploads");
}

TEST_F(InternetDialogWindow, MasksPasswordsAndKeepsThemInUTF8) {
    auto& line = find<QLineEdit>("txtFTPPass");
    EXPECT_EQ(line.echoMode(), QLineEdit::Password);
    EXPECT_EQ(line.text(), QString::fromUtf8("p\xC3\xA4ss"));
    find<QToolButton>("show_txtFTPPass").click();
    EXPECT_EQ(line.echoMode(), QLineEdit::Normal);
    line.clear();
    QKeyEvent letters(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString::fromUtf8("\xC3\xBC\xE2\x82\xAC"));
    QApplication::sendEvent(&line, &letters);
    find<QPushButton>("Command1").click();
    EXPECT_EQ(accepted.value().FTPPass, "\xC3\xBC\xE2\x82\xAC");
}

TEST_F(InternetDialogWindow, BringsUpTheFieldThatCannotBeTaken) {
    find<QTabWidget>("tabs").setCurrentIndex(4);
    find<QCheckBox>("ChkSendMail").click();
    find<QPushButton>("Command1").click();
    EXPECT_FALSE(accepted);
    EXPECT_EQ(refused, std::vector<std::string>{"The Mail Server field has not been completed."});
    EXPECT_EQ(tab(), 1);
    EXPECT_TRUE(find<QLineEdit>("txtMailServer").isVisible());
    EXPECT_EQ(window.focusWidget(), &find<QLineEdit>("txtMailServer"));
    EXPECT_TRUE(window.isVisible());
}

TEST_F(InternetDialogWindow, APRSIsNotSelectedWithoutALocation) {
    state.settings.Latitude = "999";
    find<QCheckBox>("chkAPRS").click();
    EXPECT_FALSE(find<QCheckBox>("chkAPRS").isChecked());
    EXPECT_EQ(refused.size(), 1U);
    state.settings.Latitude = "48.2";
    find<QCheckBox>("chkAPRS").click();
    EXPECT_TRUE(find<QCheckBox>("chkAPRS").isChecked());
}

TEST_F(InternetDialogWindow, TheScheduleTakesTimesAndTheChangeover) {
    find<QSpinBox>("txtMailHours").setValue(6);
    find<QSpinBox>("txtMailMins").setValue(5);
    find<QPushButton>("cmdAddMail").click();
    find<QPushButton>("cmdAddMail").click();
    find<QPushButton>("cmdAddChange").click();
    auto& list = find<QListWidget>("lstMailList");
    QStringList shown;
    for (int n = 0; n < list.count(); ++n) shown << list.item(n)->text();
    EXPECT_EQ(shown, (QStringList{"*CHANGE*", "06:05", "07:00"}));
    list.setCurrentRow(2);
    find<QPushButton>("cmdRemoveMail").click();
    find<QPushButton>("Command1").click();
    EXPECT_EQ(accepted.value().MailList, (std::vector<std::string>{"*CHANGE*", "06:05"}));
}

TEST_F(InternetDialogWindow, TheIntervalGoesFromFiveMinutes) {
    EXPECT_EQ(find<QSpinBox>("txtWUMins").minimum(), 5);
    EXPECT_EQ(find<QSpinBox>("txtWUMins").value(), 10);
}

TEST_F(InternetDialogWindow, AForcedRunAcceptsFirstAndHasTheWindowOutOfTheWay) {
    find<QPushButton>("cmdForceWU").click();
    ASSERT_EQ(forced.size(), 1U);
    EXPECT_EQ(forced[0].second, ForcedRun::weather);
    EXPECT_EQ(forced[0].first.FTPServer, "ftp.home.net");
    state.setup.FTP.open = state.setup.FTP.hidden = true;
    window.refresh();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(closed, 0) << "it is still open";
    state.setup.FTP.hidden = false;
    window.refresh();
    EXPECT_TRUE(window.isVisible());
    state.publish.emailbusy.set();
    find<QPushButton>("cmdForceMail").click();
    EXPECT_EQ(forced.size(), 1U);
    EXPECT_EQ(refused, std::vector<std::string>{"Nimbry is currently busy sending email"});
}

TEST_F(InternetDialogWindow, IsLockedWhileTheEngineSaysSo) {
    state.setup.FTP.caption = "Temporarily Locked";
    state.setup.FTP.enabled = false;
    window.refresh();
    EXPECT_FALSE(window.isEnabled());
    EXPECT_EQ(window.windowTitle(), "Temporarily Locked");
    state.setup.FTP = {"Nimbry FTP / Email Setup"};
    window.refresh();
    EXPECT_TRUE(window.isEnabled());
}

TEST_F(InternetDialogWindow, FollowsWhatIsCommittedElsewhere) {
    type("txtMailServer", "typed.here");
    state.publish.NimbryFTPSetup.FTPServer = "other.net";
    state.publish.NimbryFTPSetup.FTPPass = "new";
    state.publish.NimbryFTPSetup.MailList.clear();
    window.refresh();
    EXPECT_EQ(find<QLineEdit>("txtFTPServer").text(), "other.net");
    EXPECT_EQ(find<QLineEdit>("txtFTPPass").text(), "new");
    EXPECT_EQ(find<QListWidget>("lstMailList").count(), 0);
    EXPECT_EQ(find<QLineEdit>("txtMailServer").text(), "typed.here");
}

}  // namespace
}  // namespace nimbry::test
