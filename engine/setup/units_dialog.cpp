#include "engine/setup/units_dialog.h"

#include <array>
#include <utility>

#include "engine/core/switches.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_scales.h"
#include "engine/graphs/graph_view.h"
#include "engine/publish/local_save.h"
#include "engine/records/almanac_file.h"
#include "engine/records/archive_names.h"

namespace nimbry {
namespace {

using D = UnitsDialog;
using S = MainSettings;

/// An option for a display unit and the key that holds it.
struct UnitOption {
    std::string_view control;
    bool D::*option;
    bool S::*key;
};

constexpr std::array unit_options{
    UnitOption{"optTempC", &D::optTempC, &S::fTempC},
    UnitOption{"optTempF", &D::optTempF, &S::fTempF},
    UnitOption{"optBarhpa", &D::optBarhpa, &S::fBarhpa},
    UnitOption{"optBarinhg", &D::optBarinhg, &S::fBarinhg},
    UnitOption{"optBarmb", &D::optBarmb, &S::fBarmb},
    UnitOption{"optRainmm", &D::optRainmm, &S::fRainmm},
    UnitOption{"optRainin", &D::optRainin, &S::fRainin},
    UnitOption{"optWindms", &D::optWindms, &S::fWindms},
    UnitOption{"optWindkph", &D::optWindkph, &S::fWindkph},
    UnitOption{"optWindmph", &D::optWindmph, &S::fWindmph},
    UnitOption{"optWindknots", &D::optWindknots, &S::fWindknots},
};

// Minutes after which the almanac's row counts as of the next day. Five are those of a row that is written just after
// the day's end. 15 hours and 5 minutes put the row of a month's last day, and no other, on the first of the next
// month, whether the day ends at midnight, at 9.00am or at 10.00am, a little early or made up for.
constexpr std::string_view roll_on_first = "5";
constexpr std::string_view roll_on_last = "905";

bool rolls_on_first(const MainSettings& settings) {
    return whole_number(settings.alRoll) == whole_number(roll_on_first);
}

/// The settings with the units that are displayed: a key that was set by itself is not applied yet.
MainSettings in_force(const WeatherState& state) {
    MainSettings settings = state.settings;
    keep_units(settings, state.units);
    return settings;
}

/// One second past a day.
constexpr std::chrono::seconds roll_guard{86401};

/// Judged by the archive's age, in both folders; viewers.cpp judges by its date.
bool archived_lately(const Copy& copy) {
    const std::optional<CivilTime>& date = copy.state.readings.dtvar;
    if (!date) return false;
    const CivilTime archived = *date - std::chrono::days{2};
    const std::string name = archive_name("al", archived, archived);
    for (const std::string& file : {name, local_path(copy.state.publish, name)}) {
        if (file.empty()) continue;
        const auto modified = copy.ports.files.modified(file);
        if (modified && copy.ports.clock.computer_time() - *modified < roll_guard) return true;
    }
    return false;
}

}  // namespace

std::vector<DialogControl> dialog_controls(UnitsDialog& dialog) {
    std::vector<DialogControl> controls;
    controls.reserve(std::size(unit_options) + 3);
    for (const UnitOption& unit : unit_options) controls.push_back({unit.control, &(dialog.*unit.option)});
    controls.push_back({"OptFirst", &dialog.OptFirst});
    controls.push_back({"OptLast", &dialog.OptLast});
    controls.push_back({"chkNewWC", &dialog.chkNewWC});
    return controls;
}

UnitsDialog units_dialog(const MainSettings& settings) {
    UnitsDialog dialog;
    for (const UnitOption& unit : unit_options) dialog.*unit.option = settings.*unit.key;
    dialog.OptFirst = rolls_on_first(settings);
    dialog.OptLast = !dialog.OptFirst;
    dialog.chkNewWC = settings.newchill;
    return dialog;
}

bool units_differ(const UnitsDialog& one, const UnitsDialog& other) {
    for (const UnitOption& unit : unit_options) {
        if (one.*unit.option != other.*unit.option) return true;
    }
    return false;
}

std::vector<MessageBox> units_warnings(const Copy& copy) {
    std::vector<MessageBox> warnings;
    if (copy.state.settings.fwrtlog) {
        warnings.push_back({.text = "Logging is enabled and changing units will affect the log file.\r\n"
                                    "You may wish to close and save your log before proceeding"});
    }
    if (copy.ports.files.exists(std::string(almanac_log))) {
        warnings.push_back({.text = "Changing the units will affect your almanac.\r\n"
                                    "You may wish to archive your almanac file (nbextreme.log) before proceeding"});
    }
    return warnings;
}

std::optional<MessageBox> choose_rollover(const Copy& copy, UnitsDialog& dialog, bool first_day) {
    if (dialog.OptFirst == first_day) return {};
    if (archived_lately(copy)) {
        return MessageBox{.text =
                              "The almanac has been rolled over and\r\n"
                              "archived within the last 24 hours.\r\n"
                              "To avoid a multiple rollover, please wait\r\n"
                              "more than 24 hours from the last\r\n"
                              "changeover before altering this setting."};
    }
    dialog.OptFirst = first_day;
    dialog.OptLast = !first_day;
    return {};
}

void accept_units(Copy& copy, const UnitsDialog& dialog) {
    copy.ports.sounds.play(std::string(click_sound));
    MainSettings& settings = copy.state.settings;
    if (units_differ(dialog, units_dialog(in_force(copy.state)))) copy.state.records.unitschanged = true;
    for (const UnitOption& unit : unit_options) settings.*unit.key = dialog.*unit.option;
    // A number of somebody's own stays, as long as it stands for the same day.
    if (dialog.OptFirst != rolls_on_first(settings)) settings.alRoll = dialog.OptFirst ? roll_on_first : roll_on_last;
    settings.newchill = dialog.chkNewWC;
    applyunits(copy);
}

void applyunits(Copy& copy) {
    WeatherState& state = copy.state;
    const WindUnit wind_before = state.units.wind;
    state.units = units_from(state.settings);
    keep_units(state.settings, state.units);
    WrtCfg(copy.ini, state.settings);
    set_changeover_captions(state.panel, state.settings);
    if (state.units.wind != wind_before) start_gauge(state.panel, state.units.wind);
    setgraphscales(state);
    drawgraph(state);
}

}  // namespace nimbry
