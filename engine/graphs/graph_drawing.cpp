#include "engine/graphs/graph_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_scales.h"

namespace nimbry {
namespace {

// Of the main pane.
constexpr float value_axis = main_plot.left + 10;
constexpr float time_axis_begin = main_plot.left + 20;
constexpr double minutes_per_hour = 60;

// From the bottom up, each at its own bearing; the lowest is the nil wind, north is 360.
constexpr std::array directions{"00", " ne", " E", " se", " S", " sw", " W", " nw", " N"};

TwipPoint point(double x, double y) {
    return {static_cast<float>(x), static_cast<float>(y)};
}

void add_axes(GraphDrawing& drawing) {
    const TwipBox& plot = drawing.main ? main_plot : small_plot;
    const float time_from = drawing.main ? time_axis_begin : plot.left;
    const float value_at = drawing.main ? value_axis : plot.left;
    drawing.lines.push_back({GraphPen::axis, {{plot.right, plot.bottom}, {time_from, plot.bottom}}});
    drawing.lines.push_back({GraphPen::axis, {{value_at, plot.bottom}, {value_at, plot.top}}});
}

std::string hour_text(const GraphRows& rows, int r) {
    const auto time = r == 0 ? std::nullopt : parse_stamp(rows.gtime(r));
    return time ? padded(parts_of(*time).hour, 2) : std::string(unknown_time);
}

void add_time_ticks(GraphDrawing& drawing, const GraphRows& rows) {
    const double width = main_plot.right - main_plot.left;
    const double hours = std::max(rows.windsamples() / minutes_per_hour, 1.0);
    const double step = Round(width / hours, 0);
    const int last = static_cast<int>(width / step);
    for (int k = 0; k <= last; ++k) {
        const double x = main_plot.left + k * step;
        drawing.lines.push_back(
            {GraphPen::tick, {point(x, main_plot.bottom), point(x, main_plot.bottom + tick_length)}});
        drawing.labels.push_back({GraphLabel::Side::below, point(x, main_plot.bottom + tick_length),
                                  hour_text(rows, row_at(x, rows.windsamples()))});
    }
}

void add_grid(GraphDrawing& drawing, const GraphAxis& axis) {
    for (int k = 0; k <= grid_intervals; ++k) {
        const double value = axis.low + k * (axis.high - axis.low) / grid_intervals;
        const double y = value_y(main_plot, value, axis.low, axis.high);
        drawing.lines.push_back({GraphPen::grid, {point(double{value_axis}, y), point(main_plot.right, y)}});
        const std::string text =
            drawing.kind == GraphKind::direction ? directions[static_cast<std::size_t>(k)] : numtext(Round(value, 3));
        drawing.labels.push_back({GraphLabel::Side::left, point(double{value_axis}, y), text});
    }
}

/// Gathers the points of one series and gives them out in runs without a gap.
class SeriesPlot {
public:
    /// For a series of `count` points, mostly without a gap.
    SeriesPlot(GraphDrawing& drawing, GraphPen pen, int count) : drawing_(drawing), dots_{pen, {}} {
        auto& points = drawing.kind == GraphKind::direction ? dots_.points : run_;
        points.reserve(static_cast<std::size_t>(count));
    }

    void add(TwipPoint at) {
        if (drawing_.kind == GraphKind::direction) {
            dots_.points.push_back(at);
        } else {
            run_.push_back(at);
        }
    }

    void end_run() {
        if (run_.size() == 1) dots_.points.push_back(run_.front());
        if (run_.size() > 1) drawing_.lines.push_back({dots_.pen, std::move(run_)});
        run_.clear();
    }

    void finish() {
        end_run();
        if (!dots_.points.empty()) drawing_.dots.push_back(std::move(dots_));
    }

private:
    GraphDrawing& drawing_;
    GraphDots dots_;
    std::vector<TwipPoint> run_;
};

void add_series(GraphDrawing& drawing, const GraphState& graphs, const GraphSeries& shown) {
    const TwipBox& plot = drawing.main ? main_plot : small_plot;
    const GraphAxis axis = drawn_axis(graphs, shown.s);
    const int count = graphs.rows.windsamples();
    SeriesPlot plotted(drawing, pen_of(shown.look), count);
    for (int r = 1; r <= count; ++r) {
        const float value = graphs.rows.gdata(shown.s, r);
        if (within_limits(graphs, shown.s, value)) {
            plotted.add(point(row_x(plot, r, count), value_y(plot, static_cast<double>(value), axis.low, axis.high)));
        } else {
            plotted.end_run();
        }
    }
    plotted.finish();
}

}  // namespace

PenLook look_of(GraphPen pen) {
    switch (pen) {
        case GraphPen::axis:
        case GraphPen::tick: return {colours::green, {}};
        case GraphPen::grid: return {0x808080, {}};
        case GraphPen::first: return {0xFFFF00, {}};         // cyan
        case GraphPen::second: return {0x00A5FF, {5, 2.5}};  // orange
        case GraphPen::indoor: break;
    }
    return {0x00FFFF, {1, 2}};  // yellow
}

GraphPen pen_of(SeriesLook look) {
    switch (look) {
        case SeriesLook::first: return GraphPen::first;
        case SeriesLook::second: return GraphPen::second;
        case SeriesLook::indoor: break;
    }
    return GraphPen::indoor;
}

GraphDrawing graph_drawing(const GraphState& graphs, GraphKind kind, bool indoor, bool main) {
    GraphDrawing drawing;
    drawing.kind = kind;
    drawing.main = main;
    const auto shown = graph_series(kind, indoor);
    add_axes(drawing);
    if (main) {
        add_time_ticks(drawing, graphs.rows);
        add_grid(drawing, drawn_axis(graphs, shown.front().s));
    }
    for (const GraphSeries& each : shown) add_series(drawing, graphs, each);
    return drawing;
}

double row_x(const TwipBox& plot, int r, int count) {
    return plot.left + (plot.right - plot.left) * (r - 0.5) / count;
}

int row_at(double x, int count) {
    if (count == 0) return 0;
    const double share = (x - main_plot.left) / (main_plot.right - main_plot.left);
    return static_cast<int>(std::clamp(std::floor(share * count) + 1, 1.0, static_cast<double>(count)));
}

double value_y(const TwipBox& plot, double value, double low, double high) {
    return plot.bottom - (plot.bottom - plot.top) * (value - low) / (high - low);
}

}  // namespace nimbry
