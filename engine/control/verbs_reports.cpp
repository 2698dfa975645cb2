#include "engine/control/verbs_reports.h"

#include "engine/control/one_line.h"
#include "engine/control/verb_arguments.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/code_page.h"
#include "engine/publish/local_pages.h"
#include "engine/reports/default_templates.h"
#include "engine/reports/genhtml.h"
#include "engine/reports/resolvtag.h"
#include "engine/reports/tag_table.h"
#include "engine/reports/user_files.h"

namespace nimbry {

namespace {

/// False when there is a switch among the words.
bool words_only(const std::vector<std::string>& arguments) {
    return VerbArguments(arguments, {}).right();
}

}  // namespace

VerbStatus tag_verb(Copy& copy, const std::vector<std::string>& names, Asker& asker) {
    if (names.empty() || !words_only(names)) return VerbStatus::bad_usage;
    for (const std::string& name : names) {
        if (tag_named(name) != nullptr) continue;
        const bool in_tildes = name.starts_with("~~");
        asker.complain("There is no tag " + utf8_text(name) + (in_tildes ? ": it is named without its tildes" : ""));
        return VerbStatus::failed;
    }
    refresh_tag_sources(copy);
    const auto text = [&](const std::string& name) { return resolvtag(copy, "~~" + name + "~~"); };
    if (names.size() == 1) {
        asker.print(utf8_text(text(names.front())) + '\n');
        return VerbStatus::done;
    }
    std::string lines;
    for (const std::string& name : names) lines += name + '\t' + one_line(text(name)) + '\n';
    asker.print(lines);
    return VerbStatus::done;
}

VerbStatus generate_verb(Copy& copy, const std::vector<std::string>& arguments, Asker&) {
    if (!arguments.empty()) return VerbStatus::bad_usage;
    make_fresh_pages(copy);
    localsave(copy);
    return VerbStatus::done;
}

VerbStatus install_templates_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker) {
    if (!arguments.empty()) return VerbStatus::bad_usage;
    Files& files = copy.ports.files;
    const UserFiles folder(files);
    std::string installed;
    for (const DefaultTemplate& file : default_templates()) {
        const std::string name(file.name);
        if (!folder.find(name).empty()) continue;
        const FileResult result = files.append(name, file.bytes);
        if (result == FileResult::ok) {
            installed += name + '\n';
            continue;
        }
        asker.print(installed);
        asker.complain(name + " could not be written: " + std::string(description(error_of(result))));
        return VerbStatus::failed;
    }
    asker.print(installed);
    return VerbStatus::done;
}

}  // namespace nimbry
