#include "programs/nimbry-station/reading.h"

#include <algorithm>

namespace nimbry::simulator {

std::optional<Reading> reading_named(std::string_view name) {
    const auto found = std::ranges::find(reading_infos, name, &ReadingInfo::name);
    if (found == reading_infos.end()) return std::nullopt;
    return static_cast<Reading>(found - reading_infos.begin());
}

std::optional<Fault> fault_named(std::string_view name) {
    const auto found = std::ranges::find(fault_names, name);
    if (found == fault_names.end()) return std::nullopt;
    return static_cast<Fault>(found - fault_names.begin());
}

}  // namespace nimbry::simulator
