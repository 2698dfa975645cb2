#pragma once

#include <string>
#include <string_view>

namespace nimbry::terminal {

/// Draws an SVG and writes it to a file as a PNG of the SVG's own size. False when it cannot be drawn or written, and
/// in a build without the window program, which has no SVG to draw with.
[[nodiscard]] bool write_png(std::string_view svg, const std::string& file);

}  // namespace nimbry::terminal
