// nuspell's library over a flat word list. DATA: its .aff, with the .dic beside it.
#include <nuspell/dictionary.hxx>

#include "peer.h"

int main(int argc, char** argv) {
    const peer::Arguments arguments = peer::arguments(argc, argv);
    const double start = peer::cpu_seconds();
    nuspell::Dictionary speller;
    speller.load_aff_dic(std::filesystem::path(arguments.data.at(0)));
    const double load = peer::cpu_seconds() - start;
    const bool check = arguments.task == "valid";
    return peer::measure(arguments, load, arguments.words,
                         [&](const std::string& word, std::string* text) {
                             if (check) {
                                 const bool valid = speller.spell(word);
                                 if (text != nullptr) *text = valid ? "yes" : "no";
                                 return std::size_t{valid};
                             }
                             peer::Strings found;
                             speller.suggest(word, found);
                             if (text != nullptr) *text = peer::line_of(found);
                             return found.size();
                         });
}
