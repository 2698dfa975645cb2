#pragma once

#include <cstdint>
#include <vector>

namespace nimbry {

/// Bytes as a line or a network brings them.
using Bytes = std::vector<std::uint8_t>;

}  // namespace nimbry
