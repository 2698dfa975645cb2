#include "engine/publish/published_files.h"

namespace nimbry {
namespace {

constexpr int intervals_fresh = 3;

}  // namespace

bool is_fresh(const Copy& copy, const std::string& name) {
    const auto changed = copy.ports.files.modified(name);
    const std::chrono::minutes limit{copy.state.publish.FtpMinutes * intervals_fresh};
    return changed && copy.ports.clock.computer_time() - *changed < limit;
}

std::string fnamesplit(std::string_view path) {
    return std::string(path.substr(path.find_last_of("\\/") + 1));
}

}  // namespace nimbry
