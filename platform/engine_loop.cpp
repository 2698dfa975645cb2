#include "platform/engine_loop.h"

#include <QCoreApplication>

#include "platform/precise_timer.h"

namespace nimbry::platform {

EngineLoop::EngineLoop(Engine& engine, LoopPauses& pauses, const Clock& clock, const Inlets& inlets)
    : engine_(engine),
      pauses_(pauses),
      clock_(clock),
      signals_([this] { pauses_.start([this] { engine_.menu_exit(); }); },
               [this] { pauses_.start([this] { engine_.window_close(); }); }) {
    wake_.setSingleShot(true);
    wake_.setTimerType(Qt::PreciseTimer);
    connect(&wake_, &QTimer::timeout, this, [this] { pauses_.start([this] { engine_.wake(); }); });
    inlets.line.on_readable([this] { pauses_.start([this] { engine_.line_readable(); }); });
    inlets.datasock.on_readable([this] { pauses_.start([this] { engine_.datagram_readable(); }); });
    inlets.streams.on_stir([this] { pauses_.start([this] { engine_.streams_stirred(); }); });
    inlets.line.on_fault([this](LineFault fault) { pauses_.start([this, fault] { engine_.line_fault(fault); }); });
    pauses_.on_settled([this] { look_ahead(); });
}

int EngineLoop::run(const Engine::StartOptions& options) {
    QMetaObject::invokeMethod(
        this, [this, options] { pauses_.start([this, options] { engine_.start(options); }); }, Qt::QueuedConnection);
    QCoreApplication::exec();
    pauses_.finish();
    return engine_.exit_status();
}

void EngineLoop::look_ahead() {
    if (changed_) changed_();
    if (engine_.gone()) {
        QCoreApplication::quit();
        return;
    }
    if (const std::optional<Instant> due = engine_.wake_at()) {
        arm_for(wake_, *due, clock_.monotonic());
    } else {
        wake_.stop();
    }
}

}  // namespace nimbry::platform
