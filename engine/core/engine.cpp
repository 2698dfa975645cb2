#include "engine/core/engine.h"

#include "engine/core/event.h"
#include "engine/core/exits.h"
#include "engine/core/start_up.h"
#include "engine/core/timer_ticks.h"
#include "engine/displays/notice_list.h"
#include "engine/network/live_groups.h"
#include "engine/network/syncsock.h"
#include "engine/station/oncomm.h"

namespace nimbry {

struct Engine::Parts {
    explicit Parts(const Ports& outside)
        : notices(outside.notices, state.notices, outside.clock),
          ports{outside.clock,   outside.pauses, outside.files,  outside.line,    outside.datasock,
                outside.streams, notices,        outside.sounds, outside.desktop, outside.transfers},
          ini(ports.files, "Nimbry.ini"),
          log(state, ports.clock, ports.files),
          copy{state, ports, ini, log, timers},
          oncomm(copy) {}

    WeatherState state;
    NoticeRecorder notices;
    Ports ports;
    clsIniFile ini;
    ProgramLog log;
    Timers timers;
    Copy copy;
    OnComm oncomm;
    int opening_seen = 0;  // the opening of the port that `oncomm` knows of

    /// Runs `work` as an event of the line. What was gathered from the port before it was last closed goes first.
    template <class Work>
    void line_event(Work work) {
        run_event(copy, "OnComm", [&] {
            if (opening_seen != state.run.port_opening) {
                opening_seen = state.run.port_opening;
                oncomm.line_opened();
            }
            work();
        });
    }

    [[nodiscard]] bool ended() const { return state.run.ProgramClosing || state.run.HaveError; }
};

Engine::Engine(const Ports& ports) : parts_(std::make_unique<Parts>(ports)) {}
Engine::~Engine() = default;

WeatherState& Engine::state() {
    return parts_->state;
}
const WeatherState& Engine::state() const {
    return parts_->state;
}
Copy& Engine::copy() {
    return parts_->copy;
}

void Engine::start(const StartOptions& options) {
    Copy& copy = parts_->copy;
    copy.state.run.has_window = options.has_window;
    copy.state.run.device = options.device;
    copy.state.comm.splashing = options.has_window;
    run_event(copy, "Load", [&] {
        program_entry(copy);
        load_main_window(copy);
        if (options.has_window) hold_splash(copy);
    });
}

void Engine::line_readable() {
    parts_->line_event([this] { parts_->oncomm.line_readable(); });
}

void Engine::line_fault(LineFault fault) {
    parts_->line_event([this, fault] { parts_->oncomm.line_fault(fault); });
}

void Engine::datagram_readable() {
    run_event(parts_->copy, "DATAsock", [this] { take_datagrams(parts_->copy); });
}

void Engine::streams_stirred() {
    run_event(parts_->copy, "syncsock", [this] { serve_syncsock(parts_->copy); });
}

std::optional<Instant> Engine::wake_at() const {
    if (parts_->ended()) return std::nullopt;
    std::optional<Instant> first;
    for (const std::optional<Instant>& due :
         {parts_->oncomm.wake_at(), parts_->timers.wake_at(), parts_->state.network.receiver.wake_at()}) {
        if (due && (!first || *due < *first)) first = due;
    }
    return first;
}

void Engine::wake() {
    const Instant now = parts_->ports.clock.monotonic();
    if (const std::optional<Instant> line = parts_->oncomm.wake_at(); line && *line <= now) {
        parts_->line_event([this] { parts_->oncomm.wake(); });
        return;
    }
    if (const auto held = parts_->state.network.receiver.wake_at(); held && *held <= now) {
        run_event(parts_->copy, "syncsock", [this] { settle_held_bytes(parts_->copy); });
        return;
    }
    if (const std::optional<TimerId> due = parts_->timers.take_due(now)) {
        run_event(parts_->copy, Timers::name(*due), [&] { timer_tick(parts_->copy, *due); });
    }
}

void Engine::menu_exit() {
    nimbry::menu_exit(parts_->copy);
}
void Engine::window_close() {
    nimbry::window_close(parts_->copy);
}

bool Engine::gone() const {
    return parts_->state.run.gone;
}
int Engine::exit_status() const {
    return parts_->state.run.HaveError ? 1 : 0;
}

}  // namespace nimbry
