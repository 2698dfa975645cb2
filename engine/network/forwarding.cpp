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

/// A failure, and the entry of the list that it is about; empty when it is about none.
struct Failure {
    SendFault fault;
    std::string entry;
};

/// Sends to all of them and returns the first failure.
std::optional<Failure> send_to_all(Copy& copy, const Bytes& frame) {
    const std::vector<std::string>& clients = copy.state.settings.iplist;
    Datagrams& socket = copy.ports.datasock;
    if (!clients.empty() && !socket.is_open() && !bind_server_port(copy))
        return Failure{{address_in_use, "Address in use"}, ""};
    std::optional<Failure> first;
    for (const std::string& client : clients) {
        const std::optional<SendFault> fault = send_to(socket, client, frame);
        if (fault && !first) first = Failure{*fault, client};
    }
    return first;
}

void report(Notices& notices, const Failure& failure) {
    const SendFault& fault = failure.fault;
    Balloon balloon;
    balloon.title = "Network Error";
    balloon.text = "Network error. Unable to send data to Nimbry client(s) " + fault.description + " (" +
                   std::to_string(fault.number) + ")";
    if (!failure.entry.empty()) balloon.text += "\r\nThe address is " + failure.entry;
    notices.balloon(balloon);
}

}  // namespace

void forwardgroup(Copy& copy, const Bytes& frame) {
    const MainSettings& settings = copy.state.settings;
    if (!settings.bcastnet || settings.fromnet || copy.state.run.ProgramClosing) return;
    copy.state.network.last_datagram = copy.ports.clock.computer_time();
    if (const auto failure = send_to_all(copy, frame)) report(copy.ports.notices, *failure);
}

}  // namespace nimbry
