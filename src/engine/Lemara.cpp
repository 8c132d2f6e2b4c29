// The engine's life: configuration, networks, end. The services on words are in
// Lemara_words.cpp, proposals in Lemara_proposals.cpp, the paragraph check in
// Lemara_check.cpp. Tests: tests/engine/Lemara_test.cpp.
#include "Lemara.h"

#include <algorithm>
#include <mutex>
#include <ostream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "analysis/messages.h"
#include "analysis/text_pieces.h"
#include "tables/file_bytes.h"
#include "text/sentence_analysis.h"

namespace {

constexpr int MOST_TABLES = 10;

bool is_comment(const std::string& line) {
    if (line.empty() || lemara::starts_with(line, "//")) return true;
    return line[0] == ' ' || line[0] == '\t' || line[0] == '\r';
}

/// The paths that the configuration lists, in its order; at most MOST_TABLES.
std::vector<std::string> read_paths(const std::string& configuration) {
    std::vector<std::string> paths;
    lemara::FileBytes file;
    file.read(configuration);  // one that can't be opened lists nothing
    for (std::string_view rest = file.view(); !rest.empty();) {
        const std::size_t size = std::min(rest.find('\n'), rest.size());
        std::string line(rest.substr(0, size));
        rest.remove_prefix(std::min(size + 1, rest.size()));
        if (is_comment(line)) continue;
        // The limit is tested before the file is looked at: a missing one counts as well.
        if (paths.size() == MOST_TABLES) {
            lemara::messages() << "kargatu_sareak: Taula kopuru handiegia: "
                               << MOST_TABLES << " da topea!\n";
            break;
        }
        if (line.back() == '\r') line.pop_back();
        if (!file_exists(line)) {
            lemara::messages() << "Ezin da ireki '" << line << "'\n";
            continue;
        }
        paths.push_back(line);
    }
    lemara::messages().flush();
    return paths;
}

/// The file name up to its first dot, without a final "PG".
std::string key_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    std::string key = slash == std::string::npos ? path : path.substr(slash + 1);
    key = key.substr(0, key.find('.'));
    if (key.size() < 2) throw std::out_of_range("basic_string::substr");
    if (key.compare(key.size() - 2, 2, "PG") == 0) key.resize(key.size() - 2);
    return key;
}

/// What an engine leaves to its host when it goes: network records without their tables,
/// and the dictionary. A host may still hold them, so they are never deleted; this list
/// keeps them reachable, so that they don't look like leaks.
class LeftToHosts {
public:
    static LeftToHosts& get() {
        static LeftToHosts* const list = new LeftToHosts;
        return *list;
    }

    void add(const void* object) {
        if (object == nullptr) return;
        const std::lock_guard<std::mutex> lock(mutex_);
        objects_.push_back(object);
    }

private:
    std::mutex mutex_;
    std::vector<const void*> objects_;
};

}  // namespace

Lemara::Lemara() : hiztegiPertsonala(nullptr) {}

Lemara::Lemara(const std::string& configuration)
    : konfigurazioa(configuration), hiztegiPertsonala(nullptr) {
    try {
        kargatu_sareak();
        hiztegiPertsonala = new HiztegiPertsonala();
    } catch (...) {
        release_all();
        throw;
    }
}

Lemara::Lemara(const std::string& configuration, const std::string& dictionary_path)
    : konfigurazioa(configuration),
      hiztegiFitxategia(dictionary_path),
      hiztegiPertsonala(nullptr) {
    try {
        kargatu_sareak();
        hiztegiPertsonala = new HiztegiPertsonala(hiztegiFitxategia);
    } catch (...) {
        release_all();
        throw;
    }
}

Lemara::~Lemara() {
    lemara::messages() << "Taulak husten...\n" << std::flush;
    for (auto& entry : sareak) {
        Sarea* network = entry.second;
        if (network == nullptr) continue;
        delete network->taula;
        network->taula = nullptr;
        LeftToHosts::get().add(network);
    }
    LeftToHosts::get().add(hiztegiPertsonala);
}

/// The end of an engine that was never finished: nobody has seen its networks.
void Lemara::release_all() {
    for (auto& entry : sareak) delete entry.second;
    sareak.clear();
    delete hiztegiPertsonala;
    hiztegiPertsonala = nullptr;
}

void Lemara::kargatu_sareak() {
    for (const std::string& path : read_paths(konfigurazioa)) {
        const std::string key = key_of(path);
        auto table = std::make_unique<Taula>(path);
        auto network = std::make_unique<Sarea>(key, path, table.release());
        Sarea*& slot = sareak[key];
        ordezkatuak.emplace_back(slot);  // a host may hold the network that is replaced
        slot = network.release();
        lemara::messages()
            << std::endl;  // Kept on purpose: a blank line for each network.
    }
}

void Lemara::kargatu_taula(Taula* taula) {
    if (taula != nullptr) taula->kargatu();
}

const Sarea* Lemara::find_network(const std::string& key) const {
    return lemara::find_network(sareak, key);
}

const HiztegiPertsonala& Lemara::dictionary() const {
    static const HiztegiPertsonala none;
    return hiztegiPertsonala == nullptr ? none : *hiztegiPertsonala;
}
