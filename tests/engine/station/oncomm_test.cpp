#include "engine/station/oncomm.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "engine/core/run_time_error.h"
#include "tests/world/live_line.h"

namespace nimbry {
namespace {

using namespace std::chrono_literals;
using State = LineFramer::State;
using test::BareCopy;
using test::LiveLine;

/// Readings of the moment that the virtual computer clock shows, so that no clock is wrong.
StationReadings readings() {
    StationReadings r;
    r.clock = {0, 0, 14, 5, 10};
    return r;
}

/// A copy that has had its first train.
struct StartedLine : LiveLine {
    StartedLine() {
        deliver(write_train(readings()));
        pauses.pause(2s);
    }
};

std::string header(const BareCopy& copy) {
    const MainPanel& panel = copy.state.panel;
    return panel.lblStatus.text + (panel.Lamp.fore == colours::red ? ", lamp red" : ", lamp dark");
}

// The road of a frame

TEST(OnComm, a_train_is_taken_60_ms_after_its_bytes) {
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

TEST(OnComm, after_a_frame_nothing_of_it_is_left) {
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

TEST(OnComm, a_frame_that_reaches_the_end_lights_the_lamp_and_starts_its_timer) {
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

TEST(OnComm, the_label_says_program_starting_until_the_graph_store_is_in_use) {
    StartedLine copy;
    EXPECT_EQ(copy.state.panel.lblStatus.text, "Program Starting");
    EXPECT_EQ(copy.state.panel.lblStatus.fore, 0x8080FFU);
    copy.state.havegrafdata = true;
    copy.deliver(write_lone_wind(readings()));
    EXPECT_EQ(copy.state.panel.lblStatus.text, "Current Conditions");
    EXPECT_EQ(copy.state.panel.lblStatus.fore, 0x00FF00U);
}

TEST(OnComm, an_overrun_changes_neither_label_nor_lamp) {
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

TEST(OnComm, a_lone_group_before_the_first_train_is_dropped_without_a_sign) {
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

TEST(OnComm, a_train_length_tagged_CF_before_the_first_train_is_dropped_too) {
    LiveLine copy;
    Bytes frame = write_train(readings());
    frame[0] = 0xCF;
    copy.deliver(frame);
    EXPECT_EQ(copy.state.comm.refusal, FrameFault::before_first_train);
}

// What each frame counts as

struct RefusalCase {
    std::string what;
    Bytes frame;
    std::optional<FrameFault> refusal;
    bool forwarded;
};

std::vector<RefusalCase> refusal_cases() {
    const Bytes train = write_train(readings());
    const Bytes lone = write_lone_wind(readings());
    auto tagged_as = [](Bytes frame, std::uint8_t tag) {
        frame[0] = tag;
        return frame;
    };
    auto spoiled = [](Bytes frame, std::uint8_t tag) {
        spoil_checksum(frame, tag);
        return frame;
    };
    StationReadings impossible = readings();
    impossible.clock.day = 31;
    impossible.clock.month = 2;
    return {
        {"a good train", train, std::nullopt, true},
        {"a good lone group", lone, std::nullopt, true},
        {"27 bytes tagged 8F", tagged_as(lone, 0x8F), FrameFault::wrong_length, true},
        {"141 bytes tagged CF", tagged_as(train, 0xCF), FrameFault::wrong_length, true},
        {"27 bytes tagged 9F", tagged_as(lone, 0x9F), FrameFault::unknown_tag, false},
        {"27 bytes tagged AF", tagged_as(lone, 0xAF), FrameFault::unknown_tag, false},
        {"27 bytes tagged BF", tagged_as(lone, 0xBF), FrameFault::unknown_tag, false},
        {"27 bytes tagged 00", tagged_as(lone, 0x00), FrameFault::unknown_tag, false},
        {"141 bytes tagged 9F", tagged_as(train, 0x9F), FrameFault::unknown_tag, false},
        {"a train with a bad first checksum", spoiled(train, 0x8F), FrameFault::bad_checksum, true},
        {"a train with a bad last checksum", spoiled(train, 0xCF), FrameFault::bad_checksum, true},
        {"a lone group with a bad checksum", spoiled(lone, 0xCF), FrameFault::bad_checksum, true},
        {"a train of 31 February", write_train(impossible), FrameFault::impossible_date, true},
    };
}

TEST(OnComm, every_frame_that_is_not_used_has_its_reason_and_its_count) {
    for (const RefusalCase& c : refusal_cases()) {
        SCOPED_TRACE(c.what);
        StartedLine copy;
        const auto before = copy.state.comm.counters;
        copy.deliver(c.frame);
        const auto& after = copy.state.comm.counters;
        EXPECT_EQ(copy.state.comm.refusal, c.refusal);
        EXPECT_EQ(after.wrong_length - before.wrong_length, c.refusal == FrameFault::wrong_length ? 1U : 0U);
        EXPECT_EQ(after.unknown_tag - before.unknown_tag, c.refusal == FrameFault::unknown_tag ? 1U : 0U);
        EXPECT_EQ(after.bad_checksum - before.bad_checksum, c.refusal == FrameFault::bad_checksum ? 1U : 0U);
        EXPECT_EQ(after.bytes_thrown_away, before.bytes_thrown_away);
        EXPECT_FALSE(copy.state.comm.dworkingb);
    }
}

TEST(OnComm, forwarding_goes_by_the_tag_and_not_by_the_checksum) {
    for (const RefusalCase& c : refusal_cases()) {
        SCOPED_TRACE(c.what);
        StartedLine copy;
        copy.state.settings.bcastnet = true;
        copy.state.settings.iplist = {"10.0.0.1"};
        copy.deliver(c.frame);
        ASSERT_EQ(copy.datasock.sent.size(), c.forwarded ? 1U : 0U);
        if (c.forwarded) {
            EXPECT_EQ(copy.datasock.sent[0].bytes, c.frame);
        }
    }
}

TEST(OnComm, the_first_train_is_forwarded) {
    LiveLine copy;
    copy.state.settings.bcastnet = true;
    copy.state.settings.iplist = {"10.0.0.1"};
    copy.deliver(write_train(readings()));
    ASSERT_EQ(copy.datasock.sent.size(), 1U);
    EXPECT_EQ(copy.datasock.sent[0].bytes, write_train(readings()));
}

TEST(OnComm, after_any_refused_frame_the_next_good_train_is_taken) {
    for (const RefusalCase& c : refusal_cases()) {
        SCOPED_TRACE(c.what);
        StartedLine copy;
        copy.deliver(c.frame);
        const auto before = copy.state.comm.counters.trains;
        copy.deliver(write_train(readings()));
        EXPECT_EQ(copy.state.comm.counters.trains, before + 1);
        EXPECT_EQ(copy.state.comm.refusal, std::nullopt);
    }
}

// What every event does, whatever the state

TEST(OnComm, any_event_shows_that_the_line_lives_even_without_bytes) {
    LiveLine copy;
    copy.state.comm.ccheckflagb = true;
    copy.readable();
    EXPECT_FALSE(copy.state.comm.ccheckflagb);
    EXPECT_FALSE(copy.state.comm.dworkingb);
    EXPECT_EQ(copy.oncomm.framing(), State::idle);
    EXPECT_FALSE(copy.oncomm.wake_at());
}

TEST(OnComm, a_byte_of_a_half_frame_shows_that_the_line_lives) {
    LiveLine copy;
    copy.arrive(Bytes(5, 0x8F));
    copy.state.comm.ccheckflagb = true;
    copy.arrive({0x00});
    EXPECT_FALSE(copy.state.comm.ccheckflagb);
}

TEST(OnComm, every_event_clears_the_two_words) {
    LiveLine copy;
    copy.state.comm.EventWord = "weather data";
    copy.state.comm.ErrorWord = "Framing Error";
    copy.readable();
    EXPECT_EQ(copy.state.comm.EventWord, "");
    EXPECT_EQ(copy.state.comm.ErrorWord, "");
}

TEST(OnComm, the_count_is_taken_of_everything_that_has_arrived_by_then) {
    LiveLine copy;
    copy.arrive(write_lone_wind(readings()));
    copy.line.arrive({0x01});  // the system holds it, but has not said so
    copy.pauses.pause(100ms);
    EXPECT_EQ(copy.oncomm.framing(), State::fill141);
}

TEST(OnComm, a_fragment_waits_for_ever) {
    LiveLine copy;
    copy.arrive(Bytes(26, 0x8F));
    copy.pauses.pause(Milliseconds{24h});
    EXPECT_EQ(copy.oncomm.framing(), State::fill27);
    EXPECT_TRUE(copy.state.comm.dworkingb);
}

TEST(OnComm, bytes_while_dworkingb_is_held_by_another_begin_no_frame) {
    LiveLine copy;
    copy.state.comm.dworkingb.set();
    copy.arrive(write_train(readings()));
    copy.pauses.pause(100ms);
    EXPECT_EQ(copy.oncomm.framing(), State::idle);
    EXPECT_EQ(copy.state.comm.counters.trains, 0U);
    EXPECT_TRUE(copy.state.comm.dworkingb);
}

// What holds data off

TEST(OnComm, nothing_is_taken_before_the_port_has_been_opened_for_good) {
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

TEST(OnComm, nothing_is_done_once_the_program_is_closing) {
    LiveLine copy;
    copy.state.run.ProgramClosing = true;
    copy.state.comm.ccheckflagb = true;
    copy.arrive(write_train(readings()));
    copy.pauses.pause(100ms);
    EXPECT_TRUE(copy.state.comm.ccheckflagb);
    EXPECT_EQ(copy.state.comm.counters.trains, 0U);
}

TEST(OnComm, a_client_does_not_use_the_line) {
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

struct HoldOff {
    std::string what;
    void (*set)(WeatherState&, bool);
    bool line_lives;  ///< its events clear ccheckflagb
};

const std::vector<HoldOff> hold_offs = {
    {"the splash", [](WeatherState& s, bool on) { s.comm.splashing = on; }, false},
    {"a setup dialog", [](WeatherState& s, bool on) { s.comm.initflag = on; }, false},
    {"a changeover", [](WeatherState& s, bool on) { on ? s.comm.changebusy.set() : s.comm.changebusy.clear(); }, true},
};

TEST(OnComm, what_arrives_while_data_is_held_off_is_thrown_away) {
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

TEST(OnComm, a_frame_that_is_being_gathered_is_given_up_at_the_next_byte) {
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

TEST(OnComm, a_frame_that_is_being_gathered_is_given_up_when_its_settling_ends) {
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

TEST(OnComm, a_settling_time_that_ends_in_the_exit_does_nothing) {
    LiveLine copy;
    copy.arrive(write_train(readings()));
    copy.state.run.ProgramClosing = true;
    copy.pauses.pause(100ms);
    EXPECT_EQ(copy.state.comm.counters.trains, 0U);
    EXPECT_FALSE(copy.oncomm.wake_at());
}

TEST(OnComm, a_port_that_has_just_been_opened_is_framed_from_the_start) {
    LiveLine copy;
    copy.arrive(Bytes(20, 0xCF));
    copy.oncomm.line_opened();
    EXPECT_FALSE(copy.state.comm.dworkingb);
    copy.deliver(write_train(readings()));
    EXPECT_EQ(copy.state.comm.counters.trains, 1U);
}

// Faults of the line

TEST(OnComm, a_fault_shows_its_word_and_takes_nothing_for_half_a_second) {
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

TEST(OnComm, bytes_of_the_half_second_are_lost_and_the_next_frame_is_taken) {
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

TEST(OnComm, a_fault_is_not_looked_at_while_data_is_held_off) {
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

TEST(OnComm, more_bytes_than_are_ever_kept_are_a_fault_of_their_own) {
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

TEST(OnComm, a_flood_that_shows_at_the_end_of_a_settling_time_is_a_fault_too) {
    LiveLine copy;
    copy.arrive(Bytes(27, 0xCF));
    copy.line.arrive(Bytes(5000, 0x00));
    copy.pauses.pause(30ms);
    EXPECT_EQ(copy.state.comm.ErrorWord, "RxOver Error");
    EXPECT_EQ(copy.oncomm.framing(), State::hold);
    EXPECT_EQ(copy.state.comm.counters.bytes_thrown_away, 5027U);
}

// A device that goes away

TEST(OnComm, a_device_that_has_gone_is_handed_over_after_the_half_second) {
    LiveLine copy;
    copy.fault(LineFault::gone);
    copy.pauses.pause(499ms);
    EXPECT_TRUE(copy.log_lines().empty());
    copy.pauses.pause(1ms);
    ASSERT_EQ(copy.log_lines().size(), 1U);
    EXPECT_TRUE(copy.log_lines()[0].ends_with(" Serial port lost"));
    EXPECT_FALSE(copy.state.comm.SerComReady);
}

TEST(OnComm, whatever_holds_data_off_a_device_that_has_gone_is_handed_over) {
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

TEST(OnComm, a_port_that_was_opened_again_within_the_half_second_is_not_lost) {
    LiveLine copy;
    copy.fault(LineFault::gone);
    copy.line.open(std::string(LiveLine::device));
    copy.pauses.pause(1s);
    EXPECT_TRUE(copy.log_lines().empty());
    EXPECT_TRUE(copy.state.comm.SerComReady);
}

TEST(OnComm, a_device_that_goes_during_the_exit_or_the_opening_is_nobodys_business) {
    LiveLine closing;
    closing.state.run.ProgramClosing = true;
    closing.fault(LineFault::gone);
    EXPECT_FALSE(closing.oncomm.wake_at());
    LiveLine opening;
    opening.state.comm.SerComReady = false;
    opening.fault(LineFault::gone);
    EXPECT_FALSE(opening.oncomm.wake_at());
}

// While a frame is worked on

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
    Ports slow_ports{clock, pauses, files, line, slow, notices, sounds, desktop};
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

TEST(OnCommAtWork, what_arrives_meanwhile_is_lost) {
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

TEST(OnCommAtWork, the_clients_get_the_frame_as_it_came_whatever_becomes_of_its_bytes_meanwhile) {
    SlowWork copy({"10.0.0.1", "10.0.0.2"});
    copy.state.comm.RawBytes.clear();
    copy.pauses.pause(5s);
    ASSERT_EQ(copy.slow.sent.size(), 2U);
    EXPECT_EQ(copy.slow.sent[1].bytes, write_train(readings()));
}

TEST(OnCommAtWork, every_event_still_shows_that_the_line_lives) {
    SlowWork copy;
    copy.state.comm.ccheckflagb = true;
    copy.arrive({0x00});
    EXPECT_FALSE(copy.state.comm.ccheckflagb);
}

TEST(OnCommAtWork, nothing_that_holds_data_off_breaks_into_it) {
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

TEST(OnCommAtWork, a_fault_shows_its_word_and_leaves_the_frame_in_hand) {
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

TEST(OnCommAtWork, work_that_ends_within_the_half_second_lets_it_pass) {
    SlowWork copy;
    copy.pauses.pause(1800ms);
    copy.pauses.start([&] { copy.oncomm.line_fault(LineFault::framing); });
    copy.pauses.pause(400ms);
    EXPECT_EQ(copy.oncomm.framing(), State::hold);
    EXPECT_EQ(copy.state.comm.EventWord, "weather data");
    copy.pauses.pause(100ms);
    EXPECT_EQ(copy.oncomm.framing(), State::idle);
}

// Errors

TEST(OnComm, an_error_of_its_own_bears_its_tag) {
    struct BrokenLine : SerialLine {
        PortOpenResult open(const std::string&) override { return PortOpenResult::ok; }
        void close() override {}
        [[nodiscard]] bool is_open() const override { return true; }
        Bytes take() override { throw RunTimeError{ErrorNumber::overflow}; }
    };
    BareCopy copy;
    BrokenLine line;
    Ports ports{copy.clock, copy.pauses, copy.files, line, copy.datasock, copy.notices, copy.sounds, copy.desktop};
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
