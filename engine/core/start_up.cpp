#include "engine/core/start_up.h"

#include "engine/core/initprog.h"
#include "engine/core/run_time_error.h"
#include "engine/core/version_stamp.h"
#include "engine/derived/dates.h"
#include "engine/displays/main_panel.h"
#include "engine/records/data_log.h"
#include "engine/records/extremes_display.h"

namespace nimbry {

namespace {
constexpr Milliseconds splash_time{5000};
}

void program_entry(Copy& copy) {
    if (!copy.ini.read()) {
        copy.ports.notices.balloon(
            {.title = "Nimbry", .text = "Nimbry.ini can not be read.\r\nThe default settings are used.", .icon = "!"});
    }
    stamp_version(copy.ini);
}

void load_main_window(Copy& copy) {
    tagged("Load", [&] {
        reset_main_panel(copy.state);
        copy.log.started();
        const std::string now = stamp_text(copy.ports.clock.computer_time());
        copy.ini.SaveSetting("Main", "UpTime", now);
        copy.ports.datasock.close();
        initprog(copy);
        end_torn_line(copy);
        show_monthly_rain(copy.state, copy.ports.files);
        // The first-run window and the port may have taken a while: the label tells when the load was done.
        copy.state.additional.txtStarted.text = stamp_text(copy.ports.clock.computer_time());
    });
}

void hold_splash(Copy& copy) {
    copy.ports.pauses.pause(splash_time);
    copy.ports.line.take();
    copy.state.comm.splashing = false;
}

}  // namespace nimbry
