#include "engine/station/checksum.h"

#include <numeric>

namespace nimbry {

std::uint8_t checksum_of(std::span<const std::uint8_t> group) {
    const auto summed = group.first(group.size() - 1);
    return static_cast<std::uint8_t>(std::accumulate(summed.begin(), summed.end(), 0U));
}

bool checksum_holds(std::span<const std::uint8_t> group) {
    return !group.empty() && checksum_of(group) == group.back();
}

}  // namespace nimbry
