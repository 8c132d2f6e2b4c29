#include "tables/lazy_transducer.h"

#include <algorithm>

#include "analysis/text_pieces.h"

namespace lemara {
namespace {

constexpr int DEEPEST_EMPTY = 64;           // arcs with an empty lower symbol in a row
constexpr std::size_t MOST_ARCS = 1 << 14;  // looked at for one step

using Traits = LazyTransducer;

/// True for a text of whole tags and nothing else.
bool is_whole_tags(std::string_view text) {
    while (!text.empty()) {
        const std::size_t close = text.find('>');
        if (text[0] != '<' || close == std::string_view::npos) return false;
        if (text.substr(1, close - 1).find('<') != std::string_view::npos) return false;
        text.remove_prefix(close + 1);
    }
    return true;
}

std::uint8_t traits_of(std::string_view upper) {
    if (upper.empty()) return Traits::NOTHING_WRITTEN;
    std::uint8_t traits =
        upper[0] >= 'A' && upper[0] <= 'Z' ? Traits::CAPITAL : std::uint8_t{0};
    bool has_tags = false;
    for (const char c : upper) {
        if (c == '[' || c == ']' || c == ' ' || c == '\0') return traits | Traits::ODD;
        if (c == '<' || c == '>') has_tags = true;
    }
    if (!has_tags) return traits;
    if (!is_whole_tags(upper) || contains(upper, "MAT")) return traits | Traits::ODD;
    const TagScan tags(upper);
    if (tags.symbol || tags.postposition) return traits | Traits::ODD;
    if (tags.person_or_place || tags.other_name) traits |= Traits::NAME;
    return traits;
}

/// The path behind a label. Without a branch: nothing tells what the next label is like.
constexpr std::uint8_t with_label(std::uint32_t path, std::uint32_t label) {
    constexpr std::uint32_t FIRST = Traits::NOTHING_WRITTEN | Traits::CAPITAL;
    static_assert(Traits::NOTHING_WRITTEN == 1, "its bit makes a mask");
    const std::uint32_t if_first = 0u - (path & Traits::NOTHING_WRITTEN);
    return static_cast<std::uint8_t>(((path | label) & ~FIRST) |
                                     (path & Traits::CAPITAL) |
                                     (label & FIRST & if_first));
}

// A place is a state, an arc whose lower symbol has been read in part, or the end of a
// path that read a byte as it ended. Bit 63 tells an arc, bits 32 to 62 where it or the
// state stands, 8 to 31 the bytes read, 0 to 7 the path. An end is no state, and has a
// byte read.
constexpr std::uint64_t IN_ARC = std::uint64_t{1} << 63;
constexpr std::uint64_t AT_END = std::uint64_t{1} << 8;
constexpr std::uint32_t MOST_READ = 0xFFFFFF;

std::uint64_t in_state(StateRef state, std::uint8_t path) {
    return std::uint64_t{static_cast<std::uint32_t>(state)} << 32 | path;
}
std::uint64_t in_arc(std::uint32_t arc, std::uint32_t read, std::uint8_t path) {
    return IN_ARC | std::uint64_t{arc} << 32 | std::uint64_t{read} << 8 | path;
}
bool is_arc(std::uint64_t place) { return (place & IN_ARC) != 0; }
bool is_end(std::uint64_t place) { return !is_arc(place) && (place & AT_END) != 0; }
std::uint32_t where(std::uint64_t place) {
    return static_cast<std::uint32_t>((place & ~IN_ARC) >> 32);
}
std::uint32_t read_of(std::uint64_t place) {
    return static_cast<std::uint32_t>(place >> 8) & MOST_READ;
}
std::uint8_t path_of(std::uint64_t place) { return static_cast<std::uint8_t>(place); }

// An arc by its distance from the first block, in units of 4 bytes.
std::uint32_t place_of(const PackedView& table, const PackedArc& arc) {
    return static_cast<std::uint32_t>(
        (reinterpret_cast<const std::uint8_t*>(&arc) - table.states) / 4);
}
const PackedArc& arc_at(const PackedView& table, std::uint32_t place) {
    return *reinterpret_cast<const PackedArc*>(table.states + 4 * std::size_t{place});
}

std::uint64_t hash_of(const std::uint64_t* places, std::size_t count) {
    std::uint64_t hash = count;
    for (std::size_t i = 0; i < count; ++i) {
        hash = (hash ^ places[i]) * 0x9E3779B97F4A7C15u;
        hash ^= hash >> 29;
    }
    return hash;
}

}  // namespace

/// Searches the rest of a word from the places of a node on, and keeps nothing of it. In
/// no order: any path that makes it a word will do.
class LazyTransducer::Finisher {
public:
    /// `word` as typed; at most LONGEST_SPELT bytes are left of it from `from` on.
    Finisher(const LazyTransducer& owner, std::string_view word, std::size_t from,
             const Counts& counts)
        : table_(owner.table_),
          traits_(owner.label_traits_.data()),
          word_(word),
          counts_(counts),
          from_start_(from == 0),
          hopeless_(begins_small(word) ? CAPITAL : 0u),
          unclean_(begins_small(word) ? std::uint32_t{CAPITAL | NAME} : 0u),
          size_of_rest_(word.size() - from) {
        for (std::size_t i = 0; i < size_of_rest_; ++i) {
            const auto byte = static_cast<std::uint8_t>(word[from + i]);
            rest_[i] = lowered(byte);
            wanted_[i] = owner.typed_bit_[byte];
        }
        rest_[size_of_rest_] = 0;
        wanted_[size_of_rest_] = PackedView::END_BIT;
    }

