// Ten fixed jobs for callgrind, which counts their instructions: lemara_jobs JOB
// CONFIGURATION. Without a job their names are listed. bench/instructions compares the
// counts with those in the tree. A job prints its answer, so that a count that fell for a
// wrong answer shows.
#include <cstdio>
#include <functional>
#include <utility>

#include "bench_data.h"
#include "lemara/compiled_table.h"

namespace {

using lemara::bench::LEMMAS;
using lemara::bench::RIGHT;
using lemara::bench::Strings;
using lemara::bench::WRONG;

std::size_t times(int count, const std::function<std::size_t()>& job) {
    std::size_t sum = 0;
    for (int i = 0; i < count; ++i) sum += job();
    return sum;
}

std::size_t over(const Strings& words,
                 const std::function<std::size_t(const std::string&)>& ask) {
    std::size_t sum = 0;
    for (const std::string& word : words) sum += ask(word);
    return sum;
}

std::string some_text() {
    std::string text;
    for (std::size_t i = 0; i < 280; ++i) {
        text +=
            (i % 9 == 8 ? WRONG : RIGHT)[i % RIGHT.size()] + (i % 12 == 11 ? ". " : " ");
    }
    return text;
}

using Job = std::size_t (*)(const std::string& configuration);

/// What is counted: the job's own work, without the start and the end of the process.
/// Callgrind knows it by its name, and would take no notice of a jump in place of a call.
extern "C" [[gnu::noipa]] std::size_t counted_work(
    const std::function<std::size_t()>& work) {
    const std::size_t answer = work();
    asm volatile("" ::: "memory");
    return answer;
}

/// Counts a job over an engine that is there already.
template <class Work>
std::size_t counted(const std::string& configuration, Work work) {
    const Lemara engine(configuration);
    const Taula& table = *engine.sareak.at("eumorfo")->taula;
    return counted_work([&] { return std::size_t{work(engine, table)}; });
}

const std::pair<const char*, Job> JOBS[] = {
    {"load",
     [](const std::string& configuration) {
         return counted_work([&] { return Lemara(configuration).sareak.size(); });
     }},
    {"compile",
     [](const std::string& configuration) {
         return counted(configuration, [](const Lemara& engine, const Taula&) {
             return lemara::compile_table(*engine.sareak.at("zenbakiak")->taula).size();
         });
     }},
    {"analyse_right",
     [](const std::string& configuration) {
         return counted(configuration, [](const Lemara&, const Taula& table) {
             return times(50, [&] {
                 return over(RIGHT, [&](const std::string& w) {
                     return table.analizatuTokena(w).size();
                 });
             });
         });
     }},
    {"analyse_wrong",
     [](const std::string& configuration) {
         return counted(configuration, [](const Lemara&, const Taula& table) {
             return times(200, [&] {
                 return over(WRONG, [&](const std::string& w) {
                     return table.analizatuTokena(w).size();
                 });
             });
         });
     }},
    {"valid_warm",
     [](const std::string& configuration) {
         return counted(configuration, [](const Lemara& engine, const Taula&) {
             return times(500, [&] {
                 return over(RIGHT, [&](const std::string& w) {
                     return engine.isValid(w, false);
                 });
             });
         });
     }},
    {"proposals",
     [](const std::string& configuration) {
         return counted(configuration, [](const Lemara& engine, const Taula&) {
             return times(3, [&] {
                 return over(WRONG, [&](const std::string& w) {
                     return engine.lortu_ezzg_proposamenak(w).size();
                 });
             });
         });
     }},
    {"paradigms",
     [](const std::string& configuration) {
         return counted(configuration, [](const Lemara&, const Taula& table) {
             return over(LEMMAS, [&](const std::string& w) {
                 return table.sortuFormak(w, "<IZE>", false, false).size();
             });
         });
     }},
    {"beginnings",
     [](const std::string& configuration) {
         return counted(configuration, [](const Lemara& engine, const Taula&) {
             return times(10, [&] {
                 return over(LEMMAS, [&](const std::string& w) {
                     return engine.bilatuHasiera(w, false).size();
                 });
             });
         });
     }},
    {"check",
     [](const std::string& configuration) {
         return counted(configuration, [](const Lemara& engine, const Taula&) {
             return engine.getParagrafoaZuzenlex(some_text(), false).size();
         });
     }},
    {"dictionary",
     [](const std::string& configuration) {
         const lemara::bench::DictionaryFile file(3000);
         return counted(configuration, [&](const Lemara& engine, const Taula&) {
             const HiztegiPertsonala dictionary(file.path);
             return over(RIGHT, [&](const std::string& w) {
                 return dictionary.analizatu(w, engine.sareak.at("hp")).size();
             });
         });
     }},
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        for (const auto& job : JOBS) std::puts(job.first);
        return 0;
    }
    std::cout.setstate(std::ios::failbit);  // the engine's own messages
    for (const auto& [name, job] : JOBS) {
        if (std::string(name) != argv[1]) continue;
        std::fprintf(stderr, "%s: answer %zu\n", name, job(argv[2]));
        return 0;
    }
    return 2;
}
