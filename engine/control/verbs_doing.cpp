#include "engine/control/verbs_doing.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "engine/alarms/alarms.h"
#include "engine/control/key_values.h"
#include "engine/control/notice_line.h"
#include "engine/control/verb_arguments.h"
#include "engine/core/exits.h"
#include "engine/core/known_keys.h"
#include "engine/core/main_settings.h"
#include "engine/core/program_log_pruning.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/code_page.h"
#include "engine/displays/big_display.h"
#include "engine/displays/main_menu.h"
#include "engine/graphs/graph_store.h"
#include "engine/publish/publishing.h"

namespace nimbry {

namespace {

/// The key, if Nimbry knows it; otherwise the asker is told.
std::optional<KnownKey> known_or_told(const std::string& section, const std::string& key, Asker& asker) {
    auto known = known_key(section, key);
    if (!known) asker.complain("Nimbry knows no key " + utf8_text(key) + " in section " + utf8_text(section));
    return known;
}

/// A password of the internet dialog; all others are texts of the engine.
std::optional<InternetPassword> password_of(const KnownKey& known) {
    return known.section == "FTP" ? internet_password(known.key) : std::nullopt;
}

/// What the copy goes by. The fields of section `Main` have settled what the file leaves in doubt.
std::string value_in_force(const Copy& copy, const KnownKey& known) {
    if (known.section == "Main") {
        const auto keys = main_keys();
        const auto key = std::find_if(keys.begin(), keys.end(), [&](const MainKey& k) { return k.key == known.key; });
        if (key != keys.end()) return value_text(copy.state.settings, *key);
    }
    return copy.ini.GetSetting(known.section, known.key, known.fallback);
}

void take_into_force(Copy& copy, std::string_view section) {
    if (section == "Main") {
        copy.state.settings = read_main_settings(copy.ini);
        apply_menu_checks(copy.state.menu, copy.state.settings);
        apply_graph_switches(copy);
    } else if (section == "Alarms") {
        getalarms(copy);
    } else if (section == "FTP") {
        getFTP(copy);
    } else if (section == "Marquee") {
        getmarquee(copy);
    }
}

}  // namespace

VerbStatus get_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    if (arguments.size() != 2) return VerbStatus::bad_usage;
    const auto known = known_or_told(arguments[0], arguments[1], asker);
    if (!known) return VerbStatus::failed;
    const auto password = password_of(*known);
    asker.print((password ? utf8_name(copy.state.publish.NimbryFTPSetup.*password->value)
                          : utf8_text(value_in_force(copy, *known))) +
                '\n');
    return VerbStatus::done;
}

VerbStatus set_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    if (arguments.size() != 3) return VerbStatus::bad_usage;
    const auto known = known_or_told(arguments[0], arguments[1], asker);
    if (!known) return VerbStatus::failed;
    if (const auto complaint = unfit_value(*known, arguments[2])) {
        asker.complain(utf8_text(*complaint));
        return VerbStatus::failed;
    }
    const auto password = password_of(*known);
    const std::string value = password ? stored_password(*password, utf8_text(arguments[2])) : arguments[2];
    const bool written = copy.ini.SaveSetting(known->section, known->key, value);
    take_into_force(copy, known->section);
    if (written) return VerbStatus::done;
    asker.complain("The value is in force, but Nimbry.ini could not be written");
    return VerbStatus::failed;
}

VerbStatus prune_log_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    static constexpr std::string_view yes = "--yes";
    const VerbArguments given(arguments, {yes});
    if (!given.right() || !given.words().empty()) return VerbStatus::bad_usage;

    Pruning result = Pruning::no_log;
    if (copy.ports.files.exists(std::string(ProgramLog::file))) {
        if (!given.has(yes)) {
            asker.complain(notice_line(pruning_question().text) + " (--yes)");
            return VerbStatus::failed;
        }
        try {
            result = prune_program_log(copy.ports.files);
        } catch (const RunTimeError& error) {
            // A request from outside is no reason to end the copy.
            asker.complain("The program log could not be pruned: " + std::string(description(error.number)));
            return VerbStatus::failed;
        }
    }
    if (result == Pruning::done) return VerbStatus::done;
    asker.complain(notice_line(pruning_refusal(result).text));
    return VerbStatus::failed;
}

VerbStatus stop_verb(Copy& copy, const std::vector<std::string>& arguments, Asker&) {
    if (!arguments.empty()) return VerbStatus::bad_usage;
    menu_exit(copy);
    return VerbStatus::done;
}

}  // namespace nimbry
