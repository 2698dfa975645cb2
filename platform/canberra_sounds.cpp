#include "platform/canberra_sounds.h"

#include <canberra.h>

namespace nimbry::platform {

CanberraSounds::CanberraSounds(const Files& files) : files_(files) {
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
    if (context_ == nullptr || !files_.exists(file)) return;
    const std::string path = files_.path(file);
    // Its failures are no failures of ours: whoever has no sound hears none.
    ca_context_play(context_, 0, CA_PROP_MEDIA_FILENAME, path.c_str(), CA_PROP_CANBERRA_CACHE_CONTROL, "permanent",
                    nullptr);
}

}  // namespace nimbry::platform
