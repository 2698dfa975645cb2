#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/graphs/graph_drawing.h"

namespace nimbry {

/// How large a font's letters are, in pixels.
struct LetterSize {
    std::function<double(std::string_view)> width;  ///< of a text
    double height = 0;                              ///< of a line
};

/// A place on a pane.
struct PixelPoint {
    double x = 0, y = 0;
    bool operator==(const PixelPoint&) const = default;
};

/// Where a label of an axis is written, in pixels.
struct PlacedLabel {
    double left = 0, middle = 0;  ///< left end, and the height of the line's middle
    double width = 0;
    std::string text;
};

/// Brings a drawing from its twips to a pane of any size: the graph itself takes what the labels leave. So letters keep
/// their own size, none is cut, and of labels that would touch each other only every second, third, ... is written.
class GraphLayout {
public:
    GraphLayout(const GraphDrawing& drawing, double width, double height, const LetterSize& letters);

    [[nodiscard]] double x(double twips) const { return left_ + (twips - plot_.left) * scale_x_; }
    [[nodiscard]] double y(double twips) const { return top_ + (twips - plot_.top) * scale_y_; }
    /// The other way: where in the drawing a pixel lies.
    [[nodiscard]] double twips_of(double pixel) const { return plot_.left + (pixel - left_) / scale_x_; }

    /// A line in pixels. Of the points in one column of pixels only the highest and the lowest are there, in their
    /// order: the others would be painted over, and a day has more minutes than most panes have columns. Nor is a point
    /// there that the line passes within a tenth of a pixel without it: each costs as much to paint as a corner.
    [[nodiscard]] std::vector<PixelPoint> path(const std::vector<TwipPoint>& points) const;
    /// Points in pixels, without those that lie on the one before, within half a pixel.
    [[nodiscard]] std::vector<PixelPoint> spots(const std::vector<TwipPoint>& points) const;

    [[nodiscard]] const std::vector<PlacedLabel>& labels() const { return labels_; }

private:
    [[nodiscard]] PixelPoint pixel(TwipPoint at) const {
        return {x(static_cast<double>(at.x)), y(static_cast<double>(at.y))};
    }
    void place(const GraphDrawing& drawing, GraphLabel::Side side, const LetterSize& letters);

    TwipBox plot_;
    double left_, top_, scale_x_, scale_y_;
    double left_gap_ = 0;
    std::vector<PlacedLabel> labels_;
};

}  // namespace nimbry
