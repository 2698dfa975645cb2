#include <benchmark/benchmark.h>

#include "benchmarks/pages.h"
#include "engine/reports/genhtml.h"
#include "engine/reports/resolvtag.h"
#include "engine/reports/template_scanner.h"

namespace nimbry::test {
namespace {

/// One tag after the other, all of them.
void resolve_every_tag(benchmark::State& run) {
    KnownState world;
    for (auto _ : run) {
        for (const TagRow& row : tag_table())
            benchmark::DoNotOptimize(resolvtag(world.copy, "~~" + std::string(row.name) + "~~"));
        world.files.forget_calls();
    }
    run.SetItemsProcessed(run.iterations() * static_cast<std::int64_t>(tag_table().size()));
    run.SetLabel("tags");
}
BENCHMARK(resolve_every_tag);

/// A full generation of 100 pages of 20 kB with every tag in each, on a disk in memory.
void generate_100_pages(benchmark::State& run) {
    KnownState world;
    put_pages(world.files);
    for (auto _ : run) {
        genhtml(world.copy);
        world.files.forget_calls();
    }
    run.SetItemsProcessed(run.iterations() * pages_uploaded);
    run.SetLabel("pages");
}
BENCHMARK(generate_100_pages)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nimbry::test
