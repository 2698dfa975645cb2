#include "engine/network/client_menus.h"

#include <array>

namespace nimbry {

namespace {

constexpr std::array entries{&MainMenu::mnuNoFTPPop, &MainMenu::mnuNoMailPop, &MainMenu::mnuLatLong,
                             &MainMenu::mnuAlarms,   &MainMenu::mnulogFTP,    &MainMenu::mnulogMail,
                             &MainMenu::mnuLogWU,    &MainMenu::mnuLogHW,     &MainMenu::mnuLogAPRS,
                             &MainMenu::mnuInternet};

}  // namespace

void disable_client_menus(MainMenu& menu) {
    for (Box MainMenu::*entry : entries) (menu.*entry).enabled = false;
}

}  // namespace nimbry
