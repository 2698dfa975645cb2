#include "engine/publish/server_settings.h"

#include <algorithm>
#include <utility>

#include "engine/derived/number_text.h"

namespace nimbry {

std::uint16_t port_of(std::string_view setting, std::uint16_t usual) {
    const int port = whole_number(setting);
    return port < 1 || port > highest_port ? usual : static_cast<std::uint16_t>(port);
}

Encryption encryption_of(std::string_view setting, const EncryptionWords& words) {
    const std::string word = lower_case(trimmed(setting));
    if (word == words.explicit_tls) return Encryption::explicit_tls;
    return word == words.implicit_tls ? Encryption::implicit_tls : Encryption::none;
}

std::vector<std::string> list_items(std::string_view list, char separator) {
    std::vector<std::string> items;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(separator), list.size());
        if (std::string item = trimmed(list.substr(0, end)); !item.empty()) items.push_back(std::move(item));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return items;
}

}  // namespace nimbry
