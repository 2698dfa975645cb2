#include "engine/records/viewers.h"

#include "engine/core/file_steps.h"
#include "engine/core/run_time_error.h"
#include "engine/core/switches.h"
#include "engine/derived/number_text.h"
#include "engine/records/almanac_file.h"
#include "engine/records/archive_names.h"
#include "engine/records/auto_report.h"
#include "engine/records/data_log.h"

namespace nimbry {
namespace {

using Shown = std::optional<std::string>;

constexpr std::string_view log_copy = "logtemp.csv";
constexpr std::string_view no_almanac = "No almanac file has been created yet for this month";

void click(Copy& copy) {
    copy.ports.sounds.play(std::string(click_sound));
}

Shown refuse(Copy& copy, std::string_view title, std::string_view text) {
    copy.ports.notices.balloon({.title = std::string(title), .text = std::string(text), .icon = "!"});
    return std::nullopt;
}

// A disk that refuses the copy costs the look at it, not the program.
Shown show_copy(Copy& copy, std::string_view live, std::string_view shown, std::string_view title) {
    try {
        copy_over(copy.ports.files, std::string(live), std::string(shown));
        return std::string(shown);
    } catch (const RunTimeError& error) {
        return refuse(copy, title, description(error.number));
    }
}

// Judged by the archive's date; units_dialog.cpp judges by its age, and looks into both folders.
bool archived_today(const Copy& copy) {
    if (!copy.state.readings.dtvar) return false;
    const CivilTime month = *copy.state.readings.dtvar - std::chrono::days{2};
    const std::optional<CivilTime> written = copy.ports.files.modified(archive_name("al", month, month));
    const auto date = [](CivilTime time) { return std::chrono::floor<std::chrono::days>(time); };
    return written && date(*written) == date(copy.ports.clock.computer_time());
}

std::string_view first_line(std::string_view text) {
    return text.substr(0, text.find_first_of("\r\n"));
}

Shown summary_of(Copy& copy, const std::string& AFname) {
    std::string text;
    if (copy.ports.files.read(AFname, text) != FileResult::ok)
        return refuse(copy, "Almanac Error", "The selected file is not valid.");
    if (first_line(text).find("Nimbry") == std::string_view::npos) {
        copy.ports.notices.beep();
        return refuse(copy, "Almanac Error", "The selected file is not a valid almanac file");
    }
    alanalyse(copy, AFname);
    return std::string(summary_file);
}

}  // namespace

Shown mnuDisplayAlmanac(Copy& copy) {
    constexpr std::string_view title = "Almanac File Error";
    click(copy);
    if (copy.ports.files.exists(std::string(almanac_log))) return show_copy(copy, almanac_log, almanac_copy, title);
    return refuse(
        copy, title,
        archived_today(copy) ? std::string_view("No almanac exists yet as it has been archived") : no_almanac);
}

Shown mnuDisplayLog(Copy& copy) {
    constexpr std::string_view title = "Log File Error";
    click(copy);
    if (copy.ports.files.exists(std::string(log_file))) return show_copy(copy, log_file, log_copy, title);
    return refuse(copy, title, "No log file has been created yet");
}

Shown mnuAlMonth(Copy& copy, const std::string& AFname) {
    return summary_of(copy, AFname);
}

Shown mnuAutoReport(Copy& copy) {
    const std::string live(almanac_log);
    click(copy);
    if (!copy.ports.files.exists(live)) return refuse(copy, "Almanac Error", no_almanac);
    return summary_of(copy, live);
}

}  // namespace nimbry
