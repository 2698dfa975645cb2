#include "programs/nimbry-station/recording.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

namespace nimbry::simulator {
namespace {

using namespace std::chrono_literals;

constexpr CivilTime start = std::chrono::local_days{std::chrono::year{2026} / 10 / 31} + 23h + 58min;

std::vector<Deed> all_of(Source& source) {
    std::vector<Deed> deeds;
    LineTime now{0};
    while (auto deed = source.next(now)) {
        now = deed->at + deed->pace * static_cast<long>(deed->bytes.size());
        deeds.push_back(std::move(*deed));
    }
    return deeds;
}

StreamFile stream(std::vector<StreamPiece> pieces, LineTime pace = byte_time) {
    StreamFile file;
    file.shows = "a test";
    file.from = "made by hand";
    file.clock = start;
    file.pace = pace;
    file.pieces = std::move(pieces);
    return file;
}

StreamPiece sent(LineTime at, Bytes bytes) {
    StreamPiece piece;
    piece.at = at;
    piece.bytes = std::move(bytes);
    return piece;
}

StreamPiece fault(LineTime at, LineFault what) {
    StreamPiece piece;
    piece.at = at;
    piece.fault = what;
    return piece;
}

TEST(Recording, OfAStationPlaysTheSameBytesAtTheSameTimes) {
    const StationPlay play{
        .seed = 3,
        .start = start,
        .speed = 1,
        .scenario = read_scenario("at +4s stray hex FF 00\nat +8s drop 1\nat +40s silence", start).steps};
    Station station(play);
    const std::vector<Deed> live = all_of(station);
    ASSERT_EQ(live.size(), 9U);
    StreamFile recorded = recording_of(play);
    for (const Deed& deed : live) recorded.pieces.push_back(piece_of(deed).value());

    const StreamReading read = read_stream(write_stream(recorded));
    ASSERT_TRUE(read.stream) << read.error;
    EXPECT_EQ(*read.stream, recorded);
    EXPECT_EQ(read.stream->clock, start);
    Recording played(*read.stream, 1);
    const std::vector<Deed> again = all_of(played);
    ASSERT_EQ(again.size(), live.size());
    for (std::size_t n = 0; n < live.size(); ++n) {
        EXPECT_EQ(again[n].bytes, live[n].bytes);
        EXPECT_EQ(again[n].at, live[n].at);
        EXPECT_EQ(again[n].pace, byte_time);
    }
}

TEST(Recording, HeadNamesSeedSpeedAndScenario) {
    StationPlay play{.seed = 17, .start = start, .speed = 30, .scenario = {}};
    EXPECT_EQ(recording_of(play).shows, "a simulated station, seed 17, speed 30");
    play.scenario.push_back({1s, ResetRain{}});
    EXPECT_EQ(recording_of(play).shows, "a simulated station, seed 17, speed 30, with a scenario");
}

TEST(Recording, KeepsShortPausesAndPaceAsTheyWere) {
    Recording played(stream({sent(1s, {1, 2, 3}), sent(1020ms, {4}), sent(1021ms, {5})}, 0ms), 1);
    const std::vector<Deed> deeds = all_of(played);
    ASSERT_EQ(deeds.size(), 3U);
    EXPECT_EQ(deeds[0].at, 1s);
    EXPECT_EQ(deeds[0].pace, 0ms);
    EXPECT_EQ(deeds[1].at, 1020ms);
    EXPECT_EQ(deeds[2].at, 1021ms);
}

TEST(Recording, PlayedFasterKeepsEveryPauseThatPartsFrames) {
    // 100 bytes last 104 ms. Pauses: 1000 ms before, 20 ms (short: kept), 276 ms (a tenth is too short: 60), 9500 ms.
    const Bytes bytes(100);
    Recording played(stream({sent(1000ms, bytes), sent(1124ms, bytes), sent(1504ms, bytes), sent(11108ms, bytes)}), 10);
    const std::vector<Deed> deeds = all_of(played);
    ASSERT_EQ(deeds.size(), 4U);
    EXPECT_EQ(deeds[0].at, 100ms);
    EXPECT_EQ(deeds[1].at, 100ms + 104ms + 20ms);
    EXPECT_EQ(deeds[2].at, 224ms + 104ms + 60ms);
    EXPECT_EQ(deeds[3].at, 388ms + 104ms + 950ms);
}

TEST(Recording, OfADeviceThatWentPullsTheCableAndPutsItInBeforeTheNextBytes) {
    Recording played(stream({sent(0ms, {1}), fault(2s, LineFault::gone), fault(3s, LineFault::gone), sent(12s, {2}),
                             fault(13s, LineFault::gone), sent(13500ms, {3})},
                            0ms),
                     1);
    const std::vector<Deed> deeds = all_of(played);
    ASSERT_EQ(deeds.size(), 7U);
    EXPECT_EQ(deeds[1].what, Deed::What::unplug);
    EXPECT_EQ(deeds[1].at, 2s);
    EXPECT_EQ(deeds[2].what, Deed::What::replug);
    EXPECT_EQ(deeds[2].at, 11s);
    EXPECT_EQ(deeds[3].at, 12s);
    EXPECT_EQ(deeds[4].what, Deed::What::unplug);
    EXPECT_EQ(deeds[5].what, Deed::What::replug);
    EXPECT_EQ(deeds[5].at, 13250ms) << "half way";
}

TEST(Recording, LeavesOutFaultsThatNoLineCanBeMadeToShow) {
    Recording played(stream({fault(1s, LineFault::framing), fault(2s, LineFault::overrun),
                             fault(3s, LineFault::buffer_overrun), sent(4s, {1})}),
                     1);
    const std::vector<Deed> deeds = all_of(played);
    ASSERT_EQ(deeds.size(), 1U);
    EXPECT_EQ(deeds[0].at, 4s);
}

TEST(Recording, KeepsAPulledCableAsADeviceThatWentAndNothingOfItsReturn) {
    const auto gone = piece_of({.what = Deed::What::unplug, .at = 5s});
    ASSERT_TRUE(gone);
    EXPECT_EQ(gone->fault, LineFault::gone);
    EXPECT_EQ(gone->at, 5s);
    EXPECT_EQ(piece_of({.what = Deed::What::replug, .at = 6s}), std::nullopt);
}

}  // namespace
}  // namespace nimbry::simulator
