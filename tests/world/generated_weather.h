#pragma once

#include <cmath>
#include <numbers>
#include <random>

#include "engine/derived/dates.h"
#include "engine/station/train_writer.h"

namespace nimbry::test {

/// Weather with a season, a day, gusts and showers, as the station tells it. The same seed gives the same weather for
/// the same moments asked for.
class GeneratedWeather {
public:
    explicit GeneratedWeather(std::uint32_t seed) : generator_(seed) {}

    /// The readings of a moment; moments are asked for in their order, as the rain counter only rises.
    StationReadings at(CivilTime time) {
        const double day = std::chrono::duration<double, std::ratio<86400>>(time.time_since_epoch()).count();
        const double season = -std::cos(2 * std::numbers::pi * day / 365);
        const double sun = -std::cos(2 * std::numbers::pi * (day - 0.1));
        const double noise = random_() * 2 - 1;
        StationReadings readings;
        readings.clock = station_moment(time);
        readings.temperature.outdoor = 10 + 9 * season + 5 * sun + 0.3 * noise;
        readings.temperature.indoor = 20 + sun;
        readings.humidity.outdoor = static_cast<int>(70 - 20 * sun + 5 * noise);
        readings.barometer.hpa = static_cast<int>(1013 + 15 * std::sin(day / 3) + noise);
        readings.wind.average_ms = std::abs(4 * std::sin(day / 2)) + 0.5;
        readings.wind.gust_ms = readings.wind.average_ms + 5 * std::abs(noise);
        readings.wind.gust_direction = static_cast<int>(359 * random_());
        const bool shower = std::sin(day * 5) > 0.95;
        readings.rain.rate_mm = shower ? static_cast<int>(1 + 9 * random_()) : 0;
        if (shower && random_() < 0.005) ++counter_;
        readings.rain.total_mm = counter_ % 10000;
        return readings;
    }

private:
    double random_() { return even_(generator_); }
    std::mt19937 generator_;
    std::uniform_real_distribution<double> even_{0, 1};
    int counter_ = 0;
};

}  // namespace nimbry::test
