#include "engine/records/load_extremes.h"

#include <optional>

#include "engine/core/exits.h"
#include "engine/core/file_steps.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_store.h"
#include "engine/records/changeover.h"
#include "engine/records/data_log.h"
#include "engine/records/day_files.h"
#include "engine/records/do_changeover.h"
#include "engine/records/extremes_display.h"
#include "engine/records/rain.h"
#include "engine/records/record_step.h"
#include "engine/records/save_extremes.h"

namespace nimbry {
namespace {

using std::chrono::seconds;
constexpr seconds freshness{86380};

std::string contents(Copy& copy, std::string_view name) {
    std::string text;
    require(copy.ports.files.read(std::string(name), text));
    return text;
}

void load_yesterday(Copy& copy) {
    WeatherState& state = copy.state;
    if (!copy.ports.files.exists(std::string(yesterday_file))) {
        show_no_yesterday(state);
        return;
    }
    state.run.YFileOK = false;
    const std::string text = contents(copy, yesterday_file);
    if (*state.readings.dtvar - day_file_stamp(text) >= freshness) {
        show_no_yesterday(state);
        state.log_fields.logdate.clear();
        state.records.YFileBad = true;
        return;
    }
    const YesterdayRecord record = read_yesterday(text);
    state.run.YFileOK = true;
    state.records.day = record.extremes;
    state.rain.raintoday = record.raintoday;
    state.rain.rainatchange = record.rainatchange;
    ResYesterday(state);
}

void start_today_afresh(WeatherState& state) {
    blank_today(state);
    state.additional.txtDSR.text = "0";
    state.additional.txtAmtLastRain.text = "0";
    state.records.day.reset_values();
    state.rain.raintoday = 0;
}

// The stamp of today's file; nothing when there is none, or a stale one.
std::optional<CivilTime> load_today(Copy& copy) {
    WeatherState& state = copy.state;
    state.records.TFileOK = false;
    if (!copy.ports.files.exists(std::string(today_file))) {
        start_today_afresh(state);
        return std::nullopt;
    }
    const std::string text = contents(copy, today_file);
    const CivilTime stamp = day_file_stamp(text);
    if (*state.readings.dtvar - stamp > freshness) {
        start_today_afresh(state);
        return std::nullopt;
    }
    const TodayRecord record = read_today(text);
    state.records.TFileOK = true;
    state.records.day = record.extremes;
    state.records.DaySinceRain = record.DaySinceRain;
    state.records.LastRain = record.LastRain;
    state.rain.raintoday = record.raintoday;
    show_today(state);
    return stamp;
}

void make_up_for_changeover(Copy& copy, CivilTime stamp) {
    WeatherState& state = copy.state;
    const CivilTime now = *state.readings.dtvar;
    const CivilTime change = changeover_instant(state.settings, now);
    state.records.row_date.clear();
    state.records.row_month.clear();
    const bool FileBeforeChange = stamp < change - seconds{10};
    const bool PastChange = now > change + seconds{61};
    if (!FileBeforeChange || !PastChange) return;
    if (state.settings.tmidnight) {
        const DateParts day_before = parts_of(now - std::chrono::hours{24});
        state.records.row_date = numtext(day_before.day);
        state.records.row_month = month_name(day_before.month);
    }
    DoChangeover(copy);
}

[[noreturn]] void leave_for_short_file(Copy& copy) {
    copy.state.run.HaveError = true;
    copy.state.run.ExitWord = "There is a problem with your extremes data file(s)";
    copy.ports.notices.box(
        {.title = "Nimbry",
         .text = "There is a problem with your extremes data file(s) (nimbrTday.log or nimbrYday.log).\r\n"
                 "The file(s) may be corrupt or from an earlier version of Nimbry.\r\n"
                 "The program cannot continue.",
         .icon = "!",
         .choices = Choices::ok});
    menu_exit(copy);
    throw WaitCancelled{};  // nothing of the cycle that asked for the files may go on
}

// Puts a damaged file out of the way, so that it stops one start at most. Its records are lost: the log says why.
void set_aside(Copy& copy, std::string_view name) {
    Files& files = copy.ports.files;
    const std::string damaged(name), aside = damaged.substr(0, damaged.rfind('.')) + ".bad";
    if (files.exists(aside)) files.remove(aside);
    files.rename(damaged, aside);
    copy.log.event_or_nothing(" " + damaged + " is damaged and was put aside as " + aside);
}

// The program leaves for one file: the other, if it is damaged too, must not stop the next start as well.
void set_aside_if_damaged(Copy& copy, std::string_view name) {
    std::string text;
    if (copy.ports.files.read(std::string(name), text) != FileResult::ok) return;
    try {
        if (name == today_file) {
            static_cast<void>(read_today(text));
        } else {
            static_cast<void>(read_yesterday(text));
        }
    } catch (const RunTimeError&) {
        set_aside(copy, name);
    }
}

// The loading of one file. One that ends too early is the only damage that a person is told about in words. True when
// it was put aside.
template <class Load>
bool load_file(Copy& copy, std::string_view name, Load&& load) {
    bool put_aside = false;
    record_step(copy, [&] {
        std::optional<RunTimeError> damage;
        try {
            load();
        } catch (const RunTimeError& error) {
            if (error.number != ErrorNumber::past_end && error.number != ErrorNumber::type_mismatch) throw;
            damage = error;
        }
        if (!damage) return;
        put_aside = true;
        set_aside(copy, name);
        if (name == today_file) {
            start_today_afresh(copy.state);
        } else {
            show_no_yesterday(copy.state);
        }
        if (damage->number != ErrorNumber::past_end) throw *damage;
        for (const std::string_view either : {yesterday_file, today_file}) set_aside_if_damaged(copy, either);
        leave_for_short_file(copy);
    });
    return put_aside;
}

}  // namespace

void resetextremes(Copy& copy, bool units_changed) {
    blank_today(copy.state);
    copy.state.records.day.reset_values();
    copy.state.rain.raintoday = 0;
    loadextremes(copy, units_changed);
    copy.state.records.doingreset = false;
}

void reload_in_new_units(Copy& copy) {
    WeatherState& state = copy.state;
    RecordsState& records = state.records;
    records.unitschanged = false;
    record_step(copy, [&] { SaveExtremes(copy); });
    const TodayRecord today{records.day, state.rain.raintoday, records.DaySinceRain, records.LastRain};
    const float rainatchange = state.rain.rainatchange;
    resetextremes(copy, true);
    records.day = today.extremes;
    records.DaySinceRain = today.DaySinceRain;
    records.LastRain = today.LastRain;
    state.rain.raintoday = today.raintoday;
    state.rain.rainatchange = rainatchange;
    show_today(state);
    show_monthly_rain(state, copy.ports.files);
    show_rain_last_hour(state);
    // The samples of the last hour have gone with the graphs: what the strongest gust was is told with the next one.
    state.panel.TxtWindGLH.text.clear();
    state.panel.TxtWindGLH.balloon.clear();
    state.panel.TxtWindGLH.tip.clear();
}

void loadextremes(Copy& copy, bool units_changed) {
    WeatherState& state = copy.state;
    if (!state.run.fullystarted || state.run.DuplicateError || state.run.HaveError || !state.readings.dtvar) return;
    tagged("ResYesterday", [&] {
        std::optional<CivilTime> stamp;
        if (units_changed) {
            record_step(copy, [&] { log_units_line(copy); });
            record_step(copy, [&] { discard_graphs(copy); });
        }
        const bool lost_yesterday = load_file(copy, yesterday_file, [&] { load_yesterday(copy); });
        const bool lost_today = load_file(copy, today_file, [&] { stamp = load_today(copy); });
        // A file that was put aside is dealt with, and must not keep the row of a missed changeover from being written.
        if (lost_yesterday || lost_today) state.run.DuplicateError = false;
        if (stamp && !units_changed) record_step(copy, [&] { make_up_for_changeover(copy, *stamp); });
        record_step(copy, [&] { loadgrafdata(copy); });
        state.run.DuplicateError = false;
    });
}

}  // namespace nimbry
