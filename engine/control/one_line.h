#pragma once

#include <string>
#include <string_view>

namespace nimbry {

/// A text of the engine on one line, in UTF-8: line ends become " / ", tabs blanks.
[[nodiscard]] std::string one_line(std::string_view text);

}  // namespace nimbry
