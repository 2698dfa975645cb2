#include "engine/core/file_wait.h"

#include <chrono>

namespace nimbry {

void wait_until_free(Copy& copy, const std::string& name) {
    using namespace std::chrono_literals;
    const auto is_free = [&] { return !copy.ports.files.in_use(name); };
    if (copy.ports.pauses.wait_until(is_free, 60s)) return;
    copy.log.event(" Waiting for " + name + ", which another program has in use");
    copy.ports.pauses.wait_until(is_free);
}

}  // namespace nimbry
