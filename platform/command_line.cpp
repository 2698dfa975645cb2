#include "platform/command_line.h"

#include <cstddef>

#include "engine/core/version.h"

namespace nimbry::platform {

namespace {

CommandLine bad_usage(const std::string& complaint) {
    CommandLine line;
    line.wish = CommandLine::Wish::bad_usage;
    line.complaint = complaint;
    return line;
}

}  // namespace

CommandLine read_command_line(const std::vector<std::string>& arguments) {
    CommandLine line;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        const std::string& argument = arguments[at];
        const std::size_t sign = argument.starts_with("--") ? argument.find('=') : std::string::npos;
        const std::string name = argument.substr(0, sign);

        if (name == "--dir" || name == "--device") {
            std::string value;
            if (sign != std::string::npos) {
                value = argument.substr(sign + 1);
            } else if (at + 1 < arguments.size()) {
                value = arguments[++at];
            }
            if (value.empty()) return bad_usage(name + " needs a value");
            if (name == "--dir") {
                line.dir = value;
            } else {
                line.device = value;
            }
        } else if (argument == "--version") {
            line.wish = CommandLine::Wish::version;
        } else if (argument == "--help") {
            line.wish = CommandLine::Wish::help;
        } else {
            return bad_usage((argument.starts_with("-") ? "unknown option " : "unexpected argument ") + argument);
        }
    }
    return line;
}

std::string version_text(const std::string& program) {
    return program + " " + std::string(program_version) + "\n";
}

std::string help_text(const std::string& program) {
    return "Usage: " + program +
           " [--dir DIR] [--device PATH]\n"
           "Listens to a weather station of the WM-918 / WX-200 family and keeps its records.\n"
           "\n"
           "  --dir DIR      the folder of all its files; made if it is missing. Without it: NIMBRY_HOME, else the\n"
           "                 program's own folder if that holds Nimbry.ini, else nimbry in the user's data folder\n"
           "  --device PATH  the serial device for this run, instead of the chosen port's\n"
           "  --version      prints the version\n"
           "  --help         prints this text\n"
           "\n"
           "Exit status: 0 normal exit, 1 unrecoverable error, 2 bad usage, 3 another copy has the folder.\n";
}

std::string usage_complaint(const std::string& program, const std::string& complaint) {
    return program + ": " + complaint + " (see " + program + " --help)";
}

}  // namespace nimbry::platform
