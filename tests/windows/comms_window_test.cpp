#include "windows/comms_window.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "windows/setting_bar.h"

namespace nimbry::test {
namespace {

using windows::CommsWindow;
using windows::SettingBar;

/// The window over a state, with what it asks for kept.
class CommsDialogWindow : public testing::Test {
protected:
    CommsDialogWindow() {
        state.settings.SerialPort1 = "/dev/ttyUSB0";
        state.settings.iplist = {"10.0.0.1", "10.0.0.2"};
    }

    void open() {
        if (!window) window = std::make_unique<CommsWindow>(state, actions());
        window->present();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    CommsWindow::Actions actions() {
        CommsWindow::Actions actions;
        actions.serial_devices = [] { return std::vector<std::string>{"/dev/serial/by-id/usb-A1", "/dev/ttyUSB0"}; };
        actions.opened = [this] { ++opened; };
        actions.closed = [this] { ++closed; };
        actions.ticked_role = [this](bool& role) { role = role && network; };
        actions.add_address = [](CommsDialog& values) { std::ignore = add_address(values); };
        actions.accepted = [this](CommsDialog& values) {
            if (refuses) return false;
            accepted = values;
            return true;
        };
        return actions;
    }
    template <class Widget>
    Widget* find(const char* name) {
        auto* widget = window->findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QAbstractButton* button(const char* name) { return find<QAbstractButton>(name); }
    QLineEdit* line(const char* name) { return find<QLineEdit>(name); }
    QComboBox* device(const char* name) { return find<QComboBox>(name); }
    QListWidget* list() { return find<QListWidget>("IPList"); }
    QStringList entries() {
        QStringList texts;
        for (int row = 0; row < list()->count(); ++row) texts.append(list()->item(row)->text());
        return texts;
    }
    void type(const char* name, const QString& text) {
        line(name)->setFocus();
        line(name)->selectAll();
        QTest::keyClicks(line(name), text);
    }

    WeatherState state;
    std::unique_ptr<CommsWindow> window;
    std::optional<CommsDialog> accepted;
    int opened = 0, closed = 0;
    bool network = true;
    bool refuses = false;
};

TEST_F(CommsDialogWindow, ShowsWhatIsInForce) {
    state.settings.fcom1 = false;
    state.settings.fcom3 = state.settings.bcastnet = state.settings.fwrtlog = true;
    state.settings.LogMin = 7;
    open();
    EXPECT_EQ(window->windowTitle(), "Nimbry Setup");
    EXPECT_TRUE(button("Option3")->isChecked());
    EXPECT_FALSE(button("Option1")->isChecked());
    EXPECT_EQ(button("Option1")->text().remove(u'&'), "COM1");
    EXPECT_EQ(button("Option4")->text().remove(u'&'), "COM4");
    EXPECT_EQ(device("SerialPort1")->currentText(), "/dev/ttyUSB0");
    EXPECT_EQ(device("SerialPort2")->currentText(), "/dev/ttyS1");
    EXPECT_EQ(entries(), (QStringList{"10.0.0.1", "10.0.0.2"}));
    EXPECT_TRUE(button("Check1")->isChecked());
    EXPECT_FALSE(button("Check2")->isChecked());
    EXPECT_EQ(button("Check2")->text().remove(u'&'), "Get data from the network");
    EXPECT_EQ(button("Check3")->text().remove(u'&'), "Write a data log file at");
    EXPECT_TRUE(button("Check3")->isChecked());
    EXPECT_EQ(line("TxtLogMins")->text(), "7");
    EXPECT_EQ(find<SettingBar>("hsbLogMins")->value(), 7);
    EXPECT_EQ(find<SettingBar>("hsbLogMins")->minimum(), 1);
    EXPECT_EQ(find<SettingBar>("hsbLogMins")->maximum(), 99);
    EXPECT_EQ(button("Command1")->text(), "OK");
    EXPECT_EQ(button("Command2")->text().remove(u'&'), "Add");
    EXPECT_EQ(button("Command3")->text().remove(u'&'), "Remove");
}

TEST_F(CommsDialogWindow, OffersTheDevicesOfTheMachineAtEachPortAndTakesAnyOther) {
    open();
    for (const char* name : {"SerialPort1", "SerialPort2", "SerialPort3", "SerialPort4"}) {
        EXPECT_EQ(device(name)->count(), 2);
        EXPECT_EQ(device(name)->itemText(0), "/dev/serial/by-id/usb-A1");
    }
    device("SerialPort2")->setCurrentIndex(0);
    device("SerialPort3")->lineEdit()->selectAll();
    QTest::keyClicks(device("SerialPort3")->lineEdit(), "/dev/ttyACM5");
    button("Option2")->click();
    button("Command1")->click();
    ASSERT_TRUE(accepted);
    EXPECT_EQ(accepted->SerialPort1, "/dev/ttyUSB0");
    EXPECT_EQ(accepted->SerialPort2, "/dev/serial/by-id/usb-A1");
    EXPECT_EQ(accepted->SerialPort3, "/dev/ttyACM5");
    EXPECT_TRUE(accepted->Option2 && !accepted->Option1 && !accepted->Option3 && !accepted->Option4);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(CommsDialogWindow, AnAddressIsAddedByTheButtonAndByEnter) {
    open();
    type("txtIP", "10.0.0.3");
    button("Command2")->click();
    EXPECT_EQ(entries(), (QStringList{"10.0.0.1", "10.0.0.2", "10.0.0.3"}));
    EXPECT_EQ(line("txtIP")->text(), "");
    EXPECT_TRUE(line("txtIP")->hasFocus()) << "for the next one";
    type("txtIP", "10.0.0.4");
    QTest::keyClick(line("txtIP"), Qt::Key_Return);
    EXPECT_EQ(entries().size(), 4);
    EXPECT_TRUE(window->isVisible()) << "Enter has added, not accepted";
    QTest::keyClick(line("txtIP"), Qt::Key_Return);
    ASSERT_TRUE(accepted) << "in an empty field it is the default button";
    EXPECT_EQ(accepted->IPList, (std::vector<std::string>{"10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.4"}));
}

TEST_F(CommsDialogWindow, ABadAddressEmptiesTheField) {
    open();
    type("txtIP", "10.0.0");
    button("Command2")->click();
    EXPECT_EQ(line("txtIP")->text(), "");
    EXPECT_EQ(entries().size(), 2);
}

TEST_F(CommsDialogWindow, TheSelectedAddressIsRemovedByTheButtonAndByDelete) {
    state.settings.iplist.push_back("10.0.0.3");
    open();
    button("Command3")->click();
    EXPECT_EQ(entries().size(), 3) << "none is selected";
    list()->setCurrentRow(1);
    button("Command3")->click();
    EXPECT_EQ(entries(), (QStringList{"10.0.0.1", "10.0.0.3"}));
    list()->setCurrentRow(0);
    QTest::keyClick(list(), Qt::Key_Delete);
    EXPECT_EQ(entries(), (QStringList{"10.0.0.3"}));
    button("Command1")->click();
    EXPECT_EQ(accepted->IPList, (std::vector<std::string>{"10.0.0.3"}));
}

TEST_F(CommsDialogWindow, ATickedClientHasNoUseForPortListAndLog) {
    open();
    const char* const off[]{"Option1", "Option2",    "Option3",    "Option4", "SerialPort1", "SerialPort4", "Check1",
                            "Check3",  "TxtLogMins", "hsbLogMins", "IPList",  "txtIP",       "Command2",    "Command3"};
    button("Check2")->click();
    for (const char* name : off) EXPECT_FALSE(find<QWidget>(name)->isEnabled()) << name;
    EXPECT_TRUE(button("Check2")->isEnabled() && button("Command1")->isEnabled());
    button("Check2")->click();
    for (const char* name : off) EXPECT_TRUE(find<QWidget>(name)->isEnabled()) << name;
}

TEST_F(CommsDialogWindow, OpensLikeThatInAClient) {
    state.settings.fromnet = true;
    open();
    EXPECT_FALSE(button("Option1")->isEnabled());
    EXPECT_TRUE(button("Check2")->isChecked());
}

TEST_F(CommsDialogWindow, ARoleThatIsNotToBeHadIsUntickedAtOnce) {
    network = false;
    open();
    button("Check1")->click();
    EXPECT_FALSE(button("Check1")->isChecked());
    button("Check2")->click();
    EXPECT_FALSE(button("Check2")->isChecked());
    EXPECT_TRUE(button("Option1")->isEnabled());
    button("Command1")->click();
    EXPECT_FALSE(accepted->Check1 || accepted->Check2);
}

TEST_F(CommsDialogWindow, FieldAndBarOfTheMinutesGoTogether) {
    open();
    find<SettingBar>("hsbLogMins")->setValue(40);
    EXPECT_EQ(line("TxtLogMins")->text(), "40");
    type("TxtLogMins", "60");
    EXPECT_EQ(find<SettingBar>("hsbLogMins")->value(), 60);
    type("TxtLogMins", "x");
    EXPECT_EQ(line("TxtLogMins")->text(), "x") << "what is typed is never taken away";
    button("Command1")->click();
    EXPECT_EQ(accepted->TxtLogMins, "x") << "judging it is not the window's";
}

TEST_F(CommsDialogWindow, StaysWhenItsValuesAreRefused) {
    refuses = true;
    open();
    button("Command1")->click();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(closed, 0);
    refuses = false;
    button("Command1")->click();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(closed, 1);
}

TEST_F(CommsDialogWindow, TellsWhenItOpensAndHoweverItCloses) {
    open();
    open();
    EXPECT_EQ(opened, 1);
    QTest::keyClick(window.get(), Qt::Key_Escape);
    open();
    window->close();
    open();
    button("cmdCancel")->click();
    EXPECT_EQ(opened, 3);
    EXPECT_EQ(closed, 3);
    EXPECT_FALSE(accepted);
    EXPECT_FALSE(window->isModal());
}

TEST_F(CommsDialogWindow, OpensAfreshWithoutWhatWasDropped) {
    open();
    type("txtIP", "10.0.0");
    button("Check1")->click();
    list()->setCurrentRow(0);
    button("Command3")->click();
    window->close();
    open();
    EXPECT_EQ(line("txtIP")->text(), "");
    EXPECT_FALSE(button("Check1")->isChecked());
    EXPECT_EQ(entries().size(), 2);
}

TEST_F(CommsDialogWindow, FollowsWhatIsCommittedElsewhereAndKeepsWhatWasEdited) {
    open();
    button("Check3")->click();
    state.settings.LogMin = 3;
    state.settings.iplist.push_back("10.0.0.9");
    window->refresh();
    EXPECT_EQ(line("TxtLogMins")->text(), "3");
    EXPECT_EQ(entries().size(), 3);
    EXPECT_TRUE(button("Check3")->isChecked());
}

TEST_F(CommsDialogWindow, AChangeoverAndAMailLockIt) {
    open();
    state.setup.Form2.caption = "Temporarily Locked";
    state.setup.Form2.enabled = false;
    window->refresh();
    EXPECT_EQ(window->windowTitle(), "Temporarily Locked");
    EXPECT_FALSE(window->isEnabled());
    state.setup.Form2 = SetupWindows{}.Form2;
    window->refresh();
    EXPECT_EQ(window->windowTitle(), "Nimbry Setup");
    EXPECT_TRUE(window->isEnabled());
    state.setup.Form2.open = true;
    lock_setup_windows(state.setup);
    window->refresh();
    EXPECT_EQ(window->windowTitle(), "Temporarily Locked");
    EXPECT_FALSE(window->isEnabled());
    unlock_setup_windows(state.setup);
    window->refresh();
    EXPECT_EQ(window->windowTitle(), "Nimbry Setup");
    EXPECT_TRUE(window->isEnabled());
}

}  // namespace
}  // namespace nimbry::test
