#pragma once

#include <cstdint>

#include "engine/ports/clock.h"

namespace nimbry::simulator {

/// The weather of one moment at a place of the northern middle latitudes, 200 m from the sea and invented.
struct Weather {
    double pressure_hpa = 0;         ///< 950 to 1046
    double pressure_change_hpa = 0;  ///< against three hours before
    double cloud = 0;                ///< 0 clear to 1 covered
    double outdoor_c = 0;            ///< -30 to 42
    double dew_point_c = 0;          ///< never above outdoor_c
    double outdoor_rh = 0;           ///< percent, 15 to 100
    double indoor_c = 0;             ///< 14 to 29
    double indoor_rh = 0;            ///< percent, 25 to 70
    double rain_mm_h = 0;            ///< 0 in the dry
    double average_ms = 0;           ///< 0 to 30
    double gust_ms = 0;              ///< never below average_ms, at most 50
    double average_degrees = 0;      ///< where the wind comes from, 0 up to but not including 360
    double gust_degrees = 0;         ///< the same of the gust
};

/// The weather at a moment. Pure: the same seed and moment give the same weather, in whatever order they are asked for,
/// and one moment's weather follows from the last without a jump. Pressure waves drive the rest: a falling, low glass
/// brings cloud, wind and showers; a high one clear skies, wide temperature swings and light air.
[[nodiscard]] Weather weather_at(std::uint64_t seed, CivilTime moment);

}  // namespace nimbry::simulator
