#include "engine/reports/small_files.h"

#include "engine/core/file_wait.h"
#include "engine/reports/genuiview.h"
#include "engine/reports/wxtext.h"

namespace nimbry {

void write_small_files(Copy& copy) {
    const WeatherState& state = copy.state;
    if (!state.run.fullystarted || state.network.syncing) return;
    wait_for(copy, "genuibusy", [&] { return !state.reports.genuibusy; });
    genuiview(copy);
    wxtext(copy);
}

}  // namespace nimbry
