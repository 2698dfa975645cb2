#include "platform/qt_serial_line.h"

#include <QFile>
#include <array>
#include <cerrno>
#include <cstring>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace nimbry::platform {

PortOpenResult open_result(QSerialPort::SerialPortError error, const QString& text) {
    switch (error) {
        case QSerialPort::NoError: return PortOpenResult::ok;
        case QSerialPort::DeviceNotFoundError: return PortOpenResult::not_found;
        case QSerialPort::OpenError: return PortOpenResult::already_open;
        case QSerialPort::PermissionError:
            return text == QString::fromLocal8Bit(std::strerror(EBUSY)) ? PortOpenResult::already_open
                                                                        : PortOpenResult::locked;
        default: return PortOpenResult::failed;
    }
}

QtSerialLine::QtSerialLine() {
    connect(&port_, &QSerialPort::readyRead, this, &QtSerialLine::note_readable);
    connect(&port_, &QSerialPort::errorOccurred, this, &QtSerialLine::note_error);
}

PortOpenResult QtSerialLine::open(const std::string& device) {
    close();
    port_.setPortName(QFile::decodeName(device.c_str()));
    port_.setBaudRate(QSerialPort::Baud9600);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(QSerialPort::NoParity);
    port_.setStopBits(QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    port_.setReadBufferSize(0);  // no limit: what the line delivers is counted by the engine

    opening_ = true;
    PortOpenResult result = PortOpenResult::ok;
    if (port_.open(QIODevice::ReadWrite)) {
        // The station's adaptor draws its power from these lines. Where they do not exist, nothing draws on them.
        port_.setRequestToSend(true);
        port_.setDataTerminalReady(true);
        counters_ = read_counters(port_.handle());
    } else {
        result = open_result(port_.error(), port_.errorString());
        if (result == PortOpenResult::ok) result = PortOpenResult::failed;
    }
    port_.clearError();
    opening_ = false;
    return result;
}

void QtSerialLine::close() {
    if (port_.isOpen()) port_.close();
    has_bytes_ = is_lost_ = false;
}

Bytes QtSerialLine::take() {
    Bytes bytes;
    if (!port_.isOpen()) return bytes;
    const QByteArray fetched = port_.readAll();
    bytes.assign(fetched.begin(), fetched.end());
    drain_kernel(bytes);
    return bytes;
}

/// QSerialPort fetches only from its own event; a caller that counts needs what the kernel holds now.
void QtSerialLine::drain_kernel(Bytes& bytes) {
#ifdef Q_OS_UNIX
    std::array<std::uint8_t, 4096> chunk;
    for (;;) {
        const ssize_t count = ::read(port_.handle(), chunk.data(), chunk.size());
        if (count > 0) {
            bytes.insert(bytes.end(), chunk.begin(), chunk.begin() + count);
        } else if (count < 0 && errno == EINTR) {
            continue;
        } else {
            if (count == 0 || errno != EAGAIN) lose();
            return;
        }
    }
#else
    static_cast<void>(bytes);
#endif
}

void QtSerialLine::note_readable() {
    has_bytes_ = true;
    tell_later();
}

void QtSerialLine::note_error(QSerialPort::SerialPortError error) {
    const bool harmless = error == QSerialPort::NoError || error == QSerialPort::UnsupportedOperationError ||
                          error == QSerialPort::TimeoutError || error == QSerialPort::NotOpenError;
    if (!harmless && !opening_ && port_.isOpen()) lose();
}

void QtSerialLine::lose() {
    is_lost_ = true;
    tell_later();
}

/// QSerialPort emits from inside its own notifier, which must outlive the emission; so the listeners hear of it from
/// the next event.
void QtSerialLine::tell_later() {
    if (std::exchange(telling_, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { tell(); }, Qt::QueuedConnection);
}

void QtSerialLine::tell() {
    telling_ = false;
    if (std::exchange(is_lost_, false)) {
        // At once: QSerialPort would repeat the error without pause, and a descriptor that is held makes the kernel
        // give a returning USB adapter another number.
        close();
        if (fault_) fault_(LineFault::gone);
        return;
    }
    if (!std::exchange(has_bytes_, false)) return;
    tell_counted_faults();
    if (readable_) readable_();
}

void QtSerialLine::tell_counted_faults() {
    if (!counters_) return;
    const std::optional<LineCounters> now = read_counters(port_.handle());
    if (!now) return;
    for (const LineFault fault : faults_between(*counters_, *now)) {
        if (fault_) fault_(fault);
    }
    counters_ = now;
}

}  // namespace nimbry::platform
