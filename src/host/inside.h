// What a checker holds. Its operations are in Checker.cpp (opening), Checker_check.cpp
// (texts and words) and Checker_words.cpp (the personal dictionary).
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <vector>

#include "Lemara.h"
#include "host/personal_file.h"
#include "host/piece.h"
#include "lemara/checker.h"

namespace lemara {

namespace host {

/// Many readers or one writer; a writer that waits is let in before new readers.
class ReadWriteLock {
public:
    void lock_shared() {
        const std::lock_guard<std::mutex> turn(turnstile_);
        mutex_.lock_shared();
    }
    void unlock_shared() { mutex_.unlock_shared(); }
    void lock() {
        const std::lock_guard<std::mutex> turn(turnstile_);
        mutex_.lock();
    }
    void unlock() { mutex_.unlock(); }

private:
    std::mutex turnstile_;
    std::shared_mutex mutex_;
};

/// Makes an engine's dictionary of a list. Words that share a stem are all found, an
/// adjective has its degrees, and a name is found too: its stem is filed in small
/// letters, as the engine looks for it, and its lemma keeps its capitals, so the name in
/// small letters is none.
std::unique_ptr<HiztegiPertsonala> dictionary_of(
    const std::vector<PersonalEntry>& entries, std::vector<std::string>& refused);

/// A token that the engine made of a piece.
struct Judged {
    Tokena token;
    Bytes source;
    std::size_t sentence;  // of the piece
};

struct CheckerInside {
    CheckerInside();
    ~CheckerInside();

    std::string configuration;
    std::vector<std::string> tables;
    std::unique_ptr<Lemara> engine;

    mutable ReadWriteLock lock;  // guards the engine's dictionary and `personal`
    std::mutex adding;           // one change at a time; guards `file`
    std::optional<PersonalFile> file;
    std::vector<PersonalEntry> personal;

    static const CheckerInside& of(const Checker& checker) { return *checker.inside_; }

    const Sarea* network(const char* key) const;

    /// Puts a list in the place of the dictionary.
    void use(PersonalList list, std::vector<Problem>* problems);

    /// The tokens of a piece, analysed.
    std::vector<Judged> analyse(const Piece& piece) const;

    /// True if the checker has nothing to say on a text.
    bool accepts(const std::string& latin1) const;

    /// Whether a token is to be told of, and how.
    std::optional<Kind> kind_of(const Tokena& token) const;
};

/// The engine of a checker, for a command that asks it itself. Visible for the command.
[[gnu::visibility("default")]] const Lemara& engine_of(const Checker& checker);

}  // namespace host

}  // namespace lemara
