#include "engine/core/main_settings.h"

#include <algorithm>
#include <array>

#include "engine/core/ini_file.h"
#include "engine/derived/number_text.h"
#include "engine/derived/units.h"

namespace nimbry {
namespace {

constexpr std::string_view section = "Main";

using M = MainSettings;

constexpr std::array keys{
    MainKey{"HasRun", &M::HasRun},
    MainKey{"fcom1", &M::fcom1},
    MainKey{"fcom2", &M::fcom2},
    MainKey{"fcom3", &M::fcom3},
    MainKey{"fcom4", &M::fcom4},
    MainKey{"bcastnet", &M::bcastnet},
    MainKey{"fromnet", &M::fromnet},
    MainKey{"fwrtlog", &M::fwrtlog},
    MainKey{"fBarhpa", &M::fBarhpa},
    MainKey{"fBarinhg", &M::fBarinhg},
    MainKey{"fBarmb", &M::fBarmb},
    MainKey{"fRainin", &M::fRainin},
    MainKey{"fRainmm", &M::fRainmm},
    MainKey{"fTempC", &M::fTempC},
    MainKey{"fTempF", &M::fTempF},
    MainKey{"fWindknots", &M::fWindknots},
    MainKey{"fWindmph", &M::fWindmph},
    MainKey{"fWindms", &M::fWindms},
    MainKey{"fWindkph", &M::fWindkph},
    MainKey{"tmidnight", &M::tmidnight},
    MainKey{"tnineam", &M::tnineam},
    MainKey{"LogMin", &M::LogMin},
    MainKey{"ErrorPop", &M::ErrorPop},
    MainKey{"CCPop", &M::CCPop},
    MainKey{"AddOneHour", &M::AddOneHour},
    MainKey{"LogAPRS", &M::LogAPRS},
    MainKey{"Hide", &M::Hide},
    MainKey{"MinSysTray", &M::MinSysTray},
    MainKey{"Cpop", &M::Cpop},
    MainKey{"Latitude", &M::Latitude},
    MainKey{"Longitude", &M::Longitude},
    MainKey{"APRSserver", &M::APRSserver},
    MainKey{"APRSport", &M::APRSport},
    MainKey{"APRS_server_responds", &M::APRS_server_responds},
    MainKey{"APRS2server", &M::APRS2server},
    MainKey{"APRS2port", &M::APRS2port},
    MainKey{"APRS_2server_responds", &M::APRS_2server_responds},
    MainKey{"mlogftp", &M::mlogftp},
    MainKey{"mlogmail", &M::mlogmail},
    MainKey{"InGraphs", &M::InGraphs},
    MainKey{"NoFTPop", &M::NoFTPop},
    MainKey{"NoMailPop", &M::NoMailPop},
    MainKey{"WebComment", &M::WebComment},
    MainKey{"WebComment2", &M::WebComment2},
    MainKey{"FTPPort", &M::FTPPort},
    MainKey{"DrwGrafs", &M::DrwGrafs},
    MainKey{"WUactive", &M::WUactive},
    MainKey{"HWactive", &M::HWactive},
    MainKey{"newchill", &M::newchill},
    MainKey{"alRoll", &M::alRoll},
    MainKey{"SerialPort1", &M::SerialPort1},
    MainKey{"SerialPort2", &M::SerialPort2},
    MainKey{"SerialPort3", &M::SerialPort3},
    MainKey{"SerialPort4", &M::SerialPort4},
};

// Written back as they are read.
constexpr std::array<std::string_view, 6> materialised{"APRSserver",  "APRSport",  "APRS_server_responds",
                                                       "APRS2server", "APRS2port", "APRS_2server_responds"};

// What WrtCfg writes before and behind the client list, in this order.
constexpr std::array<std::string_view, 22> before_clients{
    "ErrorPop", "fcom1",    "fcom2",    "fcom3",     "fcom4",   "bcastnet", "fromnet", "fwrtlog",
    "fBarhpa",  "fBarinhg", "fBarmb",   "fRainin",   "fRainmm", "fTempC",   "fTempF",  "fWindknots",
    "fWindmph", "fWindms",  "fWindkph", "tmidnight", "tnineam", "LogMin"};
constexpr std::array<std::string_view, 15> behind_clients{
    "mlogftp",  "mlogmail", "InGraphs", "NoFTPop",  "NoMailPop", "WebComment", "WebComment2", "FTPPort",
    "DrwGrafs", "WUactive", "HWactive", "newchill", "alRoll",    "AddOneHour", "LogAPRS"};

const MainKey& key_named(std::string_view name) {
    return *std::find_if(keys.begin(), keys.end(), [&](const MainKey& key) { return key.key == name; });
}

std::string entry(int n) {
    return "iplist(" + numtext(n) + ")";
}

void take(MainSettings& settings, const MainKey& key, const std::string& text) {
    if (const auto* flag = std::get_if<bool M::*>(&key.field)) {
        settings.*(*flag) = trimmed(text) == "True";
    } else if (const auto* number = std::get_if<int M::*>(&key.field)) {
        settings.*(*number) = whole_number(text);
    } else {
        settings.*std::get<std::string M::*>(key.field) = text;
    }
}

std::vector<std::string> read_clients(const clsIniFile& ini) {
    std::vector<std::string> clients;
    const int count = std::clamp(whole_number(ini.GetSetting(section, "numofentries", "0")), 0, most_clients);
    // Lists counted from 0 are found too; ours are counted from 1.
    const int first = ini.has(section, entry(0)) && !ini.has(section, entry(count)) ? 0 : 1;
    for (int n = first; n < first + count; ++n) {
        std::string address = ini.GetSetting(section, entry(n), "");
        if (!trimmed(address).empty()) clients.push_back(std::move(address));
    }
    return clients;
}

void settle(MainSettings& settings) {
    const int port = chosen_port(settings);
    settings.fcom1 = port == 1;
    settings.fcom2 = port == 2;
    settings.fcom3 = port == 3;
    settings.fcom4 = port == 4;
    keep_units(settings, units_from(settings));
    settings.tnineam = !settings.tmidnight;
    if (settings.LogMin < 1) settings.LogMin = MainSettings{}.LogMin;
    int number = 0;
    for (std::string* device :
         {&settings.SerialPort1, &settings.SerialPort2, &settings.SerialPort3, &settings.SerialPort4}) {
        ++number;
        if (trimmed(*device).empty()) *device = default_device(number);
    }
}

template <class Names>
void add(std::vector<clsIniFile::Setting>& list, const MainSettings& settings, const Names& names) {
    for (const std::string_view name : names)
        list.push_back({std::string(section), std::string(name), value_text(settings, key_named(name))});
}

}  // namespace

std::string default_device(int port) {
#ifdef _WIN32
    return "COM" + numtext(port);
#else
    return "/dev/ttyS" + numtext(port - 1);
#endif
}

std::span<const MainKey> main_keys() {
    return keys;
}

std::string value_text(const MainSettings& settings, const MainKey& key) {
    if (const auto* flag = std::get_if<bool M::*>(&key.field)) return flag_text(settings.*(*flag));
    if (const auto* number = std::get_if<int M::*>(&key.field)) return numtext(settings.*(*number));
    return settings.*std::get<std::string M::*>(key.field);
}

MainSettings read_main_settings(clsIniFile& ini) {
    MainSettings settings;
    for (const MainKey& key : keys) take(settings, key, ini.GetSetting(section, key.key, value_text(settings, key)));
    settings.iplist = read_clients(ini);
    settle(settings);

    std::vector<clsIniFile::Setting> written_back;
    add(written_back, settings, materialised);
    ini.SaveSettings(written_back);
    return settings;
}

void set_value(MainSettings& settings, std::string_view key, const std::string& text) {
    take(settings, key_named(key), text);
}

bool WrtCfg(clsIniFile& ini, const MainSettings& settings) {
    std::vector<clsIniFile::Setting> list;
    const auto add_text = [&](std::string key, std::string value) {
        list.push_back({std::string(section), std::move(key), std::move(value)});
    };
    add(list, settings, before_clients);
    add_text("numofentries", std::to_string(settings.iplist.size()));
    if (ini.has(section, entry(0))) add_text(entry(0), "");  // of a list that was counted from 0
    for (int n = 1; const std::string& address : settings.iplist) add_text(entry(n++), address);
    add(list, settings, behind_clients);
    return ini.SaveSettings(list);
}

int chosen_port(const MainSettings& settings) {
    if (settings.fcom4) return 4;
    if (settings.fcom3) return 3;
    return settings.fcom2 ? 2 : 1;
}

const std::string& device_of(const MainSettings& settings, int port) {
    switch (port) {
        case 2: return settings.SerialPort2;
        case 3: return settings.SerialPort3;
        case 4: return settings.SerialPort4;
        default: return settings.SerialPort1;
    }
}

}  // namespace nimbry
