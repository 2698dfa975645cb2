#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/engine/station/oncomm_lines.h"

namespace nimbry {
namespace {

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

TEST(OnComm, EveryFrameThatIsNotUsedHasItsReasonAndItsCount) {
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

TEST(OnComm, ForwardingGoesByTheTagAndNotByTheChecksum) {
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

TEST(OnComm, TheFirstTrainIsForwarded) {
    LiveLine copy;
    copy.state.settings.bcastnet = true;
    copy.state.settings.iplist = {"10.0.0.1"};
    copy.deliver(write_train(readings()));
    ASSERT_EQ(copy.datasock.sent.size(), 1U);
    EXPECT_EQ(copy.datasock.sent[0].bytes, write_train(readings()));
}

TEST(OnComm, AfterAnyRefusedFrameTheNextGoodTrainIsTaken) {
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

}  // namespace
}  // namespace nimbry
