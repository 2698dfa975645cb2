#include "platform/qt_serial_line.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <QTemporaryDir>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/descriptor.h"
#include "tests/platform/event_loop.h"
#include "tests/platform/system_calls.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/support/temporary_folder.h"

namespace nimbry::platform {
namespace {

std::string text(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

class QtSerialLineTest : public testing::Test {
protected:
    QtSerialLineTest() {
        line.on_readable([this] { ++readable; });
        line.on_fault([this](LineFault fault) { faults.push_back(fault); });
    }

    PseudoTerminal station;
    QtSerialLine line;
    int readable = 0;
    std::vector<LineFault> faults;
};

TEST_F(QtSerialLineTest, OpensAPseudoTerminalAsARawLineOf9600Baud8N1) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    EXPECT_TRUE(line.is_open());
    const termios set = station.settings();
    EXPECT_EQ(cfgetispeed(&set), static_cast<speed_t>(B9600));
    EXPECT_EQ(set.c_cflag & CSIZE, static_cast<tcflag_t>(CS8));
    EXPECT_EQ(set.c_cflag & (PARENB | CSTOPB | CRTSCTS), 0U);
    EXPECT_EQ(set.c_lflag & (ICANON | ECHO | ISIG), 0U);
    EXPECT_EQ(set.c_iflag & (IXON | IXOFF | ICRNL), 0U);
}

TEST_F(QtSerialLineTest, ALineWithoutControlLinesReportsNothing) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    run_pending_events();
    EXPECT_TRUE(line.is_open());
    EXPECT_TRUE(faults.empty());
}

TEST_F(QtSerialLineTest, OpensADeviceByALinkAsBelowDevSerialById) {
    const QTemporaryDir folder;
    const std::string link = folder.filePath("usb-Some_Adapter-if00").toStdString();
    std::filesystem::create_symlink(station.device(), link);
    ASSERT_EQ(line.open(link), PortOpenResult::ok);
    station.send("x");
    ASSERT_TRUE(run_events_until([this] { return readable > 0; }));
    EXPECT_EQ(text(line.take()), "x");
}

TEST_F(QtSerialLineTest, EveryByteValueArrivesAsItWasSent) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    Bytes sent(256);
    for (std::size_t n = 0; n < sent.size(); ++n) sent[n] = static_cast<std::uint8_t>(n);
    station.send(sent);
    Bytes got;
    ASSERT_TRUE(run_events_until([&] {
        const Bytes more = line.take();
        got.insert(got.end(), more.begin(), more.end());
        return got.size() >= sent.size();
    }));
    EXPECT_EQ(got, sent);
}

TEST_F(QtSerialLineTest, TakeHasWhatTheKernelHoldsAlthoughNoEventHasRun) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    station.send("held by the kernel");
    EXPECT_EQ(text(line.take()), "held by the kernel");
    EXPECT_EQ(text(line.take()), "");
}

TEST_F(QtSerialLineTest, TakeJoinsWhatWasFetchedAndWhatTheKernelHoldsInTheirOrder) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    station.send("fetched, ");
    ASSERT_TRUE(run_events_until([this] { return readable > 0; }));
    station.send("then held");
    EXPECT_EQ(text(line.take()), "fetched, then held");
}

TEST_F(QtSerialLineTest, TakeReturnsMoreThanOneReadHolds) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    const std::string sent(3500, 'w');
    station.send(sent);
    std::string got;
    ASSERT_TRUE(run_events_until([&] {
        got += text(line.take());
        return got.size() >= sent.size();
    }));
    EXPECT_EQ(got, sent);
    EXPECT_EQ(text(line.take()), "");
}

TEST_F(QtSerialLineTest, ALineThatHasBeenEmptiedIsStillThere) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    for (int n = 0; n < 20; ++n) {
        station.send("x");
        EXPECT_EQ(text(line.take()), "x");  // before the event loop has seen it
        EXPECT_EQ(text(line.take()), "");
        run_pending_events();
    }
    EXPECT_TRUE(line.is_open());
    EXPECT_TRUE(faults.empty());
}

TEST_F(QtSerialLineTest, BytesThatNobodyTakesAreToldOnceAndKept) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    station.send("kept");
    ASSERT_TRUE(run_events_until([this] { return readable > 0; }));
    run_pending_events();
    EXPECT_EQ(readable, 1);
    EXPECT_EQ(text(line.take()), "kept");
}

TEST_F(QtSerialLineTest, TheLastBytesBeforeALossAreStillDelivered) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    std::string got;
    line.on_readable([&] { got += text(line.take()); });
    station.send("last");
    ASSERT_TRUE(run_events_until([&] { return !got.empty(); }));
    station.unplug();
    ASSERT_TRUE(run_events_until([this] { return !faults.empty(); }));
    EXPECT_EQ(got, "last");
}

