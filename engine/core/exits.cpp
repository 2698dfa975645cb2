#include "engine/core/exits.h"

#include <functional>
#include <string>
#include <string_view>

#include "engine/core/file_wait.h"
#include "engine/core/switches.h"
#include "engine/displays/status_message.h"
#include "engine/graphs/graph_store.h"
#include "engine/network/syncsock.h"
#include "engine/publish/publishing.h"
#include "engine/records/save_extremes.h"

namespace nimbry {

namespace {

/// Runs one step of an exit. An error in it is passed over: there is no one left to report it, and the next step must
/// run.
void exit_step(const std::function<void()>& step) {
    try {
        step();
    } catch (const RunTimeError&) {
    } catch (const UnrecoverableError&) {
    }
}

void write_stop_line(Copy& copy, std::string_view word) {
    RunState& run = copy.state.run;
    if (!copy.ports.files.exists(std::string(ProgramLog::file))) return;
    if (!run.HaveError) run.ExitWord = word;
    copy.log.event_or_nothing(" Program stopped, " + run.ExitWord);
}

void let_go(Copy& copy) {
    copy.ports.line.close();
    copy.ports.datasock.close();
    drop_syncsock(copy.state.network);
    copy.timers.stop_all();
    copy.state.run.gone = true;
}

/// What both exits share, up to the stop line.
void save_and_stop(Copy& copy, std::string_view word) {
    RunState& run = copy.state.run;
    copy.ports.pauses.cancel_all();
    if (!run.HaveError) {
        exit_step([&] { save_first(copy, "savingrafs", run.savingrafs, [&] { savegrafdata(copy, "mnuExit1"); }); });
        exit_step([&] { save_first(copy, "tdaysaving", run.tdaysaving, [&] { SaveExtremes(copy); }); });
    }
    write_stop_line(copy, word);
}

}  // namespace

void menu_exit(Copy& copy) {
    if (copy.state.run.ProgramClosing) return;
    const Unhurried unhurried(copy.ports.pauses);
    copy.ports.sounds.play(std::string(click_sound));
    copy.state.run.ProgramClosing = true;
    save_and_stop(copy, "normal exit");
    exit_step([&] { offer_to_hang_up(copy); });
    let_go(copy);
}

void window_close(Copy& copy) {
    if (copy.state.run.ProgramClosing) return;
    const Unhurried unhurried(copy.ports.pauses);
    close_status_message(copy);
    copy.state.run.ProgramClosing = true;
    save_and_stop(copy, "forced exit (Windows closing)");
    let_go(copy);
}

void end_at_once(Copy& copy) {
    copy.state.run.ProgramClosing = true;
    copy.ports.pauses.cancel_all();
    let_go(copy);
}

void report_unrecoverable(Copy& copy, const UnrecoverableError& error) {
    RunState& run = copy.state.run;
    if (run.ProgramClosing || run.HaveError) return;
    run.HaveError = true;
    run.ExitWord = "Unrecoverable error " + std::to_string(static_cast<int>(error.number));
    // While the window loads, the number alone tells a newcomer too little.
    if (error.tag == "Load") run.ExitWord += " " + std::string(description(error.number));
    run.ExitWord += " encountered in " + error.tag;
    // Kept on purpose: the one routine whose report has no full stop.
    if (error.tag != "alanalyse") run.ExitWord += ".";
    copy.ports.notices.box(
        {.title = "Nimbry", .text = run.ExitWord + "\r\nNimbry will now exit.", .icon = "x", .choices = Choices::ok});
    menu_exit(copy);
}

}  // namespace nimbry
