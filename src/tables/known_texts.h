// Lists of texts that were found out for words before: the analyses of a token, the
// entries that begin with a text.
//
// A list is found by the word and given again, text by text, where it stands; reading
// takes no lock. The memory is bounded and only grows: long lists, long texts and what
// finds no room are found out anew each time. Tests: tests/tables/known_texts_test.cpp.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>
#include <type_traits>

#include "tables/lasting_runs.h"
#include "tables/word_map.h"

namespace lemara {

/// `About` is a plain value that stands beside each list.
template <class About>
class KnownTexts {
public:
    static constexpr std::size_t LONGEST_WORD = WordMap::LONGEST;
    static constexpr std::size_t LONGEST_TEXT = 128;
    static constexpr std::size_t MOST_BYTES = 1000;  // of a list

    /// Lists for at most three quarters of `most_slots` words, a power of two.
    explicit KnownTexts(std::size_t most_slots) : lists_(most_slots) {}

    class List {
    public:
        About about;

        std::uint16_t count() const { return count_; }

        /// Calls `visit` with each text, behind which there is a NUL, until it answers
        /// false.
        template <class Visit>
        void for_each(Visit visit) const {
            const char* at = reinterpret_cast<const char*>(this + 1);
            for (std::uint16_t i = 0; i < count_; ++i) {
                TextSize size = 0;
                std::memcpy(&size, at, sizeof size);
                at += sizeof size;
                if (!visit(std::string_view(at, size))) return;
                at += size + std::size_t{1};
            }
        }

    private:
        friend class KnownTexts;

        List(const About& about_, std::uint16_t count) : about(about_), count_(count) {}

        std::uint16_t count_;
        // Behind it stand the texts, each with its size in front.
    };

    /// The texts of a list as they are found out.
    class Notes {
    public:
        explicit Notes(bool taken) : taken_(taken) {}

        /// False if there is no point in taking notes, or not any more.
        bool taken() const { return taken_; }

        /// `text` has a NUL behind it.
        void add(std::string_view text) {
            const auto size = static_cast<TextSize>(text.size());
            if (text.size() > LONGEST_TEXT ||
                MOST_BYTES - size_ < sizeof size + size + 1) {
                taken_ = false;
                return;
            }
            std::memcpy(bytes_ + size_, &size, sizeof size);
            std::memcpy(bytes_ + size_ + sizeof size, text.data(), size + std::size_t{1});
            size_ += sizeof size + size + 1;
            ++count_;
        }

    private:
        friend class KnownTexts;

        bool taken_;
        std::uint16_t count_ = 0;
        std::size_t size_ = 0;
        char bytes_[MOST_BYTES];
    };

    /// What is known of a word; null if nothing is. Good as long as the object.
    const List* find(std::string_view word) const {
        return reinterpret_cast<const List*>(
            static_cast<std::uintptr_t>(lists_.find(word)));
    }

    /// For a word about which nothing is known.
    Notes notes_for(std::string_view word) const {
        return Notes(word.size() <= LONGEST_WORD && lists_.has_room());
    }

    /// Keeps notes, if there is room and nobody else is at it.
    void keep(std::string_view word, const About& about, const Notes& notes) {
        if (!notes.taken_) return;
        const Turn turn(busy_);
        if (!turn) return;
        constexpr std::size_t ALIGNED = alignof(List);
        const std::size_t size =
            (sizeof(List) + notes.size_ + ALIGNED - 1) / ALIGNED * ALIGNED;
        char* const at = bytes_.room(size);
        if (at == nullptr) return;
        const auto* kept = new (at) List(about, notes.count_);
        std::memcpy(at + sizeof(List), notes.bytes_, notes.size_);
        if (!lists_.put(word, reinterpret_cast<std::uintptr_t>(kept)))
            bytes_.give_back(size);
    }

private:
    using TextSize = std::uint16_t;
    static constexpr std::size_t BYTES_OF_CHUNK = 1 << 15;
    static constexpr std::size_t MOST_CHUNKS = 1 << 14;
    static_assert(std::is_trivially_copyable<About>::value, "it is never destroyed");
    static_assert(sizeof(List) + MOST_BYTES < BYTES_OF_CHUNK, "a list is one run");
    static_assert(alignof(List) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__,
                  "chunks are aligned");

    WordMap lists_;                             // addresses of lists
    std::atomic_flag busy_ = ATOMIC_FLAG_INIT;  // guards what is kept below
    LastingRuns<char, BYTES_OF_CHUNK, MOST_CHUNKS> bytes_;
};

}  // namespace lemara
