#include "engine/control/key_values.h"

#include <algorithm>
#include <array>

#include "engine/alarms/alarms_dialog.h"
#include "engine/core/main_settings.h"
#include "engine/derived/number_text.h"
#include "engine/network/client_address.h"
#include "engine/publish/internet_dialog.h"
#include "engine/publish/server_settings.h"
#include "engine/setup/comms_dialog.h"
#include "engine/sun/location.h"

namespace nimbry {
namespace {

enum class Kind {
    text,
    flag,
    whole,       ///< a whole number of a range
    decimal,     ///< a number of a range, with a point or a comma
    coordinate,  ///< degrees within a range, or 999
    address,     ///< four numbers with points
    clock,       ///< "HH:MM" or the changeover's mark
    word,        ///< one of a few
};

/// What a key takes.
struct Rule {
    std::string_view section, key;  ///< of a list's entries up to their bracket
    Kind kind = Kind::text;
    double least = 0, most = 0;
    std::array<std::string_view, 3> words{};
};

constexpr double minutes_of_a_day = 1440;

// A key a line.
// clang-format off
constexpr std::array rules{
    Rule{"Main", "LogMin", Kind::whole, least_log_minutes, most_log_minutes},
    Rule{"Main", "numofentries", Kind::whole, 0, most_clients},
    Rule{"Main", "iplist(", Kind::address},
    Rule{"Main", "LocalIP", Kind::address},
    Rule{"Main", "Latitude", Kind::coordinate, -90, 90},
    Rule{"Main", "Longitude", Kind::coordinate, -180, 180},
    Rule{"Main", "APRSport", Kind::whole, 1, highest_port},
    Rule{"Main", "APRS2port", Kind::whole, 1, highest_port},
    Rule{"Main", "FTPPort", Kind::whole, 1, highest_port},
    Rule{"Main", "alRoll", Kind::whole, 0, minutes_of_a_day},
    Rule{"FTP", "FTPHours", Kind::whole, 0, 23},
    Rule{"FTP", "FTPMins", Kind::whole, 0, 59},
    Rule{"FTP", "UploadCount", Kind::whole, 1, 999},
    Rule{"FTP", "WUmins", Kind::whole, 1, minutes_of_a_day},
    Rule{"FTP", "numofentries", Kind::whole, 0, most_mail_times},
    Rule{"FTP", "MailList(", Kind::clock},
    Rule{"FTP", "MailPort", Kind::whole, 1, highest_port},
    Rule{"FTP", "FTPSecurity", Kind::word, 0, 0, {"none", "explicit", "implicit"}},
    Rule{"FTP", "MailSecurity", Kind::word, 0, 0, {"none", "starttls", "tls"}},
};
// clang-format on

bool is_of(const Rule& rule, const KnownKey& known) {
    if (rule.section != known.section) return false;
    return rule.key.ends_with('(') ? known.key.starts_with(rule.key) : known.key == rule.key;
}

Rule rule_of(const KnownKey& known) {
    const auto* named = std::find_if(rules.begin(), rules.end(), [&](const Rule& rule) { return is_of(rule, known); });
    if (named != rules.end()) return *named;
    if (known.section == "Alarms") {
        for (const AlarmRow& row : alarm_rows()) {
            if (row.key != known.key) continue;
            const AlarmRange range = range_of(row.quantity);
            return {"Alarms", row.key, Kind::decimal, double{1} * range.first / range.steps_per_unit,
                    double{1} * range.last / range.steps_per_unit};
        }
    }
    // Only a switch has such a default.
    const bool is_flag = known.fallback == flag_text(true) || known.fallback == flag_text(false);
    return {known.section, known.key, is_flag ? Kind::flag : Kind::text};
}

/// "10" of "10 minutes".
std::string first_word(const std::string& text) {
    return text.substr(0, text.find_first_of(" \t"));
}

bool is_whole(std::string_view text) {
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool is_within(const Rule& rule, const std::string& number) {
    const double value = Val(repcomma(number));
    return value >= rule.least && value <= rule.most;
}

/// "07:00"; any entry that begins "*C" is the changeover's.
bool is_clock(const std::string& text) {
    if (text.starts_with("*C")) return true;
    if (text.size() != 5 || text[2] != ':' || !is_whole(text.substr(0, 2)) || !is_whole(text.substr(3))) return false;
    return text[0] >= '0' && text[3] >= '0' && whole_number(text) < 24 && whole_number(text.substr(3)) < 60;
}

bool takes(const Rule& rule, const std::string& text) {
    const std::string word = first_word(text);
    switch (rule.kind) {
        case Kind::text: break;
        case Kind::flag: return text == flag_text(true) || text == flag_text(false);
        case Kind::whole: return is_whole(word) && is_within(rule, word);
        case Kind::decimal: return text.empty() || (IsNumeric(word) && is_within(rule, word));
        case Kind::coordinate: return IsNumeric(text) && (is_within(rule, text) || Val(repcomma(text)) == no_location);
        case Kind::address: return text.empty() || dotted_address(text);
        case Kind::clock: return text.empty() || is_clock(text);
        case Kind::word: return std::find(rule.words.begin(), rule.words.end(), lower_case(text)) != rule.words.end();
    }
    return true;
}

std::string what_it_takes(const Rule& rule) {
    const std::string range = "from " + numtext(rule.least) + " to " + numtext(rule.most);
    switch (rule.kind) {
        case Kind::text: break;
        case Kind::flag: return "True or False";
        case Kind::whole: return "a whole number " + range;
        case Kind::decimal: return "a number " + range;
        case Kind::coordinate: return "decimal degrees " + range + ", or 999 for none";
        case Kind::address: return "an address such as 192.168.1.20";
        case Kind::clock: return "a time such as 07:00, or *C for the changeover";
        case Kind::word:
            return std::string(rule.words[0]) + ", " + std::string(rule.words[1]) + " or " + std::string(rule.words[2]);
    }
    return "any text";
}

}  // namespace

std::optional<std::string> unfit_value(const KnownKey& known, std::string_view value) {
    const Rule rule = rule_of(known);
    const std::string text = trimmed(value);
    if (takes(rule, text) || (known.optional && text.empty())) return {};
    return known.key + " takes " + what_it_takes(rule) + ", not \"" + std::string(value) + "\"";
}

}  // namespace nimbry
