// What the benchmarks ask about: an engine over the built lexicon, and fixed words.
#pragma once

#include <stdlib.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "Lemara.h"

namespace lemara::bench {

using Strings = std::vector<std::string>;

/// The configuration file, from the environment: LEMARA_CONFIG.
inline std::string configuration() {
    const char* path = std::getenv("LEMARA_CONFIG");
    if (path == nullptr) {
        std::cerr << "set LEMARA_CONFIG to a configuration file; bench/run does\n";
        std::exit(2);
    }
    return path;
}

/// One engine for all benchmarks of a run; loading has a benchmark of its own.
inline Lemara& engine() {
    static Lemara* const shared = [] {
        std::cout.setstate(std::ios::failbit);  // the engine's own messages
        auto* made = new Lemara(configuration());
        std::cout.clear();
        return made;
    }();
    return *shared;
}

inline const Taula& main_table() { return *engine().sareak.at("eumorfo")->taula; }

// Latin-1. Every word is one of the lexicon.
inline const Strings RIGHT = {
    "etxea",  "etxeetan", "mendiaren", "zuhaitza", "egunkariak", "dugu",     "naiz",
    "ditut",  "liburuak", "ikasleek",  "handia",   "gorriak",    "zuriekin", "eta",
    "ere",    "baina",    "Donostia",  "Bilbon",   "egin",       "egiten",   "ikusi",
    "joango", "etorriko", "hizkuntza", "euskara",  "urtean",     "lagunak",  "gizonak",
};

// The same with one thing wrong each.
inline const Strings WRONG = {
    "etxwa",  "etxeetn",   "mendiarwn", "zuhaitzw", "egunkqriak", "duqu",     "nqiz",
    "diqut",  "libuyruak", "ikwsleek",  "hqndia",   "gorriqk",    "zuriwkin", "ety",
    "erw",    "baiwa",     "Doqostia",  "Bilwon",   "ewin",       "egiwen",   "ikuwi",
    "jowngo", "etowriko",  "hizkwntza", "euskwra",  "urtwan",     "lawunak",  "gizwnak",
};

/// The file of a personal dictionary of so many words, gone with the object.
class DictionaryFile {
public:
    explicit DictionaryFile(long words) {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "lemara-bench-XXXXXX").string();
        const int file = mkstemp(pattern.data());
        if (file < 0) throw std::runtime_error("no temporary file");
        close(file);
        path = pattern;
        std::ofstream out(path);
        for (long i = 0; i < words; ++i) {
            out << 'h';
            for (long n = i; n > 0; n /= 20) out << static_cast<char>('a' + n % 20);
            out << "o\t<ARR>\n";
        }
    }
    ~DictionaryFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    DictionaryFile(const DictionaryFile&) = delete;
    DictionaryFile& operator=(const DictionaryFile&) = delete;

    std::string path;
};

inline const Strings LEMMAS = {"etxe", "mendi", "zuhaitz", "liburu", "gizon", "lagun"};

}  // namespace lemara::bench
