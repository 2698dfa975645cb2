#include "engine/displays/marquee.h"

#include <array>

#include "engine/core/weather_state.h"
#include "engine/records/changeover_word.h"

namespace nimbry {
namespace {

using D = MarqueeDialog;
using S = WeatherState;

constexpr std::string_view section = "Marquee";

template <Box MainPanel::*box>
const std::string& text_of(const S& state) {
    return (state.panel.*box).text;
}

template <std::size_t reading>
const std::string& reading_text(const S& state) {
    return state.panel.Text2[reading].text;
}

template <std::string SunState::*time>
const std::string& sun_time(const S& state) {
    return state.sun.*time;
}

// An item a line.
// clang-format off
constexpr std::array items{
    MarqueeItem{"DisHI", "chkHI", &D::chkHI, "Heat Index", text_of<&MainPanel::TxtHeatInd>},
    MarqueeItem{"DisDew", "chkDew", &D::chkDew, "Dew Point", reading_text<1>},
    MarqueeItem{"DisChill", "chkChill", &D::chkChill, "Wind Chill", text_of<&MainPanel::TxtWindChill>},
    MarqueeItem{"DisRain", "chkRain", &D::chkRain, "Rainfall Since", text_of<&MainPanel::TxtRainToday>},
    MarqueeItem{"DisRainTot", "chkRainTot", &D::chkRainTot, "Total Rainfall", text_of<&MainPanel::TxtRainTot>},
    MarqueeItem{"DisInTemp", "chkInTemp", &D::chkInTemp, "Indoor Temp.", reading_text<8>},
    MarqueeItem{"DisInHum", "chkInHum", &D::chkInHum, "Indoor Humidity", reading_text<9>},
    MarqueeItem{"DisRainLH", "chkRainLH", &D::chkRainLH, "Rainfall in last hour", text_of<&MainPanel::TxtRainLH>},
    MarqueeItem{"DisSunrise", "chkSunrise", &D::chkSunrise, "Sunrise", sun_time<&SunState::numwebsunrise>},
    MarqueeItem{"DisSunset", "chkSunset", &D::chkSunset, "Sunset", sun_time<&SunState::numwebsunset>},
    MarqueeItem{"DisWindGLH", "chkWindGLH", &D::chkWindGLH, "Maximum wind gust in last hour", text_of<&MainPanel::TxtWindGLH>},
};
// clang-format on

}  // namespace

std::span<const MarqueeItem> marquee_items() {
    return items;
}

std::string marquee_label(const MarqueeItem& item, const WeatherState& state) {
    std::string label(item.name);
    if (item.ticked == &D::chkRain) label += changeover_word(state.settings);
    return label;
}

std::vector<DialogControl> dialog_controls(MarqueeDialog& dialog) {
    std::vector<DialogControl> controls;
    controls.reserve(std::size(items));
    for (const MarqueeItem& item : items) controls.push_back({item.check_box, &(dialog.*item.ticked)});
    return controls;
}

MarqueeDialog read_marquee(const clsIniFile& ini) {
    MarqueeDialog dialog;
    for (const MarqueeItem& item : items) dialog.*item.ticked = ini.GetFlag(section, item.key, false);
    return dialog;
}

bool write_marquee(clsIniFile& ini, const MarqueeDialog& dialog) {
    std::vector<clsIniFile::Setting> settings;
    settings.reserve(std::size(items));
    for (const MarqueeItem& item : items)
        settings.push_back({std::string(section), std::string(item.key), flag_text(dialog.*item.ticked)});
    return ini.SaveSettings(settings);
}

}  // namespace nimbry
