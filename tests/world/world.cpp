#include "tests/world/world.h"

#include <algorithm>
#include <utility>

namespace nimbry::test {

using namespace std::chrono_literals;

World::World(CivilTime computer_time)
    : clock(computer_time),
      pauses(clock),
      files(clock, &journal),
      line(clock, &journal),
      datasock(&journal),
      streams(clock, pauses, &journal),
      notices(clock, pauses, &journal),
      sounds(&journal),
      desktop(&journal),
      transfers(clock, &journal),
      engine(Ports{clock, pauses, files, line, datasock, streams, notices, sounds, desktop, transfers}) {
    pauses.set_wake_source([this] { return engine.wake_at(); }, [this] { engine.wake(); });
    streams.on_stir([this] { engine.streams_stirred(); });
}

World::~World() {
    pauses.end_all();
}

void World::start(const Engine::StartOptions& options) {
    begin_start(options);
    run_for(2s);
}

void World::begin_start(const Engine::StartOptions& options) {
    pauses.start([this, options] { engine.start(options); });
}

void World::send(const Bytes& bytes) {
    pauses.after(0s, [this, bytes] {
        line.arrive(bytes);
        engine.line_readable();
    });
}

Instant World::send_paced(const Bytes& bytes, MonotonicClock::duration pace) {
    const Instant begin = clock.monotonic();
    Instant at = begin;
    for (const std::uint8_t byte : bytes) {
        at += pace;
        pauses.at(at, [this, byte] {
            line.arrive({byte});
            engine.line_readable();
        });
    }
    return at;
}

void World::deliver(const Bytes& frame) {
    send(frame);
    run_for(100ms);
}

void World::send_train(StationReadings readings, std::optional<CivilTime> station_time) {
    readings.clock = station_moment(station_time.value_or(clock.computer_time()));
    deliver(write_train(readings));
}

void World::send_trains(int count, const StationReadings& readings) {
    for (int i = 0; i < count; ++i) {
        send_train(readings);
        run_for(9900ms);
    }
}

void World::send_datagram(const Bytes& bytes, const std::string& sender) {
    pauses.after(0s, [this, bytes, sender] {
        if (datasock.arrive(bytes, sender)) engine.datagram_readable();
    });
}

void World::unplug() {
    const std::string device = line.device();
    pauses.after(0s, [this, device] {
        line.unplug(device);
        engine.line_fault(LineFault::gone);
    });
}

void World::run_for(MonotonicClock::duration duration) {
    pauses.pause_until(clock.monotonic() + duration);
}

bool World::run_until_quiet() {
    const Instant end = clock.monotonic() + 1h;
    const auto quiet = [this] {
        const std::optional<Instant> wake = engine.wake_at();
        return pauses.scripted() == 0 && pauses.waiting() == 0 && (!wake || *wake >= clock.monotonic() + 1s);
    };
    while (!quiet()) {
        if (clock.monotonic() >= end) return false;
        pauses.pause(10ms);
    }
    return true;
}

std::vector<std::string> World::lines(const std::string& name) const {
    const std::string text = files.contents(name);
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 2;
    }
    return lines;
}

std::vector<std::string> World::log() const {
    std::vector<std::string> all = lines("nbyprog.log");
    if (all.size() < 2) return {};
    return {all.begin() + 2, all.end()};
}

std::string World::setting(const std::string& section, const std::string& key) {
    clsIniFile ini(files, "Nimbry.ini");
    ini.read();
    return ini.GetSetting(section, key, "");
}

}  // namespace nimbry::test
