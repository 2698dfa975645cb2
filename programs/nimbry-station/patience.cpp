#include "programs/nimbry-station/patience.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <ctime>

namespace nimbry::simulator {
namespace {

timespec as_timespec(MonotonicClock::duration length) {
    const auto whole = std::chrono::floor<std::chrono::seconds>(length);
    return {.tv_sec = whole.count(), .tv_nsec = std::chrono::nanoseconds(length - whole).count()};
}

}  // namespace

Patience::Patience() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&ending, number);
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    signals_ = platform::Descriptor(signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK));
}

Instant Patience::now() {
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return Instant(std::chrono::floor<MonotonicClock::duration>(time));
}

bool Patience::wait_until(Instant moment, int line) {
    for (;;) {
        std::array<pollfd, 2> watched{pollfd{signals_.number(), POLLIN, 0}, pollfd{line, POLLIN, 0}};
        const timespec left = as_timespec(std::max(moment - now(), MonotonicClock::duration(0)));
        (void)ppoll(watched.data(), watched.size(), &left, nullptr);
        if (watched[0].revents != 0) return false;
        if ((watched[1].revents & POLLIN) != 0) {
            std::array<char, 256> forgotten{};
            if (read(line, forgotten.data(), forgotten.size()) <= 0) line = -1;
        } else if (watched[1].revents != 0) {
            line = -1;  // hung up or closed: nothing will arrive, and asking again would spin
        }
        if (now() >= moment) return true;
    }
}

void Patience::wait_for_end(int line) {
    while (wait_until(now() + std::chrono::hours(1), line)) {
    }
}

}  // namespace nimbry::simulator
