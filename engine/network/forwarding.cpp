#include "engine/network/forwarding.h"

#include <optional>

#include "engine/network/client_address.h"
#include "engine/network/start_network.h"

namespace nimbry {

namespace {

/// What a bind that failed is reported as: the classic number of an address that is in use.
constexpr int address_in_use = 10048;

/// Sends to all of them and returns the first failure.
std::optional<SendFault> send_to_all(Copy& copy, const Bytes& frame) {
    const std::vector<std::string>& clients = copy.state.settings.iplist;
    Datagrams& socket = copy.ports.datasock;
    if (!clients.empty() && !socket.is_open() && !bind_server_port(copy))
        return SendFault{address_in_use, "Address in use"};
    std::optional<SendFault> first;
    for (const std::string& client : clients) {
        // An entry that is no address goes as it is: the socket refuses it.
        const std::optional<SendFault> fault =
            socket.send(dotted_address(client).value_or(client), client_udp_port, frame);
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
