#include "platform/network_interfaces.h"

#include <ifaddrs.h>
#include <net/if.h>
#include <sys/socket.h>

#include <algorithm>
#include <cctype>
#include <memory>

namespace nimbry::platform {
namespace {

bool leads_out(const ifaddrs& entry) {
    if (entry.ifa_addr == nullptr) return false;
    const bool has_address = entry.ifa_addr->sa_family == AF_INET || entry.ifa_addr->sa_family == AF_INET6;
    return has_address && (entry.ifa_flags & IFF_UP) != 0 && (entry.ifa_flags & IFF_LOOPBACK) == 0;
}

}  // namespace

bool is_this_machine(const std::string& host) {
    std::string name(host);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    const bool loopback_range = name.starts_with("127.") && name.find_first_not_of("0123456789.") == std::string::npos;
    return loopback_range || name == "localhost" || name == "::1" || name == "[::1]";
}

bool on_a_network() {
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0) return false;
    const std::unique_ptr<ifaddrs, void (*)(ifaddrs*)> all(first, &freeifaddrs);
    for (const ifaddrs* entry = first; entry != nullptr; entry = entry->ifa_next) {
        if (leads_out(*entry)) return true;
    }
    return false;
}

}  // namespace nimbry::platform
