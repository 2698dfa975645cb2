#include "engine/displays/main_menu.h"

#include <cstddef>

#include "engine/core/switches.h"

namespace nimbry {

void reset_main_menu(MainMenu& menu) {
    menu = MainMenu{};

    menu.mnuExit.text = "E&xit";
    menu.mnuExit1.text = "Exit Nimbry";

    menu.mnuSetup.text = "&Settings";
    menu.SetupComms.text = "&Comms/Files";
    menu.SetupUnits.text = "&Units";
    menu.mnuAlarms.text = "&Alarms";
    menu.mnuInternet.text = "&Internet";
    menu.mnuLatLong.text = "Location (Lat/Long)";
    menu.mnuEditComment.text = "Edit \"Comment\" web tag";
    menu.mnuEditComment2.text = "Edit \"Comment 2\" web tag";
    menu.mnuEditDSR.text = "Edit Days Since Rain";

    menu.mnuLogs.text = "&Logs";
    menu.mnuDisplayLog.text = "Display Log File";
    menu.mnuDisplayAlmanac.text = "Display Almanac";
    menu.mnuProgLog.text = "Display Program Log";
    menu.mnuClearProgLog.text = "Prune Program Log";
    menu.mnulogFTP.text = "Log FTP success events";
    menu.mnulogMail.text = "Log EMail success events";
    menu.mnuLogWU.text = "Log Weather Underground events";
    menu.mnuLogHW.text = "Log Weatherforyou events";
    menu.mnuLogAPRS.text = "Log APRS upload events";

    menu.mnuDisplay.text = "&Display";
    menu.mnuHide.text = "Minimize after start";
    menu.mnusystray.text = "Minimizes to system tray";
    menu.mnuCpop.text = "Show conversion pop-ups";
    menu.mnuDisableGraphs.text = "Disable &Graph Display";
    menu.mnuInGraphs.text = "Graph &Indoor Values";
    menu.mnuNoErrorPop.text = "Suppress ALL sensor error pop-up messages";
    menu.mnuNoCCPop.text = "Suppress ONLY \"Cold Climate\" humidity sensor pop-up messages";
    // Kept on purpose: the caption says "success", and the switch silences the messages of failures.
    menu.mnuNoFTPPop.text = "Suppress FTP success pop-up messages";
    menu.mnuNoMailPop.text = "Suppress email success pop-up messages";
    menu.mnuResetGraphs.text = "Reset graphs";
    menu.mnuBIG.text = "Show &large text window";
    menu.mnuFTPdebug.text = "Show FTP debug window";

    menu.mnuAdditional.text = "&Additional Data";

    menu.mnuReports.text = "&Reports";
    menu.mnuAlMonth.text = "Monthly Summary (choose file)";
    menu.mnuAutoReport.text = "Monthly Summary (current month)";

    menu.mnuHideNow.text = "Hide";
    menu.mnuRestore.text = "Restore Nimbry";
    menu.mnuRestore.enabled = false;

    menu.mnuHelp.text = "&Help";
    menu.mnuFHelp.text = "Nimbry Help";
    menu.mnuAbout.text = "&About";

    constexpr std::array buttons{"Logs", "Settings", "Exit", "Display", "Additional", "Reports", "Help"};
    for (std::size_t n = 0; n < buttons.size(); ++n) menu.fmb[n].text = buttons[n];

    menu.mnuDisplayLog.enabled = false;
    menu.mnuDisplayAlmanac.enabled = false;
    set_menu_for_role(menu, false, false);
    apply_menu_checks(menu, MainSettings{});
}

void set_menu_for_role(MainMenu& menu, bool client, bool fullystarted) {
    const bool publishes = fullystarted && !client;
    for (Box MainMenu::*entry : publishing_entries) (menu.*entry).enabled = publishes;
    for (Box* text : {&menu.mnuEditComment, &menu.mnuEditComment2, &menu.mnuEditDSR}) text->enabled = publishes;
    menu.mnuFTPdebug.enabled = !client;
    if (client) {
        for (Box* entry : {&menu.mnulogFTP, &menu.mnulogMail, &menu.mnuFTPdebug}) entry->checked = false;
    } else {
        for (Box MainMenu::*entry : server_entries) (menu.*entry).enabled = true;
    }
}

void apply_menu_checks(MainMenu& menu, const MainSettings& settings) {
    for (const Switch& which : switches())
        if (which.setting != nullptr) (menu.*which.entry).checked = settings.*which.setting;
}

}  // namespace nimbry
