#include "engine/network/start_network.h"

#include <string>
#include <utility>

#include "engine/core/event.h"
#include "engine/network/forwarding.h"
#include "engine/network/sync_commands.h"
#include "engine/network/syncsock.h"

namespace nimbry {

namespace {

constexpr Milliseconds bind_retry{10000};

bool try_client_port(Copy& copy) {
    return copy.ports.datasock.bind(client_udp_port, copy.state.network.LocalIP, PortUse::shared);
}

/// Keeps trying to bind the client's port, until it works or another role has been taken.
void bind_client_port_later(Copy& copy) {
    while (copy.state.settings.fromnet && !copy.ports.datasock.is_open()) {
        copy.ports.pauses.pause(bind_retry);
        if (copy.state.settings.fromnet && !copy.ports.datasock.is_open()) try_client_port(copy);
    }
    copy.state.network.retrying_bind = false;
}

}  // namespace

void startnetwork(Copy& copy) {
    if (copy.state.run.ProgramClosing) return;
    copy.ports.datasock.close();
    // A client that is fetching its server's files goes on with that.
    if (!copy.state.settings.fromnet || !copy.state.network.syncing) close_syncsock(copy);
    copy.state.network.LocalIP = copy.ini.GetSetting("Main", "LocalIP", "");
    if (copy.state.settings.fromnet) {
        bind_client_port(copy);
    } else if (copy.state.settings.bcastnet) {
        bind_server_port(copy);
        open_sync_listener(copy);
    }
}

void bind_client_port(Copy& copy) {
    if (try_client_port(copy) || copy.state.network.retrying_bind) return;
    copy.log.event(" UDP port " + std::to_string(client_udp_port) + " is in use by another program");
    copy.state.network.retrying_bind = true;
    start_event(copy, "startnetwork", [&copy] { bind_client_port_later(copy); });
}

bool bind_server_port(Copy& copy) {
    return copy.ports.datasock.bind(server_udp_port, copy.state.network.LocalIP, PortUse::exclusive);
}

void open_sync_listener(Copy& copy) {
    NetworkState& network = copy.state.network;
    close_syncsock(copy);
    Listening listening = copy.ports.streams.listen(sync_port, network.LocalIP);
    network.listener = std::move(listening.listener);
    const bool failed = network.listener == nullptr;
    if (failed && !network.listen_failed) {
        copy.log.event_or_nothing(" TCP port " + std::to_string(sync_port) +
                                  " cannot be opened: " + listening.fault.description);
    }
    network.listen_failed = failed;
}

}  // namespace nimbry
