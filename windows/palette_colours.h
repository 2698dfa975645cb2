#pragma once

#include <QColor>
#include <QPalette>

#include "engine/displays/box.h"

namespace nimbry::windows {

/// How the display model's colour numbers come to the screen.
enum class ColourTable {
    legible,     ///< tints that suit the light or dark palette, with a text contrast of at least 4.5 to 1
    as_printed,  ///< the very numbers of the model
};

/// A mark beside a reading, so that nothing is told by colour alone.
enum class BoxMark { none, fault, alarm };

/// How one box looks.
struct BoxColours {
    QColor text, back, border;
    bool bold_border = false;  ///< a reading in alarm
    BoxMark mark = BoxMark::none;
};

/// A model colour as it stands: red in the low byte, blue in the high one.
///   exact_colour(255) is red   exact_colour(0xFF0000) is blue
[[nodiscard]] QColor exact_colour(Colour colour);

/// True when the palette is a dark one.
[[nodiscard]] bool is_dark(const QPalette& palette);

/// The looks of a box. It bears the fault mark when its text colour is the fault red or its text reads "Error" (the
/// cycle that paints a box red also takes the red away), and the alarm mark while its background is the alarm's.
[[nodiscard]] BoxColours box_colours(const Box& box, const QPalette& palette, ColourTable table);

/// The text colour of the status label, which stands on status_back in both themes.
[[nodiscard]] QColor status_colour(Colour fore, ColourTable table);
inline constexpr QRgb status_back = 0xFF20262C;

/// The text colour of a caption: quieter than a value.
[[nodiscard]] QColor muted_text(const QPalette& palette);

/// The surface of a group of cards, and the line around it.
[[nodiscard]] QColor panel_back(const QPalette& palette);
[[nodiscard]] QColor panel_line(const QPalette& palette);

/// The contrast of two opaque colours: 1 (equal) to 21 (black on white), by relative luminance.
///   contrast(black, white) = 21   contrast(#777777, white) = 4.48
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

}  // namespace nimbry::windows
