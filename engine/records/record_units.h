#pragma once

#include <string>

#include "engine/derived/units.h"

namespace nimbry {

// Records are kept in base units; shown and written they are in those of display.

/// The value times its unit's factor, rounded to `digits` decimals.
[[nodiscard]] double scaled(float value, double factor, int digits);

/// A temperature with its sign, which is that after the conversion, and without its unit: "+12.3".
[[nodiscard]] std::string signed_temperature(float celsius, const Units& units);

}  // namespace nimbry
