#include "platform/qt_streams.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <string>

#include "tests/platform/event_loop.h"
#include "tests/support/held_port.h"

namespace nimbry::platform {
namespace {

class QtStreamsTest : public testing::Test {
protected:
    QtStreamsTest() {
        streams.on_stir([this] { ++stirs; });
    }

    /// Listens at a port that nobody holds. Which one is free is known by letting go of it; who was faster to take it
    /// has it, and the next one is tried.
    void listen_somewhere() {
        for (int tries = 0; tries < 100 && listener == nullptr; ++tries) {
            port = HeldPort().number();
            listener = streams.listen(port, "127.0.0.1").listener;
        }
        ASSERT_NE(listener, nullptr);
    }

    /// A connection from `streams` to `streams`: the caller's end and the end that answers.
    void connect_both() {
        ASSERT_NO_FATAL_FAILURE(listen_somewhere());
        caller = streams.connect("127.0.0.1", port, "");
        ASSERT_TRUE(run_events_until([this] {
            if (!answerer) answerer = listener->accept();
            return answerer && caller->state() == StreamState::connected;
        }));
    }

    /// Sends into a stream until more than `size` bytes are left that the system has no room for; what was sent.
    static std::string send_more_than_is_taken(Stream& stream, std::size_t size) {
        const std::string piece(1'000'000, 'x');
        std::string all;
        while (stream.unsent() <= size && all.size() < 500 * piece.size()) {
            EXPECT_EQ(stream.send(piece), std::nullopt);
            all += piece;
        }
        EXPECT_GT(stream.unsent(), size);
        return all;
    }

    /// Everything that reaches a stream until there are `size` bytes.
    static std::string received(Stream& stream, std::size_t size) {
        std::string all;
        EXPECT_TRUE(run_events_until([&] {
            all += stream.take();
            return all.size() >= size;
        })) << all.size();
        return all;
    }

