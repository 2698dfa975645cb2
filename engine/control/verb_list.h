#pragma once

#include <span>
#include <string>
#include <string_view>

namespace nimbry {

/// What nimbryctl can be asked, as its help shows it.
struct VerbUsage {
    std::string_view name;
    std::string_view arguments;  ///< "SECTION KEY VALUE"; empty when it takes none
    std::string_view summary;    ///< a short sentence without its full stop
};

/// Every verb, in the order of the help.
[[nodiscard]] std::span<const VerbUsage> verb_list();

/// The verb of a name; nullptr when there is none.
[[nodiscard]] const VerbUsage* verb_named(std::string_view name);

/// "usage: nimbryctl [--dir DIR] set SECTION KEY VALUE".
[[nodiscard]] std::string usage_line(const VerbUsage& verb);

}  // namespace nimbry
