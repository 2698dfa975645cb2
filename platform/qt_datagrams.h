#pragma once

#include <QObject>
#include <QUdpSocket>
#include <functional>
#include <utility>

#include "engine/ports/datagrams.h"

namespace nimbry::platform {

/// One UDP socket through QUdpSocket: IPv4, no proxy, broadcast allowed, both ways. Needs the QCoreApplication.
class QtDatagrams : public QObject, public Datagrams {
public:
    QtDatagrams();

    [[nodiscard]] bool IsNetworkInstalled() const override;
    bool bind(std::uint16_t local_port, const std::string& address, PortUse use) override;
    void close() override;
    [[nodiscard]] bool is_open() const override;
    std::optional<Datagram> receive() override;
    std::optional<SendFault> send(const std::string& host, std::uint16_t remote_port, const Bytes& bytes) override;

    /// `readable` is called from the event loop, from an event of this object's own.
    void on_readable(std::function<void()> readable) { readable_ = std::move(readable); }

private:
    std::function<void()> readable_;
    QUdpSocket socket_;
};

}  // namespace nimbry::platform
