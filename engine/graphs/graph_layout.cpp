#include "engine/graphs/graph_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace nimbry {
namespace {

constexpr double gap = 4;       // between a label and its axis, and between two labels
constexpr double rim = 6;       // around a pane without labels
constexpr double shortest = 8;  // of an axis, in a pane that is too small for its labels

// Steps that fall on the same hours or values however far they are apart: parts of a day, and of eight intervals.
constexpr std::array hour_steps{1, 2, 3, 4, 6, 8, 12, 24};
constexpr std::array value_steps{1, 2, 4, 8};

double widest(const GraphDrawing& drawing, GraphLabel::Side side, const LetterSize& letters) {
    double width = 0;
    for (const GraphLabel& label : drawing.labels)
        if (label.side == side) width = std::max(width, letters.width(label.text));
    return width;
}

bool touch(const PlacedLabel& one, const PlacedLabel& other, GraphLabel::Side side, double height) {
    if (side == GraphLabel::Side::left) return std::abs(one.middle - other.middle) < height;
    return other.left < one.left + one.width + gap;
}

/// True when none of every `step`-th label touches the next.
bool have_room(const std::vector<PlacedLabel>& all, int step, GraphLabel::Side side, double height) {
    const auto stride = static_cast<std::size_t>(step);
    for (std::size_t n = stride; n < all.size(); n += stride)
        if (touch(all[n - stride], all[n], side, height)) return false;
    return true;
}

template <class Steps>
int smallest_step(const Steps& steps, const std::vector<PlacedLabel>& all, GraphLabel::Side side, double height) {
    const auto fits =
        std::find_if(steps.begin(), steps.end(), [&](int step) { return have_room(all, step, side, height); });
    return fits == steps.end() ? static_cast<int>(std::max<std::size_t>(all.size(), 1)) : *fits;
}

/// Leaves out the points of a line to the right that lie where it would pass without them, as far as anybody can see.
std::vector<PixelPoint> without_straight_ones(const std::vector<PixelPoint>& points) {
    constexpr double unseen = 0.1;  // pixels up or down
    constexpr double any = std::numeric_limits<double>::infinity();
    if (points.size() < 3) return points;
    std::vector<PixelPoint> kept{points.front()};
    // Of a point in the same place it is infinite or none, which keeps the point or asks for nothing.
    const auto slope_to = [&kept](PixelPoint at, double off) {
        return (at.y + off - kept.back().y) / (at.x - kept.back().x);
    };
    // The slopes of those lines from the last kept point that pass all points behind it.
    double least = -any, most = any;
    for (std::size_t n = 1; n + 1 < points.size(); ++n) {
        least = std::max(least, slope_to(points[n], -unseen));
        most = std::min(most, slope_to(points[n], unseen));
        const double next = slope_to(points[n + 1], 0);
        if (next >= least && next <= most) continue;
        kept.push_back(points[n]);
        least = -any;
        most = any;
    }
    kept.push_back(points.back());
    return kept;
}

}  // namespace

GraphLayout::GraphLayout(const GraphDrawing& drawing, double width, double height, const LetterSize& letters)
    : plot_(drawing.main ? main_plot : small_plot) {
    double right = width - rim, bottom = height - rim;
    left_ = top_ = rim;
    if (drawing.main) {
        const double hour = widest(drawing, GraphLabel::Side::below, letters);
        // The first hour hangs over the corner by half its width: the lowest value keeps clear of it.
        left_gap_ = std::max(gap, hour / 2 + 1);
        left_ = widest(drawing, GraphLabel::Side::left, letters) + left_gap_ + gap;
        top_ = letters.height / 2 + 1;
        right = width - hour / 2 - gap;
        bottom = height - letters.height - gap;
    }
    const double below = drawing.main ? tick_length : 0;
    scale_x_ = std::max(right - left_, shortest) / static_cast<double>(plot_.right - plot_.left);
    scale_y_ = std::max(bottom - top_, shortest) / (static_cast<double>(plot_.bottom - plot_.top) + below);
    place(drawing, GraphLabel::Side::left, letters);
    place(drawing, GraphLabel::Side::below, letters);
}

std::vector<PixelPoint> GraphLayout::path(const std::vector<TwipPoint>& points) const {
    std::vector<PixelPoint> kept;
    kept.reserve(points.size());
    for (std::size_t n = 0; n < points.size();) {
        const double column = std::floor(pixel(points[n]).x);
        std::size_t highest = n, lowest = n;
        for (; n < points.size() && std::floor(pixel(points[n]).x) == column; ++n) {
            if (points[n].y < points[highest].y) highest = n;
            if (points[n].y > points[lowest].y) lowest = n;
        }
        kept.push_back(pixel(points[std::min(highest, lowest)]));
        if (highest != lowest) kept.push_back(pixel(points[std::max(highest, lowest)]));
    }
    return without_straight_ones(kept);
}

std::vector<PixelPoint> GraphLayout::spots(const std::vector<TwipPoint>& points) const {
    constexpr double same = 0.5;
    std::vector<PixelPoint> kept;
    for (const TwipPoint at : points) {
        const PixelPoint spot = pixel(at);
        if (kept.empty() || std::abs(spot.x - kept.back().x) > same || std::abs(spot.y - kept.back().y) > same)
            kept.push_back(spot);
    }
    return kept;
}

void GraphLayout::place(const GraphDrawing& drawing, GraphLabel::Side side, const LetterSize& letters) {
    std::vector<PlacedLabel> all;
    for (const GraphLabel& label : drawing.labels) {
        if (label.side != side) continue;
        const double width = letters.width(label.text);
        const double at_x = x(static_cast<double>(label.at.x)), at_y = y(static_cast<double>(label.at.y));
        if (side == GraphLabel::Side::left) {
            all.push_back({left_ - left_gap_ - width, at_y, width, label.text});
        } else {
            all.push_back({at_x - width / 2, at_y + letters.height / 2 + 1, width, label.text});
        }
    }
    const int step = side == GraphLabel::Side::left ? smallest_step(value_steps, all, side, letters.height)
                                                    : smallest_step(hour_steps, all, side, letters.height);
    for (std::size_t n = 0; n < all.size(); n += static_cast<std::size_t>(step)) labels_.push_back(all[n]);
}

}  // namespace nimbry
