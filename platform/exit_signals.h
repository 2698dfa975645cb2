#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace nimbry::platform {

/// Turns the signals that ask a program to end into events of the event loop. Writing to a pipe that nobody reads and
/// reaching a limit on file sizes no longer end the program: the write fails instead. One object a process.
class ExitSignals : public QObject {
public:
    /// `interrupted` is called for SIGINT, `terminated` for SIGTERM and SIGHUP, each time one arrives. Needs the
    /// QCoreApplication.
    ExitSignals(std::function<void()> interrupted, std::function<void()> terminated);
    /// From here on the signals do nothing: the program is at its end already.
    ~ExitSignals() override;

private:
    void deliver();

    std::function<void()> interrupted_;
    std::function<void()> terminated_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace nimbry::platform
