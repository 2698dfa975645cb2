#pragma once

#include <string>

namespace nimbry::platform {

/// True for a name or address of this machine itself: "localhost", "127.x.x.x", "::1".
[[nodiscard]] bool is_this_machine(const std::string& host);

/// True when an interface other than the loopback is up and has an address, IPv4 or IPv6.
[[nodiscard]] bool on_a_network();

}  // namespace nimbry::platform
