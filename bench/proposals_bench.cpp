// How long do the proposals for one wrong word take?
#include <benchmark/benchmark.h>

#include "bench_data.h"

static void proposals(benchmark::State& state) {
    const Lemara& engine = lemara::bench::engine();
    std::size_t found = 0;
    for (auto _ : state) {
        found = 0;
        for (const std::string& word : lemara::bench::WRONG) {
            found += engine.lortu_ezzg_proposamenak(word).size();
        }
    }
    state.SetItemsProcessed(state.iterations() *
                            static_cast<long>(lemara::bench::WRONG.size()));
    state.counters["proposals"] = static_cast<double>(found);
}
BENCHMARK(proposals);
