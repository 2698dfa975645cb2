#include "engine/reports/generation.h"

#include "engine/core/file_steps.h"
#include "engine/core/run_time_error.h"
#include "engine/reports/resolvtag.h"
#include "engine/reports/template_scanner.h"

namespace nimbry {
namespace {

void tell_unreadable(Copy& copy, const std::string& name) {
    if (!copy.state.reports.unreadable.insert(name).second) return;
    copy.ports.notices.balloon(
        {.title = "Template error", .text = "Nimbry was unable to read the template file\r\n" + name, .icon = "!"});
    copy.log.event_or_nothing(" Unable to read the template file " + name);
}

}  // namespace

Template read_template(Copy& copy, const UserFiles& folder, const std::string& name) {
    const std::string entry = folder.find(name);
    if (entry.empty()) return {};
    std::string bytes;
    const FileResult result = copy.ports.files.read(entry, bytes);
    if (result == FileResult::not_found) return {};
    if (result != FileResult::ok) {
        tell_unreadable(copy, name);
        return {.present = true, .bytes = std::nullopt};
    }
    copy.state.reports.unreadable.erase(name);
    return {.present = true, .bytes = std::move(bytes)};
}

Resolve plain_tags(const Copy& copy) {
    return [&copy](std::string_view marker) { return resolvtag(copy, marker); };
}

void make_work_file(Files& files, const std::string& work, std::string_view page, const Resolve& resolve) {
    remove_if_there(files, work);
    std::string filled;
    filled.reserve(page.size() + page.size() / 4);
    fill_template(page, resolve, filled);
    require(files.append(work, filled));
}

}  // namespace nimbry
