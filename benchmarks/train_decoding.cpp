// How many trains a second the line's side of a copy can take: framing, the five checksums, the digit tables. A station
// sends one in ten seconds; the figure is for replaying recordings. Aim: 300,000 a second on one core.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <span>
#include <vector>

#include "engine/station/checksum.h"
#include "engine/station/group_layout.h"
#include "engine/station/line_framer.h"
#include "engine/station/train_groups.h"
#include "engine/station/train_writer.h"

namespace nimbry {
namespace {

void take_trains(benchmark::State& bench, std::size_t slice) {
    const Bytes train = write_train({});
    std::vector<Bytes> pieces;
    for (std::size_t at = 0; at < train.size(); at += slice)
        pieces.emplace_back(train.begin() + static_cast<std::ptrdiff_t>(at),
                            train.begin() + static_cast<std::ptrdiff_t>(std::min(at + slice, train.size())));
    CommState comm;
    LineFramer framer;
    Instant now{};
    for (auto _ : bench) {
        for (const Bytes& piece : pieces) framer.push(piece, now);
        while (framer.wake_at()) {
            now = *framer.wake_at();
            framer.poll(now);
        }
        if (fill_train_tables(comm, framer.frame())) std::abort();
        framer.work_done();
        benchmark::DoNotOptimize(comm);
    }
    bench.SetItemsProcessed(bench.iterations());
    bench.SetBytesProcessed(bench.iterations() * static_cast<std::int64_t>(train.size()));
}

void TrainInOnePiece(benchmark::State& bench) {
    take_trains(bench, 141);
}
void TrainByteByByte(benchmark::State& bench) {
    take_trains(bench, 1);
}
BENCHMARK(TrainInOnePiece);
BENCHMARK(TrainByteByByte);

void FiveChecksums(benchmark::State& bench) {
    const Bytes train = write_train({});
    for (auto _ : bench) {
        bool hold = true;
        for (const GroupSpan& span : train_spans)
            hold = hold && checksum_holds(std::span(train).subspan(span.first, span.length));
        benchmark::DoNotOptimize(hold);
    }
    bench.SetItemsProcessed(bench.iterations());
}
BENCHMARK(FiveChecksums);

}  // namespace
}  // namespace nimbry
