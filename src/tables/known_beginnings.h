// The entries that a search by beginning found before: a checker asks the same ones about
// the same words, and for most there is nothing. Tests:
// tests/tables/known_texts_test.cpp.
#pragma once

#include <cstddef>
#include <string_view>

#include "tables/known_texts.h"

namespace lemara {

class KnownBeginnings {
public:
    struct Nothing {};  // there is nothing more to know about a beginning
    using Lists = KnownTexts<Nothing>;

    /// What a search finds, in its order.
    class Notes {
    public:
        /// Both texts have a NUL behind them.
        void add(std::string_view upper, std::string_view lower) {
            if (texts_.taken()) texts_.add(upper);
            if (texts_.taken()) texts_.add(lower);
        }

    private:
        friend class KnownBeginnings;

        Notes(const Lists& lists, std::string_view beginning)
            : texts_(lists.notes_for(beginning)) {}

        Lists::Notes texts_;
    };

    /// Calls `take` with the upper and the lower text of each entry, until it answers
    /// false. False if nothing is known about the beginning; then nothing was taken.
    template <class Take>
    bool recite(std::string_view beginning, Take take) const {
        const Lists::List* known = lists_.find(beginning);
        if (known == nullptr) return false;
        std::string_view upper;
        bool is_lower = true;
        known->for_each([&](std::string_view text) {
            is_lower = !is_lower;
            if (is_lower) return take(upper, text);
            upper = text;
            return true;
        });
        return true;
    }

    Notes notes_for(std::string_view beginning) const { return Notes(lists_, beginning); }
    void keep(std::string_view beginning, const Notes& notes) {
        lists_.keep(beginning, {}, notes.texts_);
    }

private:
    static constexpr std::size_t SLOTS = std::size_t{1} << 12;

    Lists lists_{SLOTS};  // upper and lower texts in turn
};

}  // namespace lemara
