#pragma once

#include <cstdint>
#include <string>

namespace nimbry {

/// A colour as one number, blue-green-red: red = n & 255, green = (n >> 8) & 255, blue = (n >> 16) & 255.
using Colour = std::uint32_t;

namespace colours {
inline constexpr Colour black = 0x000000;
inline constexpr Colour red = 255;                ///< a faulty reading's text; the lit activity lamp
inline constexpr Colour green = 0x00FF00;         ///< status "Current Conditions"
inline constexpr Colour salmon = 0x8080FF;        ///< status "Program Starting"
inline constexpr Colour blue = 0xFF0000;          ///< status: an error word
inline constexpr Colour reading_back = 0x80FF80;  ///< normal background of a reading that has an alarm
inline constexpr Colour rain_back = 0xFF80FF;     ///< the same of the two rain readings that have one
inline constexpr Colour alarm_back = 0xC0C0FF;    ///< background of a reading in alarm
}  // namespace colours

/// One box, label, picture, button or menu entry of a window: what it shows and how. The windows paint it; tags, graphs
/// and uploads read its text back, so it lives here in both programs. Texts are 8-bit (Windows-1252).
struct Box {
    std::string text;  ///< what it shows (a button's or menu entry's caption)
    Colour fore = colours::black;
    Colour back = 0xFFFFFF;
    std::string tip;      ///< fixed explanation
    std::string balloon;  ///< changing explanation, set with each reading
    bool visible = true;
    bool enabled = true;
    bool checked = false;  ///< check mark of a menu entry

    bool operator==(const Box&) const = default;
};

}  // namespace nimbry
