#include "tests/world/scripted_streams.h"

#include <gtest/gtest.h>

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

struct ScriptedStreamsTest : testing::Test {
    VirtualClock clock;
    VirtualPauses pauses{clock};
    ScriptedStreams streams{clock, pauses};
};

TEST_F(ScriptedStreamsTest, AHostWithoutAScriptRefuses) {
    const auto stream = streams.connect("10.0.0.1", 23, "");
    EXPECT_EQ(stream->state(), StreamState::connecting);
    pauses.pause(10ms);
    EXPECT_EQ(stream->state(), StreamState::closed);
    ASSERT_EQ(streams.connects.size(), 1U);
    EXPECT_EQ(streams.connects[0].host, "10.0.0.1");
}

TEST_F(ScriptedStreamsTest, AHostThatIsIgnoredNeverAnswers) {
    streams.ignore("10.0.0.1", 23);
    const auto stream = streams.connect("10.0.0.1", 23, "");
    pauses.pause(1h);
    EXPECT_EQ(stream->state(), StreamState::connecting);
}

TEST_F(ScriptedStreamsTest, AnAnswererGreetsAndAnswers) {
    ScriptedPeerPtr server;
    streams.answer(
        "10.0.0.1", 23,
        [&](const ScriptedPeerPtr& peer) {
            server = peer;
            peer->say("hello");
            peer->on_heard([](ScriptedPeer& end, const std::string& text) { end.say("<" + text + ">"); });
        },
        3s);
    const auto stream = streams.connect("10.0.0.1", 23, "");
    EXPECT_EQ(stream->send("too early")->number, 107);
    pauses.pause(2s);
    EXPECT_EQ(stream->state(), StreamState::connecting);
    pauses.pause(1s);
    EXPECT_EQ(stream->state(), StreamState::connected);
    EXPECT_EQ(stream->take(), "hello");
    EXPECT_EQ(stream->send("one"), std::nullopt);
    EXPECT_EQ(stream->send("two"), std::nullopt);
    pauses.pause(0ms);
    EXPECT_EQ(stream->take(), "<one><two>");
    EXPECT_EQ(server->heard(), "onetwo");
}

TEST_F(ScriptedStreamsTest, ThePeersEndIsSeenOnlyAfterWhatItSaidBefore) {
    ScriptedPeerPtr server;
    streams.answer("10.0.0.1", 23, [&](const ScriptedPeerPtr& peer) { server = peer; });
    const auto stream = streams.connect("10.0.0.1", 23, "");
    pauses.pause(1ms);
    server->say("last");
    server->close();
    EXPECT_EQ(stream->state(), StreamState::connected);
    EXPECT_EQ(stream->take(), "last");
    EXPECT_EQ(stream->state(), StreamState::closed);
}

TEST_F(ScriptedStreamsTest, AStallingPeerLeavesTheBytesUnsent) {
    ScriptedPeerPtr server;
    streams.answer("10.0.0.1", 23, [&](const ScriptedPeerPtr& peer) { server = peer; });
    const auto stream = streams.connect("10.0.0.1", 23, "");
    pauses.pause(1ms);
    server->stall(true);
    stream->send("four");
    EXPECT_EQ(stream->unsent(), 4U);
    server->stall(false);
    EXPECT_EQ(stream->unsent(), 0U);
    server->break_sends({32, "Broken pipe"});
    EXPECT_EQ(stream->send("x"), (SendFault{32, "Broken pipe"}));
}

TEST_F(ScriptedStreamsTest, OneCallerWaitsAtAnOpenDoor) {
    EXPECT_EQ(streams.call(60131), nullptr) << "nobody listens";
    auto door = streams.listen(60131, "").listener;
    EXPECT_EQ(streams.listen(60131, "").listener, nullptr) << "taken";
    const ScriptedPeerPtr first = streams.call(60131, "10.0.0.8");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(streams.call(60131), nullptr) << "one waits already";
    const auto stream = door->accept();
    EXPECT_EQ(stream->peer(), "10.0.0.8");
    EXPECT_EQ(door->accept(), nullptr);
    const ScriptedPeerPtr second = streams.call(60131);
    door.reset();
    EXPECT_TRUE(second->left()) << "who waits at a door that closes is dropped";
    EXPECT_EQ(stream->state(), StreamState::connected);
}

TEST_F(ScriptedStreamsTest, TheListenerIsToldOnceOfWhatHappensTogether) {
    int stirs = 0;
    streams.on_stir([&] { ++stirs; });
    auto door = streams.listen(60131, "").listener;
    const ScriptedPeerPtr caller = streams.call(60131);
    const auto stream = door->accept();
    caller->say("a");
    caller->say("b");
    pauses.pause(0ms);
    EXPECT_EQ(stirs, 1);
    caller->close();
    pauses.pause(0ms);
    EXPECT_EQ(stirs, 2);
}

TEST_F(ScriptedStreamsTest, ThePeerKnowsWhenTheCopyLeft) {
    auto door = streams.listen(60131, "").listener;
    const ScriptedPeerPtr caller = streams.call(60131);
    auto stream = door->accept();
    stream->send("bye");
    pauses.pause(5ms);
    EXPECT_FALSE(caller->left());
    stream.reset();
    EXPECT_TRUE(caller->left());
    EXPECT_EQ(caller->left_at(), clock.monotonic());
    ASSERT_EQ(caller->sent().size(), 1U);
    EXPECT_EQ(caller->sent()[0].at + 5ms, clock.monotonic());
}

}  // namespace
}  // namespace nimbry::test
