#pragma once

#include <array>

#include "engine/core/main_settings.h"
#include "engine/displays/box.h"

namespace nimbry {

/// The menu of the main window and its row of buttons, under their control names, in the order of the bar. A Box here
/// is an entry: text is its caption ("&" marks the letter that opens it), checked its check mark.
struct MainMenu {
    Box mnuExit;
    Box mnuExit1;

    Box mnuSetup;
    Box SetupComms, SetupUnits, mnuAlarms, mnuInternet, mnuLatLong, mnuEditComment, mnuEditComment2, mnuEditDSR;

    Box mnuLogs;
    Box mnuDisplayLog, mnuDisplayAlmanac, mnuProgLog, mnuClearProgLog;
    Box mnulogFTP, mnulogMail, mnuLogWU, mnuLogHW, mnuLogAPRS;  ///< switches

    Box mnuDisplay;
    Box mnuHide, mnusystray, mnuCpop, mnuDisableGraphs, mnuInGraphs;  ///< switches
    Box mnuNoErrorPop, mnuNoCCPop, mnuNoFTPPop, mnuNoMailPop;         ///< switches
    Box mnuResetGraphs, mnuBIG;
    Box mnuFTPdebug;  ///< a switch of this run only: it has no key

    Box mnuAdditional;  ///< on the bar; acts at once

    Box mnuReports;
    Box mnuAlMonth, mnuAutoReport;

    Box mnuHideNow;  ///< on the bar, where it acts at once, and in the tray icon's menu
    Box mnuRestore;  ///< in the tray icon's menu; of the two one is enabled (main_window.h)

    Box mnuHelp;
    Box mnuFHelp, mnuAbout;

    std::array<Box, 7> fmb;   ///< the buttons: Logs, Settings, Exit, Display, Additional, Reports, Help
    bool fmb_locked = false;  ///< an upload has the row of buttons off
};

/// Entries of what goes out to the world: a client has no use for them.
inline constexpr std::array publishing_entries{&MainMenu::mnuInternet, &MainMenu::mnulogFTP, &MainMenu::mnulogMail,
                                               &MainMenu::mnuLogWU,    &MainMenu::mnuLogHW,  &MainMenu::mnuLogAPRS};

/// The other entries that a client must not use.
inline constexpr std::array server_entries{&MainMenu::mnuAlarms, &MainMenu::mnuLatLong, &MainMenu::mnuNoFTPPop,
                                           &MainMenu::mnuNoMailPop};

/// Captions, and enabled as the window's load leaves it: off is what needs a first train, and `mnuRestore` while there
/// is nothing to bring back. No switch is checked but those that a missing key would check.
void reset_main_menu(MainMenu& menu);

/// What the role leaves of the menu. A client publishes nothing: what belongs to publishing and to the texts of the
/// pages is off in it, the switches of the FTP and mail log and of the FTP debug window unchecked as well. Any other
/// copy has all of it, except, before its first train, what needs one; what a client's synchronisation has switched off
/// beyond this comes back too.
void set_menu_for_role(MainMenu& menu, bool client, bool fullystarted);

/// Takes the check marks of the switches from the settings in force. `mnuFTPdebug`, which has no key, stays as it is.
void apply_menu_checks(MainMenu& menu, const MainSettings& settings);

}  // namespace nimbry
