#include "engine/station/oncomm.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/core/run_time_error.h"
#include "tests/engine/station/oncomm_lines.h"

namespace nimbry {
namespace {

std::string header(const BareCopy& copy) {
    const MainPanel& panel = copy.state.panel;
    return panel.lblStatus.text + (panel.Lamp.fore == colours::red ? ", lamp red" : ", lamp dark");
}

// The road of a frame
TEST(OnComm, ATrainIsTaken60MsAfterItsBytes) {
    LiveLine copy;
    copy.arrive(write_train(readings()));
    EXPECT_TRUE(copy.state.comm.dworkingb);
    EXPECT_EQ(copy.state.comm.counters.trains, 0U);
    copy.pauses.pause(59ms);
    EXPECT_EQ(copy.state.comm.counters.trains, 0U);
    copy.pauses.pause(1ms);
    EXPECT_EQ(copy.state.comm.counters.trains, 1U);
    EXPECT_FALSE(copy.state.comm.dworkingb);
    EXPECT_TRUE(copy.state.run.fullystarted);
    EXPECT_TRUE(copy.state.comm.gotcomms);
}

TEST(OnComm, AfterAFrameNothingOfItIsLeft) {
    StartedLine copy;
    copy.deliver(write_lone_wind(readings()));
    const CommState& comm = copy.state.comm;
    EXPECT_EQ(comm.counters.lone, 1U);
    EXPECT_TRUE(comm.RawBytes.empty());
    EXPECT_EQ(comm.GroupTag, "");
    EXPECT_EQ(comm.EventWord, "weather data");
    EXPECT_EQ(comm.ErrorWord, "");
    EXPECT_EQ(copy.oncomm.framing(), State::idle);
    EXPECT_FALSE(copy.oncomm.wake_at());
}

TEST(OnComm, AFrameThatReachesTheEndLightsTheLampAndStartsItsTimer) {
    StartedLine copy;
    struct Case {
        std::string what;
        Bytes frame;
    };
    Bytes foreign(27, 0x11);
    Bytes bad_train = write_train(readings());
    spoil_checksum(bad_train, 0xBF);
    Bytes bad_lone = write_lone_wind(readings());
    spoil_checksum(bad_lone, 0xCF);
    const std::vector<Case> cases = {{"a good train", write_train(readings())},
                                     {"a good lone group", write_lone_wind(readings())},
                                     {"a train with a bad checksum", bad_train},
                                     {"a lone group with a bad checksum", bad_lone},
                                     {"27 bytes with a foreign tag", foreign}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        copy.state.panel.Lamp.fore = colours::black;
        copy.state.panel.lblStatus.text = "";
        copy.timers.stop(TimerId::Timer2);
        copy.deliver(c.frame);
        EXPECT_EQ(header(copy), "Program Starting, lamp red");
        EXPECT_TRUE(copy.timers.running(TimerId::Timer2));
    }
}

TEST(OnComm, TheLabelSaysProgramStartingUntilTheGraphStoreIsInUse) {
    StartedLine copy;
    EXPECT_EQ(copy.state.panel.lblStatus.text, "Program Starting");
    EXPECT_EQ(copy.state.panel.lblStatus.fore, 0x8080FFU);
    copy.state.havegrafdata = true;
    copy.deliver(write_lone_wind(readings()));
    EXPECT_EQ(copy.state.panel.lblStatus.text, "Current Conditions");
    EXPECT_EQ(copy.state.panel.lblStatus.fore, 0x00FF00U);
}

TEST(OnComm, AnOverrunChangesNeitherLabelNorLamp) {
    LiveLine copy;
    copy.state.panel.lblStatus.text = "as before";
    copy.deliver(Bytes(142, 0x8F));
    EXPECT_EQ(header(copy), "as before, lamp dark");
    EXPECT_EQ(copy.state.comm.EventWord, "");
    EXPECT_EQ(copy.state.comm.refusal, FrameFault::train_overran);
    EXPECT_EQ(copy.state.comm.counters.wrong_length, 1U);
    EXPECT_EQ(copy.state.comm.counters.bytes_thrown_away, 142U);
    EXPECT_FALSE(copy.state.comm.dworkingb);
    EXPECT_EQ(copy.state.comm.GroupTag, "");
}

TEST(OnComm, ALoneGroupBeforeTheFirstTrainIsDroppedWithoutASign) {
    LiveLine copy;
    copy.state.panel.lblStatus.text = "as before";
    copy.state.settings.bcastnet = true;
    copy.state.settings.iplist = {"10.0.0.1"};
    copy.deliver(write_lone_wind(readings()));
    EXPECT_EQ(header(copy), "as before, lamp dark");
    EXPECT_EQ(copy.state.comm.EventWord, "");
    EXPECT_FALSE(copy.state.comm.DigitsCFLone.set);
    EXPECT_FALSE(copy.state.comm.dworkingb);
    EXPECT_EQ(copy.state.comm.refusal, FrameFault::before_first_train);
    EXPECT_EQ(copy.state.comm.counters.before_first_train, 1U);
    EXPECT_TRUE(copy.datasock.sent.empty());
}

TEST(OnComm, ATrainLengthTaggedCFBeforeTheFirstTrainIsDroppedToo) {
    LiveLine copy;
    Bytes frame = write_train(readings());
    frame[0] = 0xCF;
    copy.deliver(frame);
    EXPECT_EQ(copy.state.comm.refusal, FrameFault::before_first_train);
}

// What every event does, whatever the state
TEST(OnComm, AnyEventShowsThatTheLineLivesEvenWithoutBytes) {
    LiveLine copy;
    copy.state.comm.ccheckflagb = true;
    copy.readable();
    EXPECT_FALSE(copy.state.comm.ccheckflagb);
    EXPECT_FALSE(copy.state.comm.dworkingb);
    EXPECT_EQ(copy.oncomm.framing(), State::idle);
    EXPECT_FALSE(copy.oncomm.wake_at());
}

TEST(OnComm, AByteOfAHalfFrameShowsThatTheLineLives) {
    LiveLine copy;
    copy.arrive(Bytes(5, 0x8F));
    copy.state.comm.ccheckflagb = true;
    copy.arrive({0x00});
    EXPECT_FALSE(copy.state.comm.ccheckflagb);
}

TEST(OnComm, EveryEventClearsTheTwoWords) {
    LiveLine copy;
    copy.state.comm.EventWord = "weather data";
    copy.state.comm.ErrorWord = "Framing Error";
    copy.readable();
    EXPECT_EQ(copy.state.comm.EventWord, "");
    EXPECT_EQ(copy.state.comm.ErrorWord, "");
}

TEST(OnComm, TheCountIsTakenOfEverythingThatHasArrivedByThen) {
    LiveLine copy;
    copy.arrive(write_lone_wind(readings()));
    copy.line.arrive({0x01});  // the system holds it, but has not said so
    copy.pauses.pause(100ms);
    EXPECT_EQ(copy.oncomm.framing(), State::fill141);
}

TEST(OnComm, AFragmentWaitsForEver) {
    LiveLine copy;
    copy.arrive(Bytes(26, 0x8F));
    copy.pauses.pause(Milliseconds{24h});
    EXPECT_EQ(copy.oncomm.framing(), State::fill27);
    EXPECT_TRUE(copy.state.comm.dworkingb);
}

TEST(OnComm, BytesWhileDworkingbIsHeldByAnotherBeginNoFrame) {
    LiveLine copy;
    copy.state.comm.dworkingb.set();
    copy.arrive(write_train(readings()));
    copy.pauses.pause(100ms);
    EXPECT_EQ(copy.oncomm.framing(), State::idle);
    EXPECT_EQ(copy.state.comm.counters.trains, 0U);
    EXPECT_TRUE(copy.state.comm.dworkingb);
}

// Errors
TEST(OnComm, AnErrorOfItsOwnBearsItsTag) {
    struct BrokenLine : SerialLine {
        PortOpenResult open(const std::string&) override { return PortOpenResult::ok; }
        void close() override {}
        [[nodiscard]] bool is_open() const override { return true; }
        Bytes take() override { throw RunTimeError{ErrorNumber::overflow}; }
        [[nodiscard]] std::vector<std::string> devices() const override { return {}; }
    };
    BareCopy copy;
    BrokenLine line;
    Ports ports{copy.clock,   copy.pauses,  copy.files,  line,         copy.datasock,
                copy.streams, copy.notices, copy.sounds, copy.desktop, copy.transfers};
    Copy broken{copy.state, ports, copy.ini, copy.log, copy.timers};
    OnComm oncomm(broken);
    copy.state.comm.SerComReady = true;
    try {
        oncomm.line_readable();
        FAIL() << "no error";
    } catch (const UnrecoverableError& error) {
        EXPECT_EQ(error.tag, "OnComm");
        EXPECT_EQ(error.number, ErrorNumber::overflow);
    }
}

}  // namespace
}  // namespace nimbry
