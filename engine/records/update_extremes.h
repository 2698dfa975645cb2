#pragma once

#include "engine/core/copy.h"

namespace nimbry {

// The day's extremes, once a cycle, from the readings of the train just taken. A reading counts only if its sensor's
// test lets it pass; the dew point asks temperature and humidity, the chill both winds besides. On an equal value the
// time moves to the later reading, and the direction with the gust's; only the peak rain rate keeps its first time of
// the day.

/// Outdoor temperature, dew point, heat index, chill, humidity, gust and rain rate.
void update_outdoor_extremes(Copy& copy);

/// Barometer, indoor temperature, and the test of the indoor humidity, which has no record.
void update_indoor_extremes(Copy& copy);

}  // namespace nimbry
