#include "programs/nimbryctl/panel_screen.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <utility>

namespace nimbry::terminal {
namespace {

// A terminal without a size takes everything.
std::size_t room(int size) {
    return static_cast<std::size_t>(size > 0 ? size : INT_MAX);
}

bool begins_a_letter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80;
}

std::size_t width(std::string_view line) {
    return static_cast<std::size_t>(std::count_if(line.begin(), line.end(), begins_a_letter));
}

/// The first letters of a line, `columns` at most.
std::string_view front(std::string_view line, std::size_t columns) {
    std::size_t at = 0;
    for (; at < line.size(); ++at) {
        if (!begins_a_letter(line[at])) continue;
        if (columns == 0) break;
        --columns;
    }
    return line.substr(0, at);
}

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::vector<std::string_view> broken(std::string_view text, std::size_t columns) {
    std::vector<std::string_view> lines;
    for (; !text.empty(); text.remove_prefix(lines.back().size())) lines.push_back(front(text, columns));
    return lines;
}

bool fits(const std::vector<std::string_view>& lines, std::size_t columns) {
    return std::all_of(lines.begin(), lines.end(), [&](std::string_view line) { return width(line) <= columns; });
}

TerminalSize size_of_terminal() {
    winsize size{};
    if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) return {};
    return {size.ws_col, size.ws_row};
}

void put(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

sigset_t resizing() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGWINCH);
    return signals;
}

}  // namespace

std::string fitted(const std::vector<std::string>& layouts, std::string_view below, TerminalSize size) {
    const std::size_t columns = room(size.columns);
    std::vector<std::string_view> lines;
    for (const std::string& layout : layouts) {
        lines = lines_of(layout);
        if (fits(lines, columns)) break;
    }
    const std::vector<std::string_view> end = broken(below, columns);
    const std::size_t rows = room(size.rows) - 1;
    lines.resize(std::min(lines.size(), rows - std::min(rows, end.size())));
    lines.insert(lines.end(), end.begin(), end.end());

    std::string text;
    for (const std::string_view line : lines) text.append(front(line, columns)) += '\n';
    return text;
}

PanelScreen::PanelScreen(std::string below, bool once)
    : below_(std::move(below)), once_(once), terminal_(::isatty(STDOUT_FILENO) != 0) {
    if (!terminal_) return;
    // The signal is let in while wait_for() waits, and at no other time: no change of size falls between two looks.
    const sigset_t signals = resizing();
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    struct sigaction wake {};
    wake.sa_handler = [](int) {};
    sigaction(SIGWINCH, &wake, nullptr);
}

void PanelScreen::show(const std::vector<std::string>& layouts) {
    layouts_ = layouts;
    draw();
}

void PanelScreen::draw() const {
    if (layouts_.empty()) return;
    if (!terminal_) {
        put(layouts_.front() + (once_ ? "" : "\n"));
        return;
    }
    if (once_) {
        put(fitted(layouts_, "", {size_of_terminal().columns, 0}));
        return;
    }
    static constexpr const char *to_the_top = "\x1b[H", *clear_line = "\x1b[K", *clear_below = "\x1b[J";
    const std::string text = fitted(layouts_, below_, size_of_terminal());
    std::string drawn = to_the_top;
    // Each line is cleared before it is written: behind a line that fills its row some terminals would take the last
    // letter.
    for (const std::string_view line : lines_of(text)) drawn.append(clear_line).append(line) += '\n';
    put(drawn += clear_below);
}

void PanelScreen::wait_for(int socket) const {
    sigset_t usual;
    sigprocmask(SIG_BLOCK, nullptr, &usual);
    sigdelset(&usual, SIGWINCH);
    pollfd readable{socket, POLLIN, 0};
    while (::ppoll(&readable, 1, nullptr, &usual) < 0 && errno == EINTR) {
        if (terminal_) draw();
    }
}

}  // namespace nimbry::terminal
