#pragma once

#include "engine/displays/main_menu.h"

namespace nimbry {

/// Disables the menu entries that a client must not use: what publishes, and what comes from its server.
/// set_menu_for_role() gives them back to a copy that is no client any more.
void disable_client_menus(MainMenu& menu);

}  // namespace nimbry
