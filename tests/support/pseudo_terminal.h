#pragma once

#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace nimbry {

/// The two ends of a serial line that stays in the machine: the test writes to one end, the program opens the other by
/// its device name. Closing it looks to the program as if the adapter were pulled out.
class PseudoTerminal {
public:
    PseudoTerminal() {
        int slave = -1;
        char name[128] = {};
        if (openpty(&master_, &slave, name, nullptr, nullptr) != 0) throw std::runtime_error("no pseudo-terminal");
        termios raw{};
        tcgetattr(slave, &raw);
        cfmakeraw(&raw);
        tcsetattr(slave, TCSANOW, &raw);
        device_ = name;
        // Held open, the line is still there between two opens of the program; nobody else inherits either end.
        slave_ = slave;
        for (const int end : {master_, slave_}) fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(master_, F_SETFL, O_NONBLOCK);
    }
    ~PseudoTerminal() { unplug(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    /// "/dev/pts/3".
    [[nodiscard]] const std::string& device() const { return device_; }

    /// Sends bytes to the program. Where nobody reads for long, what does not fit is lost, as on a line.
    void send(std::string_view bytes) const {
        [[maybe_unused]] const ssize_t sent = write(master_, bytes.data(), bytes.size());
    }
    void send(const std::vector<std::uint8_t>& bytes) const {
        send(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    }

    /// What the program has written since the last look.
    [[nodiscard]] std::string received() const {
        std::string text;
        char piece[4096];
        for (ssize_t count = read(master_, piece, sizeof piece); count > 0; count = read(master_, piece, sizeof piece))
            text.append(piece, static_cast<std::size_t>(count));
        return text;
    }

    /// Gives the line the size of a window. The program is not told: that is for the terminal that it belongs to.
    void resize(unsigned short columns, unsigned short rows) const {
        const winsize size{rows, columns, 0, 0};
        ioctl(master_, TIOCSWINSZ, &size);
    }

    /// After a program was killed: its claim to have the line for itself outlives it, since the test keeps the line
    /// alive. Root may open it all the same, nobody else.
    void take_back() const { ioctl(slave_, TIOCNXCL); }

    void unplug() {
        for (int* end : {&master_, &slave_}) {
            if (*end >= 0) close(std::exchange(*end, -1));
        }
    }

    /// How the program has set its end.
    [[nodiscard]] termios settings() const {
        termios set{};
        tcgetattr(slave_, &set);
        return set;
    }

private:
    int master_ = -1;
    int slave_ = -1;
    std::string device_;
};

}  // namespace nimbry
