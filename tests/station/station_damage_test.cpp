#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <string>
#include <vector>

#include "tests/station/played.h"

namespace nimbry::simulator {
namespace {

using testing::ElementsAre;

/// The names of the faults that a train shows.
std::vector<std::string> faults_shown(const Bytes& train) {
    const Decoded d(train);
    std::vector<std::string> shown;
    const auto see = [&](bool it, const char* name) {
        if (it) shown.emplace_back(name);
    };
    see(flag_set(d.wind, digits_cf::fault), "wind");
    see(fault_marked(d.temperature, digits_9f::outdoor_fault), "outdoor-temperature");
    see(fault_marked(d.clock, digits_8f::outdoor_fault), "outdoor-humidity");
    see(fault_marked(d.temperature, digits_9f::indoor_fault), "indoor-temperature");
    see(fault_marked(d.clock, digits_8f::indoor_fault), "indoor-humidity");
    see(text(d.barometer, digits_af::barometer) == "0000", "barometer");
    see(flag_set(d.rain, digits_bf::fault), "rain");
    see(flag_set(d.wind, digits_cf::low_battery), "low-battery");
    see(flag_set(d.clock, digits_8f::outdoor_over_range), "humidity-over-range");
    see(flag_set(d.clock, digits_8f::high_over_range), "record-over-range");
    return shown;
}

TEST(StationScenario, EveryFaultShowsItsOwnMarkAndNoOtherAndGoesAgain) {
    const std::string dry = "at +0s set outdoor-humidity 50\n";
    EXPECT_TRUE(faults_shown(train_at(dry, 3s)).empty());
    for (const std::string_view name : fault_names) {
        SCOPED_TRACE(name);
        const std::string fault = dry + "at +1s fault " + std::string(name);
        const Bytes train = train_at(fault, 3s);
        EXPECT_THAT(faults_shown(train), ElementsAre(std::string(name)));
        EXPECT_EQ(wrong_checksums(train), 0);
        EXPECT_TRUE(faults_shown(train_at(fault + " for 8s", 13s)).empty());
        EXPECT_TRUE(faults_shown(train_at(fault + "\nat +5s mend all", 13s)).empty());
        EXPECT_TRUE(faults_shown(train_at(fault + "\nat +5s mend " + std::string(name), 13s)).empty());
    }
}

TEST(StationScenario, AWindFaultShowsInLoneGroupsToo) {
    const std::vector<Deed> deeds = played("at +5s fault wind", 8s);
    ASSERT_EQ(deeds.size(), 2U);
    EXPECT_TRUE(flag_set(Decoded(deeds[1].bytes).wind, digits_cf::fault));
}

// ---- bytes

TEST(StationScenario, ADigitIsSetInEveryTrainWithARightChecksumUntilReleased) {
    const std::string february = "at +0s digit 8F 9 3\nat +0s digit 8F 10 0\nat +0s digit 8F 12 2\n";
    const Bytes train = train_at(february, 13s);
    EXPECT_EQ(Decoded(train).clock_text(), "23:58:12 30/2");
    EXPECT_EQ(wrong_checksums(train), 0);
    EXPECT_EQ(Decoded(train_at(february + "at +15s release digits", 23s)).clock_text(), "23:58:22 31/A");
}

/// The bits in which two frames of one length differ.
int different_bits(const Bytes& one, const Bytes& other) {
    int bits = 0;
    for (std::size_t n = 0; n < one.size(); ++n) bits += std::popcount(static_cast<unsigned>(one[n] ^ other[n]));
    return bits;
}

TEST(StationScenario, FlipsTheBitsOfOneTrainOnly) {
    const std::vector<Deed> good = played("", 23s), bad = played("at +7s flip 3 in BF", 23s);
    ASSERT_THAT(sizes(bad), ElementsAre(141, 27, 141, 27, 141));
    EXPECT_EQ(bad[1].bytes, good[1].bytes) << "a lone wind group holds no rain";
    EXPECT_EQ(different_bits(bad[2].bytes, good[2].bytes), 3);
    const auto rain = [](const Deed& deed) { return Bytes(deed.bytes.begin() + 100, deed.bytes.begin() + 114); };
    EXPECT_EQ(different_bits(rain(bad[2]), rain(good[2])), 3);
    EXPECT_EQ(bad[4].bytes, good[4].bytes);
}

TEST(StationScenario, FlipsBitsOfTheNextFrameOfAnyKind) {
    const std::vector<Deed> good = played("", 13s), bad = played("at +3s flip 5", 13s);
    EXPECT_EQ(different_bits(bad[1].bytes, good[1].bytes), 5);
    EXPECT_EQ(bad[2].bytes, good[2].bytes);
    EXPECT_EQ(different_bits(played("at +0s flip 1000 in lone", 8s)[1].bytes, good[1].bytes), 27 * 8)
        << "there are no more";
}

TEST(StationScenario, DropsBytesOfItsTarget) {
    EXPECT_THAT(sizes(played("at +0s drop 1", 13s)), ElementsAre(140, 27, 141));
    EXPECT_THAT(sizes(played("at +0s drop 2 in lone", 13s)), ElementsAre(141, 25, 141));
    EXPECT_THAT(sizes(played("at +0s drop 1000 in AF", 13s)), ElementsAre(110, 27, 141));
    const std::vector<Deed> good = played("", 3s), bad = played("at +0s drop 1000 in AF", 3s);
    Bytes without = good[0].bytes;
    without.erase(without.begin() + 69, without.begin() + 100);
    EXPECT_EQ(bad[0].bytes, without);
}

TEST(StationScenario, SendsStrayBytesAtOnce) {
    const std::vector<Deed> deeds = played("at +4s stray hex FF 00 CF", 8s);
    ASSERT_THAT(sizes(deeds), ElementsAre(141, 3, 27));
    EXPECT_EQ(deeds[1].bytes, (Bytes{0xFF, 0x00, 0xCF}));
    EXPECT_EQ(deeds[1].at, 4s);
    EXPECT_EQ(deeds[2].at, 7s);
    EXPECT_THAT(sizes(played("at +4s stray 9", 8s)), ElementsAre(141, 9, 27));
}

TEST(StationScenario, PutsStrayBytesInFrontOfTheirTarget) {
    const std::vector<Deed> good = played("", 13s), bad = played("at +3s stray hex AA BB before 9F", 13s);
    ASSERT_THAT(sizes(bad), ElementsAre(141, 27, 143));
    Bytes with = good[2].bytes;
    with.insert(with.begin() + 35, {0xAA, 0xBB});
    EXPECT_EQ(bad[2].bytes, with);
    const std::vector<Deed> lone = played("at +3s stray hex AA before lone", 13s);
    ASSERT_THAT(sizes(lone), ElementsAre(141, 28, 141));
    EXPECT_EQ(lone[1].bytes.front(), 0xAA);
}

TEST(StationScenario, SeveralDamagesMeetInOneFrame) {
    const std::vector<Deed> deeds =
        played("at +0s drop 1 in 8F\nat +0s stray hex 11 22 33 before CF\nat +0s flip 1 in BF", 3s);
    ASSERT_THAT(sizes(deeds), ElementsAre(143));
    EXPECT_EQ(Bytes(deeds[0].bytes.begin() + 113, deeds[0].bytes.begin() + 117), (Bytes{0x11, 0x22, 0x33, 0xCF}));
}

// ---- the line

TEST(StationScenario, IsSilentForAWhileAndItsClockRunsOn) {
    const std::vector<Deed> deeds = played("at +3s silence for 20s", 28s);
    ASSERT_THAT(sizes(deeds), ElementsAre(141, 27));
    EXPECT_EQ(deeds[1].at, 27s);
    const std::vector<Deed> longer = played("at +1s silence for 1h", 1h + 13s);
    ASSERT_THAT(sizes(longer), ElementsAre(141, 27, 141));
    EXPECT_EQ(Decoded(longer[0].bytes).clock_text(), "00:58:02 01/B");
}

TEST(StationScenario, SaysNothingMoreAfterAnEndlessSilence) {
    Station it = station("at +3s silence");
    EXPECT_EQ(deeds_until(it, 24h).size(), 1U);
    EXPECT_EQ(it.next(48h), std::nullopt);
}

TEST(StationScenario, StrayBytesStayAwayInASilence) {
    EXPECT_THAT(sizes(played("at +3s silence for 1m\nat +5s stray 9", 10s)), ElementsAre(141));
}

TEST(StationScenario, PullsTheCableAndPutsItInAgain) {
    const std::vector<Deed> deeds = played("at +3s unplug for 20s", 28s);
    ASSERT_EQ(deeds.size(), 4U);
    EXPECT_EQ(deeds[1].what, Deed::What::unplug);
    EXPECT_EQ(deeds[1].at, 3s);
    EXPECT_EQ(deeds[2].what, Deed::What::replug);
    EXPECT_EQ(deeds[2].at, 23s);
    EXPECT_EQ(deeds[3].what, Deed::What::send);
    EXPECT_EQ(deeds[3].at, 27s);
}

TEST(StationScenario, PullingAPulledCableChangesNothing) {
    EXPECT_EQ(played("at +3s unplug\nat +4s unplug\nat +5s replug\nat +6s replug", 7s).size(), 3U);
}

TEST(StationScenario, HappensAtItsTimeAtAnySpeed) {
    const std::vector<Deed> deeds = played("at +60s unplug for 60s", 13s, 10);
    const auto pulled = std::ranges::find(deeds, Deed::What::unplug, &Deed::what);
    ASSERT_NE(pulled, deeds.end());
    EXPECT_GE(pulled->at, 6s);
    EXPECT_LT(pulled->at, 6s + 200ms) << "at most the length of the frame before it late";
    EXPECT_EQ((pulled + 1)->what, Deed::What::replug);
    EXPECT_EQ((pulled + 1)->at, 12s);
}

}  // namespace
}  // namespace nimbry::simulator