TEST_F(QtSerialLineTest, NothingIsReportedFromInsideACall) {
    station.send("x");
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    static_cast<void>(line.take());
    station.unplug();
    static_cast<void>(line.take());
    EXPECT_EQ(readable, 0);
    EXPECT_TRUE(faults.empty());
}

TEST_F(QtSerialLineTest, ALostLineIsClosedAtOnceAndReportedOnce) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    station.unplug();
    ASSERT_TRUE(run_events_until([this] { return !faults.empty(); }));
    EXPECT_FALSE(line.is_open());
    run_pending_events();
    EXPECT_EQ(faults, std::vector{LineFault::gone});
}

TEST_F(QtSerialLineTest, ALossFoundWhileTakingIsReportedOnce) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    station.unplug();
    EXPECT_EQ(text(line.take()), "");
    EXPECT_EQ(text(line.take()), "");
    ASSERT_TRUE(run_events_until([this] { return !faults.empty(); }));
    run_pending_events();
    EXPECT_EQ(faults, std::vector{LineFault::gone});
}

TEST_F(QtSerialLineTest, ALineThatIsClosedInTheMeantimeIsNotReportedLost) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    station.unplug();
    static_cast<void>(line.take());
    line.close();
    run_pending_events();
    EXPECT_TRUE(faults.empty());
}

TEST_F(QtSerialLineTest, OpensAgainAfterALoss) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    station.unplug();
    ASSERT_TRUE(run_events_until([this] { return !faults.empty(); }));
    const PseudoTerminal back;
    ASSERT_EQ(line.open(back.device()), PortOpenResult::ok);
    back.send("again");
    ASSERT_TRUE(run_events_until([this] { return readable > 0; }));
    EXPECT_EQ(text(line.take()), "again");
    EXPECT_EQ(faults, std::vector{LineFault::gone});
}

TEST_F(QtSerialLineTest, OpeningAnOpenPortClosesItFirst) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    EXPECT_EQ(line.open(station.device()), PortOpenResult::ok);
    EXPECT_TRUE(line.is_open());
}

TEST_F(QtSerialLineTest, AMissingDeviceIsNotFound) {
    EXPECT_EQ(line.open("/dev/no-such-line"), PortOpenResult::not_found);
    EXPECT_FALSE(line.is_open());
    run_pending_events();
    EXPECT_TRUE(faults.empty()) << "the result says it";
}

TEST_F(QtSerialLineTest, AFileThatIsNoLineCannotBeOpened) {
    const QTemporaryDir folder;
    EXPECT_EQ(line.open(folder.path().toStdString()), PortOpenResult::failed);
    EXPECT_FALSE(line.is_open());
}

TEST_F(QtSerialLineTest, ADeviceThatAnotherHolderHasLockedIsLocked) {
    QtSerialLine other;
    ASSERT_EQ(other.open(station.device()), PortOpenResult::ok);
    EXPECT_EQ(line.open(station.device()), PortOpenResult::locked);
    other.close();
    EXPECT_EQ(line.open(station.device()), PortOpenResult::ok);
}