    QtStreams streams;
    int stirs = 0;
    std::uint16_t port = 0;
    std::unique_ptr<StreamListener> listener;
    std::unique_ptr<Stream> caller, answerer;
};

TEST_F(QtStreamsTest, BytesGoBothWaysUnchanged) {
    connect_both();
    std::string all_bytes;
    for (int byte = 0; byte < 256; ++byte) all_bytes.push_back(static_cast<char>(byte));
    EXPECT_EQ(caller->send(all_bytes), std::nullopt);
    EXPECT_EQ(received(*answerer, 256), all_bytes);
    EXPECT_EQ(answerer->send("cmdAcceptCNX,"), std::nullopt);
    EXPECT_EQ(received(*caller, 13), "cmdAcceptCNX,");
    EXPECT_EQ(caller->peer(), "127.0.0.1");
    EXPECT_EQ(answerer->peer(), "127.0.0.1");
}

TEST_F(QtStreamsTest, TheStateIsConnectingUntilThePeerHasAnswered) {
    connect_both();
    const auto another = streams.connect("127.0.0.1", port, "");
    EXPECT_EQ(another->state(), StreamState::connecting);
    EXPECT_EQ(another->peer(), "");
    EXPECT_TRUE(run_events_until([&] { return another->state() == StreamState::connected; }));
}

TEST_F(QtStreamsTest, ANameIsLookedUp) {
    connect_both();
    const auto by_name = streams.connect("localhost", port, "");
    EXPECT_EQ(by_name->state(), StreamState::connecting);
    EXPECT_TRUE(run_events_until([&] { return by_name->state() == StreamState::connected; }));
}

TEST_F(QtStreamsTest, ARefusedConnectionEndsClosed) {
    const HeldPort nobody;
    const auto refused = streams.connect("127.0.0.1", nobody.number(), "");
    EXPECT_TRUE(run_events_until([&] { return refused->state() == StreamState::closed; }));
    EXPECT_EQ(refused->send("x")->number, ENOTCONN);
}

TEST_F(QtStreamsTest, ThePeersEndIsSeenOnlyAfterWhatItSaidBefore) {
    connect_both();
    answerer->send("last words");
    answerer.reset();
    // Long enough for the end to have come behind the words.
    ASSERT_TRUE(run_events_until([&, rounds = 0]() mutable { return ++rounds > 5; }));
    EXPECT_EQ(caller->state(), StreamState::connected);
    EXPECT_EQ(received(*caller, 10), "last words");
    EXPECT_TRUE(run_events_until([&] { return caller->state() == StreamState::closed; }));
}

TEST_F(QtStreamsTest, ClosingLetsEverythingOutFirst) {
    connect_both();
    const std::string much = send_more_than_is_taken(*caller, 0);
    caller->close();
    EXPECT_EQ(caller->state(), StreamState::closed);
    EXPECT_EQ(received(*answerer, much.size()), much);
    EXPECT_TRUE(run_events_until([&] { return answerer->state() == StreamState::closed; }));
    EXPECT_EQ(caller->unsent(), 0U);
}

TEST_F(QtStreamsTest, WhatWasNeverReadDoesNotSpoilTheEnd) {
    connect_both();
    answerer->send("nobody reads this");
    ASSERT_TRUE(run_events_until([&, rounds = 0]() mutable { return ++rounds > 5; }));
    caller->send("cmdResetServerSocket,");
    caller->close();
    EXPECT_EQ(received(*answerer, 21), "cmdResetServerSocket,");
}

TEST_F(QtStreamsTest, APeerThatSendsWithoutEndIsHeldBack) {
    connect_both();
    send_more_than_is_taken(*answerer, 20'000'000);
    ASSERT_TRUE(run_events_until([&, rounds = 0]() mutable { return ++rounds > 50; }));
    EXPECT_GT(answerer->unsent(), 5'000'000U) << "the rest waits at the sender";
    EXPECT_LE(caller->take().size(), 300'000U);
    EXPECT_FALSE(received(*caller, 300'000).empty()) << "and goes on when there is room";
}

TEST_F(QtStreamsTest, OneSendIsNotHeldBackForTheNext) {
    connect_both();
    // The two descriptors of the connection are the only connected ones of this process.
    int checked = 0;
    for (int fd = 3; fd < 200; ++fd) {
        sockaddr_storage address{};
        socklen_t size = sizeof address;
        if (::getpeername(fd, reinterpret_cast<sockaddr*>(&address), &size) != 0 || address.ss_family != AF_INET)
            continue;
        int no_delay = 0;
        socklen_t length = sizeof no_delay;
        ASSERT_EQ(::getsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &no_delay, &length), 0);
        EXPECT_NE(no_delay, 0);
        ++checked;
    }
    EXPECT_EQ(checked, 2);
}

TEST_F(QtStreamsTest, AClosedDoorLeavesTheConnectionThatItGave) {
    connect_both();
    listener.reset();
    EXPECT_EQ(caller->send("still here"), std::nullopt);
    EXPECT_EQ(received(*answerer, 10), "still here");
    const auto late = streams.connect("127.0.0.1", port, "");
    EXPECT_TRUE(run_events_until([&] { return late->state() == StreamState::closed; }));
}

TEST_F(QtStreamsTest, WhoWaitsAtADoorThatClosesIsSentAway) {
    connect_both();
    const auto waiting = streams.connect("127.0.0.1", port, "");
    ASSERT_TRUE(run_events_until([&] { return waiting->state() == StreamState::connected; }));
    listener.reset();
    EXPECT_TRUE(run_events_until([&] { return waiting->state() == StreamState::closed; }));
    EXPECT_EQ(caller->state(), StreamState::connected);
}

TEST_F(QtStreamsTest, APortCanBeHadAgainWhileItsOldConnectionLingers) {
    connect_both();
    listener.reset();
    answerer->close();  // the side that closes first keeps the port for a minute
    ASSERT_TRUE(run_events_until([&] { return caller->state() == StreamState::closed; }));
    caller.reset();
    answerer.reset();
    EXPECT_NE(streams.listen(port, "127.0.0.1").listener, nullptr);
}

TEST_F(QtStreamsTest, ATakenPortAndAForeignAddressSayWhatIsWrong) {
    connect_both();
    const Listening taken = streams.listen(port, "127.0.0.1");
    EXPECT_EQ(taken.listener, nullptr);
    EXPECT_EQ(taken.fault, (SendFault{EADDRINUSE, "Address already in use"}));
    EXPECT_EQ(streams.listen(port, "192.0.2.77").fault.number, EADDRNOTAVAIL);
    EXPECT_EQ(streams.listen(port, "no address").fault.number, EADDRNOTAVAIL);
}

TEST_F(QtStreamsTest, TheCallerComesFromTheAddressItIsGiven) {
    ASSERT_NO_FATAL_FAILURE(listen_somewhere());
    caller = streams.connect("127.0.0.1", port, "127.0.0.9");
    ASSERT_TRUE(run_events_until([this] { return (answerer = listener->accept()) != nullptr; }));
    EXPECT_EQ(answerer->peer(), "127.0.0.9");
    const auto nowhere = streams.connect("127.0.0.1", port, "192.0.2.77");
    EXPECT_EQ(nowhere->state(), StreamState::closed);
}

TEST_F(QtStreamsTest, WhateverHappensIsTold) {
    connect_both();
    run_pending_events();
    stirs = 0;
    caller->send("x");
    EXPECT_TRUE(run_events_until([&] { return stirs > 0 && answerer->take() == "x"; }));
    run_pending_events();
    stirs = 0;
    caller.reset();
    EXPECT_TRUE(run_events_until([&] { return stirs > 0; }));
    EXPECT_TRUE(run_events_until([&] { return answerer->state() == StreamState::closed; }));
}

TEST_F(QtStreamsTest, AStreamMayBeDroppedByWhoHearsOfIt) {
    connect_both();
    streams.on_stir([this] { answerer.reset(); });
    caller->send("x");
    EXPECT_TRUE(run_events_until([&] { return answerer == nullptr; }));
    EXPECT_TRUE(run_events_until([&] { return caller->state() == StreamState::closed; }));
}

}  // namespace
}  // namespace nimbry::platform
