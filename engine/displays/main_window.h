#pragma once

#include <string>

#include "engine/displays/main_panel.h"

namespace nimbry {

struct WeatherState;

/// "Nimbry 2.02 - WM-918 Weather Monitoring".
[[nodiscard]] std::string plain_caption();

/// The main window as a whole: what its title bar and the tray show. Whoever moves the window tells the engine, and the
/// other way round: the fields say how the window is to be.
struct MainWindow {
    bool minimised = false;
    bool in_tray = false;  ///< hidden, with its icon in the tray
    std::string caption = plain_caption();
};

/// Sets the caption: while the window is minimised and not in the tray the outdoor temperature and humidity as their
/// boxes show them, trimmed and joined by " : " ("+9.8 \xB0""C : 93 %"; before any reading " : "), else the plain one.
/// Called after every cycle, and when the window is minimised or comes back.
void update_caption(MainWindow& window, const MainPanel& panel);

/// The window has come to another place, or is to: shown, minimised, or minimised into the tray. The caption follows,
/// and so does the tray's pair: `mnuHideNow` is enabled while the window shows, `mnuRestore` while it does not.
void place_window(WeatherState& state, bool minimised, bool in_tray);

}  // namespace nimbry
