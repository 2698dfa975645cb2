#include "engine/control/key_values.h"

#include <gtest/gtest.h>

#include "engine/core/main_settings.h"

namespace nimbry {
namespace {

std::string complaint(const char* section, const char* key, const std::string& value) {
    const auto known = known_key(section, key);
    if (!known) return "no such key";
    return unfit_value(*known, value).value_or("");
}

struct Refused {
    const char *section, *key;
    std::string value, takes;
};

TEST(KeyValues, ThatAreNoneAreRefusedWithWhatTheKeyTakes) {
    const std::string log_minutes = "a whole number from 1 to 99";
    const std::string flag = "True or False";
    const std::string address = "an address such as 192.168.1.20";
    const std::string latitude = "decimal degrees from -90 to 90, or 999 for none";
    const std::string port = "a whole number from 1 to 65535";
    const std::string clock = "a time such as 07:00, or *C for the changeover";
    for (const Refused& c : {
             Refused{"Main", "LogMin", "500", log_minutes},
             {"Main", "LogMin", "100", log_minutes},
             {"Main", "LogMin", "0", log_minutes},
             {"Main", "LogMin", "", log_minutes},
             {"Main", "LogMin", "often", log_minutes},
             {"Main", "LogMin", "7.5", log_minutes},
             {"Main", "LogMin", "5x", log_minutes},
             {"Main", "fwrtlog", "yes", flag},
             {"Main", "fwrtlog", "true", flag},
             {"Main", "GraphFiles", "1", flag},
             {"Alarms", "fASound", "on", flag},
             {"Marquee", "DisDew", "", flag},
             {"FTP", "MailReport", "no", flag},
             {"Alarms", "ATempHi", "abc", "a number from -40 to 60"},
             {"Alarms", "ATempLo", "-40.1", "a number from -40 to 60"},
             {"Alarms", "AHumHi", "101", "a number from 0 to 100"},
             {"Alarms", "ABarLo", "29.5", "a number from 794 to 1051"},
             {"Alarms", "AWindHi", "60.5", "a number from 0 to 60"},
             {"Alarms", "ARainAm", "-1", "a number from 0 to 1000"},
             {"Main", "iplist(1)", "300.1.1.1", address},
             {"Main", "iplist(2)", "somewhere", address},
             {"Main", "LocalIP", "127.0.0", address},
             {"Main", "numofentries", "1001", "a whole number from 0 to 1000"},
             {"Main", "Latitude", "90.5", latitude},
             {"Main", "Latitude", "33 south", latitude},
             {"Main", "Latitude", "", latitude},
             {"Main", "Longitude", "-181", "decimal degrees from -180 to 180, or 999 for none"},
             {"Main", "FTPPort", "0", port},
             {"Main", "APRSport", "65536", port},
             {"FTP", "MailPort", "smtp", port},
             {"Main", "alRoll", "-5", "a whole number from 0 to 1440"},
             {"FTP", "FTPHours", "24", "a whole number from 0 to 23"},
             {"FTP", "FTPMins", "60", "a whole number from 0 to 59"},
             {"FTP", "UploadCount", "0", "a whole number from 1 to 999"},
             {"FTP", "WUmins", "0", "a whole number from 1 to 1440"},
             {"FTP", "FTPSecurity", "tls", "none, explicit or implicit"},
             {"FTP", "MailSecurity", "ssl", "none, starttls or tls"},
             {"FTP", "MailList(1)", "7:00", clock},
             {"FTP", "MailList(1)", "24:00", clock},
             {"FTP", "MailList(1)", "12:60", clock},
             {"FTP", "MailList(1)", "-1:00", clock},
         }) {
        EXPECT_EQ(complaint(c.section, c.key, c.value),
                  std::string(c.key) + " takes " + c.takes + ", not \"" + c.value + "\"");
    }
}

struct Taken {
    const char *section, *key, *value;
};

TEST(KeyValues, ThatAFileMayHaveAreTaken) {
    for (const Taken& c : {
             Taken{"Main", "LogMin", "1"},
             {"Main", "LogMin", "99"},
             {"Main", "LogMin", " +10 minutes"},
             {"Main", "fwrtlog", " True "},
             {"Main", "fwrtlog", "False"},
             {"Main", "GraphFiles", ""},
             {"Alarms", "ATempHi", "37,8"},
             {"Alarms", "ATempHi", "-40"},
             {"Alarms", "ATempHi", ""},
             {"Alarms", "AWindHi", "17.2 m/s"},
             {"Alarms", "ARainAm", "1000"},
             {"Main", "iplist(1)", " 010.0.0.1 "},
             {"Main", "iplist(1)", ""},
             {"Main", "LocalIP", ""},
             {"Main", "Latitude", "-33,8571"},
             {"Main", "Latitude", "999"},
             {"Main", "Longitude", "180"},
             {"Main", "alRoll", "905"},
             {"FTP", "MailPort", ""},
             {"FTP", "FTPSecurity", "Explicit"},
             {"FTP", "MailSecurity", ""},
             {"FTP", "MailList(1)", "23:59"},
             {"FTP", "MailList(2)", "*CHANGE*"},
             {"FTP", "MailList(3)", ""},
             {"FTP", "MailTo", "anything"},
             {"FTP", "FTPPass", "500"},
             {"Main", "WebComment", "yes"},
             {"Main", "APRS_server_responds", "no"},
             {"Main", "SerialPort1", "/dev/ttyUSB0"},
         }) {
        EXPECT_EQ(complaint(c.section, c.key, c.value), "") << c.section << "/" << c.key << " " << c.value;
    }
}

TEST(KeyValues, EveryKeyTakesItsOwnDefault) {
    for (const KnownKey& known : known_keys()) EXPECT_FALSE(unfit_value(known, known.fallback)) << known.key;
}

}  // namespace
}  // namespace nimbry
