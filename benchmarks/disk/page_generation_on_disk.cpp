#include <benchmark/benchmark.h>

#include "benchmarks/pages.h"
#include "engine/reports/genhtml.h"
#include "platform/disk_files.h"
#include "tests/support/temporary_folder.h"

namespace nimbry::test {
namespace {

/// A full generation of 100 pages of 20 kB with every tag in each, in a folder of the real disk.
void generate_100_pages_on_disk(benchmark::State& run) {
    const platform::test::TemporaryFolder folder;
    platform::DiskFiles files(folder.path());
    put_pages(files);
    KnownState world;
    Ports ports{world.clock,   world.pauses,  files,        world.line,    world.datasock,
                world.streams, world.notices, world.sounds, world.desktop, world.transfers};
    Copy copy{world.state, ports, world.ini, world.log, world.timers};
    for (auto _ : run) genhtml(copy);
    run.SetItemsProcessed(run.iterations() * pages_uploaded);
    run.SetLabel("pages");
}
BENCHMARK(generate_100_pages_on_disk)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nimbry::test
