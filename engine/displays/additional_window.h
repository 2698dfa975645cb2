#pragma once

namespace nimbry {

struct Copy;
struct WeatherState;

// The window "Nimbry Additional Data". Its boxes (additional_panel.h) are written whether it is open or not; here is
// what hangs on its being open.

/// `mnuAdditional`, and the button that does the same: the click sounds, and the window is to show
/// (`Additional_Open`). Both are off as long as it does. An open window stays as it is.
void mnuAdditional(Copy& copy);

/// Enables `mnuAdditional` and the button that does the same, by the one rule for both: they are off while the window
/// is open, and the button as well while an upload has the row of buttons off (`fmb_locked`).
void enable_additional(WeatherState& state);

/// The window has come to the front: the days since rain and the amount of the last rain are shown afresh, and the
/// sun's times or `lblNoSun` by whether a location is entered. The times themselves are the cycle's.
void additional_comes_to_front(Copy& copy);

/// The window has closed, in whatever way: the menu entry and the button that open it are back.
void additional_closed(Copy& copy);

/// Its own menu entry `mnuHide`: the click sounds, and the window closes.
void hide_additional(Copy& copy);

}  // namespace nimbry
