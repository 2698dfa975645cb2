#include "tests/world/front_day.h"

#include <algorithm>
#include <cmath>

#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_scales.h"

namespace nimbry::test {
namespace {

constexpr double front_passes = 900;  // minute of the day

/// A figure between -1 and 1 that looks like chance and is the same in every run.
double ripple(int minute, double seed) {
    return std::sin(minute * 0.7 + seed) * 0.5 + std::sin(minute * 0.173 + 3 * seed) * 0.5;
}

/// 0 before the front, 1 behind it, and the way between in `minutes`.
double behind(int minute, double minutes) {
    return std::clamp((minute - front_passes) / minutes, 0.0, 1.0);
}

float tenths(double value) {
    return static_cast<float>(Round(value, 1));
}

}  // namespace

void fill_with_a_front(WeatherState& state, CivilTime end) {
    setgraphscales(state);
    state.graphs.rows.clear();
    for (int m = 0; m < pmm1; ++m) {
        GraphRow row;
        row.set_gtime(stamp_text(end - std::chrono::minutes{pmm1 - 1 - m}));
        const double warmth = std::sin((m - 540) / 1440.0 * 6.28318) * 4.5;
        const double shower = std::max(0.0, 1 - std::fabs(m - front_passes - 35) / 60);
        const double outdoor = 14.2 + warmth - 6.8 * behind(m, 50) - shower + 0.15 * ripple(m, 1);
        const double humidity =
            std::clamp(72 - 4.2 * warmth + 22 * shower + 6 * behind(m, 50) + ripple(m, 2), 0.0, 100.0);
        const double average =
            std::max(0.0, 8 + 6 * m / front_passes + 9 * behind(m, 30) - 12 * behind(m, 500) + 2.5 * ripple(m, 3));
        const bool calm = m > 180 && m < 230;
        const double degrees = std::fmod(205 + 10 * ripple(m, 4) + 105 * behind(m, 20) + 30 * behind(m, 540), 360);
        row.set_gdata(series::outdoor_temperature, tenths(outdoor));
        row.set_gdata(series::dew_point, tenths(outdoor - (100 - humidity) / 5));
        row.set_gdata(series::outdoor_humidity, static_cast<float>(Round(humidity, 0)));
        row.set_gdata(series::average_wind, calm ? 0 : tenths(average));
        row.set_gdata(series::barometer,
                      static_cast<float>(Round(1011 - 9 * m / front_passes + 16 * behind(m, 480), 0)));
        row.set_gdata(series::rain_rate, static_cast<float>(Round(24 * shower * (1 + 0.3 * ripple(m, 5)), 0)));
        row.set_gdata(series::gust, calm ? 0 : tenths(average * 1.45 + 4 + 4 * std::fabs(ripple(m, 6))));
        row.set_gdata(series::direction, calm ? 0 : static_cast<float>(Round(degrees, 0)));
        row.set_gdata(series::indoor_temperature, tenths(20.4 + 0.8 * std::sin(m / 230.0)));
        row.set_gdata(series::indoor_humidity, static_cast<float>(Round(44 + 3 * std::sin(m / 310.0 + 1), 0)));
        state.graphs.rows.append(row);
    }
    state.havegrafdata = true;
}

}  // namespace nimbry::test
