#pragma once

#include <string_view>

namespace nimbry {

/// The digits of base 16, in the case that the place asks for.
inline constexpr std::string_view upper_hexadecimal = "0123456789ABCDEF";
inline constexpr std::string_view lower_hexadecimal = "0123456789abcdef";

}  // namespace nimbry