    Answer run(const Place* places, std::size_t count) {
        for (std::size_t i = 0; i < count && !done_; ++i) {
            const Place place = places[i];
            if (is_end(place)) continue;  // there is a rest
            if (is_arc(place)) {
                follow(arc_at(table_, where(place)), read_of(place), path_of(place));
            } else {
                push(static_cast<StateRef>(where(place)), 0, path_of(place), 0, 0);
            }
            while (size_ > 0 && !done_) follow(stack_[--size_]);
        }
        if (failed_) return Answer::ask_the_walk;
        if (done_) return Answer::yes;
        return odd_ ? Answer::ask_the_texts : Answer::no;
    }

private:
    struct Path {
        StateRef state;
        std::uint8_t at;
        std::uint8_t traits;
        std::uint16_t depth;  // arcs on the path
        std::uint32_t label;  // of the last one
    };
    static constexpr StateRef NOWHERE = -1;
    static constexpr std::size_t MOST_OPEN = 256;  // paths that are still to be searched
    static constexpr std::size_t MOST_LOOKED = 4096;  // arcs
    static constexpr std::size_t LONGEST_TEXT = 512;
    static_assert(LONGEST_SPELT <= 255, "a path holds where it is");

    /// Follows a path as long as it goes on. Where it forks, the other ways are put on
    /// the stack. What it asks at every arc is in locals: the stack's memory might be
    /// theirs, for all a compiler knows.
    void follow(const Path path) {
        const PackedView& table = table_;
        const std::uint8_t* const label_traits = traits_;
        const std::uint32_t hopeless = hopeless_;
        std::size_t arcs = arcs_;
        StateRef ref = path.state;
        std::uint32_t at = path.at, traits = path.traits, depth = path.depth;
        std::uint32_t last = path.label;
        do {
            const PackedState state = table.state(ref);
            const std::uint8_t byte = rest_[at];
            __builtin_prefetch(reinterpret_cast<const char*>(state.first) + 63);
            labels_[depth++] = last;
            StateRef next = NOWHERE;
            std::uint32_t next_at = 0, next_traits = 0;
            for (std::uint32_t base = 0; base < state.count; base += LOOK) {
                std::uint32_t bits =
                    matching_of_look(state.first + base, state.count - base, byte);
                for (; bits != 0; bits &= bits - 1) {
                    const std::size_t i =
                        base + static_cast<std::uint32_t>(__builtin_ctz(bits));
                    const PackedArc& arc = state.arcs[i];
                    ++arcs;
                    const std::uint32_t label = table.label_of(arc);
                    std::uint32_t behind = at;
                    if (arc.is_long()) {
                        if (!reads(label, 0, at)) continue;
                        behind += table.labels[label].lower_size;
                    } else {
                        behind += state.first[i] != 0 ? 1 : 0;
                    }
                    if ((arc.follows & wanted_[behind]) == 0) continue;
                    const std::uint32_t written = label_traits[label];
                    std::uint32_t now = traits;
                    // Most labels are letters behind others, and tell nothing new.
                    if ((written | (traits & NOTHING_WRITTEN)) != 0) {
                        now = with_label(traits, written);
                        if ((now & hopeless) != 0) continue;
                    }
                    if (arc.target < 0) {
                        end(behind, now, depth, label);
                        continue;
                    }
                    if (next != NOWHERE) push(next, next_at, next_traits, depth, last);
                    next = arc.target;
                    next_at = behind;
                    next_traits = now;
                    last = label;
                }
            }
            if (arcs > MOST_LOOKED) failed_ = done_ = true;
            ref = next;
            at = next_at;
            traits = next_traits;
        } while (ref != NOWHERE && !done_);
        arcs_ = arcs;
    }

