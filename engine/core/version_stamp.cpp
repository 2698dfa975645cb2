#include "engine/core/version_stamp.h"

#include <string>
#include <vector>

#include "engine/core/ini_file.h"
#include "engine/core/main_settings.h"

namespace nimbry {

void stamp_version(clsIniFile& ini) {
    const MainSettings defaults;
    std::vector<clsIniFile::Setting> settings;
    if (ini.GetSetting("Main", "Version", "").find("ry|202|") == std::string::npos)
        settings.push_back({"Main", "Version", std::string(version_stamp)});
    settings.push_back({"Main", "WebComment", ini.GetSetting("Main", "WebComment", defaults.WebComment)});
    settings.push_back({"Main", "WebComment2", ini.GetSetting("Main", "WebComment2", defaults.WebComment2)});
    if (ini.GetSetting("Main", "FTPPort", defaults.FTPPort) == defaults.FTPPort)
        settings.push_back({"Main", "FTPPort", defaults.FTPPort});
    ini.SaveSettings(settings);
}

}  // namespace nimbry
