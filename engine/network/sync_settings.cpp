#include "engine/network/sync_settings.h"

#include <array>

#include "engine/core/run_time_error.h"
#include "engine/derived/text_lines.h"
#include "engine/derived/units.h"

namespace nimbry {

namespace {

constexpr std::string_view section = "Main";
constexpr std::size_t longest_value = 64;

struct Line {
    std::string_view key;
    std::string_view fallback;
};

constexpr std::array sync_lines{
    Line{"fBarhpa", "False"}, Line{"fBarinhg", "False"}, Line{"fBarmb", "True"},      Line{"fRainin", "False"},
    Line{"fRainmm", "True"},  Line{"fTempC", "True"},    Line{"fTempF", "False"},     Line{"fWindknots", "False"},
    Line{"fWindkph", "True"}, Line{"fWindmph", "False"}, Line{"fWindms", "False"},    Line{"tmidnight", "False"},
    Line{"tnineam", "True"},  Line{"alRoll", "5"},       Line{"AddOneHour", "False"}, Line{"Latitude", "999"},
    Line{"Longitude", "999"},
};

std::string clean(std::string_view line) {
    std::string value;
    for (const char byte : line) {
        if (static_cast<unsigned char>(byte) >= 0x20 && value.size() < longest_value) value.push_back(byte);
    }
    return value;
}

}  // namespace

std::string sync_cfg_text(const clsIniFile& ini) {
    std::string text;
    for (const Line& line : sync_lines) text += ini.GetSetting(section, line.key, line.fallback) + "\r\n";
    return text;
}

std::vector<std::string> sync_cfg_lines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty() && lines.size() < sync_lines.size()) {
        lines.push_back(clean(take_line(text)));
    }
    return lines;
}

void store_sync_settings(Copy& copy, std::string_view text) {
    const std::vector<std::string> lines = sync_cfg_lines(text);
    std::vector<clsIniFile::Setting> stored;
    for (std::size_t n = 0; n < lines.size(); ++n) {
        stored.push_back({std::string(section), std::string(sync_lines[n].key), lines[n]});
        set_value(copy.state.settings, sync_lines[n].key, lines[n]);
    }
    copy.ini.SaveSettings(stored);
    if (lines.size() < sync_lines.size()) throw RunTimeError{ErrorNumber::past_end};
}

void take_synced_settings(Copy& copy) {
    for (const std::string_view name : {tempsync_cfg, sync_cfg}) {
        std::string text;
        if (copy.ports.files.read(std::string(name), text) != FileResult::ok) continue;
        const std::vector<std::string> lines = sync_cfg_lines(text);
        if (lines.size() < sync_lines.size()) continue;
        MainSettings& settings = copy.state.settings;
        for (std::size_t n = 0; n < lines.size(); ++n) set_value(settings, sync_lines[n].key, lines[n]);
        settings.tnineam = !settings.tmidnight;
        keep_units(settings, units_from(settings));
        return;
    }
}

}  // namespace nimbry
