#include "engine/core/process_cycle.h"

#include "engine/alarms/alarms.h"
#include "engine/core/event.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/dates.h"
#include "engine/displays/additional_window.h"
#include "engine/displays/main_window.h"
#include "engine/displays/uptime.h"
#include "engine/graphs/graph_store.h"
#include "engine/network/start_network.h"
#include "engine/network/syncsock.h"
#include "engine/publish/publishing.h"
#include "engine/records/extremes.h"
#include "engine/records/save_extremes.h"
#include "engine/station/sensor_faults.h"

namespace nimbry {

namespace {

constexpr long clock_tolerance_minutes = 30;
constexpr int cycles_between_saves = 30;
constexpr int rounds_between_alarm_mails = 6;
// A train comes every ten seconds, so a count of cycles times ten is about a time in seconds.
constexpr int seconds_a_cycle = 10;
constexpr int upload_stuck_seconds = 320;
constexpr int listener_lost_seconds = 120;

void test_clocks(Copy& copy) {
    const WeatherState& state = copy.state;
    if (!state.run.fullystarted || state.settings.fromnet || !state.readings.dtvar) return;
    const long minutes = minutes_between(*state.readings.dtvar, copy.ports.clock.computer_time());
    if (minutes <= clock_tolerance_minutes && minutes >= -clock_tolerance_minutes) return;
    // Kept on purpose: "are are".
    copy.ports.notices.balloon({.title = "Clock Error",
                                .text =
                                    "Your computer clock and the weather station clock are are more than 30 minutes "
                                    "different. You should adjust which ever one is incorrectly set.",
                                .icon = "!",
                                .anchor = "TxtWindChill"});
}

/// The regular save. While the record is locked (before its first update) the count runs on, and the save comes in the
/// first cycle after that.
void save_every_thirtieth_cycle(Copy& copy) {
    RunState& run = copy.state.run;
    ++run.SaveCounter;
    if (!run.firstrun && run.SaveCounter >= cycles_between_saves) {
        ++run.SaveRounds;
        run.SaveCounter = 0;
        SaveExtremes(copy);
        forget_alarms(copy.state.alarms);
        savegrafdata(copy, "process routine");
    }
    if (run.SaveRounds > rounds_between_alarm_mails) {
        run.SaveRounds = 0;
        copy.state.alarms.AlarmMailSent = false;
    }
}

/// An open setup window keeps the timers of what it sets up from being started.
void start_timers(Copy& copy) {
    if (copy.state.setup.any_open()) return;
    const PublishState& publish = copy.state.publish;
    const Instant now = copy.ports.clock.monotonic();
    if (!copy.state.settings.fromnet) {
        if (publish.NimbryFTPSetup.ChkEnableFTP || publish.NimbryFTPSetup.chkLocal)
            copy.timers.start_if_stopped(TimerId::TimerFTP, now);
        if (publish.NimbryFTPSetup.chkWU || publish.NimbryFTPSetup.chkHW || publish.NimbryFTPSetup.chkAPRS)
            copy.timers.start_if_stopped(TimerId::timWU, now);
    }
    copy.timers.start_if_stopped(TimerId::TimUI, now);
}

/// An upload that has not ended for more than 320 seconds is broken off.
void watch_upload(Copy& copy) {
    const PublishState& publish = copy.state.publish;
    if (!publish.NimbryFTPSetup.ChkEnableFTP && !publish.NimbryFTPSetup.ChkSendMail) return;
    int& cycles = copy.state.run.FtpStuckCount;
    cycles = publish.uloadftpbusy ? cycles + 1 : 0;
    if (cycles * seconds_a_cycle <= upload_stuck_seconds) return;
    cycles = 0;
    cancel_ftp(copy);
    copy.timers.start(TimerId::TimerFTP, copy.ports.clock.monotonic());
}

/// A server's listener that has been closed, or busy with one client, for more than 120 seconds is opened afresh.
void watch_listener(Copy& copy) {
    if (copy.state.settings.fromnet || !copy.state.settings.bcastnet) return;
    int& cycles = copy.state.run.SyncWaitCount;
    cycles = syncstate(copy.state.network) == StreamState::listening ? 0 : cycles + 1;
    if (cycles * seconds_a_cycle <= listener_lost_seconds) return;
    cycles = 0;
    open_sync_listener(copy);
}

/// What needed a first train is switched on, or off for good in a client.
void end_first_cycle(Copy& copy) {
    RunState& run = copy.state.run;
    if (run.fullystarted) return;
    set_menu_for_role(copy.state.menu, copy.state.settings.fromnet, true);
    if (copy.state.settings.Hide) place_window(copy.state, true, copy.state.settings.MinSysTray);
    copy.timers.start(TimerId::TimLog, copy.ports.clock.monotonic());
    run.fullystarted = true;
}

/// Switches the menu on, whatever had it off. Nothing locks the menu itself, but this waits while an upload or a mail
/// is busy: an upload has the row of buttons off until it ends.
void enable_menu(WeatherState& state) {
    if (state.publish.uloadftpbusy || state.publish.emailbusy) return;
    MainMenu& menu = state.menu;
    for (Box* entry : {&menu.mnuExit, &menu.mnuSetup, &menu.mnuLogs, &menu.mnuDisplay, &menu.mnuReports, &menu.mnuHelp,
                       &menu.mnuDisplayLog, &menu.mnuDisplayAlmanac, &menu.mnuProgLog, &menu.mnuClearProgLog,
                       &menu.mnuAlMonth, &menu.mnuAutoReport, &menu.fmb[0], &menu.fmb[5]}) {
        entry->enabled = true;
    }
    enable_additional(state);
}

/// The fault red ends with the cycle that painted it; only a lone wind group's outlasts its event. Where only
/// cold-climate faults are silenced, lasting faults are reported again and again.
void forget_faults(WeatherState& state) {
    clear_fault_colours(state.panel);
    if (!state.settings.ErrorPop && state.settings.CCPop) clear_once_flags(state.sensors);
}

void show_uptime(Copy& copy) {
    const std::optional<CivilTime> started = parse_stamp(copy.ini.GetSetting("Main", "UpTime", ""));
    copy.state.additional.txtRunning.text =
        started ? uptime_text(*started, copy.ports.clock.computer_time()) : std::string();
}

void mail_alarm(Copy& copy) {
    AlarmState& alarms = copy.state.alarms;
    if (copy.state.settings.fromnet || alarms.AlarmMailSent || !alarms.frmAlarms.chkAlarmMail ||
        !alarms.AlarmCondition || copy.state.publish.emailbusy) {
        return;
    }
    alarms.AlarmMailSent = true;
    start_event(copy, "genAlarmMail", [&copy] { send_alarm_mail(copy); });
}

}  // namespace

void processcycle(Copy& copy) {
    tagged("process routine", [&] {
        WeatherState& state = copy.state;
        test_clocks(copy);
        state.run.LoneAllowed = true;
        update_location_text(copy);
        // Data has flowed: from here on the no-data watch waits for silence. In both roles.
        state.comm.Rflagb = true;
        extremes(copy);
        save_every_thirtieth_cycle(copy);
        start_timers(copy);
        watch_upload(copy);
        watch_listener(copy);
        end_first_cycle(copy);
        if (state.network.frmSync.closes_itself) close_sync_window(state.network.frmSync);
        enable_menu(state);
        forget_faults(state);
        state.comm.gotcomms = false;
        state.comm.dworkingb.clear();
        copy.timers.start_if_stopped(TimerId::GrFailTimer, copy.ports.clock.monotonic());
        show_uptime(copy);
        update_caption(state.window, state.panel);
        mail_alarm(copy);
        state.reports.new_data = true;
    });
}

}  // namespace nimbry
