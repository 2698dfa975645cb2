#include "programs/nimbry-station/line.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "engine/station/group_layout.h"

namespace nimbry::simulator {
namespace {

[[noreturn]] void fail(const std::string& path, const std::string& what) {
    throw LineFailure(path + ": " + what + ": " + std::strerror(errno));
}

/// Raw bytes at 9600 baud, 8N1, no flow control, no modem lines waited for.
bool set_up(int terminal) {
    termios settings{};
    if (tcgetattr(terminal, &settings) != 0) return false;
    cfmakeraw(&settings);
    settings.c_cflag |= CLOCAL | CREAD;
    settings.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | CRTSCTS);
    cfsetspeed(&settings, B9600);
    return tcsetattr(terminal, TCSANOW, &settings) == 0;
}

bool is_link(const std::string& path) {
    struct stat found {};
    return lstat(path.c_str(), &found) == 0 && S_ISLNK(found.st_mode);
}

std::string link_target(const std::string& path) {
    std::array<char, 256> target{};
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length)) : std::string();
}

/// True when the device is gone; a line that is full or interrupted only loses the byte.
bool gone_after_writing(int fd, std::uint8_t byte) {
    return write(fd, &byte, 1) < 0 && errno != EAGAIN && errno != EINTR;
}

}  // namespace

PseudoTerminal::PseudoTerminal(std::string path) : path_(std::move(path)) {
    replug();
}

PseudoTerminal::~PseudoTerminal() {
    unplug();
}

void PseudoTerminal::before_frame() {
    if (!computer_end_) return;
    // A reader that was killed leaves its claim on the terminal behind, because we keep the terminal alive.
    ioctl(computer_end_.number(), TIOCNXCL);
    int unread = 0;
    if (ioctl(computer_end_.number(), FIONREAD, &unread) == 0 && std::cmp_greater(unread, train_length)) {
        tcflush(computer_end_.number(), TCIFLUSH);  // nobody listens: whoever comes shall not hear old weather
    }
}

void PseudoTerminal::send(std::uint8_t byte) {
    if (station_end_) (void)gone_after_writing(station_end_.number(), byte);
}

void PseudoTerminal::unplug() {
    if (!station_end_) return;
    if (link_target(path_) == name_) unlink(path_.c_str());  // another station may have taken the path over
    station_end_.close();
    computer_end_.close();
}

void PseudoTerminal::replug() {
    if (station_end_) return;
    platform::Descriptor master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    std::array<char, 128> name{};
    if (!master || grantpt(master.number()) != 0 || unlockpt(master.number()) != 0 ||
        ptsname_r(master.number(), name.data(), name.size()) != 0) {
        fail(path_, "no pseudo-terminal to be had");
    }
    platform::Descriptor slave(open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!slave || !set_up(slave.number())) fail(path_, "the pseudo-terminal cannot be set up");
    if (is_link(path_)) unlink(path_.c_str());
    if (symlink(name.data(), path_.c_str()) != 0) fail(path_, "the link cannot be made");
    name_ = name.data();
    station_end_ = std::move(master);
    computer_end_ = std::move(slave);
}

SerialDevice::SerialDevice(std::string path)
    : path_(std::move(path)), device_(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
    if (!device_) fail(path_, "cannot be opened");
    if (!set_up(device_.number())) fail(path_, "is no serial line");
}

void SerialDevice::send(std::uint8_t byte) {
    if (plugged_ && gone_after_writing(device_.number(), byte)) fail(path_, "the line has gone");
}

}  // namespace nimbry::simulator
