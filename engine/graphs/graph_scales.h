#pragma once

#include "engine/core/weather_state.h"

namespace nimbry {

// What values a series may have, and between what ends it is drawn.

/// Sets the limits for the units in force, and from them rows 0 to 9 of `gscale`: at the start, after every load and
/// reset, and when a unit changes. Without it no sample can be stored.
void setgraphscales(WeatherState& state);

/// True for a value that series s may have; both limits belong to it.
[[nodiscard]] bool within_limits(const GraphState& graphs, int s, float value);

/// The intervals of an axis: grid and labels stand at their ends.
inline constexpr int grid_intervals = 8;

/// Where an axis begins and ends.
struct GraphAxis {
    double low = 0, high = 0;
};

/// The axis that shows a series by itself: from a tick at or below its smallest value to one at or above its greatest,
/// at least two ticks long and inside the limits. Wind and rain begin at their least value; humidity and direction, and
/// a series without any value, have their whole range. Ticks are counted from the least value.
[[nodiscard]] GraphAxis axis_of(const GraphState& graphs, int s);

/// Sets rows 10 to 19 of `gscale`. Series that share a pane share the lowest low and the highest high end of them all;
/// the indoor ones take part only if they are drawn.
void level_scales(GraphState& graphs, bool indoor);

/// The axis of a series as `gscale` has it.
[[nodiscard]] GraphAxis drawn_axis(const GraphState& graphs, int s);

}  // namespace nimbry
