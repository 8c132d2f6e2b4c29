// The parts of an analysis string of the common form: a lemma, then grammatical tags that
// stand side by side, and nothing else ("etxe<IZE><ARR>"). Hardly any string has another
// form, so it is worth a road of its own: 16 bytes at a look, a tag in one move.
//
// What has another form, or is longer, is left to the general road in Analisia.cpp, which
// gives the same; so is everything where there is no SSE2.
//
// Tests: tests/analysis/CommonParts_test.cpp, against the extractors of a record.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "analysis/text_pieces.h"

namespace lemara {

class CommonParts {
public:
    /// Bytes of a text: a bit each, and one behind.
    static constexpr std::size_t MOST = 63;

    explicit CommonParts(std::string_view text);
    CommonParts(const CommonParts&) = delete;
    CommonParts& operator=(const CommonParts&) = delete;

    /// False if the text is not of the common form: then all parts are empty.
    bool found() const { return found_; }

    std::string_view lemma() const { return {text_, lemma_size_}; }
    std::string_view tags() const { return {tags_, tags_size_}; }
    std::string_view twol() const { return {twol_, tags_size_}; }

private:
    static constexpr std::size_t STEP = 16;  // bytes of a look; the last one looks beyond

    bool found_ = false;
    std::size_t lemma_size_ = 0, tags_size_ = 0;
    char text_[MOST + STEP + 1], tags_[MOST + STEP + 1], twol_[MOST + STEP + 1];

#ifdef __SSE2__
    static __m128i load(const char* from) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    }
    static void store(char* to, __m128i bytes) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
    }
    static __m128i equal(__m128i bytes, char c) {
        return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c));
    }
    static std::uint64_t bits(__m128i hits) {
        return static_cast<unsigned>(_mm_movemask_epi8(hits));
    }

    /// Which bytes are `first` to `last`. SSE2 compares signed bytes alone, so the range
    /// is moved to their lower end.
    static __m128i in_range(__m128i bytes, int first, int last) {
        const __m128i moved =
            _mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(-128 - first)));
        return _mm_cmplt_epi8(moved,
                              _mm_set1_epi8(static_cast<char>(-128 + last - first + 1)));
    }

    /// `lowered` of 16 bytes.
    static __m128i lowered_bytes(__m128i bytes) {
        const __m128i capital =
            _mm_or_si128(in_range(bytes, 65, 90), in_range(bytes, 192, 221));
        return _mm_add_epi8(bytes, _mm_and_si128(capital, _mm_set1_epi8(32)));
    }

    /// Where the signs stand that decide what form a text has, a bit for each byte.
    struct Signs {
        std::uint64_t open = 0, close = 0;
        std::uint64_t foreign = 0;  // what the common form doesn't hold
        std::uint64_t kind = 0;  // what makes a tag a special one, in front of its name

        /// `size` is STEP or more.
        Signs(const char* text, std::size_t size) {
            for (std::size_t at = 0; at + STEP < size; at += STEP) look(text, at);
            look(text, size - STEP);  // at some bytes again
        }

        void look(const char* text, std::size_t at) {
            const __m128i bytes = load(text + at);
            const __m128i other = _mm_or_si128(
                _mm_or_si128(equal(bytes, '['), equal(bytes, '+')), equal(bytes, '\0'));
            const __m128i special = _mm_or_si128(
                _mm_or_si128(equal(bytes, '0'), equal(bytes, '1')), equal(bytes, 'h'));
            open |= bits(equal(bytes, '<')) << at;
            close |= bits(equal(bytes, '>')) << at;
            foreign |= bits(other) << at;
            kind |= bits(special) << at;
        }
    };

    static bool is_common(std::string_view text, const Signs& signs) {
        if (signs.foreign != 0 || signs.open == 0) return false;
        // Each tag is closed right in front of the next one, and the last at the end.
        const std::uint64_t first = signs.open & (~signs.open + 1);
        const std::uint64_t behind_close = signs.close << 1;
        const std::uint64_t end = std::uint64_t{1} << text.size();
        if ((behind_close | first) != (signs.open | end)) return false;
        if ((signs.close & (first - 1)) != 0) return false;
        // No quality, no opinion, no class of a dictionary, no name in "h", no marker.
        if (((signs.open << 1) & (signs.kind | signs.close)) != 0) return false;
        // "ba" and "bait" may be prefixes in front of the lemma.
        return !starts_with(text, "ba<") && !starts_with(text, "bait<");
    }
#endif
};

#ifdef __SSE2__
inline CommonParts::CommonParts(std::string_view text) {
    const std::size_t size = text.size();
    if (size == 0 || size > MOST) return;
    std::memcpy(text_, text.data(), size);
    // Bytes that were copied this moment are slow to load again, so the signs are looked
    // for in the text itself, unless a look would go beyond it.
    if (size < STEP) std::memset(text_ + size, ' ', STEP - size);
    const Signs signs(size < STEP ? text_ : text.data(), std::max(size, STEP));
    if (!is_common({text_, size}, signs)) return;
    found_ = true;
    lemma_size_ = static_cast<std::size_t>(__builtin_ctzll(signs.open));
    std::size_t open = lemma_size_, written = 0;
    for (std::uint64_t closes = signs.close; closes != 0; closes &= closes - 1) {
        const auto close = static_cast<std::size_t>(__builtin_ctzll(closes));
        const std::size_t length = close - open;  // of the name and the sign in front
        for (std::size_t at = 0; at < length; at += STEP) {
            const __m128i bytes = load(text_ + open + at);
            store(tags_ + written + at, bytes);
            store(twol_ + written + at, lowered_bytes(bytes));
        }
        tags_[written] = ' ';
        twol_[written] = '+';
        const auto initial = static_cast<std::uint8_t>(text_[open + 1]);
        twol_[written + 1] = static_cast<char>(raised(initial));
        written += length;
        open = close + 1;
    }
    tags_size_ = written;
}
#else
inline CommonParts::CommonParts(std::string_view) { text_[0] = '\0'; }
#endif

}  // namespace lemara
