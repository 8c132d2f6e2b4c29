// Words that a command is asked about, and its answers: lines for people or JSON.
// Tests: tests/tools/command_line_test.py.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "output.h"
#include "text_reader.h"

namespace lemara::tools {

/// A word of the command line, or a line of standard input.
struct AskedWord {
    std::string typed;     ///< as typed, in UTF-8; what is none is U+FFFD
    std::string latin1;    ///< as the engine reads it
    bool foreign = false;  ///< the engine can't be shown all of it
};

enum class AnswerFormat { TEXT, JSON, JSONL };

/// What is answered about a word, in UTF-8.
struct Answer {
    bool good = false;
    std::string text;     ///< the lines for people
    std::string members;  ///< of a JSON object, behind the word: "\"valid\":true"
};

struct AskedWords {
    std::vector<std::string> words;  ///< "-" or none: the lines of standard input
    Encoding encoding = Encoding::UTF_8;
    AnswerFormat format = AnswerFormat::TEXT;
};

/// Answers each word, in its order and by itself. For people words that are empty or no
/// UTF-8 are passed over. As JSON every word and line has its object, {"word":...} with
/// the members of the answer, or with "error" if nothing can be answered. True if all
/// answers are good.
bool answer_words(const AskedWords& asked, Results& results,
                  const std::function<Answer(const AskedWord&)>& answer);

}  // namespace lemara::tools
