#include "engine/network/client_menus.h"

#include <array>
#include <utility>

namespace nimbry {

namespace {

using Entry = Box MainMenu::*;

constexpr std::array needs_no_train{&MainMenu::mnuNoFTPPop, &MainMenu::mnuNoMailPop, &MainMenu::mnuLatLong,
                                    &MainMenu::mnuAlarms};
constexpr std::array needs_a_train{&MainMenu::mnulogFTP, &MainMenu::mnulogMail, &MainMenu::mnuLogWU,
                                   &MainMenu::mnuLogHW,  &MainMenu::mnuLogAPRS, &MainMenu::mnuInternet};
// What the first cycle of a client has switched off beside these, and its start.
constexpr std::array off_in_any_client{&MainMenu::mnuEditComment, &MainMenu::mnuEditComment2, &MainMenu::mnuEditDSR};

template <class Entries>
void enable(MainMenu& menu, const Entries& entries, bool enabled) {
    for (const Entry entry : entries) (menu.*entry).enabled = enabled;
}

}  // namespace

void disable_client_menus(WeatherState& state) {
    enable(state.menu, needs_no_train, false);
    enable(state.menu, needs_a_train, false);
}

void restore_client_menus(WeatherState& state) {
    if (!std::exchange(state.network.was_client, false)) return;
    enable(state.menu, needs_no_train, true);
    state.menu.mnuFTPdebug.enabled = true;
    if (!state.run.fullystarted) return;
    enable(state.menu, needs_a_train, true);
    enable(state.menu, off_in_any_client, true);
}

}  // namespace nimbry
