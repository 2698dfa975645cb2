#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/engine/station/oncomm_lines.h"

namespace nimbry {
namespace {

// Faults of the line
TEST(OnComm, AFaultShowsItsWordAndTakesNothingForHalfASecond) {
    struct Case {
        LineFault fault;
        std::string word;
    };
    const std::vector<Case> cases = {{LineFault::framing, "Framing Error"},
                                     {LineFault::overrun, "Overrun Error"},
                                     {LineFault::buffer_overrun, "RxOver Error"},
                                     {LineFault::gone, "Comms Error"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.word);
        LiveLine copy;
        copy.arrive(Bytes(50, 0x8F));
        copy.state.comm.ccheckflagb = true;
        copy.line.arrive(Bytes(3, 0x00));
        copy.fault(c.fault);
        EXPECT_EQ(copy.state.comm.ErrorWord, c.word);
        EXPECT_EQ(copy.state.comm.EventWord, "");
        EXPECT_EQ(copy.state.panel.lblStatus.text, c.word);
        EXPECT_EQ(copy.state.panel.lblStatus.fore, 0xFF0000U);
        EXPECT_FALSE(copy.state.comm.ccheckflagb);
        EXPECT_TRUE(copy.state.comm.dworkingb);
        EXPECT_TRUE(copy.line.take().empty());
        copy.pauses.pause(499ms);
        EXPECT_EQ(copy.oncomm.framing(), State::hold);
        copy.pauses.pause(1ms);
        EXPECT_EQ(copy.oncomm.framing(), State::idle);
        EXPECT_FALSE(copy.state.comm.dworkingb);
        EXPECT_EQ(copy.state.comm.GroupTag, "");
        EXPECT_EQ(copy.state.panel.lblStatus.text, c.word) << "until the next frame";
    }
}

TEST(OnComm, BytesOfTheHalfSecondAreLostAndTheNextFrameIsTaken) {
    LiveLine copy;
    copy.fault(LineFault::framing);
    copy.pauses.pause(100ms);
    copy.arrive(Bytes(60, 0x8F));
    copy.line.arrive(Bytes(10, 0x00));
    copy.pauses.pause(400ms);
    EXPECT_EQ(copy.oncomm.framing(), State::idle);
    EXPECT_EQ(copy.state.comm.counters.bytes_thrown_away, 70U);
    copy.deliver(write_train(readings()));
    EXPECT_EQ(copy.state.comm.counters.trains, 1U);
    EXPECT_EQ(copy.state.panel.lblStatus.text, "Program Starting");
}

TEST(OnComm, AFaultIsNotLookedAtWhileDataIsHeldOff) {
    for (const HoldOff& c : hold_offs) {
        SCOPED_TRACE(c.what);
        LiveLine copy;
        copy.state.panel.lblStatus.text = "as before";
        c.set(copy.state, true);
        copy.fault(LineFault::overrun);
        EXPECT_EQ(copy.state.comm.ErrorWord, "");
        EXPECT_EQ(copy.state.panel.lblStatus.text, "as before");
        EXPECT_EQ(copy.oncomm.framing(), State::idle);
    }
}

TEST(OnComm, MoreBytesThanAreEverKeptAreAFaultOfTheirOwn) {
    LiveLine copy;
    copy.arrive(Bytes(4097, 0x8F));
    EXPECT_EQ(copy.state.comm.ErrorWord, "RxOver Error");
    EXPECT_EQ(copy.state.comm.refusal, FrameFault::buffer_overran);
    EXPECT_EQ(copy.state.comm.counters.bytes_thrown_away, 4097U);
    EXPECT_EQ(copy.oncomm.framing(), State::hold);
    copy.pauses.pause(500ms);
    copy.deliver(write_train(readings()));
    EXPECT_EQ(copy.state.comm.counters.trains, 1U);
}

TEST(OnComm, AFloodThatShowsAtTheEndOfASettlingTimeIsAFaultToo) {
    LiveLine copy;
    copy.arrive(Bytes(27, 0xCF));
    copy.line.arrive(Bytes(5000, 0x00));
    copy.pauses.pause(30ms);
    EXPECT_EQ(copy.state.comm.ErrorWord, "RxOver Error");
    EXPECT_EQ(copy.oncomm.framing(), State::hold);
    EXPECT_EQ(copy.state.comm.counters.bytes_thrown_away, 5027U);
}

// A device that goes away
TEST(OnComm, ADeviceThatHasGoneIsHandedOverAfterTheHalfSecond) {
    LiveLine copy;
    copy.fault(LineFault::gone);
    copy.pauses.pause(499ms);
    EXPECT_TRUE(copy.log_lines().empty());
    copy.pauses.pause(1ms);
    ASSERT_EQ(copy.log_lines().size(), 1U);
    EXPECT_TRUE(copy.log_lines()[0].ends_with(" Serial port lost"));
    EXPECT_FALSE(copy.state.comm.SerComReady);
}

TEST(OnComm, WhateverHoldsDataOffADeviceThatHasGoneIsHandedOver) {
    for (const HoldOff& c : hold_offs) {
        SCOPED_TRACE(c.what);
        LiveLine copy;
        copy.arrive(Bytes(5, 0x8F));
        c.set(copy.state, true);
        copy.fault(LineFault::gone);
        EXPECT_EQ(copy.state.comm.ErrorWord, "");
        copy.pauses.pause(500ms);
        ASSERT_EQ(copy.log_lines().size(), 1U);
        EXPECT_FALSE(copy.state.comm.dworkingb);
    }
}

TEST(OnComm, APortThatWasOpenedAgainWithinTheHalfSecondIsNotLost) {
    LiveLine copy;
    copy.fault(LineFault::gone);
    copy.line.open(std::string(LiveLine::device));
    copy.pauses.pause(1s);
    EXPECT_TRUE(copy.log_lines().empty());
    EXPECT_TRUE(copy.state.comm.SerComReady);
}

TEST(OnComm, ADeviceThatGoesDuringTheExitOrTheOpeningIsNobodysBusiness) {
    LiveLine closing;
    closing.state.run.ProgramClosing = true;
    closing.fault(LineFault::gone);
    EXPECT_FALSE(closing.oncomm.wake_at());
    LiveLine opening;
    opening.state.comm.SerComReady = false;
    opening.fault(LineFault::gone);
    EXPECT_FALSE(opening.oncomm.wake_at());
}

}  // namespace
}  // namespace nimbry
