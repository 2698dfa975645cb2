#include "engine/displays/main_menu.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "engine/core/weather_state.h"
#include "engine/displays/box_list.h"

namespace nimbry {
namespace {

TEST(MainMenuAtLoad, HasEveryEntryInTheOrderOfTheBar) {
    const std::vector<std::pair<std::string, std::string>> expected{
        {"mnuExit", "E&xit"},
        {"mnuExit1", "Exit Nimbry"},
        {"mnuSetup", "&Settings"},
        {"SetupComms", "&Comms/Files"},
        {"SetupUnits", "&Units"},
        {"mnuAlarms", "&Alarms"},
        {"mnuInternet", "&Internet"},
        {"mnuLatLong", "Location (Lat/Long)"},
        {"mnuEditComment", "Edit \"Comment\" web tag"},
        {"mnuEditComment2", "Edit \"Comment 2\" web tag"},
        {"mnuEditDSR", "Edit Days Since Rain"},
        {"mnuLogs", "&Logs"},
        {"mnuDisplayLog", "Display Log File"},
        {"mnuDisplayAlmanac", "Display Almanac"},
        {"mnuProgLog", "Display Program Log"},
        {"mnuClearProgLog", "Prune Program Log"},
        {"mnulogFTP", "Log FTP success events"},
        {"mnulogMail", "Log EMail success events"},
        {"mnuLogWU", "Log Weather Underground events"},
        {"mnuLogHW", "Log Weatherforyou events"},
        {"mnuLogAPRS", "Log APRS upload events"},
        {"mnuDisplay", "&Display"},
        {"Form1.mnuHide", "Minimize after start"},
        {"mnusystray", "Minimizes to system tray"},
        {"mnuCpop", "Show conversion pop-ups"},
        {"mnuDisableGraphs", "Disable &Graph Display"},
        {"mnuInGraphs", "Graph &Indoor Values"},
        {"mnuNoErrorPop", "Suppress ALL sensor error pop-up messages"},
        {"mnuNoCCPop", "Suppress ONLY \"Cold Climate\" humidity sensor pop-up messages"},
        {"mnuNoFTPPop", "Suppress FTP success pop-up messages"},
        {"mnuNoMailPop", "Suppress email success pop-up messages"},
        {"mnuResetGraphs", "Reset graphs"},
        {"mnuBIG", "Show &large text window"},
        {"mnuFTPdebug", "Show FTP debug window"},
        {"mnuAdditional", "&Additional Data"},
        {"mnuReports", "&Reports"},
        {"mnuAlMonth", "Monthly Summary (choose file)"},
        {"mnuAutoReport", "Monthly Summary (current month)"},
        {"mnuHideNow", "Hide"},
        {"mnuRestore", "Restore Nimbry"},
        {"mnuHelp", "&Help"},
        {"mnuFHelp", "Nimbry Help"},
        {"mnuAbout", "&About"},
    };
    WeatherState state;
    reset_main_panel(state);
    std::vector<std::pair<std::string, std::string>> entries;
    for (const NamedConstBox& entry : named_boxes(std::as_const(state))) {
        if (entry.kind == BoxKind::menu_entry && entry.name.substr(0, 15) != "NimbryAdditiona") {
            entries.emplace_back(entry.name, entry.box->text);
        }
    }
    EXPECT_EQ(entries, expected);
}

TEST(MainMenuAtLoad, HasSevenButtons) {
    MainMenu menu;
    reset_main_menu(menu);
    std::vector<std::string> captions;
    for (const Box& button : menu.fmb) captions.push_back(button.text);
    EXPECT_EQ(captions,
              (std::vector<std::string>{"Logs", "Settings", "Exit", "Display", "Additional", "Reports", "Help"}));
}

TEST(MainMenuAtLoad, SwitchesOffWhatNeedsAFirstTrainAndNothingElse) {
    // mnuRestore needs no train, but a window that is away.
    const std::vector<std::string> off{"mnuInternet",   "mnuEditComment",    "mnuEditComment2", "mnuEditDSR",
                                       "mnuDisplayLog", "mnuDisplayAlmanac", "mnulogFTP",       "mnulogMail",
                                       "mnuLogWU",      "mnuLogHW",          "mnuLogAPRS",      "mnuRestore"};
    WeatherState state;
    reset_main_panel(state);
    std::vector<std::string> found;
    for (const NamedConstBox& entry : named_boxes(std::as_const(state))) {
        if (!entry.box->enabled) found.emplace_back(entry.name);
    }
    EXPECT_EQ(found, off);
}

TEST(MainMenuAtLoad, ChecksWhatAMissingKeyChecks) {
    WeatherState state;
    reset_main_panel(state);
    std::vector<std::string> checked;
    for (const NamedConstBox& entry : named_boxes(std::as_const(state))) {
        if (entry.box->checked) checked.emplace_back(entry.name);
    }
    EXPECT_EQ(checked, (std::vector<std::string>{"mnuCpop", "mnuInGraphs"}));
}

struct CheckCase {
    const char* entry;
    bool MainSettings::*key;
};

constexpr CheckCase menu_checks[]{
    {"mnulogFTP", &MainSettings::mlogftp},         {"mnulogMail", &MainSettings::mlogmail},
    {"mnuLogWU", &MainSettings::WUactive},         {"mnuLogHW", &MainSettings::HWactive},
    {"mnuLogAPRS", &MainSettings::LogAPRS},        {"mnuHide", &MainSettings::Hide},
    {"mnusystray", &MainSettings::MinSysTray},     {"mnuCpop", &MainSettings::Cpop},
    {"mnuDisableGraphs", &MainSettings::DrwGrafs}, {"mnuInGraphs", &MainSettings::InGraphs},
    {"mnuNoErrorPop", &MainSettings::ErrorPop},    {"mnuNoCCPop", &MainSettings::CCPop},
    {"mnuNoFTPPop", &MainSettings::NoFTPop},       {"mnuNoMailPop", &MainSettings::NoMailPop},
};

TEST(MenuChecks, FollowTheKeyOfTheirSwitch) {
    for (const CheckCase& c : menu_checks) {
        SCOPED_TRACE(c.entry);
        WeatherState state;
        reset_main_panel(state);
        for (bool value : {true, false, true}) {
            state.settings.*(c.key) = value;
            apply_menu_checks(state.menu, state.settings);
            EXPECT_EQ(find_box(state, c.entry)->checked, value);
        }
    }
}

TEST(MenuChecksOfASessionSwitch, AreLeftAsTheyAre) {
    MainMenu menu;
    reset_main_menu(menu);
    EXPECT_FALSE(menu.mnuFTPdebug.checked);
    menu.mnuFTPdebug.checked = true;
    apply_menu_checks(menu, MainSettings{});
    EXPECT_TRUE(menu.mnuFTPdebug.checked);
}

}  // namespace
}  // namespace nimbry
