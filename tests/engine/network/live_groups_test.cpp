#include "engine/network/live_groups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/displays/box.h"
#include "engine/network/client_address.h"
#include "engine/network/first_weather_day.h"
#include "engine/network/rain_history.h"
#include "engine/station/train_writer.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;

/// A client whose synchronisation lies behind it.
struct Client : StartedWorld {
    Client() : StartedWorld("fromnet=True\r\n") { state().network.gotnetdata = true; }

    void hear(const Bytes& datagram) {
        send_datagram(datagram);
        run_for(100ms);
    }
    [[nodiscard]] const CommState::Counters& counters() { return state().comm.counters; }
};

Bytes of_length(std::size_t length, std::uint8_t tag) {
    Bytes bytes(length, 0);
    if (length > 0) bytes[0] = tag;
    return bytes;
}

TEST(LiveGroups, ATrainGoesThroughTheGroupsAsFromTheLine) {
    Client client;
    StationReadings readings;
    readings.temperature.outdoor = 12.3;
    readings.clock = station_moment(client.clock.computer_time());
    client.hear(write_train(readings));
    EXPECT_EQ(client.counters().trains, 1U);
    EXPECT_TRUE(client.state().run.fullystarted);
    client.hear(write_train(readings));
    EXPECT_EQ(client.panel().Text2[0].text, "+12.3 \260C");
    EXPECT_FALSE(client.state().comm.dworkingb);
}

TEST(LiveGroups, ALoneWindGroupCountsFromTheFirstTrainOn) {
    Client client;
    client.hear(write_lone_wind({}));
    EXPECT_EQ(client.counters().before_first_train, 1U);
    EXPECT_EQ(client.counters().lone, 0U);
    client.hear(write_train({}));
    client.hear(write_lone_wind({}));
    EXPECT_EQ(client.counters().lone, 1U);
}

