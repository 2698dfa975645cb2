#pragma once

#include "engine/core/weather_state.h"
#include "windows/box_binding.h"

namespace nimbry::windows {

class CardGroup;

// The groups of the window "Nimbry Additional Data", each a panel of captions with their boxes beside them, bound to
// the state.

/// "Additional Current Conditions (calculated)".
[[nodiscard]] CardGroup* calculated_group(const AdditionalPanel& panel, BoxBinding& binding);

/// "Extreme Conditions" of today and yesterday; the heads are the main window's.
[[nodiscard]] CardGroup* additional_extremes_group(const WeatherState& state, BoxBinding& binding);

/// "Rainfall Statistics", with the two of the month under a head of their own.
[[nodiscard]] CardGroup* rain_statistics_group(const AdditionalPanel& panel, BoxBinding& binding);

/// The sun's picture, sentences and times, or in their place the label that says why there are none.
[[nodiscard]] CardGroup* sun_group(const AdditionalPanel& panel, BoxBinding& binding);

/// Since when the program has been running.
[[nodiscard]] CardGroup* uptime_group(const AdditionalPanel& panel, BoxBinding& binding);

}  // namespace nimbry::windows
