#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/ports/pauses.h"
#include "platform/control_socket.h"

namespace nimbry::platform {

/// Answers nimbryctl for one running copy. Each request runs as a conversation of its own, so it may wait while the
/// copy goes on listening to its station.
///
/// Whatever comes over the socket, the copy is not held up and does not grow: a caller has `patience` to send one
/// request of `longest_request` bytes at most, one that does not take its answer is dropped, and no more than
/// `most_callers` are served at a time.
class ControlServer : public QObject {
public:
    static constexpr std::size_t most_callers = 16;
    /// Bytes of an answer that wait for a caller to read.
    static constexpr std::size_t most_unread = std::size_t{8} * 1024 * 1024;

    /// Does what a request asks for and returns the status that nimbryctl exits with. Arguments are texts of the
    /// engine. May wait.
    using Answering = std::function<int(const std::vector<std::string>& arguments, Asker& asker)>;

    /// Listens from here on. Only for the holder of the folder's lock. `pauses` must outlive this object, which must
    /// outlive its conversations (LoopPauses::finish()). Needs the QCoreApplication.
    ControlServer(const std::string& folder, Pauses& pauses, Answering answering,
                  std::chrono::milliseconds patience = std::chrono::seconds{10});
    ~ControlServer() override;

    /// Why nobody can reach this copy, in a few words; empty when it listens.
    [[nodiscard]] const std::string& error() const { return socket_.error(); }

    /// Callers that are connected now. For tests.
    [[nodiscard]] std::size_t callers() const { return callers_.size(); }

private:
    class Caller;

    void take_callers();
    void take_up(const std::shared_ptr<Caller>& caller, std::vector<std::string> arguments);
    void forget(const std::shared_ptr<Caller>& caller);

    ControlSocket socket_;
    Pauses& pauses_;
    Answering answering_;
    std::chrono::milliseconds patience_;
    std::unique_ptr<QSocketNotifier> waiting_;
    QTimer breath_;  ///< between two attempts while the system has no descriptor left
    std::vector<std::shared_ptr<Caller>> callers_;
};

}  // namespace nimbry::platform
