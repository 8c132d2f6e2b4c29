// The two searches over a packed table. They give what the searches over the graph give,
// in the same order; see Taula.h for the rules.
//
// Only in a table with cycles is it looked at where a path has been; a table that says of
// itself wrongly that it has none is searched until the budget is spent.
//
// Twin: tests/tables/plain_search.h. Tests: tests/tables/packed_test.cpp.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "Taula.h"
#include "analysis/tag_scan.h"
#include "analysis/text_pieces.h"
#include "tables/UpperArcs.h"
#include "tables/packed.h"

namespace lemara {

/// The work that one search may still do.
class Budget {
public:
    void spend(std::size_t units) { left_ -= static_cast<std::int64_t>(units); }
    void use_up() { left_ = -1; }
    bool spent() const { return left_ < 0; }

private:
    std::int64_t left_ = SEARCH_BUDGET;
};

constexpr std::size_t RESULT_COST = 64;

/// Text that a search extends and cuts back. Short ones stay on the stack. There is
/// always a NUL behind it.
class PathText {
public:
    PathText() { small_[0] = '\0'; }
    PathText(const PathText&) = delete;
    PathText& operator=(const PathText&) = delete;

    std::size_t size() const { return size_; }
    char* data() { return data_; }
    std::string_view view() const { return {data_, size_}; }

    void append(std::string_view text) {
        if (size_ + text.size() >= capacity_) grow(size_ + text.size());
        std::memcpy(data_ + size_, text.data(), text.size());
        size_ += text.size();
    }

    /// The same for a symbol of the pool, behind which SHORT bytes may be read.
    void append_symbol(const char* text, std::size_t size) {
        if (size <= SHORT && size_ + SHORT < capacity_) {
            std::memcpy(data_ + size_, text, SHORT);  // of fixed size: two moves
            size_ += size;
        } else {
            append({text, size});
        }
    }
    void cut(std::size_t size) { size_ = size; }
    const char* c_str() {
        data_[size_] = '\0';
        return data_;
    }

private:
    static constexpr std::size_t SHORT = 16;
    static_assert(SHORT <= PackedView::PADDING, "symbols are followed by enough bytes");

    void grow(std::size_t needed) {
        std::vector<char> larger(2 * needed + 1);
        std::memcpy(larger.data(), data_, size_);
        large_.swap(larger);
        data_ = large_.data();
        capacity_ = large_.size() - 1;
    }

    char small_[512];
    std::vector<char> large_;
    char* data_ = small_;
    std::size_t size_ = 0;
    std::size_t capacity_ = sizeof small_ - 1;
};

/// A stack that keeps its first elements in place.
template <class T, std::size_t N>
class InlineStack {
public:
    bool empty() const { return size_ == 0; }
    std::size_t size() const { return size_; }
    const T& operator[](std::size_t i) const { return i < N ? first_[i] : rest_[i - N]; }

    /// Cuts the stack to `size` elements, which it has, and puts one on top.
    void put(std::size_t size, const T& value) {
        if (size < N) {
            first_[size] = value;
        } else {
            rest_.resize(size - N);
            rest_.push_back(value);
        }
        size_ = size + 1;
    }
    void push(const T& value) {
        if (size_ < N) {
            first_[size_] = value;
        } else {
            rest_.push_back(value);
        }
        ++size_;
    }
    T pop() {
        --size_;
        if (size_ < N) return first_[size_];
        const T value = rest_.back();
        rest_.pop_back();
        return value;
    }

private:
    T first_[N];
    std::vector<T> rest_;
    std::size_t size_ = 0;
};

/// Walks a token through a packed table.
class PackedAnalysis {
public:
    /// `token` as typed, `rest` the lowered text to consume; neither holds a NUL, and a
    /// NUL stands behind `token`.
    PackedAnalysis(const PackedView& table, std::string_view token, std::string_view rest)
        : table_(table),
          token_(token),
          rest_(rest),
          small_(!token.empty() && token[0] >= 'a' && token[0] <= 'z') {}

    /// The text in front of every result.
    void start_with(std::string_view output) {
        output_.append(output);
        prefix_ = output_.size();
    }

    /// Calls `visit` with each analysis string that the filters keep, in order, until it
    /// answers false. The text of a call is gone after it.
    template <class Visit>
    void run(std::int32_t start, Visit visit) {
        if (start < 0) {
            if (rest_.empty()) end_of_word(0, visit);
            return;
        }
        const StateRef first = table_.find(start);
        if (first < 0) return;
        (table_.cycles & EMPTY_CYCLES) != 0 ? search<true>(first, visit)
                                            : search<false>(first, visit);
    }

