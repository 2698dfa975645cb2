#include "programs/nimbry/window_program.h"

#include <QGuiApplication>
#include <optional>
#include <string>
#include <utility>

#include "engine/alarms/alarms.h"
#include "engine/control/verbs.h"
#include "engine/core/engine.h"
#include "engine/core/event.h"
#include "engine/core/program_log.h"
#include "engine/core/program_log_pruning.h"
#include "engine/core/switches.h"
#include "engine/displays/additional_window.h"
#include "engine/displays/big_display.h"
#include "engine/displays/main_window.h"
#include "engine/graphs/graph_store.h"
#include "engine/graphs/graph_view.h"
#include "engine/publish/forced_run.h"
#include "engine/publish/internet_check.h"
#include "engine/records/viewers.h"
#include "engine/setup/changeover_choice.h"
#include "engine/setup/comms_dialog.h"
#include "platform/canberra_sounds.h"
#include "platform/control_server.h"
#include "platform/curl_transfers.h"
#include "platform/disk_files.h"
#include "platform/engine_loop.h"
#include "platform/loop_pauses.h"
#include "platform/qt_datagrams.h"
#include "platform/qt_serial_line.h"
#include "platform/qt_streams.h"
#include "platform/stderr_notices.h"
#include "platform/system_clock.h"
#include "platform/system_desktop.h"
#include "windows/almanac_chooser.h"
#include "windows/comms_window.h"
#include "windows/display_windows.h"
#include "windows/form1.h"
#include "windows/setup_dialogs.h"
#include "windows/small_windows.h"
#include "windows/splash.h"
#include "windows/window_notices.h"

namespace nimbry {
namespace {

using namespace nimbry::platform;
using namespace nimbry::windows;

/// A copy with its window: the outside, the engine on it, and the windows on the engine's state.
class WindowProgram {
public:
    WindowProgram(const std::string& folder, Sounds* sounds)
        : pauses_(clock_),
          files_(folder),
          notices_(pauses_),
          own_sounds_(files_, sound_folders(QCoreApplication::applicationDirPath().toStdString())),
          sounds_(sounds == nullptr ? static_cast<Sounds&>(own_sounds_) : *sounds),
          engine_(Ports{clock_, pauses_, files_, line_, datasock_, streams_, notices_, sounds_, desktop_, transfers_}),
          loop_(engine_, pauses_, clock_, {line_, datasock_, streams_}) {
        // The session ends once this returns, so nothing is put off to the event loop that need not wait.
        QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &loop_,
                         [this] { pauses_.start([this] { engine_.window_close(); }); });
    }

    ~WindowProgram() { notices_.set_main_window(nullptr); }
    WindowProgram(const WindowProgram&) = delete;
    WindowProgram& operator=(const WindowProgram&) = delete;

    /// Lets nimbryctl reach this copy.
    void open_control(const std::string& folder) {
        control_.emplace(folder, pauses_, [this](const std::vector<std::string>& arguments, Asker& asker) {
            return static_cast<int>(answer_request(copy(), arguments, asker));
        });
        if (!control_->error().empty()) {
            write_line_to_stderr("Nimbry: nimbryctl cannot reach this copy: " + control_->error());
        }
    }

    int run(const std::string& device) {
        // The first run's and that of a port that is not there, before there is a main window.
        notices_.set_opener("Form2", [this] { first_setup_.emplace(engine_.state(), comms_actions()).present(); });
        splash_.emplace();
        splash_->show();
        loop_.on_changed([this] { changed(); });
        return loop_.run({.has_window = true, .device = device});
    }

private:
    [[nodiscard]] Copy& copy() { return engine_.copy(); }

    /// A click on the window, as an event of the engine.
    template <class Work>
    std::function<void()> click(const char* tag, Work work) {
        return [this, tag, work] { start_event(copy(), tag, work); };
    }

    void changed() {
        if (splash_ && !engine_.state().comm.splashing && !engine_.gone()) show_main_window();
        if (form_) form_->state_changed();
        if (first_setup_) first_setup_->refresh();
        if (small_) small_->refresh();
        if (dialogs_) dialogs_->refresh();
        if (displays_) displays_->refresh();
    }

    void show_main_window() {
        splash_.reset();
        first_setup_.reset();
        form_.emplace(engine_.state(), actions());
        small_.emplace(engine_.state(), &*form_);
        small_->offer_to(notices_);
        small_->on_debug_closed(click("Menu", [this] { click_switch(copy(), *switch_named("mnuFTPdebug")); }));
        dialogs_.emplace(engine_.state(), accepted(), &*form_);
        notices_.set_opener("Form2", [this] { dialogs_->show_comms(); });
        displays_.emplace(engine_.state(), display_actions(), &*form_);
        notices_.set_main_window(&*form_);
        form_->show();
    }

