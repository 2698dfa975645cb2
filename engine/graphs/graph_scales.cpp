#include "engine/graphs/graph_scales.h"

#include <algorithm>
#include <cmath>

namespace nimbry {
namespace {

/// Least, greatest, tick step.
using Limits = std::array<double, 3>;

Limits wind_limits(WindUnit unit) {
    switch (unit) {
        case WindUnit::ms: return {0, 60, 0.5};
        case WindUnit::kph: return {0, 333, 0.5};
        case WindUnit::mph: return {0, 150, 0.5};
        case WindUnit::knots: break;
    }
    return {0, 120, 0.5};
}

Limits barometer_limits(BarometerUnit unit) {
    // Kept on purpose: the tick of 1.325 inches.
    return unit == BarometerUnit::inhg ? Limits{22, 32, 1.325} : Limits{794, 1051, 1};
}

Limits rain_limits(RainUnit unit) {
    return unit == RainUnit::mm ? Limits{0, 1000, 1} : Limits{0, 41, 0.05};
}

Limits temperature_limits(TemperatureUnit unit) {
    return unit == TemperatureUnit::celsius ? Limits{-40, 60, 1} : Limits{-40, 140, 2};
}

constexpr Limits humidity_limits{0, 100, 5};
constexpr Limits direction_limits{0, 360, 45};
constexpr int axis_rows = series::count;  // row 10 + s: the axis of series s

// A value just beside a tick counts as on it: samples are singles, and their last digit is not theirs.
constexpr double tick_tolerance = 0.0001;

std::array<float, 3>& row(GraphState& graphs, int r) {
    return graphs.gscale[static_cast<std::size_t>(r)];
}
const std::array<float, 3>& row(const GraphState& graphs, int r) {
    return graphs.gscale[static_cast<std::size_t>(r)];
}

bool begins_at_least_value(int s) {
    return s == series::average_wind || s == series::gust || s == series::rain_rate;
}

bool shows_whole_range(int s) {
    return s == series::outdoor_humidity || s == series::indoor_humidity || s == series::direction;
}

void set_axis(GraphState& graphs, int s, const GraphAxis& axis) {
    row(graphs, axis_rows + s) = {static_cast<float>(axis.low), static_cast<float>(axis.high),
                                  static_cast<float>((axis.high - axis.low) / grid_intervals)};
}

}  // namespace

void setgraphscales(WeatherState& state) {
    GraphState& graphs = state.graphs;
    const Limits t = temperature_limits(state.units.temperature);
    const Limits w = wind_limits(state.units.wind);
    const Limits b = barometer_limits(state.units.barometer);
    const Limits r = rain_limits(state.units.rain);
    graphs.limits = {.grtmin = t[0],
                     .grtmax = t[1],
                     .grttic = t[2],
                     .grwmin = w[0],
                     .grwmax = w[1],
                     .grwtic = w[2],
                     .grbmin = b[0],
                     .grbmax = b[1],
                     .grbtic = b[2],
                     .grrmin = r[0],
                     .grrmax = r[1],
                     .grrtic = r[2]};
    const auto set = [&graphs](std::initializer_list<int> which, const Limits& limits) {
        for (const int s : which) {
            for (std::size_t n = 0; n < limits.size(); ++n) row(graphs, s)[n] = static_cast<float>(limits[n]);
        }
    };
    set({series::outdoor_temperature, series::dew_point, series::indoor_temperature}, t);
    set({series::outdoor_humidity, series::indoor_humidity}, humidity_limits);
    set({series::average_wind, series::gust}, w);
    set({series::barometer}, b);
    set({series::rain_rate}, r);
    set({series::direction}, direction_limits);
}

bool within_limits(const GraphState& graphs, int s, float value) {
    return value >= row(graphs, s)[0] && value <= row(graphs, s)[1];
}

GraphAxis axis_of(const GraphState& graphs, int s) {
    const double least = row(graphs, s)[0], greatest = row(graphs, s)[1], tick = row(graphs, s)[2];
    const GraphAxis whole{least, greatest};
    if (shows_whole_range(s) || tick <= 0) return whole;

    double smallest = greatest, largest = least;
    bool any = false;
    for (int r = 1; r <= graphs.rows.windsamples(); ++r) {
        const float value = graphs.rows.gdata(s, r);
        if (!within_limits(graphs, s, value)) continue;
        smallest = std::min(smallest, static_cast<double>(value));
        largest = std::max(largest, static_cast<double>(value));
        any = true;
    }
    if (!any) return whole;

    GraphAxis axis;
    axis.low = begins_at_least_value(s) ? least : least + std::floor((smallest - least) / tick + tick_tolerance) * tick;
    axis.high = least + std::ceil((largest - least) / tick - tick_tolerance) * tick;
    axis.high = std::min(std::max(axis.high, axis.low + 2 * tick), greatest);
    axis.low = std::max(std::min(axis.low, axis.high - 2 * tick), least);
    return axis;
}

void level_scales(GraphState& graphs, bool indoor) {
    for (int s = 0; s < series::count; ++s) set_axis(graphs, s, axis_of(graphs, s));
    for (int n = 0; n < graph_count; ++n) {
        const auto shown = graph_series(static_cast<GraphKind>(n), indoor);
        GraphAxis shared = drawn_axis(graphs, shown.front().s);
        for (const GraphSeries& each : shown) {
            const GraphAxis axis = drawn_axis(graphs, each.s);
            shared = {std::min(shared.low, axis.low), std::max(shared.high, axis.high)};
        }
        for (const GraphSeries& each : shown) set_axis(graphs, each.s, shared);
    }
}

GraphAxis drawn_axis(const GraphState& graphs, int s) {
    return {row(graphs, axis_rows + s)[0], row(graphs, axis_rows + s)[1]};
}

}  // namespace nimbry
