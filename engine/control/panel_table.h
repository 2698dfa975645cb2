#pragma once

#include <string>

#include "engine/core/weather_state.h"

namespace nimbry {

/// The main window as a table of text for a terminal, in UTF-8: time, status and battery; the present readings in two
/// columns; the extremes of today, of yesterday and since the station's reset. Each line ends in "\n"; columns are as
/// wide as their longest text.
[[nodiscard]] std::string panel_table(const WeatherState& state);

}  // namespace nimbry