    /// Goes on from an arc that has been read up to `from`.
    void follow(const PackedArc& arc, std::size_t from, std::uint32_t traits) {
        const std::uint32_t label = table_.label_of(arc);
        if (!reads(label, from, 0)) return;
        const auto at =
            static_cast<std::uint32_t>(table_.labels[label].lower_size - from);
        if ((arc.follows & wanted_[at]) == 0) return;
        traits = with_label(traits, traits_[label]);
        if ((traits & hopeless_) != 0) return;
        if (arc.target < 0) {
            end(at, traits, 0, label);
        } else {
            push(arc.target, at, traits, 0, label);
        }
    }

    /// True if what is left of a lower symbol is read at `at`.
    [[gnu::noinline]] bool reads(std::uint32_t label, std::size_t from,
                                 std::size_t at) const {
        const std::string_view lower = table_.lower(label).substr(from);
        const std::string_view rest(reinterpret_cast<const char*>(rest_), size_of_rest_);
        return rest.compare(at, lower.size(), lower) == 0;
    }

    void push(StateRef state, std::uint32_t at, std::uint32_t traits, std::uint32_t depth,
              std::uint32_t label) {
        if (size_ == MOST_OPEN) {
            failed_ = done_ = true;
            return;
        }
        __builtin_prefetch(table_.states + 4 * static_cast<std::size_t>(state));
        stack_[size_++] = {state, static_cast<std::uint8_t>(at),
                           static_cast<std::uint8_t>(traits),
                           static_cast<std::uint16_t>(depth), label};
    }

    /// A path of `depth` arcs ends at `at`, behind one more, over `label`.
    void end(std::size_t at, std::uint32_t traits, std::size_t depth,
             std::uint32_t label) {
        if (at < size_of_rest_) return;
        if ((traits & ODD) != 0) {
            end_oddly(depth, label);
        } else if ((traits & unclean_) == 0) {
            done_ = true;
        }
    }

    /// The analysis of an odd path is written, from its end back, and asked what it is
    /// worth.
    [[gnu::noinline]] void end_oddly(std::size_t depth, std::uint32_t label) {
        if (!from_start_) {
            odd_ = true;
            return;
        }
        char text[LONGEST_TEXT + 1];
        char* const end = text + LONGEST_TEXT;
        char* begin = end;
        *end = '\0';
        for (;; label = labels_[depth]) {
            const std::string_view upper = table_.upper(label);
            if (upper.size() > static_cast<std::size_t>(begin - text) ||
                upper.find('\0') != std::string_view::npos) {
                failed_ = done_ = true;
                return;
            }
            begin -= upper.size();
            upper.copy(begin, upper.size());
            if (depth-- <= 1) break;
        }
        const std::string_view analysis(begin, static_cast<std::size_t>(end - begin));
        if (is_kept_by_filters(word_, analysis) && counts_(analysis)) done_ = true;
    }

