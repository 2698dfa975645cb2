#include "platform/qt_serial_line.h"

#include <poll.h>
#include <unistd.h>

#include <QFile>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

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

PortOpenResult QtSerialLine::open(const std::string& device) {
    close();
    port_.setPortName(QFile::decodeName(device.c_str()));
    port_.setBaudRate(QSerialPort::Baud9600);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(QSerialPort::NoParity);
    port_.setStopBits(QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    port_.clearError();
    if (!port_.open(QIODevice::ReadWrite)) {
        const PortOpenResult result = open_result(port_.error(), port_.errorString());
        return result == PortOpenResult::ok ? PortOpenResult::failed : result;
    }
    // The station's adaptor draws its power from these lines. Where they do not exist, nothing draws on them.
    port_.setRequestToSend(true);
    port_.setDataTerminalReady(true);
    counters_ = read_counters(port_.handle());
    begin_reading();
    return PortOpenResult::ok;
}

void QtSerialLine::begin_reading() {
    // QSerialPort fetches bytes only from its own event, so what take() owes, all that the kernel holds now, has to be
    // read past it; and finding less than its event promised, it would take the line for broken. So it does not read.
    for (QSocketNotifier* const own : port_.findChildren<QSocketNotifier*>()) own->setEnabled(false);

    arrival_ = std::make_unique<QSocketNotifier>(port_.handle(), QSocketNotifier::Read);
    connect(arrival_.get(), &QSocketNotifier::activated, this, [this] {
        fetch();
        has_bytes_ = !held_.empty();
        if (has_bytes_) tell_later();
    });
}

void QtSerialLine::close() {
    arrival_.reset();
    if (port_.isOpen()) port_.close();
    held_.clear();
    has_bytes_ = is_lost_ = false;
}

Bytes QtSerialLine::take() {
    if (arrival_ && !is_lost_) fetch();
    return std::exchange(held_, {});
}

/// Adds everything that the kernel has to `held_`, and finds out whether the device is still there.
void QtSerialLine::fetch() {
    std::array<std::uint8_t, 4096> chunk;
    ssize_t count = 0;
    do {
        count = ::read(port_.handle(), chunk.data(), chunk.size());
        if (count > 0) held_.insert(held_.end(), chunk.begin(), chunk.begin() + count);
    } while (count > 0 || (count < 0 && errno == EINTR));

    // Nothing to read looks like the end of the file on a line set as this one is: only poll tells them apart.
    pollfd line{port_.handle(), POLLIN, 0};
    const bool has_failed = count < 0 && errno != EAGAIN;
    const bool has_hung_up = ::poll(&line, 1, 0) > 0 && (line.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
    if (has_failed || has_hung_up) lose();
}

void QtSerialLine::lose() {
    arrival_->setEnabled(false);  // it would be told of the end again and again
    is_lost_ = true;
    tell_later();
}

/// The listeners hear of it from the next event: they may close the port, and with it the notifier that called.
void QtSerialLine::tell_later() {
    if (std::exchange(telling_, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { tell(); }, Qt::QueuedConnection);
}

void QtSerialLine::tell() {
    telling_ = false;
    if (std::exchange(has_bytes_, false)) {
        tell_counted_faults();
        if (readable_) readable_();
    }
    if (is_lost_) {
        // At once: a descriptor that is held makes the kernel give a returning USB adapter another number.
        close();
        if (fault_) fault_(LineFault::gone);
    }
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
