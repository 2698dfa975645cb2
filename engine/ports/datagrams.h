#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "engine/ports/serial_line.h"

namespace nimbry {

/// Why a datagram could not be sent: the system's number and its description.
struct SendFault {
    int number = 0;
    std::string description;
};

/// One UDP socket (the engine's `DATAsock`). IPv4.
class Datagrams {
public:
    virtual ~Datagrams() = default;

    /// Binds the socket to a local port on all addresses, closing it first if it is open. False if the port is taken.
    virtual bool bind(std::uint16_t local_port) = 0;

    virtual void close() = 0;

    [[nodiscard]] virtual bool is_open() const = 0;

    /// Sends one datagram of `bytes` to `host` (dotted address; broadcast addresses are allowed). Nothing on success.
    virtual std::optional<SendFault> send(const std::string& host, std::uint16_t remote_port, const Bytes& bytes) = 0;
};

}  // namespace nimbry
