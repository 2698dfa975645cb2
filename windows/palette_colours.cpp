#include "windows/palette_colours.h"

#include <algorithm>
#include <cmath>

#include "engine/derived/number_text.h"

namespace nimbry::windows {
namespace {

/// One meaning in the two themes.
struct Pair {
    QRgb light, dark;
    [[nodiscard]] QColor of(bool dark_theme) const { return QColor::fromRgb(dark_theme ? dark : light); }
};

constexpr Pair plain_back{0xFFF3F5F7, 0xFF30353A};
constexpr Pair plain_border{0xFFDDE2E6, 0xFF3E444A};
constexpr Pair reading_tint{0xFFE2F4E4, 0xFF20382A};
constexpr Pair reading_border{0xFFBFDFC4, 0xFF315A40};
constexpr Pair rain_tint{0xFFF1E4F6, 0xFF35273F};
constexpr Pair rain_border{0xFFDAC3E6, 0xFF543D63};
constexpr Pair alarm_pink{0xFFFFB7C8, 0xFF7C1F3D};
constexpr Pair alarm_border{0xFFC2185B, 0xFFFF7FA5};
constexpr Pair value_text{0xFF14191D, 0xFFF0F3F5};
constexpr Pair fault_text{0xFF9B0A1E, 0xFFFFA6A0};

double channel(double value) {
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * channel(colour.redF()) + 0.7152 * channel(colour.greenF()) + 0.0722 * channel(colour.blueF());
}

BoxMark mark_of(const Box& box) {
    if (box.fore == colours::red || trimmed(box.text) == "Error") return BoxMark::fault;
    return box.back == colours::alarm_back ? BoxMark::alarm : BoxMark::none;
}

}  // namespace

QColor exact_colour(Colour colour) {
    return {static_cast<int>(colour & 255U), static_cast<int>((colour >> 8U) & 255U),
            static_cast<int>((colour >> 16U) & 255U)};
}

bool is_dark(const QPalette& palette) {
    return luminance(palette.color(QPalette::WindowText)) > luminance(palette.color(QPalette::Window));
}

BoxColours box_colours(const Box& box, const QPalette& palette, ColourTable table) {
    BoxColours looks;
    looks.mark = mark_of(box);
    looks.bold_border = box.back == colours::alarm_back;
    if (table == ColourTable::as_printed) {
        looks.text = exact_colour(box.fore);
        looks.back = exact_colour(box.back);
        looks.border = looks.back.darker(130);
        return looks;
    }

    const bool dark = is_dark(palette);
    looks.text = (looks.mark == BoxMark::fault ? fault_text : value_text).of(dark);
    switch (box.back) {
        case colours::alarm_back:
            looks.back = alarm_pink.of(dark);
            looks.border = alarm_border.of(dark);
            break;
        case colours::reading_back:
            looks.back = reading_tint.of(dark);
            looks.border = reading_border.of(dark);
            break;
        case colours::rain_back:
            looks.back = rain_tint.of(dark);
            looks.border = rain_border.of(dark);
            break;
        default: looks.back = plain_back.of(dark); looks.border = plain_border.of(dark);
    }
    return looks;
}

QColor status_colour(Colour fore, ColourTable table) {
    if (table == ColourTable::legible) {
        if (fore == colours::green) return QColor::fromRgb(0xFF6FE38A);
        if (fore == colours::salmon) return QColor::fromRgb(0xFFFFA9A0);
        if (fore == colours::blue) return QColor::fromRgb(0xFF93BCFF);
    }
    return exact_colour(fore);
}

QColor muted_text(const QPalette& palette) {
    return QColor::fromRgb(is_dark(palette) ? 0xFFB4BDC5 : 0xFF505B64);
}

QColor panel_back(const QPalette& palette) {
    return QColor::fromRgb(is_dark(palette) ? 0xFF25292D : 0xFFFFFFFF);
}

QColor panel_line(const QPalette& palette) {
    return QColor::fromRgb(is_dark(palette) ? 0xFF3A4046 : 0xFFD5DBE0);
}

double contrast(const QColor& one, const QColor& other) {
    const double a = luminance(one), b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace nimbry::windows
