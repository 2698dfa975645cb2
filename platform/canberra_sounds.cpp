#include "platform/canberra_sounds.h"

#include <canberra.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace nimbry::platform {

CanberraSounds::CanberraSounds(const Files& files, std::vector<std::string> folders)
    : files_(files), folders_(std::move(folders)) {
    if (ca_context_create(&context_) != CA_SUCCESS) context_ = nullptr;
    if (context_ != nullptr) {
        ca_context_change_props(context_, CA_PROP_APPLICATION_NAME, "Nimbry", CA_PROP_APPLICATION_ID, "nimbry",
                                nullptr);
    }
}

CanberraSounds::~CanberraSounds() {
    if (context_ != nullptr) ca_context_destroy(context_);
}

void CanberraSounds::play(const std::string& file) {
    if (context_ == nullptr) return;
    const std::string path = path_of(file);
    if (path.empty()) return;
    // Its failures are no failures of ours: whoever has no sound hears none.
    ca_context_play(context_, 0, CA_PROP_MEDIA_FILENAME, path.c_str(), CA_PROP_CANBERRA_CACHE_CONTROL, "permanent",
                    nullptr);
}

std::string CanberraSounds::path_of(const std::string& file) const {
    if (files_.exists(file)) return files_.path(file);
    for (const std::string& folder : folders_) {
        std::string path = folder + "/" + file;
        std::error_code none;
        if (std::filesystem::is_regular_file(path, none)) return path;
    }
    return {};
}

std::vector<std::string> sound_folders(const std::string& executable_folder) {
    return {executable_folder, executable_folder + "/../share/nimbry"};
}

}  // namespace nimbry::platform
