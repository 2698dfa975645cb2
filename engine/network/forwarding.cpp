#include "engine/network/forwarding.h"

#include <optional>

#include "engine/network/client_address.h"
#include "engine/network/start_network.h"

namespace nimbry {

namespace {

// What failures that the system never saw are reported as, by the classic numbers.
constexpr int invalid_argument = 10022;
constexpr int address_in_use = 10048;

/// An entry that somebody has written into the file by hand may be anything.
std::optional<SendFault> send_to(Datagrams& socket, const std::string& client, const Bytes& frame) {
    const std::optional<std::string> address = dotted_address(client);
    if (!address) return SendFault{invalid_argument, "Invalid argument"};
    return socket.send(*address, client_udp_port, frame);
}

/// Sends to all of them and returns the first failure.
std::optional<SendFault> send_to_all(Copy& copy, const Bytes& frame) {
    const std::vector<std::string>& clients = copy.state.settings.iplist;
    Datagrams& socket = copy.ports.datasock;
    if (!clients.empty() && !socket.is_open() && !bind_server_port(copy))
        return SendFault{address_in_use, "Address in use"};
    std::optional<SendFault> first;
    for (const std::string& client : clients) {
        const std::optional<SendFault> fault = send_to(socket, client, frame);
        if (!first) first = fault;
    }
    return first;
}

void report(Notices& notices, const SendFault& fault) {
    Balloon balloon;
    balloon.title = "Network Error";
    balloon.text = "Network error. Unable to send data to Nimbry client(s) " + fault.description + " (" +
                   std::to_string(fault.number) + ")";
    notices.balloon(balloon);
}

}  // namespace

void forwardgroup(Copy& copy, const Bytes& frame) {
    const MainSettings& settings = copy.state.settings;
    if (!settings.bcastnet || settings.fromnet || copy.state.run.ProgramClosing) return;
    copy.state.network.last_datagram = copy.ports.clock.computer_time();
    if (const auto fault = send_to_all(copy, frame)) report(copy.ports.notices, *fault);
}

}  // namespace nimbry
