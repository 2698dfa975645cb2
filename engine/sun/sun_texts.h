#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Works out the sun's times for the computer's date and zone and the location entered, and writes them to the sun
/// boxes of the additional data window and to SunState. Runs in every cycle.
///
/// `TxtSunrise` and `TxtSunset` hold today's sentences ("Sunrise today (05 October 2026) was at 06:09:12", "and Sunset
/// will be at 18:30:01") with a balloon each; once today's sunrise has passed, `TxtSunriseTom` and `TxtSunsetTom` hold
/// tomorrow's, and until then they are empty. Without a location (or with one beyond the poles) the boxes say why they
/// are empty and give way to the label `lblNoSun`.
void refresh_sun_texts(Copy& copy);

/// Shows the sun's picture and boxes, or `lblNoSun` in their place, by whether a location is entered.
void show_sun_picture(Copy& copy);

}  // namespace nimbry
