#include "engine/displays/conversion_popup.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "engine/core/weather_state.h"
#include "engine/derived/factors.h"
#include "engine/derived/number_text.h"
#include "engine/derived/reading_text.h"
#include "engine/derived/text_lines.h"
#include "engine/displays/box_list.h"

namespace nimbry {
namespace {

using State = WeatherState;

/// A value in one unit: rounded, a blank, the unit.
std::string in_unit(double value, int digits, std::string_view unit) {
    return numtext(Round(value, digits)) + " " + std::string(unit);
}

std::string joined(std::initializer_list<std::string> lines) {
    std::string text;
    for (const std::string& line : lines) {
        if (!text.empty()) text += line_end;
        text += line;
    }
    return text;
}

// --- The lines of each quantity

std::string temperature_lines(double celsius, char sign, std::string_view blanks = " ") {
    Units metric;
    Units imperial;
    imperial.temperature = TemperatureUnit::fahrenheit;
    const auto line = [&](const Units& units, char letter) {
        return temperature_text(celsius, sign, units).number + std::string(blanks) + '\xB0' + letter;
    };
    return joined({line(metric, 'C'), line(imperial, 'F')});
}

/// Of a metric text with its sign, "-04.7". The station can say "-00.0", so the sign is the text's own.
std::string temperature_lines(const std::string& raw, std::string_view blanks = " ") {
    return temperature_lines(Val(raw), raw.starts_with('-') ? '-' : '+', blanks);
}

/// Of a record, a single: widened it would show digits that nobody measured.
std::string temperature_lines(float record) {
    const double celsius = Round(static_cast<double>(record), 1);
    return temperature_lines(celsius, sign_of(celsius));
}

std::string wind_lines(double ms) {
    return joined({in_unit(ms, 1, "m/s"), in_unit(ms * kmh_per_ms, 1, "km/h"), in_unit(ms * mph_per_ms, 1, "MPH"),
                   in_unit(ms * knots_per_ms, 1, "Knots")});
}

std::string barometer_lines(double hpa) {
    return joined({in_unit(hpa, 2, "mB"), in_unit(hpa, 2, "hPa"), in_unit(hpa * inhg_per_hpa, 2, "In.Hg")});
}

std::string rain_lines(double mm) {
    return joined({in_unit(mm, 2, "mm"), in_unit(mm * inches_per_mm, 2, "In")});
}

std::string rain_rate_lines(double mm) {
    return joined({in_unit(mm, 2, "mm/hour"), in_unit(mm * inches_per_mm, 2, "In/hour")});
}

// --- The boxes

struct Reading {
    std::string_view box, name;
    std::string (*lines)(const State&);
};

template <float DayExtremes::*Field>
std::string today_temperature(const State& state) {
    return temperature_lines(state.records.day.*Field);
}
template <float DayExtremes::*Field>
std::string yesterday_temperature(const State& state) {
    return temperature_lines(state.records.yesterday.*Field);
}
template <std::string (*Lines)(double), float DayExtremes::*Field>
std::string of_today(const State& state) {
    return Lines(static_cast<double>(state.records.day.*Field));
}
template <std::string (*Lines)(double), float DayExtremes::*Field>
std::string of_yesterday(const State& state) {
    return Lines(static_cast<double>(state.records.yesterday.*Field));
}

// The only place of this gust is its box; there it has the unit of display.
std::string gust_of_last_hour(const State& state) {
    return wind_lines(Val(state.panel.TxtWindGLH.text) / state.units.wcorr);
}

// A box a line; a box that is not here has nothing to convert.
// clang-format off
using D = DayExtremes;
constexpr std::array readings{
    Reading{"Text2(0)", "Current outside temperature", [](const State& s) { return temperature_lines(s.readings.rawostemp); }},
    Reading{"Text2(1)", "Current dew point", [](const State& s) { return temperature_lines(s.readings.DewInvariant, "  "); }},
    Reading{"Text2(3)", "Current average wind speed", [](const State& s) { return wind_lines(Val(s.readings.rawwindas)); }},
    Reading{"Text2(4)", "Current barometric pressure", [](const State& s) { return barometer_lines(s.readings.BaroValue); }},
    Reading{"Text2(5)", "Current peak rainfall rate", [](const State& s) { return rain_rate_lines(s.readings.RainRateMm); }},
    Reading{"Text2(6)", "Current wind speed", [](const State& s) { return wind_lines(Val(s.readings.rawwindgs)); }},
    Reading{"Text2(8)", "Current indoor temperature", [](const State& s) { return temperature_lines(s.readings.rawintemp); }},
    Reading{"TxtWindChill", "Current wind chill", [](const State& s) { return temperature_lines(s.readings.ChillInvariant); }},
    Reading{"TxtHeatInd", "Current heat index", [](const State& s) { return temperature_lines(s.readings.HeatInvariant); }},
    Reading{"TxtWindGLH", "Maximum wind gust in last hour", gust_of_last_hour},
    Reading{"TxtRainLH", "Rainfall in last hour", [](const State& s) { return rain_lines(static_cast<double>(s.rain.LastHourSum)); }},
    Reading{"TxtRainToday", "Rainfall today", [](const State& s) { return rain_lines(static_cast<double>(s.rain.raintoday)); }},
    Reading{"TxtRainYest", "Rainfall yesterday", [](const State& s) { return rain_lines(static_cast<double>(s.records.rainyesterday.value_or(0))); }},
    Reading{"TxtRainTot", "Total rainfall", [](const State& s) { return rain_lines(Val(s.readings.RainTotalText)); }},
    Reading{"TxtTempMax", "Maximum outside temperature", today_temperature<&D::maxtemp>},
    Reading{"TxtTempMin", "Minimum outside temperature", today_temperature<&D::mintemp>},
    Reading{"TxtYTempMax", "Maximum outside temperature", yesterday_temperature<&D::maxtemp>},
    Reading{"TxtYTempMin", "Minimum outside temperature", yesterday_temperature<&D::mintemp>},
    Reading{"TxtOShi", "Maximum outside temperature", [](const State& s) { return temperature_lines(s.readings.rawoshi); }},
    Reading{"TxtOSLo", "Minimum outside temperature", [](const State& s) { return temperature_lines(s.readings.rawoslo); }},
    Reading{"TxtGustMax", "Maximum wind speed", of_today<wind_lines, &D::maxwind>},
    Reading{"TxtYGustMax", "Maximum wind speed", of_yesterday<wind_lines, &D::maxwind>},
    Reading{"TxtWindHiG", "Maximum wind speed", [](const State& s) { return wind_lines(Val(s.readings.rawwindhi)); }},
    Reading{"TxtRainMax", "Maximum peak rainfall rate", of_today<rain_rate_lines, &D::maxrain>},
    Reading{"TxtYRainMax", "Maximum peak rainfall rate", of_yesterday<rain_rate_lines, &D::maxrain>},
    Reading{"TxtBarMax", "Maximum barometric pressure", of_today<barometer_lines, &D::maxbar>},
    Reading{"TxtBarMin", "Minimum barometric pressure", of_today<barometer_lines, &D::minbar>},
    Reading{"TxtYBarMax", "Maximum barometric pressure", of_yesterday<barometer_lines, &D::maxbar>},
    Reading{"TxtYBarMin", "Minimum barometric pressure", of_yesterday<barometer_lines, &D::minbar>},
};
// clang-format on

constexpr std::string_view calm = "Calm";

/// False for what stands in a box that has no value: "", "Error", "n.a.", "- No Valid Data -", " -- ".
bool is_value(const std::string& text) {
    return !text.empty() && text != "Error" && text != "n.a." && !text.starts_with("- ") && !text.starts_with("--");
}

/// " since January 3", where the station has said when its counter was reset.
std::string since_reset(const State& state) {
    const std::size_t at = state.readings.RainSinceText.find(" since ");
    return at == std::string::npos ? std::string() : state.readings.RainSinceText.substr(at);
}

}  // namespace

std::optional<ConversionPopup> conversion_popup(const WeatherState& state, std::string_view box_name) {
    const auto* reading =
        std::find_if(readings.begin(), readings.end(), [&](const Reading& r) { return r.box == box_name; });
    if (reading == readings.end()) return {};
    const std::string text = trimmed(find_box(state, box_name)->text);
    if (!is_value(text)) return {};

    ConversionPopup popup{std::string(reading->name), text == calm ? wind_lines(0) : reading->lines(state)};
    // Its tip, which the pop-up stands before, has the date of the reset.
    if (box_name == "TxtRainTot") popup.name += since_reset(state);
    return popup;
}

}  // namespace nimbry
