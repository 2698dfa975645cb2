#pragma once

#include <span>
#include <string>
#include <string_view>

#include "engine/derived/units.h"
#include "engine/graphs/graph_rows.h"

namespace nimbry {

/// The six graphs, in the order in which a click goes through them.
enum class GraphKind { temperature, humidity, wind, barometer, rain, direction };
inline constexpr int graph_count = 6;

/// How a series is drawn, so that two in one pane differ in dash as well as in colour.
enum class SeriesLook {
    first,   ///< the graph's main series: solid
    second,  ///< the one beside it: dashed
    indoor,  ///< the indoor reading: dotted
};

/// One series of a graph.
struct GraphSeries {
    int s = 0;
    SeriesLook look = SeriesLook::first;
    std::string_view legend;  ///< "Dew Point"; empty for a series that is alone in its graph
    std::string_view word;    ///< how a reading is called: "Dew"
};

/// The graph that comes `steps` (0 or more) after this one, round and round.
[[nodiscard]] GraphKind graph_after(GraphKind kind, int steps);

/// "temperature", "humidity", "wind", "barometer", "rain", "direction": what a command calls it.
[[nodiscard]] std::string_view graph_name(GraphKind kind);

/// The words of the title without the unit: "Wind Speed".
[[nodiscard]] std::string_view graph_words(GraphKind kind);

/// The caption above a small pane, one word: "Temperature", "Wind", and "Direction" for the second that begins with
/// "Wind".
[[nodiscard]] std::string_view graph_word(GraphKind kind);

/// The title with its unit: "Temperature °C", "Rainfall mm/Hr", "Wind Direction °".
[[nodiscard]] std::string graph_title(GraphKind kind, const Units& units);

/// The graph of a title, by its first seven characters; the temperature for any other text.
[[nodiscard]] GraphKind graph_of_title(std::string_view title);

/// The series of a graph in the order of its legend, with the indoor ones or without.
[[nodiscard]] std::span<const GraphSeries> graph_series(GraphKind kind, bool indoor);

}  // namespace nimbry
