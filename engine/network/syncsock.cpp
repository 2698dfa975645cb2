#include "engine/network/syncsock.h"

#include <string>
#include <utility>

#include "engine/core/event.h"
#include "engine/network/start_network.h"
#include "engine/network/sync_server.h"

namespace nimbry {

namespace {

// 101 looks of 10 ms.
constexpr Milliseconds send_patience{1010};
constexpr Milliseconds close_patience{1000};

/// No file of a server comes near it; a peer that sends more has no end.
constexpr std::size_t largest_file = std::size_t{4} * 1024 * 1024;

bool is_server(const Copy& copy) {
    return copy.state.settings.bcastnet && !copy.state.settings.fromnet;
}

void report(Copy& copy, const SendFault& fault) {
    const std::string what = " in SendData. Error # " + std::to_string(fault.number) + " " + fault.description +
                             " Socket state " + std::to_string(static_cast<int>(syncstate(copy.state.network)));
    copy.ports.notices.balloon({.title = "Network Error", .text = copy.log.when() + what});
    copy.log.event_or_nothing(what);
}

/// Closes gracefully: the peer may still read what was sent last.
void let_go(Copy& copy, std::shared_ptr<Stream> connection) {
    if (!connection) return;
    connection->close();
    if (connection->unsent() == 0) return;
    start_event(copy, "syncsock", [&copy, connection] {
        copy.ports.pauses.wait_until([&] { return connection->unsent() == 0; }, close_patience);
    });
}

void write_content(Copy& copy, std::string_view content) {
    NetworkState& network = copy.state.network;
    ++network.data_arrivals;
    if (!network.receiver.file_open()) return;
    ReceivedFile& file = network.file14;
    file.size += content.size();
    if (file.size > largest_file) {
        network.receiver.close_file();
        return let_go(copy, std::exchange(network.connection, nullptr));
    }
    const FileResult result = copy.ports.files.append(file.name, content);
    if (result == FileResult::ok) return;
    network.receiver.close_file();
    file.error = error_of(result);
}

/// One handler for both roles.
void obey(Copy& copy, SyncCommand command) {
    NetworkState& network = copy.state.network;
    switch (command) {
        case SyncCommand::AcceptCNX: network.syncIPcnx = true; break;
        case SyncCommand::ServerStatus: tell_status(copy); break;
        case SyncCommand::ServerIsOK: network.ServerStatus = true; break;
        case SyncCommand::ServerIsBusy: network.ServerStatus = false; break;
        case SyncCommand::RequestSyncFile:
        case SyncCommand::RequestGraphFile:
        case SyncCommand::RequestTdayFile:
        case SyncCommand::RequestYdayFile:
        case SyncCommand::RequestRainLH:
        case SyncCommand::RequestAlmanac: answer_file_request(copy, command); break;
        case SyncCommand::filended:
            network.receiver.close_file();
            network.filedone = true;
            break;
        case SyncCommand::InvalidFile: network.IPInvalidFile = true; break;
        case SyncCommand::ResetServerSocket:
            close_syncsock(copy);
            if (is_server(copy)) open_sync_listener(copy);
            break;
    }
}

/// Stops where a command has ended the connection.
void take(Copy& copy, const std::vector<SyncPiece>& pieces) {
    const std::shared_ptr<Stream> connection = copy.state.network.connection;
    for (const SyncPiece& piece : pieces) {
        if (copy.state.network.connection != connection) return;
        if (piece.command)
            obey(copy, *piece.command);
        else
            write_content(copy, piece.content);
    }
}

void read_arrivals(Copy& copy) {
    NetworkState& network = copy.state.network;
    while (network.connection) {
        const std::string bytes = network.connection->take();
        if (bytes.empty()) return;
        take(copy, network.receiver.feed(bytes, copy.ports.clock.monotonic()));
    }
}

/// A client's conversation looks for itself whether its server is still there.
void see_who_has_gone(Copy& copy) {
    NetworkState& network = copy.state.network;
    if (network.syncing || !network.connection || network.connection->state() != StreamState::closed) return;
    close_syncsock(copy);
    if (is_server(copy)) open_sync_listener(copy);
}

}  // namespace

StreamState syncstate(const NetworkState& network) {
    if (network.connection) return network.connection->state();
    return network.listener ? StreamState::listening : StreamState::closed;
}

bool SendData(Copy& copy, const std::shared_ptr<Stream>& connection, std::string_view text) {
    const std::optional<SendFault> fault =
        connection ? connection->send(text) : SendFault{static_cast<int>(ErrorNumber::other), "Not connected"};
    if (fault) {
        report(copy, *fault);
        return false;
    }
    copy.ports.pauses.wait_until([&] { return connection->unsent() == 0; }, send_patience);
    return true;
}

void take_connection(NetworkState& network, std::shared_ptr<Stream> connection) {
    network.connection = std::move(connection);
    network.receiver = {};
}

void close_syncsock(Copy& copy) {
    NetworkState& network = copy.state.network;
    network.listener.reset();
    let_go(copy, std::exchange(network.connection, nullptr));
}

void drop_syncsock(NetworkState& network) {
    network.listener.reset();
    network.connection.reset();
}

void serve_syncsock(Copy& copy) {
    const auto handling = copy.state.network.HandlingIPData.try_hold();
    if (!handling) return;
    accept_client(copy);
    read_arrivals(copy);
    see_who_has_gone(copy);
}

void settle_held_bytes(Copy& copy) {
    take(copy, copy.state.network.receiver.poll(copy.ports.clock.monotonic()));
}

}  // namespace nimbry
