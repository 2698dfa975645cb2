#include <gtest/gtest.h>

#include "tests/engine/station/oncomm_lines.h"

namespace nimbry {
namespace {

TEST(OnComm, NothingIsTakenBeforeThePortHasBeenOpenedForGood) {
    LiveLine copy;
    copy.state.comm.SerComReady = false;
    copy.state.comm.ccheckflagb = true;
    copy.state.comm.EventWord = "kept";
    copy.arrive(write_train(readings()));
    copy.pauses.pause(100ms);
    EXPECT_TRUE(copy.state.comm.ccheckflagb);
    EXPECT_EQ(copy.state.comm.EventWord, "kept");
    EXPECT_EQ(copy.state.comm.counters.trains, 0U);
    EXPECT_EQ(copy.line.take().size(), 141U) << "the opening reads the port itself";
}

TEST(OnComm, NothingIsDoneOnceTheProgramIsClosing) {
    LiveLine copy;
    copy.state.run.ProgramClosing = true;
    copy.state.comm.ccheckflagb = true;
    copy.arrive(write_train(readings()));
    copy.pauses.pause(100ms);
    EXPECT_TRUE(copy.state.comm.ccheckflagb);
    EXPECT_EQ(copy.state.comm.counters.trains, 0U);
}

TEST(OnComm, AClientDoesNotUseTheLine) {
    LiveLine copy;
    copy.state.settings.fromnet = true;
    copy.state.comm.ccheckflagb = true;
    copy.state.comm.EventWord = "weather data";
    copy.state.comm.ErrorWord = "Framing Error";
    copy.arrive(write_train(readings()));
    copy.pauses.pause(100ms);
    EXPECT_EQ(copy.state.comm.EventWord, "");
    EXPECT_EQ(copy.state.comm.ErrorWord, "");
    EXPECT_TRUE(copy.state.comm.ccheckflagb);
    EXPECT_EQ(copy.line.take().size(), 141U);
}

TEST(OnComm, WhatArrivesWhileDataIsHeldOffIsThrownAway) {
    for (const HoldOff& c : hold_offs) {
        SCOPED_TRACE(c.what);
        LiveLine copy;
        c.set(copy.state, true);
        copy.state.comm.ccheckflagb = true;
        copy.arrive(write_train(readings()));
        EXPECT_EQ(copy.state.comm.ccheckflagb, !c.line_lives);
        copy.pauses.pause(100ms);
        EXPECT_EQ(copy.state.comm.counters.trains, 0U);
        EXPECT_EQ(copy.state.comm.counters.bytes_thrown_away, 141U);
        EXPECT_FALSE(copy.state.comm.dworkingb);
        c.set(copy.state, false);
        copy.deliver(write_train(readings()));
        EXPECT_EQ(copy.state.comm.counters.trains, 1U);
    }
}

TEST(OnComm, AFrameThatIsBeingGatheredIsGivenUpAtTheNextByte) {
    for (const HoldOff& c : hold_offs) {
        SCOPED_TRACE(c.what);
        LiveLine copy;
        copy.arrive(Bytes(50, 0x8F));
        EXPECT_TRUE(copy.state.comm.dworkingb);
        c.set(copy.state, true);
        copy.arrive({0x00});
        EXPECT_EQ(copy.oncomm.framing(), State::idle);
        EXPECT_FALSE(copy.oncomm.wake_at());
        EXPECT_FALSE(copy.state.comm.dworkingb);
        EXPECT_EQ(copy.state.comm.counters.bytes_thrown_away, 51U);
    }
}

TEST(OnComm, AFrameThatIsBeingGatheredIsGivenUpWhenItsSettlingEnds) {
    for (const HoldOff& c : hold_offs) {
        SCOPED_TRACE(c.what);
        LiveLine copy;
        copy.arrive(write_train(readings()));
        copy.line.arrive(Bytes(3, 0x00));
        c.set(copy.state, true);
        copy.pauses.pause(30ms);
        EXPECT_EQ(copy.oncomm.framing(), State::idle);
        EXPECT_FALSE(copy.state.comm.dworkingb);
        EXPECT_EQ(copy.state.comm.counters.trains, 0U);
        EXPECT_EQ(copy.state.comm.counters.bytes_thrown_away, 144U);
        EXPECT_TRUE(copy.line.take().empty());
    }
}

TEST(OnComm, ASettlingTimeThatEndsInTheExitDoesNothing) {
    LiveLine copy;
    copy.arrive(write_train(readings()));
    copy.state.run.ProgramClosing = true;
    copy.pauses.pause(100ms);
    EXPECT_EQ(copy.state.comm.counters.trains, 0U);
    EXPECT_FALSE(copy.oncomm.wake_at());
}

TEST(OnComm, APortThatHasJustBeenOpenedIsFramedFromTheStart) {
    LiveLine copy;
    copy.arrive(Bytes(20, 0xCF));
    copy.oncomm.line_opened();
    EXPECT_FALSE(copy.state.comm.dworkingb);
    copy.deliver(write_train(readings()));
    EXPECT_EQ(copy.state.comm.counters.trains, 1U);
}

}  // namespace
}  // namespace nimbry
