// Judges every token and finding of text files by the property of positions. Uses the
// tables that a checker finds by itself, or those of LEMARA_TABLES.
#include <fstream>
#include <iostream>
#include <sstream>

#include "spans.h"

int main(int argc, char** argv) {
    lemara::Settings settings;
    settings.use_dictionary = false;
    const lemara::Checker::Opened opened = lemara::Checker::open(settings);
    for (const lemara::Problem& problem : opened.problems) {
        std::cerr << "check-spans: " << problem.text() << '\n';
    }
    if (!opened.checker || argc < 2) {
        std::cerr << "usage: check-spans FILE...\n";
        return 2;
    }
    int status = 0;
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        std::ostringstream bytes;
        bytes << file.rdbuf();
        if (!file) {
            std::cerr << "check-spans: " << argv[i] << ": cannot read\n";
            return 2;
        }
        // In blocks of lines, so that each is judged with small lists.
        const std::string text = bytes.str();
        std::size_t findings = 0, start = 0;
        while (start < text.size()) {
            const std::size_t end =
                std::min(text.find('\n', start + 20000), text.size() - 1);
            const std::string block = text.substr(start, end + 1 - start);
            lemara::CheckOptions options;
            options.most_forms = 0;
            options.report_foreign = true;
            lemara::test::SpanJudge judge(block);
            const std::string why = judge.judge(*opened.checker, options);
            if (!why.empty()) {
                std::cout << argv[i] << ": behind byte " << start << ": " << why << '\n';
                status = 1;
            }
            findings += judge.findings;
            start = end + 1;
        }
        std::cout << argv[i] << ": " << findings << " findings, "
                  << (status == 0 ? "all spans hold" : "some spans are wrong") << '\n';
    }
    return status;
}
