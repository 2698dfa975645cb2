#include "engine/core/timer_ticks.h"

#include "engine/alarms/alarms.h"
#include "engine/displays/big_display.h"
#include "engine/displays/status_message.h"
#include "engine/graphs/graph_sampling.h"
#include "engine/publish/publishing.h"
#include "engine/records/data_log.h"
#include "engine/reports/small_files.h"
#include "engine/station/status_label.h"
#include "engine/station/watchdog.h"

namespace nimbry {

void timer_tick(Copy& copy, TimerId id) {
    switch (id) {
        case TimerId::TimComFail: watch_for_silence(copy); break;
        case TimerId::Timer2:
            copy.timers.stop(id);
            end_lamp_flash(copy.state);
            break;
        case TimerId::TimAlarm: end_alarm(copy); break;
        case TimerId::TimDisplay:
            copy.timers.stop(id);
            close_status_message(copy);
            break;
        case TimerId::TimerFTP: ftp_schedule(copy); break;
        case TimerId::TimUI: write_small_files(copy); break;
        case TimerId::GrFailTimer: refresh_missing_graphs(copy); break;
        case TimerId::timWU: weather_services(copy); break;
        case TimerId::TimLog: weather_log_minute(copy); break;
        case TimerId::TimFTPTOT: ftp_time_out(copy); break;
        case TimerId::Timer1: turn_marquee(copy.state); break;
    }
}

}  // namespace nimbry
