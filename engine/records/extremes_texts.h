#pragma once

#include <string>

#include "engine/derived/units.h"
#include "engine/records/day_extremes.h"

namespace nimbry {

// How a record of the day is written, for today's column and yesterday's. The value is in base units. A value that
// still is the record's reset value gives "- No Valid Data -".

/// "+12.3 °C at 14:05"; the sign after conversion. `reset` is the reset value of the record: -999 of a maximum, 999 of
/// a minimum.
[[nodiscard]] std::string temperature_record(float celsius, float reset, const std::string& time, const Units& units);

/// "97 % at 06:00".
[[nodiscard]] std::string humidity_record(float percent, float reset, const std::string& time);

/// " 12 mm/hour at 03:30"; " nil" when it rounds to 0.
[[nodiscard]] std::string rain_rate_record(float mm_per_hour, const std::string& time, const Units& units);

/// " 1019 mB at 08:00".
[[nodiscard]] std::string barometer_record(float hpa, float reset, const std::string& time, const Units& units);

/// " 38.5 km/h, 231° at 11:17"; "Calm" below 0.2 of the unit.
[[nodiscard]] std::string gust_record(float ms, const std::string& direction, const std::string& time,
                                      const Units& units);

}  // namespace nimbry
