#pragma once

#include <QHostAddress>
#include <QTcpSocket>
#include <cstdint>
#include <stdexcept>

namespace nimbry {

/// A port of the loopback at which nobody listens: whoever connects to it is refused. While this object lives nobody
/// else can have it.
class HeldPort {
public:
    HeldPort() {
        if (!socket_.bind(QHostAddress::LocalHost, 0)) throw std::runtime_error("no port can be had");
    }
    [[nodiscard]] std::uint16_t number() const { return socket_.localPort(); }

private:
    QTcpSocket socket_;
};

}  // namespace nimbry
