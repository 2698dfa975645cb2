#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nimbry {

/// The addresses of a list joined by ";"; none for the word "null" in any case, which stands for none.
[[nodiscard]] std::vector<std::string> mail_addresses(std::string_view list);

/// True for what can be one mail address: one "@" with something before it, a host with at least one inner dot behind
/// it, and no blank, control character or any of , ; < > ( ).
///   IsValidEmail("me@home.net") = true   IsValidEmail("me@home") = false   IsValidEmail("me@home.") = false
[[nodiscard]] bool IsValidEmail(std::string_view address);

}  // namespace nimbry
