#include "engine/core/serial_port.h"

#include <algorithm>
#include <array>

#include "engine/core/event.h"
#include "engine/core/exits.h"
#include "engine/core/initprog.h"
#include "engine/setup/comms_dialog.h"

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

/// The failure as a sentence of its own: in the box some go on in the next line.
std::string failure_sentence(PortOpenResult result) {
    std::string text = port_failure_text(static_cast<int>(result));
    if (text.ends_with(',')) text.pop_back();
    return text;
}

/// The failure with the device that it is about, in one line.
std::string failure_line(const WeatherState& state, PortOpenResult result) {
    return "COM Port Error, " + failure_sentence(result) + " (" + state.run.port_device + ")";
}

MessageBox failure_box(const WeatherState& state, PortOpenResult result) {
    return {.title = "Nimbry",
            .text = "COM Port Error,\r\n" + port_failure_text(static_cast<int>(result)) +
                    "\r\nClick Retry, or Cancel to Quit.",
            .icon = "!",
            .choices = Choices::retry_cancel,
            .detail = "The device is " + state.run.port_device,
            .other_choice = "Choose &port ..."};
}

/// True while no later opening has taken over from this one.
bool is_current(const Copy& copy, int opening) {
    return copy.state.run.port_opening == opening;
}

/// Lets a person choose another port, or make the copy a client. A port that was chosen now counts for more than the
/// one that the program was started with.
void ask_for_port(Copy& copy) {
    const MainSettings& settings = copy.state.settings;
    const std::string before = device_of(settings, chosen_port(settings));
    ask_in_comms_dialog(copy);
    if (device_of(settings, chosen_port(settings)) != before) copy.state.run.device.clear();
    if (settings.fromnet) initprog(copy);
}

/// Opens, repeating the same open as long as the person at the screen wants to. A later opening that takes over
/// meanwhile counts as a failure.
PortOpenResult open_with_box(Copy& copy) {
    const int opening = copy.state.run.port_opening;
    for (;;) {
        const PortOpenResult result = open_once(copy);
        if (result == PortOpenResult::ok || !copy.state.run.has_window) return result;
        const Answer answer = copy.ports.notices.box(failure_box(copy.state, result));
        // Nor is Cancel meant for a port that has been opened while the box stood there.
        if (!is_current(copy, opening)) return PortOpenResult::failed;
        if (answer == Answer::other) {
            ask_for_port(copy);
            if (!is_current(copy, opening)) return PortOpenResult::failed;
        } else if (answer != Answer::retry) {
            copy.log.event_or_nothing(" " + failure_line(copy.state, result) + ": cancelled");
            end_at_once(copy);
            throw WaitCancelled{};
        }
    }
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

/// Why the port is not open, for those who look: in the panel's table and as the tip of the status label.
void keep_trouble(WeatherState& state, const std::string& trouble) {
    state.comm.PortTrouble = trouble;
    state.panel.lblStatus.tip = trouble;
}

/// A notice about the port, beside the box where the silence of a line is told too.
void tell(Copy& copy, const std::string& text) {
    copy.ports.notices.balloon({.title = "Comms Error", .text = text, .icon = "!", .anchor = "TxtWindChill"});
}

void begin_listening(Copy& copy) {
    CommState& comm = copy.state.comm;
    keep_trouble(copy.state, "");
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
    keep_trouble(copy.state, "");
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
    keep_trouble(copy.state, failure_line(copy.state, result));
    tell(copy, copy.state.comm.PortTrouble + "\r\nNimbry tries again by itself.");
    start_event(copy, "initprog", [&copy, opening] {
        if (open_sooner_or_later(copy, opening)) begin_listening(copy);
    });
}

void line_lost(Copy& copy) {
    if (!copy.state.comm.SerComReady) return;
    close_serial_port(copy);
    const int opening = copy.state.run.port_opening;
    copy.log.event(" Serial port lost");
    keep_trouble(copy.state, "Serial port lost (" + device_of_this_run(copy.state) + ")");
    tell(copy, copy.state.comm.PortTrouble + "\r\nNimbry tries to open it again by itself.");
    start_event(copy, "OnComm", [&copy, opening] {
        if (!open_sooner_or_later(copy, opening)) return;
        copy.state.comm.SerComReady = true;
        keep_trouble(copy.state, "");
        copy.log.event(" Serial port opened again");
        copy.ports.notices.balloon({.title = "Nimbry Information",
                                    .text = "Serial port opened again (" + device_of_this_run(copy.state) + ")",
                                    .icon = "i"});
    });
}

}  // namespace nimbry
