#pragma once

#include <span>
#include <string_view>

namespace nimbry {

/// A template that a user starts from.
struct DefaultTemplate {
    std::string_view name;  ///< of its file
    std::string_view bytes;
};

/// The files of the folder `templates/`, sorted by name. The build puts them into the program, so that it needs no
/// folder of its own on a user's disk.
[[nodiscard]] std::span<const DefaultTemplate> default_templates();

}  // namespace nimbry
