#include "engine/control/verbs_setup.h"

#include <algorithm>
#include <array>
#include <span>

#include "engine/control/notice_line.h"
#include "engine/control/verb_arguments.h"
#include "engine/derived/code_page.h"
#include "engine/derived/number_text.h"
#include "engine/setup/changeover_choice.h"
#include "engine/setup/units_dialog.h"
#include "engine/sun/location_dialog.h"

namespace nimbry {
namespace {

constexpr std::string_view yes = "--yes";

/// One value of an option of the units verb, and the option of the dialog that it chooses.
struct UnitWord {
    std::string_view option, word;
    bool UnitsDialog::*chosen;
};

using U = UnitsDialog;
constexpr std::array unit_words{UnitWord{"--temp", "C", &U::optTempC},        UnitWord{"--temp", "F", &U::optTempF},
                                UnitWord{"--baro", "mB", &U::optBarmb},       UnitWord{"--baro", "hPa", &U::optBarhpa},
                                UnitWord{"--baro", "inHg", &U::optBarinhg},   UnitWord{"--rain", "mm", &U::optRainmm},
                                UnitWord{"--rain", "in", &U::optRainin},      UnitWord{"--wind", "ms", &U::optWindms},
                                UnitWord{"--wind", "kph", &U::optWindkph},    UnitWord{"--wind", "mph", &U::optWindmph},
                                UnitWord{"--wind", "knots", &U::optWindknots}};

/// Chooses a unit in the dialog, and no other of its quantity. False when there is no such option or word.
bool choose_unit(UnitsDialog& dialog, std::string_view option, std::string_view word) {
    const auto* found = std::find_if(unit_words.begin(), unit_words.end(),
                                     [&](const UnitWord& unit) { return unit.option == option && unit.word == word; });
    if (found == unit_words.end()) return false;
    for (const UnitWord& unit : unit_words) {
        if (unit.option == option) dialog.*unit.chosen = &unit == found;
    }
    return true;
}

/// What `units` asks for: the dialog as it is to be. A rollover is kept apart, for it may be refused.
struct UnitsRequest {
    UnitsDialog dialog;
    std::optional<bool> first_day;
    bool confirmed = false;
};

/// False when a word is not one of the verb's, or there is none.
bool read_units(const std::vector<std::string>& arguments, UnitsRequest& request) {
    bool anything = false;
    for (std::size_t n = 0; n < arguments.size(); ++n) {
        const std::string& option = arguments[n];
        if (option == yes) {
            request.confirmed = true;
            continue;
        }
        if (n + 1 == arguments.size()) return false;
        const std::string& word = arguments[++n];
        anything = true;
        if (option == "--rollover" && (word == "first" || word == "last")) {
            request.first_day = word == "first";
        } else if (option == "--newchill" && (word == "yes" || word == "no")) {
            request.dialog.chkNewWC = word == "yes";
        } else if (!choose_unit(request.dialog, option, word)) {
            return false;
        }
    }
    return anything;
}

}  // namespace

bool refused_to_client(const Copy& copy, const std::string& what, Asker& asker) {
    if (!copy.state.settings.fromnet) return false;
    asker.complain("This copy gets its " + what + " from the one that gives it its data");
    return true;
}

VerbStatus location_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    const bool none = arguments.size() == 1 && arguments[0] == "none";
    if (!none && arguments.size() != 2) return VerbStatus::bad_usage;
    if (refused_to_client(copy, "location", asker)) return VerbStatus::failed;
    if (none) {
        forget_location(copy);
        return VerbStatus::done;
    }
    const auto refusal = accept_location(copy, typed_location(arguments[0], arguments[1]));
    if (!refusal) return VerbStatus::done;
    asker.complain((refusal->control == "Text7" ? "Latitude: " : "Longitude: ") + utf8_text(refusal->message));
    return VerbStatus::failed;
}

VerbStatus units_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    const UnitsDialog before = units_dialog(copy.state.settings);
    UnitsRequest request{before, {}, false};
    if (!read_units(arguments, request)) return VerbStatus::bad_usage;
    if (refused_to_client(copy, "units", asker)) return VerbStatus::failed;
    if (request.first_day) {
        if (const auto refusal = choose_rollover(copy, request.dialog, *request.first_day)) {
            asker.complain(notice_line(refusal->text));
            return VerbStatus::failed;
        }
    }
    if (units_differ(before, request.dialog) && !request.confirmed) {
        const std::vector<MessageBox> warnings = units_warnings(copy);
        for (const MessageBox& warning : warnings) asker.complain(notice_line(warning.text) + " (--yes)");
        if (!warnings.empty()) return VerbStatus::failed;
    }
    accept_units(copy, request.dialog);
    return VerbStatus::done;
}

VerbStatus changeover_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    const VerbArguments given(arguments, {yes});
    if (!given.right() || given.words().size() != 1) return VerbStatus::bad_usage;
    const std::string& hour = given.words().front();
    if (hour != "midnight" && hour != "9" && hour != "10") return VerbStatus::bad_usage;
    if (refused_to_client(copy, "changeover", asker)) return VerbStatus::failed;

    const bool midnight = hour == "midnight";
    const bool one_hour = hour == "10";
    if (const auto question = changeover_question(copy.state.settings, midnight)) {
        if (!given.has(yes)) {
            asker.complain(notice_line(question->text) + " (--yes)");
            return VerbStatus::failed;
        }
        change_changeover(copy, midnight);
    }
    if (!midnight && copy.state.settings.AddOneHour != one_hour) {
        asker.complain(notice_line(one_hour_warning().text));
        set_one_hour(copy, one_hour);
    }
    return VerbStatus::done;
}

}  // namespace nimbry