    const PackedView& table_;
    const std::uint8_t* const traits_;
    const std::string_view word_;
    const Counts& counts_;
    const bool from_start_;         // only then the upper text of a path is known
    const std::uint32_t hopeless_;  // traits of a path that is no analysis of the word
    const std::uint32_t unclean_;   // of one that makes it no word as it was typed
    const std::size_t size_of_rest_;
    std::uint8_t rest_[LONGEST_SPELT + 1];     // lowered, with a NUL behind it
    std::uint16_t wanted_[LONGEST_SPELT + 1];  // what must follow at each place of it
    Path stack_[MOST_OPEN];
    std::size_t size_ = 0;
    std::uint32_t
        labels_[MOST_LOOKED + 2];  // on the way to where the search is; 0 is none
    std::size_t arcs_ = 0;
    bool odd_ = false;
    bool done_ = false;    // a word was found
    bool failed_ = false;  // or a bound was passed
};

/// Takes the paths of a node one byte further, in the order of the walk, or to their
/// ends.
class LazyTransducer::Builder {
public:
    explicit Builder(LazyTransducer& owner) : owner_(owner), table_(owner.table_) {}

    /// Forgets what it built before.
    void clear() {
        places.clear();
        pieces.clear();
        follows = 0;
        failed = false;
        arcs_ = 0;
    }

    /// All paths of `node` that read `byte`.
    void step(Node node, std::uint8_t byte) {
        clear();
        byte_ = byte;
        wanted_ = table_.bit_of(byte);
        for_each_place(node, [&](Place place) {
            if (is_end(place)) return;
            if (is_arc(place)) {
                read_on(arc_at(table_, where(place)), read_of(place), path_of(place));
            } else {
                enter(static_cast<StateRef>(where(place)), path_of(place), 0);
            }
        });
    }

    /// The ends of all paths in `places`.
    void ends_of(const std::vector<Place>& from) {
        clear();
        wanted_ = PackedView::END_BIT;
        byte_ = 0;
        for (from_ = 0; from_ < from.size(); ++from_) {
            const Place place = from[from_];
            if (is_end(place)) add(place, {});
            if (!is_end(place) && !is_arc(place)) {
                enter(static_cast<StateRef>(where(place)), path_of(place), 0);
            }
        }
    }

    std::vector<Place> places;  // where the paths are behind the step
    std::vector<Piece> pieces;  // what each wrote; as many
    std::uint16_t follows = 0;  // mask of what can be read there, or the end
    bool failed = false;        // a bound was passed

private:
    template <class Visit>
    void for_each_place(Node node, Visit visit) {
        const NodeParts& parts = owner_.parts_of(node);
        for (from_ = 0; from_ < parts.place_count && !failed; ++from_)
            visit(parts.places[from_]);
    }

    /// Goes on from a state: over arcs that read the byte, and over empty ones to further
    /// states. At the end of a word, over the empty arcs alone.
    void enter(StateRef ref, std::uint8_t path, int depth) {
        const PackedState state = table_.state(ref);
        for (std::uint32_t base = 0; base < state.count && !failed; base += 64) {
            const std::uint32_t count = std::min<std::uint32_t>(state.count - base, 64);
            std::uint64_t bits = matching_arcs(state.first + base, count, byte_);
            for (; bits != 0 && !failed; bits &= bits - 1) {
                const std::uint32_t i =
                    base + static_cast<std::uint32_t>(__builtin_ctzll(bits));
                if (++arcs_ > MOST_ARCS) failed = true;
                if (state.first[i] != 0) {
                    read_on(state.arcs[i], 0, path);
                } else {
                    pass(state.arcs[i], path, depth);
                }
            }
        }
    }

    /// Goes over an arc with an empty lower symbol.
    void pass(const PackedArc& arc, std::uint8_t path, int depth) {
        const std::uint32_t label = table_.label_of(arc);
        if (table_.labels[label].lower_size != 0) return;  // a NUL: never read
        if ((arc.follows & wanted_) == 0) return;
        const std::uint8_t behind = with_label(path, owner_.label_traits_[label]);
        if (arc.target < 0) {
            if (wanted_ == PackedView::END_BIT) add(AT_END | behind, table_.upper(label));
            return;
        }
        if (depth == DEEPEST_EMPTY) {
            failed = true;
            return;
        }
        const std::size_t written = text_.size();
        const std::string_view upper = table_.upper(label), only = only_;
        text_ += upper;
        if (!upper.empty()) only_ = written == 0 ? upper : std::string_view();
        enter(arc.target, behind, depth + 1);
        text_.resize(written);
        only_ = only;
    }

