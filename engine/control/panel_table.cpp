#include "engine/control/panel_table.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <vector>

#include "engine/derived/code_page.h"
#include "engine/derived/number_text.h"
#include "engine/displays/box_list.h"

namespace nimbry {

namespace {

/// Texts of the engine in rows and columns.
using Rows = std::vector<std::vector<std::string>>;

// Room for a usual reading from the start, so that the columns stand still while the boxes fill.
constexpr std::size_t kNarrowest = 16;

constexpr std::array<std::array<std::string_view, 2>, 10> kPresent{{
    {"Text2(0)", "Text2(6)"},
    {"Text2(2)", "Text2(7)"},
    {"Text2(1)", "Text2(3)"},
    {"TxtWindChill", "TxtWinDir"},
    {"TxtHeatInd", "TxtWindGLH"},
    {"Text2(8)", "TxtPeakRain"},
    {"Text2(9)", "TxtRainLH"},
    {"Text2(4)", "TxtRainToday"},
    {"TxtBarTrend", "TxtRainYest"},
    {"TxtForecast", "TxtRainTot"},
}};

constexpr std::array<std::array<std::string_view, 3>, 8> kExtremes{{
    {"TxtTempMax", "TxtYTempMax", "TxtOShi"},
    {"TxtTempMin", "TxtYTempMin", "TxtOSLo"},
    {"TxtHumMax", "TxtYHumMax", "TxtOsHumHi"},
    {"TxtHumMin", "TxtYHumMin", "TxtOsHumLo"},
    {"TxtGustMax", "TxtYGustMax", "TxtWindHiG"},
    {"TxtRainMax", "TxtYRainMax", ""},
    {"TxtBarMax", "TxtYBarMax", ""},
    {"TxtBarMin", "TxtYBarMin", ""},
}};

/// "Since 9:00 am" as the caption of a rainfall: "Rainfall since 9:00 am".
std::string rain_caption(std::string period) {
    if (!period.empty()) period[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(period[0])));
    return trimmed("Rainfall " + period);
}

std::string caption_of(const MainPanel& panel, std::string_view name) {
    if (name == "TxtRainToday") return rain_caption(panel.lblRainT.text);
    if (name == "TxtRainYest") return rain_caption(panel.lblRainY.text);
    return std::string(panel_caption(name));
}

std::string text_of(const WeatherState& state, std::string_view name) {
    const Box* box = find_box(state, name);
    return box == nullptr ? std::string() : trimmed(box->text);
}

/// The rows as lines, with two blanks between columns and one at the left.
std::string lines_of(const Rows& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()), kNarrowest);
        for (std::size_t n = 0; n < row.size(); ++n) widths[n] = std::max(widths[n], row[n].size());
    }
    std::string lines;
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t n = 0; n < row.size(); ++n) {
            line += (n == 0 ? " " : "  ") + row[n] + std::string(widths[n] - row[n].size(), ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        lines += utf8_text(line) + '\n';
    }
    return lines;
}

Rows head_rows(const MainPanel& panel) {
    const std::string battery = panel.lblLowBattery.visible ? panel.lblLowBattery.text : "";
    return {{trimmed(panel.TxtTime.text + "  " + panel.TxtDate.text), panel.lblStatus.text, battery}};
}

Rows present_rows(const WeatherState& state) {
    Rows rows;
    for (const auto& names : kPresent) {
        rows.emplace_back();
        for (const std::string_view name : names) {
            rows.back().push_back(caption_of(state.panel, name));
            rows.back().push_back(text_of(state, name));
        }
    }
    return rows;
}

Rows extreme_rows(const WeatherState& state) {
    Rows rows{{"Extreme Conditions", state.panel.lblToday.text, state.panel.lblYesterday.text,
               "Since the last station reset"}};
    for (const auto& names : kExtremes) {
        rows.push_back({caption_of(state.panel, names[0])});
        for (const std::string_view name : names) rows.back().push_back(text_of(state, name));
    }
    return rows;
}

}  // namespace

std::string panel_table(const WeatherState& state) {
    return lines_of(head_rows(state.panel)) + '\n' + lines_of(present_rows(state)) + '\n' +
           lines_of(extreme_rows(state));
}

}  // namespace nimbry
