// The ispell protocol: one conversation, line by line. Tests: tests/tools/ispell_test.py.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "lemara/checker.h"

namespace lemara::tools {

/// The line that a client looks for before it trusts the conversation.
std::string ispell_banner();

/// Answers a client's lines. All text is UTF-8.
class IspellConversation {
public:
    explicit IspellConversation(Checker& checker) : checker_(checker) {}

    /// The answer to a line without its line end: for a text a line for each word and an
    /// empty one, for nearly all commands nothing.
    std::string answer(std::string_view line);

private:
    Checker& checker_;
    std::set<std::string> accepted_;
    bool terse_ = false, verbose_ = false;

    std::string check(std::string text, std::size_t skipped);
    std::string answer_extension(std::string_view command) const;
    void add(const std::string& word);
};

/// A token that is a word of the language's script; addresses and foreign words are none.
bool is_checked_word(const Token& token);

/// "A" to "Z" and the capitals of Latin-1 lowered.
std::string lowered_word(std::string_view word);

}  // namespace lemara::tools
