#pragma once

#include <span>
#include <string_view>

#include "engine/displays/box.h"
#include "engine/displays/marquee.h"

namespace nimbry {

struct Copy;
struct WeatherState;

/// The large-type window `NimbryBIG`. It lives in the state whether it is open or not. Its readings are boxes of the
/// main window (big_readings()); here is what it has of its own: the clock's line, and the line at the bottom that goes
/// through the readings ticked in `FrmMarquee`, one every four seconds while the window is open.
struct BigDisplay {
    Box txtDisTimDat;     ///< time and date of the station, two blanks between them
    Box Label9, Label10;  ///< the line: what is shown, and its value

    bool open = false;        ///< the window is showing
    int DisCount = 0;         ///< the item that is shown, 1 to 11; 0 before the first
    bool ValidItems = false;  ///< one item at least is ticked
    MarqueeDialog FrmMarquee;
};

/// A reading of the big display: the box `of` of the main window under a second name.
struct BigReading {
    std::string_view name;
    std::string_view of;
};

/// `txtDisTemp` to `txtDisBarTrend`, in the order of the window.
[[nodiscard]] std::span<const BigReading> big_readings();

/// Puts the station's time and date, as the main window shows them, into one line.
void show_time_and_date(WeatherState& state);

/// Timer1: the line goes on to the next ticked item, after the last to the first; a single one stays and is shown
/// afresh. Without any it reads "**  Nimbry  **".
void turn_marquee(WeatherState& state);

/// `mnuBIG`: the click sounds, and the window is to show; its line turns for the first time. An open one stays as it
/// is.
void mnuBIG(Copy& copy);

/// The window has closed: its line stands still.
void big_display_closed(Copy& copy);

/// The ticked items, as section `Marquee` has them.
void getmarquee(Copy& copy);

/// The accept button of `FrmMarquee`: the click sounds, the values are in force and stored.
void accept_marquee(Copy& copy, const MarqueeDialog& values);

}  // namespace nimbry
