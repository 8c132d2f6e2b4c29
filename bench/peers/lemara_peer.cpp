// This library, and the plain form of its tables. DATA: a configuration file, then the
// table of the main network as text. Tasks whose names begin with "plain_" walk the
// graph.
#include <cstring>
#include <map>
#include <memory>

#include "../plain_form.h"
#include "lemara/compiled_table.h"
#include "peer.h"
#include "tables/lazy_transducer.h"
#include "tables/packed_walk.h"
#include "tables/token_walk.h"

namespace {

using lemara::bench::PlainForm;
using peer::Strings;

std::string latin1(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte < 0x80) {
            result += text[i];
        } else if (i + 1 < text.size()) {
            result += static_cast<char>((byte & 3) << 6 | (text[++i] & 63));
        }
    }
    return result;
}

std::string utf8(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            result += c;
        } else {
            result += static_cast<char>(0xC0 | byte >> 6);
            result += static_cast<char>(0x80 | (byte & 63));
        }
    }
    return result;
}

/// How many records there are; as text all that they say.
template <class Record>
std::size_t size_of(const std::vector<Record>& records, std::string* text) {
    if (text != nullptr) {
        Strings all;
        for (const Record& record : records) {
            std::string fields = record.analisia;
            for (const std::string* field :
                 {&record.lema, &record.etiketa, &record.twol, &record.sai, &record.hobe,
                  &record.erabili, &record.tasuna, &record.iritzia, &record.forma}) {
                fields += ' ' + *field;
            }
            all.push_back(utf8(fields));
        }
        *text = peer::line_of(all);
    }
    return records.size();
}

using lemara::bench::PlainRecord;

/// All forms of a target by the graph, as records.
template <class Record>
std::vector<Record> plain_forms(PlainForm& form, const std::string& target,
                                bool stop_at_tag, const std::string& network) {
    std::vector<Record> found;
    form.generate(target, stop_at_tag, [&](const std::string& upper, std::string lower) {
        aldatuMaiuskulakLow(upper.c_str(), lower.data());
        found.emplace_back(upper, network);
        found.back().forma = lower;
    });
    return found;
}

/// Yes or no by the graph: all analyses of all networks, as records.
bool plain_valid(std::map<std::string, PlainForm>& forms, const std::string& word) {
    for (auto& [key, form] : forms) {
        if (key == "hp") continue;
        for (const PlainRecord& record : form.records(word)) {
            if (record.etiketa.find("MAT") == std::string::npos) return true;
        }
    }
    return false;
}

Strings plain_proposals(std::map<std::string, PlainForm>& forms,
                        const std::string& word) {
    Strings result;
    // No word of the comparison begins with a percent sign, so none has a candidate with
    // a blank in it.
    const auto take = [&](const Strings& candidates, std::size_t limit) {
        for (const std::string& candidate : candidates) {
            if (result.size() < limit && plain_valid(forms, candidate))
                result.push_back(candidate);
        }
    };
    take(sortu_proposamen_hautagaiak_MAI(word.c_str()), 1000);
    take(sortu_proposamen_hautagaiak_DISLEXIA(word.c_str()), 1000);
    take(sortu_proposamen_hautagaiak_REP(word.c_str()), 1000);
    if (result.empty()) take(sortu_proposamen_hautagaiak_REP2(word.c_str()), 5);
    if (result.empty()) take(sortu_proposamen_hautagaiak_TRY(word.c_str()), 5);
    return result;
}

/// The text of the main network's table alone: by the plain loader, into a graph and its
/// packed form, or into the packed form alone.
int load_text(const peer::Arguments& arguments) {
    const std::string& path = arguments.data.at(1);
    std::unique_ptr<Taula> table;
    const double start = peer::cpu_seconds();
    if (arguments.task == "plain_load") {
        table = lemara::bench::plain_load(path);
    } else if (arguments.task == "graph_load") {
        table = std::make_unique<Taula>(path);
    } else {
        table = std::make_unique<Taula>();
        table->fitxategia = path;
        if (!lemara::load_for_searches(*table)) return 2;
    }
    const double seconds = peer::cpu_seconds() - start;
    return peer::measure(arguments, seconds, {},
                         [](const std::string&, std::string*) { return std::size_t{0}; });
}

