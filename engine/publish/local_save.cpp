#include "engine/publish/local_save.h"

#include "engine/core/file_steps.h"
#include "engine/core/file_wait.h"
#include "engine/core/run_time_error.h"

namespace nimbry {

std::string local_path(const PublishState& publish, std::string_view name) {
    std::string path = publish.NimbryFTPSetup.txtLocalPath;
    if (path.empty()) return path;
    if (path.back() == '\\') path.back() = '/';
    if (path.back() != '/') path += '/';
    return path.append(name);
}

std::string local_twin(const PublishState& publish, std::string_view name) {
    return publish.NimbryFTPSetup.chkLocal ? local_path(publish, name) : std::string();
}

bool local_folder_found(const Copy& copy) {
    std::string none;
    std::string folder = local_path(copy.state.publish, "");
    if (folder.size() > 1) folder.pop_back();
    return !folder.empty() && copy.ports.files.read(folder, none, 0) == FileResult::not_a_file;
}

void copy_to_local(Copy& copy, std::string_view name) {
    const std::string twin = local_twin(copy.state.publish, name);
    const std::string source(name);
    Files& files = copy.ports.files;
    if (twin.empty() || !files.exists(source)) return;
    wait_until_free(copy, source);
    copy_over(files, source, twin);
}

}  // namespace nimbry
