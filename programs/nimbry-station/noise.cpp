#include "programs/nimbry-station/noise.h"

#include <cmath>
#include <initializer_list>

namespace nimbry::simulator {
namespace {

/// -1 to 1, one value a knot.
double knot(std::uint64_t seed, std::uint64_t channel, std::int64_t index) {
    constexpr double span = 9007199254740992.0;  // 2^53: what a double holds exactly
    return static_cast<double>(mixed_bits(seed, channel, index) >> 11) / span * 2 - 1;
}

}  // namespace

std::uint64_t mixed_bits(std::uint64_t seed, std::uint64_t channel, std::int64_t index) {
    // The finaliser of splitmix64 (S. Vigna, public domain), constants as given; once for each part of the name, so
    // that neighbours in any of the three share nothing.
    std::uint64_t bits = 0;
    for (const std::uint64_t part : {seed, channel, static_cast<std::uint64_t>(index)}) {
        bits += part + 0x9E3779B97F4A7C15U;
        bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9U;
        bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBU;
        bits ^= bits >> 31;
    }
    return bits;
}

double smooth_noise(std::uint64_t seed, std::uint64_t channel, double seconds, double period) {
    const double place = seconds / period;
    const double left = std::floor(place);
    const double f = place - left;
    const auto index = static_cast<std::int64_t>(left);
    const double weight = f * f * f * (f * (f * 6 - 15) + 10);  // level at both knots: no corner where two spans meet
    const double from = knot(seed, channel, index);
    return from + (knot(seed, channel, index + 1) - from) * weight;
}

}  // namespace nimbry::simulator