    Form1::Actions actions() {
        Form1::Actions actions;
        actions.close = [this] { pauses_.start([this] { engine_.window_close(); }); };
        actions.moved = [this](bool minimised, bool in_tray) { place_window(engine_.state(), minimised, in_tray); };
        actions.click = [this] { sounds_.play(std::string(click_sound)); };
        actions.menu["mnuExit1"] = [this] { pauses_.start([this] { engine_.menu_exit(); }); };
        actions.menu["mnuProgLog"] = click("mnuProgLog", [this] {
            if (mnuProgLog(copy())) show_file_later(std::string(ProgramLog::file));
        });
        actions.menu["mnuDisplayLog"] = viewer("mnuDisplayLog", mnuDisplayLog);
        actions.menu["mnuDisplayAlmanac"] = viewer("mnuDisplayAlmanac", mnuDisplayAlmanac);
        actions.menu["mnuAutoReport"] = viewer("mnuAutoReport", mnuAutoReport);
        actions.menu["mnuClearProgLog"] = click("mnuClearProgLog", [this] { mnuClearProgLog(copy()); });
        actions.menu["mnuResetGraphs"] = click("mnuResetGraphs", [this] { resetgraphs(copy()); });
        actions.menu["mnuAdditional"] = [this] {
            start_event(copy(), "mnuAdditional", [this] { mnuAdditional(copy()); });
            displays_->show_additional();
        };
        actions.menu["mnuBIG"] = [this] {
            start_event(copy(), "mnuBIG", [this] { mnuBIG(copy()); });
            displays_->show_big();
        };
        actions.opens = opening_actions();
        actions.graphs = graph_actions();
        for (const Switch& each : switches()) {
            actions.menu[std::string(each.name)] = click("Menu", [this, &each] { click_switch(copy(), each); });
        }
        return actions;
    }

    /// The entries that only open a window; the main window sounds their click.
    MenuActions opening_actions() {
        MenuActions opens;
        opens["SetupComms"] = [this] { dialogs_->show_comms(); };
        opens["SetupUnits"] = [this] { dialogs_->show_units(); };
        opens["mnuAlarms"] = [this] { dialogs_->show_alarms(); };
        opens["mnuInternet"] = [this] { dialogs_->show_internet(); };
        opens["mnuLatLong"] = [this] { dialogs_->show_location(); };
        opens["mnuEditComment"] = [this] { dialogs_->show_comment(Comment::first); };
        opens["mnuEditComment2"] = [this] { dialogs_->show_comment(Comment::second); };
        opens["mnuEditDSR"] = [this] { dialogs_->show_rain_days(); };
        opens["mnuAlMonth"] = [this] {
            choose_almanac(&*form_, files_.path(""), [this](const std::string& AFname) {
                viewer("mnuAlMonth", [AFname](Copy& of) { return mnuAlMonth(of, AFname); })();
            });
        };
        opens["mnuFHelp"] = [this] { small_->show_help(); };
        opens["mnuAbout"] = [this] { small_->show_about(copy().ini.GetSetting("Main", "Version", "")); };
        return opens;
    }

    DisplayWindows::Actions display_actions() {
        return {.additional = {.to_front = display_event("NimbryAdditional", additional_comes_to_front),
                               .hide = display_event("NimbryAdditional", hide_additional),
                               .closed = display_event("NimbryAdditional", additional_closed)},
                .big_closed = display_event("NimbryBIG", big_display_closed),
                .accept_marquee = [this](const MarqueeDialog& values) {
                    start_event(copy(), "FrmMarquee", [this, values] { accept_marquee(copy(), values); });
                }};
    }

    /// What a person does at one of the displays; it shows what came of it at once.
    std::function<void()> display_event(const char* tag, void (*what)(Copy&)) {
        return [this, tag, what] {
            start_event(copy(), tag, [this, what] { what(copy()); });
            changed();
        };
    }

    /// What an accepted dialog leads to, as an event of the engine.
    SetupDialogs::Actions accepted() {
        const auto do_event = [this](const char* name, auto&& what) { start_event(copy(), name, what); };
        return {.accept_alarms =
                    [this, do_event](const AlarmsDialog& values) {
                        do_event("frmAlarms", [this, values] { accept_alarms(copy(), values); });
                    },
                .accept_location =
                    [this, do_event](const LocationDialog& values) {
                        do_event("NimbryLatlong", [this, values] { accept_location(copy(), values); });
                    },
                .units = units_actions(),
                .comms = comms_actions(),
                .internet = internet_actions(),
                .accept_comment =
                    [this, do_event](Comment which, const CommentDialog& values) {
                        do_event("NimbryComment", [this, which, values] { accept_comment(copy(), which, values); });
                    },
                .accept_rain_days =
                    [this, do_event](const RainDaysDialog& values) {
                        do_event("NimbryEditDSR", [this, values] { accept_rain_days(copy(), values); });
                    }};
    }

