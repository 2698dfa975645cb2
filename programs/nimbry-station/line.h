#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "platform/descriptor.h"

namespace nimbry::simulator {

/// A line that cannot be made, opened or written to any more; what() is a sentence for the user.
class LineFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Where the station's bytes go. Never waits: a byte that the line cannot take is lost, as on a cable.
class Line {
public:
    virtual ~Line() = default;

    /// What must be done before a frame, when the line has been quiet.
    virtual void before_frame() = 0;

    /// Sends one byte; on an unplugged line it is lost. Throws LineFailure when a device has gone for good.
    virtual void send(std::uint8_t byte) = 0;

    /// Pulls the cable, and puts it in again.
    virtual void unplug() = 0;
    virtual void replug() = 0;

    /// The descriptor on which a computer's own bytes arrive (they are read and forgotten); -1 while unplugged.
    [[nodiscard]] virtual int descriptor() const = 0;
};

/// A pseudo-terminal with a symbolic link to it, both made at once and taken away at the end. The station holds the
/// computer's end open itself, so that programs may come and go: an unread line keeps one train at most.
class PseudoTerminal final : public Line {
public:
    /// Makes the link at `path`; an old symbolic link there is replaced, anything else refused by LineFailure.
    explicit PseudoTerminal(std::string path);
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;
    ~PseudoTerminal() override;

    void before_frame() override;
    void send(std::uint8_t byte) override;
    void unplug() override;
    void replug() override;
    [[nodiscard]] int descriptor() const override { return station_end_.number(); }

private:
    std::string path_;
    std::string name_;  ///< of the computer's end, "/dev/pts/5"
    platform::Descriptor station_end_, computer_end_;
};

/// A real serial line at 9600 baud, 8N1. Unplugged, it keeps its device and sends nothing.
class SerialDevice : public Line {
public:
    /// Opens the device; LineFailure when it is none.
    explicit SerialDevice(std::string path);

    void before_frame() override {}
    void send(std::uint8_t byte) override;
    void unplug() override { plugged_ = false; }
    void replug() override { plugged_ = true; }
    [[nodiscard]] int descriptor() const override { return device_.number(); }

private:
    std::string path_;
    platform::Descriptor device_;
    bool plugged_ = true;
};

}  // namespace nimbry::simulator
