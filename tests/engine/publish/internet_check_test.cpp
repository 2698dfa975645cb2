#include "engine/publish/internet_check.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "engine/publish/mail_address.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {
namespace {

using D = InternetDialog;

/// A dialog with everything on and nothing to complain of.
D complete() {
    D dialog;
    dialog.ChkEnableFTP = dialog.ChkSendMail = dialog.chkWU = dialog.chkHW = dialog.chkAPRS = true;
    dialog.FTPServer = "ftp.home.net";
    dialog.FTPRemoteFile = "weather.htm";
    dialog.FTPUser = "me";
    dialog.FTPPass = "secret";
    dialog.MailServer = "mail.home.net";
    dialog.MailTo = "a@home.net;b@home.net";
    dialog.MailMyAddr = "me@home.net";
    dialog.WUuser = dialog.HWuser = "KTEST1";
    dialog.WUpass = dialog.HWpass = "p";
    dialog.txtAPRSID = "N0CALL";
    return dialog;
}

struct RefusalCase {
    const char* what;
    std::function<void(D&)> spoil;
    const char *control, *message;
};

class InternetCheck : public testing::Test {
protected:
    [[nodiscard]] std::string message(const D& dialog) const {
        const auto refusal = internet_refusal(world.state, dialog);
        return refusal ? refusal->message : "";
    }
    KnownState world;
};

TEST_F(InternetCheck, NamesTheFirstThatIsWrongAndItsControl) {
    EXPECT_EQ(message(complete()), "");
    for (const RefusalCase& c : std::vector<RefusalCase>{
             {"no server", [](D& d) { d.FTPServer = "  "; }, "txtFTPServer",
              "The Remote FTP Server field has not been completed."},
             {"no page name", [](D& d) { d.FTPRemoteFile = ""; }, "txtFTPRemoteFile",
              "The Remote File Name field has not been completed."},
             {"no user: two blanks", [](D& d) { d.FTPUser = ""; }, "txtFTPUser",
              "The  FTP Username field has not been completed."},
             {"no password", [](D& d) { d.FTPPass = ""; }, "txtFTPPass",
              "The FTP Password field has not been completed."},
             {"a page name without a dot", [](D& d) { d.FTPRemoteFile = "weather"; }, "txtFTPRemoteFile",
              "The Remote File Name entry appears invalid."},
             {"a template's name", [](D& d) { d.FTPRemoteFile = "MyHtml7.HTML"; }, "txtFTPRemoteFile",
              "The remote file name can not be the same as a template file name.\r\n"
              "Please choose a different remote file name."},
             {"no mail server", [](D& d) { d.MailServer = ""; }, "txtMailServer",
              "The Mail Server field has not been completed."},
             {"no recipient", [](D& d) { d.MailTo = ""; }, "txtMailTo", "The Mail To field has not been completed."},
             {"no sender", [](D& d) { d.MailMyAddr = ""; }, "txtMailMyAddr",
              "The Your email address field has not been completed."},
             {"one bad recipient", [](D& d) { d.MailTo = "a@home.net;b@home"; }, "txtMailTo",
              "The Mail To entry appears invalid."},
             {"nobody but semicolons", [](D& d) { d.MailTo = ";"; }, "txtMailTo", "The Mail To entry appears invalid."},
             {"a bad cc", [](D& d) { d.Mailcc = "x"; }, "txtMailcc", "The Mail cc entry appears invalid."},
             {"a bad bcc", [](D& d) { d.MailBcc = "a b@home.net"; }, "txtMailBcc",
              "The Mail Bcc entry appears invalid."},
             {"a bad sender", [](D& d) { d.MailMyAddr = "me"; }, "txtMailMyAddr",
              "The Your email address entry appears invalid."},
             {"two senders", [](D& d) { d.MailMyAddr = "a@home.net;b@home.net"; }, "txtMailMyAddr",
              "The Your email address entry appears invalid."},
             {"no user of Weather Underground", [](D& d) { d.WUuser = ""; }, "txtWUuser",
              "The Weather Underground upload details fields have not been completed."},
             {"no password of Weather Underground", [](D& d) { d.WUpass = ""; }, "txtWUpass",
              "The Weather Underground upload details fields have not been completed."},
             {"no password of Hamweather", [](D& d) { d.HWpass = ""; }, "txtHWpass",
              "The Weatherforyou/Hamweather upload details fields have not been completed."},
             {"no call sign", [](D& d) { d.txtAPRSID = ""; }, "txtAPRSID",
              "The CWOP/APRSWXNET user ID fields have not been completed."},
         }) {
        SCOPED_TRACE(c.what);
        D dialog = complete();
        c.spoil(dialog);
        const auto refusal = internet_refusal(world.state, dialog);
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->control, c.control);
        EXPECT_EQ(refusal->message, c.message);
    }
}

TEST_F(InternetCheck, ForbidsWhatNoFileNameHas) {
    for (const char c : std::string("\\/:*?\"<>|\x01\x1F\x7F")) {
        D dialog = complete();
        dialog.FTPRemoteFile = std::string("a") + c + "b.htm";
        EXPECT_EQ(message(dialog), "The remote file name contains invalid characters.") << static_cast<int>(c);
    }
    D dialog = complete();
    for (const char* name : {"w\xE4tter now.html", "myhtml.htm", "amyhtml.html", "a.b.c"}) {
        dialog.FTPRemoteFile = name;
        EXPECT_EQ(message(dialog), "") << name;
    }
}

