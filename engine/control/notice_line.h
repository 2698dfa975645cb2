#pragma once

#include <string>
#include <string_view>

namespace nimbry {

/// The text of a notice as a running sentence, in UTF-8: each line end becomes a blank. What stands in a table or
/// beside its title is one_line().
[[nodiscard]] std::string notice_line(std::string_view text);

}  // namespace nimbry
