// The personal dictionary of a checker. Tests: tests/host/Checker_words_test.cpp,
// tests/host/dictionary_kill_test.cpp.
#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

#include "analysis/messages.h"
#include "host/characters.h"
#include "host/inside.h"
#include "karaktereak.h"
#include "lemara/utf8.h"

namespace lemara {

using host::dictionary_of;
using host::PersonalEntry;
using host::PersonalList;
using host::utf8_from_latin1;

namespace {

constexpr const char* CLASSES[] = {"ARR", "IZO", "ADI", "PIB", "LIB", "IZB"};

std::string without_brackets(std::string_view tag) {
    if (!tag.empty() && tag.front() == '<') tag.remove_prefix(1);
    if (!tag.empty() && tag.back() == '>') tag.remove_suffix(1);
    return std::string(tag);
}

/// The class tag that a caller means; empty if there is none like it.
std::string tag_named(std::string_view name) {
    const std::string wanted = touppercase(without_brackets(name));
    for (const char* known : CLASSES) {
        if (wanted == known) return '<' + wanted + '>';
    }
    return "";
}

/// A word that begins with a capital is a name; of the classes of names the one for what
/// is neither person nor place has the endings of both.
std::string derived_tag(const std::string& word) {
    const std::string start = word.substr(0, 1);
    return tolowercase(start) != start ? "<IZB>" : "<ARR>";
}

int tokens_in(const std::string& text) {
    Esaldia sentence(0, text);
    sentence.tokenizatu();
    return static_cast<int>(sentence.tokenak.size());
}

PersonalWord shown(const PersonalEntry& entry) {
    return {utf8_from_latin1(entry.word), without_brackets(entry.tag),
            utf8_from_latin1(entry.better), utf8_from_latin1(entry.instead)};
}

/// The word of a line of a hunspell list.
std::string_view listed_word(std::string_view line) {
    while (!line.empty() && (line.back() == '\r' || line.back() == ' '))
        line.remove_suffix(1);
    line = line.substr(0, line.find('\t'));
    const std::size_t slash = line.find('/', 1);
    return line.substr(0, slash);
}

bool is_number(std::string_view line) {
    return !line.empty() &&
           line.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

namespace {

/// Files the degrees of an adjective ("-ago", "-en", "-egi"), which the engine's own
/// adding leaves out: their stem is one that another paradigm of the word has taken.
void add_degrees(HiztegiPertsonala& dictionary) {
    for (const auto& root : dictionary.erroak) {
        const HPsarrera& entry = *root.second;
        const std::string& name = entry.paradigma;
        if (name != "<hp1>" && name != "<hp2>" && name != "<hp4>" && name != "<hp5>")
            continue;
        auto degrees = std::make_unique<HPsarrera>(entry);
        degrees->paradigma = "<hp7>";
        dictionary.erroak.emplace(root.first + '\1', degrees.release());
        return;
    }
}

}  // namespace

std::unique_ptr<HiztegiPertsonala> host::dictionary_of(
    const std::vector<PersonalEntry>& entries, std::vector<std::string>& refused) {
    auto dictionary = std::make_unique<HiztegiPertsonala>();
    std::size_t shortest = 0, number = 0;
    for (const PersonalEntry& entry : entries) {
        HiztegiPertsonala one;  // so that no word loses a stem to another
        try {
            one.gehitu_sarrera(false, entry.word, entry.tag, entry.better, entry.instead,
                               entry.source);
        } catch (const std::out_of_range&) {
            refused.push_back(entry.word);
            continue;
        }
        if (entry.tag == "<IZO>") add_degrees(one);
        for (auto& root : one.erroak) {
            std::string& stem = root.second->erroa;
            stem = tolowercase(stem);
            if (stem.empty()) {
                delete root.second;
                continue;
            }
            shortest = shortest == 0 ? stem.size() : std::min(shortest, stem.size());
            std::string key = root.first;
            while (dictionary->erroak.count(key) > 0) {
                key = root.first + '\1' + std::to_string(++number);
            }
            dictionary->erroak.emplace(key, root.second);
        }
        one.erroak.clear();
        dictionary->gehienezko_hitzak =
            std::max(dictionary->gehienezko_hitzak, tokens_in(entry.word));
    }
    dictionary->gutxieneko_luzera = static_cast<int>(shortest);
    return dictionary;
}

void host::CheckerInside::use(PersonalList list, std::vector<Problem>* problems) {
    std::vector<std::string> refused;
    std::unique_ptr<HiztegiPertsonala> fresh = dictionary_of(list.entries, refused);
    if (problems != nullptr) {
        problems->insert(problems->end(), list.problems.begin(), list.problems.end());
        for (const std::string& word : refused) {
            problems->push_back({file ? file->path() : "", 0,
                                 utf8_from_latin1(word) + ": not a word of that class"});
        }
    }
    std::unique_ptr<HiztegiPertsonala> old;
    const std::lock_guard<host::ReadWriteLock> writing(lock);
    old.reset(engine->hiztegiPertsonala);
    engine->hiztegiPertsonala = fresh.release();
    personal = std::move(list.entries);
}

namespace {

/// The line that adds a word; a problem if there is none that would work. `accepts` tells
/// what the checker takes.
template <class Accepts>
std::optional<std::string> make_entry(const PersonalWord& word, const Sarea* hp,
                                      Accepts accepts, PersonalEntry& entry) {
    bool foreign = false;
    entry = {};
    entry.word = host::fold_word(word.word, &foreign);
    if (entry.word.empty()) return "no word";
    if (foreign) return "a letter or sign that the tables lack, or an address";
    if (std::none_of(entry.word.begin(), entry.word.end(), host::is_letter)) {
        return "a word needs a letter";
    }
    entry.tag =
        word.word_class.empty() ? derived_tag(entry.word) : tag_named(word.word_class);
    if (entry.tag.empty()) {
        return "unknown word class " + host::printable(word.word_class) +
               "; there are ARR, IZO, ADI, PIB, LIB and IZB";
    }
    for (const bool better : {true, false}) {
        const std::string& advice = better ? word.better : word.instead;
        if (advice.empty()) continue;
        std::string& field = better ? entry.better : entry.instead;
        field = host::fold_word(advice, &foreign);
        if (field.empty() || foreign || !accepts(field)) {
            return "the recommended form is no known word: " + host::printable(advice);
        }
    }
    if (!entry.better.empty() && !entry.instead.empty()) {
        return "a better form and a form to use instead; one of them, please";
    }
    std::string reason;
    if (!host::fits_file(entry, reason)) return reason;
    if (hp == nullptr) return "no network \"hp\", which personal words need";
    if (tokens_in(entry.word) > hp->maila) {
        return "too many words; a unit has at most " + std::to_string(hp->maila);
    }
    std::vector<std::string> refused;
    const auto alone = dictionary_of({entry}, refused);
    if (alone->analizatu(entry.word, hp).empty()) {
        return "the tables have no endings for such a word of class " +
               without_brackets(entry.tag);
    }
    return std::nullopt;
}

}  // namespace

std::optional<Problem> Checker::add_word(const PersonalWord& word) {
    const Quiet quiet;
    host::CheckerInside& inside = *inside_;
    const std::lock_guard<std::mutex> one_at_a_time(inside.adding);
    if (!inside.file || inside.file->path().empty()) {
        return Problem{"", 0, "no personal dictionary is in use"};
    }
    PersonalEntry entry;
    const auto accepts = [&](const std::string& text) { return inside.accepts(text); };
    if (auto reason = make_entry(word, inside.network("hp"), accepts, entry)) {
        return Problem{"", 0, host::printable(word.word) + ": " + *reason};
    }
    PersonalList list;
    std::size_t there = 0;
    if (auto problem = inside.file->add({entry}, list, there)) return problem;
    inside.use(std::move(list), nullptr);
    return std::nullopt;
}

std::optional<Problem> Checker::remove_word(std::string_view word,
                                            std::string_view word_class) {
    const Quiet quiet;
    host::CheckerInside& inside = *inside_;
    const std::lock_guard<std::mutex> one_at_a_time(inside.adding);
    if (!inside.file || inside.file->path().empty()) {
        return Problem{"", 0, "no personal dictionary is in use"};
    }
    const std::string tag = word_class.empty() ? std::string() : tag_named(word_class);
    if (!word_class.empty() && tag.empty()) {
        return Problem{"", 0, "unknown word class " + host::printable(word_class)};
    }
    PersonalList list;
    std::size_t removed = 0;
    if (auto problem = inside.file->remove(host::fold_word(word), tag, list, removed)) {
        return problem;
    }
    inside.use(std::move(list), nullptr);
    if (removed > 0) return std::nullopt;
    return Problem{"", 0,
                   host::printable(word) + ": no such word in " + inside.file->path()};
}

std::vector<PersonalWord> Checker::words() const {
    const std::shared_lock<host::ReadWriteLock> reading(inside_->lock);
    std::vector<PersonalWord> result;
    for (const PersonalEntry& entry : inside_->personal) result.push_back(shown(entry));
    return result;
}

ImportReport Checker::import_words(std::string_view list) {
    const Quiet quiet;
    host::CheckerInside& inside = *inside_;
    const std::lock_guard<std::mutex> one_at_a_time(inside.adding);
    ImportReport report;
    if (!inside.file || inside.file->path().empty()) {
        report.problem = Problem{"", 0, "no personal dictionary is in use"};
        return report;
    }
    const auto accepts = [&](const std::string& text) { return inside.accepts(text); };
    std::vector<PersonalEntry> entries;
    std::size_t number = 0;
    if (list.substr(0, 3) == "\357\273\277") list.remove_prefix(3);  // a byte order mark
    while (!list.empty()) {
        const std::size_t end = std::min(list.find('\n'), list.size());
        const std::string_view line = list.substr(0, end);
        list.remove_prefix(std::min(end + 1, list.size()));
        ++number;
        const std::string_view word = listed_word(line);
        if (word.empty() || word[0] == '#' || (number == 1 && is_number(word))) continue;
        PersonalWord wanted;
        wanted.word = std::string(word);
        PersonalEntry entry;
        auto reason = word[0] == '*'
                          ? std::optional<std::string>("a forbidden word")
                          : make_entry(wanted, inside.network("hp"), accepts, entry);
        if (reason) {
            report.refused.push_back(
                {"", number, host::printable(word) + ": " + *reason});
        } else {
            entries.push_back(entry);
        }
    }
    PersonalList after;
    report.problem = inside.file->add(entries, after, report.there);
    if (report.problem) return report;
    report.added = entries.size() - report.there;
    inside.use(std::move(after), nullptr);
    return report;
}

std::string Checker::export_words() const {
    std::set<std::string> sorted;
    for (const PersonalWord& word : words()) sorted.insert(word.word);
    std::string list = std::to_string(sorted.size()) + '\n';
    for (const std::string& word : sorted) list += word + '\n';
    return list;
}

bool Checker::refresh() {
    const Quiet quiet;
    host::CheckerInside& inside = *inside_;
    const std::lock_guard<std::mutex> one_at_a_time(inside.adding);
    if (!inside.file || inside.file->path().empty() || !inside.file->changed())
        return false;
    PersonalList list;
    if (inside.file->read(list)) return false;
    inside.use(std::move(list), nullptr);
    return true;
}

}  // namespace lemara
