// How long does an engine take to start?
#include <benchmark/benchmark.h>

#include "bench_data.h"

static void load(benchmark::State& state) {
    std::size_t networks = 0;
    std::cout.setstate(std::ios::failbit);
    for (auto _ : state) {
        const Lemara engine(lemara::bench::configuration());
        networks = engine.sareak.size();
    }
    std::cout.clear();
    state.counters["networks"] = static_cast<double>(networks);
}
BENCHMARK(load)->Unit(benchmark::kMillisecond);
