#include "tests/world/recording_ports.h"

#include <gtest/gtest.h>

#include "tests/world/scripted_line.h"
#include "tests/world/virtual_pauses.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

TEST(RecordingNotices, AnUnscriptedBoxGetsTheSafeAnswerAtOnce) {
    VirtualClock clock;
    VirtualPauses pauses(clock);
    RecordingNotices notices(clock, pauses);
    EXPECT_EQ(notices.box({.text = "?", .choices = Choices::ok}), Answer::ok);
    EXPECT_EQ(notices.box({.text = "?", .choices = Choices::yes_no}), Answer::no);
    EXPECT_EQ(notices.box({.text = "?", .choices = Choices::ok_cancel}), Answer::cancel);
    EXPECT_EQ(notices.box({.text = "?", .choices = Choices::retry_cancel}), Answer::cancel);
    EXPECT_EQ(notices.boxes.size(), 4u);
}

TEST(RecordingNotices, ScriptedAnswersComeInOrderAndMayTakeTheirTime) {
    VirtualClock clock;
    VirtualPauses pauses(clock);
    RecordingNotices notices(clock, pauses);
    notices.will_answer(Answer::yes, 3s);
    notices.will_answer(Answer::retry);
    const Instant begin = clock.monotonic();
    EXPECT_EQ(notices.box({.text = "?", .choices = Choices::yes_no}), Answer::yes);
    EXPECT_EQ(clock.monotonic() - begin, 3s);
    EXPECT_EQ(notices.box({.text = "?", .choices = Choices::retry_cancel}), Answer::retry);
    EXPECT_EQ(clock.monotonic() - begin, 3s);
    EXPECT_EQ(notices.boxes[1].at - begin, 3s);
}

TEST(RecordingDatagrams, RemembersWhatWasSentAndRefusesWhereItIsTold) {
    RecordingDatagrams socket;
    EXPECT_TRUE(socket.send("10.0.0.1", 60135, {1}).has_value()) << "not bound";
    EXPECT_TRUE(socket.bind(60137, "", PortUse::exclusive));
    socket.refusals.push_back({"10.0.0.2", {101, "Network is unreachable"}});
    EXPECT_FALSE(socket.send("10.0.0.1", 60135, {1, 2}).has_value());
    EXPECT_EQ(socket.send("10.0.0.2", 60135, {3})->number, 101);
    ASSERT_EQ(socket.sent.size(), 3u);
    EXPECT_EQ(socket.sent[1].bytes, (Bytes{1, 2}));
    EXPECT_EQ(socket.port(), 60137);
    socket.bindable = false;
    EXPECT_FALSE(socket.bind(60135, "", PortUse::exclusive));
    EXPECT_FALSE(socket.is_open()) << "a failed bind has closed what was open";
}

TEST(ScriptedLine, HoldsWhatArrivesWhileItIsOpen) {
    const VirtualClock clock;
    ScriptedLine line(clock);
    line.arrive({1});
    EXPECT_EQ(line.open("/dev/a"), PortOpenResult::ok);
    EXPECT_TRUE(line.take().empty()) << "what came to a closed port is lost";
    line.arrive({2});
    line.arrive({3});
    EXPECT_EQ(line.take(), (Bytes{2, 3}));
    EXPECT_TRUE(line.take().empty());
    line.arrive({4});
    line.close();
    line.open("/dev/a");
    EXPECT_TRUE(line.take().empty());
}

TEST(ScriptedLine, OpensAsTheTestWants) {
    const VirtualClock clock;
    ScriptedLine line(clock);
    line.refuse("/dev/a", PortOpenResult::locked);
    line.answer_opens({PortOpenResult::failed});
    EXPECT_EQ(line.open("/dev/b"), PortOpenResult::failed);
    EXPECT_EQ(line.open("/dev/a"), PortOpenResult::locked);
    EXPECT_EQ(line.open("/dev/b"), PortOpenResult::ok);
    line.unplug("/dev/b");
    EXPECT_FALSE(line.is_open());
    EXPECT_EQ(line.open("/dev/b"), PortOpenResult::not_found);
    line.plug_in("/dev/b");
    line.refuse("/dev/a", PortOpenResult::ok);
    EXPECT_EQ(line.open("/dev/b"), PortOpenResult::ok);
    EXPECT_EQ(line.open("/dev/a"), PortOpenResult::ok);
    EXPECT_EQ(line.device(), "/dev/a");
    EXPECT_EQ(line.attempts().size(), 6u);
}

}  // namespace
}  // namespace nimbry::test
