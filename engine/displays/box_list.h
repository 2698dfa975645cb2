#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/displays/box.h"

namespace nimbry {

struct WeatherState;

/// What a named box is on its window.
enum class BoxKind {
    reading,  ///< a text box
    label,    ///< a label whose text changes
    picture,
    button,
    menu_entry,  ///< text is the caption
};

/// A box under its control name: "Text2(0)" for an element of a control array, "Form1.mnuHide" for a name that two
/// windows have. `box` lies in the state the list was made from and lives as long.
struct NamedBox {
    std::string_view name;
    BoxKind kind;
    Box* box;
};
struct NamedConstBox {
    std::string_view name;
    BoxKind kind;
    const Box* box;
};

/// Every box of every window, in one fixed order: the main window's readings, its labels, pictures, menu and buttons,
/// then the additional data window's and the big display's. `TxtPeakRain` and "Text2(5)" are two names of one box, and
/// so are the big display's readings and those of the main window.
[[nodiscard]] std::vector<NamedBox> named_boxes(WeatherState& state);
[[nodiscard]] std::vector<NamedConstBox> named_boxes(const WeatherState& state);

/// The box of a name, or nothing. A name that two windows have is the main window's if it comes without a window.
[[nodiscard]] Box* find_box(WeatherState& state, std::string_view name);
[[nodiscard]] const Box* find_box(const WeatherState& state, std::string_view name);

/// The same in a list made before, for whoever asks for many.
[[nodiscard]] const Box* find_box(const std::vector<NamedConstBox>& boxes, std::string_view name);

/// What a box shows, without outer blanks; empty for a name that no box has.
[[nodiscard]] std::string text_of(const std::vector<NamedConstBox>& boxes, std::string_view name);

/// The caption that stands by a box of the main window or of the additional data window (panel_caption(),
/// additional_caption()).
[[nodiscard]] std::string_view caption_of(std::string_view box_name);

/// The name as a widget's objectName: "Text2(0)" is "Text2_0", "Form1.mnuHide" is "mnuHide".
[[nodiscard]] std::string object_name(std::string_view box_name);

}  // namespace nimbry
