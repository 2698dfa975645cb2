#pragma once

#include "engine/core/weather_state.h"

namespace nimbry::test {

/// Fills in what a copy shows that has run for a day, to the afternoon of 5 October 2026, on a simulated station at
/// Greenwich: every box, record and graph fits every other. The additional data window is open.
void fill_with_a_lived_day(WeatherState& state);

}  // namespace nimbry::test
