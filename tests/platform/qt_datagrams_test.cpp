#include "platform/qt_datagrams.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <QNetworkDatagram>
#include <QNetworkProxy>
#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>

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

    /// A port number that nobody holds, by letting go of one.
    static std::uint16_t free_port() {
        QUdpSocket probe;
        probe.bind(QHostAddress::AnyIPv4, 0);
        return probe.localPort();
    }

    QUdpSocket peer;
    int sender_port = 0;
    QtDatagrams datagrams;
};

TEST_F(QtDatagramsTest, SendsFromTheBoundPort) {
    const std::uint16_t port = free_port();
    ASSERT_TRUE(datagrams.bind(port));
    EXPECT_TRUE(datagrams.is_open());
    EXPECT_EQ(datagrams.send("127.0.0.1", listen(), {0xCF, 0x00, 0xFF}), std::nullopt);
    EXPECT_EQ(heard(), QByteArray("\xCF\x00\xFF", 3));
    EXPECT_EQ(sender_port, port);
}

TEST_F(QtDatagramsTest, SendsToABroadcastAddress) {
    ASSERT_TRUE(datagrams.bind(free_port()));
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
    const timeval patience{10, 0};
    ::setsockopt(client.number(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    if (::bind(client.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return result;

    QtDatagrams datagrams;
    if (!datagrams.bind(60137)) return result;
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
    EXPECT_FALSE(datagrams.bind(listen()));
    EXPECT_FALSE(datagrams.is_open());
}

TEST_F(QtDatagramsTest, BindingAnOpenSocketClosesItFirst) {
    const std::uint16_t port = free_port();
    ASSERT_TRUE(datagrams.bind(port));
    EXPECT_TRUE(datagrams.bind(port));
}

TEST_F(QtDatagramsTest, AClosedSocketLetsItsPortGo) {
    const std::uint16_t port = free_port();
    ASSERT_TRUE(datagrams.bind(port));
    datagrams.close();
    EXPECT_FALSE(datagrams.is_open());
    EXPECT_TRUE(peer.bind(QHostAddress::AnyIPv4, port, QAbstractSocket::DontShareAddress));
}

TEST_F(QtDatagramsTest, AFailureTellsTheSystemsNumberAndItsWords) {
    ASSERT_TRUE(datagrams.bind(free_port()));
    const auto fault = datagrams.send("127.0.0.1", listen(), Bytes(70'000));
    ASSERT_TRUE(fault.has_value());
    EXPECT_EQ(fault->number, EMSGSIZE);
    EXPECT_EQ(fault->description, "Message too long");
}

TEST_F(QtDatagramsTest, ATextThatIsNoAddressIsAFailure) {
    ASSERT_TRUE(datagrams.bind(free_port()));
    for (const char* host : {"", "somewhere", "::1"}) {
        SCOPED_TRACE(host);
        const auto fault = datagrams.send(host, 60135, {1});
        ASSERT_TRUE(fault.has_value());
        EXPECT_EQ(fault->number, EINVAL);
    }
}

}  // namespace
}  // namespace nimbry::platform
