#include "engine/station/line_framer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace nimbry {
namespace {

using State = LineFramer::State;
using Outcome = LineFramer::Outcome;
using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr Instant start{std::chrono::hours{1}};

Bytes some(std::size_t count) {
    return Bytes(count, 0x5A);
}

/// Bytes that arrive together, at a time in microseconds from the start.
struct Arrival {
    int at_us;
    std::size_t bytes;
};

/// Plays arrivals to a framer as its owner must: at wake_at() first whatever has arrived by then, then poll(). A frame
/// is let go at once. Returns what came of it, each with its time.
std::vector<std::string> play(const std::vector<Arrival>& arrivals) {
    LineFramer framer;
    std::vector<std::string> events;
    const auto wake = [&] {
        const Instant due = *framer.wake_at();
        const std::string at = " at " + std::to_string((due - start).count());
        const std::size_t count = framer.count();
        switch (framer.poll(due)) {
            case Outcome::frame:
                events.push_back("frame of " + std::to_string(framer.frame().size()) + at);
                framer.work_done();
                break;
            case Outcome::train_overran: events.push_back("overran with " + std::to_string(count) + at); break;
            case Outcome::hold_over: events.push_back("hold over" + at); break;
            case Outcome::nothing: break;
        }
    };
    for (const Arrival& arrival : arrivals) {
        const Instant at = start + microseconds{arrival.at_us};
        while (framer.wake_at() && *framer.wake_at() < at) wake();
        if (!framer.push(some(arrival.bytes), at))
            events.push_back("buffer overran at " + std::to_string(arrival.at_us));
    }
    while (framer.wake_at()) wake();
    if (framer.gathering()) events.push_back("waits with " + std::to_string(framer.count()));
    return events;
}

/// `count` bytes one by one, 1.04 ms apart as at 9600 baud.
std::vector<Arrival> paced(std::size_t count, int from_us = 0) {
    std::vector<Arrival> arrivals;
    for (std::size_t n = 0; n < count; ++n) arrivals.push_back({from_us + 1040 * static_cast<int>(n + 1), 1});
    return arrivals;
}

std::vector<Arrival> joined(std::vector<Arrival> first, const std::vector<Arrival>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

struct Case {
    std::string what;
    std::vector<Arrival> arrivals;
    std::vector<std::string> events;
};

const std::vector<Case> cases = {
    {"nothing arrives and nothing happens", {}, {}},
    {"27 bytes at once are a frame 30 ms later", {{0, 27}}, {"frame of 27 at 30000"}},
    {"141 bytes at once settle twice", {{0, 141}}, {"frame of 141 at 60000"}},
    {"27 bytes at 9600 baud: the 27th comes at 28.08 ms", paced(27), {"frame of 27 at 58080"}},
    // The 27th byte starts the first settling time (28.08 ms), the 141st the second (146.64 ms).
    {"141 bytes at 9600 baud", paced(141), {"frame of 141 at 176640"}},
    {"26 bytes wait for more, for ever", {{0, 26}}, {"waits with 26"}},
    {"140 bytes wait for more, for ever", {{0, 140}}, {"waits with 140"}},
    {"28 bytes are the beginning of a train", {{0, 28}}, {"waits with 28"}},
    {"no gap is looked for: the next bytes complete the count", {{0, 20}, {9000000, 7}}, {"frame of 27 at 9030000"}},
    {"a fragment and a lone group an hour later come to one count", {{0, 5}, {3600000, 27}}, {"waits with 32"}},
    {"a 28th byte within the 30 ms makes a train of it", {{0, 27}, {29999, 1}}, {"waits with 28"}},
    {"a 28th byte at the very end of the 30 ms is counted", {{0, 27}, {30000, 1}}, {"waits with 28"}},
    {"a 28th byte after the 30 ms begins the next frame",
     {{0, 27}, {30001, 1}},
     {"frame of 27 at 30000", "waits with 1"}},
    {"later bytes do not start the settling time anew", {{0, 27}, {10000, 50}, {25000, 64}}, {"frame of 141 at 60000"}},
    {"a 142nd byte within the second 30 ms: the whole is thrown away",
     {{0, 141}, {59999, 1}},
     {"overran with 142 at 60000"}},
    {"a 142nd byte at the very end of it is counted", {{0, 141}, {60000, 1}}, {"overran with 142 at 60000"}},
    {"a 142nd byte after it begins the next frame", {{0, 141}, {60001, 1}}, {"frame of 141 at 60000", "waits with 1"}},
    {"142 bytes at once are thrown away", {{0, 142}}, {"overran with 142 at 60000"}},
    {"a train and a lone group in one piece are thrown away", {{0, 168}}, {"overran with 168 at 60000"}},
    {"two lone groups in one piece wait for a train", {{0, 54}}, {"waits with 54"}},
    {"two halves within the 30 ms are one count", {{0, 13}, {20000, 14}}, {"frame of 27 at 50000"}},
    {"a train in two writes within 30 ms", {{0, 70}, {20000, 71}}, {"frame of 141 at 60000"}},
    {"a train that stops for a minute is completed by its rest",
     {{0, 100}, {60000000, 41}},
     {"frame of 141 at 60030000"}},
    {"a train that stops after 27 bytes is cut there",
     {{0, 27}, {100000, 114}},
     {"frame of 27 at 30000", "waits with 114"}},
    {"the rest of a train completes its count with the next lone group",
     {{0, 114}, {8000000, 27}},
     {"frame of 141 at 8030000"}},
    {"after an overrun the next frame is taken",
     {{0, 150}, {1000000, 27}},
     {"overran with 150 at 60000", "frame of 27 at 1030000"}},
    {"lone groups a second apart are each taken",
     {{0, 27}, {1000000, 27}, {2000000, 27}},
     {"frame of 27 at 30000", "frame of 27 at 1030000", "frame of 27 at 2030000"}},
    {"a paced lone group after a paced train",
     joined(paced(141), paced(27, 5000000)),
     {"frame of 141 at 176640", "frame of 27 at 5058080"}},
    {"4096 bytes are kept and overrun", {{0, 4096}}, {"overran with 4096 at 60000"}},
    {"4097 bytes are not kept", {{0, 4097}}, {"buffer overran at 0"}},
    {"the limit is for all that has gathered", {{0, 100}, {1000, 3997}}, {"buffer overran at 1000"}},
    {"after too many bytes the next frame is taken",
     {{0, 5000}, {1000000, 27}},
     {"buffer overran at 0", "frame of 27 at 1030000"}},
};

TEST(LineFramer, CutsTheStreamByCountAndQuiet) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(play(c.arrivals), c.events);
    }
}

