#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "programs/nimbry-station/station.h"
#include "tests/station/decoded.h"

namespace nimbry::simulator {

using namespace std::chrono_literals;

inline constexpr CivilTime start = std::chrono::local_days{std::chrono::year{2026} / 10 / 31} + 23h + 58min;

/// A station that starts two minutes before midnight, and before a month's end, with this scenario.
inline Station station(std::string_view scenario, int speed = 1, std::uint64_t seed = 1) {
    ScenarioReading read = read_scenario(scenario, start);
    if (read.error) ADD_FAILURE() << read.error->line << ": " << read.error->what;
    return Station({.seed = seed, .start = start, .speed = speed, .scenario = std::move(read.steps)});
}

/// What happens before a moment of the line, with a reader that never delays it.
inline std::vector<Deed> deeds_until(Station& station, LineTime end) {
    std::vector<Deed> deeds;
    for (;;) {
        const LineTime over =
            deeds.empty() ? 0ms : deeds.back().at + byte_time * static_cast<long>(deeds.back().bytes.size());
        auto deed = station.next(over);
        if (!deed || deed->at >= end) return deeds;
        deeds.push_back(std::move(*deed));
    }
}

/// What a station with this scenario does before a moment of the line.
inline std::vector<Deed> played(std::string_view scenario, LineTime end, int speed = 1) {
    Station it = station(scenario, speed);
    return deeds_until(it, end);
}

/// The last whole train before a moment.
inline Bytes train_at(std::string_view scenario, LineTime end) {
    Bytes train;
    for (const Deed& deed : played(scenario, end)) {
        if (deed.bytes.size() == train_length) train = deed.bytes;
    }
    return train;
}

inline std::vector<std::size_t> sizes(const std::vector<Deed>& deeds) {
    std::vector<std::size_t> found;
    for (const Deed& deed : deeds) found.push_back(deed.bytes.size());
    return found;
}

template <typename Table>
std::string text(const Table& table, const DigitField& field, std::size_t decimals = 0) {
    return field_text(table, field, decimals);
}

}  // namespace nimbry::simulator
