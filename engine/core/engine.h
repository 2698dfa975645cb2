#pragma once

#include <memory>
#include <optional>
#include <string>

#include "engine/core/copy.h"
#include "engine/core/ports.h"

namespace nimbry {

/// One running copy of Nimbry without its outside: the state and everything that happens to it.
///
/// The program makes the ports and one Engine, and then hands it events, each from a conversation of its own
/// (Pauses::start), on one thread. An event that finds the program closing does nothing. An error that a routine cannot
/// go on from ends in the report and the exit; no exception but WaitCancelled leaves an event.
class Engine {
public:
    /// `ports` and what they refer to must outlive the engine. Nothing is asked of them before start().
    explicit Engine(const Ports& ports);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    [[nodiscard]] WeatherState& state();
    [[nodiscard]] const WeatherState& state() const;
    [[nodiscard]] Copy& copy();

    /// How the start goes in this program.
    struct StartOptions {
        bool has_window = false;  ///< the first-run setup window can be shown, and a splash is held for 5 s
        std::string device;       ///< for this run, instead of the chosen port's device; empty: by the settings
    };

    /// Reads the settings, stamps the version key, writes the start line, and opens the port (or, as a client, the
    /// network). Returns when the copy is running: with a window that is the end of the splash. Waits.
    void start(const StartOptions& options);

    /// Bytes have arrived at the serial line.
    void line_readable();
    /// The serial line reported a fault.
    void line_fault(LineFault fault);

    /// A datagram has arrived.
    void datagram_readable();
    /// Something has happened at one of the streams (ports/streams.h): a connection has come or stands, bytes have
    /// arrived, a peer has closed. Which one is not told: whoever holds a stream looks at it.
    void streams_stirred();

    /// When wake() wants to be called next: the nearest timer tick or settling time; nothing when there is none.
    [[nodiscard]] std::optional<Instant> wake_at() const;
    /// Does one thing that is due. Call it, each time in a conversation of its own, until wake_at() lies in the future.
    void wake();

    /// The menu's exit, SIGINT, `nimbryctl stop`: "normal exit".
    void menu_exit();
    /// The window's close mark, SIGTERM, SIGHUP, the session's end: "forced exit (Windows closing)".
    void window_close();

    /// True when an exit has run to its end: the program may leave its event loop.
    [[nodiscard]] bool gone() const;
    /// 0 after a normal exit, 1 after an unrecoverable error.
    [[nodiscard]] int exit_status() const;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace nimbry
