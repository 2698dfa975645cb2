#pragma once

#include <algorithm>
#include <string_view>

namespace nimbry {

/// Takes the next line off `text`, which must not be empty, without its end: CR LF, CR or LF. The last line needs none.
[[nodiscard]] inline std::string_view take_line(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
    return line;
}

}  // namespace nimbry
