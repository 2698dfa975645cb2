#pragma once

#include <optional>
#include <vector>

#include "engine/core/copy.h"
#include "engine/displays/dialog_controls.h"
#include "engine/ports/notices.h"

namespace nimbry {

/// The values of the units dialog `frmSetupUnits`, under the names of its options and its check box. The options of the
/// changeover (`optMidnight`, `optNineam`, `optonehour`) are not among them: they act when they are clicked
/// (setup/changeover_choice.h).
struct UnitsDialog {
    bool optTempC = true, optTempF = false;
    bool optBarhpa = false, optBarinhg = false, optBarmb = true;
    bool optRainmm = true, optRainin = false;
    bool optWindms = false, optWindkph = true, optWindmph = false, optWindknots = false;
    bool OptFirst = true, OptLast = false;  ///< the almanac rolls over on the first or on the last day of the month
    bool chkNewWC = true;                   ///< wind chill by formula; off: the station's own value

    bool operator==(const UnitsDialog&) const = default;
};

/// The dialog's controls with their values.
[[nodiscard]] std::vector<DialogControl> dialog_controls(UnitsDialog& dialog);

/// The dialog filled with the settings in force. An `alRoll` of 5 is the first day, any other the last.
[[nodiscard]] UnitsDialog units_dialog(const MainSettings& settings);

/// True when a display unit differs between the two; mB and hPa are two units.
[[nodiscard]] bool units_differ(const UnitsDialog& one, const UnitsDialog& other);

/// What a person is told when the window opens, in this order: that logging is on, that there is an almanac. Units are
/// no part of either file's rows, so a change makes the rows before and behind it differ.
[[nodiscard]] std::vector<MessageBox> units_warnings(const Copy& copy);

/// A click on `OptFirst` or `OptLast`. Nothing: the dialog has the option. A box: the almanac was archived within the
/// last day, and another roll could overwrite or lose a month; the dialog is unchanged.
[[nodiscard]] std::optional<MessageBox> choose_rollover(const Copy& copy, UnitsDialog& dialog, bool first_day);

/// `Command1`, "Done": the click, then the dialog's values are taken over and applied; a unit that has changed marks
/// the records for the next cycle.
void accept_units(Copy& copy, const UnitsDialog& dialog);

/// Applies the units, the changeover and the other settings as the state has them: writes section `Main`, and makes the
/// factors, unit texts, captions, the scale of the gust bar and of the graphs anew. No question, no sound, and no
/// record is touched; a copy that gets its settings from another one comes here alone.
void applyunits(Copy& copy);

}  // namespace nimbry
