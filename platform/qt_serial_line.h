#pragma once

#include <QSerialPort>
#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <optional>

#include "engine/ports/serial_line.h"
#include "platform/line_counters.h"
#include "platform/serial_devices.h"

namespace nimbry::platform {

/// The serial port through QSerialPort, which opens, locks and sets the device; the bytes are read here. Any device
/// name works: "/dev/ttyUSB0", a link below /dev/serial/by-id, a pseudo-terminal. Needs the QCoreApplication.
///
/// The two listeners are called from the event loop, from an event of this object's own, so they may do anything with
/// the port, closing it too.
class QtSerialLine : public QObject, public SerialLine {
public:
    PortOpenResult open(const std::string& device) override;
    void close() override;
    [[nodiscard]] bool is_open() const override { return port_.isOpen(); }
    Bytes take() override;
    [[nodiscard]] std::vector<std::string> devices() const override { return serial_devices(); }

    /// Bytes have arrived since the listener was called last.
    void on_readable(std::function<void()> readable) { readable_ = std::move(readable); }
    /// The line reports a fault; `gone` at most once for an open.
    void on_fault(std::function<void(LineFault)> fault) { fault_ = std::move(fault); }

private:
    void begin_reading();
    void fetch();
    void lose();
    void tell_later();
    void tell();
    void tell_counted_faults();

    QSerialPort port_;
    std::unique_ptr<QSocketNotifier> arrival_;  ///< while the port is open
    Bytes held_;                                ///< fetched from the kernel, not taken yet
    std::optional<LineCounters> counters_;      ///< nothing while the driver keeps none
    std::function<void()> readable_;
    std::function<void(LineFault)> fault_;
    bool has_bytes_ = false;  ///< to be told: bytes have arrived
    bool is_lost_ = false;    ///< to be told: the device went away
    bool telling_ = false;    ///< tell() is on its way
};

/// How a failed QSerialPort::open() is counted. `text` is the port's errorString(): Qt gives a busy device and a
/// forbidden one the same error.
[[nodiscard]] PortOpenResult open_result(QSerialPort::SerialPortError error, const QString& text);

}  // namespace nimbry::platform
