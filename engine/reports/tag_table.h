#pragma once

#include <span>
#include <string>
#include <string_view>

#include "engine/reports/tag_view.h"

namespace nimbry {

/// One tag of the templates.
struct TagRow {
    std::string_view name;                ///< ten characters, without the tildes
    std::string (*text)(const TagView&);  ///< what it prints
    std::string_view prints;              ///< the same in words, for the manual
    std::string_view example;             ///< on an October afternoon in Sydney
};

/// Every tag, in the order of the table.
[[nodiscard]] std::span<const TagRow> tag_table();

/// The tag of a name; nullptr when there is none. Case matters.
[[nodiscard]] const TagRow* tag_named(std::string_view name);

}  // namespace nimbry
