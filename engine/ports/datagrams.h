#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "engine/ports/bytes.h"
#include "engine/ports/send_fault.h"

namespace nimbry {

/// One datagram that has arrived.
struct Datagram {
    Bytes bytes;
    std::string sender;  ///< its address, dotted

    bool operator==(const Datagram&) const = default;
};

/// Whether other sockets of the machine may be bound to the same port: all of the sharing ones hear a broadcast, one of
/// them what is sent to the machine alone.
enum class PortUse { exclusive, shared };

/// One UDP socket (the engine's `DATAsock`). IPv4. It is never tied to one peer: whoever sends is heard.
///
/// When a datagram arrives the adapter calls the engine's event entry (core/engine.h), never from inside one of these
/// functions. It calls once, and again only after a datagram was received that came later: receive() until there is
/// none, or come back to it.
class Datagrams {
public:
    virtual ~Datagrams() = default;

    /// True if the system has a network, be it only that of the machine itself.
    [[nodiscard]] virtual bool IsNetworkInstalled() const = 0;

    /// Binds the socket to a local port, closing it first if it is open; what had queued up is thrown away. `address`
    /// is one of the machine's own, dotted; empty: all of them. False if the port is taken or the address is not ours.
    virtual bool bind(std::uint16_t local_port, const std::string& address, PortUse use) = 0;

    virtual void close() = 0;

    [[nodiscard]] virtual bool is_open() const = 0;

    /// Takes the datagram that arrived first; nothing when there is none. It may be empty.
    virtual std::optional<Datagram> receive() = 0;

    /// Sends one datagram of `bytes` to `host` (dotted address; broadcast addresses are allowed). Nothing on success.
    virtual std::optional<SendFault> send(const std::string& host, std::uint16_t remote_port, const Bytes& bytes) = 0;
};

}  // namespace nimbry
