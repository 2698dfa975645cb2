#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nimbry {

/// A key of the configuration file that Nimbry reads.
struct KnownKey {
    std::string section, key;  ///< as they are written; a list's entries stand here once, as "iplist(n)"
    std::string fallback;      ///< its value when it is not in the file
    bool optional = false;     ///< absent unless somebody sets it: no dialog writes it
};

/// Every key that Nimbry reads, section by section: `Main`, `Alarms`, `Marquee`, `FTP`. docs/formats/ini.md tells their
/// meaning.
[[nodiscard]] std::vector<KnownKey> known_keys();

/// The key as Nimbry writes it and its default; nothing for a key that Nimbry does not read. Names compare without
/// case, as in the file; an entry of a list is named with its number, "iplist(3)".
[[nodiscard]] std::optional<KnownKey> known_key(std::string_view section, std::string_view key);

}  // namespace nimbry
