#include "engine/core/known_keys.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "engine/core/main_settings.h"

namespace nimbry {
namespace {

TEST(KnownKeys, HaveTheirDefaults) {
    struct Case {
        const char* section;
        const char* key;
        std::string fallback;
    };
    for (const Case& c : {Case{"Main", "HasRun", "False"},    Case{"Main", "LogMin", "15"},
                          Case{"Main", "numofentries", "0"},  Case{"Main", "Version", ""},
                          Case{"Main", "UpTime", ""},         Case{"Main", "Latitude", "999"},
                          Case{"Alarms", "ATempHi", "37.8"},  Case{"Alarms", "ATempLo", "1"},
                          Case{"Alarms", "AHumHi", "95"},     Case{"Alarms", "AHumLo", "20"},
                          Case{"Alarms", "ABarHi", "1030"},   Case{"Alarms", "ABarLo", "995"},
                          Case{"Alarms", "AWindHi", "0"},     Case{"Alarms", "ARainHi", "50"},
                          Case{"Alarms", "ARainAm", "25"},    Case{"Alarms", "ADewHi", "25"},
                          Case{"Alarms", "ADewLo", "1"},      Case{"Alarms", "AItempHi", "37.8"},
                          Case{"Alarms", "AItempLo", "10"},   Case{"FTP", "FTPHours", "0"},
                          Case{"FTP", "FTPMins", "2"},        Case{"FTP", "FTPact", "True"},
                          Case{"FTP", "WUmins", "10"},        Case{"FTP", "APRSpass", "-1"},
                          Case{"FTP", "LocalPath", "C:\\"},   Case{"FTP", "UploadCount", "1"},
                          Case{"FTP", "numofentries", "0"},   Case{"FTP", "Mailcc", ""},
                          Case{"FTP", "MailPort", "25"},      Case{"FTP", "MailSecurity", "none"},
                          Case{"FTP", "FTPSecurity", "none"}, Case{"FTP", "MailReport", "False"},
                          Case{"FTP", "WUhost", ""},          Case{"Main", "GraphFiles", "False"},
                          Case{"Main", "LocalIP", ""},        Case{"Main", "SerialPort4", default_device(4)}}) {
        SCOPED_TRACE(std::string(c.section) + "/" + c.key);
        const auto known = known_key(c.section, c.key);
        ASSERT_TRUE(known);
        EXPECT_EQ(known->section, c.section);
        EXPECT_EQ(known->key, c.key);
        EXPECT_EQ(known->fallback, c.fallback);
    }
}

TEST(KnownKeys, OfASwitchAreFalseByDefault) {
    for (const char* key :
         {"fAOuTempHi", "fAOuTempLo", "fAOuHumHi", "fAOuHumLo", "fABarHi", "fABarLo", "fAWindHi", "fARainHi",
          "fARainAm", "fADewHi", "fADewLo", "fAInTempHi", "fAInTempLo", "fADewCu", "fASound", "fAMail"})
        EXPECT_EQ(known_key("Alarms", key).value().fallback, "False") << key;
    for (const char* key : {"DisHI", "DisDew", "DisChill", "DisRain", "DisRainTot", "DisInTemp", "DisInHum",
                            "DisRainLH", "DisSunrise", "DisSunset", "DisWindGLH"})
        EXPECT_EQ(known_key("Marquee", key).value().fallback, "False") << key;
    for (const char* key : {"FTPen", "EMailEn", "Hangup", "Dial", "EMailToo", "WUactive", "HWactive", "APRSactive",
                            "LocalSave", "LogFTPResponses"})
        EXPECT_EQ(known_key("FTP", key).value().fallback, "False") << key;
}

TEST(KnownKeys, OfATextAreEmptyByDefault) {
    for (const char* key :
         {"FTPServer",  "FTPRemDir",  "FTPRemoteFile", "FTPUser",          "FTPPass",  "MailServer", "MailTo",
          "MailAttach", "MailMyAddr", "MailTitle",     "Mailcc",           "MailBcc",  "WUuser",     "WUpass",
          "HWuser",     "HWpass",     "APRSuser",      "Additional_Files", "MailUser", "MailPass",   "HWhost"})
        EXPECT_EQ(known_key("FTP", key).value().fallback, "") << key;
}

TEST(KnownKeys, AreCountedBySection) {
    std::map<std::string, int> count;
    std::set<std::pair<std::string, std::string>> once;
    for (const KnownKey& known : known_keys()) {
        ++count[known.section];
        EXPECT_TRUE(once.emplace(known.section, known.key).second) << known.key << " stands there twice";
    }
    // Main: 50 with a field, 4 devices, and 6 more. FTP: 37 of the dialog, 8 optional ones.
    EXPECT_EQ(count, (std::map<std::string, int>{{"Main", 60}, {"Alarms", 29}, {"Marquee", 11}, {"FTP", 45}}));
}

TEST(KnownKeys, TellTheOptionalOnes) {
    std::set<std::string> optional;
    for (const KnownKey& known : known_keys())
        if (known.optional) optional.insert(known.section + "/" + known.key);
    EXPECT_EQ(optional, (std::set<std::string>{"Main/SerialPort1", "Main/SerialPort2", "Main/SerialPort3",
                                               "Main/SerialPort4", "Main/GraphFiles", "Main/LocalIP", "FTP/FTPSecurity",
                                               "FTP/MailPort", "FTP/MailSecurity", "FTP/MailUser", "FTP/MailPass",
                                               "FTP/MailReport", "FTP/WUhost", "FTP/HWhost"}));
}

TEST(KnownKeys, CompareWithoutCaseAndAreSpelledAsWeWriteThem) {
    EXPECT_EQ(known_key("marquee", "DisHi").value().key, "DisHI");
    EXPECT_EQ(known_key("MAIN", "hasrun").value().key, "HasRun");
    EXPECT_EQ(known_key("MAIN", "hasrun").value().section, "Main");
}

TEST(KnownKeys, OfAListBearTheirNumber) {
    EXPECT_EQ(known_key("Main", "iplist(3)").value().key, "iplist(3)");
    EXPECT_EQ(known_key("ftp", "maillist(12)").value().key, "MailList(12)");
    for (const char* no :
         {"iplist", "iplist(n)", "iplist()", "iplist(-1)", "iplist(1)x", "iplist(12345)", "iplist(1", "HasRun(1)"})
        EXPECT_FALSE(known_key("Main", no)) << no;
}

TEST(KnownKeys, AreNoOthers) {
    EXPECT_FALSE(known_key("Main", "fTempK"));
    EXPECT_FALSE(known_key("Main", ""));
    EXPECT_FALSE(known_key("", "HasRun"));
    EXPECT_FALSE(known_key("Alarms", "HasRun")) << "a key belongs to its section";
    EXPECT_FALSE(known_key("Main", "FTPen"));
}

}  // namespace
}  // namespace nimbry
