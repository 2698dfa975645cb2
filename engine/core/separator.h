#pragma once

#include <string_view>

namespace nimbry {

/// The line that sets parts off from each other, in the program log and in mails: 52 asterisks.
inline constexpr std::string_view separator_line = "****************************************************";

}  // namespace nimbry