    void read_on(const PackedArc& arc, std::uint32_t read, std::uint8_t path) {
        const std::uint32_t number = table_.label_of(arc);
        const PackedLabel& label = table_.labels[number];
        if (static_cast<std::uint8_t>(table_.pool[label.lower_at + read]) != byte_)
            return;
        if (read + 1 < label.lower_size) {
            failed = failed || read + 1 == MOST_READ;
            follows |= table_.bit_of(
                static_cast<std::uint8_t>(table_.pool[label.lower_at + read + 1]));
            add(in_arc(place_of(table_, arc), read + 1, path), {});
            return;
        }
        const std::uint8_t behind = with_label(path, owner_.label_traits_[number]);
        follows |= arc.follows;
        add(arc.target < 0 ? AT_END | behind : in_state(arc.target, behind),
            table_.upper(number));
    }

    /// A path has arrived at `place`, and wrote `last` behind what empty arcs wrote.
    void add(Place place, std::string_view last) {
        const std::size_t size = text_.size() + last.size();
        if (size > LONGEST_PIECE || places.size() == MOST_PATHS) {
            failed = true;
            return;
        }
        char own[Piece::OWN];
        const char* end = nullptr;
        if (size <= sizeof own) {
            text_.copy(own, text_.size());
            last.copy(own + text_.size(), last.size());
            end = own + size;
        } else if (text_.empty()) {
            end = last.data() + last.size();
        } else if (last.empty() && !only_.empty()) {
            end = only_.data() + only_.size();
        } else {
            end = owner_.end_of(text_, last);
        }
        if (end == nullptr) {
            failed = true;
            return;
        }
        places.push_back(place);
        pieces.emplace_back(end, size, from_, path_of(place));
    }

    LazyTransducer& owner_;
    const PackedView& table_;
    std::uint8_t byte_ = 0;
    std::uint16_t wanted_ = 0;  // mask bit of the byte, or of the end
    std::size_t from_ = 0;      // the path that is being taken on
    std::size_t arcs_ = 0;
    std::string text_;       // what empty arcs wrote on the way
    std::string_view only_;  // the one symbol that it is, if it is one
};

LazyTransducer::Slots::Slots(std::size_t size)
    : mask(size - 1), shift(64), slots(new Slot[size]()) {
    for (std::size_t bits = size; bits > 1; bits /= 2) --shift;
}

LazyTransducer::LazyTransducer(const PackedView& table) : table_(table) {}
LazyTransducer::~LazyTransducer() = default;

void LazyTransducer::prepare() {
    for (std::uint32_t label = 0; label < table_.label_count; ++label) {
        label_traits_.push_back(traits_of(table_.upper(label)));
        for (const char c : table_.lower(label)) {
            const auto byte = static_cast<std::uint8_t>(c);
            follow_bit_[byte] =
                1 << (FOLLOWS_AT + table_.byte_class[byte] % FOLLOW_CLASSES);
        }
    }
    for (std::size_t byte = 0; byte < 256; ++byte)
        typed_bit_[byte] = table_.bit_of(lowered(static_cast<std::uint8_t>(byte)));
    step_ = std::make_unique<Builder>(*this);
    ends_of_step_ = std::make_unique<Builder>(*this);
    parts_.resize(MOST_NODES / NODES_OF_CHUNK);
    asked_.reset(new std::atomic<std::uint8_t>[std::size_t{1} << ASKED_BITS]());
    nodes_.assign(1 << 8, UNKNOWN);
    grow(FIRST_SLOTS);
}

LazyTransducer::Node LazyTransducer::make_start() {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (const Node known = start_.load(std::memory_order_relaxed)) return known;
    Node node = TOO_MANY;
    // The walk cuts a path that comes back to a state without having read a byte. Here
    // such a path would be followed to what it adds to the upper text, so the walk is
    // asked.
    if ((table_.cycles & EMPTY_CYCLES) == 0) {
        prepare();
        if (table_.state_count > 0) step_->places.push_back(in_state(0, NOTHING_WRITTEN));
        step_->follows = static_cast<std::uint16_t>(~0u);  // no arc leads there to tell
        node = node_of(*step_);
    }
    start_.store(node, std::memory_order_release);
    return node;
}

LazyTransducer::Node LazyTransducer::read(Stop& stop, std::string_view text, Asked asked,
                                          const Piece** ways) {
    if (stop.node <= DEAD) return stop.node;
    const Slots* slots = slots_.load(std::memory_order_acquire);
    bool insist = false;
    for (; stop.at < text.size(); ++stop.at) {
        const std::uint8_t byte = lowered(static_cast<std::uint8_t>(text[stop.at]));
        Step taken = step(*slots, stop.node, byte);
        if (taken.next == UNKNOWN) {
            if (asked == Asked::NEVER) return TOO_MANY;
            taken = ask_again(stop.node, byte, asked, insist);
            slots = slots_.load(std::memory_order_acquire);
        }
        if (taken.next <= DEAD) return taken.next;
        if (ways != nullptr) ways[stop.at] = taken.ways;
        stop.node = taken.next;
    }
    return stop.node;
}

/// True if a step is worth making. Counts, and forgets what another step of the same hash
/// counted.
bool LazyTransducer::is_asked_enough(Node node, std::uint8_t byte, Asked asked) {
    const std::uint64_t hash = key_of(node, byte) * 0x9E3779B97F4A7C15u;
    std::atomic<std::uint8_t>& count = asked_[hash >> (64 - ASKED_BITS)];
    const auto mark = static_cast<std::uint8_t>(hash >> 32 & ASKED_MARK);
    const std::uint8_t old = count.load(std::memory_order_relaxed);
    const int before = (old & ASKED_MARK) == mark ? old & ~ASKED_MARK : 0;
    if (before + 1 >= static_cast<int>(asked)) return true;
    count.store(static_cast<std::uint8_t>(mark | (before + 1)),
                std::memory_order_relaxed);
    return false;
}

/// A step that `read` did not find. Nobody waits here: while another thread makes steps,
/// the walk is asked.
LazyTransducer::Step LazyTransducer::ask_again(Node node, std::uint8_t byte, Asked asked,
                                               bool& insist) {
    if (!insist && !is_asked_enough(node, byte, asked)) return {TOO_MANY, nullptr};
    const std::unique_lock<std::mutex> lock(mutex_, std::try_to_lock);
    if (!lock || !has_room()) return {TOO_MANY, nullptr};
    const Step known = step(*all_slots_.back(), node, byte);
    if (known.next != UNKNOWN) return known;
    insist = asked == Asked::TWICE;  // then the rest of this word too
    return build(node, byte);
}

LazyTransducer::Node LazyTransducer::make_next(Node node, std::uint8_t byte) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const Node known = step(*all_slots_.back(), node, byte).next;
    if ((known & NUMBER) != 0) return known;
    return has_room() ? build(node, byte).next : TOO_MANY;
}

