#pragma once

#include <string>
#include <string_view>

#include "engine/core/weather_state.h"
#include "engine/ports/clock.h"
#include "engine/ports/files.h"

namespace nimbry {

/// The dated event log `nbyprog.log`: one line an event, opened, written and closed each time. Texts are 8-bit, lines
/// end in CR LF.
class ProgramLog {
public:
    static constexpr std::string_view file = "nbyprog.log";

    ProgramLog(const WeatherState& state, const Clock& clock, Files& files)
        : state_(state), clock_(clock), files_(files) {}

    /// Appends the date and `message`, which brings its own leading blank: the station's time once it is known
    /// (`dtvar`, however old), else the computer's date followed by " (Computer time)". Throws RunTimeError when the
    /// log cannot be written.
    void event(std::string_view message);

    /// Appends the computer's date, " (Computer time)" and `message`, whatever the station says.
    void computer_event(std::string_view message);

    /// The start of a run: a separator of 52 asterisks, then " (Computer time) Program started" with its date.
    void started();

    /// The same as event(), but a log that cannot be written is passed over: for the error and exit paths.
    void event_or_nothing(std::string_view message) noexcept;

    /// The date that event() would write: "05 Oct 2026 14:00:10" or "05 Oct 2026 14:00:10 (Computer time)".
    [[nodiscard]] std::string when() const;

private:
    [[nodiscard]] std::string computer_when() const;
    FileResult append(std::string_view lines);

    const WeatherState& state_;
    const Clock& clock_;
    Files& files_;
};

}  // namespace nimbry
