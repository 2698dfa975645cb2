#include "engine/core/known_keys.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engine/alarms/alarms_dialog.h"
#include "engine/core/ini_file.h"
#include "engine/core/main_settings.h"
#include "engine/derived/number_text.h"
#include "engine/displays/marquee.h"
#include "engine/publish/internet_dialog.h"

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

void add(std::vector<KnownKey>& keys, const char* section, std::string_view key, std::string fallback,
         bool optional = false) {
    keys.push_back({section, std::string(key), std::move(fallback), optional});
}

void add_main(std::vector<KnownKey>& keys) {
    const MainSettings defaults;
    for (const MainKey& key : main_keys())
        add(keys, "Main", key.key, value_text(defaults, key), key.key.starts_with("SerialPort"));
    for (const Row& row : main_rows) add(keys, "Main", row.key, row.fallback, row.optional);
}

void add_alarms(std::vector<KnownKey>& keys) {
    const AlarmsDialog defaults;
    for (const AlarmRow& row : alarm_rows()) {
        add(keys, "Alarms", row.key, numtext(defaults.*row.threshold));
        add(keys, "Alarms", row.switch_key, flag_text(defaults.*row.enabled));
    }
    for (const AlarmSwitch& which : alarm_switches())
        add(keys, "Alarms", which.key, flag_text(defaults.*which.enabled));
}

void add_marquee(std::vector<KnownKey>& keys) {
    const MarqueeDialog defaults;
    for (const MarqueeItem& item : marquee_items()) add(keys, "Marquee", item.key, flag_text(defaults.*item.ticked));
}

void add_ftp(std::vector<KnownKey>& keys) {
    for (const InternetKey& each : internet_keys()) add(keys, "FTP", each.key, each.fallback, each.optional);
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
    add_main(keys);
    add_alarms(keys);
    add_marquee(keys);
    add_ftp(keys);
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
