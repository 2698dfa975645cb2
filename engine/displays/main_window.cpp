#include "engine/displays/main_window.h"

#include "engine/core/version.h"
#include "engine/core/weather_state.h"
#include "engine/derived/number_text.h"

namespace nimbry {

std::string plain_caption() {
    return "Nimbry " + std::string(program_version) + " - WM-918 Weather Monitoring";
}

void update_caption(MainWindow& window, const MainPanel& panel) {
    if (window.minimised && !window.in_tray) {
        window.caption = trimmed(panel.Text2[0].text) + " : " + trimmed(panel.Text2[2].text);
    } else {
        window.caption = plain_caption();
    }
}

void place_window(WeatherState& state, bool minimised, bool in_tray) {
    state.window.minimised = minimised;
    state.window.in_tray = in_tray;
    state.menu.mnuHideNow.enabled = !minimised;
    state.menu.mnuRestore.enabled = minimised;
    update_caption(state.window, state.panel);
}

}  // namespace nimbry
