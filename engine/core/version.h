#pragma once

#include <string_view>

namespace nimbry {

/// The version of the program as people see it.
inline constexpr std::string_view program_version = "2.02";

}  // namespace nimbry
