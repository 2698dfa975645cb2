#include "engine/sun/location_dialog.h"

#include <array>
#include <charconv>
#include <cmath>

#include "engine/derived/number_text.h"
#include "engine/publish/publishing.h"
#include "engine/sun/location.h"
#include "engine/sun/sun_texts.h"

namespace nimbry {
namespace {

using D = LocationDialog;

/// One of the two coordinates as the dialog has it.
struct Coordinate {
    std::string_view degrees_name, minutes_name, seconds_name;
    std::string D::*degrees;
    std::string D::*minutes;
    std::string D::*seconds;
    bool D::*hemisphere;
    bool negative;  ///< the state of the check box that means "-": south, and not east
    double most;    ///< degrees
    std::string_view out_of_range;
    std::array<std::string_view, 4> hints;  ///< decimal degrees; degrees, minutes, seconds
};

constexpr Coordinate latitude{
    "Text7",
    "Text3",
    "Text4",
    &D::Text7,
    &D::Text3,
    &D::Text4,
    &D::Check1,
    true,
    90,
    "Input needs to be between 0 and 90.",
    {"Enter your latitude in degrees and decimal degrees (DD.ddddd)",
     "Enter the degrees part of your latitude (0 to 90)", "Enter the minutes part of your latitude (0 to 60)",
     "Enter the seconds part of your latitude (0 to 60)"}};
constexpr Coordinate longitude{
    "Text8",
    "Text5",
    "Text6",
    &D::Text8,
    &D::Text5,
    &D::Text6,
    &D::Check2,
    false,
    180,
    "Input needs to be between 0 and 180.",
    {"Enter your longitude in degrees and decimal degrees (DDD.ddddd)",
     "Enter the degrees part of your longitude (0 to 180)", "Enter the minutes part of your longitude (0 to 60)",
     "Enter the seconds part of your longitude (0 to 60)"}};

constexpr std::string_view section = "Main";
constexpr double sixty = 60;

/// The number in a box; nothing when it is no number. An empty box is 0.
std::optional<double> number_in(const std::string& text) {
    if (trimmed(text).empty()) return 0;
    if (!IsNumeric(text)) return {};
    const double number = Val(repcomma(text));
    // Val() makes 0 of what no double holds; in a box that is a number out of every range.
    if (number == 0 && text.find_first_of("123456789") != std::string::npos) return HUGE_VAL;
    return number;
}

/// Rounded half up to the last of `digits` decimals.
double rounded_up(double value, int digits) {
    const double scale = std::pow(10, digits);
    return std::floor(value * scale + 0.5) / scale;
}

/// "33.857100", also where the system writes a comma.
std::string six_decimals(double degrees) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), degrees, std::chars_format::fixed, 6).ptr;
    return {text.data(), static_cast<std::size_t>(end - text.data())};
}

std::optional<LocationRefusal> read_box(const std::string& text, std::string_view name, double most,
                                        std::string_view out_of_range, double& value) {
    const std::optional<double> number = number_in(text);
    if (!number) return LocationRefusal{name, "Input must be numeric."};
    if (*number < 0 || *number > most) return LocationRefusal{name, out_of_range};
    value = *number;
    return {};
}

std::optional<LocationRefusal> read_coordinate(const D& dialog, const Coordinate& which, std::string& stored) {
    constexpr std::string_view not_sixty = "Input needs to be between 0 and 60.";
    double degrees = 0;
    double minutes = 0;
    double seconds = 0;
    if (auto refusal = read_box(dialog.*which.degrees, which.degrees_name, which.most, which.out_of_range, degrees))
        return refusal;
    if (!dialog.Check3) {
        if (auto refusal = read_box(dialog.*which.minutes, which.minutes_name, sixty, not_sixty, minutes))
            return refusal;
        if (auto refusal = read_box(dialog.*which.seconds, which.seconds_name, sixty, not_sixty, seconds))
            return refusal;
    }
    stored = six_decimals(degrees + minutes / 60 + seconds / 3600);
    const bool is_zero = Val(stored) == 0;
    if (dialog.*which.hemisphere == which.negative && !is_zero) stored.insert(0, 1, '-');
    return {};
}

void fill_coordinate(D& dialog, const Coordinate& which, double degrees) {
    dialog.*which.degrees = numtext(rounded_up(std::abs(degrees), 6));
    dialog.*which.hemisphere = (degrees < 0) == which.negative;
}

