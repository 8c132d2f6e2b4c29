// How does a personal dictionary grow: loading its words?
#include <benchmark/benchmark.h>

#include "bench_data.h"

static void load_words(benchmark::State& state) {
    const lemara::bench::DictionaryFile file(state.range(0));
    std::size_t roots = 0;
    for (auto _ : state) roots = HiztegiPertsonala(file.path).erroak.size();
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["roots"] = static_cast<double>(roots);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(load_words)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
