// How does the paragraph check grow with the length of its text?
#include <benchmark/benchmark.h>

#include "bench_data.h"

static void check(benchmark::State& state) {
    const Lemara& engine = lemara::bench::engine();
    std::string text;
    for (long i = 0; i < state.range(0); ++i) {
        text += lemara::bench::RIGHT[static_cast<std::size_t>(i) %
                                     lemara::bench::RIGHT.size()];
        text += i % 12 == 11 ? ". " : " ";
    }
    std::size_t bytes = 0;
    for (auto _ : state) bytes = engine.getParagrafoaZuzenlex(text, false).size();
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["bytes"] = static_cast<double>(bytes);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(check)->RangeMultiplier(8)->Range(8, 1 << 15)->Complexity();
