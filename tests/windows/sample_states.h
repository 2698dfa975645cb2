#pragma once

#include "engine/core/weather_state.h"

namespace nimbry::test {

// States as a running copy would hold them, for windows to show.

/// An autumn day: every box has a text, the outlook is partly cloudy.
void fill_with_a_plain_day(WeatherState& state);

/// The longest texts that the boxes are made for.
void fill_with_long_texts(WeatherState& state);

/// A gale: alarms on wind, rain and pressure, the outdoor temperature sensor and the indoor humidity faulty, battery
/// low.
void fill_with_trouble(WeatherState& state);

/// What a first train opens: every menu entry and button can be used.
void open_menus(WeatherState& state);

/// A day's texts in the additional data window, the sun's among them; it is open.
void fill_additional_data(WeatherState& state);
void fill_additional_data_with_long_texts(WeatherState& state);
/// The clock's line and the longest line of the big display.
void fill_big_display(WeatherState& state);
/// What stands in the sun's place without a location.
void show_no_sun(WeatherState& state);

}  // namespace nimbry::test