TEST(LineFramer, GoesThroughItsStatesInOrder) {
    LineFramer framer;
    EXPECT_EQ(framer.state(), State::idle);
    EXPECT_FALSE(framer.gathering());
    framer.push(some(1), start);
    EXPECT_EQ(framer.state(), State::fill27);
    EXPECT_TRUE(framer.gathering());
    EXPECT_EQ(framer.count(), 1U);
    EXPECT_FALSE(framer.wake_at());
    framer.push(some(30), start);
    EXPECT_EQ(framer.state(), State::settle27);
    EXPECT_EQ(framer.wake_at(), start + milliseconds{30});
    EXPECT_EQ(framer.poll(start + milliseconds{30}), Outcome::nothing);
    EXPECT_EQ(framer.state(), State::fill141);
    EXPECT_FALSE(framer.wake_at());
    framer.push(some(110), start + milliseconds{80});
    EXPECT_EQ(framer.state(), State::settle141);
    EXPECT_EQ(framer.wake_at(), start + milliseconds{110});
    EXPECT_EQ(framer.poll(start + milliseconds{110}), Outcome::frame);
    EXPECT_EQ(framer.state(), State::work);
    EXPECT_FALSE(framer.gathering());
    EXPECT_FALSE(framer.wake_at());
    EXPECT_EQ(framer.frame().size(), 141U);
    framer.work_done();
    EXPECT_EQ(framer.state(), State::idle);
}

TEST(LineFramer, KeepsTheBytesInTheirOrder) {
    LineFramer framer;
    Bytes expected;
    for (std::uint8_t n = 0; n < 27; ++n) {
        framer.push({n}, start);
        expected.push_back(n);
    }
    ASSERT_EQ(framer.poll(start + milliseconds{30}), Outcome::frame);
    EXPECT_EQ(framer.frame(), expected);
}

TEST(LineFramer, NoBytesStartNothing) {
    LineFramer framer;
    EXPECT_TRUE(framer.push({}, start));
    EXPECT_EQ(framer.state(), State::idle);
    EXPECT_FALSE(framer.wake_at());
}

TEST(LineFramer, PollingBeforeTheTimeChangesNothing) {
    LineFramer framer;
    framer.push(some(27), start);
    EXPECT_EQ(framer.poll(start + microseconds{29999}), Outcome::nothing);
    EXPECT_EQ(framer.state(), State::settle27);
    EXPECT_EQ(framer.poll(start + milliseconds{30}), Outcome::frame);
}

TEST(LineFramer, PollingAnIdleFramerChangesNothing) {
    LineFramer framer;
    EXPECT_EQ(framer.poll(start), Outcome::nothing);
    EXPECT_EQ(framer.state(), State::idle);
}

TEST(LineFramer, ALatePollCountsWhatIsThereByThen) {
    LineFramer framer;
    framer.push(some(27), start);
    framer.push(some(1), start + milliseconds{45});
    EXPECT_EQ(framer.poll(start + milliseconds{50}), Outcome::nothing);
    EXPECT_EQ(framer.state(), State::fill141);
}

TEST(LineFramer, ATrainThatIsWholeAtALatePollSettlesFromThere) {
    LineFramer framer;
    framer.push(some(141), start);
    EXPECT_EQ(framer.poll(start + milliseconds{200}), Outcome::nothing);
    EXPECT_EQ(framer.wake_at(), start + milliseconds{230});
}