TEST_F(InternetCheck, AsksNothingOfWhatIsOff) {
    EXPECT_EQ(message({}), "");
    world.state.settings.Latitude = "999";
    EXPECT_EQ(message({}), "");
    D dialog = complete();
    dialog.Mailcc = dialog.MailBcc = "null";
    dialog.chkAPRS = false;
    EXPECT_EQ(message(dialog), "");
}

TEST_F(InternetCheck, APRSNeedsALocation) {
    world.state.settings.Longitude = "999";
    const auto refusal = internet_refusal(world.state, complete());
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->control, "chkAPRS");
    EXPECT_EQ(refusal->message, "Can't select upload to APRS as there is\r\nno valid location data entered yet");
}

TEST_F(InternetCheck, GoesFromWhatIsUnderWayToTheLocation) {
    PublishState& publish = world.state.publish;
    world.state.settings.Latitude = "999";
    D dialog = complete();
    dialog.FTPUser = "", dialog.MailTo = "", dialog.HWuser = "";
    publish.uloadftpbusy.set();
    publish.emailbusy.set();
    publish.wubusy.set();
    EXPECT_EQ(message(dialog), "FTP is currently already busy uploading");
    publish.uloadftpbusy.clear();
    EXPECT_EQ(message(dialog), "Nimbry is currently busy sending email");
    publish.emailbusy.clear();
    EXPECT_EQ(message(dialog), "Nimbry is currently busy uploading to Weather Underground/Weatherforyou/APRS");
    publish.wubusy.clear();
    EXPECT_EQ(message(dialog), "The  FTP Username field has not been completed.");
    dialog.FTPUser = "me";
    EXPECT_EQ(message(dialog), "The Mail To field has not been completed.");
    dialog.MailTo = "a@home.net";
    EXPECT_EQ(message(dialog), "The Weatherforyou/Hamweather upload details fields have not been completed.");
    dialog.HWuser = "x";
    EXPECT_TRUE(message(dialog).starts_with("Can't select"));
}

TEST_F(InternetCheck, AcceptingStoresAndTakesIntoForceAndARefusalDoesNeither) {
    D dialog = complete();
    dialog.FTPHours = "1";
    EXPECT_FALSE(accept_internet(world.copy, dialog));
    EXPECT_EQ(world.state.publish.NimbryFTPSetup, dialog);
    EXPECT_EQ(world.state.publish.FtpMinutes, 62);
    EXPECT_EQ(world.ini.GetSetting("FTP", "FTPServer", ""), "ftp.home.net");
    EXPECT_TRUE(world.notices.balloons.empty());
    D wrong = dialog;
    wrong.FTPServer = "";
    EXPECT_TRUE(accept_internet(world.copy, wrong));
    EXPECT_EQ(world.state.publish.NimbryFTPSetup, dialog);
    EXPECT_EQ(world.ini.GetSetting("FTP", "FTPServer", ""), "ftp.home.net");
}

TEST_F(InternetCheck, FiveMinutesWithAPRSAreExplainedWhenTheyAreChosen) {
    D dialog = complete();
    dialog.txtWUMins = "5";
    EXPECT_FALSE(accept_internet(world.copy, dialog));
    ASSERT_EQ(world.notices.balloons.size(), 1U);
    EXPECT_EQ(world.notices.balloons[0].what.title, "Nimbry Information");
    EXPECT_EQ(world.notices.balloons[0].what.text,
              "Weather Underground and Weatherforyou/Hamweather\r\nwill upload at 5 minute intervals but "
              "APRSWXNET/CWOP\r\nwill remain at a minimum of 10 minute upload intervals.");
    EXPECT_FALSE(accept_internet(world.copy, dialog));
    EXPECT_EQ(world.notices.balloons.size(), 1U) << "they were chosen before";
    dialog.txtWUMins = "6";
    EXPECT_FALSE(accept_internet(world.copy, dialog));
    EXPECT_EQ(world.notices.balloons.size(), 1U);
}

struct AddressCase {
    const char* text;
    bool valid;
};

TEST(IsValidEmail, TakesOneAtAHostWithADotAndNothingForeign) {
    for (const AddressCase& c : std::vector<AddressCase>{{"me@home.net", true},
                                                         {"a.b+c@sub.home.net", true},
                                                         {"m\xFC@home.net", true},
                                                         {"", false},
                                                         {"me", false},
                                                         {"@home.net", false},
                                                         {"me@", false},
                                                         {"me@home", false},
                                                         {"me@.net", false},
                                                         {"me@home.", false},
                                                         {"a@b@home.net", false},
                                                         {"me @home.net", false},
                                                         {"me@home.net\r", false},
                                                         {"me@home.net,", false},
                                                         {"<me@home.net>", false},
                                                         {"me(x)@home.net", false},
                                                         {"me@home.net;a@b.c", false},
                                                         {"me@a.b", true},
                                                         {"me@.", false}}) {
        EXPECT_EQ(IsValidEmail(c.text), c.valid) << c.text;
    }
}

TEST(MailAddresses, AreTheItemsOfAListOrNobody) {
    using List = std::vector<std::string>;
    EXPECT_EQ(mail_addresses(" a@b.c ;; d@e.f;"), (List{"a@b.c", "d@e.f"}));
    EXPECT_EQ(mail_addresses(""), List{});
    EXPECT_EQ(mail_addresses(" NuLL "), List{});
    EXPECT_EQ(mail_addresses("null;a@b.c"), (List{"null", "a@b.c"})) << "only the word alone means none";
}

}  // namespace
}  // namespace nimbry::test
