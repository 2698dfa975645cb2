#include "engine/setup/comms_dialog.h"

#include <gtest/gtest.h>

#include "engine/core/main_settings.h"
#include "tests/world/bare_copy.h"

namespace nimbry {
namespace {

using Texts = std::vector<std::string>;

struct CommsDialogTest : testing::Test {
    test::BareCopy world;
    MainSettings& settings = world.state.settings;

    CommsDialog opened() { return comms_dialog(settings); }
    std::string key(const char* name) { return world.ini.GetSetting("Main", name, "(none)"); }
    std::string unfit(CommsDialog& dialog) {
        const auto box = unfit_comms(world.copy, dialog);
        return box ? box->text : "";
    }
};

TEST_F(CommsDialogTest, OpensWithTheSettingsInForce) {
    EXPECT_TRUE(opened().Option1);
    EXPECT_EQ(opened().TxtLogMins, "15");
    EXPECT_EQ(opened().SerialPort2, default_device(2));
    settings.fcom1 = false;
    settings.fcom3 = settings.bcastnet = settings.fwrtlog = true;
    settings.SerialPort3 = "/dev/ttyUSB0";
    settings.iplist = {"10.0.0.1", "255.255.255.255"};
    settings.LogMin = 5;
    const CommsDialog dialog = opened();
    EXPECT_TRUE(dialog.Option3 && dialog.Check1 && dialog.Check3);
    EXPECT_FALSE(dialog.Option1 || dialog.Option2 || dialog.Option4 || dialog.Check2);
    EXPECT_EQ(dialog.SerialPort3, "/dev/ttyUSB0");
    EXPECT_EQ(dialog.IPList, settings.iplist);
    EXPECT_EQ(dialog.TxtLogMins, "5");
    EXPECT_EQ(dialog.txtIP, "");
}

TEST_F(CommsDialogTest, OfAServerAnEntryThatIsNoAddressIsNamed) {
    CommsDialog dialog = opened();
    dialog.Check1 = true;
    dialog.IPList = {"10.0.0.1", "300.1.1.1", "somewhere"};
    const auto box = unfit_comms(world.copy, dialog);
    ASSERT_TRUE(box);
    EXPECT_EQ(box->text, "The IP address appears to be invalid.\r\nUse the format nnn.nnn.nnn.nnn");
    EXPECT_EQ(box->detail, "In the list: 300.1.1.1");
    dialog.Check2 = true;
    EXPECT_EQ(unfit(dialog), "") << "a client sends to nobody";
    dialog.Check1 = dialog.Check2 = false;
    EXPECT_EQ(unfit(dialog), "") << "nor does a copy alone";
}

TEST_F(CommsDialogTest, EveryControlIsASettingOfItsOwn) {
    CommsDialog dialog = opened();
    EXPECT_EQ(dialog_controls(dialog).size(), 14U);
    dialog.Option1 = false;
    dialog.Option4 = dialog.Check1 = dialog.Check3 = true;
    dialog.IPList = {"10.0.0.1"};
    dialog.TxtLogMins = " 30 ";
    accept_comms(world.copy, dialog);
    EXPECT_EQ(key("fcom4") + key("fcom1") + key("fcom2") + key("fcom3"), "TrueFalseFalseFalse");
    EXPECT_EQ(key("bcastnet") + key("fromnet") + key("fwrtlog"), "TrueFalseTrue");
    EXPECT_EQ(key("LogMin"), "30");
    EXPECT_EQ(key("numofentries") + " " + key("iplist(1)"), "1 10.0.0.1");
    EXPECT_EQ(settings.LogMin, 30);
    EXPECT_EQ(chosen_port(settings), 4);
    EXPECT_TRUE(settings.bcastnet && settings.fwrtlog);
    EXPECT_EQ(settings.iplist, Texts{"10.0.0.1"});
}

TEST_F(CommsDialogTest, WritesTheOtherSettingsOfTheSectionWithItsOwn) {
    settings.ErrorPop = true;
    settings.WebComment = "hello";
    accept_comms(world.copy, opened());
    EXPECT_EQ(key("ErrorPop"), "True");
    EXPECT_EQ(key("WebComment"), "hello");
}

TEST_F(CommsDialogTest, ADeviceGetsAKeyOnlyWhenItIsChanged) {
    CommsDialog dialog = opened();
    accept_comms(world.copy, dialog);
    EXPECT_EQ(key("SerialPort1"), "(none)");
    dialog.SerialPort2 = " /dev/serial/by-id/usb-Adapter_A1 ";
    accept_comms(world.copy, dialog);
    EXPECT_EQ(key("SerialPort2"), "/dev/serial/by-id/usb-Adapter_A1");
    EXPECT_EQ(key("SerialPort1"), "(none)");
    dialog.SerialPort2 = "  ";
    accept_comms(world.copy, dialog);
    EXPECT_EQ(key("SerialPort2"), default_device(2)) << "an empty field is the system's name";
    EXPECT_EQ(settings.SerialPort2, default_device(2));
}

TEST_F(CommsDialogTest, AListThatWasCountedFrom0LosesThatEntry) {
    world.files.put("Nimbry.ini", "[Main]\r\nnumofentries=2\r\niplist(0)=10.0.0.1\r\niplist(1)=10.0.0.2\r\n");
    world.ini.read();
    settings = read_main_settings(world.ini);
    CommsDialog dialog = opened();
    ASSERT_EQ(dialog.IPList, (Texts{"10.0.0.1", "10.0.0.2"}));
    accept_comms(world.copy, dialog);
    EXPECT_EQ(key("iplist(0)"), "");
    EXPECT_EQ(read_main_settings(world.ini).iplist, dialog.IPList);
    remove_address(dialog, 0);
    remove_address(dialog, 0);
    accept_comms(world.copy, dialog);
    EXPECT_EQ(read_main_settings(world.ini).iplist, Texts{});
}

// The address list

TEST_F(CommsDialogTest, AGoodAddressGoesToTheEndOfTheListTrimmed) {
    CommsDialog dialog;
    dialog.IPList = {"10.0.0.9"};
    dialog.txtIP = " 10.0.0.1 ";
    EXPECT_FALSE(add_address(dialog));
    EXPECT_EQ(dialog.IPList, (Texts{"10.0.0.9", "10.0.0.1"}));
    EXPECT_EQ(dialog.txtIP, "");
}

TEST_F(CommsDialogTest, AnAddressIsListedAsItWasTyped) {
    CommsDialog dialog;
    dialog.txtIP = "010.001.000.009";
    EXPECT_FALSE(add_address(dialog));
    EXPECT_EQ(dialog.IPList, Texts{"010.001.000.009"});
}

TEST_F(CommsDialogTest, ABadOneIsToldAndTheFieldIsEmptiedAsWell) {
    CommsDialog dialog;
    dialog.txtIP = "10.0.0";
    const auto box = add_address(dialog);
    ASSERT_TRUE(box);
    EXPECT_EQ(box->title, "Nimbry");
    EXPECT_EQ(box->text, "The IP address appears to be invalid.\r\nUse the format nnn.nnn.nnn.nnn");
    EXPECT_EQ(dialog, CommsDialog{});
}

TEST_F(CommsDialogTest, AListOfAsManyAsAreReadTakesNoMore) {
    CommsDialog dialog;
    dialog.IPList.assign(1000, "10.0.0.1");
    dialog.txtIP = "10.0.0.2";
    EXPECT_TRUE(add_address(dialog));
    EXPECT_EQ(dialog.IPList.size(), 1000U);
}

TEST_F(CommsDialogTest, TheSelectedEntryIsRemovedAndNoneWhenNoneIsSelected) {
    CommsDialog dialog;
    dialog.IPList = {"10.0.0.1", "10.0.0.2", "10.0.0.3"};
    remove_address(dialog, -1);
    remove_address(dialog, 3);
    EXPECT_EQ(dialog.IPList.size(), 3U);
    remove_address(dialog, 1);
    EXPECT_EQ(dialog.IPList, (Texts{"10.0.0.1", "10.0.0.3"}));
}

// Roles

constexpr const char* no_network = "Networking does not appear to be installed on this machine.";

TEST_F(CommsDialogTest, ARoleThatIsTickedWithoutANetworkIsUntickedAgain) {
    bool role = true;
    EXPECT_FALSE(ticked_role(world.datasock, role));
    EXPECT_TRUE(role);
    world.datasock.network = false;
    const auto box = ticked_role(world.datasock, role);
    ASSERT_TRUE(box);
    EXPECT_EQ(box->text, no_network);
    EXPECT_FALSE(role);
    EXPECT_FALSE(ticked_role(world.datasock, role)) << "unticking needs no network";
}

TEST_F(CommsDialogTest, AClientNeedsNoPortNoListAndNoLog) {
    CommsDialog dialog;
    const Texts off{"Option1",     "Option2", "Option3",  "Option4",     "SerialPort1", "SerialPort2",
                    "SerialPort3", "Check1",  "Check3",   "SerialPort4", "TxtLogMins",  "hsbLogMins",
                    "IPList",      "txtIP",   "Command2", "Command3"};
    for (const std::string& control : off) {
        EXPECT_TRUE(is_enabled(dialog, control)) << control;
        dialog.Check2 = true;
        EXPECT_FALSE(is_enabled(dialog, control)) << control;
        dialog.Check2 = false;
    }
    dialog.Check2 = true;
    for (const char* on : {"Check2", "Command1", "cmdCancel"}) EXPECT_TRUE(is_enabled(dialog, on)) << on;
}

TEST_F(CommsDialogTest, ARoleWithoutANetworkStopsTheAcceptButtonTheClientFirst) {
    world.datasock.network = false;
    CommsDialog dialog;
    dialog.Check1 = dialog.Check2 = true;
    EXPECT_EQ(unfit(dialog), no_network);
    EXPECT_FALSE(dialog.Check2);
    EXPECT_TRUE(dialog.Check1) << "it has stopped there";
    EXPECT_EQ(unfit(dialog), no_network);
    EXPECT_FALSE(dialog.Check1);
    EXPECT_EQ(unfit(dialog), "");
}

TEST_F(CommsDialogTest, AServerNeedsAnAddress) {
    CommsDialog dialog = opened();
    dialog.Check1 = true;
    EXPECT_EQ(unfit(dialog), "There must be at least one entry in the address list.");
    dialog.IPList = {"10.0.0.1"};
    EXPECT_EQ(unfit(dialog), "");
}

TEST_F(CommsDialogTest, ItsButtonClicksBeforeItFindsAnythingWrong) {
    CommsDialog dialog = opened();
    dialog.Check1 = true;
    EXPECT_TRUE(press_command1(world.copy, dialog));
    EXPECT_EQ(world.sounds.played, Texts{"click.WAV"});
    dialog.Check1 = false;
    EXPECT_FALSE(press_command1(world.copy, dialog));
    EXPECT_EQ(world.sounds.played.size(), 2U);
}

// Texts

TEST_F(CommsDialogTest, TheMinutesGoFrom1To99) {
    CommsDialog dialog = opened();
    for (const char* good : {"1", "99", " 7 ", "007"}) {
        dialog.TxtLogMins = good;
        EXPECT_EQ(unfit(dialog), "") << good;
    }
    for (const char* bad : {"0", "100", "-1", "+5", "2.5", "1e1", ""}) {
        dialog.TxtLogMins = bad;
        EXPECT_EQ(unfit(dialog), "The minutes of the data log need to be between 1 and 99.") << bad;
    }
}

TEST_F(CommsDialogTest, MinutesOfTheFileBeyondThatStayUntilTheyAreChanged) {
    settings.LogMin = 240;
    CommsDialog dialog = opened();
    EXPECT_EQ(unfit(dialog), "");
    accept_comms(world.copy, dialog);
    EXPECT_EQ(settings.LogMin, 240);
    dialog.TxtLogMins = "241";
    EXPECT_NE(unfit(dialog), "");
}

TEST_F(CommsDialogTest, WhatStandsInAClientsDisabledFieldsIsNotTaken) {
    settings.LogMin = 20;
    CommsDialog dialog = opened();
    dialog.Check2 = true;
    dialog.TxtLogMins = "soon";
    dialog.SerialPort1 = std::string(10000, 'x');
    EXPECT_EQ(unfit(dialog), "");
    accept_comms(world.copy, dialog);
    EXPECT_EQ(settings.LogMin, 20);
    EXPECT_EQ(settings.SerialPort1, default_device(1));
}

TEST_F(CommsDialogTest, ADeviceNameThatNoFileHoldsIsRefused) {
    CommsDialog dialog = opened();
    for (const std::string& bad : {std::string(256, 'x'), std::string("/dev/a\nb"), std::string("/dev/a\0b", 8)}) {
        dialog.SerialPort3 = bad;
        EXPECT_EQ(unfit(dialog), "The name of a serial device can not be used.");
    }
    dialog.SerialPort3 = std::string(255, 'x');
    EXPECT_EQ(unfit(dialog), "");
}

}  // namespace
}  // namespace nimbry
