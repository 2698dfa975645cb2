#include "engine/graphs/graph_sampling.h"

#include <algorithm>
#include <cmath>

#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_store.h"
#include "engine/graphs/graph_view.h"
#include "engine/records/rain.h"

namespace nimbry {
namespace {

constexpr int fail_ticks = 8;
constexpr int gust_window = 60;  // rows, so minutes
// "Gust 225°", "Avg. 220°": the number begins at the sixth character.
constexpr std::size_t direction_at = 5;

/// What the reading boxes say for one series, before it is held against its limits. `before` is the series' previous
/// sample: a faulty reading repeats it.
float box_value(const WeatherState& state, int s, float before) {
    const auto& boxes = state.panel.Text2;
    const std::string text = trimmed(boxes[static_cast<std::size_t>(s)].text);
    // A calm has no direction, also when the vane is at fault.
    if (s == series::direction && trimmed(boxes[series::gust].text) == "Calm") return 0;
    if (text == "Error") return before;
    if (text == "Calm") return 0;
    if (s == series::gust) return static_cast<float>(state.readings.wstempsng);
    if (s != series::direction) return static_cast<float>(Val(text));

    const double degrees = text.size() > direction_at ? Val(text.substr(direction_at)) : 0;
    return degrees == 0 ? 360.0F : static_cast<float>(degrees);
}

/// One row more in every series, whatever the boxes say: a value that may not be stored gives way to the one before it,
/// so that all series keep in step with the stamps.
void store_sample(WeatherState& state) {
    GraphState& graphs = state.graphs;
    const int last = graphs.rows.windsamples();
    GraphRow sample;
    if (state.readings.dtvar) {
        sample.set_gtime(stamp_text(*state.readings.dtvar));
    } else {
        sample.set_gtime(unknown_time);
    }
    for (int s = 0; s < series::count; ++s) {
        const float before = last == 0 ? 0.0F : graphs.rows.gdata(s, last);
        const float value = box_value(state, s, before);
        sample.set_gdata(s, within_limits(graphs, s, value) ? value : before);
    }
    graphs.webpeakgust = state.readings.wstempsng;
    state.readings.wstempsng = 0;
    graphs.rows.append(sample);
    state.havegrafdata = true;
}

void show_highest_gust(WeatherState& state) {
    const GraphState& graphs = state.graphs;
    const int last = graphs.rows.windsamples();
    // Kept on purpose: from 61 samples on it is 61 minutes.
    float highest = 0;
    for (int r = std::max(1, last - gust_window); r <= last; ++r) {
        const float gust = graphs.rows.gdata(series::gust, r);
        if (within_limits(graphs, series::gust, gust)) highest = std::max(highest, gust);
    }
    Box& box = state.panel.TxtWindGLH;
    box.text = numtext(highest) + " " + (highest == 0 ? std::string() : state.units.wind_text);
    box.tip = "Maximum wind gust in the last hour: " + box.text;
    box.balloon = box.text + "\r\nMaximum wind gust in last hour";
}

}  // namespace

void updategraphs(Copy& copy) {
    const auto busy = copy.state.graphs.GrafBusy.try_hold();
    if (!busy) return;
    tagged("updategraphs", [&] {
        copy.state.graphs.Intensity = 0;
        store_sample(copy.state);
        show_highest_gust(copy.state);
        savegrafdata(copy, "updategraphs");
        midnight_rain_file(copy);
        rain_since_midnight(copy);
        drawgraph(copy.state);
    });
}

void refresh_missing_graphs(Copy& copy) {
    GraphState& graphs = copy.state.graphs;
    if (!copy.state.run.fullystarted || graphs.GraphsDisplayed) return;
    if (++graphs.GrFailCount <= fail_ticks || !graphs.grafsjustloaded) return;
    graphs.GrFailCount = 0;
    updategraphs(copy);
    graphs.grafsjustloaded = false;
}

}  // namespace nimbry
