#include "engine/publish/mail_address.h"

#include <algorithm>

#include "engine/derived/number_text.h"
#include "engine/publish/server_settings.h"

namespace nimbry {

std::vector<std::string> mail_addresses(std::string_view list) {
    if (lower_case(trimmed(list)) == "null") return {};
    return list_items(list, ';');
}

bool IsValidEmail(std::string_view address) {
    const auto forbidden = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte <= ' ' || byte == 0x7F || std::string_view(",;<>()").find(c) != std::string_view::npos;
    };
    if (std::any_of(address.begin(), address.end(), forbidden)) return false;
    if (std::count(address.begin(), address.end(), '@') != 1) return false;
    const std::size_t at = address.find('@');
    const std::string_view host = address.substr(at + 1);
    if (at == 0 || host.size() < 3 || host.front() == '.' || host.back() == '.') return false;
    return host.find('.') != std::string_view::npos;
}

}  // namespace nimbry