    /// How many bytes of the token any path of the run has read. A token that begins with
    /// the same bytes and is longer than this has no analysis.
    std::size_t reach() const { return reach_; }

private:
    struct Frame {
        std::uint64_t bits;         // arcs still to be tried, of the 64 from `arcs` on
        const std::uint8_t* first;  // moves on with `arcs`
        const PackedArc* arcs;
        std::uint32_t count;  // of the state's arcs from `arcs` on
        std::uint32_t position;
        std::uint32_t depth;  // arcs on the path to the state
        StateRef state;
        bool written;  // the path has an upper text

        bool has_more() const { return count > 64; }
    };

    void look(Frame& frame) const {
        const std::uint8_t byte = frame.position < rest_.size()
                                      ? static_cast<std::uint8_t>(rest_[frame.position])
                                      : std::uint8_t{0};
        frame.bits =
            matching_arcs(frame.first, frame.count < 64 ? frame.count : 64, byte);
    }

    Frame open(StateRef ref, std::uint32_t position, std::uint32_t depth,
               bool written) const {
        const PackedState state = table_.state(ref);
        Frame frame;
        frame.first = state.first;
        frame.arcs = state.arcs;
        frame.count = state.count;
        frame.position = position;
        frame.depth = depth;
        frame.state = ref;
        frame.written = written;
        look(frame);
        return frame;
    }

    /// The mask bit of what stands at `position`.
    std::uint16_t wanted_at(std::size_t position) const {
        return position < rest_.size()
                   ? table_.bit_of(static_cast<std::uint8_t>(rest_[position]))
                   : PackedView::END_BIT;
    }

    /// True if the path has been in `state` since it last read a byte.
    bool revisits(const Frame& current, StateRef state, std::uint32_t position) {
        if (current.position != position) return false;
        if (current.state == state) return true;
        for (std::size_t i = frames_.size(); i > 0; --i) {
            const Frame& frame = frames_[i - 1];
            if (frame.position != position) return false;
            budget_.spend(1);
            if (frame.state == state) return true;
        }
        return false;
    }

    /// The text of the path's first `depth` arcs is a result, if the filters keep it.
    template <class Visit>
    bool end_of_word(std::size_t depth, Visit& visit) {
        output_.cut(prefix_);
        for (std::size_t i = 0; i < depth; ++i) {
            const PackedLabel& label = table_.labels[labels_[i]];
            output_.append_symbol(table_.pool + label.upper_at, label.upper_size);
            if (output_.size() > PATH_LIMIT) return true;
        }
        budget_.spend(RESULT_COST + output_.size() + depth);
        if (budget_.spent()) return false;
        const std::string_view text(output_.c_str(), output_.size());
        return !is_kept_by_filters(token_, text) || visit(text);
    }

    template <bool CAREFUL, class Visit>
    void search(StateRef start, Visit& visit) {
        Frame current = open(start, 0, 0, prefix_ != 0);
        while (!budget_.spent()) {
            while (current.bits == 0) {
                if (current.has_more()) {
                    current.first += 64;
                    current.arcs += 64;
                    current.count -= 64;
                    look(current);
                } else {
                    if (frames_.empty()) return;
                    current = frames_.pop();
                }
            }
            const auto index = static_cast<std::size_t>(__builtin_ctzll(current.bits));
            current.bits &= current.bits - 1;
            const PackedArc& arc = current.arcs[index];
            std::uint32_t position = current.position;
            if (arc.is_long()) {
                const std::string_view lower = table_.lower(table_.label_of(arc));
                if (rest_.compare(position, lower.size(), lower) != 0) continue;
                position += static_cast<std::uint32_t>(lower.size());
            } else if (current.first[index] != 0) {
                ++position;
            }
            if (position > reach_) reach_ = position;
            if ((arc.follows & wanted_at(position)) == 0) continue;
            budget_.spend(1);
            const std::uint32_t label = table_.label_of(arc);
            if (arc.target < 0) {
                if (position < rest_.size()) continue;
                labels_.put(current.depth, label);
                if (!end_of_word(current.depth + std::size_t{1}, visit)) return;
                continue;
            }
            bool written = current.written;
            if (!written) {
                const std::string_view upper = table_.upper(label);
                written = !upper.empty();
                // A capitalised entry is no analysis of a token in small letters.
                if (small_ && written && upper[0] >= 'A' && upper[0] <= 'Z') continue;
            }
            if (CAREFUL && revisits(current, arc.target, position)) continue;
            labels_.put(current.depth, label);
            const std::uint32_t depth = current.depth + 1;
            const StateRef target = arc.target;
            if (depth > PATH_LIMIT) continue;  // a cycle that the table denies
            if (CAREFUL || current.bits != 0 || current.has_more()) frames_.push(current);
            current = open(target, position, depth, written);
        }
    }