TEST(LiveGroups, LengthAndTagAreTestedEachByItself) {
    struct Case {
        const char* what;
        Bytes bytes;
        std::uint64_t wrong_length, unknown_tag, bad_checksum;
        bool reaches_routine;  ///< which finds it bad, or takes it; what does not leaves `goodatab` alone
    };
    const Case cases[] = {
        {"empty", {}, 1, 0, 0, false},
        {"26 bytes of the wind's tag", of_length(26, 0xCF), 1, 0, 0, false},
        {"26 bytes of another tag", of_length(26, 0x9F), 1, 0, 0, false},
        {"27 bytes of a train's tag reach the train's routine", of_length(27, 0x8F), 1, 0, 0, true},
        {"27 bytes of another tag", of_length(27, 0x9F), 0, 1, 0, false},
        {"141 bytes of the wind's tag", of_length(141, 0xCF), 1, 0, 0, true},
        {"a spoiled train", of_length(141, 0x8F), 0, 0, 1, true},
        {"144 bytes", of_length(144, 0x8F), 1, 0, 0, false},
        {"a datagram of 60,000 bytes", of_length(60'000, 0x8F), 1, 0, 0, false},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        Client client;
        client.hear(write_train({}));
        ASSERT_TRUE(client.state().comm.goodatab);
        client.hear(row.bytes);
        EXPECT_EQ(client.state().comm.goodatab, !row.reaches_routine);
        EXPECT_EQ(client.counters().trains, 1U);
        EXPECT_EQ(client.counters().wrong_length, row.wrong_length);
        EXPECT_EQ(client.counters().unknown_tag, row.unknown_tag);
        EXPECT_EQ(client.counters().bad_checksum, row.bad_checksum);
        EXPECT_FALSE(client.state().comm.dworkingb);
        EXPECT_TRUE(client.state().comm.GroupTag.empty());
    }
}

TEST(LiveGroups, TwoBytesMoreThanATrainHasAreCutOff) {
    for (const std::size_t length : {142U, 143U}) {
        SCOPED_TRACE(length);
        Client client;
        Bytes train = write_train({});
        train.resize(length, 0xFF);
        client.hear(train);
        EXPECT_EQ(client.counters().trains, 1U);
        EXPECT_EQ(client.counters().wrong_length, 0U);
    }
}

TEST(LiveGroups, EveryDatagramLightsTheLampForAMomentAlsoOneThatIsDropped) {
    Client client;
    client.panel().lblStatus.text = "before";
    client.send_datagram({1});
    client.run_for(1ms);
    EXPECT_EQ(client.panel().Lamp.fore, colours::red);
    EXPECT_EQ(client.panel().lblStatus.text, "Program Starting");
    EXPECT_EQ(client.panel().lblStatus.fore, 0x8080FF);
    client.state().havegrafdata = true;
    client.hear({1});
    EXPECT_EQ(client.panel().lblStatus.text, "Current Conditions");
    EXPECT_EQ(client.panel().lblStatus.fore, 65280);
    client.run_for(2s);
    EXPECT_EQ(client.panel().Lamp.fore, colours::black);
}

TEST(LiveGroups, WaitWhileSomethingElseIsAtWorkAndAreThenTakenInTheirOrder) {
    struct Case {
        const char* what;
        std::function<void(WeatherState&, bool)> hold;
    };
    const auto flag = [](BusyFlag& busy, bool on) { on ? busy.set() : busy.clear(); };
    const Case cases[] = {
        {"a group", [&](WeatherState& s, bool on) { flag(s.comm.dworkingb, on); }},
        {"a changeover", [&](WeatherState& s, bool on) { flag(s.comm.changebusy, on); }},
        {"a graph sample", [&](WeatherState& s, bool on) { flag(s.graphs.GrafBusy, on); }},
        {"a synchronisation", [&](WeatherState& s, bool on) { s.network.syncing = on; }},
        {"the splash", [&](WeatherState& s, bool on) { s.comm.splashing = on; }},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        Client client;
        row.hold(client.state(), true);
        client.hear(write_lone_wind({}));
        client.hear(write_train({}));
        client.hear(write_lone_wind({}));
        client.run_for(1min);
        EXPECT_EQ(client.datasock.waiting(), 3U);
        EXPECT_EQ(client.panel().Lamp.fore, colours::black);
        row.hold(client.state(), false);
        client.run_for(100ms);
        EXPECT_EQ(client.datasock.waiting(), 0U);
        EXPECT_EQ(client.counters().before_first_train, 1U);
        EXPECT_EQ(client.counters().trains, 1U);
        EXPECT_EQ(client.counters().lone, 1U);
    }
}

TEST(LiveGroups, AreOfNoConcernToACopyThatIsNoClient) {
    StartedWorld server("bcastnet=True\r\n");
    server.send_datagram(write_train({}));
    server.run_for(1min);
    EXPECT_EQ(server.state().comm.counters.trains, 0U);
    EXPECT_EQ(server.datasock.waiting(), 1U);
    EXPECT_FALSE(server.state().network.gotnetdata);
    EXPECT_EQ(server.panel().Lamp.fore, colours::black);
}

TEST(LiveGroups, AFloodOfEveryLengthChangesNothingAndEnds) {
    Client client;
    client.hear(write_train({}));
    for (std::size_t length = 0; length < 400; ++length) client.send_datagram(of_length(length, 0xCF));
    client.run_for(1s);
    EXPECT_EQ(client.datasock.waiting(), 0U);
    EXPECT_EQ(client.counters().trains, 1U);
    EXPECT_EQ(client.counters().lone, 0U);
    client.hear(write_train({}));
    EXPECT_EQ(client.counters().trains, 2U);
}

TEST(LiveGroups, TheLastOneIsRemembered) {
    Client client;
    client.send_datagram(write_train({}), "10.0.0.5");
    client.run_for(1s);
    EXPECT_EQ(client.state().network.last_sender, "10.0.0.5");
    EXPECT_EQ(client.state().network.last_datagram, VirtualClock::usual_start + 2s);
}

TEST(LiveGroups, AFloodLetsOtherEventsHaveTheirTurn) {
    Client client;
    for (int n = 0; n < 250; ++n) client.datasock.arrive({1}, "10.0.0.5");
    ASSERT_EQ(client.datasock.waiting(), 250U);
    std::vector<std::size_t> left;
    client.act([&] {
        client.engine.datagram_readable();
        for (int turn = 0; turn < 3; ++turn) {
            left.push_back(client.datasock.waiting());
            client.pauses.pause(0ms);
        }
    });
    client.run_for(100ms);
    EXPECT_EQ(left, (std::vector<std::size_t>{150, 50, 0}));
}

// The first weather day of a month

TEST(FirstWeatherDay, IsWhenAServerMayHaveNoAlmanac) {
    using namespace std::chrono;
    const auto at = [](unsigned month_number, unsigned date, seconds time) {
        return CivilTime(local_days{year{2026} / month(month_number) / day(date)} + time);
    };
    struct Case {
        const char* what;
        bool midnight, one_hour;
        const char* roll;
        CivilTime now;
        bool expected;
    };
    const Case cases[] = {
        {"midnight: the first day begins", true, false, "5", at(11, 1, 0s), true},
        {"midnight: it ends", true, false, "5", at(11, 1, 23h + 59min + 59s), true},
        {"midnight: the second", true, false, "5", at(11, 2, 0s), false},
        {"midnight: the last of the month", true, false, "5", at(10, 31, 23h + 59min + 59s), false},
        {"9.00am: a second before", false, false, "5", at(11, 1, 8h + 59min + 59s), false},
        {"9.00am: the first weather day begins", false, false, "5", at(11, 1, 9h), true},
        {"9.00am: it ends", false, false, "5", at(11, 2, 8h + 59min + 59s), true},
        {"9.00am: the second begins", false, false, "5", at(11, 2, 9h), false},
        {"10.00am: a second before", false, true, "5", at(11, 1, 9h + 59min + 59s), false},
        {"10.00am: it begins", false, true, "5", at(11, 1, 10h), true},
        {"10.00am: it ends", false, true, "5", at(11, 2, 9h + 59min + 59s), true},
        {"10.00am: the second begins", false, true, "5", at(11, 2, 10h), false},
        {"9.00am, last day: before its changeover", false, false, "905", at(10, 31, 8h + 59min + 59s), false},
        {"9.00am, last day: its changeover has rolled", false, false, "905", at(10, 31, 9h), true},
        {"9.00am, last day: until the first", false, false, "905", at(11, 1, 8h + 59min + 59s), true},
        {"9.00am, last day, a month of 30: the 30th", false, false, "905", at(11, 30, 10h), true},
        {"midnight, last day: in the night the last day begins", true, false, "905", at(10, 31, 1h), false},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        MainSettings settings;
        settings.tmidnight = row.midnight;
        settings.tnineam = !row.midnight;
        settings.AddOneHour = row.one_hour;
        settings.alRoll = row.roll;
        EXPECT_EQ(almanac_may_be_archived(settings, row.now), row.expected);
    }
}

TEST(RainHistory, ComesBackAsItWasWritten) {
    RainState server;
    server.LastHourIndex = 60;
    for (std::size_t n = 1; n <= 60; ++n) server.LastHourRing[n] = static_cast<int>(n) - 3;
    RainState client;
    client.LastHourPrev = 7.0F;
    read_rain_history(rain_history_text(server), client);
    EXPECT_EQ(client.LastHourRing, server.LastHourRing);
    EXPECT_EQ(client.LastHourIndex, 60);
    EXPECT_EQ(client.LastHourPrev, std::nullopt);
}

TEST(RainHistory, TakesAnIndexThatTheRingDoesNotHaveForZeroAndReadsFewerLines) {
    struct Case {
        const char* text;
        int index;
    };
    for (const Case& row : {Case{"61\r\n60\r\n", 0}, Case{"-1\r\n60\r\n", 0}, Case{"60\r\n60\r\n", 60},
                            Case{" 12 \n60", 12}, Case{"x\r\n\r\n1", 0}}) {
        SCOPED_TRACE(row.text);
        RainState rain;
        read_rain_history(row.text, rain);
        EXPECT_EQ(rain.LastHourIndex, row.index);
    }
}

TEST(DottedAddress, IsFourDecimalNumbers) {
    struct Case {
        const char* text;
        const char* address;  ///< "" for none
    };
    for (const Case& row : {Case{"192.168.1.2", "192.168.1.2"},
                            Case{" 10.0.0.1 ", "10.0.0.1"},
                            Case{"010.008.000.255", "10.8.0.255"},
                            Case{"255.255.255.255", "255.255.255.255"},
                            Case{"1.2.3", ""},
                            Case{"1.2.3.4.5", ""},
                            Case{"1.2.3.256", ""},
                            Case{"1.2.3.", ""},
                            Case{"1.2..4", ""},
                            Case{"+1.2.3.4", ""},
                            Case{"1e1.2.3.4", ""},
                            Case{"1.2.3.4444", ""},
                            Case{"1. 2.3.4", ""},
                            Case{"", ""},
                            Case{"localhost", ""},
                            Case{"0.0.0.0", "0.0.0.0"},
                            Case{".1.2.3.4", ""},
                            Case{"1.2.3.4.", ""},
                            Case{"1.2.3.&HF", ""},
                            Case{"::1", ""}}) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(dotted_address(row.text).value_or(""), row.address);
    }
}

}  // namespace
}  // namespace nimbry::test
