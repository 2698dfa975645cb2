#pragma once

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "engine/ports/clock.h"
#include "engine/ports/serial_line.h"
#include "tests/world/journal.h"

namespace nimbry::test {

/// A serial port whose other end is the test. Every device opens unless the test says otherwise.
class ScriptedLine : public SerialLine {
public:
    /// `clock` dates the calls; `journal`, if any, gets "line open DEVICE" and "line close". Both must outlive this
    /// object.
    explicit ScriptedLine(const Clock& clock, Journal* journal = nullptr) : clock_(clock), journal_(journal) {}

    PortOpenResult open(const std::string& device) override;
    void close() override;
    [[nodiscard]] bool is_open() const override { return !device_.empty(); }
    Bytes take() override;
    [[nodiscard]] std::vector<std::string> devices() const override { return found; }

    /// The devices of this machine.
    std::vector<std::string> found{"/dev/serial/by-id/usb-Adapter_A1", "/dev/ttyS0"};

    /// Bytes reach the port. They are lost while it is closed, as on a real line.
    void arrive(const Bytes& bytes);
    /// From now on every device holds these bytes already when it is opened.
    void hold_at_open(Bytes bytes) { at_open_ = std::move(bytes); }
    /// The device goes away: the port is closed, and opening it fails until plug_in().
    void unplug(const std::string& device);
    void plug_in(const std::string& device) { refusals_.erase(device); }
    /// Opening this device fails with `result`, until `result` is `ok`.
    void refuse(const std::string& device, PortOpenResult result);
    /// The next attempts to open, whatever the device, end so; then things are as before.
    void answer_opens(std::vector<PortOpenResult> results);

    /// One attempt to open.
    struct Attempt {
        Instant at;
        std::string device;
        PortOpenResult result;
    };
    [[nodiscard]] const std::vector<Attempt>& attempts() const { return attempts_; }
    /// The device that is open; empty when none is.
    [[nodiscard]] const std::string& device() const { return device_; }

private:
    const Clock& clock_;
    Journal* journal_;
    std::string device_;
    Bytes held_;
    Bytes at_open_;
    std::map<std::string, PortOpenResult> refusals_;
    std::deque<PortOpenResult> next_results_;
    std::vector<Attempt> attempts_;
};

}  // namespace nimbry::test
