// Writes the golden files of the language tests anew and names those that change; see
// scripts/update-golden.
#include <exception>
#include <fstream>
#include <iostream>

#include "golden.h"

namespace {

using namespace lemara::test;

void write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary);
    out << text;
    if (!out.flush()) throw std::runtime_error("cannot write " + path.string());
}

int update() {
    for (const std::string& name : GOLDEN_NAMES) {
        for (const std::string& format : GOLDEN_FORMATS) {
            const std::filesystem::path path = golden_file(name, format);
            const std::string text = golden_text(name, format);
            if (std::filesystem::exists(path) && read_file(path.string()) == text)
                continue;
            write(path, text);
            std::cout << "changed: " << path.filename().string() << std::endl;
        }
    }
    return 0;
}

}  // namespace

int main() {
    try {
        return update();
    } catch (const std::exception& error) {
        std::cerr << "update_golden: " << error.what() << '\n';
        return 2;
    }
}
