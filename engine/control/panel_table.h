#pragma once

#include <string>

#include "engine/core/weather_state.h"

namespace nimbry {

enum class PanelLayout {
    wide,   ///< 22 lines, as wide as their texts: about 110 columns
    narrow  ///< 80 columns at most: short captions, and what the station remembers in lines of its own at the end
};

/// The main window as a table of text for a terminal, in UTF-8: time, status and battery, and below them what is wrong
/// with the serial port, if anything is; the present readings in two columns; the extremes of today, of yesterday and
/// since the station's reset. A reading in alarm has "(!)" behind it. Each line ends in "\n"; columns are as wide as
/// their longest text.
[[nodiscard]] std::string panel_table(const WeatherState& state, PanelLayout layout);

}  // namespace nimbry
