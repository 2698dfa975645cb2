#include "platform/qt_datagrams.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <QNetworkDatagram>
#include <QNetworkProxy>
#include <QSocketNotifier>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/descriptor.h"
#include "tests/platform/event_loop.h"

namespace nimbry::platform {
namespace {

class QtDatagramsTest : public testing::Test {
protected:
    QtDatagramsTest() { peer.setProxy(QNetworkProxy::NoProxy); }

    /// A port of the peer that was free a moment ago.
    std::uint16_t listen() {
        EXPECT_TRUE(peer.bind(QHostAddress::AnyIPv4, 0));
        return peer.localPort();
    }

    QByteArray heard() {
        EXPECT_TRUE(run_events_until([this] { return peer.hasPendingDatagrams(); }));
        const QNetworkDatagram datagram = peer.receiveDatagram();
        sender_port = datagram.senderPort();
        return datagram.data();
    }

    /// Binds `datagrams` to a port that nobody holds, and returns it. Which one is free is known by letting go of it;
    /// who was faster to take it has it, and the next one is tried.
    std::uint16_t bind_somewhere(const std::string& address = "", PortUse use = PortUse::exclusive) {
        for (int tries = 0; tries < 100; ++tries) {
            QUdpSocket probe;
            probe.bind(QHostAddress::AnyIPv4, 0);
            const std::uint16_t port = probe.localPort();
            probe.close();
            if (datagrams.bind(port, address, use)) return port;
        }
        ADD_FAILURE() << "no port can be had";
        return 0;
    }

