// foma's library: analysis strings of a word. DATA: a binary network, upper side the
// analysis.
#include <cstring>

#include "peer.h"

extern "C" {
#include <fomalib.h>
}

int main(int argc, char** argv) {
    const peer::Arguments arguments = peer::arguments(argc, argv);
    const double start = peer::cpu_seconds();
    std::string path = arguments.data.at(0);
    fsm* network = fsm_read_binary_file(path.data());
    apply_handle* handle = apply_init(network);
    const double load = peer::cpu_seconds() - start;
    return peer::measure(arguments, load, arguments.words,
                         [&](const std::string& word, std::string* text) {
                             peer::Strings found;
                             std::size_t sum = 0;
                             char* result =
                                 apply_up(handle, const_cast<char*>(word.c_str()));
                             while (result != nullptr) {
                                 sum += std::strlen(result);
                                 if (text != nullptr) found.emplace_back(result);
                                 result = apply_up(handle, nullptr);
                             }
                             if (text != nullptr) *text = peer::line_of(found);
                             return sum;
                         });
}
