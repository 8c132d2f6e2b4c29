#include "host/tables.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "host/files.h"
#include "lemara/compiled_table.h"
#include "lemara/utf8.h"

namespace lemara::host {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t LARGEST_CONFIGURATION = 1 << 20;  // bytes
constexpr std::size_t LARGEST_TABLE = std::size_t{1} << 31;
constexpr char CONFIGURATION_NAME[] = "sareak.cfg";

/// Where the tables are, from the folder of the library and of programs: as installed, as
/// built.
constexpr const char* FROM_LIBRARY[] = {LEMARA_TABLES_FROM_LIBDIR, "../lexicon"};
constexpr const char* FROM_PROGRAM[] = {LEMARA_TABLES_FROM_BINDIR, "../lexicon"};

bool is_comment(std::string_view line) {
    return line.empty() || line.substr(0, 2) == "//" || line[0] == ' ' ||
           line[0] == '\t' || line[0] == '\r';
}

std::string_view base_of(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == path.npos ? path : path.substr(slash + 1);
}

std::string key_of(std::string_view path) {
    std::string_view key = base_of(path);
    key = key.substr(0, key.find('.'));
    const bool with_mark = key.size() >= 2 && key.substr(key.size() - 2) == "PG";
    return std::string(with_mark ? key.substr(0, key.size() - 2) : key);
}

std::optional<std::string> add_table(std::string_view line,
                                     const std::string& configuration, std::size_t number,
                                     std::vector<ListedTable>& tables) {
    if (tables.size() == MOST_TABLES) {
        return "too many tables; at most " + std::to_string(MOST_TABLES) + " are loaded";
    }
    const std::string_view base = base_of(line);
    if (std::min(base.find('.'), base.size()) < 2) {
        return "the name of a table needs two characters before its first dot: " +
               printable(line);
    }
    std::error_code error;
    fs::path path = fs::path(std::string(line));
    const fs::path folder = fs::path(configuration).parent_path();
    if (!fs::exists(path, error) && path.is_relative()) path = folder / path;
    if (!fs::exists(path, error)) {
        return "no such table: " + printable(line) +
               " (looked for in the working folder" +
               (folder.empty() ? "" : " and in " + folder.string()) + ')';
    }
    tables.push_back({key_of(line), path.string(), number});
    return std::nullopt;
}

/// What is wrong with a compiled table that did not load.
std::string defect_of_compiled(const std::string& path) {
    std::string bytes;
    if (const auto problem = read_file(path, LARGEST_TABLE, bytes))
        return problem->reason;
    const std::string defect = compiled_table_defect(bytes);
    return "unusable compiled table: " + (defect.empty() ? "it has no states" : defect);
}

/// What is wrong with the file of a table, as far as its beginning shows. A compiled
/// table is examined when it's loaded, and only then: that takes longer than all else at
/// the start.
std::string defect_of(const std::string& path, bool& compiled) {
    std::string start;
    if (const auto problem = read_start(path, 64, start)) return problem->reason;
    compiled = is_compiled_table(start);
    if (compiled) return "";
    if (path.find("SARE8") != path.npos) return "";  // enciphered
    const bool digit = !start.empty() && start[0] >= '0' && start[0] <= '9';
    return digit || start.compare(0, 5, "final") == 0
               ? ""
               : "is no table; see lemara table check";
}

void add_place(const fs::path& path, std::vector<std::string>& places) {
    const std::string place = path.lexically_normal().string();
    if (std::find(places.begin(), places.end(), place) == places.end())
        places.push_back(place);
}

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// The folder of this library, or of the program if it is linked into one.
fs::path library_folder() {
    Dl_info info{};
    if (::dladdr(reinterpret_cast<const void*>(&find_configuration), &info) == 0)
        return {};
    if (info.dli_fname == nullptr) return {};
    std::error_code error;
    const fs::path path = fs::canonical(info.dli_fname, error);
    return error ? fs::path() : path.parent_path();
}

fs::path program_folder() {
    std::error_code error;
    const fs::path path = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::path() : path.parent_path();
}

/// The folders of the user's and the system's data, the user's first.
std::vector<fs::path> data_folders() {
    std::vector<fs::path> folders;
    if (const std::string own = default_dictionary(); !own.empty()) {
        folders.push_back(fs::path(own).parent_path().parent_path());
    }
    std::string list = environment("XDG_DATA_DIRS");
    if (list.empty()) list = "/usr/local/share:/usr/share";
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t end = std::min(list.find(':', start), list.size());
        if (end > start) folders.emplace_back(list.substr(start, end - start));
        start = end + 1;
    }
    return folders;
}

}  // namespace

