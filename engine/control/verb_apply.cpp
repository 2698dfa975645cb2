#include "engine/control/verb_apply.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "engine/alarms/alarms.h"
#include "engine/control/notice_line.h"
#include "engine/control/verbs_setup.h"
#include "engine/derived/code_page.h"
#include "engine/derived/number_text.h"
#include "engine/displays/big_display.h"
#include "engine/publish/internet_check.h"
#include "engine/setup/comms_dialog.h"
#include "engine/setup/units_dialog.h"
#include "engine/sun/location.h"
#include "engine/sun/location_dialog.h"
#include "engine/sun/sun_texts.h"

namespace nimbry {
namespace {

/// What a dialog has against being accepted, in one line; nothing when it was accepted.
using Refusal = std::optional<std::string>;

Refusal apply_comms_dialog(Copy& copy) {
    CommsDialog dialog = comms_dialog(copy.state.settings);
    if (const auto box = unfit_comms(copy, dialog)) return notice_line(whole_text(*box));
    accept_comms(copy, dialog);
    return {};
}

Refusal apply_units_dialog(Copy& copy) {
    accept_units(copy, units_dialog(copy.state.settings));
    return {};
}

Refusal apply_alarms_dialog(Copy& copy) {
    accept_alarms(copy, AlarmsDialog(copy.state.alarms.frmAlarms));
    return {};
}

/// The texts of the keys, not the numbers in them: what is no number is refused. Where none has been entered none is
/// stored, but what was shown of a place before goes.
Refusal apply_location_dialog(Copy& copy) {
    const MainSettings& settings = copy.state.settings;
    if (Val(settings.Latitude) == no_location || Val(settings.Longitude) == no_location) {
        refresh_sun_texts(copy);
        show_sun_picture(copy);
        return {};
    }
    const auto refusal = accept_location(copy, typed_location(settings.Latitude, settings.Longitude));
    if (!refusal) return {};
    return utf8_text(refusal->message);
}

Refusal apply_internet_dialog(Copy& copy) {
    const auto refusal = accept_internet(copy, copy.state.publish.NimbryFTPSetup);
    if (!refusal) return {};
    return notice_line(refusal->message);
}

Refusal apply_marquee_dialog(Copy& copy) {
    accept_marquee(copy, MarqueeDialog(copy.state.big.FrmMarquee));
    return {};
}

struct Dialog {
    std::string_view name;
    Refusal (*apply)(Copy&);
    bool from_server = false;  ///< a client gets these settings from its server
};

// A dialog a line.
// clang-format off
constexpr std::array dialogs{
    Dialog{"comms", apply_comms_dialog},
    Dialog{"units", apply_units_dialog, true},
    Dialog{"internet", apply_internet_dialog},
    Dialog{"alarms", apply_alarms_dialog},
    Dialog{"location", apply_location_dialog, true},
    Dialog{"marquee", apply_marquee_dialog},
};
// clang-format on

VerbStatus apply(Copy& copy, const Dialog& dialog, Asker& asker) {
    const Refusal refusal = dialog.apply(copy);
    if (!refusal) return VerbStatus::done;
    asker.complain(*refusal);
    return VerbStatus::failed;
}

}  // namespace

VerbStatus apply_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    if (arguments.size() > 1) return VerbStatus::bad_usage;
    const auto* named = dialogs.end();
    if (!arguments.empty()) {
        named = std::find_if(dialogs.begin(), dialogs.end(), [&](const Dialog& d) { return d.name == arguments[0]; });
        if (named == dialogs.end()) return VerbStatus::bad_usage;
        if (named->from_server && refused_to_client(copy, std::string(named->name), asker)) return VerbStatus::failed;
    }
    if (named != dialogs.end()) return apply(copy, *named, asker);

    auto status = VerbStatus::done;
    for (const Dialog& dialog : dialogs) {
        if (dialog.from_server && copy.state.settings.fromnet) continue;
        if (apply(copy, dialog, asker) != VerbStatus::done) status = VerbStatus::failed;
    }
    return status;
}

}  // namespace nimbry
