#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/ports/transfers.h"

namespace nimbry {

// What the settings of a server say, as they were typed.

inline constexpr int highest_port = 65535;

/// The number of a port; `usual` for a text that names none.
[[nodiscard]] std::uint16_t port_of(std::string_view setting, std::uint16_t usual);

/// The words of a setting for the two encryptions of Encryption; any other word is none. Case does not matter.
struct EncryptionWords {
    std::string_view explicit_tls, implicit_tls;
};
[[nodiscard]] Encryption encryption_of(std::string_view setting, const EncryptionWords& words);

/// The items of a list joined by `separator`, without outer blanks and without empty ones.
///   list_items(" a;b c;;", ';') = {"a", "b c"}
[[nodiscard]] std::vector<std::string> list_items(std::string_view list, char separator);

}  // namespace nimbry