    const PackedView& table_;
    const std::string_view token_;
    const std::string_view rest_;
    const bool small_;
    PathText output_;
    std::size_t prefix_ = 0;                  // bytes of the output that stood before
    InlineStack<std::uint32_t, 128> labels_;  // of the arcs on the path
    InlineStack<Frame, 32> frames_;
    std::size_t reach_ = 0;
    Budget budget_;
};

/// Searches a packed table from the upper side.
class PackedGeneration {
public:
    PackedGeneration(UpperArcs& arcs, std::string_view target, bool stop_at_tag)
        : table_(arcs.table()),
          arcs_(arcs),
          target_(target),
          target_elided_(contains(target, "<ELI_IZE")),
          target_postposition_(contains(target, "<PSP")),
          stop_at_tag_(stop_at_tag) {}

    /// The texts in front of every result.
    void start_with(std::string_view upper, std::string_view lower) {
        upper_.append(upper);
        lower_.append(lower);
        loose_ = !upper.empty();
    }

    /// Calls `emit` with the upper string and the form of each result, in order, until it
    /// answers false. `emit` gets them NUL-terminated, and may write capitals into the
    /// form: they stay there as long as the bytes they are written to.
    template <class Emit>
    void run(std::int32_t start, Emit emit) {
        const std::size_t n = std::min(upper_.size(), target_.size());
        const bool agrees = upper_.view().substr(0, n) == target_.substr(0, n);
        if (start < 0) {
            if (agrees) result(emit);
            return;
        }
        const StateRef ref = table_.find(start);
        if (ref < 0 || !agrees) return;
        Frame first;
        first.loose = loose_;
        first.tagged = contains(upper_.view(), "<");
        if (!enter(ref, 0, loose_, emit, first)) return;
        (table_.cycles & ANY_CYCLES) != 0 ? search<true>(first, emit)
                                          : search<false>(first, emit);
    }

    /// The lower text; its first bytes are those it was started with, but for capitals.
    const char* lower_data() const { return lower_.view().data(); }

private:
    // Bytes of the longest text that shuts a path out, "<ELI_IZE", less one.
    static constexpr std::size_t TAIL = 7;

    static constexpr std::ptrdiff_t MOST_FETCHED = 4;

    struct Frame {
        const PackedArc* arc;  // the next one
        const PackedArc* end;
        std::uint32_t upper, lower;
        StateRef state;
        bool tagged;  // the upper text holds a "<"
        bool loose;   // it may hold a tag whose rest is still to come
    };

    /// True if the part of the upper text from `from` on completes a text that shuts the
    /// path out.
    bool is_shut_out(std::size_t from) const {
        const std::string_view tail = upper_.view().substr(from > TAIL ? from - TAIL : 0);
        if (!contains(tail, "<")) return false;
        return (!target_elided_ && contains(tail, "<ELI_IZE")) ||
               (!target_postposition_ && contains(tail, "<PSP")) ||
               contains(tail, "ba<AUR>") || contains(tail, "<ADL>") ||
               contains(tail, "<Rare>");
    }

    /// Judges the path on entry to a state; the upper text agrees with the target, and is
    /// new from `from` on. What `frame` knows of the text is filled in. `suspect` says
    /// that what is new may shut the path out: where all tags are whole, only a symbol
    /// that holds such a tag does. True if its arcs are to be searched.
    template <class Emit>
    bool enter(StateRef ref, std::size_t from, bool suspect, Emit& emit, Frame& frame) {
        if (target_elided_ && upper_.size() == target_.size()) {
            result(emit);
            return false;
        }
        if (stop_at_tag_ && frame.tagged) {
            if (upper_.size() >= target_.size()) result(emit);
            return false;
        }
        if (suspect && is_shut_out(from)) return false;
        const PackedState state = table_.state(ref);
        frame.arc = state.arcs;
        frame.end = state.arcs + state.count;
        if (upper_.size() < target_.size()) {
            const auto byte = static_cast<std::uint8_t>(target_[upper_.size()]);
            std::tie(frame.arc, frame.end) = arcs_.find(ref, state, byte);
        }
        frame.upper = static_cast<std::uint32_t>(upper_.size());
        frame.lower = static_cast<std::uint32_t>(lower_.size());
        frame.state = ref;
        return true;
    }

