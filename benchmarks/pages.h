#pragma once

#include <string>

#include "engine/reports/page_names.h"
#include "engine/reports/tag_table.h"
#include "tests/engine/reports/tag_states.h"

namespace nimbry::test {

/// A template of 20 kB with every tag in it.
inline std::string page_with_every_tag() {
    std::string page;
    const auto tags = tag_table();
    const std::size_t filler = (20'000 - tags.size() * 14) / tags.size();
    for (const TagRow& row : tags) page += "~~" + std::string(row.name) + "~~" + std::string(filler, 'x');
    return page;
}

/// Puts a hundred of them into the folder, and the file that one of the tags prints.
inline void put_pages(Files& files) {
    const std::string page = page_with_every_tag();
    for (int n = 0; n < pages_uploaded; ++n) files.append(page_template(n), page);
    files.append("webfiletag.txt", "<p>News of the club</p>\r\n");
}

}  // namespace nimbry::test
