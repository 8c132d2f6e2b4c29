// hunspell's library over a flat word list. DATA: its .aff and .dic.
#include <hunspell.hxx>

#include "peer.h"

int main(int argc, char** argv) {
    const peer::Arguments arguments = peer::arguments(argc, argv);
    const double start = peer::cpu_seconds();
    Hunspell speller(arguments.data.at(0).c_str(), arguments.data.at(1).c_str());
    const double load = peer::cpu_seconds() - start;
    const bool check = arguments.task == "valid";
    return peer::measure(arguments, load, arguments.words,
                         [&](const std::string& word, std::string* text) {
                             if (check) {
                                 const bool valid = speller.spell(word);
                                 if (text != nullptr) *text = valid ? "yes" : "no";
                                 return std::size_t{valid};
                             }
                             const peer::Strings found = speller.suggest(word);
                             if (text != nullptr) *text = peer::line_of(found);
                             return found.size();
                         });
}
