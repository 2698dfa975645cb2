#pragma once

#include <string>
#include <vector>

#include "engine/displays/box.h"
#include "engine/graphs/graph_kind.h"

namespace nimbry {

struct GraphState;

/// A place in a pane's logical picture, in twips: x to the right, y down. 15 twips are a pixel at 100 %.
struct TwipPoint {
    float x = 0, y = 0;
    bool operator==(const TwipPoint&) const = default;
};

/// Where in the picture the graph itself lies. In a small pane the axes are the lower and the left edge; in the main
/// one the value axis stands 10 twips inside the left edge, and the time axis begins 20 inside it (as both are drawn,
/// kept on purpose).
struct TwipBox {
    float left, top, right, bottom;
};
inline constexpr TwipBox main_plot{480, 385, 6432, 2400};
inline constexpr TwipBox small_plot{300, 150, 1560, 550};

/// The ground of a pane, "#101418", in both themes.
inline constexpr Colour graph_ground = 0x181410;

/// How far the time axis' ticks reach below it.
inline constexpr double tick_length = 40;

/// What a stroke belongs to.
enum class GraphPen { axis, tick, grid, first, second, indoor };

/// The colour of a pen and its dash: lengths of stroke and gap in turn, in pen widths; empty for a solid line.
struct PenLook {
    Colour colour;
    std::vector<double> dash;
};
[[nodiscard]] PenLook look_of(GraphPen pen);
[[nodiscard]] GraphPen pen_of(SeriesLook look);

/// A line through its points, in order.
struct GraphLine {
    GraphPen pen;
    std::vector<TwipPoint> points;
    bool operator==(const GraphLine&) const = default;
};

/// Points that stand by themselves.
struct GraphDots {
    GraphPen pen;
    std::vector<TwipPoint> points;
    bool operator==(const GraphDots&) const = default;
};

/// A text at an axis, in the order of the axis.
struct GraphLabel {
    enum class Side {
        left,  ///< of the value axis, its middle at the height of `at`
        below  ///< the time axis, its middle under `at`
    };
    Side side;
    TwipPoint at;
    std::string text;
    bool operator==(const GraphLabel&) const = default;
};

/// One pane's picture: the axes, then in the main pane ticks and grid, then the series. To be painted in this order,
/// lines before dots.
struct GraphDrawing {
    GraphKind kind = GraphKind::temperature;
    bool main = false;  ///< the large pane, with ticks, grid and labels
    std::vector<GraphLine> lines;
    std::vector<GraphDots> dots;
    std::vector<GraphLabel> labels;
    bool operator==(const GraphDrawing&) const = default;
};

/// Draws one graph from the store, on the axes that level_scales() has set. Series are lines, broken where a value lies
/// outside its limits; a value with none beside it is a dot, and so is every direction (no line crosses north).
[[nodiscard]] GraphDrawing graph_drawing(const GraphState& graphs, GraphKind kind, bool indoor, bool main);

/// Where row r (1 to `count`) lies on the time axis: each row has an equal share of it and stands in its middle.
///   row_x(main_plot, 1, 1440) = 482.07   row_x(main_plot, 720, 1440) = 3453.93   row_x(main_plot, 1, 1) = 3456
[[nodiscard]] double row_x(const TwipBox& plot, int r, int count);

/// The row whose share of the main pane's time axis x lies in, kept within 1 to `count`; 0 for an empty store.
///   row_at(480, 1440) = 1   row_at(484.2, 1440) = 2   row_at(6432, 1440) = 1440
[[nodiscard]] int row_at(double x, int count);

/// The height of a value on an axis from `low` (the plot's lower edge) to `high` (its upper one).
[[nodiscard]] double value_y(const TwipBox& plot, double value, double low, double high);

}  // namespace nimbry
