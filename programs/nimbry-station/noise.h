#pragma once

#include <cstdint>

namespace nimbry::simulator {

// Chance that can be asked for any moment in any order: the same seed always plays the same weather.

/// 64 well-mixed bits of a seed, a channel and an index; equal arguments give equal bits on every machine.
[[nodiscard]] std::uint64_t mixed_bits(std::uint64_t seed, std::uint64_t channel, std::int64_t index);

/// A smooth random curve through time, -1 to 1, mean 0, without a jump or a corner.
/// `seconds` is the moment, `period` (above 0) the time from one random knot to the next, in seconds; `channel` names
/// the curve, so that two channels of a seed know nothing of each other.
[[nodiscard]] double smooth_noise(std::uint64_t seed, std::uint64_t channel, double seconds, double period);

}  // namespace nimbry::simulator
