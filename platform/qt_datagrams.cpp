#include "platform/qt_datagrams.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <cerrno>
#include <system_error>

namespace nimbry::platform {

QtDatagrams::QtDatagrams() {
    socket_.setProxy(QNetworkProxy::NoProxy);  // looking for one would start a helper thread
}

bool QtDatagrams::bind(std::uint16_t local_port) {
    close();
    return socket_.bind(QHostAddress(QHostAddress::AnyIPv4), local_port, QAbstractSocket::DontShareAddress);
}

void QtDatagrams::close() {
    socket_.abort();
}

bool QtDatagrams::is_open() const {
    return socket_.state() != QAbstractSocket::UnconnectedState;
}

std::optional<SendFault> QtDatagrams::send(const std::string& host, std::uint16_t remote_port, const Bytes& bytes) {
    const auto fault = [](int number) { return SendFault{number, std::generic_category().message(number)}; };

    const QHostAddress address(QString::fromLatin1(host.data(), static_cast<qsizetype>(host.size())));
    if (address.protocol() != QAbstractSocket::IPv4Protocol) return fault(EINVAL);

    errno = 0;
    const auto size = static_cast<qint64>(bytes.size());
    if (socket_.writeDatagram(reinterpret_cast<const char*>(bytes.data()), size, address, remote_port) == size)
        return std::nullopt;
    // Qt's own text says the same for every cause; the system's names it.
    return fault(errno != 0 ? errno : EIO);
}

}  // namespace nimbry::platform
