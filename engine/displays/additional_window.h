#pragma once

namespace nimbry {

struct Copy;

// The window "Nimbry Additional Data". Its boxes (additional_panel.h) are written whether it is open or not; here is
// what hangs on its being open.

/// `mnuAdditional`, and the button that does the same: the click sounds, and the window is to show
/// (`Additional_Open`). Both are off as long as it does. An open window stays as it is.
void mnuAdditional(Copy& copy);

/// The window has come to the front: the days since rain, the amount of the last rain and the sun's times are shown
/// afresh, the latter or `lblNoSun` by whether a location is entered.
void additional_comes_to_front(Copy& copy);

/// The window has closed, in whatever way: the menu entry and the button that open it are back.
void additional_closed(Copy& copy);

/// Its own menu entry `mnuHide`: the click sounds, and the window closes.
void hide_additional(Copy& copy);

}  // namespace nimbry
