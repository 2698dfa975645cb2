#include "programs/nimbry-station/station.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <string>
#include <vector>

#include "engine/derived/number_text.h"
#include "tests/station/decoded.h"

namespace nimbry::simulator {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr CivilTime start = std::chrono::local_days{std::chrono::year{2026} / 10 / 31} + 23h + 58min;

Station station(std::string_view scenario, int speed = 1, std::uint64_t seed = 1) {
    ScenarioReading read = read_scenario(scenario, start);
    if (read.error) ADD_FAILURE() << read.error->line << ": " << read.error->what;
    return Station({.seed = seed, .start = start, .speed = speed, .scenario = std::move(read.steps)});
}

/// What happens before a moment of the line, with a reader that never delays it.
std::vector<Deed> deeds_until(Station& station, LineTime end) {
    std::vector<Deed> deeds;
    for (;;) {
        const LineTime over =
            deeds.empty() ? 0ms : deeds.back().at + byte_time * static_cast<long>(deeds.back().bytes.size());
        auto deed = station.next(over);
        if (!deed || deed->at >= end) return deeds;
        deeds.push_back(std::move(*deed));
    }
}

std::vector<Deed> played(std::string_view scenario, LineTime end, int speed = 1) {
    Station it = station(scenario, speed);
    return deeds_until(it, end);
}

/// The last whole train before a moment.
Bytes train_at(std::string_view scenario, LineTime end) {
    Bytes train;
    for (const Deed& deed : played(scenario, end)) {
        if (deed.bytes.size() == train_length) train = deed.bytes;
    }
    return train;
}

std::vector<std::size_t> sizes(const std::vector<Deed>& deeds) {
    std::vector<std::size_t> found;
    for (const Deed& deed : deeds) found.push_back(deed.bytes.size());
    return found;
}

template <typename Table>
std::string text(const Table& table, const DigitField& field, std::size_t decimals = 0) {
    return field_text(table, field, decimals);
}

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

// ---- readings

struct Held {
    const char* reading;
    const char* value;
    std::string expected;  ///< as the digits read
};

TEST(StationScenario, HoldsEachReadingAtItsValueInTheGroups) {
    for (const Held& held : {
             Held{"outdoor-temperature", "-4.7", "-04.7"},
             Held{"outdoor-humidity", "33", "33"},
             Held{"indoor-temperature", "-0.3", "-00.3"},
             Held{"indoor-humidity", "7", "07"},
             Held{"barometer", "987", "0987"},
             Held{"trend", "4", "4"},
             Held{"outlook", "8", "8"},
             Held{"rain-rate", "998", "998"},
             Held{"rain-total", "4321", "4321"},
             Held{"gust", "31.5", "31.5"},
             Held{"gust-direction", "360", "360"},
             Held{"wind", "12", "12.0"},
             Held{"wind-direction", "5", "005"},
             Held{"wind-chill", "-17", "17"},
             Held{"high-temperature", "41.9", "41.9"},
             Held{"low-temperature", "-31.2", "31.2"},
             Held{"high-humidity", "97", "97"},
             Held{"low-humidity", "9", "09"},
             Held{"record-gust", "49.8", "49.8"},
             Held{"record-direction", "271", "271"},
         }) {
        SCOPED_TRACE(held.reading);
        const Decoded d(train_at("at +0s set " + std::string(held.reading) + " " + held.value, 3s));
        const std::string found[] = {
            d.outdoor_text(),
            text(d.clock, digits_8f::outdoor_humidity),
            d.indoor_text(),
            text(d.clock, digits_8f::indoor_humidity),
            text(d.barometer, digits_af::barometer),
            text(d.barometer, digits_af::trend),
            text(d.barometer, digits_af::outlook),
            text(d.rain, digits_bf::rate),
            text(d.rain, digits_bf::total),
            text(d.wind, digits_cf::gust, 1),
            text(d.wind, digits_cf::gust_direction),
            text(d.wind, digits_cf::average, 1),
            text(d.wind, digits_cf::average_direction),
            text(d.wind, digits_cf::chill),
            text(d.temperature, digits_9f::outdoor_high, 1),
            text(d.temperature, digits_9f::outdoor_low, 1),
            text(d.clock, digits_8f::humidity_high),
            text(d.clock, digits_8f::humidity_low),
            text(d.wind, digits_cf::record_gust, 1),
            text(d.wind, digits_cf::record_direction),
        };
        EXPECT_EQ(found[static_cast<std::size_t>(reading_named(held.reading).value())], held.expected);
    }
}

TEST(StationScenario, SendsTheSignsOfRecordsAndChill) {
    const Decoded d(
        train_at("at +0s set low-temperature -31.2\nat +0s set high-temperature -1\nat +0s set wind-chill -17", 3s));
    EXPECT_TRUE(flag_set(d.temperature, digits_9f::outdoor_low_minus));
    EXPECT_TRUE(flag_set(d.temperature, digits_9f::outdoor_high_minus));
    EXPECT_TRUE(flag_set(d.wind, digits_cf::chill_minus));
}

TEST(StationScenario, MovesAReadingInAStraightLineAndThenHoldsIt) {
    // The line runs from 10 degrees at +0 to 20 at +100: 12.2 at +22, 20 from +100 on.
    const std::string scenario = "at +0s set outdoor-temperature 10\nat +0s set outdoor-temperature 20 over 100s";
    EXPECT_EQ(Decoded(train_at(scenario, 23s)).outdoor_text(), "+12.2");
    EXPECT_EQ(Decoded(train_at(scenario, 93s)).outdoor_text(), "+19.2");
    EXPECT_EQ(Decoded(train_at(scenario, 113s)).outdoor_text(), "+20.0");
}

TEST(StationScenario, ReleasesAReadingOrAllOfThem) {
    const std::string quiet = train_at("", 23s).empty() ? "" : Decoded(train_at("", 23s)).outdoor_text();
    const std::string held = "at +0s set outdoor-temperature -40\nat +0s set indoor-temperature -41\n";
    EXPECT_EQ(Decoded(train_at(held, 23s)).outdoor_text(), "-40.0");
    const Decoded one(train_at(held + "at +15s release outdoor-temperature", 23s));
    EXPECT_EQ(one.outdoor_text(), quiet);
    EXPECT_EQ(one.indoor_text(), "-41.0");
    const Decoded all(train_at(held + "at +15s release all", 23s));
    EXPECT_EQ(all.outdoor_text(), quiet);
    EXPECT_NE(all.indoor_text(), "-41.0");
    EXPECT_EQ(Decoded(train_at("at +0s set outdoor-temperature -40 for 15s", 23s)).outdoor_text(), quiet);
}

TEST(StationScenario, CountsTheRainThatAScenarioLetsFall) {
    // 360 mm an hour are 1 mm each ten seconds: from the hold at +2 to the train at +102, ten of them.
    const std::string rain = "at +0s set rain-total 100\nat +2s release rain-total\nat +2s set rain-rate 360";
    const Decoded d(train_at(rain, 103s));
    EXPECT_EQ(text(d.rain, digits_bf::rate), "360");
    EXPECT_EQ(text(d.rain, digits_bf::total), "0110");
}

TEST(StationScenario, RollsTheRainCounterOverAfter9999) {
    const std::string rain = "at +0s set rain-total 9999\nat +2s release rain-total\nat +2s set rain-rate 360";
    EXPECT_EQ(text(Decoded(train_at(rain, 33s)).rain, digits_bf::total), "0002");
}

TEST(StationScenario, ResetsTheRainCounterAndDatesTheReset) {
    const std::string rain = "at +0s set rain-total 77 for 1s\nat +0s set rain-rate 0\nat +60s reset rain";
    const Decoded before(train_at(rain, 53s)), after(train_at(rain, 63s));
    EXPECT_EQ(text(before.rain, digits_bf::total), "0077");
    EXPECT_EQ(text(after.rain, digits_bf::total), "0000");
    EXPECT_EQ(text(after.rain, digits_bf::reset_at.hour) + text(after.rain, digits_bf::reset_at.minute), "2359");
    EXPECT_EQ(text(after.rain, digits_bf::reset_at.day) + text(after.rain, digits_bf::reset_at.month), "31A");
    EXPECT_EQ(text(before.rain, digits_bf::reset_at.day), "01") << "thirty days before the start";
}

TEST(StationScenario, KeepsRecordsOfWhatIsHeldWithTheirMoments) {
    const std::string warm =
        "at +0s set outdoor-temperature 39.5 for 30s\nat +60s set gust 45.5 for 10s\n"
        "at +60s set gust-direction 123 for 10s";
    const Decoded d(train_at(warm, 93s));
    EXPECT_EQ(text(d.temperature, digits_9f::outdoor_high, 1), "39.5");
    EXPECT_EQ(
        text(d.temperature, digits_9f::outdoor_high_at.hour) + text(d.temperature, digits_9f::outdoor_high_at.minute),
        "2358");
    EXPECT_EQ(
        text(d.temperature, digits_9f::outdoor_high_at.day) + text(d.temperature, digits_9f::outdoor_high_at.month),
        "31A");
    EXPECT_EQ(text(d.wind, digits_cf::record_gust, 1), "45.5");
    EXPECT_EQ(text(d.wind, digits_cf::record_at.minute), "59");
}

TEST(StationScenario, ResetsTheRecordsToTheReadingsOfNow) {
    const std::string cold =
        "at +0s set outdoor-temperature 3.3\nat +0s set outdoor-humidity 55\nat +60s reset records";
    const Decoded d(train_at(cold, 63s));
    EXPECT_EQ(text(d.temperature, digits_9f::outdoor_high, 1), "03.3");
    EXPECT_EQ(text(d.temperature, digits_9f::outdoor_low, 1), "03.3");
    EXPECT_EQ(text(d.clock, digits_8f::humidity_high), "55");
    EXPECT_EQ(text(d.clock, digits_8f::humidity_low), "55");
    EXPECT_EQ(text(d.clock, digits_8f::humidity_low_at.minute), "59");
}

TEST(StationScenario, TurnsTheStationsClockWithoutStoppingTheRain) {
    EXPECT_EQ(Decoded(train_at("at +5s clock +2m", 13s)).clock_text(), "00:00:12 01/B");
    EXPECT_EQ(Decoded(train_at("at +5s clock -1h", 13s)).clock_text(), "22:58:12 31/A");
    const std::string rain =
        "at +0s set rain-total 100\nat +2s release rain-total\nat +2s set rain-rate 360\nat +50s clock -1h";
    EXPECT_EQ(text(Decoded(train_at(rain, 103s)).rain, digits_bf::total), "0110");
}

TEST(StationScenario, TrendAndForecastFollowABarometerThatIsHeld) {
    const Decoded falling(train_at("at +0s set barometer 1000\nat +10s set barometer 985 over 1m", 93s));
    EXPECT_EQ(text(falling.barometer, digits_af::trend), "4");
    EXPECT_EQ(text(falling.barometer, digits_af::outlook), "8");
    const Decoded rising(train_at("at +0s set barometer 1040", 13s));
    EXPECT_EQ(text(rising.barometer, digits_af::trend), "1");
    EXPECT_EQ(text(rising.barometer, digits_af::outlook), "1");
}

// ---- faults

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

// ---- the sensor's end

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
