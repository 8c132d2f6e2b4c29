// How long do all forms of a lemma take, and a search by beginning?
#include <benchmark/benchmark.h>

#include "bench_data.h"

static void forms_of(benchmark::State& state, bool stop_at_tag) {
    const Taula& table = lemara::bench::main_table();
    std::size_t forms = 0;
    for (auto _ : state) {
        forms = 0;
        for (const std::string& lemma : lemara::bench::LEMMAS) {
            forms += table.sortuFormak(lemma, "", stop_at_tag, false).size();
        }
    }
    state.SetItemsProcessed(state.iterations() *
                            static_cast<long>(lemara::bench::LEMMAS.size()));
    state.counters["forms"] = static_cast<double>(forms);
}
BENCHMARK_CAPTURE(forms_of, paradigm, false);
BENCHMARK_CAPTURE(forms_of, beginning, true);
