#include "tables/packed.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <numeric>
#include <string>
#include <unordered_map>
#include <utility>

#include "Egoera.h"
#include "analysis/text_pieces.h"
#include "tables/text_records.h"

namespace lemara {
namespace {

/// Arcs, labels and symbols of a table while it is being packed.
/// True for an arc to a state that is not there.
bool leads_nowhere(const std::vector<Egoera*>& states, const Zubia& arc) {
    if (arc.hurrengo_egoera < 0) return false;
    const auto target = static_cast<std::size_t>(arc.hurrengo_egoera);
    return target >= states.size() || states[target] == nullptr;
}

class Packer {
public:
    explicit Packer(const std::vector<Egoera*>& states) : state_count_(states.size()) {
        begin_.reserve(state_count_ + 1);
        for (const Egoera* state : states) {
            begin_.push_back(static_cast<std::uint32_t>(target_.size()));
            if (state == nullptr) continue;
            for (const Zubia* arc : state->zubiak) {
                if (arc == nullptr || leads_nowhere(states, *arc)) continue;
                add(arc->hurrengo_egoera,
                    label_for(arc->goiko_ikurra, arc->beheko_ikurra));
            }
        }
        begin_.push_back(static_cast<std::uint32_t>(target_.size()));
        finish();
    }

    /// Labels are numbered as they come in the order of the states, as those of a graph.
    explicit Packer(ArcsByState&& arcs)
        : state_count_(arcs.state_count()),
          begin_(std::move(arcs.begin)),
          label_(std::move(arcs.pairs)),
          target_(std::move(arcs.targets)) {
        std::vector<std::uint32_t> label_of_pair(arcs.symbols.size(), NONE);
        first_.resize(target_.size());
        std::uint32_t kept = 0, arc = 0;
        for (std::size_t state = 0; state < state_count_; ++state) {
            begin_[state] = kept;
            for (const std::uint32_t end = begin_[state + 1]; arc < end; ++arc) {
                const std::int32_t target = target_[arc];
                if (target >= 0 && !exists(target)) continue;
                std::uint32_t& label = label_of_pair[label_[arc]];
                if (label == NONE) {
                    const SymbolPair& symbols = arcs.symbols[label_[arc]];
                    label = label_for(symbols.upper, symbols.lower);
                }
                target_[kept] = target;
                label_[kept] = label;
                first_[kept++] = first_of_label_[label];
            }
        }
        begin_[state_count_] = kept;
        target_.resize(kept);
        label_.resize(kept);
        first_.resize(kept);
        finish();
    }

    PackedLayout layout() const {
        PackedLayout layout;
        layout.state_count = static_cast<std::uint32_t>(state_count_);
        layout.arc_count = static_cast<std::uint32_t>(target_.size());
        layout.label_count = static_cast<std::uint32_t>(labels_.size());
        layout.pool_size = static_cast<std::uint32_t>(pool_.size());
        layout.states_size = static_cast<std::uint32_t>(size_);
        layout.wide_labels = labels_.size() > PackedArc::LONG;
        layout.cycles = cycles_;
        return layout;
    }

    void write(char* block) const {
        const PackedLayout at = layout();
        put(block + PackedLayout::CLASSES_AT, byte_class_.data(), byte_class_.size());
        put(block + at.labels_at(), labels_.data(), labels_.size());
        put(block + at.pool_at(), pool_.data(), pool_.size());
        std::vector<std::uint32_t> wide(static_cast<std::size_t>(at.wide_label_count()));
        char* states = block + PackedLayout::STATES_AT;
        for (std::size_t state = 0; state < state_count_; ++state) {
            write_state(states, state, wide);
        }
        put(block + at.wide_labels_at(), wide.data(), wide.size());
    }

private:
    template <class T>
    static void put(char* to, const T* from, std::size_t count) {
        if (count != 0) std::memcpy(to, from, count * sizeof(T));
    }

    static std::size_t head_of(std::size_t count) {
        if (count < PackedView::MANY_ARCS) return (count + 4) / 4;
        return 2 + (count + 3) / 4;
    }

    /// Where each block stands, in units of 4 bytes.
    void place_states() {
        place_.reserve(state_count_);
        for (std::size_t state = 0; state < state_count_; ++state) {
            place_.push_back(static_cast<StateRef>(size_));
            const std::size_t count = begin_[state + 1] - begin_[state];
            size_ += head_of(count) + 2 * count;
        }
    }

