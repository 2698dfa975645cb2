#pragma once

#include <string_view>

namespace nimbry {

/// The version of the program as people see it. It stands here alone: the build reads it from this line, and every text
/// that tells it is made of it.
inline constexpr std::string_view program_version = "2.02";

}  // namespace nimbry
