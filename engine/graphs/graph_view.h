#pragma once

#include "engine/core/weather_state.h"

namespace nimbry {

// The graphs on the main window: which one is in which pane, their drawings, and what is read off them. The title label
// `gLabel12` is the selector: its first seven characters say which graph is in the main pane, and the small panes 1 to
// 5 show the five that come after it.

/// The graph in a pane, 0 (the main one) to 5.
[[nodiscard]] GraphKind graph_in_pane(const WeatherState& state, int pane);

/// Puts the graph in the main pane into its labels: title with the unit in force, up to three legends. Panes and labels
/// are hidden while drawing is switched off.
void show_graph_labels(WeatherState& state);

/// Draws all six panes from the store, on levelled scales, and sets `GraphsDisplayed`. Nothing is drawn while drawing
/// is switched off (`mnuDisableGraphs`). To be called after every change of the store, the units, the switches, the
/// window's size and its colours.
void drawgraph(WeatherState& state);

/// A click on a pane brings its graph to the main pane; one on the title or the main pane itself brings the next.
void click_graph(WeatherState& state, int pane);

/// The pointer moved over the main pane, to x in twips: what stands there is read off into its tip.
void move_over_graph(WeatherState& state, double x);

/// Reads off a row, kept within those in use. Without a sample nothing is read off.
void read_graph_row(WeatherState& state, int row);

/// The pointer left the main pane: its own tip is back.
void leave_graph(WeatherState& state);

/// What a row of a graph says: "Outdoor 8.1 °C Dew 4.2 °C Indoor 20.5 °C at 05 Oct 2026 14:00:33". A value outside its
/// limits is left out; a direction of 0 is "Nil Wind"; an unknown time is "??".
[[nodiscard]] std::string graph_reading(const WeatherState& state, GraphKind kind, int row);

}  // namespace nimbry