/// Takes the sign off a coordinate; true when it was a minus.
bool take_sign(std::string& coordinate) {
    coordinate = trimmed(coordinate);
    if (coordinate.empty() || (coordinate.front() != '-' && coordinate.front() != '+')) return false;
    const bool minus = coordinate.front() == '-';
    coordinate.erase(0, 1);
    return minus;
}

void to_decimal(D& dialog, const Coordinate& which) {
    const auto degrees = number_in(dialog.*which.degrees);
    const auto minutes = number_in(dialog.*which.minutes);
    const auto seconds = number_in(dialog.*which.seconds);
    if (!degrees || !minutes || !seconds) return;
    const double all = *degrees + *minutes / 60 + *seconds / 3600;
    if (!std::isfinite(all)) return;
    dialog.*which.degrees = numtext(rounded_up(all, 6));
    (dialog.*which.minutes).clear();
    (dialog.*which.seconds).clear();
}

void to_parts(D& dialog, const Coordinate& which) {
    const auto degrees = number_in(dialog.*which.degrees);
    if (!degrees || !std::isfinite(*degrees)) return;
    // Rounded once, as seconds: a place at 33.85 degrees is at 51 minutes, not at 50 and sixty seconds.
    const double all_seconds = rounded_up(*degrees * 3600, 3);
    const double all_minutes = std::trunc(all_seconds / 60);
    dialog.*which.degrees = numtext(std::trunc(all_minutes / 60));
    dialog.*which.minutes = numtext(std::fmod(all_minutes, 60));
    dialog.*which.seconds = numtext(rounded_up(all_seconds - all_minutes * 60, 3));
}

void store(Copy& copy, const LocationTexts& texts) {
    copy.ini.SaveSettings(
        {{std::string(section), "Latitude", texts.latitude}, {std::string(section), "Longitude", texts.longitude}});
    copy.state.settings.Latitude = texts.latitude;
    copy.state.settings.Longitude = texts.longitude;
    update_location_text(copy);
    refresh_sun_texts(copy);
    show_sun_picture(copy);
}

}  // namespace

std::vector<DialogControl> dialog_controls(LocationDialog& dialog) {
    return {{"Check3", &dialog.Check3}, {"Text7", &dialog.Text7},   {"Text3", &dialog.Text3},
            {"Text4", &dialog.Text4},   {"Check1", &dialog.Check1}, {"Text8", &dialog.Text8},
            {"Text5", &dialog.Text5},   {"Text6", &dialog.Text6},   {"Check2", &dialog.Check2}};
}

std::string_view location_hint(const LocationDialog& dialog, std::string_view control) {
    for (const Coordinate* which : {&latitude, &longitude}) {
        if (control == which->degrees_name) return which->hints[dialog.Check3 ? 0 : 1];
        if (control == which->minutes_name) return which->hints[2];
        if (control == which->seconds_name) return which->hints[3];
    }
    return {};
}

LocationDialog location_dialog(std::string_view latitude_text, std::string_view longitude_text) {
    LocationDialog dialog;
    const Location place = entered_location(latitude_text, longitude_text).value_or(Location{});
    fill_coordinate(dialog, latitude, place.latitude);
    fill_coordinate(dialog, longitude, place.longitude);
    return dialog;
}

LocationDialog typed_location(std::string_view latitude_text, std::string_view longitude_text) {
    LocationDialog dialog;
    dialog.Text7 = latitude_text;
    dialog.Text8 = longitude_text;
    dialog.Check1 = take_sign(dialog.Text7);
    dialog.Check2 = !take_sign(dialog.Text8);
    return dialog;
}

void change_way_of_input(LocationDialog& dialog) {
    dialog.Check3 = !dialog.Check3;
    for (const Coordinate* which : {&latitude, &longitude}) {
        if (dialog.Check3) {
            to_decimal(dialog, *which);
        } else {
            to_parts(dialog, *which);
        }
    }
}

std::optional<LocationRefusal> read_location(const LocationDialog& dialog, LocationTexts& texts) {
    LocationTexts read;
    if (auto refusal = read_coordinate(dialog, latitude, read.latitude)) return refusal;
    if (auto refusal = read_coordinate(dialog, longitude, read.longitude)) return refusal;
    texts = read;
    return {};
}

std::optional<LocationRefusal> accept_location(Copy& copy, const LocationDialog& dialog) {
    LocationTexts texts;
    if (auto refusal = read_location(dialog, texts)) return refusal;
    store(copy, texts);
    return {};
}

void forget_location(Copy& copy) {
    const std::string none = numtext(no_location);
    store(copy, {none, none});
}

}  // namespace nimbry
