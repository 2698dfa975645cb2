#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <utility>

#include "engine/core/engine.h"
#include "platform/exit_signals.h"
#include "platform/loop_pauses.h"
#include "platform/qt_datagrams.h"
#include "platform/qt_serial_line.h"
#include "platform/qt_streams.h"

namespace nimbry::platform {

/// The ports by which something reaches a copy from outside.
struct Inlets {
    QtSerialLine& line;
    QtDatagrams& datasock;
    QtStreams& streams;
};

/// Keeps an Engine running on the Qt event loop: hands it the events of its inlets, of its timers and of the signals,
/// each in a conversation of its own, and leaves the event loop when the engine has gone.
///
/// Whoever else has an event for the engine (a click, a request) starts a conversation on the same LoopPauses; this
/// object then looks by itself at what has become due.
class EngineLoop : public QObject {
public:
    /// All of these must outlive this object.
    EngineLoop(Engine& engine, LoopPauses& pauses, const Clock& clock, const Inlets& inlets);

    /// Starts the engine and runs the application's event loop until the engine has gone. Returns its exit status.
    int run(const Engine::StartOptions& options);

    /// `changed` is called on the main stack each time after an event of the engine has ended or begun to wait: for a
    /// window, which then looks at what there is to paint. One listener.
    void on_changed(std::function<void()> changed) { changed_ = std::move(changed); }

private:
    void look_ahead();

    Engine& engine_;
    LoopPauses& pauses_;
    const Clock& clock_;
    ExitSignals signals_;
    QTimer wake_;
    std::function<void()> changed_;
};

}  // namespace nimbry::platform
