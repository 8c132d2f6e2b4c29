// A host of Lemara: checks a paragraph and tells what the engine thinks of each word.
//
//     check CONFIGURATION TEXT
//
// The configuration lists the tables, one path a line. Text is Latin-1.
#include <Lemara.h>

#include <iostream>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: check CONFIGURATION TEXT\n";
        return 2;
    }
    Lemara engine(argv[1]);

    for (const Esaldia& sentence : engine.analizatu_paragrafoa(1, argv[2]).esaldiak) {
        for (const Tokena& token : sentence.tokenak) {
            std::cout << token.testua << '\t'
                      << (engine.isValid(token.testua, false) ? "valid" : "unknown")
                      << '\t';
            for (const Analisia& analysis : token.analisiak) {
                std::cout << analysis.lema << analysis.etiketa << "; ";
            }
            std::cout << '\n';
        }
    }
    std::cout << engine.getParagrafoaZuzenlex(argv[2], true);
}
