#include "engine/station/watchdog.h"

#include "engine/core/run_time_error.h"

namespace nimbry {

void watch_for_silence(Copy& copy) {
    tagged("TimComFail", [&] {
        WeatherState& state = copy.state;
        if (state.settings.fromnet) copy.timers.stop(TimerId::TimComFail);
        if (state.settings.fromnet || state.network.syncing || state.comm.changebusy || state.publish.uloadftpbusy ||
            state.publish.emailbusy) {
            return;
        }
        if (!state.comm.Rflagb || state.comm.ccheckflagb) {
            commfail(copy);
        } else {
            state.comm.ccheckflagb = true;
        }
    });
}

void commfail(Copy& copy) {
    copy.ports.notices.beep();
    copy.ports.notices.balloon({.title = "Comms Error",
                                .text = "No data is being received from the weather station\r\n"
                                        "or the data being received is faulty.",
                                .icon = "!",
                                .anchor = "TxtWindChill"});
    copy.log.event(" Communications error - no data being received");
}

}  // namespace nimbry
