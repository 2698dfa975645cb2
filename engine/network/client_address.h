#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nimbry {

/// The address that a text of four decimal numbers from 0 to 255 stands for, of one to three digits each, with points
/// between them and blanks only around it. The numbers are decimal whatever they begin with. Nothing for another text.
///   dotted_address(" 010.0.0.1 ") = "10.0.0.1"   dotted_address("1.2.3") = nothing
[[nodiscard]] std::optional<std::string> dotted_address(std::string_view text);

}  // namespace nimbry
