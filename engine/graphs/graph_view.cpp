#include "engine/graphs/graph_view.h"

#include <algorithm>

#include "engine/derived/number_text.h"
#include "engine/graphs/graph_scales.h"

namespace nimbry {
namespace {

bool indoor_shown(const WeatherState& state) {
    return state.menu.mnuInGraphs.checked;
}

std::string value_text(const WeatherState& state, GraphKind kind, float value) {
    if (kind == GraphKind::direction) return value == 0 ? "Nil Wind" : numtext(value) + "\xB0";
    const std::string title = graph_title(kind, state.units);
    const std::string unit = title.substr(graph_words(kind).size() + 1);
    // A rain rate is read per hour as the title has it: "2 mm/Hr".
    return numtext(value) + " " + unit;
}

GraphMarker marker_at(const WeatherState& state, int row) {
    const GraphState& graphs = state.graphs;
    const GraphKind kind = graph_in_pane(state, 0);
    GraphMarker marker;
    marker.row = row;
    marker.x = row_x(main_plot, row, graphs.rows.windsamples());
    marker.text = graph_reading(state, kind, row);
    for (const GraphSeries& shown : graph_series(kind, indoor_shown(state))) {
        const float value = graphs.rows.gdata(shown.s, row);
        if (!within_limits(graphs, shown.s, value)) continue;
        const GraphAxis axis = drawn_axis(graphs, shown.s);
        const double y = value_y(main_plot, static_cast<double>(value), axis.low, axis.high);
        marker.dots.push_back({pen_of(shown.look), {{static_cast<float>(marker.x), static_cast<float>(y)}}});
    }
    return marker;
}

}  // namespace

GraphKind graph_in_pane(const WeatherState& state, int pane) {
    return graph_after(graph_of_title(state.panel.gLabel12.text), pane);
}

void show_graph_labels(WeatherState& state) {
    MainPanel& panel = state.panel;
    const bool shown = !state.menu.mnuDisableGraphs.checked;
    const GraphKind kind = graph_in_pane(state, 0);
    panel.gLabel12.text = graph_title(kind, state.units);
    panel.gLabel12.visible = shown;
    for (Box& pane : panel.gPicture1) pane.visible = shown;

    const auto legends = graph_series(kind, indoor_shown(state));
    std::size_t n = 0;
    for (Box* label : {&panel.gLabel13, &panel.gLabel14, &panel.gLabel15}) {
        label->text = n < legends.size() ? legends[n].legend : "";
        label->visible = shown && !label->text.empty();
        ++n;
    }
}

void drawgraph(WeatherState& state) {
    if (state.menu.mnuDisableGraphs.checked) return;
    GraphState& graphs = state.graphs;
    show_graph_labels(state);
    level_scales(graphs, indoor_shown(state));
    for (int pane = 0; pane < graph_count; ++pane) {
        graphs.panes[static_cast<std::size_t>(pane)] =
            graph_drawing(graphs, graph_in_pane(state, pane), indoor_shown(state), pane == 0);
    }
    ++graphs.draws;
    graphs.GraphsDisplayed = true;
    graphs.grafsjustloaded = false;
    // What was being read off stays at its place on the axis; another row may stand there now.
    if (graphs.marker) move_over_graph(state, graphs.marker->x);
}

void click_graph(WeatherState& state, int pane) {
    const GraphKind next = graph_in_pane(state, std::max(pane, 1));
    leave_graph(state);
    state.panel.gLabel12.text = graph_title(next, state.units);
    show_graph_labels(state);
    drawgraph(state);
}

void move_over_graph(WeatherState& state, double x) {
    read_graph_row(state, row_at(x, state.graphs.rows.windsamples()));
}

void read_graph_row(WeatherState& state, int row) {
    const int count = state.graphs.rows.windsamples();
    if (count == 0) {
        leave_graph(state);
        return;
    }
    state.graphs.marker = marker_at(state, std::clamp(row, 1, count));
    state.panel.gPicture1[0].tip = state.graphs.marker->text;
}

void leave_graph(WeatherState& state) {
    state.graphs.marker.reset();
    state.panel.gPicture1[0].tip = MainPanel::main_graph_tip;
}

std::string graph_reading(const WeatherState& state, GraphKind kind, int row) {
    std::string text;
    for (const GraphSeries& shown : graph_series(kind, indoor_shown(state))) {
        const float value = state.graphs.rows.gdata(shown.s, row);
        if (!within_limits(state.graphs, shown.s, value)) continue;
        if (!shown.word.empty()) text += std::string(shown.word) + " ";
        text += value_text(state, kind, value) + " ";
    }
    const std::string stamp = state.graphs.rows.gtime(row);
    return text + "at " + (stamp.empty() ? std::string(unknown_time) : stamp);
}

}  // namespace nimbry
