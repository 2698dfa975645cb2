// Law: however the port slices the bytes within the settling rules, the frames are the same.
//
// The input is read as bursts a second apart. All bytes of a burst come within 29 ms, once in one piece and once in the
// slices that the input asks for; the framer must make the same frames of both. Besides: every frame has 27 or 141
// bytes, no byte is in two frames, and nothing grows.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "engine/station/line_framer.h"
#include "fuzz/fuzz_input.h"

namespace {

using namespace std::chrono_literals;
using namespace nimbry;
using fuzz::expect;
using fuzz::Input;

struct Burst {
    Bytes bytes;
    std::vector<std::size_t> slices;  ///< lengths of the pieces; the rest comes in one
};

/// Lengths that matter come often: the two counts and their neighbours.
std::size_t burst_length(std::size_t choice) {
    constexpr std::size_t favourites[] = {1, 26, 27, 28, 54, 114, 140, 141, 142, 168, 282, 4095, 4096, 4097};
    constexpr std::size_t count = sizeof favourites / sizeof *favourites;
    return choice < count ? favourites[choice] : choice;
}

std::vector<Burst> bursts_of(Input input) {
    std::vector<Burst> bursts;
    std::uint8_t fill = 0;
    while (!input.empty() && bursts.size() < 40) {
        Burst burst;
        burst.bytes.resize(burst_length(input.below(256)));
        for (auto& byte : burst.bytes) byte = fill++;
        for (std::size_t n = input.below(8); n > 0; --n) burst.slices.push_back(input.below(256));
        bursts.push_back(burst);
    }
    return bursts;
}

/// Runs everything that is due before `until`, as an owner must.
void run_until(LineFramer& framer, Instant until, std::vector<Bytes>& frames) {
    while (framer.wake_at() && *framer.wake_at() < until) {
        const Instant due = *framer.wake_at();
        const LineFramer::Outcome outcome = framer.poll(due);
        expect(!framer.wake_at() || *framer.wake_at() > due);
        if (outcome != LineFramer::Outcome::frame) continue;
        expect(framer.frame().size() == 27 || framer.frame().size() == 141);
        frames.push_back(framer.frame());
        framer.work_done();
    }
}

std::vector<Bytes> frames_of(const std::vector<Burst>& bursts, bool sliced) {
    LineFramer framer;
    std::vector<Bytes> frames;
    Instant at{1h};
    for (const Burst& burst : bursts) {
        run_until(framer, at, frames);
        Instant piece_at = at;
        auto rest = burst.bytes.begin();
        if (sliced) {
            for (const std::size_t slice : burst.slices) {
                const auto left = static_cast<std::size_t>(burst.bytes.end() - rest);
                const auto end = rest + static_cast<std::ptrdiff_t>(std::min(slice, left));
                // Too many bytes: the owner holds, and the rest of the burst is lost as it would be in one piece.
                if (!framer.push(Bytes(rest, end), piece_at)) framer.hold(piece_at);
                rest = end;
                piece_at += 4ms;
            }
        }
        if (!framer.push(Bytes(rest, burst.bytes.end()), piece_at)) framer.hold(piece_at);
        expect(framer.count() <= LineFramer::buffer_limit);
        at += 1s;
    }
    run_until(framer, at + 1s, frames);
    return frames;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<Burst> bursts = bursts_of(Input(data, size));
    const std::vector<Bytes> whole = frames_of(bursts, false);
    expect(whole == frames_of(bursts, true));

    std::size_t framed = 0;
    for (const Bytes& frame : whole) framed += frame.size();
    std::size_t sent = 0;
    for (const Burst& burst : bursts) sent += burst.bytes.size();
    expect(framed <= sent);
    return 0;
}
