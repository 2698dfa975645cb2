#include "engine/setup/rain_days_dialog.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/core/switches.h"
#include "engine/derived/number_text.h"
#include "engine/records/extremes_display.h"
#include "engine/records/record_step.h"
#include "engine/records/save_extremes.h"

namespace nimbry {
namespace {

using Days = std::numeric_limits<int>;

int whole_days(double typed) {
    return static_cast<int>(std::clamp(Round(typed, 0), double{Days::min()}, double{Days::max()}));
}

/// What no single holds counts as no number.
float amount_in(const std::string& text) {
    if (!IsNumeric(text)) return 0;
    const double typed = Val(repcomma(text));
    return std::abs(typed) > double{std::numeric_limits<float>::max()} ? 0 : static_cast<float>(typed);
}

}  // namespace

std::vector<DialogControl> dialog_controls(RainDaysDialog& dialog) {
    return {{"txtEDSR", &dialog.txtEDSR}, {"txtALR", &dialog.txtALR}};
}

RainDaysDialog rain_days_dialog(const RecordsState& records) {
    return {numtext(records.DaySinceRain), numtext(records.LastRain)};
}

void accept_rain_days(Copy& copy, const RainDaysDialog& dialog) {
    copy.ports.sounds.play(std::string(click_sound));
    if (!IsNumeric(dialog.txtEDSR)) return;
    RecordsState& records = copy.state.records;
    records.DaySinceRain = whole_days(Val(repcomma(dialog.txtEDSR)));
    records.LastRain = amount_in(dialog.txtALR);
    show_rain_days(copy.state);
    record_step(copy, [&] { SaveExtremes(copy); });
}

}  // namespace nimbry
