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

void copy_to_local(Copy& copy, std::string_view name) {
    const std::string twin = local_twin(copy.state.publish, name);
    const std::string source(name);
    Files& files = copy.ports.files;
    if (twin.empty() || !files.exists(source)) return;
    wait_until_free(copy, source);
    copy_over(files, source, twin);
}

}  // namespace nimbry