    void write_state(char* states, std::size_t state,
                     std::vector<std::uint32_t>& wide) const {
        const std::uint32_t count = begin_[state + 1] - begin_[state];
        char* block = states + 4 * static_cast<std::size_t>(place_[state]);
        char* first = block + 1;
        *block = static_cast<char>(std::min<std::uint32_t>(count, PackedView::MANY_ARCS));
        if (count >= PackedView::MANY_ARCS) {
            std::memcpy(block + 4, &count, sizeof count);
            first = block + 8;
        }
        put(first, first_.data() + begin_[state], count);
        char* arcs = block + 4 * head_of(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint32_t arc = begin_[state] + i;
            PackedArc packed{};
            const std::int32_t target = target_[arc];
            packed.target =
                target < 0 ? target : place_[static_cast<std::size_t>(target)];
            packed.follows = target < 0 ? PackedView::END_BIT
                                        : mask_[static_cast<std::size_t>(target)];
            if (labels_[label_[arc]].is_long(first_[arc])) packed.label = PackedArc::LONG;
            if (wide.empty()) {
                packed.label |= static_cast<std::uint16_t>(label_[arc]);
            } else {
                wide[static_cast<std::size_t>(arcs - states) / 8 + i] = label_[arc];
            }
            std::memcpy(arcs + i * sizeof packed, &packed, sizeof packed);
        }
    }

    bool exists(std::int32_t state) const {
        return state >= 0 && static_cast<std::size_t>(state) < state_count_;
    }

    void add(std::int32_t target, std::uint32_t label) {
        target_.push_back(target);
        label_.push_back(label);
        first_.push_back(first_of_label_[label]);
    }

    void finish() {
        fill_labels();
        choose_classes();
        find_masks();
        place_states();
        if (!has_cycle()) return;
        cycles_ |= ANY_CYCLES;
        if (has_empty_cycle()) cycles_ |= EMPTY_CYCLES;
    }

    /// True if the arc's lower symbol is empty; one that is a NUL isn't.
    bool is_empty(std::uint32_t arc) const {
        return first_[arc] == 0 && labels_[label_[arc]].lower_size == 0;
    }

    std::uint32_t label_for(std::string_view upper, std::string_view lower) {
        // The size tells where the upper symbol ends, whatever bytes the two hold.
        const auto size = static_cast<std::uint32_t>(upper.size());
        key_.assign(reinterpret_cast<const char*>(&size), sizeof size);
        key_ += upper;
        key_ += lower;
        const auto found =
            label_ids_.emplace(key_, static_cast<std::uint32_t>(labels_.size()));
        if (found.second) {
            PackedLabel label{};
            label.describe(upper, lower);
            label.upper_at = symbol_at(upper);
            label.lower_at = symbol_at(lower);
            labels_.push_back(label);
            first_of_label_.push_back(
                lower.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(lower[0]));
        }
        return found.first->second;
    }

    std::uint32_t symbol_at(std::string_view symbol) {
        const auto found =
            symbol_places_.emplace(symbol, static_cast<std::uint32_t>(pool_.size()));
        if (found.second) pool_ += symbol;
        return found.first->second;
    }

    /// Any number that an arc may hold is one of a label once it's cut to its bits.
    void fill_labels() {
        std::size_t count = 1;
        while (count < labels_.size()) count *= 2;
        labels_.resize(count, PackedLabel{});
    }

    /// The commonest bytes get a mask bit of their own, the rest share.
    void choose_classes() {
        std::array<std::size_t, 256> counts{};
        for (const std::uint8_t byte : first_) ++counts[byte];
        counts[0] = 0;
        std::array<int, 256> order{};
        std::iota(order.begin(), order.end(), 0);
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
            return counts[static_cast<std::size_t>(a)] >
                   counts[static_cast<std::size_t>(b)];
        });
        for (std::size_t rank = 0; rank < order.size(); ++rank) {
            const auto own = static_cast<std::uint8_t>(rank < 10 ? rank : 10 + rank % 5);
            byte_class_[static_cast<std::size_t>(order[rank])] = own;
        }
    }