    CommsWindow::Actions comms_actions() {
        const auto do_event = [this](auto&& what) { start_event(copy(), "Form2", what); };
        const auto tell = [this, do_event](const std::optional<MessageBox>& box) {
            if (box) do_event([this, box] { notices_.box(*box); });
            return box.has_value();
        };
        CommsWindow::Actions actions;
        actions.serial_devices = [this] { return line_.devices(); };
        actions.opened = [this] { copy().state.setup.Form2.open = true; };
        actions.closed = [this] { copy().state.setup.Form2.open = false; };
        actions.ticked_role = [this, tell](bool& role) { tell(ticked_role(datasock_, role)); };
        actions.add_address = [tell](CommsDialog& values) { tell(add_address(values)); };
        actions.accepted = [this, do_event, tell](CommsDialog& values) {
            if (tell(press_command1(copy(), values))) return false;
            do_event([this, values] { accept_comms(copy(), values); });
            return true;
        };
        return actions;
    }

    InternetWindow::Actions internet_actions() {
        const auto do_event = [this](auto&& what) { start_event(copy(), "NimbryFTPSetup", what); };
        InternetWindow::Actions actions;
        actions.opened = [this] { copy().state.setup.FTP.open = true; };
        actions.closed = [this] { copy().state.setup.FTP.open = false; };
        actions.accepted = [this, do_event](const InternetDialog& values) {
            sounds_.play(std::string(click_sound));
            do_event([this, values] { accept_internet(copy(), values); });
        };
        actions.forced = [this, do_event](const InternetDialog& values, ForcedRun which) {
            do_event([this, values, which] {
                if (!accept_internet(copy(), values)) run_forced(copy(), which);
            });
        };
        actions.refused = [this, do_event](const std::string& message) {
            do_event([this, message] { copy().ports.notices.box({.text = message}); });
        };
        return actions;
    }

    UnitsWindow::Actions units_actions() {
        const auto do_event = [this](auto&& what) { start_event(copy(), "frmSetupUnits", what); };
        UnitsWindow::Actions actions;
        actions.opened = [this, do_event] {
            copy().state.setup.Units.open = true;
            do_event([this] {
                for (const MessageBox& warning : units_warnings(copy())) notices_.box(warning);
            });
        };
        actions.closed = [this] { copy().state.setup.Units.open = false; };
        actions.accepted = [this, do_event](const UnitsDialog& values) {
            do_event([this, values] { accept_units(copy(), values); });
        };
        actions.choose_rollover = [this, do_event](UnitsDialog& values, bool first_day) {
            if (const auto refusal = choose_rollover(copy(), values, first_day))
                do_event([this, box = *refusal] { notices_.box(box); });
        };
        actions.choose_changeover = [this, do_event](bool midnight) {
            do_event([this, midnight] { choose_changeover(copy(), midnight); });
        };
        actions.set_one_hour = [this, do_event](bool one_hour) {
            do_event([this, one_hour] {
                set_one_hour(copy(), one_hour);
                notices_.box(one_hour_warning());
            });
        };
        return actions;
    }

    GraphActions graph_actions() {
        // Each is an event of the engine; the window shows what came of it with its next frame.
        const auto event = [this](auto work) {
            start_event(copy(), "gPicture1", work);
            if (form_) form_->state_changed();
        };
        GraphActions actions;
        actions.click = [this, event](int pane) { event([this, pane] { click_graph(engine_.state(), pane); }); };
        actions.move = [this, event](double x) { event([this, x] { move_over_graph(engine_.state(), x); }); };
        actions.read = [this, event](int row) { event([this, row] { read_graph_row(engine_.state(), row); }); };
        actions.leave = [this, event] { event([this] { leave_graph(engine_.state()); }); };
        actions.redraw = [this, event] { event([this] { drawgraph(engine_.state()); }); };
        return actions;
    }

    /// A click on an entry that shows the file which the engine names, if it names one.
    template <class Entry>
    std::function<void()> viewer(const char* tag, Entry entry) {
        return click(tag, [this, entry] {
            if (const std::optional<std::string> file = entry(copy())) show_file_later(*file);
        });
    }

    /// On the main stack: a conversation's own is too small for a window.
    void show_file_later(const std::string& name) {
        QMetaObject::invokeMethod(
            &loop_,
            [this, name] {
                std::string bytes;
                if (files_.read(name, bytes) == FileResult::ok) small_->show_file(name, bytes);
            },
            Qt::QueuedConnection);
    }

    SystemClock clock_;
    LoopPauses pauses_;
    DiskFiles files_;
    QtSerialLine line_;
    QtDatagrams datasock_;
    QtStreams streams_;
    WindowNotices notices_;
    CanberraSounds own_sounds_;
    Sounds& sounds_;
    SystemDesktop desktop_;
    CurlTransfers transfers_{[this] { pauses_.look_now(); }};
    Engine engine_;
    std::optional<ControlServer> control_;
    EngineLoop loop_;
    std::optional<Splash> splash_;
    std::optional<CommsWindow> first_setup_;
    std::optional<Form1> form_;
    std::optional<SmallWindows> small_;
    std::optional<SetupDialogs> dialogs_;
    std::optional<DisplayWindows> displays_;
};

}  // namespace

int run_with_window(const std::string& folder, const std::string& device, bool has_lock, Sounds* sounds) {
    WindowProgram program(folder, sounds);
    if (has_lock) program.open_control(folder);
    return program.run(device);
}

}  // namespace nimbry
