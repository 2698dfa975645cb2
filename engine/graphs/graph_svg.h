#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/core/copy.h"

namespace nimbry {

/// The size of a picture, pixels.
struct PictureSize {
    int width = 880, height = 360;
};
inline constexpr PictureSize least_picture{160, 100}, greatest_picture{10000, 10000};
/// Of the pictures beside the pages: so small that a page, which shows two of them in a row and one on a telephone,
/// need not shrink their letters much.
inline constexpr PictureSize page_picture{480, 270};

/// The size that a text names, "880x360"; nothing for any other text, and for a size outside the two above.
[[nodiscard]] std::optional<PictureSize> picture_size(std::string_view text);

/// One graph as a picture of its own in UTF-8: title and legend, and below them what the main pane would show. In a
/// narrow picture the legend stands below the title, and in one that is narrower still it is left out. Levels the
/// scales, and works with drawing switched off too.
[[nodiscard]] std::string graph_svg(WeatherState& state, GraphKind kind, PictureSize size = {});

/// With `Main`/`GraphFiles` "True": writes all six graphs beside the pages, `graph1.svg` (temperature) to `graph6.svg`
/// (direction), each replaced as a whole. One that cannot be written is a line in the program log under `caller`, and
/// the rest are written. To be called at the end of each generation of pages.
void write_graph_files(Copy& copy, std::string_view caller);

}  // namespace nimbry
