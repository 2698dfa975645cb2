#include "engine/publish/mail_address.h"

#include <algorithm>

#include "engine/derived/number_text.h"

namespace nimbry {

std::vector<std::string> list_items(std::string_view list) {
    std::vector<std::string> items;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(';'), list.size());
        if (std::string item = trimmed(list.substr(0, end)); !item.empty()) items.push_back(std::move(item));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return items;
}

std::vector<std::string> mail_addresses(std::string_view list) {
    if (lower_case(trimmed(list)) == "null") return {};
    return list_items(list);
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
