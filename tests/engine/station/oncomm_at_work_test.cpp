#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/engine/station/oncomm_lines.h"

namespace nimbry {
namespace {

/// A socket whose sending takes two seconds: the work on a frame that is forwarded waits that long.
struct SlowDatagrams : test::RecordingDatagrams {
    explicit SlowDatagrams(Pauses& pauses) : pauses_(pauses) {}
    std::optional<SendFault> send(const std::string& host, std::uint16_t port, const Bytes& bytes) override {
        pauses_.pause(2s);
        return RecordingDatagrams::send(host, port, bytes);
    }
    Pauses& pauses_;
};

struct SlowWork : BareCopy {
    SlowDatagrams slow{pauses};
    Ports slow_ports{clock, pauses, files, line, slow, streams, notices, sounds, desktop, transfers};
    Copy slow_copy{state, slow_ports, ini, log, timers};
    OnComm oncomm{slow_copy};

    explicit SlowWork(std::vector<std::string> clients = {"10.0.0.1"}) {
        line.open("/dev/ttyS0");
        state.comm.SerComReady = true;
        state.settings.bcastnet = true;
        state.settings.iplist = std::move(clients);
        pauses.set_wake_source([this] { return oncomm.wake_at(); }, [this] { oncomm.wake(); });
        arrive(write_train(readings()));
        pauses.pause(100ms);
    }
    ~SlowWork() { pauses.end_all(); }

    void arrive(const Bytes& bytes) {
        line.arrive(bytes);
        pauses.start([this] { oncomm.line_readable(); });
    }
};

TEST(OnCommAtWork, WhatArrivesMeanwhileIsLost) {
    SlowWork copy;
    ASSERT_EQ(copy.oncomm.framing(), State::work);
    copy.arrive(write_lone_wind(readings()));
    copy.line.arrive(Bytes(5, 0xCF));
    copy.pauses.pause(2s);
    EXPECT_EQ(copy.oncomm.framing(), State::idle);
    EXPECT_EQ(copy.state.comm.counters.lone, 0U);
    EXPECT_EQ(copy.state.comm.counters.bytes_thrown_away, 32U);
    EXPECT_EQ(copy.state.comm.EventWord, "weather data");
    EXPECT_FALSE(copy.state.comm.dworkingb);
}

TEST(OnCommAtWork, TheClientsGetTheFrameAsItCameWhateverBecomesOfItsBytesMeanwhile) {
    SlowWork copy({"10.0.0.1", "10.0.0.2"});
    copy.state.comm.RawBytes.clear();
    copy.pauses.pause(5s);
    ASSERT_EQ(copy.slow.sent.size(), 2U);
    EXPECT_EQ(copy.slow.sent[1].bytes, write_train(readings()));
}

TEST(OnCommAtWork, TheClientsGetTheFrameOnceItsGroupsAreDone) {
    SlowWork copy;  // stands in its sending
    EXPECT_EQ(copy.state.comm.counters.trains, 1U);
    EXPECT_TRUE(copy.state.run.fullystarted) << "the cycle has run";
    EXPECT_TRUE(copy.state.comm.gotcomms);
    EXPECT_TRUE(copy.slow.sent.empty());
    EXPECT_NE(copy.state.panel.Lamp.fore, colours::red) << "label and lamp come last";
    copy.pauses.pause(2s);
    EXPECT_EQ(copy.slow.sent.size(), 1U);
    EXPECT_EQ(copy.state.panel.Lamp.fore, colours::red);
}

TEST(OnCommAtWork, EveryEventStillShowsThatTheLineLives) {
    SlowWork copy;
    copy.state.comm.ccheckflagb = true;
    copy.arrive({0x00});
    EXPECT_FALSE(copy.state.comm.ccheckflagb);
}

TEST(OnCommAtWork, NothingThatHoldsDataOffBreaksIntoIt) {
    for (const HoldOff& c : hold_offs) {
        SCOPED_TRACE(c.what);
        SlowWork copy;
        c.set(copy.state, true);
        copy.arrive({0x00});
        EXPECT_EQ(copy.oncomm.framing(), State::work);
        c.set(copy.state, false);
        copy.pauses.pause(2s);
        ASSERT_EQ(copy.slow.sent.size(), 1U);
        EXPECT_EQ(copy.slow.sent[0].bytes, write_train(readings()));
    }
}

TEST(OnCommAtWork, AFaultShowsItsWordAndLeavesTheFrameInHand) {
    SlowWork copy;
    copy.state.comm.dworkingb.set();
    copy.pauses.start([&] { copy.oncomm.line_fault(LineFault::framing); });
    EXPECT_EQ(copy.state.panel.lblStatus.text, "Framing Error");
    copy.pauses.pause(600ms);
    EXPECT_EQ(copy.oncomm.framing(), State::work);
    EXPECT_TRUE(copy.state.comm.dworkingb);
    EXPECT_EQ(copy.state.comm.RawBytes.size(), 141U);
    copy.pauses.pause(2s);
    EXPECT_EQ(copy.oncomm.framing(), State::idle);
    EXPECT_EQ(copy.slow.sent[0].bytes, write_train(readings()));
}

TEST(OnCommAtWork, WorkThatEndsWithinTheHalfSecondLetsItPass) {
    SlowWork copy;
    copy.pauses.pause(1800ms);
    copy.pauses.start([&] { copy.oncomm.line_fault(LineFault::framing); });
    copy.pauses.pause(400ms);
    EXPECT_EQ(copy.oncomm.framing(), State::hold);
    EXPECT_EQ(copy.state.comm.EventWord, "weather data");
    copy.pauses.pause(100ms);
    EXPECT_EQ(copy.oncomm.framing(), State::idle);
}

}  // namespace
}  // namespace nimbry