TEST_F(QtSerialLineTest, ADeviceThatAnotherProgramHasClaimedForItselfIsOpenAlready) {
    // Root may open it all the same, so the test is made as an ordinary user.
    const test::OrdinaryUser user;
    const PseudoTerminal claimed;
    const Descriptor other(::open(claimed.device().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    ASSERT_TRUE(other);
    ASSERT_EQ(::ioctl(other.number(), TIOCEXCL), 0);
    EXPECT_EQ(line.open(claimed.device()), PortOpenResult::already_open);
    EXPECT_FALSE(line.is_open());
    ASSERT_EQ(::ioctl(other.number(), TIOCNXCL), 0);
    EXPECT_EQ(line.open(claimed.device()), PortOpenResult::ok);
}

// What only a real port has: control lines, and a driver that counts faults.

class RealPortTest : public QtSerialLineTest {
protected:
    RealPortTest() {
        port.on_ioctl = [this](unsigned long request, void* argument) -> std::optional<int> {
            auto* const lines = static_cast<int*>(argument);
            switch (request) {
                case TIOCMGET: *lines = raised; return 0;
                case TIOCMSET: raised = *lines; return 0;
                case TIOCMBIS: raised |= *lines; return 0;
                case TIOCMBIC: raised &= ~*lines; return 0;
                case TIOCGICOUNT: *static_cast<serial_icounter_struct*>(argument) = counted; return 0;
                default: return std::nullopt;
            }
        };
    }

    /// The next byte arrives; returns what was told of it, in order: "framing", "overrun", "buffer overrun", "bytes".
    std::vector<std::string> told_of_a_byte() {
        std::vector<std::string> told;
        line.on_fault([&](LineFault fault) {
            told.push_back(fault == LineFault::framing          ? "framing"
                           : fault == LineFault::overrun        ? "overrun"
                           : fault == LineFault::buffer_overrun ? "buffer overrun"
                                                                : "gone");
        });
        line.on_readable([&] { told.push_back("bytes"); });
        station.send("x");
        EXPECT_TRUE(run_events_until([&] { return !told.empty() && told.back() == "bytes"; }));
        line.take();
        line.on_fault(nullptr);
        line.on_readable(nullptr);
        return told;
    }

    test::SystemCalls port;
    int raised = 0;
    serial_icounter_struct counted{};
};

TEST_F(RealPortTest, RtsAndDtrAreRaisedAfterEveryOpen) {
    for (const char* which : {"first", "second"}) {
        SCOPED_TRACE(which);
        raised = 0;
        ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
        EXPECT_EQ(raised & (TIOCM_RTS | TIOCM_DTR), TIOCM_RTS | TIOCM_DTR);
        line.close();
    }
}

TEST_F(RealPortTest, WhatTheDriverHasCountedSinceTheLastBytesIsToldBeforeThem) {
    using Told = std::vector<std::string>;
    counted.frame = 7;  // of former days
    counted.overrun = 3;
    counted.buf_overrun = 1;
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    EXPECT_EQ(told_of_a_byte(), Told{"bytes"}) << "what was counted before the open is not ours";
    counted.frame += 5;
    EXPECT_EQ(told_of_a_byte(), (Told{"framing", "bytes"})) << "each kind once, however often";
    EXPECT_EQ(told_of_a_byte(), Told{"bytes"});
    ++counted.overrun;
    EXPECT_EQ(told_of_a_byte(), (Told{"overrun", "bytes"}));
    ++counted.buf_overrun;
    EXPECT_EQ(told_of_a_byte(), (Told{"buffer overrun", "bytes"}));
    ++counted.frame;
    ++counted.overrun;
    ++counted.buf_overrun;
    EXPECT_EQ(told_of_a_byte(), (Told{"framing", "overrun", "buffer overrun", "bytes"}));
}

TEST_F(RealPortTest, BreaksParityAndControlSignalsAreNoFaults) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    ++counted.brk;
    ++counted.parity;
    ++counted.cts;
    ++counted.dsr;
    ++counted.rng;
    ++counted.dcd;
    EXPECT_EQ(told_of_a_byte(), std::vector<std::string>{"bytes"});
}

TEST_F(QtSerialLineTest, AClosedPortHoldsNothing) {
    EXPECT_FALSE(line.is_open());
    EXPECT_TRUE(line.take().empty());
    line.close();
}

TEST_F(QtSerialLineTest, AListenerMayCloseThePort) {
    ASSERT_EQ(line.open(station.device()), PortOpenResult::ok);
    bool closed = false;
    line.on_readable([&] {
        line.close();
        closed = true;
    });
    station.send("x");
    ASSERT_TRUE(run_events_until([&] { return closed; }));
    EXPECT_FALSE(line.is_open());
}

TEST(OpenResult, EveryWayOfFailingHasItsNumber) {
    struct Case {
        const char* what;
        QSerialPort::SerialPortError error;
        QString text;
        int number;
    };
    const Case cases[] = {
        {"no such device", QSerialPort::DeviceNotFoundError, "No such file or directory", 8002},
        {"no right to it", QSerialPort::PermissionError, "Permission denied", 8010},
        {"the lock of another program", QSerialPort::PermissionError, "Permission error while locking the device",
         8010},
        {"held exclusively", QSerialPort::PermissionError, "Device or resource busy", 8005},
        {"open already", QSerialPort::OpenError, "", 8005},
        {"an error of the device", QSerialPort::ResourceError, "Input/output error", 8012},
        {"anything else", QSerialPort::UnknownError, "", 8012},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(static_cast<int>(open_result(c.error, c.text)), c.number);
    }
}

TEST(LineCounters, EachKindThatWasCountedIsOneFault) {
    EXPECT_TRUE(faults_between({3, 2, 1}, {3, 2, 1}).empty());
    EXPECT_EQ(faults_between({0, 0, 0}, {5, 0, 0}), std::vector{LineFault::framing});
    EXPECT_EQ(faults_between({0, 7, 0}, {0, 8, 0}), std::vector{LineFault::overrun});
    EXPECT_EQ(faults_between({0, 0, 0}, {1, 1, 1}),
              (std::vector{LineFault::framing, LineFault::overrun, LineFault::buffer_overrun}));
}

TEST(LineCounters, ADescriptorWithoutCountersHasNone) {
    EXPECT_FALSE(read_counters(-1).has_value());
    const PseudoTerminal station;
    const int descriptor = open(station.device().c_str(), O_RDWR | O_NOCTTY);
    EXPECT_FALSE(read_counters(descriptor).has_value());
    close(descriptor);
}

}  // namespace
}  // namespace nimbry::platform
