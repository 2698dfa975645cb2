#include "engine/core/serial_port.h"

#include <algorithm>
#include <array>

#include "engine/core/event.h"
#include "engine/core/exits.h"

namespace nimbry {

namespace {

using namespace std::chrono_literals;

constexpr Milliseconds between_the_two_opens = 500ms;
constexpr std::array<Milliseconds, 5> retry_delays{1s, 2s, 5s, 10s, 30s};  // the last one for ever

struct FailureText {
    int number;
    const char* text;
};
// Kept on purpose: the last two and the general text, its spelling too, although no port of ours gives such a number.
constexpr FailureText failure_texts[] = {
    {8002, "Please check that the selected port exists"},
    {8005, "The selected COM port is already open,"},
    {8010, "The selected COM port is locked by another device,"},
    {8012, "The selected COM port could not be opened,"},
    {8013, "The selected COM port is already open,"},
    {8019, "The selected COM port is busy,"},
};

/// One open.
PortOpenResult open_once(Copy& copy) {
    std::string& device = copy.state.run.port_device;
    device = device_of_this_run(copy.state);
    return copy.ports.line.open(device);
}

/// Opens, repeating the same open as long as the person at the screen wants to.
PortOpenResult open_with_box(Copy& copy) {
    for (;;) {
        const PortOpenResult result = open_once(copy);
        if (result == PortOpenResult::ok || !copy.state.run.has_window) return result;
        const Answer answer =
            copy.ports.notices.box({.title = "Nimbry",
                                    .text = "COM Port Error,\r\n" + port_failure_text(static_cast<int>(result)) +
                                            "\r\nClick Retry, or Cancel to Quit.",
                                    .icon = "!",
                                    .choices = Choices::retry_cancel});
        if (answer == Answer::retry) continue;
        end_at_once(copy);
        throw WaitCancelled{};
    }
}

/// True while no later opening has taken over from this one.
bool is_current(const Copy& copy, int opening) {
    return copy.state.run.port_opening == opening;
}

/// The whole opening: open, empty, close, open, empty. Ends at the first open that fails; a later opening that takes
/// over counts as one.
PortOpenResult open_twice(Copy& copy, int opening, PortOpenResult (*open)(Copy&)) {
    SerialLine& line = copy.ports.line;
    if (const PortOpenResult first = open(copy); first != PortOpenResult::ok) return first;
    line.take();
    line.close();
    copy.ports.pauses.pause(between_the_two_opens);
    if (!is_current(copy, opening)) return PortOpenResult::failed;
    const PortOpenResult second = open(copy);
    if (second == PortOpenResult::ok) line.take();
    return second;
}

/// The failure as a sentence of its own: in the box some go on in the next line.
std::string failure_sentence(PortOpenResult result) {
    std::string text = port_failure_text(static_cast<int>(result));
    if (text.ends_with(',')) text.pop_back();
    return text;
}

void begin_listening(Copy& copy) {
    CommState& comm = copy.state.comm;
    comm.PortTrouble.clear();
    comm.SerComReady = true;
    comm.Rflagb = false;
    comm.ccheckflagb = false;
    copy.timers.start(TimerId::TimComFail, copy.ports.clock.monotonic());
}

/// Tries to open by the schedule. False when a later opening has taken over meanwhile.
bool open_sooner_or_later(Copy& copy, int opening) {
    for (std::size_t tries = 0;; ++tries) {
        copy.ports.pauses.pause(retry_delays[std::min(tries, retry_delays.size() - 1)]);
        if (!is_current(copy, opening)) return false;
        if (open_twice(copy, opening, open_once) == PortOpenResult::ok) return true;
        if (!is_current(copy, opening)) return false;
    }
}

}  // namespace

std::string port_failure_text(int number) {
    for (const FailureText& row : failure_texts) {
        if (row.number == number) return row.text;
    }
    return "(" + std::to_string(number) + ") has ocurred with the selected COM port,";
}

std::string device_of_this_run(const WeatherState& state) {
    if (state.settings.fromnet) return {};
    if (!state.run.device.empty()) return state.run.device;
    return device_of(state.settings, chosen_port(state.settings));
}

void close_serial_port(Copy& copy) {
    ++copy.state.run.port_opening;
    copy.state.comm.SerComReady = false;
    copy.state.comm.PortTrouble.clear();
    copy.ports.line.close();
}

void open_serial_port(Copy& copy) {
    close_serial_port(copy);
    const int opening = copy.state.run.port_opening;
    const PortOpenResult result = open_twice(copy, opening, open_with_box);
    if (!is_current(copy, opening)) return;
    if (result == PortOpenResult::ok) {
        begin_listening(copy);
        return;
    }
    copy.log.event(" COM Port Error, " + port_failure_text(static_cast<int>(result)));
    copy.state.comm.PortTrouble =
        "COM Port Error, " + failure_sentence(result) + " (" + device_of_this_run(copy.state) + ")";
    start_event(copy, "initprog", [&copy, opening] {
        if (open_sooner_or_later(copy, opening)) begin_listening(copy);
    });
}

void line_lost(Copy& copy) {
    if (!copy.state.comm.SerComReady) return;
    close_serial_port(copy);
    const int opening = copy.state.run.port_opening;
    copy.log.event(" Serial port lost");
    copy.state.comm.PortTrouble = "Serial port lost (" + device_of_this_run(copy.state) + ")";
    start_event(copy, "OnComm", [&copy, opening] {
        if (!open_sooner_or_later(copy, opening)) return;
        copy.state.comm.SerComReady = true;
        copy.state.comm.PortTrouble.clear();
        copy.log.event(" Serial port opened again");
    });
}

}  // namespace nimbry
