#include "platform/exit_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

namespace nimbry::platform {

namespace {

constexpr std::array watched = {SIGINT, SIGTERM, SIGHUP};

/// The one thing that a signal handler can reach: the pipe's ends, written before the handler is set.
std::array<int, 2> pipe_ends = {-1, -1};

void note_signal(int number) {
    const int error_in_hand = errno;
    const auto byte = static_cast<unsigned char>(number);
    // A full pipe already holds a reason to end.
    [[maybe_unused]] const ssize_t written = write(pipe_ends[1], &byte, 1);
    errno = error_in_hand;
}

void handle(int number, void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}

}  // namespace

ExitSignals::ExitSignals(std::function<void()> interrupted, std::function<void()> terminated)
    : interrupted_(std::move(interrupted)), terminated_(std::move(terminated)) {
    if (pipe2(pipe_ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    notifier_ = std::make_unique<QSocketNotifier>(pipe_ends[0], QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { deliver(); });
    for (const int number : watched) handle(number, note_signal);
    for (const int number : {SIGPIPE, SIGXFSZ}) handle(number, SIG_IGN);
}

ExitSignals::~ExitSignals() {
    for (const int number : watched) handle(number, SIG_IGN);
    notifier_.reset();
    for (int& end : pipe_ends) ::close(std::exchange(end, -1));
}

void ExitSignals::deliver() {
    unsigned char number = 0;
    while (read(pipe_ends[0], &number, 1) == 1) {
        (number == SIGINT ? interrupted_ : terminated_)();
    }
}

}  // namespace nimbry::platform
