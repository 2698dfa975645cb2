// Any bytes as the file of the rain counters at midnight. The laws: the rain since midnight is between nothing and what
// the counter shows, and the tag and the packet that tell it come out; a midnight adds two lines and nothing else; and
// behind whole lines they are the ones that count.
#include <chrono>
#include <string>

#include "engine/publish/aprs_packet.h"
#include "engine/records/rain.h"
#include "engine/reports/resolvtag.h"
#include "fuzz/fuzz_input.h"
#include "tests/world/bare_copy.h"

namespace {

using namespace nimbry;
using fuzz::expect;

const std::string midnight_file = "rnslm.dat";

void take_train(test::BareCopy& world, CivilTime now, int counter) {
    world.clock.set_computer_time(now);
    StationReadings readings;
    readings.clock = station_moment(now);
    readings.rain.total_mm = counter;
    world.train(readings);
    world.state.rain.rainnow = rain_counter(world.state.readings);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const int counter = input.next() * 39;
    const std::string text = input.rest();

    test::BareCopy world;
    world.state.settings.tmidnight = false;
    world.files.put(midnight_file, text);
    take_train(world, test::VirtualClock::usual_start, counter);
    const float since = rain_since_midnight(world.copy);
    expect(since >= 0 && since <= static_cast<float>(counter));
    expect(!resolvtag(world.copy, "~~WEBRAINSLM~~").empty());
    expect(!aprs_packet(world.state).empty());

    const auto next_day = std::chrono::floor<std::chrono::days>(test::VirtualClock::usual_start) + std::chrono::days{1};
    take_train(world, next_day, counter);
    midnight_rain_file(world.copy);
    const std::string after = world.files.contents(midnight_file);
    expect(after.starts_with(text) && after.size() > text.size());
    if (text.empty() || text.ends_with('\n')) expect(rain_since_midnight(world.copy) == 0);
    return 0;
}
