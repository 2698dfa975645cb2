// nimbryctl: asks a running copy of Nimbry, and prints what it answers.

#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QByteArray>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "engine/control/verb_list.h"
#include "engine/core/version.h"
#include "platform/control_protocol.h"
#include "platform/control_socket.h"
#include "platform/program_folder.h"
#include "programs/exit_status.h"
#include "programs/nimbryctl/panel_screen.h"
#include "programs/nimbryctl/png_picture.h"

namespace {

using namespace nimbry::exit_status;
using nimbry::platform::AnswerPiece;
using nimbry::platform::ControlConnection;
using nimbry::platform::Descriptor;
using nimbry::terminal::PanelScreen;

void say(FILE* where, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), where);
    std::fflush(where);
}

int refuse(int status, const std::string& line) {
    say(stderr, "nimbryctl: " + line + '\n');
    return status;
}

std::string help() {
    constexpr std::size_t margin = 28;
    std::string text =
        "usage: nimbryctl [--dir DIR] VERB ...\n\n"
        "Asks the copy of Nimbry that works in a folder.\n\n"
        "  --dir DIR                  the folder. Without it: NIMBRY_HOME, else the program's own folder if that "
        "holds\n"
        "                             Nimbry.ini, else nimbry in the user's data folder\n"
        "  --version                  prints the version\n"
        "  --help                     prints this text\n"
        "\nVerbs:\n";
    for (const nimbry::VerbUsage& verb : nimbry::verb_list()) {
        std::string head = "  " + std::string(verb.name);
        if (!verb.arguments.empty()) head += ' ' + std::string(verb.arguments);
        if (head.size() > margin) head += '\n' + std::string(margin, ' ');
        if (head.size() < margin) head.resize(margin, ' ');
        text += head + ' ' + std::string(verb.summary) + '\n';
    }
    return text + "\nExit status: 0 done, 1 refused or failed, 2 bad usage, 4 no running copy in DIR.\n";
}

bool send_all(const Descriptor& socket, const QByteArray& bytes) {
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t more =
            ::send(socket.number(), bytes.data() + sent, static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (more < 0 && errno != EINTR) return false;
        if (more > 0) sent += more;
    }
    return true;
}

/// Takes the pieces as they come: `out` those for standard output, `screen` the panel, the others are printed. The
/// status at their end; nothing when the copy has gone before that.
std::optional<int> take_answer(const Descriptor& socket, const std::function<void(std::string_view)>& out,
                               PanelScreen& screen) {
    QByteArray held;
    char piece[64 * 1024];
    while (true) {
        screen.wait_for(socket.number());
        const ssize_t got = ::recv(socket.number(), piece, sizeof piece, 0);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return std::nullopt;
        held.append(piece, got);
        for (qsizetype end = held.indexOf('\n'); end >= 0; end = held.indexOf('\n')) {
            const auto answer = nimbry::platform::parse_answer(held.left(end));
            held.remove(0, end + 1);
            if (!answer) return refuse(failed, "the copy's answer cannot be read");
            switch (answer->kind) {
                case AnswerPiece::Kind::out: out(answer->text); break;
                case AnswerPiece::Kind::err: say(stderr, answer->text + '\n'); break;
                case AnswerPiece::Kind::screen: screen.show(answer->layouts); break;
                case AnswerPiece::Kind::status: return answer->status;
            }
        }
    }
}

/// Waits until a process has ended, also one that its parent has not taken notice of yet.
void wait_for_end(const Descriptor& process) {
    if (!process) return;
    pollfd ended{process.number(), POLLIN, 0};
    while (::poll(&ended, 1, -1) < 0 && errno == EINTR) {
    }
}

/// A picture goes where nimbryctl was called, not into the copy's folder.
std::vector<std::string> with_whole_path(std::vector<std::string> arguments) {
    if (arguments.front() != "graph") return arguments;
    const auto option = std::find(arguments.begin(), arguments.end(), "--svg");
    if (option == arguments.end() || option + 1 == arguments.end() || (option + 1)->empty()) return arguments;
    std::error_code error;
    const auto whole = std::filesystem::absolute(*(option + 1), error);
    if (!error) *(option + 1) = whole.string();
    return arguments;
}

