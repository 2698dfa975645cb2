#include "engine/core/file_wait.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace nimbry {

namespace {

constexpr std::chrono::minutes silent_patience{1};

/// Names a wait for as long as it lives.
class NamedWait {
public:
    NamedWait(RunState& run, std::string what) : run_(run), what_(std::move(what)) { run_.waits.push_back(what_); }
    ~NamedWait() {
        const auto named = std::find(run_.waits.begin(), run_.waits.end(), what_);
        if (named != run_.waits.end()) run_.waits.erase(named);
    }
    NamedWait(const NamedWait&) = delete;
    NamedWait& operator=(const NamedWait&) = delete;

private:
    RunState& run_;
    std::string what_;
};

}  // namespace

void wait_for(Copy& copy, const std::string& what, const std::function<bool()>& condition) {
    const NamedWait named(copy.state.run, what);
    copy.ports.pauses.wait_until(condition);
}

void wait_until_free(Copy& copy, const std::string& name) {
    const auto is_free = [&] { return !copy.ports.files.in_use(name); };
    const NamedWait named(copy.state.run, name);
    if (copy.ports.pauses.wait_until(is_free, silent_patience)) return;
    copy.log.event(" Waiting for " + name + ", which another program has in use");
    copy.ports.pauses.wait_until(is_free);
}

void save_first(Copy& copy, const std::string& what, const BusyFlag& saving, const std::function<void()>& save) {
    if (!saving) save();
    wait_for(copy, what, [&] { return !saving; });
}

}  // namespace nimbry
