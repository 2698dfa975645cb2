#include "engine/publish/internet_dialog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "engine/core/known_keys.h"
#include "tests/world/memory_files.h"
#include "tests/world/virtual_clock.h"

namespace nimbry::test {
namespace {

class InternetSettings : public testing::Test {
protected:
    /// The dialog's values from a file with these lines in section `FTP`.
    InternetDialog read(const std::string& lines) {
        files.put("Nimbry.ini", "[FTP]\r\n" + lines);
        ini.read();
        return read_internet(ini);
    }
    [[nodiscard]] std::string value(const char* key) const { return ini.GetSetting("FTP", key, "(none)"); }

    VirtualClock clock;
    MemoryFiles files{clock};
    clsIniFile ini{files, "Nimbry.ini"};
};

struct TextCase {
    const char* key;
    std::string InternetDialog::*field;
    const char* fallback;
};
const std::vector<TextCase> text_cases{
    {"FTPServer", &InternetDialog::FTPServer, ""},
    {"FTPRemDir", &InternetDialog::FTPRemDir, ""},
    {"FTPRemoteFile", &InternetDialog::FTPRemoteFile, ""},
    {"FTPUser", &InternetDialog::FTPUser, ""},
    {"FTPHours", &InternetDialog::FTPHours, "0"},
    {"FTPMins", &InternetDialog::FTPMins, "2"},
    {"FTPSecurity", &InternetDialog::FTPSecurity, "none"},
    {"Additional_Files", &InternetDialog::Additional_Files, ""},
    {"UploadCount", &InternetDialog::UploadCount, "1"},
    {"MailServer", &InternetDialog::MailServer, ""},
    {"MailPort", &InternetDialog::MailPort, "25"},
    {"MailSecurity", &InternetDialog::MailSecurity, "none"},
    {"MailUser", &InternetDialog::MailUser, ""},
    {"MailTo", &InternetDialog::MailTo, ""},
    {"Mailcc", &InternetDialog::Mailcc, ""},
    {"MailBcc", &InternetDialog::MailBcc, ""},
    {"MailMyAddr", &InternetDialog::MailMyAddr, ""},
    {"MailTitle", &InternetDialog::MailTitle, ""},
    {"MailAttach", &InternetDialog::MailAttach, ""},
    {"WUmins", &InternetDialog::txtWUMins, "10"},
    {"WUuser", &InternetDialog::WUuser, ""},
    {"WUpass", &InternetDialog::WUpass, ""},
    {"WUhost", &InternetDialog::WUhost, ""},
    {"HWuser", &InternetDialog::HWuser, ""},
    {"HWpass", &InternetDialog::HWpass, ""},
    {"HWhost", &InternetDialog::HWhost, ""},
    {"APRSuser", &InternetDialog::txtAPRSID, ""},
    {"APRSpass", &InternetDialog::APRSpass, "-1"},
    {"LocalPath", &InternetDialog::txtLocalPath, "C:\\"},
};

struct FlagCase {
    const char* key;
    bool InternetDialog::*field;
    bool fallback;
    const char* control;
};
const std::vector<FlagCase> flag_cases{
    {"FTPen", &InternetDialog::ChkEnableFTP, false, "ChkEnableFTP"},
    {"FTPact", &InternetDialog::FTPact, true, "chkFTPact"},
    {"LogFTPResponses", &InternetDialog::chkLogResponses, false, "chkLogResponses"},
    {"EMailEn", &InternetDialog::ChkSendMail, false, "ChkSendMail"},
    {"MailReport", &InternetDialog::MailReport, false, "chkMailReport"},
    {"EMailToo", &InternetDialog::ChkDoEmailToo, false, "ChkDoEmailToo"},
    {"WUactive", &InternetDialog::chkWU, false, "chkWU"},
    {"HWactive", &InternetDialog::chkHW, false, "chkHW"},
    {"APRSactive", &InternetDialog::chkAPRS, false, "chkAPRS"},
    {"LocalSave", &InternetDialog::chkLocal, false, "chkLocal"},
    {"Dial", &InternetDialog::ChkDial, false, "ChkDial"},
    {"Hangup", &InternetDialog::ChkHangup, false, "ChkHangup"},
};

TEST_F(InternetSettings, EachTextHasItsKeyAndItsDefault) {
    const InternetDialog defaults = read("");
    for (const TextCase& c : text_cases) {
        SCOPED_TRACE(c.key);
        EXPECT_EQ(defaults.*c.field, c.fallback);
        InternetDialog expected;
        expected.*c.field = "of my own";
        EXPECT_EQ(read(std::string(c.key) + "=of my own\r\n"), expected) << "this one, and no other";
        EXPECT_EQ(known_key("FTP", c.key).value().fallback, c.fallback);
    }
}

TEST_F(InternetSettings, EachSwitchHasItsKeyItsControlAndItsDefault) {
    const InternetDialog defaults = read("");
    for (const FlagCase& c : flag_cases) {
        SCOPED_TRACE(c.key);
        EXPECT_EQ(defaults.*c.field, c.fallback);
        InternetDialog expected;
        expected.*c.field = !c.fallback;
        EXPECT_EQ(read(std::string(c.key) + (c.fallback ? "=False\r\n" : "=True\r\n")), expected);

        const std::vector<DialogControl> controls = dialog_controls(expected);
        const auto control = std::find_if(controls.begin(), controls.end(),
                                          [&](const DialogControl& each) { return each.name == c.control; });
        ASSERT_NE(control, controls.end());
        EXPECT_EQ(std::get<bool*>(control->value), &(expected.*c.field));
    }
}

TEST_F(InternetSettings, NoControlHasTwoValues) {
    InternetDialog dialog;
    std::set<std::string_view> names;
    for (const DialogControl& control : dialog_controls(dialog)) EXPECT_TRUE(names.insert(control.name).second);
    for (const InternetPassword& password : internet_passwords()) EXPECT_TRUE(names.insert(password.control).second);
    for (const char* name : {"txtAPRSID", "txtLocalPath", "txtWUMins"}) EXPECT_TRUE(names.contains(name)) << name;
    EXPECT_EQ(names.size(), text_cases.size() + flag_cases.size() + 2) << "and the two scrambled passwords";
}

TEST_F(InternetSettings, ScrambledPasswordsAreReadPlain) {
    // c * 2 + 3: s 233, e 205, c 201, r 231, t 235.
    const InternetDialog dialog = read("FTPPass=\xE9\xCD\xC9\xE7\xCD\xEB\r\nMailPass=\xE9\xCD\xC9\r\n");
    EXPECT_EQ(dialog.FTPPass, "secret");
    EXPECT_EQ(dialog.MailPass, "sec");
}

TEST_F(InternetSettings, PasswordsOfTheServicesStandPlain) {
    InternetDialog dialog = read("");
    dialog.FTPPass = "secret";
    dialog.WUpass = "secret";
    dialog.HWpass = "secret2";
    dialog.APRSpass = "12345";
    EXPECT_TRUE(write_internet(ini, dialog));
    EXPECT_EQ(value("FTPPass"), "\xE9\xCD\xC9\xE7\xCD\xEB");
    EXPECT_EQ(value("WUpass"), "secret");
    EXPECT_EQ(value("HWpass"), "secret2");
    EXPECT_EQ(value("APRSpass"), "12345");
}

TEST_F(InternetSettings, WhatIsWrittenIsReadAgain) {
    InternetDialog dialog;
    for (const TextCase& c : text_cases) dialog.*c.field = std::string("value of ") + c.key;
    for (const FlagCase& c : flag_cases) dialog.*c.field = !c.fallback;
    dialog.FTPPass = "p\xC3\xA4ss w\xC3\xB6rd";
    dialog.MailPass = "\x7F\xFF~ !";
    dialog.MailList = {"07:00", "*CHANGE*", "23:59"};
    files.put("Nimbry.ini", "");
    ini.read();
    EXPECT_TRUE(write_internet(ini, dialog));
    clsIniFile again(files, "Nimbry.ini");
    again.read();
    EXPECT_EQ(read_internet(again), dialog);
    EXPECT_TRUE(files.is_private("Nimbry.ini"));
}

TEST_F(InternetSettings, OptionalKeysAreWrittenOnlyWhereTheyDifferOrStandInTheFile) {
    read("");
    EXPECT_TRUE(write_internet(ini, {}));
    const std::vector<const char*> optional{"FTPSecurity", "MailPort",   "MailSecurity", "MailUser",
                                            "MailPass",    "MailReport", "WUhost",       "HWhost"};
    for (const char* key : optional) EXPECT_FALSE(ini.has("FTP", key)) << key;
    EXPECT_TRUE(ini.has("FTP", "FTPServer")) << "the others always are";

    InternetDialog dialog;
    dialog.MailPort = "587";
    EXPECT_TRUE(write_internet(ini, dialog));
    EXPECT_EQ(value("MailPort"), "587");
    EXPECT_TRUE(write_internet(ini, {}));
    EXPECT_EQ(value("MailPort"), "25") << "it stands there, so it must say what is in force";
    EXPECT_FALSE(ini.has("FTP", "MailUser"));
}

TEST_F(InternetSettings, TheScheduleIsTakenFromIndexZeroToItsCountAndEmptyEntriesArePassedOver) {
    using List = std::vector<std::string>;
    EXPECT_EQ(read("numofentries=2\r\nMailList(1)=07:00\r\nMailList(2)=19:30\r\nMailList(3)=20:00\r\n").MailList,
              (List{"07:00", "19:30"}));
    EXPECT_EQ(read("numofentries=2\r\nMailList(0)=07:00\r\nMailList(1)=19:30\r\n").MailList, (List{"07:00", "19:30"}));
    EXPECT_EQ(read("numofentries=3\r\nMailList(1)=07:00\r\nMailList(2)=\r\nMailList(3)=08:00\r\n").MailList,
              (List{"07:00", "08:00"}));
    EXPECT_EQ(read("numofentries=0\r\nMailList(0)=07:00\r\nMailList(1)=08:00\r\n").MailList, List{});
    EXPECT_EQ(read("numofentries=999999999\r\nMailList(1)=07:00\r\n").MailList, List{"07:00"});
    EXPECT_EQ(read("numofentries=-4\r\nMailList(1)=07:00\r\n").MailList, List{});
}

TEST_F(InternetSettings, TheEntryOfTheChangeoverIsStoredShort) {
    const InternetDialog dialog =
        read("numofentries=3\r\nMailList(1)=*C\r\nMailList(2)=*CHANGE*\r\nMailList(3)=C*\r\n");
    EXPECT_EQ(dialog.MailList, (std::vector<std::string>{"*CHANGE*", "*CHANGE*", "C*"}));
    EXPECT_TRUE(write_internet(ini, dialog));
    EXPECT_EQ(value("MailList(1)"), "*C");
    EXPECT_EQ(value("MailList(2)"), "*C");
    EXPECT_EQ(value("numofentries"), "3");
}

TEST_F(InternetSettings, AScheduleIsWrittenFromIndexOne) {
    InternetDialog dialog = read("numofentries=1\r\nMailList(0)=07:00\r\n");
    EXPECT_TRUE(write_internet(ini, dialog));
    EXPECT_EQ(value("MailList(1)"), "07:00");
    EXPECT_EQ(value("MailList(0)"), "") << "or it would be there twice";
    EXPECT_EQ(read_internet(ini), dialog);
}

struct ScrambleCase {
    const char *plain, *stored;
};

TEST(Encrypt, DoublesACodeAndAddsThreeAndTakesThreeBytesForAHighOne) {
    for (const ScrambleCase& c : std::vector<ScrambleCase>{
             {"", ""},
             {"A", "\x85"},             // 65 * 2 + 3 = 133
             {" ~", "\x43\xFF"},        // 32 and 126
             {"\x7F", "\x80\x4E\x5E"},  // 7 and 15
             {"\xE9", "\x80\x5C\x52"},  // 14 and 9
             {"\x80\xFF", "\x80\x50\x40\x80\x5E\x5E"},
             {"z\xC3\xA9z", "\xF7\x80\x58\x46\x80\x54\x52\xF7"},
         }) {
        EXPECT_EQ(Encrypt(c.plain, EncryptMode::store), c.stored);
        EXPECT_EQ(Encrypt(c.stored, EncryptMode::read), c.plain);
    }
}

TEST(Encrypt, GivesEveryByteBack) {
    std::string all;
    for (int c = 1; c < 256; ++c) all += static_cast<char>(c);
    EXPECT_EQ(Encrypt(Encrypt(all, EncryptMode::store), EncryptMode::read), all);
}

TEST(Encrypt, ReadsABytePairOfNoKindRoundedDown) {
    EXPECT_EQ(Encrypt("\x84", EncryptMode::read), "@");  // (132 - 3) \ 2 = 64
    EXPECT_EQ(Encrypt("\x80\x41\x41", EncryptMode::read), "\x3E\x1F\x1F") << "128 without its halves is 62";
    EXPECT_EQ(Encrypt("\x80\x5C", EncryptMode::read), "\x3E\x2C");
}

}  // namespace
}  // namespace nimbry::test
