// nimbry: a running copy of Nimbry with its window.

#include <QApplication>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/command_line.h"
#include "platform/instance_lock.h"
#include "platform/program_folder.h"
#include "platform/stderr_notices.h"
#include "programs/exit_status.h"
#include "programs/nimbry/other_instance.h"
#include "programs/nimbry/window_program.h"
#include "windows/field_style.h"

namespace {

using namespace nimbry;
using namespace nimbry::platform;

/// Standard error is for what concerns the person who started the program. What the window system and the serial port
/// have to say beside that (a line without control signals, say) is known.
void pass_on_serious_messages(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) write_line_to_stderr(message.toStdString());
}

/// Qt aborts where it finds none, which tells nobody what to do. A platform that was asked for by name may need none.
bool has_display() {
#ifdef Q_OS_WIN
    return true;
#else
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
#endif
}

int run(const CommandLine& command_line) {
    const ProgramFolder folder = program_folder(FolderHints::of_process(command_line.dir));
    if (!folder) {
        write_line_to_stderr("nimbry: " + folder.error);
        return exit_status::bad_usage;
    }
    InstanceLock lock(folder.path);
    const InstanceLock::Result taken = lock.take();
    if (taken == InstanceLock::Result::other_instance) return tell_of_other_instance(lock.refusal());
    // A folder that takes no lock takes no program log either, and that is how the copy reports it.
    return run_with_window(folder.path, command_line.device, taken == InstanceLock::Result::held);
}

}  // namespace

int main(int argc, char** argv) {
    const CommandLine command_line = read_command_line(std::vector<std::string>(argv + 1, argv + argc));
    switch (command_line.wish) {
        case CommandLine::Wish::version: std::fputs(version_text("nimbry").c_str(), stdout); return 0;
        case CommandLine::Wish::help: std::fputs(help_text("nimbry").c_str(), stdout); return 0;
        case CommandLine::Wish::bad_usage:
            write_line_to_stderr(usage_complaint("nimbry", command_line.complaint));
            return nimbry::exit_status::bad_usage;
        case CommandLine::Wish::run: break;
    }
    if (!has_display()) {
        write_line_to_stderr("nimbry: there is no display (DISPLAY and WAYLAND_DISPLAY are empty); nimbryd needs none");
        return nimbry::exit_status::failed;
    }
    qInstallMessageHandler(pass_on_serious_messages);
    QApplication application(argc, argv);
    QApplication::setStyle(new nimbry::windows::FieldStyle);
    QApplication::setApplicationName(QStringLiteral("nimbry"));
    QApplication::setDesktopFileName(QStringLiteral("nimbry"));
    // Hidden in the tray it has no window, and only the engine decides when the program ends.
    QApplication::setQuitOnLastWindowClosed(false);
    return run(command_line);
}