/// Takes an option of nimbryctl's own, which the copy is not told, out of the arguments of `verb`, and gives its value.
std::optional<std::string> take_option(std::vector<std::string>& arguments, std::string_view verb,
                                       std::string_view name) {
    const auto option = std::find(arguments.begin(), arguments.end(), name);
    if (arguments.front() != verb || option == arguments.end() || option + 1 == arguments.end()) return std::nullopt;
    std::string value = *(option + 1);
    arguments.erase(option, option + 2);
    return value;
}

int ask(const ControlConnection& copy, const std::vector<std::string>& arguments,
        const std::function<void(std::string_view)>& out, PanelScreen& screen) {
    const bool stops = arguments.front() == "stop";
    // Held from the start, so that it can mean no other process that gets the same number later.
    const Descriptor process(stops && copy.process > 0 ? static_cast<int>(::syscall(SYS_pidfd_open, copy.process, 0))
                                                       : -1);
    const QByteArray request = nimbry::platform::request_line(arguments);
    if (request.size() > static_cast<qsizetype>(nimbry::platform::longest_request)) {
        return refuse(failed, "the arguments are too long");
    }
    if (!send_all(copy.socket, request)) return refuse(failed, "the copy ended before it was asked");

    const std::optional<int> status = take_answer(copy.socket, out, screen);
    if (stops && status.value_or(done) == done) {
        wait_for_end(process);
        return done;
    }
    if (status) return *status;
    // A copy that ends takes its panel with it; every other answer would have been complete.
    if (arguments.front() == "panel") return done;
    return refuse(failed, "the copy ended before it answered");
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> arguments(argv + 1, argv + argc);
    std::optional<std::string> dir;
    while (!arguments.empty() && arguments.front().starts_with('-')) {
        const std::string option = arguments.front();
        arguments.erase(arguments.begin());
        if (option == "--help" || option == "-h") {
            say(stdout, help());
            return done;
        }
        if (option == "--version") {
            say(stdout, "nimbryctl " + std::string(nimbry::program_version) + '\n');
            return done;
        }
        if (option == "--dir" && !arguments.empty()) {
            dir = arguments.front();
            arguments.erase(arguments.begin());
        } else if (option.starts_with("--dir=")) {
            dir = option.substr(std::string_view("--dir=").size());
        } else {
            return refuse(bad_usage,
                          option == "--dir" ? "--dir needs the name of a folder" : "unknown option " + option);
        }
    }
    if (arguments.empty()) return refuse(bad_usage, "no verb: see nimbryctl --help");
    if (nimbry::verb_named(arguments.front()) == nullptr) {
        return refuse(bad_usage, "unknown verb " + arguments.front() + ": see nimbryctl --help");
    }
    if (dir && dir->empty()) return refuse(bad_usage, "--dir needs the name of a folder");

    const auto folder = nimbry::platform::program_folder(nimbry::platform::FolderHints::of_process(dir), false);
    if (!folder) return refuse(no_copy, folder.error);
    const ControlConnection copy = nimbry::platform::connect_to_copy(folder.path);
    if (!copy.socket) return refuse(no_copy, "no copy of Nimbry runs in " + folder.path);
    const std::optional<std::string> png = take_option(arguments, "graph", "--png");
    const std::optional<std::string> below = take_option(arguments, "panel", "--below");
    if (png && std::find(arguments.begin(), arguments.end(), "--svg") != arguments.end())
        return refuse(bad_usage, "a picture is written as an SVG or as a PNG, not both");
    std::string picture;
    const auto out = [&](std::string_view text) {
        if (png) {
            picture += text;
        } else {
            say(stdout, text);
        }
    };
    PanelScreen screen(below.value_or(""), std::find(arguments.begin(), arguments.end(), "--once") != arguments.end());
    const int status = ask(copy, with_whole_path(arguments), out, screen);
    if (!png || status != done) return status;
    return nimbry::terminal::write_png(picture, *png) ? done
                                                      : refuse(failed, "the picture could not be written to " + *png);
}
