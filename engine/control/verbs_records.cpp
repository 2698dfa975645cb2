#include "engine/control/verbs_records.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "engine/core/run_time_error.h"
#include "engine/derived/code_page.h"
#include "engine/displays/box_list.h"
#include "engine/records/almanac_file.h"
#include "engine/records/auto_report.h"

namespace nimbry {

namespace {

/// The boxes of one record; yesterday's is empty for what only today has.
struct Pair {
    std::string_view today, yesterday;
};

constexpr std::array record_boxes{
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

std::string record_caption(std::string_view box) {
    // The panel's own captions of the two rains are times ("Since 9:00 am").
    return std::string(box == "TxtRainToday" ? "Rainfall" : caption_of(box));
}

}  // namespace

VerbStatus extremes_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    if (!arguments.empty()) return VerbStatus::bad_usage;
    std::string lines;
    const auto boxes = named_boxes(std::as_const(copy.state));
    for (const Pair& record : record_boxes) {
        lines += record_caption(record.today) + '\t' + text_of(boxes, record.today) + '\t' +
                 text_of(boxes, record.yesterday) + '\n';
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
