#include "engine/records/data_log.h"

#include <string>
#include <utility>
#include <vector>

#include "engine/core/file_steps.h"
#include "engine/core/run_time_error.h"
#include "engine/core/soft_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/text_lines.h"
#include "engine/publish/local_save.h"
#include "engine/records/archive_names.h"

namespace nimbry {
namespace {

constexpr std::string_view columns =
    "DATE,MONTH,TIME,TEMPERATURE,HUMIDITY,DEWPOINT,WINDCHILL,HEAT INDEX,WIND SPEED,WIND DIRECTION,GUST SPEED,"
    "GUST DIRECTION,BAROMETER,TREND,RAIN RATE,RAIN TOTAL,INDOOR TEMPERATURE,INDOOR HUMIDITY";

std::string data_line(const LogFields& f) {
    std::string line;
    for (const std::string* field : {&f.logdate, &f.logmonth, &f.logtime, &f.logostemp, &f.logoshum, &f.logdew,
                                     &f.logchill, &f.loghind, &f.logwindas, &f.logwindad, &f.logwindgs, &f.logwindgdr,
                                     &f.logbaro, &f.logbtrend, &f.lograinr, &f.lograintot, &f.logintemp, &f.loginhum})
        line.append(line.empty() ? "" : ",").append(*field);
    return line.append(line_end);
}

void append(Copy& copy, const std::string& name, std::string_view bytes) {
    require(copy.ports.files.append(name, bytes));
}

/// The log, and its twin if there is to be one.
std::vector<std::string> logs(const Copy& copy) {
    std::vector<std::string> names{std::string(log_file)};
    if (std::string twin = local_twin(copy.state.publish, log_file); !twin.empty()) names.push_back(std::move(twin));
    return names;
}

void write_entry(Copy& copy, const std::string& name, const std::string& line) {
    const bool is_new = !copy.ports.files.exists(name);
    append(copy, name, is_new ? data_log_head(copy.state.units) + line : line);
}

bool first_of_month(CivilTime time) {
    return parts_of(time).day == 1;
}

// The last entry of a month closes the file; the first entry of a month does, if that was missed.
bool month_is_over(const Copy& copy) {
    const CivilTime now = *copy.state.readings.dtvar;
    const std::string archive = archive_name("log", now - std::chrono::days{2}, now - std::chrono::days{2});
    if (first_of_month(now) && !copy.ports.files.exists(archive)) return true;
    if (first_of_month(now) && copy.ports.files.exists(std::string(log_file))) return false;
    return first_of_month(now + std::chrono::minutes{copy.state.settings.LogMin});
}

// The weather log is not worth the program's end.
template <class Work>
void softly(Copy& copy, std::string_view routine, Work&& work) {
    try {
        work();
    } catch (const RunTimeError& error) {
        log_soft_error(copy, error.number, routine);
        copy.ports.notices.balloon(
            {.title = "Log File Error", .text = soft_error_text(error.number, routine), .icon = "!"});
    }
}

}  // namespace

std::string data_log_units(const Units& units) {
    const std::string& t = units.temperature_text;
    const std::string& w = units.wind_text;
    const std::string& r = units.rain_text;
    return ",,," + t + ",%," + t + "," + t + "," + t + "," + w + ",\xB0," + w + ",\xB0," + units.barometer_text + ",," +
           r + " /hour," + r + "," + t + ",%";
}

std::string data_log_head(const Units& units) {
    return "This is the Nimbry Log\r\n\r\n\r\n" + std::string(columns) + "\r\n\r\n" + data_log_units(units) +
           "\r\n\r\n";
}

void weather_log_minute(Copy& copy) {
    const WeatherState& state = copy.state;
    if (state.settings.fromnet || state.comm.changebusy || state.run.ProgramClosing) return;
    int& minutes = copy.state.records.log_minutes;
    ++minutes;
    if (!state.settings.fwrtlog) minutes = 0;
    if (minutes < state.settings.LogMin) return;
    minutes = 0;
    if (state.settings.fwrtlog) writelog(copy);
}

void end_torn_line(Copy& copy) {
    if (copy.state.settings.fromnet) return;
    for (const std::string& name : logs(copy)) {
        const std::string_view end = missing_line_end(copy.ports.files, name);
        if (!end.empty()) softly(copy, "writelog", [&] { append(copy, name, end); });
    }
}

void writelog(Copy& copy) {
    const WeatherState& state = copy.state;
    const std::string line = data_line(state.log_fields);
    // Each file by itself: a folder on another machine that is out of reach must not cost the program's own line.
    for (const std::string& name : logs(copy)) softly(copy, "writelog", [&] { write_entry(copy, name, line); });
    if (state.readings.dtvar && month_is_over(copy)) softly(copy, "rolllog", [&] { rolllog(copy); });
}

void rolllog(Copy& copy) {
    const std::string main_log(log_file);
    Files& files = copy.ports.files;
    if (!files.exists(main_log)) return;
    // Kept on purpose: month and year come from two clocks with two offsets.
    const std::string archive = archive_name("log", *copy.state.readings.dtvar - std::chrono::days{2},
                                             copy.ports.clock.computer_time() - std::chrono::days{1});
    move_to_archive(files, main_log, archive);
    copy.log.event(" Main log successfully archived and rolled over");
    const std::string twin = local_path(copy.state.publish, log_file);
    if (!twin.empty() && files.exists(twin)) move_to_archive(files, twin, local_path(copy.state.publish, archive));
}

void log_units_line(Copy& copy) {
    const std::string lines =
        std::string(columns) + std::string(line_end) + data_log_units(copy.state.units) + std::string(line_end);
    for (const std::string& name : logs(copy))
        if (copy.ports.files.exists(name)) append(copy, name, lines);
}

}  // namespace nimbry
