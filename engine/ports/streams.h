#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/ports/send_fault.h"

namespace nimbry {

/// What a socket is doing, by the numbers of the classic socket states.
enum class StreamState : int {
    closed = 0,      ///< never connected, closed by either side, or failed
    listening = 2,   ///< a listener that waits for a connection
    connecting = 6,  ///< the name is being looked up, or the peer has not answered yet
    connected = 7,
};

/// One TCP connection. Whoever holds it owns it: destroying it drops the connection, and with it what was not sent yet.
///
/// Small pieces are not held back (TCP_NODELAY). No call waits; a conversation waits for a state or for bytes with
/// Pauses::wait_until(). Something new is also told by the engine's event entry (core/engine.h), never from inside one
/// of these functions.
class Stream {
public:
    virtual ~Stream() = default;

    /// `connecting` until the peer has answered, then `connected`, then `closed`. A connection that the peer has closed
    /// or that has failed is still `connected` while bytes of it are left to take().
    [[nodiscard]] virtual StreamState state() const = 0;

    /// The peer's address, dotted; empty before the connection stands.
    [[nodiscard]] virtual std::string peer() const = 0;

    /// Takes what has arrived, up to some hundred kilobytes a call; the rest stays held back at the peer meanwhile.
    /// Empty when there is nothing.
    virtual std::string take() = 0;

    /// Hands bytes to the system, in one write. Nothing on success, which does not mean that the peer has them.
    virtual std::optional<SendFault> send(std::string_view bytes) = 0;

    /// Bytes handed over that the system has not taken yet.
    [[nodiscard]] virtual std::size_t unsent() const = 0;

    /// Ends the connection from this side: what is unsent still goes out, then the end. The state is `closed` from now
    /// on. Destroying the object before unsent() is 0 loses the rest.
    virtual void close() = 0;
};

/// An open door for TCP connections; destroying it closes the door and drops who waits there. Connections that it has
/// given away live on.
class StreamListener {
public:
    virtual ~StreamListener() = default;

    /// The connection that came first; null when none has come.
    virtual std::unique_ptr<Stream> accept() = 0;
};

/// A listener, or why there is none.
struct Listening {
    std::unique_ptr<StreamListener> listener;
    SendFault fault{};  ///< when there is no listener
};

/// TCP connections of both directions.
class Streams {
public:
    virtual ~Streams() = default;

    /// Begins a connection to `host` (a name or a dotted address) from `local_address` (dotted; empty: the system's
    /// choice) and any local port. Never null: one that cannot come about ends `closed`, sooner or later.
    virtual std::unique_ptr<Stream> connect(const std::string& host, std::uint16_t port,
                                            const std::string& local_address = "") = 0;

    /// Opens a door at a local port, IPv4; `local_address` empty: on all addresses. One connection may wait at it
    /// (backlog 1), and the port can be had again at once after a connection that it gave was closed.
    virtual Listening listen(std::uint16_t port, const std::string& local_address = "") = 0;
};

}  // namespace nimbry
