// Analysed tokens in the formats that other programs read. All UTF-8.
// Tests: tests/tools/command_line_test.py.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "lemara/checker.h"

namespace lemara::tools {

enum class TokenFormat { CG3, CONLLU, JSON, JSONL };

/// Makes text of tokens that come in their order, sentence by sentence. Paragraphs and
/// sentences of a token may count from any number; here both count from 0 in the file,
/// and in cg3 paragraphs from 1 over all files, sentences from 1 in a paragraph.
class TokenReport {
public:
    using Write = std::function<void(std::string_view)>;

    /// `values`: cg3 has the values of recommendations.
    TokenReport(TokenFormat format, bool values, Write write)
        : format_(format), values_(values), write_(std::move(write)) {}

    void start();                              ///< before everything
    void start_file(const std::string& name);  ///< as it is to be shown
    void take(Token token);
    void end_chunk();  ///< the paragraph is at its end
    void finish();     ///< behind everything

private:
    TokenFormat format_;
    bool values_;
    Write write_;
    std::string file_;
    bool file_told_ = false, any_ = false, in_paragraph_ = false;
    std::size_t paragraph_ = 0, sentence_ = 0;    // of the tokens that are waiting
    std::size_t paragraphs_ = 0, sentences_ = 0;  // begun in this file
    std::size_t all_paragraphs_ = 0, all_sentences_ = 0, in_this_paragraph_ = 0;
    std::vector<Token> waiting_;  // of a sentence

    void end_sentence();
    void write_conllu();
    void write_json();
};

}  // namespace lemara::tools
