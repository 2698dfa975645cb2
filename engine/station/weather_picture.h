#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Shows the one weather picture, and its word in the forecast box, that the station's forecast digit stands for: 1
/// sunny, 2 cloudy, 4 partly cloudy, 8 storm with a falling barometer, else snow or sleet at 1.0 degrees C or
/// less, else rain. Snow needs a sound outdoor temperature. Any other digit leaves the picture as it is.
void show_weather_picture(Copy& copy);

}  // namespace nimbry
