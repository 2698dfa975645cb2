#pragma once

#include "engine/core/weather_state.h"

namespace nimbry {

/// Disables the menu entries that a client must not use: what publishes, and what comes from its server.
void disable_client_menus(WeatherState& state);

/// Gives them back to a copy that is no client any more; those that need a first train only when it has been.
void restore_client_menus(WeatherState& state);

}  // namespace nimbry