/// The answer for a word that has been read up to `stop`, where the steps end.
Answer LazyTransducer::finish(const Stop& stop, std::string_view word,
                              const Counts& counts) {
    if (word.size() - stop.at > LONGEST_SPELT) return Answer::ask_the_walk;
    const NodeParts& parts = parts_of(stop.node);
    return Finisher(*this, word, stop.at, counts).run(parts.places, parts.place_count);
}

LazyTransducer::Step LazyTransducer::build(Node node, std::uint8_t byte) {
    Builder& built = *step_;
    built.step(node, byte);
    const Piece* ways = built.failed ? nullptr : kept_pieces_.copy_of(built.pieces);
    Node next = TOO_MANY;
    if (!built.failed && (ways != nullptr || built.pieces.empty())) next = node_of(built);
    set(node, byte, {next, ways});
    return {next, ways};
}

LazyTransducer::Node LazyTransducer::node_of(const Builder& built) {
    if (built.places.empty()) return DEAD;
    const std::size_t mask = nodes_.size() - 1;
    std::size_t slot = hash_of(built.places.data(), built.places.size()) & mask;
    for (; nodes_[slot] != UNKNOWN; slot = (slot + 1) & mask) {
        const NodeParts& parts = parts_of(nodes_[slot]);
        if (std::equal(parts.places, parts.places + parts.place_count,
                       built.places.begin(), built.places.end())) {
            return nodes_[slot];
        }
    }
    if (node_count_ >= MOST_NODES) return TOO_MANY;
    Builder& ends = *ends_of_step_;
    ends.ends_of(built.places);
    const Piece* kept = ends.failed ? nullptr : kept_pieces_.copy_of(ends.pieces);
    if (ends.failed || (kept == nullptr && !ends.pieces.empty())) return TOO_MANY;

    const Place* places = kept_places_.copy_of(built.places);
    if (places == nullptr) return TOO_MANY;
    const auto number = static_cast<std::size_t>(node_count_);
    Node node = node_count_++;
    for (int bit = 0; bit < PackedView::CLASS_OF_END; ++bit) {
        if ((built.follows >> bit & 1) != 0)
            node |= 1 << (FOLLOWS_AT + bit % FOLLOW_CLASSES);
    }
    for (const Piece& piece : ends.pieces) {
        node |= (piece.path & ODD) != 0                ? ENDS_ODD
                : (piece.path & (CAPITAL | NAME)) != 0 ? ENDS_AS_NAME
                                                       : ENDS_CLEAN;
    }
    std::unique_ptr<NodeParts[]>& chunk = parts_[number / NODES_OF_CHUNK];
    if (chunk == nullptr) chunk.reset(new NodeParts[NODES_OF_CHUNK]);
    chunk[number % NODES_OF_CHUNK] = {kept, places,
                                      static_cast<std::uint32_t>(ends.pieces.size()),
                                      static_cast<std::uint32_t>(built.places.size())};
    nodes_[slot] = node;
    if (2 * number > nodes_.size()) widen_nodes();
    return node;
}

