// How long does one spelling check take, for right words and for wrong ones?
#include <benchmark/benchmark.h>

#include "bench_data.h"

static void isValid_of(benchmark::State& state, const lemara::bench::Strings& words) {
    const Lemara& engine = lemara::bench::engine();
    std::size_t valid = 0;
    for (auto _ : state) {
        valid = 0;
        for (const std::string& word : words) valid += engine.isValid(word, false);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(words.size()));
    state.counters["valid"] = static_cast<double>(valid);
}
BENCHMARK_CAPTURE(isValid_of, right, lemara::bench::RIGHT);
BENCHMARK_CAPTURE(isValid_of, wrong, lemara::bench::WRONG);
