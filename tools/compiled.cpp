#ifndef _GNU_SOURCE
#define _GNU_SOURCE  // memfd_create
#endif
#include "compiled.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "Taula.h"
#include "failure.h"
#include "files.h"
#include "fitxategiak.h"
#include "table_format.h"

namespace lemara::tools {

namespace {

/// A file in memory with a path, for a library that wants paths.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view bytes)
        : descriptor_(::memfd_create("table", MFD_CLOEXEC)) {
        if (descriptor_ < 0 || !write_all(descriptor_, bytes)) fail();
        if (!file_exists(path())) fail();  // the library would end the process
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

private:
    int descriptor_;

    [[noreturn]] void fail() const {
        const std::string why = std::strerror(errno);
        ::close(descriptor_);
        throw Failure("cannot make a file in memory: " + why);
    }
};

/// The field that the loader splits into these two symbols.
std::string field_of(const Zubia& arc) {
    if (arc.goiko_ikurra == arc.beheko_ikurra && !arc.goiko_ikurra.empty()) {
        return arc.goiko_ikurra;
    }
    const bool reads_nothing = arc.beheko_ikurra.empty();
    return arc.goiko_ikurra + ':' +
           (reads_nothing ? std::string(EPSILON) : arc.beheko_ikurra);
}

std::string record_of(std::size_t state, const Zubia& arc) {
    const std::string source = std::to_string(state);
    if (arc.hurrengo_egoera < 0) return "final: " + source + '\n';
    return source + '\t' + field_of(arc) + '\t' + std::to_string(arc.hurrengo_egoera) +
           '\n';
}

}  // namespace

void load_table(Taula& table, const std::string& bytes) {
    const MemoryFile file(bytes);
    table.fitxategia = file.path();
    table.kargatu();
}

std::string text_from_compiled(const std::string& image) {
    Taula table;
    load_table(table, image);
    table.addEgoera(
        new Egoera());  // unfolds the graph; stays the last state, without arcs
    std::string text;
    for (std::size_t state = 0; state < table.egoerak.size(); ++state) {
        if (table.egoerak[state] == nullptr) continue;
        for (const Zubia* arc : table.egoerak[state]->zubiak) {
            text += record_of(state, *arc);
        }
    }
    return text;
}

}  // namespace lemara::tools