    QUdpSocket peer;
    int sender_port = 0;
    QtDatagrams datagrams;
};

TEST_F(QtDatagramsTest, HasANetworkWhereThereIsOne) {
    EXPECT_TRUE(datagrams.IsNetworkInstalled());
    bind_somewhere();
    EXPECT_TRUE(datagrams.IsNetworkInstalled()) << "also while the socket is in use";
}

TEST_F(QtDatagramsTest, SendsFromTheBoundPort) {
    const std::uint16_t port = bind_somewhere();
    EXPECT_TRUE(datagrams.is_open());
    EXPECT_EQ(datagrams.send("127.0.0.1", listen(), {0xCF, 0x00, 0xFF}), std::nullopt);
    EXPECT_EQ(heard(), QByteArray("\xCF\x00\xFF", 3));
    EXPECT_EQ(sender_port, port);
}

TEST_F(QtDatagramsTest, SendsToABroadcastAddress) {
    bind_somewhere();
    EXPECT_EQ(datagrams.send("127.255.255.255", listen(), {1, 2, 3}), std::nullopt);
    EXPECT_EQ(heard(), QByteArray("\x01\x02\x03"));
}

/// What becomes of a datagram to everybody, in a network that belongs to the calling thread alone.
struct Broadcast {
    bool has_network = false;  ///< without root's rights there is none
    std::optional<SendFault> fault;
    std::string heard;
};

Broadcast broadcast_in_a_network_of_its_own() {
    Broadcast result;
    if (::unshare(CLONE_NEWNET) != 0) return result;
    // A broadcast leaves by the interface of the default route.
    const char* const network =
        "ip link add nimbry0 type veth peer name nimbry1 && ip addr add 192.0.2.1/24 dev nimbry0 && "
        "ip link set nimbry0 up && ip link set nimbry1 up && ip route add default dev nimbry0";
    if (std::system(network) != 0) return result;  // NOLINT(cert-env33-c): a fixed text
    result.has_network = true;

    const Descriptor client(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(60135);
    const timeval patience{60, 0};
    ::setsockopt(client.number(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    if (::bind(client.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return result;

    QtDatagrams datagrams;
    if (!datagrams.bind(60137, "", PortUse::exclusive)) return result;
    result.fault = datagrams.send("255.255.255.255", 60135, {0xCF, 0x01, 0x02});
    char bytes[8];
    const ssize_t count = ::recv(client.number(), bytes, sizeof bytes, 0);
    if (count > 0) result.heard.assign(bytes, static_cast<std::size_t>(count));
    return result;
}

TEST_F(QtDatagramsTest, SendsToEverybodyInTheNetwork) {
    Broadcast result;
    std::thread([&] { result = broadcast_in_a_network_of_its_own(); }).join();
    if (!result.has_network) GTEST_SKIP() << "a network of its own cannot be had here";
    EXPECT_EQ(result.fault, std::nullopt);
    EXPECT_EQ(result.heard, "\xCF\x01\x02");
}

TEST_F(QtDatagramsTest, APortThatIsTakenCannotBeBound) {
    EXPECT_FALSE(datagrams.bind(listen(), "", PortUse::exclusive));
    EXPECT_FALSE(datagrams.is_open());
}

TEST_F(QtDatagramsTest, BindingAnOpenSocketClosesItFirst) {
    const std::uint16_t port = bind_somewhere();
    EXPECT_TRUE(datagrams.bind(port, "", PortUse::exclusive));
}

TEST_F(QtDatagramsTest, AClosedSocketLetsItsPortGo) {
    const std::uint16_t port = bind_somewhere();
    datagrams.close();
    EXPECT_FALSE(datagrams.is_open());
    EXPECT_TRUE(peer.bind(QHostAddress::AnyIPv4, port, QAbstractSocket::DontShareAddress));
}

TEST_F(QtDatagramsTest, AFailureTellsTheSystemsNumberAndItsWords) {
    bind_somewhere();
    const auto fault = datagrams.send("127.0.0.1", listen(), Bytes(70'000));
    ASSERT_TRUE(fault.has_value());
    EXPECT_EQ(fault->number, EMSGSIZE);
    EXPECT_EQ(fault->description, "Message too long");
}

TEST_F(QtDatagramsTest, ATextThatIsNoAddressIsAFailure) {
    bind_somewhere();
    for (const char* host : {"", "somewhere", "::1"}) {
        SCOPED_TRACE(host);
        const auto fault = datagrams.send(host, 60135, {1});
        ASSERT_TRUE(fault.has_value());
        EXPECT_EQ(fault->number, EINVAL);
    }
}

TEST_F(QtDatagramsTest, HearsWhatArrivesWithItsSenderInTheOrderOfArrival) {
    int calls = 0;
    datagrams.on_readable([&] { ++calls; });
    const std::uint16_t port = bind_somewhere("127.0.0.1");
    EXPECT_EQ(datagrams.receive(), std::nullopt);
    ASSERT_TRUE(peer.bind(QHostAddress("127.0.0.3"), 0));
    peer.writeDatagram(QByteArray("\xCF\x00\x02", 3), QHostAddress("127.0.0.1"), port);
    peer.writeDatagram(QByteArray(), QHostAddress("127.0.0.1"), port);
    ASSERT_TRUE(run_events_until([&] { return calls > 0; }));
    const auto first = datagrams.receive();
    ASSERT_TRUE(first.has_value());
    EXPECT_EQ(first->bytes, (Bytes{0xCF, 0x00, 0x02}));
    EXPECT_EQ(first->sender, "127.0.0.3");
    const auto second = datagrams.receive();
    ASSERT_TRUE(second.has_value()) << "an empty one is one too";
    EXPECT_TRUE(second->bytes.empty());
    EXPECT_EQ(datagrams.receive(), std::nullopt);
}

TEST_F(QtDatagramsTest, IsToldAgainAfterItHasReceived) {
    int calls = 0;
    datagrams.on_readable([&] { ++calls; });
    const std::uint16_t port = bind_somewhere("", PortUse::shared);
    for (int round = 1; round <= 3; ++round) {
        peer.writeDatagram(QByteArray("x"), QHostAddress::LocalHost, port);
        ASSERT_TRUE(run_events_until([&] { return calls == round; }));
        while (datagrams.receive()) {
        }
    }
}

// What has come may have been taken already when its own turn in a round of events comes: a wait that ended in the same
// round was first. In which order a round goes is the event loop's affair, so several others try.
TEST_F(QtDatagramsTest, IsToldAgainAfterItsDatagramWasTakenBeforeItsTurn) {
    int calls = 0;
    datagrams.on_readable([&] {
        ++calls;
        while (datagrams.receive()) {
        }
    });
    int taken = 0;
    std::vector<std::unique_ptr<QSocketNotifier>> others;
    std::vector<Descriptor> pipes;
    for (int n = 0; n < 16; ++n) {
        int ends[2];
        ASSERT_EQ(::pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
        pipes.emplace_back(ends[0]);
        pipes.emplace_back(ends[1]);
        others.push_back(std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read));
        QObject::connect(others.back().get(), &QSocketNotifier::activated, &datagrams, [&, end = ends[0]] {
            char byte = 0;
            EXPECT_EQ(::read(end, &byte, 1), 1);
            while (datagrams.receive()) ++taken;
        });
    }
    const std::uint16_t port = bind_somewhere("127.0.0.1", PortUse::shared);
    for (int round = 1; round <= 8; ++round) {
        for (std::size_t n = 1; n < pipes.size(); n += 2) ASSERT_EQ(::write(pipes[n].number(), "x", 1), 1);
        peer.writeDatagram(QByteArray("x"), QHostAddress::LocalHost, port);
        run_pending_events();
        EXPECT_EQ(taken, round);
    }
    calls = 0;
    for (int round = 1; round <= 2; ++round) {
        peer.writeDatagram(QByteArray("x"), QHostAddress::LocalHost, port);
        ASSERT_TRUE(run_events_until([&] { return calls >= round; }));
    }
}

TEST_F(QtDatagramsTest, TwoThatShareAPortBothHearABroadcast) {
    const std::uint16_t port = bind_somewhere("", PortUse::shared);
    QtDatagrams other;
    ASSERT_TRUE(other.bind(port, "", PortUse::shared));
    peer.writeDatagram(QByteArray("to all"), QHostAddress("127.255.255.255"), port);
    EXPECT_TRUE(run_events_until([&] { return datagrams.receive().has_value(); }));
    EXPECT_TRUE(run_events_until([&] { return other.receive().has_value(); }));
}

TEST_F(QtDatagramsTest, BindingAgainThrowsAwayWhatHadQueuedUp) {
    const std::uint16_t port = bind_somewhere("", PortUse::shared);
    peer.writeDatagram(QByteArray("old"), QHostAddress::LocalHost, port);
    ASSERT_TRUE(datagrams.bind(port, "", PortUse::shared));
    run_pending_events();
    EXPECT_EQ(datagrams.receive(), std::nullopt);
}

TEST_F(QtDatagramsTest, OnlyAnAddressOfThisMachineCanBeBound) {
    const std::uint16_t port = bind_somewhere("127.0.0.7", PortUse::shared);
    EXPECT_FALSE(datagrams.bind(port, "192.0.2.77", PortUse::shared));
    EXPECT_FALSE(datagrams.bind(port, "anything", PortUse::shared));
}

}  // namespace
}  // namespace nimbry::platform
