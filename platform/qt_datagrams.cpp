#include "platform/qt_datagrams.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <cerrno>
#include <system_error>
#include <utility>

namespace nimbry::platform {

namespace {

// Far more than any group has. Of a longer datagram this much is taken, which is still too long to be one.
constexpr std::size_t longest_datagram = 2048;

}  // namespace

QtDatagrams::QtDatagrams() {
    socket_.setProxy(QNetworkProxy::NoProxy);  // looking for one would start a helper thread
    connect(
        &socket_, &QUdpSocket::readyRead, this,
        [this] {
            if (readable_) readable_();
        },
        Qt::QueuedConnection);
}

bool QtDatagrams::IsNetworkInstalled() const {
    QUdpSocket probe;
    probe.setProxy(QNetworkProxy::NoProxy);
    return probe.bind(QHostAddress(QHostAddress::AnyIPv4), 0);
}

bool QtDatagrams::bind(std::uint16_t local_port, const std::string& address, PortUse use) {
    close();
    const QHostAddress local =
        address.empty() ? QHostAddress(QHostAddress::AnyIPv4) : QHostAddress(QString::fromStdString(address));
    if (local.protocol() != QAbstractSocket::IPv4Protocol) return false;
    const QAbstractSocket::BindMode mode = use == PortUse::shared
                                               ? QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint
                                               : QAbstractSocket::BindMode(QAbstractSocket::DontShareAddress);
    return socket_.bind(local, local_port, mode);
}

void QtDatagrams::close() {
    socket_.abort();
}

bool QtDatagrams::is_open() const {
    return socket_.state() != QAbstractSocket::UnconnectedState;
}

std::optional<Datagram> QtDatagrams::receive() {
    if (!is_open()) return std::nullopt;
    Bytes bytes(longest_datagram);
    QHostAddress sender;
    // Not receiveDatagram(): where nothing has come it returns without a look at the socket, and Qt, which counts on
    // that look after each readyRead(), never tells of another datagram.
    const qint64 size =
        socket_.readDatagram(reinterpret_cast<char*>(bytes.data()), static_cast<qint64>(bytes.size()), &sender);
    if (size < 0) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(size));
    return Datagram{std::move(bytes), sender.toString().toStdString()};
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
