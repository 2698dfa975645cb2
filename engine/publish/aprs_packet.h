#pragma once

#include <string>

#include "engine/core/weather_state.h"

namespace nimbry {

/// The weather as amateur radio's APRS network takes it: "098/007g012t046r008P028b10130h54NBY". Direction, average
/// speed and present gust in miles an hour (cut to whole ones), temperature in whole degrees F downwards, rain of the
/// last hour and since midnight in hundredths of an inch, barometer in tenths of a hectopascal, humidity in percent.
///
/// Without sound wind, speed and gust are "...". A temperature, barometer or humidity that is not known, or whose
/// sensor fails, is left out with its letter. Below 0 degrees F the temperature is "-" and at most two digits.
[[nodiscard]] std::string weather_string(const WeatherState& state);

/// The packet: call sign, UTC time of day ("030507z"; the network's own "z" form is day, hour, minute), position and
/// weather. Pieces that are not known are empty.
[[nodiscard]] std::string aprs_packet(const WeatherState& state);

/// Makes the two pieces of the position, "3351.41S" and "15112.56E", from the location entered; without one both are
/// empty. Minutes are rounded and never carried: -122.999999 gives "12260.00W".
void aprsposition(WeatherState& state);

}  // namespace nimbry
