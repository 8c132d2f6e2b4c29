// hfst-ospell's library. DATA: an acceptor and an error model, both in optimised lookup
// form.
#include <ospell.h>

#include "peer.h"

int main(int argc, char** argv) {
    const peer::Arguments arguments = peer::arguments(argc, argv);
    const double start = peer::cpu_seconds();
    std::FILE* acceptor = std::fopen(arguments.data.at(0).c_str(), "rb");
    std::FILE* model = std::fopen(arguments.data.at(1).c_str(), "rb");
    if (acceptor == nullptr || model == nullptr) return 2;
    hfst_ospell::Transducer lexicon(acceptor), errors(model);
    hfst_ospell::Speller speller(&errors, &lexicon);
    const double load = peer::cpu_seconds() - start;
    const bool check = arguments.task == "valid";
    return peer::measure(arguments, load, arguments.words,
                         [&](const std::string& word, std::string* text) {
                             std::string line = word;
                             if (check) {
                                 const bool valid = speller.check(line.data());
                                 if (text != nullptr) *text = valid ? "yes" : "no";
                                 return std::size_t{valid};
                             }
                             hfst_ospell::CorrectionQueue corrections =
                                 speller.correct(line.data(), 10);
                             const std::size_t count = corrections.size();
                             if (text != nullptr) {
                                 peer::Strings found;
                                 for (; !corrections.empty(); corrections.pop()) {
                                     found.push_back(corrections.top().first);
                                 }
                                 *text = peer::line_of(found);
                             }
                             return count;
                         });
}
