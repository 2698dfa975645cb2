#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nimbry {

struct WeatherState;

/// What hovering over a reading tells of it (`Nimbryconv`): its name, and its value in every unit that there is.
struct ConversionPopup {
    std::string name;   ///< `Label1`, "Current outside temperature"
    std::string lines;  ///< `Label2`, a unit a line, joined by CR LF: "+12.6 °C", "+54.7 °F"

    bool operator==(const ConversionPopup&) const = default;
};

/// The pop-up of a box of the main window, whether or not `mnuCpop` is checked. It is made from the metric value,
/// whatever the units of display:
///   temperature  °C, °F            one decimal, signed; the dew point with two blanks before the degree sign
///   wind         m/s, km/h, MPH, Knots   one decimal; "Calm" is 0
///   barometer    mB, hPa, In.Hg    two decimals
///   rain         mm, In            two decimals; a rate "/hour"
/// The unit names are those of the pop-up: the displays write some of them otherwise ("m/S", "KT", "In.").
///
/// Nothing for a box that has nothing to convert (humidities, directions, times) or an unknown one, and nothing while
/// the box shows no value: empty, "Error", "n.a.", "- No Valid Data -" and the like.
[[nodiscard]] std::optional<ConversionPopup> conversion_popup(const WeatherState& state, std::string_view box_name);

}  // namespace nimbry
