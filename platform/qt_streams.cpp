#include "platform/qt_streams.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <cerrno>
#include <system_error>

namespace nimbry::platform {

namespace {

/// A peer that sends without end fills no more than this; the rest stays with it.
constexpr qint64 most_held = qint64{256} * 1024;

QHostAddress address_of(const std::string& dotted) {
    return dotted.empty() ? QHostAddress(QHostAddress::AnyIPv4) : QHostAddress(QString::fromStdString(dotted));
}

SendFault system_fault(int number) {
    return {number, std::generic_category().message(number)};
}

class QtStream : public Stream {
public:
    QtStream(QtStreams& streams, std::unique_ptr<QTcpSocket> socket) : socket_(std::move(socket)) {
        socket_->setProxy(QNetworkProxy::NoProxy);  // looking for one would start a helper thread
        socket_->setReadBufferSize(most_held);
        const auto stir = [&streams] { streams.stir(); };
        QObject::connect(socket_.get(), &QTcpSocket::connected, socket_.get(), [this, stir] {
            send_at_once();
            stir();
        });
        QObject::connect(socket_.get(), &QTcpSocket::readyRead, socket_.get(), stir);
        QObject::connect(socket_.get(), &QTcpSocket::bytesWritten, socket_.get(), stir);
        QObject::connect(socket_.get(), &QTcpSocket::stateChanged, socket_.get(), stir);
        if (socket_->state() == QAbstractSocket::ConnectedState) send_at_once();
    }
    ~QtStream() override { socket_->disconnect(); }
    QtStream(const QtStream&) = delete;
    QtStream& operator=(const QtStream&) = delete;

    [[nodiscard]] StreamState state() const override {
        if (closed_) return StreamState::closed;
        if (socket_->bytesAvailable() > 0) return StreamState::connected;
        switch (socket_->state()) {
            case QAbstractSocket::HostLookupState:
            case QAbstractSocket::ConnectingState: return StreamState::connecting;
            case QAbstractSocket::ConnectedState: return StreamState::connected;
            default: return StreamState::closed;
        }
    }

    [[nodiscard]] std::string peer() const override { return peer_; }

    std::string take() override {
        if (closed_) return {};
        return socket_->readAll().toStdString();
    }

    std::optional<SendFault> send(std::string_view bytes) override {
        if (closed_ || socket_->state() != QAbstractSocket::ConnectedState) return system_fault(ENOTCONN);
        errno = 0;
        const bool taken = socket_->write(bytes.data(), static_cast<qint64>(bytes.size())) >= 0;
        socket_->flush();
        if (taken && socket_->state() == QAbstractSocket::ConnectedState) return std::nullopt;
        return system_fault(errno != 0 ? errno : EIO);
    }

    [[nodiscard]] std::size_t unsent() const override {
        return socket_->state() == QAbstractSocket::UnconnectedState
                   ? 0
                   : static_cast<std::size_t>(socket_->bytesToWrite());
    }

    void close() override {
        if (std::exchange(closed_, true)) return;
        // What the peer said and nobody read would turn the end into a reset, which throws away what is on its way.
        socket_->setReadBufferSize(0);
        socket_->readAll();
        if (socket_->state() == QAbstractSocket::ConnectedState) {
            socket_->disconnectFromHost();
        } else {
            socket_->abort();
        }
    }

private:
    void send_at_once() {
        socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        bool is_ipv4 = false;
        const QHostAddress address(socket_->peerAddress().toIPv4Address(&is_ipv4));
        peer_ = (is_ipv4 ? address : socket_->peerAddress()).toString().toStdString();
    }

    std::unique_ptr<QTcpSocket> socket_;
    std::string peer_;
    bool closed_ = false;  // by this side
};

class QtListener : public StreamListener {
public:
    explicit QtListener(QtStreams& streams) : streams_(streams) {
        server_.setProxy(QNetworkProxy::NoProxy);
        server_.setMaxPendingConnections(1);
        server_.setListenBacklogSize(1);
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [&streams] { streams.stir(); });
    }

    /// Nothing on success. On Unix the system lets a server have a port that old connections of it still linger on;
    /// Qt asks for that.
    std::optional<SendFault> listen(std::uint16_t port, const std::string& local_address) {
        const QHostAddress address = address_of(local_address);
        if (address.isNull()) return system_fault(EADDRNOTAVAIL);
        errno = 0;
        if (server_.listen(address, port)) return std::nullopt;
        return system_fault(errno != 0 ? errno : EADDRINUSE);
    }

    std::unique_ptr<Stream> accept() override {
        std::unique_ptr<QTcpSocket> socket(server_.nextPendingConnection());
        if (!socket) return nullptr;
        socket->setParent(nullptr);
        return std::make_unique<QtStream>(streams_, std::move(socket));
    }

private:
    QtStreams& streams_;
    QTcpServer server_;
};

}  // namespace

std::unique_ptr<Stream> QtStreams::connect(const std::string& host, std::uint16_t port,
                                           const std::string& local_address) {
    auto socket = std::make_unique<QTcpSocket>();
    QTcpSocket& raw = *socket;
    auto stream = std::make_unique<QtStream>(*this, std::move(socket));
    if (!local_address.empty() && !raw.bind(address_of(local_address))) return stream;
    raw.connectToHost(QString::fromStdString(host), port);
    return stream;
}

Listening QtStreams::listen(std::uint16_t port, const std::string& local_address) {
    auto listener = std::make_unique<QtListener>(*this);
    if (const auto fault = listener->listen(port, local_address)) return {nullptr, *fault};
    return {std::move(listener), {}};
}

/// From the next event: whoever hears of it may drop the socket that called.
void QtStreams::stir() {
    if (std::exchange(stirring_, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            stirring_ = false;
            if (stirred_) stirred_();
        },
        Qt::QueuedConnection);
}

}  // namespace nimbry::platform
