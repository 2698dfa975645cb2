#include <gtest/gtest.h>

#include "engine/derived/dates.h"
#include "engine/graphs/graph_file.h"
#include "engine/records/day_files.h"
#include "tests/engine/network/syncing_client.h"

namespace nimbry::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::minutes;

/// Twenty samples, a minute apart, as a server saves them at `now`.
std::string graphs_saved_at(CivilTime now) {
    GraphState graphs;
    for (int age = 20; age >= 1; --age) {
        GraphRow sample;
        sample.set_gtime(stamp_text(now - minutes{age}));
        graphs.rows.append(sample);
    }
    return graph_file_text(graphs, now);
}

DayExtremes warm_day() {
    DayExtremes day;
    day.maxtemp = 25.5F;
    day.mintemp = 10;
    day.maxtemptime = day.mintemptime = "11:00";
    day.maxhum = day.minhum = 50;
    day.maxbar = day.minbar = 1000;
    day.maxrain = 0;
    day.maxwind = 3;
    day.maxwindir = "90\xB0";
    return day;
}

struct PeerClock {
    const char* what;
    std::chrono::hours ahead;
    bool graphs_are_taken;
};

// The server and its station go by one clock, the client's computer by another. All but the graphs, which are kept by
// the computer's clock, goes by the station's.
TEST(PeerClock, HoursBesideTheOwnCostTheGraphsAtMost) {
    for (const PeerClock& row :
         {PeerClock{"right", 0h, true}, PeerClock{"ahead", 3h, false}, PeerClock{"behind", -3h, true}}) {
        SCOPED_TRACE(row.what);
        Client client;
        const auto server_time = [&] { return client.clock.computer_time() + row.ahead; };
        client.answers["cmdRequestGraphFile,"] = graphs_saved_at(server_time());
        client.answers["cmdRequestTdayFile,"] = today_text(server_time(), TodayRecord{warm_day(), 2.5F, 1, 4});
        client.answers["cmdRequestYdayFile,"] = yesterday_text(server_time() - 10h, YesterdayRecord{warm_day(), 0, 0});
        client.synchronise_whole();
        EXPECT_EQ(client.network().sync_result, "all files");
        StationReadings readings;
        for (int n = 0; n < 30; ++n) {
            readings.clock = station_moment(server_time());
            client.send_datagram(write_train(readings));
            client.run_for(10s);
        }
        EXPECT_FALSE(client.engine.gone());
        EXPECT_TRUE(client.state().run.fullystarted);
        EXPECT_EQ(client.state().comm.counters.trains, 30U);
        EXPECT_EQ(client.state().records.day.maxtemp, 25.5F);
        EXPECT_TRUE(client.state().run.YFileOK);
        EXPECT_EQ(*client.state().readings.dtvar, server_time() - 10s);
        EXPECT_TRUE(client.notices.boxes.empty());
        for (const auto& shown : client.notices.balloons) EXPECT_NE(shown.what.title, "Clock Error");
        // What was not taken is begun anew: a sample a minute.
        const int own = client.state().graphs.rows.windsamples();
        EXPECT_GE(own, row.graphs_are_taken ? 20 : 3);
        EXPECT_EQ(own < 20, !row.graphs_are_taken) << own;
    }
}

}  // namespace
}  // namespace nimbry::test
