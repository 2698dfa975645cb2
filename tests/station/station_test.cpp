#include "programs/nimbry-station/station.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/station/played.h"

namespace nimbry::simulator {
namespace {

using testing::ElementsAre;

TEST(Station, SendsATrainEveryTenSecondsAndALoneWindGroupHalfWay) {
    const std::vector<Deed> deeds = played("", 30s);
    EXPECT_THAT(sizes(deeds), ElementsAre(141, 27, 141, 27, 141, 27));
    for (std::size_t n = 0; n < deeds.size(); ++n) {
        EXPECT_EQ(deeds[n].at, 2s + 5s * static_cast<int>(n));
        EXPECT_EQ(deeds[n].what, Deed::What::send);
        EXPECT_EQ(wrong_checksums(deeds[n].bytes), 0);
    }
}

TEST(Station, ShowsTheMomentOfEachTrainOnItsClockAndCrossesMidnightAndMonth) {
    const std::vector<Deed> deeds = played("", 140s);
    EXPECT_EQ(Decoded(deeds[0].bytes).clock_text(), "23:58:02 31/A");
    EXPECT_EQ(Decoded(deeds[22].bytes).clock_text(), "23:59:52 31/A");
    EXPECT_EQ(Decoded(deeds[24].bytes).clock_text(), "00:00:02 01/B");
}

TEST(Station, RepeatsItselfForASeedAndDiffersForAnother) {
    Station first = station("", 1, 5), again = station("", 1, 5), other = station("", 1, 6);
    const Bytes train = first.next(0ms)->bytes;
    EXPECT_EQ(train, again.next(0ms)->bytes);
    EXPECT_NE(train, other.next(0ms)->bytes);
}

TEST(Station, AtSpeedThirtySendsEveryTrainWithMoreThanThirtyMillisecondsAfterEachFrame) {
    const std::vector<Deed> deeds = played("", 10s, 30);
    ASSERT_EQ(deeds.size(), 60U);
    for (std::size_t n = 1; n < deeds.size(); ++n) {
        const Deed& before = deeds[n - 1];
        EXPECT_GE(deeds[n].at - before.at, byte_time * static_cast<long>(before.bytes.size()) + frame_pause);
    }
    EXPECT_EQ(Decoded(deeds[58].bytes).clock_text(), "00:02:52 01/B") << "29 rounds of ten seconds after 23:58:02";
}

TEST(Station, TooFastForTheLineLeavesPairsOfFramesOutAndKeepsItsClockRight) {
    const std::vector<Deed> deeds = played("", 10s, 1000);
    ASSERT_GT(deeds.size(), 50U);
    for (std::size_t n = 0; n < deeds.size(); ++n) EXPECT_EQ(deeds[n].bytes.size(), n % 2 == 0 ? 141U : 27U);
    // 10 s of the line are 10000 s of the station: 02:44:40, of which the last train is at most one pair and a round
    // old.
    const std::string clock = Decoded(deeds[deeds.size() - 2].bytes).clock_text();
    EXPECT_GE(clock, "02:38:00 01/B");
    EXPECT_LE(clock, "02:44:40 01/B");
}

TEST(Station, HeldUpForAnHourSaysTheTimeOfNowAndNotWhatItMissed) {
    Station it = station("");
    ASSERT_TRUE(it.next(0ms));
    const auto late = it.next(1h + 1s);
    ASSERT_TRUE(late);
    const auto train = it.next(1h + 2s);
    ASSERT_TRUE(train);
    EXPECT_EQ(Decoded(train->bytes).clock_text(), "00:58:02 01/B");
    EXPECT_GT(train->at, late->at);
}

TEST(Station, KeepsThePauseAfterAFrameThatWentOutLate) {
    Station it = station("", 30);
    const auto first = it.next(0ms);
    const auto second = it.next(first->at + 500ms);
    EXPECT_GE(second->at, first->at + 500ms + frame_pause);
}

TEST(Station, SendsSaturatedAirAs97PercentOverRange) {
    for (int hour = 0; hour < 24 * 60; ++hour) {
        Console console(1, start + std::chrono::hours(hour));
        const StationReadings::Humidity humidity = console.readings().humidity;
        ASSERT_LE(humidity.outdoor, 97);
        ASSERT_GE(humidity.outdoor, 15);
        if (humidity.outdoor_over_range) {
            EXPECT_EQ(humidity.outdoor, 97);
            return;
        }
    }
    FAIL() << "no fog in sixty days";
}

}  // namespace
}  // namespace nimbry::simulator
