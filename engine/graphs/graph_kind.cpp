#include "engine/graphs/graph_kind.h"

#include <array>

#include "engine/derived/number_text.h"

namespace nimbry {
namespace {

struct Graph {
    std::string_view name, words, word;
    std::array<GraphSeries, 3> series;
    std::size_t outdoor;  ///< how many of them there are without the indoor ones
    std::size_t all;
};

constexpr auto first = SeriesLook::first;
constexpr auto second = SeriesLook::second;
constexpr auto indoor_look = SeriesLook::indoor;

constexpr std::array<Graph, graph_count> graphs{{
    {"temperature",
     "Temperature",
     "Temperature",
     {{{series::outdoor_temperature, first, "Outdoor", "Outdoor"},
       {series::dew_point, second, "Dew Point", "Dew"},
       {series::indoor_temperature, indoor_look, "Indoor", "Indoor"}}},
     2,
     3},
    {"humidity",
     "Humidity",
     "Humidity",
     {{{series::outdoor_humidity, first, "Outdoor", "Outdoor"},
       {series::indoor_humidity, indoor_look, "Indoor", "Indoor"},
       {}}},
     1,
     2},
    {"wind",
     "Wind Speed",
     "Wind",
     {{{series::average_wind, first, "Average", "Average"}, {series::gust, second, "Gust", "Gust"}, {}}},
     2,
     2},
    {"barometer", "Barometer", "Barometer", {{{series::barometer, first, "", ""}, {}, {}}}, 1, 1},
    {"rain", "Rainfall", "Rainfall", {{{series::rain_rate, first, "", ""}, {}, {}}}, 1, 1},
    {"direction", "Wind Direction", "Direction", {{{series::direction, first, "", ""}, {}, {}}}, 1, 1},
}};

constexpr std::size_t prefix_length = 7;

const Graph& graph(GraphKind kind) {
    return graphs[static_cast<std::size_t>(kind)];
}

std::string unit_text(GraphKind kind, const Units& units) {
    switch (kind) {
        case GraphKind::temperature: return trimmed(units.temperature_text);
        case GraphKind::humidity: return "%";
        case GraphKind::wind: return units.wind_text;
        case GraphKind::barometer: return units.barometer_text;
        case GraphKind::rain: return units.rain_text + "/Hr";
        case GraphKind::direction: break;
    }
    return "\xB0";
}

}  // namespace

GraphKind graph_after(GraphKind kind, int steps) {
    return static_cast<GraphKind>((static_cast<int>(kind) + steps) % graph_count);
}

std::string_view graph_name(GraphKind kind) {
    return graph(kind).name;
}

std::string_view graph_words(GraphKind kind) {
    return graph(kind).words;
}

std::string_view graph_word(GraphKind kind) {
    return graph(kind).word;
}

std::string graph_title(GraphKind kind, const Units& units) {
    return std::string(graph_words(kind)) + " " + unit_text(kind, units);
}

GraphKind graph_of_title(std::string_view title) {
    const std::string_view prefix = title.substr(0, prefix_length);
    for (int n = 0; n < graph_count; ++n) {
        const auto kind = static_cast<GraphKind>(n);
        if (graph_words(kind).substr(0, prefix_length) == prefix) return kind;
    }
    return GraphKind::temperature;
}

std::span<const GraphSeries> graph_series(GraphKind kind, bool indoor) {
    return std::span(graph(kind).series).first(indoor ? graph(kind).all : graph(kind).outdoor);
}

}  // namespace nimbry
