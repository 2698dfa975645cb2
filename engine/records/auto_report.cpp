#include "engine/records/auto_report.h"

#include "engine/core/file_steps.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/records/almanac.h"
#include "engine/records/archive_names.h"
#include "engine/records/monthly_summary.h"

namespace nimbry {
namespace {

using std::chrono::days;

const std::string working_copy(almanac_copy);
const std::string template_file = "nimbrysummarytemplate.html";
const std::string work_page = "TempSummary.html";
const std::string finished_page = "nimbrysummary.html";

// The year of a live almanac is the station's, of an archive the two digits of its name.
int year_of(const Copy& copy, const std::string& name, bool live) {
    const int computer_year = parts_of(copy.ports.clock.computer_time()).year;
    if (live) return copy.state.readings.dtvar ? parts_of(*copy.state.readings.dtvar).year : computer_year;
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos || dot < 2) return computer_year;
    const std::string digits = name.substr(dot - 2, 2);
    if (digits.find_first_not_of("0123456789") != std::string::npos) return computer_year;
    return 2000 + whole_number(digits);
}

std::string through_working_copy(Files& files, const std::string& name) {
    std::string text;
    if (files.path(name) != files.path(working_copy)) copy_over(files, name, working_copy);
    require(files.read(working_copy, text));
    return text;
}

// Lines keep their ends as the template has them.
std::string filled(std::string_view page, const MonthlySummary& summary) {
    std::string result;
    while (!page.empty()) {
        const std::size_t end = std::min(page.find('\n'), page.size() - 1) + 1;
        result += Sumresolvtag(page.substr(0, end), summary);
        page.remove_prefix(end);
    }
    return result;
}

// True when there is a template to make a page of.
bool make_page(Files& files, const MonthlySummary& summary) {
    if (!files.exists(template_file)) return false;
    std::string page;
    require(files.read(template_file, page));
    remove_if_there(files, work_page);
    remove_if_there(files, finished_page);
    require(files.append(work_page, filled(page, summary)));
    require(files.rename(work_page, finished_page));
    return true;
}

}  // namespace

MonthlySummary summarised(const Copy& copy, const std::string& AFname, std::string_view text) {
    const WeatherState& state = copy.state;
    const bool live = AFname == almanac_log;
    return monthly_summary(read_almanac(text, selected_day_end(state.settings)), state.units,
                           {.live = live,
                            .year = year_of(copy, AFname, live),
                            .DaySinceRain = state.records.DaySinceRain,
                            .LastRain = state.records.LastRain});
}

void alanalyse(Copy& copy, const std::string& AFname) {
    tagged("alanalyse", [&] {
        Files& files = copy.ports.files;
        const MonthlySummary summary = summarised(copy, AFname, through_working_copy(files, AFname));
        require(files.rewrite(std::string(summary_file), summary.text));
        if (make_page(files, summary)) copy.state.records.summary_uploaded = false;
    });
}

void AutoGenreport(Copy& copy) {
    if (!copy.state.readings.dtvar) return;
    const std::string live(almanac_log);
    const CivilTime month = *copy.state.readings.dtvar - days{2};
    const std::string archive = archive_name("al", month, month);
    if (copy.ports.files.exists(live)) {
        alanalyse(copy, live);
    } else if (copy.ports.files.exists(archive)) {
        alanalyse(copy, archive);
    }
}

}  // namespace nimbry
