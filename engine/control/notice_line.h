#pragma once

#include <string>
#include <string_view>

namespace nimbry {

/// The text of a notice, in UTF-8 and as one line: CR LF becomes a blank.
[[nodiscard]] std::string notice_line(std::string_view text);

}  // namespace nimbry
