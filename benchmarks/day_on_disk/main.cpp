// What a day of weather writes to the disk: a train every ten seconds through a whole copy in virtual time, its files
// on a disk in memory that counts. The weather log runs, graphs are drawn, no pages are made. The day before, which
// fills the graphs, does not count. Prints a row for each file and their sum.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "engine/derived/dates.h"
#include "tests/world/started_world.h"

namespace nimbry::test {
namespace {

constexpr int hours_a_day = 24;
constexpr int trains_an_hour = 360;

struct Tally {
    std::size_t bytes = 0, writes = 0, syncs = 0;
};

/// By the file's name; work files under the name that they get in the end.
class Tallies {
public:
    void add(const MemoryFiles& files) {
        for (const MemoryFiles::Call& call : files.calls()) {
            Tally& tally = by_name_[call.operation == "copy" ? call.other : call.name];
            // A replaced file is brought to the disk before it gets its name.
            if (call.operation == "sync" || call.operation == "replace") ++tally.syncs;
            if (call.operation == "append" || call.operation == "rewrite" || call.operation == "replace" ||
                call.operation == "copy") {
                ++tally.writes;
                tally.bytes += call.operation == "copy" ? files.contents(call.name).size() : call.bytes;
            }
        }
    }

    void print() const {
        std::vector<std::pair<std::string, Tally>> rows(by_name_.begin(), by_name_.end());
        std::sort(rows.begin(), rows.end(),
                  [](const auto& one, const auto& other) { return one.second.bytes > other.second.bytes; });
        Tally sum;
        std::printf("%12s %8s %8s  %s\n", "bytes", "writes", "syncs", "file");
        for (const auto& [name, tally] : rows) {
            if (tally.writes + tally.syncs > 0) print_row(name, tally);
            sum.bytes += tally.bytes;
            sum.writes += tally.writes;
            sum.syncs += tally.syncs;
        }
        print_row("in all", sum);
    }

private:
    static void print_row(const std::string& name, const Tally& tally) {
        std::printf("%12zu %8zu %8zu  %s\n", tally.bytes, tally.writes, tally.syncs, name.c_str());
    }

    std::map<std::string, Tally> by_name_;
};

StationReadings readings_at(int hour) {
    const double sun = -std::cos(2 * std::numbers::pi * hour / hours_a_day);
    StationReadings readings;
    readings.temperature.outdoor = 10 + 5 * sun;
    readings.humidity.outdoor = static_cast<int>(70 - 20 * sun);
    readings.barometer.hpa = 1013 + hour % 7;
    readings.wind.gust_ms = 4 + 3 * sun;
    readings.wind.average_ms = 3 + 2 * sun;
    readings.wind.gust_direction = 15 * hour;
    return readings;
}

template <class EachHour>
void live_a_day(World& world, EachHour&& each_hour) {
    for (int hour = 0; hour < hours_a_day; ++hour) {
        world.files.forget_calls();
        world.send_trains(trains_an_hour, readings_at(hour));
        each_hour();
    }
}

void run() {
    StartedWorld world("fwrtlog=True\r\nLogMin=15\r\n");
    live_a_day(world, [] {});
    Tallies tallies;
    live_a_day(world, [&] { tallies.add(world.files); });
    tallies.print();
}

}  // namespace
}  // namespace nimbry::test

int main() {
    nimbry::test::run();
    return 0;
}