    std::size_t progress(std::size_t upper) const {
        return std::min(upper, target_.size());
    }

    /// True if the path has been in the state of `next` since it last made progress.
    bool revisits(const Frame& current, const Frame& next) {
        const std::size_t here = progress(next.upper);
        if (progress(current.upper) != here) return false;
        if (current.state == next.state) return true;
        for (std::size_t i = frames_.size(); i > 0; --i) {
            if (progress(frames_[i - 1].upper) != here) return false;
            budget_.spend(1);
            if (frames_[i - 1].state == next.state) return true;
        }
        return false;
    }

    template <class Emit>
    void result(Emit& emit) {
        budget_.spend(RESULT_COST + upper_.size() + lower_.size());
        upper_.c_str();  // ends it
        if (!emit(upper_.view(), lower_)) budget_.use_up();
    }

    /// Passes over arcs whose symbol the target doesn't go on with, as far as both reach.
    void skip_foreign(Frame& frame) const {
        const std::string_view wanted = target_.substr(frame.upper);
        const auto first = static_cast<std::uint8_t>(wanted[0]);
        for (; frame.arc != frame.end; ++frame.arc) {
            const PackedLabel& label = table_.labels[table_.label_of(*frame.arc)];
            if (label.written_size == 0) return;
            if (label.written_first != first) continue;
            const std::size_t n =
                std::min<std::size_t>(label.written_size, wanted.size());
            if (n == 1) return;
            if (std::memcmp(table_.pool + label.upper_at, wanted.data(), n) == 0) return;
        }
    }

    /// Apart from its callers: their locals would take the registers that it needs.
    template <bool CAREFUL, class Emit>
    [[gnu::noinline]] void search(Frame current, Emit& emit) {
        while (!budget_.spent()) {
            if (current.upper < target_.size()) skip_foreign(current);
            if (current.arc == current.end) {
                if (frames_.empty()) return;
                current = frames_.pop();
                continue;
            }
            const PackedArc& arc = *current.arc++;
            const PackedLabel& label = table_.labels[table_.label_of(arc)];
            const StateRef target = arc.target;
            upper_.cut(current.upper);
            // Kept on purpose: cut by length alone. A capital that a result carried into
            // the part that stays is there for the next result too.
            lower_.cut(current.lower);
            upper_.append_symbol(table_.pool + label.upper_at, label.written_size);
            lower_.append_symbol(table_.pool + label.lower_at, label.lower_size);
            budget_.spend(1 + (upper_.size() + label.lower_size) / 64);
            if (std::max(upper_.size(), lower_.size()) > PATH_LIMIT) continue;
            if (target < 0) {
                result(emit);
                continue;
            }
            Frame next;
            const bool opens = (label.flags & PackedLabel::HAS_OPEN) != 0;
            next.tagged = current.tagged || (opens && label.written_size != 0);
            next.loose = current.loose || (label.flags & PackedLabel::LOOSE) != 0;
            const bool suspect = next.loose || (label.flags & PackedLabel::SHUTS) != 0;
            if (!enter(target, current.upper, suspect, emit, next)) continue;
            if (CAREFUL && revisits(current, next)) continue;
            if (frames_.size() >= PATH_LIMIT) continue;  // a cycle that the table denies
            if (CAREFUL || current.arc != current.end) frames_.push(current);
            current = next;
            // The states behind its first arcs lie anywhere: memory may bring them now.
            const std::ptrdiff_t near = std::min(MOST_FETCHED, current.end - current.arc);
            for (std::ptrdiff_t i = 0; i < near; ++i) {
                const std::int32_t place = std::max(current.arc[i].target, 0);
                __builtin_prefetch(table_.states + 4 * static_cast<std::size_t>(place));
            }
        }
    }

    const PackedView& table_;
    UpperArcs& arcs_;
    const std::string_view target_;
    const bool target_elided_;
    const bool target_postposition_;
    const bool stop_at_tag_;
    PathText upper_, lower_;
    bool loose_ = false;  // the text in front of every result may end in a tag
    InlineStack<Frame, 32> frames_;
    Budget budget_;
};

}  // namespace lemara
