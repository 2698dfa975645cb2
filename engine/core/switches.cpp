#include "engine/core/switches.h"

#include <algorithm>
#include <array>
#include <string>

#include "engine/core/copy.h"
#include "engine/graphs/graph_store.h"
#include "engine/publish/ftp_debug.h"

namespace nimbry {
namespace {

using Menu = MainMenu;
using Main = MainSettings;

constexpr std::array table{
    Switch{"mnulogFTP", &Menu::mnulogFTP, &Main::mlogftp},
    Switch{"mnulogMail", &Menu::mnulogMail, &Main::mlogmail},
    Switch{"mnuLogWU", &Menu::mnuLogWU, &Main::WUactive},
    Switch{"mnuLogHW", &Menu::mnuLogHW, &Main::HWactive},
    Switch{"mnuLogAPRS", &Menu::mnuLogAPRS, &Main::LogAPRS},
    Switch{"mnuHide", &Menu::mnuHide, &Main::Hide},
    Switch{"mnusystray", &Menu::mnusystray, &Main::MinSysTray},
    Switch{"mnuCpop", &Menu::mnuCpop, &Main::Cpop},
    Switch{"mnuDisableGraphs", &Menu::mnuDisableGraphs, &Main::DrwGrafs},
    Switch{"mnuInGraphs", &Menu::mnuInGraphs, &Main::InGraphs},
    Switch{"mnuNoErrorPop", &Menu::mnuNoErrorPop, &Main::ErrorPop},
    Switch{"mnuNoCCPop", &Menu::mnuNoCCPop, &Main::CCPop},
    Switch{"mnuNoFTPPop", &Menu::mnuNoFTPPop, &Main::NoFTPop},
    Switch{"mnuNoMailPop", &Menu::mnuNoMailPop, &Main::NoMailPop},
    Switch{"mnuFTPdebug", &Menu::mnuFTPdebug, nullptr},
};

}  // namespace

std::span<const Switch> switches() {
    return table;
}

const Switch* switch_named(std::string_view name) {
    const auto found = std::find_if(table.begin(), table.end(), [&](const Switch& s) { return s.name == name; });
    return found == table.end() ? nullptr : &*found;
}

std::string_view key_of(const Switch& which) {
    for (const MainKey& key : main_keys()) {
        const auto* field = std::get_if<bool MainSettings::*>(&key.field);
        if (field != nullptr && *field == which.setting) return key.key;
    }
    return {};
}

void click_switch(Copy& copy, const Switch& which) {
    copy.ports.sounds.play(std::string(click_sound));
    bool& checked = (copy.state.menu.*which.entry).checked;
    checked = !checked;
    if (which.entry == &MainMenu::mnuFTPdebug) clear_debug_window(copy.state);
    if (which.setting == nullptr) return;
    copy.state.settings.*which.setting = checked;
    copy.ini.SaveFlag("Main", key_of(which), checked);
    if (which.entry == &MainMenu::mnuDisableGraphs || which.entry == &MainMenu::mnuInGraphs) apply_graph_switches(copy);
}

}  // namespace nimbry
