#pragma once

#include <string>
#include <vector>

#include "engine/core/copy.h"
#include "engine/displays/dialog_controls.h"

namespace nimbry {

/// The values of the days-since-rain editor (`NimbryEditDSR`), as typed.
struct RainDaysDialog {
    std::string txtEDSR;  ///< "Days Since Rain"
    std::string txtALR;   ///< "Amount of Last Rain", in the rain unit

    bool operator==(const RainDaysDialog&) const = default;
};

/// The dialog's controls with their values.
[[nodiscard]] std::vector<DialogControl> dialog_controls(RainDaysDialog& dialog);

/// The editor filled with what is known.
[[nodiscard]] RainDaysDialog rain_days_dialog(const RecordsState& records);

/// The accept button `cmdDone`: the click sounds. Days that are no number change nothing. Else they are stored as a
/// whole number, halves to the even one (2.5 is 2, 3.5 is 4), with the amount, which is 0 where it is no number; both
/// are shown in the additional data window, and the day's extremes are saved. Commas count as points. May wait.
void accept_rain_days(Copy& copy, const RainDaysDialog& dialog);

}  // namespace nimbry
