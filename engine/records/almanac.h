#pragma once

#include <string>

#include "engine/core/copy.h"
#include "engine/records/almanac_file.h"

namespace nimbry {

/// The weather day's row: backup, head if the file is new, days since rain, the row itself, the local copy, and the
/// archive step. A first error costs only its step. Does nothing while an error of a record routine stands. Bears the
/// tag "almanac". May wait.
void almanac(Copy& copy);

/// The head of a new almanac: it names the changeover in force.
[[nodiscard]] std::string almanac_head(const MainSettings& settings);

/// The row of the day as it is held, with its line end. Values are in the units of display; a record that saw no
/// reading goes out as its converted reset value.
[[nodiscard]] std::string almanac_row(const WeatherState& state, const std::string& date, const std::string& month);

}  // namespace nimbry
