#include "engine/publish/local_pages.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/core/file_steps.h"
#include "engine/core/run_time_error.h"
#include "engine/derived/number_text.h"
#include "engine/graphs/graph_svg.h"
#include "engine/publish/local_save.h"
#include "engine/publish/published_files.h"
#include "engine/reports/generation.h"
#include "engine/reports/page_names.h"

namespace nimbry {
namespace {

/// A file of the program's folder and its name in the user's.
struct Finished {
    std::string name, local_name;
};

std::vector<Finished> finished_files(const Copy& copy, const UserFiles& folder) {
    std::vector<Finished> list;
    for (const std::string name : {"VidCap.jpg", "VidCap.png"}) {
        const std::string entry = folder.find(name);
        if (!entry.empty() && is_fresh(copy, entry)) list.push_back({entry, name});
    }
    list.push_back({"wx.wml", "wx.wml"});
    for (int n = 0; n < pages_uploaded; ++n) {
        if (auto name = remote_page(copy.state.publish.NimbryFTPSetup.FTPRemoteFile, n))
            list.push_back({finished_page(n), std::move(*name)});
    }
    for (const char* name : {"nimbrysummary.html", "nimbryraw.txt", "NimbData.txt", "NimbData.csv", "nimbryUI.txt"})
        list.push_back({name, name});
    if (copy.ini.GetFlag("Main", "GraphFiles", false)) {
        for (int n = 1; n <= graph_count; ++n) {
            const std::string name = "graph" + numtext(n) + ".svg";
            list.push_back({name, name});
        }
    }
    return list;
}

// Readers of the folder see the old file or the new one, never a part.
FileResult put(Copy& copy, const Finished& file) {
    Files& files = copy.ports.files;
    const std::string target = local_path(copy.state.publish, file.local_name);
    const std::string work = target + ".new";
    remove_if_there(files, work);
    const FileResult copied = files.copy(file.name, work);
    if (copied != FileResult::ok) return copied;
    replace_by(files, work, target);
    return FileResult::ok;
}

void tell_failure(Copy& copy, const std::string& name) {
    const std::string text = "Local save error writing to file: " + name;
    copy.ports.notices.balloon({.title = "Local Save Error", .text = text, .icon = "!"});
    copy.log.event_or_nothing(" " + text);
}

/// The name of the file that could not be put there; nothing when all went well.
std::optional<std::string> put_all(Copy& copy) {
    const UserFiles folder(copy.ports.files);
    for (const Finished& file : finished_files(copy, folder)) {
        if (!copy.ports.files.exists(file.name)) continue;
        try {
            const FileResult result = put(copy, file);
            if (result == FileResult::not_found) return std::nullopt;  // there is no such folder
            require(result);
        } catch (const RunTimeError&) {
            return file.local_name;
        }
    }
    return std::nullopt;
}

}  // namespace

void localsave(Copy& copy) {
    const PublishState& publish = copy.state.publish;
    if (!publish.NimbryFTPSetup.chkLocal || publish.NimbryFTPSetup.txtLocalPath.empty()) return;
    const auto busy = copy.state.reports.LocalSaveBusy.try_hold();
    if (!busy) return;
    if (const auto failed = put_all(copy)) tell_failure(copy, *failed);
}

}  // namespace nimbry
