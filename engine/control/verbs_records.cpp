#include "engine/control/verbs_records.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "engine/core/run_time_error.h"
#include "engine/derived/code_page.h"
#include "engine/derived/number_text.h"
#include "engine/displays/additional_panel.h"
#include "engine/displays/box_list.h"
#include "engine/records/almanac_file.h"
#include "engine/records/auto_report.h"

namespace nimbry {

namespace {

/// The boxes of one record; yesterday's is empty for what only today has.
struct Pair {
    std::string_view today, yesterday;
};

constexpr std::array kRecords{
    Pair{"TxtTempMax", "TxtYTempMax"},
    Pair{"TxtTempMin", "TxtYTempMin"},
    Pair{"TxtHumMax", "TxtYHumMax"},
    Pair{"TxtHumMin", "TxtYHumMin"},
    Pair{"TxtGustMax", "TxtYGustMax"},
    Pair{"TxtRainMax", "TxtYRainMax"},
    Pair{"TxtBarMax", "TxtYBarMax"},
    Pair{"TxtBarMin", "TxtYBarMin"},
    Pair{"txtMaxDew", "txtYMaxDew"},
    Pair{"txtMinDew", "txtYMinDew"},
    Pair{"txtMinWC", "txtYMinWC"},
    Pair{"txtMaxHI", "txtYMaxHI"},
    Pair{"txtMaxInTemp", "txtYMaxInTemp"},
    Pair{"txtMinInTemp", "txtYMinInTemp"},
    Pair{"TxtRainToday", "TxtRainYest"},
    Pair{"txtDSR", ""},
    Pair{"txtAmtLastRain", ""},
    Pair{"txtRainDays", ""},
    Pair{"txtMnthTotal", ""},
};

std::string_view caption_of(std::string_view box) {
    // The panel's own captions of the two rains are times ("Since 9:00 am").
    if (box == "TxtRainToday") return "Rainfall";
    const std::string_view caption = panel_caption(box);
    return caption.empty() ? additional_caption(box) : caption;
}

std::string text_of(const WeatherState& state, std::string_view name) {
    const Box* box = find_box(state, name);
    return box == nullptr ? std::string() : trimmed(box->text);
}

}  // namespace

VerbStatus extremes_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    if (!arguments.empty()) return VerbStatus::bad_usage;
    std::string lines;
    for (const Pair& record : kRecords) {
        lines += std::string(caption_of(record.today)) + '\t' + text_of(copy.state, record.today) + '\t' +
                 text_of(copy.state, record.yesterday) + '\n';
    }
    asker.print(utf8_text(lines));
    return VerbStatus::done;
}

VerbStatus summary_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    if (!arguments.empty()) return VerbStatus::bad_usage;
    const std::string live(almanac_log);
    std::string almanac;
    if (copy.ports.files.read(live, almanac) != FileResult::ok) {
        asker.complain("No almanac file has been created yet for this month");
        return VerbStatus::failed;
    }
    try {
        std::string text = summarised(copy, live, almanac).text;
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        asker.print(utf8_text(text));
        return VerbStatus::done;
    } catch (const RunTimeError&) {
        asker.complain("The almanac of this month has a damaged row");
        return VerbStatus::failed;
    }
}

}  // namespace nimbry
