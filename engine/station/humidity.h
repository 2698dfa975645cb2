#pragma once

#include <string>

#include "engine/core/weather_state.h"

namespace nimbry {

/// True when the outdoor humidity reads 97 and the station says that it is over its range: it stands for 100.
[[nodiscard]] bool humidity_over_range(const WeatherState& state);

/// The outdoor humidity in percent as the panel, the log, the records and the dew point take it: "100" for an
/// over-range 97, else the digits as sent ("54", "05"). Alarm and heat index take `rdathumidity`, where 97 stays 97.
[[nodiscard]] std::string outdoor_humidity_text(const WeatherState& state);

}  // namespace nimbry
