#include "engine/network/start_network.h"

#include "engine/core/event.h"
#include "engine/network/forwarding.h"

namespace nimbry {

namespace {

constexpr Milliseconds bind_retry{10000};

/// Keeps trying to bind the client's port, until it works or another role has been taken.
void bind_client_port_later(Copy& copy) {
    while (copy.state.settings.fromnet && !copy.ports.datasock.is_open()) {
        copy.ports.pauses.pause(bind_retry);
        if (copy.state.settings.fromnet && !copy.ports.datasock.is_open())
            copy.ports.datasock.bind(client_udp_port, copy.state.network.LocalIP, PortUse::shared);
    }
    copy.state.network.retrying_bind = false;
}

void start_client(Copy& copy) {
    if (copy.ports.datasock.bind(client_udp_port, copy.state.network.LocalIP, PortUse::shared) ||
        copy.state.network.retrying_bind)
        return;
    copy.log.event(" UDP port " + std::to_string(client_udp_port) + " is in use by another program");
    copy.state.network.retrying_bind = true;
    start_event(copy, "startnetwork", [&copy] { bind_client_port_later(copy); });
}

}  // namespace

void startnetwork(Copy& copy) {
    if (copy.state.run.ProgramClosing) return;
    copy.ports.datasock.close();
    copy.state.network.LocalIP = copy.ini.GetSetting("Main", "LocalIP", "");
    if (copy.state.settings.fromnet) {
        start_client(copy);
    } else if (copy.state.settings.bcastnet) {
        copy.ports.datasock.bind(server_udp_port, copy.state.network.LocalIP, PortUse::exclusive);
        open_sync_listener(copy);
    }
}

void open_sync_listener(Copy&) {}

}  // namespace nimbry
