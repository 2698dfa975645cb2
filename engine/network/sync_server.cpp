#include "engine/network/sync_server.h"

#include <memory>
#include <string>
#include <utility>

#include "engine/core/event.h"
#include "engine/core/file_wait.h"
#include "engine/core/run_time_error.h"
#include "engine/graphs/graph_file.h"
#include "engine/graphs/graph_store.h"
#include "engine/network/rain_history.h"
#include "engine/network/sync_settings.h"
#include "engine/network/syncsock.h"
#include "engine/records/almanac_file.h"
#include "engine/records/day_files.h"
#include "engine/records/save_extremes.h"

namespace nimbry {

namespace {

using Connection = std::shared_ptr<Stream>;

// The pauses keep commands and content apart at the receiver.
constexpr Milliseconds before_a_file{300};
constexpr Milliseconds between_pieces{10};
constexpr Milliseconds before_the_end{10};
constexpr std::size_t piece_size = 8192;

/// The answer to one request for a file.
struct FileRequest {
    Connection connection;
    std::uint64_t number;
    SyncCommand command;
};

/// Nobody waits for the answer any more.
bool is_over(const Copy& copy, const FileRequest& request) {
    const NetworkState& network = copy.state.network;
    return network.connection != request.connection || network.file_requests != request.number;
}

/// Brings the requested file up to date, and returns its name.
std::string prepare(Copy& copy, SyncCommand command) {
    RunState& run = copy.state.run;
    switch (command) {
        case SyncCommand::RequestGraphFile:
            save_first(copy, "savingrafs", run.savingrafs, [&] { savegrafdata(copy, "syncsock"); });
            return std::string(graph_file);
        case SyncCommand::RequestTdayFile:
            save_first(copy, "tdaysaving", run.tdaysaving, [&] { SaveExtremes(copy); });
            return std::string(today_file);
        case SyncCommand::RequestYdayFile: return std::string(yesterday_file);
        case SyncCommand::RequestRainLH:
            require(copy.ports.files.rewrite(std::string(rain_history_file), rain_history_text(copy.state.rain)));
            return std::string(rain_history_file);
        case SyncCommand::RequestAlmanac: return std::string(almanac_log);
        default: break;
    }
    require(copy.ports.files.rewrite(std::string(sync_cfg), sync_cfg_text(copy.ini)));
    return std::string(sync_cfg);
}

void SendFile(Copy& copy, const FileRequest& request, const std::string& name) {
    if (!copy.ports.files.exists(name)) {
        SendData(copy, request.connection, text_of(SyncCommand::InvalidFile));
        return;
    }
    copy.ports.pauses.pause(before_a_file);
    if (is_over(copy, request)) return;
    // Read at once: the file may be written again while it is being sent.
    std::string content;
    require(copy.ports.files.read(name, content));
    for (std::size_t at = 0; at < content.size(); at += piece_size) {
        if (!SendData(copy, request.connection, std::string_view(content).substr(at, piece_size))) return;
        copy.ports.pauses.pause(between_pieces);
        if (is_over(copy, request)) return;
    }
    copy.ports.pauses.pause(before_the_end);
    if (is_over(copy, request)) return;
    SendData(copy, request.connection, text_of(SyncCommand::filended));
}

void greet(Copy& copy, const Connection& client) {
    SendData(copy, client, text_of(SyncCommand::AcceptCNX));
    copy.log.event_or_nothing(" A client machine at " + client->peer() + " connected");
}

}  // namespace

void accept_client(Copy& copy) {
    NetworkState& network = copy.state.network;
    while (network.listener) {
        Connection client = network.listener->accept();
        if (!client) return;
        if (!copy.state.havegrafdata) continue;
        network.listener.reset();
        take_connection(network, client);
        start_event(copy, "syncsock", [&copy, client] { greet(copy, client); });
    }
}

void tell_status(Copy& copy) {
    const bool busy = copy.state.comm.changebusy || copy.state.publish.uloadftpbusy;
    start_event(copy, "syncsock", [&copy, client = copy.state.network.connection, busy] {
        SendData(copy, client, text_of(busy ? SyncCommand::ServerIsBusy : SyncCommand::ServerIsOK));
    });
}

void answer_file_request(Copy& copy, SyncCommand command) {
    NetworkState& network = copy.state.network;
    const FileRequest request{network.connection, ++network.file_requests, command};
    start_event(copy, "syncsock", [&copy, request] {
        try {
            const std::string name = prepare(copy, request.command);
            if (!is_over(copy, request)) SendFile(copy, request, name);
        } catch (const RunTimeError&) {  // the client's time runs out, and it asks again
        }
    });
}

}  // namespace nimbry
