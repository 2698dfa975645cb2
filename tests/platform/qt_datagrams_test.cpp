#include "platform/qt_datagrams.h"

#include <gtest/gtest.h>

#include <QNetworkDatagram>
#include <QNetworkProxy>
#include <cerrno>

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
