#include "engine/records/do_changeover.h"

#include "engine/core/file_steps.h"
#include "engine/core/file_wait.h"
#include "engine/core/run_time_error.h"
#include "engine/publish/local_save.h"
#include "engine/records/almanac.h"
#include "engine/records/auto_report.h"
#include "engine/records/data_log.h"
#include "engine/records/day_files.h"
#include "engine/records/extremes_display.h"
#include "engine/records/rain.h"
#include "engine/records/record_step.h"

namespace nimbry {
namespace {

const std::string batch_file = "nimbryco.bat";

void write_yesterday(Copy& copy, CivilTime now) {
    const WeatherState& state = copy.state;
    const YesterdayRecord finished{state.records.day, state.rain.raintoday, state.rain.rainatchange};
    const std::string name(yesterday_file);
    require(copy.ports.files.rewrite(name, yesterday_text(now - std::chrono::minutes{1}, finished)));
    require(copy.ports.files.sync(name));
}

// A folder on another machine may be out of reach for a moment, so this is tried a second time before it is given up.
void save_log_locally(Copy& copy) {
    const std::string twin = local_twin(copy.state.publish, log_file);
    if (twin.empty()) return;
    for (int tries = 0; tries < 2; ++tries) {
        try {
            wait_until_free(copy, twin);
            copy_to_local(copy, log_file);
            return;
        } catch (const RunTimeError&) {
            const std::string text = "Local save error in changeover routine writing to file: " + std::string(log_file);
            copy.ports.notices.balloon({.title = "Local Save Error", .text = text, .icon = "!"});
            copy.log.event_or_nothing(" " + text);
        }
    }
}

void run_batch(Copy& copy) {
    if (copy.ports.files.exists(batch_file)) copy.ports.desktop.run_batch(copy.ports.files.path(batch_file));
}

}  // namespace

void back_up(Copy& copy, const std::string& name, const std::string& backup) {
    Files& files = copy.ports.files;
    if (!files.exists(name)) return;
    remove_if_there(files, backup);
    wait_until_free(copy, name);
    require(files.copy(name, backup));
}

void DoChangeover(Copy& copy) {
    tagged("DoChangeover", [&] {
        WeatherState& state = copy.state;
        const CivilTime now = *state.readings.dtvar;
        // A stale yesterday's file has emptied it, and the save of the finished day asks for it.
        state.log_fields.logdate = state.readings.rdatday;

        record_step(copy, [&] { back_up(copy, std::string(today_file), "nimbrTDay.bak"); });
        record_step(copy, [&] { back_up(copy, std::string(yesterday_file), "nimbrYDay.bak"); });
        state.rain.rainatchange = rain_counter(state.readings);
        state.records.doingreset = true;
        record_step(copy, [&] { write_yesterday(copy, now); });
        record_step(copy, [&] { almanac(copy); });
        ResYesterday(state);
        blank_today(state);
        state.records.day.reset_values();
        state.rain.raintoday = 0;
        state.records.doingreset = false;
        state.run.DuplicateError = false;
        save_log_locally(copy);
        record_step(copy, [&] { AutoGenreport(copy); });
        record_step(copy, [&] { copy.log.event(" Changeover process completed successfully"); });
        state.records.summary_uploaded = false;
        run_batch(copy);
    });
}

}  // namespace nimbry
