#include "engine/control/verbs.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "engine/control/verb_apply.h"
#include "engine/control/verb_force.h"
#include "engine/control/verb_graph.h"
#include "engine/control/verb_list.h"
#include "engine/control/verbs_doing.h"
#include "engine/control/verbs_looking.h"
#include "engine/control/verbs_records.h"
#include "engine/control/verbs_reports.h"
#include "engine/control/verbs_setup.h"
#include "engine/core/event.h"
#include "engine/derived/code_page.h"

namespace nimbry {

namespace {

struct Verb {
    std::string_view name;
    VerbStatus (*run)(Copy&, const std::vector<std::string>&, Asker&);
};

// A verb a line, in the order of verb_list(). The two lists are two because nimbryctl, which shows the usages, links
// none of the procedures; VerbsTest holds them against each other.
// clang-format off
constexpr std::array verbs{
    Verb{"boxes", boxes_verb},
    Verb{"status", status_verb},
    Verb{"notices", notices_verb},
    Verb{"panel", panel_verb},
    Verb{"extremes", extremes_verb},
    Verb{"summary", summary_verb},
    Verb{"graph", graph_verb},
    Verb{"tag", tag_verb},
    Verb{"get", get_verb},
    Verb{"set", set_verb},
    Verb{"generate", generate_verb},
    Verb{"force", force_verb},
    Verb{"install-templates", install_templates_verb},
    Verb{"units", units_verb},
    Verb{"changeover", changeover_verb},
    Verb{"location", location_verb},
    Verb{"apply", apply_verb},
    Verb{"prune-log", prune_log_verb},
    Verb{"stop", stop_verb},
};
// clang-format on

}  // namespace

VerbStatus answer_request(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    const std::string name = arguments.empty() ? "" : arguments.front();
    const auto* verb = std::find_if(verbs.begin(), verbs.end(), [&](const Verb& v) { return v.name == name; });
    if (verb == verbs.end()) {
        asker.complain("unknown verb " + utf8_text(name));
        return VerbStatus::bad_usage;
    }
    if (copy.state.run.ProgramClosing) {
        asker.complain("The copy is closing");
        return VerbStatus::failed;
    }
    auto status = VerbStatus::failed;
    run_event(copy, "nimbryctl", [&] { status = verb->run(copy, {arguments.begin() + 1, arguments.end()}, asker); });
    if (status == VerbStatus::bad_usage) {
        if (const VerbUsage* usage = verb_named(name)) asker.complain(usage_line(*usage));
    }
    return status;
}

}  // namespace nimbry
