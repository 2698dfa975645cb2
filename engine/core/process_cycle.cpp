#include "engine/core/process_cycle.h"

#include "engine/core/run_time_error.h"

namespace nimbry {

void processcycle(Copy& copy) {
    tagged("process routine", [&] {
        WeatherState& state = copy.state;
        state.run.LoneAllowed = true;
        state.run.fullystarted = true;
        state.comm.gotcomms = false;
        state.comm.dworkingb.clear();
    });
}

}  // namespace nimbry
