#include "platform/control_server.h"

#include <sys/socket.h>

#include <QLocalSocket>
#include <cerrno>
#include <string_view>
#include <utility>

#include "engine/control/verb_status.h"
#include "platform/control_protocol.h"
#include "platform/text_bytes.h"

namespace nimbry::platform {

namespace {

// A screen is skipped while this much of the ones before has not been read.
constexpr qint64 screens_unread = qint64{256} * 1024;

/// Tells a caller that there is no room, as far as its socket takes the few bytes at once.
void turn_away(const Descriptor& caller) {
    const QByteArray answer = answer_line({AnswerPiece::Kind::err, "Too many requests at a time: try again", 0}) +
                              answer_line({AnswerPiece::Kind::status, "", static_cast<int>(VerbStatus::failed)});
    (void)::send(caller.number(), answer.data(), static_cast<std::size_t>(answer.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
}

}  // namespace

/// One connection: collects the request, takes the pieces of the answer. Shared by the server, while it is connected,
/// and by the conversation that answers it.
class ControlServer::Caller : public QObject, public Asker, public std::enable_shared_from_this<Caller> {
public:
    Caller(ControlServer& server, Descriptor connection) : server_(server) {
        socket_.setReadBufferSize(static_cast<qint64>(longest_request));
        socket_.setSocketDescriptor(connection.release());
        deadline_.setSingleShot(true);
        connect(&deadline_, &QTimer::timeout, this, [this] { socket_.abort(); });
        connect(&socket_, &QLocalSocket::readyRead, this, [this] { collect(); });
        connect(&socket_, &QLocalSocket::bytesWritten, this, [this] { progress(); });
        connect(&socket_, &QLocalSocket::disconnected, this, [this] { leave(); });
        deadline_.start(server_.patience_);
        // What came together with the connection gives no signal of its own.
        QMetaObject::invokeMethod(
            this, [this] { collect(); }, Qt::QueuedConnection);
    }

    void print(std::string_view text) override { put({AnswerPiece::Kind::out, std::string(text), 0}); }
    void complain(std::string_view line) override { put({AnswerPiece::Kind::err, std::string(line), 0}); }
    void show(const std::vector<std::string>& layouts) override {
        if (socket_.bytesToWrite() <= screens_unread) put({AnswerPiece::Kind::screen, "", 0, layouts});
    }
    [[nodiscard]] bool listening() const override { return socket_.state() == QLocalSocket::ConnectedState; }

    /// The end of the answer. The connection closes when the caller has taken it.
    void finish(int status) {
        put({AnswerPiece::Kind::status, "", status});
        finished_ = true;
        deadline_.start(server_.patience_);
        socket_.disconnectFromServer();
    }

private:
    void collect() {
        if (asked_ || !listening()) return;
        request_ += socket_.read(static_cast<qint64>(longest_request) - request_.size());
        const qsizetype end = request_.indexOf('\n');
        if (end < 0) {
            if (request_.size() >= static_cast<qsizetype>(longest_request)) refuse("The request is too long");
            return;
        }
        asked_ = true;
        deadline_.stop();
        auto arguments = parse_request(request_.left(end));
        request_.clear();
        if (arguments) {
            for (std::string& argument : *arguments) argument = engine_text_of_utf8(argument);
            server_.take_up(shared_from_this(), std::move(*arguments));
        } else {
            refuse("This is no request");
        }
    }

    void refuse(std::string_view why) {
        asked_ = true;
        complain(why);
        finish(static_cast<int>(VerbStatus::bad_usage));
    }

    void put(const AnswerPiece& piece) {
        if (finished_ || !listening()) return;
        socket_.write(answer_line(piece));
        if (socket_.bytesToWrite() > static_cast<qint64>(most_unread)) {
            socket_.abort();
        } else {
            socket_.flush();
        }
    }

    /// The server lets go, but not from within the socket's own signal.
    void leave() {
        if (auto self = weak_from_this().lock()) {
            QMetaObject::invokeMethod(
                &server_, [&server = server_, self = std::move(self)] { server.forget(self); }, Qt::QueuedConnection);
        }
    }

    /// A caller that reads, however slowly, may go on reading.
    void progress() {
        if (finished_) deadline_.start(server_.patience_);
    }

    ControlServer& server_;
    QLocalSocket socket_;
    QTimer deadline_;
    QByteArray request_;
    bool asked_ = false;     // the request is complete, or refused
    bool finished_ = false;  // the answer is complete
};

ControlServer::ControlServer(const std::string& folder, Pauses& pauses, Answering answering,
                             std::chrono::milliseconds patience)
    : socket_(folder), pauses_(pauses), answering_(std::move(answering)), patience_(patience) {
    if (socket_.number() < 0) return;
    waiting_ = std::make_unique<QSocketNotifier>(socket_.number(), QSocketNotifier::Read);
    connect(waiting_.get(), &QSocketNotifier::activated, this, [this] { take_callers(); });
    breath_.setSingleShot(true);
    breath_.setInterval(std::chrono::seconds{1});
    connect(&breath_, &QTimer::timeout, this, [this] { waiting_->setEnabled(true); });
}

ControlServer::~ControlServer() = default;

void ControlServer::take_callers() {
    // A storm of callers gets no more than its turn; the notifier calls again.
    for (std::size_t taken = 0; taken < most_callers; ++taken) {
        Descriptor connection = socket_.accept();
        if (!connection) {
            if (errno == EPERM || errno == EINTR || errno == ECONNABORTED) continue;
            if (errno != EAGAIN) {
                // The connection stays there, so the notifier would report it without pause.
                waiting_->setEnabled(false);
                breath_.start();
            }
            return;
        }
        if (callers_.size() >= most_callers) {
            turn_away(connection);
            continue;
        }
        callers_.push_back(std::make_shared<Caller>(*this, std::move(connection)));
    }
}

void ControlServer::take_up(const std::shared_ptr<Caller>& caller, std::vector<std::string> arguments) {
    // Not from within the socket's own signal: the conversation may close that socket.
    QMetaObject::invokeMethod(
        this,
        [this, caller, arguments = std::move(arguments)] {
            pauses_.start([this, caller, arguments] { caller->finish(answering_(arguments, *caller)); });
        },
        Qt::QueuedConnection);
}

void ControlServer::forget(const std::shared_ptr<Caller>& caller) {
    std::erase(callers_, caller);
}

}  // namespace nimbry::platform
