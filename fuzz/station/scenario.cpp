// Any bytes as a scenario of the simulated station. The laws: they are steps in the order of time, or there is a reason
// with the number of its line; a comment above moves nothing but that number; and a station that plays the steps never
// goes back in time and sends no empty frame.
#include "programs/nimbry-station/scenario.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

#include "fuzz/fuzz_input.h"
#include "programs/nimbry-station/station.h"

namespace {

using namespace nimbry::simulator;
using namespace std::chrono_literals;
using nimbry::fuzz::expect;

constexpr nimbry::CivilTime start = std::chrono::local_days{std::chrono::October / 31 / 2026} + 23h + 58min;

void check_order(const std::vector<Step>& steps) {
    expect(std::ranges::is_sorted(steps, {}, &Step::at));
    for (const Step& step : steps) expect(step.at >= 0s);
}

void play(StationPlay how) {
    Station station(std::move(how));
    LineTime now{0};
    for (int deed = 0; deed < 200; ++deed) {
        const auto next = station.next(now);
        if (!next) return;
        expect(next->bytes.empty() == (next->what != Deed::What::send));
        now = std::max(now, next->at) + next->pace * static_cast<long>(next->bytes.size());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    nimbry::fuzz::Input input(data, size);
    const auto seed = static_cast<std::uint64_t>(input.next());
    const int speed = 1 + input.next() * 4;
    const std::string text = input.rest();

    ScenarioReading reading = read_scenario(text, start);
    const ScenarioReading below = read_scenario("# what this shows\n" + text, start);
    expect(below.steps.size() == reading.steps.size() && below.error.has_value() == reading.error.has_value());
    if (reading.error) {
        expect(reading.steps.empty() && !reading.error->what.empty());
        expect(reading.error->line >= 1 && reading.error->line <= std::count(text.begin(), text.end(), '\n') + 1);
        expect(below.error->line == reading.error->line + 1 && below.error->what == reading.error->what);
        return 0;
    }
    check_order(reading.steps);
    play({.seed = seed, .start = start, .speed = speed, .scenario = std::move(reading.steps)});
    return 0;
}