/// Tells what memory the process has, once it has answered about all words, and stays
/// until its standard input ends: so that another one can share what can be shared.
int hold(const Lemara& engine, const Strings& words) {
    std::size_t known = 0;
    for (const std::string& word : words) known += engine.isValid(word, false);
    std::map<std::string, long> kib;
    std::ifstream rollup("/proc/self/smaps_rollup");
    for (std::string line; std::getline(rollup, line);) {
        const std::size_t colon = line.find(':');
        if (colon != std::string::npos)
            kib[line.substr(0, colon)] = std::atol(line.c_str() + colon + 1);
    }
    std::printf(
        "{\"pss_kib\": %ld, \"shared_kib\": %ld, \"own_kib\": %ld, \"sum\": %zu}\n",
        kib["Pss"], kib["Shared_Clean"] + kib["Shared_Dirty"],
        kib["Private_Clean"] + kib["Private_Dirty"], known);
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const peer::Arguments arguments = peer::arguments(argc, argv);
    const std::string& task = arguments.task;
    Strings words;
    for (const std::string& word : arguments.words) words.push_back(latin1(word));
    if (task == "compile") {
        // WORDS is any file here; DATA is a table as text and the image to be written.
        const Taula table(arguments.data.at(0));
        std::ofstream(arguments.data.at(1), std::ios::binary)
            << lemara::compile_table(table);
        return 0;
    }
    if (task == "plain_load" || task == "graph_load" || task == "lean_load") {
        return load_text(arguments);
    }

    std::cout.setstate(std::ios::failbit);  // the engine's own messages
    const double start = peer::cpu_seconds();
    auto engine = std::make_unique<Lemara>(arguments.data.at(0));
    const double load = peer::cpu_seconds() - start;
    if (task == "load") {
        return peer::measure(arguments, load, {}, [](const std::string&, std::string*) {
            return std::size_t{0};
        });
    }

    if (task == "hold") return hold(*engine, words);

    std::map<std::string, PlainForm> forms;
    std::vector<std::unique_ptr<Taula>> tables;
    if (task.compare(0, 6, "plain_") == 0) {
        const std::string folder =
            arguments.data.at(1).substr(0, arguments.data.at(1).rfind('/') + 1);
        for (const auto& [key, network] : engine->sareak) {
            tables.push_back(lemara::bench::plain_load(folder + key + ".sare"));
            tables.back()->hiztegia = key;
            forms.emplace(key, PlainForm(*tables.back()));
        }
    }
    const Sarea& main_network = *engine->sareak.at("eumorfo");
    const Taula& table = *main_network.taula;
    const auto measure = [&](const auto& ask) {
        return peer::measure(arguments, load, words, ask);
    };
    const auto strings_of = [](Strings found) {
        for (std::string& word : found) word = utf8(word);
        return peer::line_of(std::move(found));
    };

    if (task == "strings" || task == "step_strings" || task == "walk_strings") {
        const bool walk_alone = task == "walk_strings";
        const bool anew = task == "step_strings";
        const lemara::PackedView& view = lemara::packed_form(table);
        return measure([&](const std::string& word, std::string* answer) {
            std::size_t sum = 0;
            lemara::LazyTransducer::Spelt way;
            Strings found;
            const auto take = [&](std::string_view analysis) {
                sum += analysis.size();
                if (answer != nullptr) found.emplace_back(analysis);
                return true;
            };
            lemara::LazyTransducer& lazy = lemara::lazy_form(table);
            if (walk_alone || !(anew ? lazy.spell_anew(word, way, take)
                                     : lazy.spell(word, way, take))) {
                const std::string lowered = tolowercase(word);
                lemara::PackedAnalysis walk(view, word, lowered);
                walk.run(0, take);
            }
            if (answer != nullptr) *answer = strings_of(std::move(found));
            return sum;
        });
    }
    if (task == "plain_strings") {
        PlainForm& form = forms.at("eumorfo");
        return measure([&](const std::string& word, std::string* answer) {
            std::size_t sum = 0;
            Strings found;
            form.analyse(word, [&](const std::string& analysis) {
                sum += analysis.size();
                if (answer != nullptr) found.push_back(analysis);
            });
            if (answer != nullptr) *answer = strings_of(std::move(found));
            return sum;
        });
    }
    if (task == "records") {
        return measure([&](const std::string& word, std::string* answer) {
            return size_of(table.analizatuTokena(word), answer);
        });
    }
    // Of the plain tasks with "_ours" behind them the records are the library's own.
    const bool ours = task.size() > 5 && task.compare(task.size() - 5, 5, "_ours") == 0;
    const std::string plain_task = ours ? task.substr(0, task.size() - 5) : task;
    if (plain_task == "plain_records") {
        PlainForm& form = forms.at("eumorfo");
        return measure([&](const std::string& word, std::string* answer) {
            return ours ? size_of(form.records<Analisia>(word), answer)
                        : size_of(form.records(word), answer);
        });
    }
    const auto yes_or_no = [&](bool valid, std::string* answer) {
        if (answer != nullptr) *answer = valid ? "yes" : "no";
        return std::size_t{valid};
    };
    if (task == "valid") {
        return measure([&](const std::string& word, std::string* answer) {
            return yes_or_no(engine->isValid(word, false), answer);
        });
    }
    if (task == "valid_cold") {
        // A new engine for each pass; loading it is not in the time.
        return peer::measure(
            arguments, load, words,
            [&](const std::string& word, std::string* answer) {
                return yes_or_no(engine->isValid(word, false), answer);
            },
            [&] { engine = std::make_unique<Lemara>(arguments.data.at(0)); });
    }
    if (task == "plain_valid") {
        return measure([&](const std::string& word, std::string* answer) {
            return yes_or_no(plain_valid(forms, word), answer);
        });
    }
    if (task == "proposals") {
        return measure([&](const std::string& word, std::string* answer) {
            const Strings found = engine->lortu_ezzg_proposamenak(word);
            if (answer != nullptr) *answer = strings_of(found);
            return found.size();
        });
    }
    if (task == "plain_proposals") {
        return measure([&](const std::string& word, std::string* answer) {
            const Strings found = plain_proposals(forms, word);
            if (answer != nullptr) *answer = strings_of(found);
            return found.size();
        });
    }
    if (task == "paradigms" || task == "beginnings") {
        const bool stop = task == "beginnings";
        return measure([&](const std::string& word, std::string* answer) {
            return size_of(stop ? engine->bilatuHasiera(word, false)
                                : table.sortuFormak(word, "", false, false),
                           answer);
        });
    }
    if (task == "beginnings_anew") {
        return measure([&](const std::string& word, std::string* answer) {
            char upper[1] = "", lower[1] = "";
            std::vector<Analisia> found;
            table.birsortuFormak(word.c_str(), found, 0, upper, lower, true, false);
            return size_of(found, answer);
        });
    }
    if (plain_task == "plain_paradigms" || plain_task == "plain_beginnings") {
        PlainForm& form = forms.at("eumorfo");
        const bool stop = plain_task == "plain_beginnings";
        const std::string& network = table.hiztegia;
        return measure([&, stop](const std::string& word, std::string* answer) {
            return ours
                       ? size_of(plain_forms<Analisia>(form, word, stop, network), answer)
                       : size_of(plain_forms<PlainRecord>(form, word, stop, network),
                                 answer);
        });
    }
    if (task == "expand") {
        // All single-word forms of each lemma in WORDS, to standard output.
        std::cout.clear();
        for (const std::string& lemma : words) {
            for (const char* tag : {"<IZE>", "<ADJ>", "<ADI>", "<ADB>"}) {
                for (const Analisia& form : table.sortuFormak(lemma, tag, false, false)) {
                    if (form.forma.find_first_of(" -") == std::string::npos) {
                        std::cout << utf8(form.forma) << '\n';
                    }
                }
            }
        }
        return 0;
    }
    if (task == "lemmas") {
        std::cout.clear();
        for (const std::string& begin : words) {
            for (const Analisia& entry : engine->bilatuHasiera(begin, false)) {
                std::cout << utf8(entry.lema) << '\n';
            }
        }
        return 0;
    }
    std::cerr << "no such task: " << task << '\n';
    return 2;
}
