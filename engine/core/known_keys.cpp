#include "engine/core/known_keys.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engine/core/main_settings.h"
#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

struct Row {
    const char* key;
    const char* fallback = "";
    bool optional = false;
};

constexpr bool unless_set = true;

// Beside the keys that have a field in MainSettings.
constexpr std::array main_rows{
    Row{"numofentries", "0"},
    Row{"iplist(n)"},
    Row{"Version"},
    Row{"UpTime"},
    Row{"GraphFiles", "False", unless_set},
    Row{"LocalIP", "", unless_set},
};

constexpr std::array alarm_rows{
    Row{"ATempHi", "37.8"},     Row{"ATempLo", "1"},        Row{"AHumHi", "95"},        Row{"AHumLo", "20"},
    Row{"ABarHi", "1030"},      Row{"ABarLo", "995"},       Row{"AWindHi", "0"},        Row{"ARainHi", "50"},
    Row{"ARainAm", "25"},       Row{"ADewHi", "25"},        Row{"ADewLo", "1"},         Row{"AItempHi", "37.8"},
    Row{"AItempLo", "10"},      Row{"fAOuTempHi", "False"}, Row{"fAOuTempLo", "False"}, Row{"fAOuHumHi", "False"},
    Row{"fAOuHumLo", "False"},  Row{"fABarHi", "False"},    Row{"fABarLo", "False"},    Row{"fAWindHi", "False"},
    Row{"fARainHi", "False"},   Row{"fARainAm", "False"},   Row{"fADewHi", "False"},    Row{"fADewLo", "False"},
    Row{"fAInTempHi", "False"}, Row{"fAInTempLo", "False"}, Row{"fADewCu", "False"},    Row{"fASound", "False"},
    Row{"fAMail", "False"},
};

constexpr std::array marquee_rows{
    Row{"DisHI", "False"},      Row{"DisDew", "False"},    Row{"DisChill", "False"},   Row{"DisRain", "False"},
    Row{"DisRainTot", "False"}, Row{"DisInTemp", "False"}, Row{"DisInHum", "False"},   Row{"DisRainLH", "False"},
    Row{"DisSunrise", "False"}, Row{"DisSunset", "False"}, Row{"DisWindGLH", "False"},
};

constexpr std::array ftp_rows{
    Row{"FTPen", "False"},
    Row{"FTPServer"},
    Row{"FTPRemDir"},
    Row{"FTPRemoteFile"},
    Row{"FTPUser"},
    Row{"FTPPass"},
    Row{"FTPHours", "0"},
    Row{"FTPMins", "2"},
    Row{"EMailEn", "False"},
    Row{"MailServer"},
    Row{"MailTo"},
    Row{"MailAttach"},
    Row{"MailMyAddr"},
    Row{"numofentries", "0"},
    Row{"MailList(n)"},
    Row{"Hangup", "False"},
    Row{"Dial", "False"},
    Row{"EMailToo", "False"},
    Row{"MailTitle"},
    Row{"Mailcc"},
    Row{"MailBcc"},
    Row{"FTPact", "True"},
    Row{"WUactive", "False"},
    Row{"WUmins", "10"},
    Row{"WUuser"},
    Row{"WUpass"},
    Row{"HWactive", "False"},
    Row{"HWuser"},
    Row{"HWpass"},
    Row{"APRSactive", "False"},
    Row{"APRSuser"},
    Row{"APRSpass", "-1"},
    Row{"LocalSave", "False"},
    Row{"LocalPath", "C:\\"},
    Row{"LogFTPResponses", "False"},
    Row{"Additional_Files"},
    Row{"UploadCount", "1"},
    Row{"FTPSecurity", "none", unless_set},
    Row{"MailPort", "25", unless_set},
    Row{"MailSecurity", "none", unless_set},
    Row{"MailUser", "", unless_set},
    Row{"MailPass", "", unless_set},
    Row{"MailReport", "False", unless_set},
    Row{"WUhost", "", unless_set},
    Row{"HWhost", "", unless_set},
};

template <class Rows>
void add(std::vector<KnownKey>& keys, const char* section, const Rows& rows) {
    for (const Row& row : rows) keys.push_back({section, row.key, row.fallback, row.optional});
}

// "iplist(12)" gives "iplist(n)" and "(12)"; a name that is no entry of a list stays whole.
std::pair<std::string, std::string> family_of(std::string_view name) {
    const std::size_t open = name.find('(');
    if (open == std::string_view::npos || !name.ends_with(')')) return {std::string(name), ""};
    const std::string_view number = name.substr(open + 1, name.size() - open - 2);
    const bool is_number = !number.empty() && number.size() <= 4 &&
                           std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
    // A written "iplist(n)" is the name of the family, not of an entry.
    if (!is_number) return {};
    return {std::string(name.substr(0, open)) + "(n)", std::string(name.substr(open))};
}

}  // namespace

std::vector<KnownKey> known_keys() {
    std::vector<KnownKey> keys;
    const MainSettings defaults;
    for (const MainKey& key : main_keys())
        keys.push_back({"Main", std::string(key.key), value_text(defaults, key), key.key.starts_with("SerialPort")});
    add(keys, "Main", main_rows);
    add(keys, "Alarms", alarm_rows);
    add(keys, "Marquee", marquee_rows);
    add(keys, "FTP", ftp_rows);
    return keys;
}

std::optional<KnownKey> known_key(std::string_view section, std::string_view key) {
    const auto [name, number] = family_of(key);
    for (KnownKey& known : known_keys()) {
        if (lower_case(known.section) != lower_case(section) || lower_case(known.key) != lower_case(name)) continue;
        if (!number.empty()) known.key.replace(known.key.find('('), std::string::npos, number);
        return known;
    }
    return std::nullopt;
}

}  // namespace nimbry
