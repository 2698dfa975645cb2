#include "engine/network/client_menus.h"

namespace nimbry {

void disable_client_menus(MainMenu& menu) {
    for (Box MainMenu::*entry : publishing_entries) (menu.*entry).enabled = false;
    for (Box MainMenu::*entry : server_entries) (menu.*entry).enabled = false;
}

}  // namespace nimbry
