// Opening a checker. Tests: tests/host/Checker_open_test.cpp.
#include <utility>

#include "analysis/messages.h"
#include "host/inside.h"
#include "host/tables.h"
#include "text/sentence_analysis.h"

namespace lemara {

using host::ListedTable;
using host::PersonalFile;
using host::PersonalList;

std::string Problem::text() const {
    std::string result = file;
    if (line > 0) result += ':' + std::to_string(line);
    return result.empty() ? reason : result + ": " + reason;
}

const char* name_of(Kind kind) {
    switch (kind) {
        case Kind::unknown:
            return "unknown";
        case Kind::better_form:
            return "better-form";
        case Kind::use_instead:
            return "use-instead";
        case Kind::unit_start:
            return "unit-start";
        case Kind::foreign:
            return "foreign";
    }
    return "";
}

const char* version() { return LEMARA_VERSION; }

host::CheckerInside::CheckerInside() : engine(std::make_unique<Lemara>()) {}

host::CheckerInside::~CheckerInside() {
    const Quiet quiet;
    // An engine leaves these to its host.
    for (auto& entry : engine->sareak) delete entry.second;
    engine->sareak.clear();
    delete engine->hiztegiPertsonala;
    engine->hiztegiPertsonala = nullptr;
    engine.reset();
}

const Sarea* host::CheckerInside::network(const char* key) const {
    return find_network(engine->sareak, key);
}

const Lemara& host::engine_of(const Checker& checker) {
    return *CheckerInside::of(checker).engine;
}

Checker::Checker() : inside_(std::make_unique<host::CheckerInside>()) {}

Checker::~Checker() = default;

Checker::Opened Checker::open(const Settings& settings) {
    const Quiet quiet;
    Opened result;
    const auto fail = [&](Problem problem) {
        result.problems.push_back(std::move(problem));
        return std::move(result);
    };
    std::unique_ptr<Checker> checker(new Checker);
    host::CheckerInside& inside = *checker->inside_;

    std::vector<std::string> looked;
    inside.configuration = settings.configuration.empty() ? find_configuration(&looked)
                                                          : settings.configuration;
    if (inside.configuration.empty()) {
        std::string places;
        for (const std::string& place : looked)
            places += (places.empty() ? "" : ", ") + place;
        return fail(
            {"", 0, "no tables: no configuration is named, and none is at " + places});
    }
    std::vector<ListedTable> tables;
    if (auto problem = host::read_configuration(inside.configuration, tables)) {
        return fail(*problem);
    }
    for (const ListedTable& table : tables) {
        std::unique_ptr<Sarea> network;
        if (auto problem = host::load_network(table, inside.configuration, network)) {
            return fail(*problem);
        }
        Sarea*& slot = inside.engine->sareak[table.key];
        delete slot;  // a later network of the same key replaces an earlier one
        slot = network.release();
        inside.tables.push_back(table.path);
    }
    if (!settings.use_dictionary) {
        inside.use({}, nullptr);
        result.checker = std::move(checker);
        return result;
    }
    inside.file.emplace(settings.dictionary.empty() ? default_dictionary()
                                                    : settings.dictionary);
    PersonalList list;
    if (!inside.file->path().empty()) {
        if (auto problem = inside.file->read(list)) return fail(*problem);
    }
    inside.use(std::move(list), &result.problems);
    result.checker = std::move(checker);
    return result;
}

std::string Checker::configuration() const { return inside_->configuration; }

std::vector<std::string> Checker::tables() const { return inside_->tables; }

std::string Checker::dictionary() const {
    return inside_->file ? inside_->file->path() : std::string();
}

}  // namespace lemara