TEST(LineFramer, BytesDuringTheWorkAreNotKept) {
    LineFramer framer;
    framer.push(some(27), start);
    ASSERT_EQ(framer.poll(start + milliseconds{30}), Outcome::frame);
    EXPECT_TRUE(framer.push(some(5000), start + milliseconds{31}));
    EXPECT_EQ(framer.frame().size(), 27U);
    framer.work_done();
    EXPECT_EQ(framer.state(), State::idle);
    EXPECT_EQ(framer.count(), 0U);
}

TEST(LineFramer, AHoldThrowsAwayWhatWasGatheredAndTakesNothingFor500Ms) {
    for (const std::size_t gathered : {std::size_t{0}, std::size_t{10}, std::size_t{27}, std::size_t{50}}) {
        SCOPED_TRACE(gathered);
        LineFramer framer;
        framer.push(some(gathered), start);
        framer.hold(start);
        EXPECT_EQ(framer.state(), State::hold);
        EXPECT_EQ(framer.wake_at(), start + milliseconds{500});
        framer.push(some(27), start + milliseconds{100});
        EXPECT_EQ(framer.poll(start + milliseconds{499}), Outcome::nothing);
        EXPECT_EQ(framer.poll(start + milliseconds{500}), Outcome::hold_over);
        EXPECT_EQ(framer.state(), State::idle);
        EXPECT_FALSE(framer.wake_at());
        EXPECT_EQ(framer.count(), 0U);
        framer.push(some(27), start + milliseconds{600});
        ASSERT_EQ(framer.poll(start + milliseconds{630}), Outcome::frame);
        EXPECT_EQ(framer.frame().size(), 27U);
    }
}

TEST(LineFramer, ASecondFaultHoldsFor500MsFromItself) {
    LineFramer framer;
    framer.hold(start);
    framer.hold(start + milliseconds{300});
    EXPECT_EQ(framer.wake_at(), start + milliseconds{800});
}

TEST(LineFramer, AHoldDuringTheWorkLeavesTheFrameInHand) {
    LineFramer framer;
    framer.push(some(27), start);
    ASSERT_EQ(framer.poll(start + milliseconds{30}), Outcome::frame);
    framer.hold(start + milliseconds{40});
    EXPECT_EQ(framer.frame().size(), 27U);
    EXPECT_EQ(framer.poll(start + milliseconds{540}), Outcome::hold_over);
    EXPECT_EQ(framer.state(), State::work);
    framer.work_done();
    EXPECT_EQ(framer.state(), State::idle);
}

TEST(LineFramer, WorkThatEndsInAHoldLeavesTheHoldToItsTime) {
    LineFramer framer;
    framer.push(some(27), start);
    ASSERT_EQ(framer.poll(start + milliseconds{30}), Outcome::frame);
    framer.hold(start + milliseconds{40});
    framer.work_done();
    EXPECT_EQ(framer.state(), State::hold);
    EXPECT_EQ(framer.wake_at(), start + milliseconds{540});
    EXPECT_EQ(framer.poll(start + milliseconds{540}), Outcome::hold_over);
    EXPECT_EQ(framer.state(), State::idle);
    framer.push(some(27), start + milliseconds{600});
    EXPECT_EQ(framer.poll(start + milliseconds{630}), Outcome::frame);
}

TEST(LineFramer, AFrameThatIsGatheredCanBeAbandoned) {
    for (const std::size_t gathered : {std::size_t{10}, std::size_t{27}, std::size_t{141}}) {
        SCOPED_TRACE(gathered);
        LineFramer framer;
        framer.push(some(gathered), start);
        framer.abandon();
        EXPECT_EQ(framer.state(), State::idle);
        EXPECT_FALSE(framer.wake_at());
        EXPECT_EQ(framer.count(), 0U);
    }
}

TEST(LineFramer, WorkAndHoldAreNotAbandoned) {
    LineFramer framer;
    framer.push(some(27), start);
    ASSERT_EQ(framer.poll(start + milliseconds{30}), Outcome::frame);
    framer.abandon();
    EXPECT_EQ(framer.state(), State::work);
    framer.hold(start + milliseconds{31});
    framer.abandon();
    EXPECT_EQ(framer.state(), State::hold);
}

/// The law behind the cases: what the frames are does not depend on how the port slices the bytes, as long as a frame's
/// bytes come within its settling times.
TEST(LineFramer, TheSlicingOfABurstDoesNotMatter) {
    const std::vector<std::size_t> stream = {141, 27, 27, 141, 27};
    for (std::size_t slice = 1; slice <= 141; ++slice) {
        SCOPED_TRACE(slice);
        std::vector<Arrival> arrivals;
        int at = 0;
        for (const std::size_t length : stream) {
            int piece_at = at;
            // A lone group must be whole before its 27th byte has settled, a train likewise: pieces 1 us apart are.
            for (std::size_t sent = 0; sent < length; sent += slice)
                arrivals.push_back({piece_at++, std::min(slice, length - sent)});
            at += 1000000;
        }
        const auto events = play(arrivals);
        ASSERT_EQ(events.size(), stream.size());
        for (std::size_t n = 0; n < stream.size(); ++n)
            EXPECT_EQ(events[n].substr(0, events[n].find(" at")), "frame of " + std::to_string(stream[n]));
    }
}

}  // namespace
}  // namespace nimbry
