// How long does one analysis take, with its records, for right words and for wrong ones?
#include <benchmark/benchmark.h>

#include "bench_data.h"

static void analysis_of(benchmark::State& state, const lemara::bench::Strings& words) {
    const Taula& table = lemara::bench::main_table();
    std::size_t records = 0;
    for (auto _ : state) {
        records = 0;
        for (const std::string& word : words)
            records += table.analizatuTokena(word).size();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(words.size()));
    state.counters["records"] = static_cast<double>(records);
}
BENCHMARK_CAPTURE(analysis_of, right, lemara::bench::RIGHT);
BENCHMARK_CAPTURE(analysis_of, wrong, lemara::bench::WRONG);
