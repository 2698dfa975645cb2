#include "engine/station/status_label.h"

namespace nimbry {

void show_working_status(WeatherState& state) {
    Box& label = state.panel.lblStatus;
    label.text = state.havegrafdata ? "Current Conditions" : "Program Starting";
    label.fore = state.havegrafdata ? colours::green : colours::salmon;
}

void show_data_arrival(Copy& copy) {
    show_working_status(copy.state);
    copy.state.panel.Lamp.fore = colours::red;
    copy.timers.start(TimerId::Timer2, copy.ports.clock.monotonic());
}

void end_lamp_flash(WeatherState& state) {
    state.panel.Lamp.fore = colours::black;
    show_working_status(state);
}

void show_lost_line(Copy& copy) {
    // The end of a flash would put the line's error out of sight.
    copy.timers.stop(TimerId::Timer2);
    copy.state.panel.Lamp.fore = colours::black;
    show_line_error(copy.state);
}

void show_line_error(WeatherState& state) {
    state.panel.lblStatus.text = state.comm.ErrorWord;
    state.panel.lblStatus.fore = colours::blue;
}

}  // namespace nimbry
