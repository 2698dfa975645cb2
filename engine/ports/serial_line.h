#pragma once

#include <string>
#include <vector>

#include "engine/ports/bytes.h"

namespace nimbry {

/// How an attempt to open the port ended. The number is the one that the port's message box shows.
enum class PortOpenResult : int {
    ok = 0,
    not_found = 8002,     ///< no such device
    already_open = 8005,  ///< this program has it open already
    locked = 8010,        ///< no right to it, or another program holds its lock
    failed = 8012,        ///< could not be opened for any other reason
};

/// What a line can report besides bytes.
enum class LineFault {
    framing,         ///< a byte without a proper stop bit (number 1004 of the classic serial events)
    overrun,         ///< the hardware lost bytes (1006)
    buffer_overrun,  ///< the receive buffer overflowed (1008)
    gone,            ///< the device went away or reading failed; the port has been closed
};

/// One serial port: 9600 baud, no parity, 8 data bits, 1 stop bit, raw, no flow control; RTS and DTR raised after every
/// open (a refusal by the device, as on a pseudo-terminal, does not matter).
///
/// When bytes arrive or a fault shows, the adapter calls the engine's event entries (core/engine.h); it never calls
/// from inside one of these functions.
class SerialLine {
public:
    virtual ~SerialLine() = default;

    /// Opens a device: "/dev/ttyS0", "/dev/serial/by-id/...", "COM3" or a pseudo-terminal. An open port is closed
    /// first.
    virtual PortOpenResult open(const std::string& device) = 0;

    /// Closes the port if it is open.
    virtual void close() = 0;

    [[nodiscard]] virtual bool is_open() const = 0;

    /// Takes everything that the system holds for the port, without waiting; empty when there is nothing or the port is
    /// closed.
    virtual Bytes take() = 0;

    /// The devices that could be opened, for a person to choose from: those with a name that stays the same wherever
    /// they are plugged in ("/dev/serial/by-id/...") first, under that name only; then the others. Looks anew at each
    /// call.
    [[nodiscard]] virtual std::vector<std::string> devices() const = 0;
};

}  // namespace nimbry
