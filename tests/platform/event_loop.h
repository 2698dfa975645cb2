#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <functional>

namespace nimbry::platform {

/// Lets events run until `condition` holds, for a minute at most. True when it holds.
inline bool run_events_until(const std::function<bool()>& condition) {
    QElapsedTimer since;
    since.start();
    while (!condition()) {
        if (since.hasExpired(60'000)) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    }
    return true;
}

/// Lets everything run that is pending now, and what that causes, without waiting for anything.
inline void run_pending_events() {
    for (int round = 0; round < 10; ++round) QCoreApplication::processEvents();
}

}  // namespace nimbry::platform
