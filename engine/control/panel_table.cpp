#include "engine/control/panel_table.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <vector>

#include "engine/alarms/alarms.h"
#include "engine/derived/code_page.h"
#include "engine/derived/number_text.h"
#include "engine/displays/box_list.h"

namespace nimbry {

namespace {

/// Texts of the engine in rows and columns.
using Rows = std::vector<std::vector<std::string>>;

// Room for a usual reading from the start, so that the columns stand still while the boxes fill.
std::size_t least_width(PanelLayout layout) {
    return layout == PanelLayout::wide ? 16 : 13;
}

constexpr std::array<std::array<std::string_view, 2>, 10> present_boxes{{
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

constexpr std::array<std::array<std::string_view, 3>, 8> extreme_boxes{{
    {"TxtTempMax", "TxtYTempMax", "TxtOShi"},
    {"TxtTempMin", "TxtYTempMin", "TxtOSLo"},
    {"TxtHumMax", "TxtYHumMax", "TxtOsHumHi"},
    {"TxtHumMin", "TxtYHumMin", "TxtOsHumLo"},
    {"TxtGustMax", "TxtYGustMax", "TxtWindHiG"},
    {"TxtRainMax", "TxtYRainMax", ""},
    {"TxtBarMax", "TxtYBarMax", ""},
    {"TxtBarMin", "TxtYBarMin", ""},
}};

/// "Since 9:00 am" as the caption of a rainfall: "Rainfall since 9:00 am"; in the narrow layout "24 Hours prior to 9:00
/// am" is "Rain 24 Hours to 9:00 am".
std::string rain_caption(PanelLayout layout, std::string period) {
    if (!period.empty()) period[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(period[0])));
    if (layout == PanelLayout::wide) return trimmed("Rainfall " + period);
    static constexpr std::string_view prior = "prior ";
    if (const auto at = period.find(prior); at != std::string::npos) period.erase(at, prior.size());
    return trimmed("Rain " + period);
}

std::string caption_in_layout(const MainPanel& panel, PanelLayout layout, std::string_view name) {
    if (name == "TxtRainToday") return rain_caption(layout, panel.lblRainT.text);
    if (name == "TxtRainYest") return rain_caption(layout, panel.lblRainY.text);
    if (name == "TxtWindGLH" && layout == PanelLayout::narrow) return "Max. gust in the last hour";
    return std::string(panel_caption(name));
}

using Boxes = std::vector<NamedConstBox>;

constexpr std::string_view alarm_mark = "(!)";

std::string reading_text(const Boxes& boxes, std::string_view name, const Units& units) {
    const Box* const box = find_box(boxes, name);
    std::string text = text_of(boxes, name);
    // An hour without wind has the bare number in its box; between readings with units it looks like a fault.
    if (name == "TxtWindGLH" && text == "0") text += " " + units.wind_text;
    if (box != nullptr && in_alarm(*box)) text.append(" ").append(alarm_mark);
    return text;
}

/// The rows as lines, with two blanks between columns and one at the left.
std::string lines_of(const Rows& rows, PanelLayout layout) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()), least_width(layout));
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

/// What is wrong with the serial port, else what the mark of an alarm says, else an empty line.
std::string trouble_line(const WeatherState& state) {
    const std::string& trouble = state.comm.PortTrouble;
    if (!trouble.empty()) return " " + utf8_text(trouble) + "\n";
    return readings_in_alarm(state.panel).empty() ? "\n" : " " + std::string(alarm_mark) + " in alarm\n";
}

Rows present_rows(const WeatherState& state, const Boxes& boxes, PanelLayout layout) {
    Rows rows;
    for (const auto& names : present_boxes) {
        rows.emplace_back();
        for (const std::string_view name : names) {
            rows.back().push_back(caption_in_layout(state.panel, layout, name));
            rows.back().push_back(reading_text(boxes, name, state.units));
        }
    }
    return rows;
}

/// The columns of extreme_boxes from `first` to `last` with a row for each that has a text there.
Rows extreme_rows(const MainPanel& panel, const Boxes& boxes, std::size_t first, std::size_t last) {
    const std::array<std::string, 3> heads{panel.lblToday.text, panel.lblYesterday.text,
                                           "Since the last station reset"};
    Rows rows{{"Extreme Conditions"}};
    for (std::size_t n = first; n <= last; ++n) rows.back().push_back(heads[n]);
    for (const auto& names : extreme_boxes) {
        if (names[first].empty()) continue;
        rows.push_back({std::string(panel_caption(names[0]))});
        for (std::size_t n = first; n <= last; ++n) rows.back().push_back(text_of(boxes, names[n]));
    }
    return rows;
}

std::string extremes_table(const MainPanel& panel, const Boxes& boxes, PanelLayout layout) {
    if (layout == PanelLayout::wide) return lines_of(extreme_rows(panel, boxes, 0, 2), layout);
    return lines_of(extreme_rows(panel, boxes, 0, 1), layout) + '\n' +
           lines_of(extreme_rows(panel, boxes, 2, 2), layout);
}

}  // namespace

std::string panel_table(const WeatherState& state, PanelLayout layout) {
    const Boxes boxes = named_boxes(state);
    return lines_of(head_rows(state.panel), layout) + trouble_line(state) +
           lines_of(present_rows(state, boxes, layout), layout) + '\n' + extremes_table(state.panel, boxes, layout);
}

}  // namespace nimbry