std::optional<Problem> read_configuration(const std::string& path,
                                          std::vector<ListedTable>& tables) {
    std::string text;
    if (auto problem = read_file(path, LARGEST_CONFIGURATION, text)) return problem;
    if (text.find('\0') != text.npos) {
        return Problem{path, 0, "not a text file: it holds NUL bytes"};
    }
    std::size_t number = 0;
    for (std::string_view rest = text; !rest.empty();) {
        std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        ++number;
        if (is_comment(line)) continue;
        if (line.back() == '\r') line.remove_suffix(1);
        if (auto reason = add_table(line, path, number, tables)) {
            return Problem{path, number, *reason};
        }
    }
    const bool has_main =
        std::any_of(tables.begin(), tables.end(),
                    [](const ListedTable& t) { return t.key == "eumorfo"; });
    if (has_main) return std::nullopt;
    return Problem{path, 0, "no network \"eumorfo\"; list a table with that file name"};
}

std::optional<Problem> load_network(const ListedTable& listed,
                                    const std::string& configuration,
                                    std::unique_ptr<Sarea>& network) {
    bool compiled = false;
    if (const std::string defect = defect_of(listed.path, compiled); !defect.empty()) {
        return Problem{configuration, listed.line, listed.path + ": " + defect};
    }
    auto table = std::make_unique<Taula>();
    table->fitxategia = listed.path;
    if (!load_for_searches(*table)) {
        const std::string defect =
            compiled ? defect_of_compiled(listed.path) : std::string("cannot be loaded");
        return Problem{configuration, listed.line, listed.path + ": " + defect};
    }
    network = std::make_unique<Sarea>(listed.key, listed.path, table.release());
    return std::nullopt;
}

}  // namespace lemara::host

std::string lemara::find_configuration(std::vector<std::string>* looked) {
    using namespace lemara::host;
    std::vector<std::string> places;
    std::error_code error;
    if (const std::string given = environment("LEMARA_TABLES"); !given.empty()) {
        add_place(fs::is_directory(given, error) ? fs::path(given) / CONFIGURATION_NAME
                                                 : fs::path(given),
                  places);
    } else {
        if (const fs::path here = library_folder(); !here.empty()) {
            for (const char* folder : FROM_LIBRARY) {
                add_place(here / folder / CONFIGURATION_NAME, places);
            }
        }
        if (const fs::path here = program_folder(); !here.empty()) {
            for (const char* folder : FROM_PROGRAM) {
                add_place(here / folder / CONFIGURATION_NAME, places);
            }
        }
        for (const fs::path& folder : data_folders()) {
            add_place(folder / "lemara" / CONFIGURATION_NAME, places);
        }
    }
    if (looked != nullptr) *looked = places;
    for (const std::string& place : places) {
        if (fs::exists(place, error)) return place;
    }
    return "";
}

std::string lemara::default_dictionary() {
    using namespace lemara::host;
    fs::path folder = environment("XDG_DATA_HOME");
    if (!folder.is_absolute()) {  // as the standard has it, a relative path is none
        const std::string home = environment("HOME");
        if (home.empty()) return "";
        folder = fs::path(home) / ".local" / "share";
    }
    return (folder / "lemara" / "hiztegia.txt").string();
}
