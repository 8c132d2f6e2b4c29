// How does a personal dictionary grow: loading its words one by one?
#include <benchmark/benchmark.h>

#include "bench_data.h"

static void add_words(benchmark::State& state) {
    std::size_t roots = 0;
    for (auto _ : state) {
        HiztegiPertsonala dictionary;
        for (long i = 0; i < state.range(0); ++i) {
            std::string word = "h";
            for (long n = i; n > 0; n /= 20) word += static_cast<char>('a' + n % 20);
            dictionary.gehitu_sarrera(false, word + "o", "<ARR>", "", "", "");
        }
        roots = dictionary.erroak.size();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["roots"] = static_cast<double>(roots);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(add_words)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
