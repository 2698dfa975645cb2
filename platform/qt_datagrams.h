#pragma once

#include <QUdpSocket>

#include "engine/ports/datagrams.h"

namespace nimbry::platform {

/// One UDP socket through QUdpSocket: IPv4, no proxy, broadcast allowed. Needs the QCoreApplication.
class QtDatagrams : public Datagrams {
public:
    QtDatagrams();

    bool bind(std::uint16_t local_port) override;
    void close() override;
    [[nodiscard]] bool is_open() const override;
    std::optional<SendFault> send(const std::string& host, std::uint16_t remote_port, const Bytes& bytes) override;

private:
    QUdpSocket socket_;
};

}  // namespace nimbry::platform
