// nimbryd: a running copy of Nimbry without a window.

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "engine/control/verbs.h"
#include "engine/core/engine.h"
#include "platform/command_line.h"
#include "platform/control_server.h"
#include "platform/curl_transfers.h"
#include "platform/disk_files.h"
#include "platform/engine_loop.h"
#include "platform/instance_lock.h"
#include "platform/loop_pauses.h"
#include "platform/program_folder.h"
#include "platform/qt_datagrams.h"
#include "platform/qt_serial_line.h"
#include "platform/qt_streams.h"
#include "platform/stderr_notices.h"
#include "platform/system_clock.h"
#include "platform/system_desktop.h"
#include "programs/exit_status.h"

namespace {

using namespace nimbry;
using namespace nimbry::platform;

/// Standard error carries notices and boxes only; what Qt has to say (a device without control lines, say) is known
/// here.
void drop_message(QtMsgType, const QMessageLogContext&, const QString&) {}

/// Started without one of its three standard files, the program would write notices into whatever file it opens first.
void open_missing_standard_files() {
    int descriptor = -1;
    do {
        descriptor = open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0) close(descriptor);
}

/// Runs a copy in `folder` until it has gone. nimbryctl can reach it when it `has_lock` of that folder.
int run_copy(const std::string& folder, const std::string& device, bool has_lock) {
    SystemClock clock;
    LoopPauses pauses(clock);
    DiskFiles files(folder);
    QtSerialLine line;
    QtDatagrams datasock;
    QtStreams streams;
    StderrNotices notices;
    SilentSounds sounds;
    SystemDesktop desktop;
    CurlTransfers transfers([&pauses] { pauses.look_now(); });
    Engine engine(Ports{clock, pauses, files, line, datasock, streams, notices, sounds, desktop, transfers});
    std::optional<ControlServer> control;
    if (has_lock) {
        control.emplace(folder, pauses, [&engine](const std::vector<std::string>& arguments, Asker& asker) {
            return static_cast<int>(answer_request(engine.copy(), arguments, asker));
        });
        if (!control->error().empty()) {
            write_line_to_stderr("Nimbry: nimbryctl cannot reach this copy: " + control->error());
        }
    }
    EngineLoop loop(engine, pauses, clock, {line, datasock, streams});

    Engine::StartOptions options;
    options.device = device;
    return loop.run(options);
}

int run(const CommandLine& command_line) {
    const ProgramFolder folder = program_folder(FolderHints::of_process(command_line.dir));
    if (!folder) {
        write_line_to_stderr("nimbryd: " + folder.error);
        return exit_status::bad_usage;
    }
    InstanceLock lock(folder.path);
    const InstanceLock::Result taken = lock.take();
    if (taken == InstanceLock::Result::other_instance) {
        write_line_to_stderr("nimbryd: " + lock.refusal());
        return exit_status::other_instance;
    }
    // A folder that takes no lock takes no program log either, and that is how the copy reports it.
    return run_copy(folder.path, command_line.device, taken == InstanceLock::Result::held);
}

}  // namespace

int main(int argc, char** argv) {
    open_missing_standard_files();
    const CommandLine command_line = read_command_line(std::vector<std::string>(argv + 1, argv + argc));
    switch (command_line.wish) {
        case CommandLine::Wish::version: std::fputs(version_text("nimbryd").c_str(), stdout); return 0;
        case CommandLine::Wish::help: std::fputs(help_text("nimbryd").c_str(), stdout); return 0;
        case CommandLine::Wish::bad_usage:
            write_line_to_stderr(usage_complaint("nimbryd", command_line.complaint));
            return nimbry::exit_status::bad_usage;
        case CommandLine::Wish::run: break;
    }
    qInstallMessageHandler(drop_message);
    QCoreApplication application(argc, argv);
    return run(command_line);
}
