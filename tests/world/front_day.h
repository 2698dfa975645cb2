#pragma once

#include "engine/core/weather_state.h"
#include "engine/ports/clock.h"

namespace nimbry::test {

/// Fills the store with a day of 1440 minutes, the last of them at `end`, in which a cold front passes in the
/// afternoon: the temperature drops, the wind veers from south-west to north-west and freshens, a shower goes through,
/// and the pressure falls before and rises behind it. Values are in Celsius, km/h, mB and mm. Sets the scales.
void fill_with_a_front(WeatherState& state, CivilTime end);

}  // namespace nimbry::test
