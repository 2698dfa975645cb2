#pragma once

#include <cstdint>
#include <span>

namespace nimbry {

/// The sum of all bytes of a group but its last, tag included, modulo 256: what the last byte should be. `group` holds
/// at least one byte.
[[nodiscard]] std::uint8_t checksum_of(std::span<const std::uint8_t> group);

/// True when the group's last byte is its checksum, the only test of a group's integrity. A sum of 0x00 is as good as
/// any. The empty group fails.
[[nodiscard]] bool checksum_holds(std::span<const std::uint8_t> group);

}  // namespace nimbry