    /// What can follow in a state: the first bytes of its arcs, the end where a word may
    /// end, and all that can follow behind its empty arcs. Runs to a fixed point, so that
    /// cycles of empty arcs do no harm; states are visited from the back, since targets
    /// tend to have the higher numbers.
    void find_masks() {
        mask_.assign(state_count_, 0);
        empty_arcs_.reserve(
            static_cast<std::size_t>(std::count(first_.begin(), first_.end(), 0)));
        into_.assign(state_count_, NONE);
        for (std::uint32_t state = 0; state < state_count_; ++state) {
            std::uint16_t mask = 0;
            for (std::uint32_t arc = begin_[state]; arc < begin_[state + 1]; ++arc) {
                if (!is_empty(arc)) {
                    mask |= static_cast<std::uint16_t>(1u << byte_class_[first_[arc]]);
                } else if (target_[arc] < 0) {
                    mask |= PackedView::END_BIT;
                } else {
                    std::uint32_t& first = into_[static_cast<std::size_t>(target_[arc])];
                    empty_arcs_.push_back({state, first});
                    first = static_cast<std::uint32_t>(empty_arcs_.size() - 1);
                }
            }
            mask_[state] = mask;
        }
        std::vector<std::uint32_t>& open = open_states_;
        open.clear();
        for (std::uint32_t state = 0; state < state_count_; ++state) {
            if (mask_[state] != 0 && into_[state] != NONE) open.push_back(state);
        }
        while (!open.empty()) {
            const std::uint32_t state = open.back();
            open.pop_back();
            for (std::uint32_t i = into_[state]; i != NONE; i = empty_arcs_[i].next) {
                const std::uint32_t source = empty_arcs_[i].source;
                const auto mask =
                    static_cast<std::uint16_t>(mask_[source] | mask_[state]);
                if (mask == mask_[source]) continue;
                mask_[source] = mask;
                if (into_[source] != NONE) open.push_back(source);
            }
        }
    }

    /// True if arcs form a cycle.
    bool has_cycle() {
        next_ = begin_;
        return finds_cycle([&](std::uint32_t state) {
            std::uint32_t& arc = next_[state];
            for (const std::uint32_t end = begin_[state + 1]; arc < end;) {
                const std::int32_t target = target_[arc++];
                if (target >= 0) return static_cast<std::uint32_t>(target);
            }
            return NONE;
        });
    }

    /// The same for those with an empty lower symbol, which are followed to their source.
    bool has_empty_cycle() {
        next_ = into_;
        return finds_cycle([&](std::uint32_t state) {
            std::uint32_t& arc = next_[state];
            if (arc == NONE) return NONE;
            const EmptyArc& empty = empty_arcs_[arc];
            arc = empty.next;
            return empty.source;
        });
    }

    /// Goes from each state as deep as steps lead, and looks for one that leads back to a
    /// state of the path. `step` gives the next neighbour of a state at each call, then
    /// NONE.
    template <class Step>
    bool finds_cycle(Step step) {
        enum : std::uint8_t { UNSEEN, ON_PATH, DONE };
        std::vector<std::uint8_t> marks(state_count_, UNSEEN);
        std::vector<std::uint32_t>& path = open_states_;
        path.clear();
        for (std::uint32_t start = 0; start < state_count_; ++start) {
            if (marks[start] != UNSEEN) continue;
            marks[start] = ON_PATH;
            path.push_back(start);
            while (!path.empty()) {
                const std::uint32_t next = step(path.back());
                if (next == NONE) {
                    marks[path.back()] = DONE;
                    path.pop_back();
                } else if (marks[next] == UNSEEN) {
                    marks[next] = ON_PATH;
                    path.push_back(next);
                } else if (marks[next] == ON_PATH) {
                    return true;
                }
            }
        }
        return false;
    }

    static constexpr std::uint32_t NONE = std::numeric_limits<std::uint32_t>::max();

    /// An arc with an empty lower symbol, and the next one with the same target.
    struct EmptyArc {
        std::uint32_t source, next;
    };

    std::size_t state_count_;
    std::uint32_t cycles_ = 0;
    std::vector<std::uint32_t> begin_, label_;
    std::vector<std::uint16_t> mask_;  // by state: what can follow in it
    std::vector<std::int32_t> target_;
    std::vector<StateRef> place_;  // by state
    std::vector<EmptyArc> empty_arcs_;
    std::vector<std::uint32_t> into_;                // by state: the first that enters it
    std::vector<std::uint32_t> next_, open_states_;  // of one step at a time
    std::size_t size_ = 0;                           // of all blocks, in units of 4 bytes
    std::vector<std::uint8_t> first_, first_of_label_;
    std::vector<PackedLabel> labels_;
    std::string pool_, key_;
    std::array<std::uint8_t, 256> byte_class_{};
    std::unordered_map<std::string, std::uint32_t> label_ids_, symbol_places_;
};