void LazyTransducer::widen_nodes() {
    std::vector<Node> wider(2 * nodes_.size(), UNKNOWN);
    for (const Node node : nodes_) {
        if (node == UNKNOWN) continue;
        const NodeParts& parts = parts_of(node);
        std::size_t slot = hash_of(parts.places, parts.place_count) & (wider.size() - 1);
        while (wider[slot] != UNKNOWN) slot = (slot + 1) & (wider.size() - 1);
        wider[slot] = node;
    }
    nodes_.swap(wider);
}

/// True if one more step can be kept.
bool LazyTransducer::has_room() {
    const std::size_t size = all_slots_.back()->mask + 1;
    if (slots_used_ < size / 2) return true;
    if (size == MOST_SLOTS) return slots_used_ < size / 4 * 3;
    grow(2 * size);
    return true;
}

/// Changes to larger slots. The old ones stay, for those who are reading in them.
void LazyTransducer::grow(std::size_t size) {
    auto larger = std::make_unique<Slots>(size);
    if (!all_slots_.empty()) {
        const Slots& old = *all_slots_.back();
        for (std::size_t i = 0; i <= old.mask; ++i) {
            const std::uint64_t head = old.slots[i].head.load(std::memory_order_relaxed);
            if (head == 0) continue;
            const std::size_t slot =
                larger->find(static_cast<std::uint32_t>(head >> 32)).slot;
            larger->slots[slot].ways.store(
                old.slots[i].ways.load(std::memory_order_relaxed),
                std::memory_order_relaxed);
            larger->slots[slot].head.store(head, std::memory_order_relaxed);
        }
    }
    all_slots_.push_back(std::move(larger));
    slots_.store(all_slots_.back().get(), std::memory_order_release);
}

void LazyTransducer::set(Node node, std::uint8_t byte, Step step) {
    const std::uint64_t next = static_cast<std::uint32_t>(step.next);
    const Slots& slots = *all_slots_.back();
    const std::uint32_t key = key_of(node, byte);
    const Slots::Found found = slots.find(key);
    if (found.next == UNKNOWN) ++slots_used_;
    has_steps_.store(true, std::memory_order_relaxed);
    Slots::Slot& slot = slots.slots[found.slot];
    slot.ways.store(step.ways, std::memory_order_relaxed);
    slot.head.store(std::uint64_t{key} << 32 | next, std::memory_order_release);
}

/// The end of a lasting copy of two texts, one behind the other, with SHORT bytes in
/// front; null if there are too many.
const char* LazyTransducer::end_of(std::string_view first, std::string_view second) {
    const std::size_t size = first.size() + second.size();
    char* copy = kept_texts_.room(SHORT + size);
    if (copy == nullptr) return nullptr;
    std::memset(copy, 0, SHORT);
    copy += SHORT;
    first.copy(copy, first.size());
    second.copy(copy + first.size(), second.size());
    return copy + size;
}

}  // namespace lemara
