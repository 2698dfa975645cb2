#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace nimbry::simulator {

/// Every reading that the station sends as a number.
enum class Reading : std::size_t {
    outdoor_temperature,
    outdoor_humidity,
    indoor_temperature,
    indoor_humidity,
    barometer,
    trend,
    outlook,
    rain_rate,
    rain_total,
    gust,
    gust_direction,
    wind,
    wind_direction,
    wind_chill,
    high_temperature,
    low_temperature,
    high_humidity,
    low_humidity,
    record_gust,
    record_direction,
};

/// A reading's name in scenario files, its unit, and the range that the station's digits hold.
struct ReadingInfo {
    std::string_view name;
    std::string_view unit;
    double low, high;
};

/// In the order of Reading.
inline constexpr std::array reading_infos{
    ReadingInfo{"outdoor-temperature", "degrees C", -79.9, 79.9},
    ReadingInfo{"outdoor-humidity", "percent", 0, 99},
    ReadingInfo{"indoor-temperature", "degrees C", -79.9, 79.9},
    ReadingInfo{"indoor-humidity", "percent", 0, 99},
    ReadingInfo{"barometer", "hPa", 0, 9999},
    ReadingInfo{"trend", "digit: 1 rising, 2 steady, 4 falling", 0, 15},
    ReadingInfo{"outlook", "digit: 1 sunny, 2 cloudy, 4 partly cloudy, 8 rain or snow", 0, 15},
    ReadingInfo{"rain-rate", "mm per hour", 0, 1599},
    ReadingInfo{"rain-total", "mm", 0, 9999},
    ReadingInfo{"gust", "m/s", 0, 99.9},
    ReadingInfo{"gust-direction", "degrees", 0, 999},
    ReadingInfo{"wind", "m/s", 0, 99.9},
    ReadingInfo{"wind-direction", "degrees", 0, 999},
    ReadingInfo{"wind-chill", "degrees C", -99, 99},
    ReadingInfo{"high-temperature", "degrees C", -79.9, 79.9},
    ReadingInfo{"low-temperature", "degrees C", -79.9, 79.9},
    ReadingInfo{"high-humidity", "percent", 0, 99},
    ReadingInfo{"low-humidity", "percent", 0, 99},
    ReadingInfo{"record-gust", "m/s", 0, 99.9},
    ReadingInfo{"record-direction", "degrees", 0, 999},
};
static_assert(reading_infos.size() == static_cast<std::size_t>(Reading::record_direction) + 1);

/// One value for each reading, in its unit.
class Values {
public:
    double& operator[](Reading reading) { return values_[static_cast<std::size_t>(reading)]; }
    double operator[](Reading reading) const { return values_[static_cast<std::size_t>(reading)]; }

private:
    std::array<double, reading_infos.size()> values_{};
};

/// The reading of that name; nothing for a name that is none.
[[nodiscard]] std::optional<Reading> reading_named(std::string_view name);

/// What can be wrong with the station, each with a mark of its own in the groups.
enum class Fault : std::size_t {
    wind,                 ///< wind sensor not heard
    outdoor_temperature,  ///< the mark "E" in place of a digit, for this and the next three
    outdoor_humidity,
    indoor_temperature,
    indoor_humidity,
    barometer,            ///< has no mark: the station sends 0 hPa
    rain,                 ///< rain gauge not heard
    low_battery,          ///< the wind sensor's battery
    humidity_over_range,  ///< a reading of 97 means 100
    record_over_range,    ///< a record high of 97 means 100
};

/// Names in scenario files, in the order of Fault.
inline constexpr std::array<std::string_view, 10> fault_names{
    "wind", "outdoor-temperature", "outdoor-humidity",    "indoor-temperature", "indoor-humidity", "barometer",
    "rain", "low-battery",         "humidity-over-range", "record-over-range",
};
static_assert(fault_names.size() == static_cast<std::size_t>(Fault::record_over_range) + 1);

/// The fault of that name; nothing for a name that is none.
[[nodiscard]] std::optional<Fault> fault_named(std::string_view name);

}  // namespace nimbry::simulator
