#include "tests/system/set_clock.h"

#include <filesystem>
#include <system_error>

namespace nimbry::system_test {

std::string SetClock::library() {
    for (const auto& folder : std::filesystem::directory_iterator("/usr/lib")) {
        const auto library = folder.path() / "faketime" / "libfaketimeMT.so.1";
        std::error_code none;
        if (std::filesystem::exists(library, none)) return library.string();
    }
    return {};
}

std::map<std::string, std::string> SetClock::environment(const std::string& zone) const {
    if (!can_be_had()) return {};
    std::map<std::string, std::string> variables{{"LD_PRELOAD", library()},
                                                 {"FAKETIME_TIMESTAMP_FILE", folder_.path("ahead")},
                                                 {"FAKETIME_CACHE_DURATION", "1"},
                                                 {"DONT_FAKE_MONOTONIC", "1"}};
    if (!zone.empty()) variables["TZ"] = zone;
    return variables;
}

void SetClock::put_beside(std::chrono::seconds ahead) const {
    folder_.put("next", (ahead.count() < 0 ? "" : "+") + std::to_string(ahead.count()) + "\n");
    std::filesystem::rename(folder_.path("next"), folder_.path("ahead"));  // no reader sees half of it
}

void SetClock::show(std::chrono::sys_seconds moment) const {
    put_beside(moment - std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
}

}  // namespace nimbry::system_test
