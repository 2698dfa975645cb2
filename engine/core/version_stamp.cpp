#include "engine/core/version_stamp.h"

#include <string>
#include <vector>

#include "engine/core/ini_file.h"
#include "engine/core/main_settings.h"
#include "engine/core/version.h"

namespace nimbry {
namespace {

constexpr const char* build = "251003";

/// "202".
std::string version_digits() {
    std::string digits(program_version);
    std::erase(digits, '.');
    return digits;
}

}  // namespace

std::string version_stamp() {
    return "Nimbry|" + version_digits() + "|" + build;
}

void stamp_version(clsIniFile& ini) {
    const MainSettings defaults;
    std::vector<clsIniFile::Setting> settings;
    if (ini.GetSetting("Main", "Version", "").find("ry|" + version_digits() + "|") == std::string::npos)
        settings.push_back({"Main", "Version", version_stamp()});
    settings.push_back({"Main", "WebComment", ini.GetSetting("Main", "WebComment", defaults.WebComment)});
    settings.push_back({"Main", "WebComment2", ini.GetSetting("Main", "WebComment2", defaults.WebComment2)});
    if (ini.GetSetting("Main", "FTPPort", defaults.FTPPort) == defaults.FTPPort)
        settings.push_back({"Main", "FTPPort", defaults.FTPPort});
    ini.SaveSettings(settings);
}

}  // namespace nimbry
