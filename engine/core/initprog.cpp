#include "engine/core/initprog.h"

#include "engine/alarms/alarms.h"
#include "engine/core/run_time_error.h"
#include "engine/core/serial_port.h"
#include "engine/derived/units.h"
#include "engine/displays/big_display.h"
#include "engine/displays/main_menu.h"
#include "engine/displays/main_panel.h"
#include "engine/graphs/graph_store.h"
#include "engine/graphs/graph_view.h"
#include "engine/network/start_network.h"
#include "engine/network/sync_settings.h"
#include "engine/publish/publishing.h"
#include "engine/setup/comms_dialog.h"

namespace nimbry {

namespace {

constexpr std::string_view main_section = "Main";

/// A newcomer sees the setup window before anything else happens; data waits meanwhile.
void first_run(Copy& copy) {
    if (copy.ini.GetFlag(main_section, "HasRun", false)) return;
    if (copy.state.run.has_window) {
        copy.state.settings = read_main_settings(copy.ini);  // what the window begins with
        copy.state.comm.initflag = true;
        ask_in_comms_dialog(copy);
        copy.state.comm.initflag = false;
    }
    copy.ini.SaveFlag(main_section, "HasRun", true);
}

void apply_settings(WeatherState& state) {
    const WindUnit wind_before = state.units.wind;
    state.units = units_from(state.settings);
    if (state.units.wind != wind_before) start_gauge(state.panel, state.units.wind);
    apply_menu_checks(state.menu, state.settings);
    set_menu_for_role(state.menu, state.settings.fromnet, state.run.fullystarted);
    set_changeover_captions(state.panel, state.settings);
}

/// A client never publishes and never watches a line.
void become_client(Copy& copy) {
    close_serial_port(copy);
    copy.state.run.port_device.clear();
    copy.timers.stop(TimerId::TimComFail);
}

}  // namespace

void initprog(Copy& copy) {
    tagged("initprog", [&] {
        copy.state.comm.EventWord.clear();
        copy.state.comm.ErrorWord.clear();
        getalarms(copy);
        getFTP(copy);
        getmarquee(copy);
        first_run(copy);
        copy.state.settings = read_main_settings(copy.ini);
        if (copy.state.settings.fromnet) take_synced_settings(copy);
        apply_settings(copy.state);
        update_location_text(copy);
        show_graph_labels(copy.state);
        loadgrafdata(copy);
        if (copy.state.settings.fromnet) {
            become_client(copy);
        } else {
            open_serial_port(copy);
        }
        startnetwork(copy);
    });
}

}  // namespace nimbry
