#pragma once

#include <string>
#include <vector>

namespace nimbry::test {

/// An entry of the bar with a menu, and the names of that menu in their order.
struct MenuCase {
    const char* bar_entry;
    std::vector<std::string> entries;
};

inline const std::vector<MenuCase> menus{
    {"mnuExit", {"mnuExit1"}},
    {"mnuSetup",
     {"SetupComms", "SetupUnits", "mnuAlarms", "mnuInternet", "mnuLatLong", "mnuEditComment", "mnuEditComment2",
      "mnuEditDSR"}},
    {"mnuLogs",
     {"mnuDisplayLog", "mnuDisplayAlmanac", "mnuProgLog", "mnuClearProgLog", "mnulogFTP", "mnulogMail", "mnuLogWU",
      "mnuLogHW", "mnuLogAPRS"}},
    {"mnuDisplay",
     {"mnuHide", "mnusystray", "mnuCpop", "mnuDisableGraphs", "mnuInGraphs", "mnuNoErrorPop", "mnuNoCCPop",
      "mnuNoFTPPop", "mnuNoMailPop", "mnuResetGraphs", "mnuBIG", "mnuFTPdebug"}},
    {"mnuReports", {"mnuAlMonth", "mnuAutoReport"}},
    {"mnuHelp", {"mnuFHelp", "mnuAbout"}},
};

}  // namespace nimbry::test
