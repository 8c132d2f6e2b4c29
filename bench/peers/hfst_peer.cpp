// HFST's library: analysis strings of a word. DATA: a network in its optimised lookup
// form, input side the word.
#include <hfst.h>

#include "peer.h"

int main(int argc, char** argv) {
    const peer::Arguments arguments = peer::arguments(argc, argv);
    const double start = peer::cpu_seconds();
    hfst::HfstInputStream in(arguments.data.at(0));
    const hfst::HfstTransducer network(in);
    const double load = peer::cpu_seconds() - start;
    return peer::measure(arguments, load, arguments.words,
                         [&](const std::string& word, std::string* text) {
                             peer::Strings found;
                             std::size_t sum = 0;
                             hfst::HfstOneLevelPaths* paths = network.lookup_fd(word);
                             for (const hfst::HfstOneLevelPath& path : *paths) {
                                 std::string result;
                                 for (const std::string& symbol : path.second) {
                                     if (!hfst::is_epsilon(symbol)) result += symbol;
                                 }
                                 sum += result.size();
                                 if (text != nullptr) found.push_back(result);
                             }
                             delete paths;
                             if (text != nullptr) *text = peer::line_of(found);
                             return sum;
                         });
}
