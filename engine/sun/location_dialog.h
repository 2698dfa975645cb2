#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/core/copy.h"
#include "engine/displays/dialog_controls.h"
#include "engine/sun/location.h"

namespace nimbry {

/// The values of the location dialog `NimbryLatlong`, under the names of its controls. Numbers are texts as typed,
/// without a sign: the two check boxes choose the hemispheres.
struct LocationDialog {
    bool Check3 = true;   ///< input in decimal degrees; off: in degrees, minutes and seconds
    std::string Text7;    ///< latitude: decimal degrees, or the degrees part
    std::string Text8;    ///< longitude, likewise
    std::string Text3;    ///< minutes of the latitude
    std::string Text4;    ///< seconds of the latitude
    std::string Text5;    ///< minutes of the longitude
    std::string Text6;    ///< seconds of the longitude
    bool Check1 = false;  ///< south
    bool Check2 = true;   ///< east

    bool operator==(const LocationDialog&) const = default;
};

/// The dialog's controls with their values.
[[nodiscard]] std::vector<DialogControl> dialog_controls(LocationDialog& dialog);

/// What explains a text box in the present way of input: "Enter the minutes part of your latitude (0 to 60)". Empty for
/// any other control.
[[nodiscard]] std::string_view location_hint(const LocationDialog& dialog, std::string_view control);

/// The dialog filled with a stored location, in decimal degrees; "0" in both boxes where none has been entered.
[[nodiscard]] LocationDialog location_dialog(std::string_view latitude, std::string_view longitude);

/// The dialog with two coordinates typed into it in decimal degrees, a sign choosing the hemisphere: "-33.8571".
/// Texts that are no numbers stand in it as they are.
[[nodiscard]] LocationDialog typed_location(std::string_view latitude, std::string_view longitude);

/// The same place in the other way of input; seconds to the thousandth, which is finer than what is stored. Texts that
/// are no numbers stay where they are.
void change_way_of_input(LocationDialog& dialog);

/// Why a dialog cannot be accepted, and at which control.
struct LocationRefusal {
    std::string_view control;
    std::string_view message;  ///< "Input must be numeric.", "Input needs to be between 0 and 90." ...
};

/// The texts that an accepted dialog stores: decimal degrees with six decimals, south and west with "-"; zero never has
/// one.
struct LocationTexts {
    std::string latitude, longitude;
};

/// Reads the dialog: latitude first, degrees before minutes before seconds. An empty box counts as 0; 90 degrees with
/// minutes, and 60 minutes or seconds, are taken. The first box that cannot be taken is the refusal, and `texts` is
/// then unchanged.
[[nodiscard]] std::optional<LocationRefusal> read_location(const LocationDialog& dialog, LocationTexts& texts);

/// The accept button: stores `Latitude` and `Longitude` in section `Main` and shows the sun of the place. Nothing is
/// stored when the dialog is refused.
std::optional<LocationRefusal> accept_location(Copy& copy, const LocationDialog& dialog);

/// Takes the location away: both keys become "999".
void forget_location(Copy& copy);

}  // namespace nimbry
