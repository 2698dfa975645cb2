#pragma once

#include <ctime>
#include <filesystem>
#include <memory>
#include <string>

#include "engine/ports/bytes.h"
#include "engine/station/train_writer.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/support/temporary_folder.h"

namespace nimbry::system_test {

/// A train of the usual readings from a station whose clock is right.
inline Bytes train_of_now() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    StationReadings readings;
    readings.clock = {local.tm_sec, local.tm_min, local.tm_hour, local.tm_mday, local.tm_mon + 1};
    return write_train(readings);
}

/// A station on a line that can be pulled out and put in again under the same name, as a USB adapter below
/// /dev/serial/by-id.
class StationLine {
public:
    StationLine() { plug_in(); }

    /// The name that stays, for a copy to open: a former one that was killed no longer has the line for itself.
    [[nodiscard]] std::string device() const {
        if (terminal_) terminal_->take_back();
        return folder_.path("line");
    }

    void plug_in() {
        terminal_ = std::make_unique<PseudoTerminal>();
        std::filesystem::create_symlink(terminal_->device(), device());
    }

    void unplug() {
        terminal_.reset();
        std::filesystem::remove(device());
    }

    /// Sends bytes in one go.
    void send(const Bytes& bytes) const { terminal_->send(bytes); }

    /// Sends bytes one by one, as fast as a line of 9600 baud does.
    void send_paced(const Bytes& bytes) const {
        for (const std::uint8_t byte : bytes) {
            terminal_->send(Bytes{byte});
            usleep(1040);
        }
    }

private:
    platform::test::TemporaryFolder folder_;
    std::unique_ptr<PseudoTerminal> terminal_;
};

}  // namespace nimbry::system_test
