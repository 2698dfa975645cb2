#include "engine/control/verb_force.h"

#include <optional>
#include <string_view>

#include "engine/control/notice_line.h"
#include "engine/derived/code_page.h"
#include "engine/publish/forced_run.h"
#include "engine/publish/internet_check.h"
#include "engine/publish/last_run.h"

namespace nimbry {
namespace {

using Runs = std::vector<LastRun PublishState::*>;

/// A kind of forced run, and where its ends are noted.
struct Kind {
    ForcedRun run;
    Runs runs;
};

std::optional<Kind> kind_of(std::string_view word) {
    if (word == "ftp") return Kind{ForcedRun::ftp, {&PublishState::last_ftp}};
    if (word == "mail") return Kind{ForcedRun::mail, {&PublishState::last_mail}};
    if (word == "weather") return Kind{ForcedRun::weather, {&PublishState::last_weather, &PublishState::last_aprs}};
    return {};
}

/// Tells of what has ended since `before` and did not go well. True when something has ended, and all of it well.
bool went_well(const PublishState& publish, const Runs& runs, const std::vector<unsigned>& before, Asker& asker) {
    bool any = false;
    bool all = true;
    for (std::size_t n = 0; n < runs.size(); ++n) {
        const LastRun& last = publish.*runs[n];
        if (last.runs == before[n]) continue;
        any = true;
        if (last.result == run_went_well) continue;
        all = false;
        asker.complain(utf8_text(last.result));
    }
    if (!any) asker.complain("Nothing was sent");
    return any && all;
}

}  // namespace

VerbStatus force_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    const auto kind = arguments.size() == 1 ? kind_of(arguments[0]) : std::nullopt;
    if (!kind) return VerbStatus::bad_usage;
    const PublishState& publish = copy.state.publish;
    if (copy.state.settings.fromnet) {
        asker.complain("This copy gets its data from another one, which publishes them");
        return VerbStatus::failed;
    }
    if (const auto refusal = internet_refusal(copy.state, publish.NimbryFTPSetup)) {
        asker.complain(notice_line(refusal->message));
        return VerbStatus::failed;
    }
    std::vector<unsigned> before;
    for (const auto run : kind->runs) before.push_back((publish.*run).runs);
    run_forced(copy, kind->run);
    return went_well(publish, kind->runs, before, asker) ? VerbStatus::done : VerbStatus::failed;
}

}  // namespace nimbry