/// True if a text holds a tag in part.
bool is_loose(std::string_view text) {
    bool open = false;
    for (const char c : text) {
        if (c == (open ? '<' : '>')) return true;
        if (c == '<' || c == '>') open = !open;
    }
    return open;
}

}  // namespace

void PackedLabel::describe(std::string_view upper, std::string_view lower) {
    upper_size = static_cast<std::uint32_t>(upper.size());
    lower_size = static_cast<std::uint32_t>(lower.size());
    // The marker, quality tags and opinion tags never reach a generated analysis. Kept on
    // purpose: the second byte alone tells a quality or opinion tag, so a symbol of two
    // letters such as "a1" is left out as well.
    const bool left_out =
        upper == "<>" || (upper.size() > 1 && (upper[1] == '0' || upper[1] == '1'));
    written_size = left_out ? 0 : upper_size;
    written_first =
        written_size == 0 ? std::uint8_t{0} : static_cast<std::uint8_t>(upper[0]);
    flags = upper.find('<') == std::string_view::npos ? std::uint8_t{0} : HAS_OPEN;
    for (const char* tag : {"<ELI_IZE", "<PSP", "<AUR>", "<ADL>", "<Rare>"}) {
        if (contains(upper, tag)) flags |= SHUTS;
    }
    if (is_loose(upper)) flags |= LOOSE;
    unused = 0;
}

PackedView PackedLayout::view(const char* block) const {
    PackedView view;
    view.state_count = state_count;
    view.arc_count = arc_count;
    view.label_count = label_count;
    view.label_mask = label_count - 1;
    view.pool_size = pool_size;
    view.states_size = states_size;
    view.cycles = cycles;
    const auto at = [&](std::uint64_t offset) {
        return static_cast<const void*>(block + offset);
    };
    view.byte_class = static_cast<const std::uint8_t*>(at(CLASSES_AT));
    view.states = static_cast<const std::uint8_t*>(at(STATES_AT));
    view.labels = static_cast<const PackedLabel*>(at(labels_at()));
    if (wide_labels)
        view.wide_labels = static_cast<const std::uint32_t*>(at(wide_labels_at()));
    view.pool = block + pool_at();
    return view;
}

PackedTable::PackedTable(const std::vector<Egoera*>& states) { take(Packer(states)); }

PackedTable::PackedTable(ArcsByState&& arcs) { take(Packer(std::move(arcs))); }

template <class Packer>
void PackedTable::take(const Packer& packer) {
    const PackedLayout layout = packer.layout();
    bytes_ = static_cast<std::size_t>(layout.total());
    block_.assign(bytes_ / 8 + 1, 0);
    char* block = reinterpret_cast<char*>(block_.data());
    packer.write(block);
    view_ = layout.view(block);
}

bool is_packed_from(const PackedView& view, const std::vector<Egoera*>& states) {
    if (view.state_count != states.size()) return false;
    std::vector<StateRef> places;
    places.reserve(states.size());
    StateRef place = 0;
    for (std::size_t i = 0; i < states.size(); ++i, place = view.behind(place))
        places.push_back(place);
    for (std::size_t i = 0; i < states.size(); ++i) {
        const PackedState packed = view.state(places[i]);
        std::uint32_t count = 0;
        if (states[i] != nullptr) {
            for (const Zubia* arc : states[i]->zubiak) {
                if (arc == nullptr || leads_nowhere(states, *arc)) continue;
                if (count == packed.count) return false;
                const PackedArc& twin = packed.arcs[count++];
                const std::uint32_t label = view.label_of(twin);
                const StateRef target =
                    arc->hurrengo_egoera < 0
                        ? arc->hurrengo_egoera
                        : places[static_cast<std::size_t>(arc->hurrengo_egoera)];
                if (twin.target != target || view.upper(label) != arc->goiko_ikurra ||
                    view.lower(label) != arc->beheko_ikurra) {
                    return false;
                }
            }
        }
        if (count != packed.count) return false;
    }
    return true;
}

}  // namespace lemara
