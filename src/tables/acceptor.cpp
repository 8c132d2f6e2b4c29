#include "tables/acceptor.h"

#include <algorithm>
#include <string>

#include "analysis/text_pieces.h"

namespace lemara {
namespace {

constexpr std::size_t MOST_PLACES = 1 << 12;       // of one node
constexpr std::size_t MOST_PLACES_KEPT = 1 << 23;  // of all nodes

// What a place knows of its path, and what a label adds to it.
constexpr std::uint8_t NOTHING_WRITTEN = 1;
constexpr std::uint8_t CAPITAL = 2;  // the upper text begins with "A" to "Z"
constexpr std::uint8_t NAME = 4;     // it holds "<PIB>", "<LIB>" or "<IZB>"
constexpr std::uint8_t ODD = 8;      // only the whole text tells

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
    std::uint8_t traits = upper.empty() ? NOTHING_WRITTEN : std::uint8_t{0};
    if (!upper.empty() && upper[0] >= 'A' && upper[0] <= 'Z') traits |= CAPITAL;
    if (upper.find_first_of(std::string_view("[] \0", 4)) != std::string_view::npos) {
        return traits | ODD;
    }
    if (upper.find_first_of("<>") == std::string_view::npos) return traits;
    if (!is_whole_tags(upper) || contains(upper, "MAT")) return traits | ODD;
    for (const char* tag : {"<SNB>", "<SIG>", "<PSP>"}) {
        if (contains(upper, tag)) return traits | ODD;
    }
    for (const char* tag : {"<PIB>", "<LIB>", "<IZB>"}) {
        if (contains(upper, tag)) traits |= NAME;
    }
    return traits;
}

/// The path behind a label.
std::uint8_t with_label(std::uint8_t path, std::uint8_t label) {
    std::uint8_t result = (path | label) & (NAME | ODD);
    if ((path & NOTHING_WRITTEN) != 0) {
        result |= label & (NOTHING_WRITTEN | CAPITAL);
    } else {
        result |= path & CAPITAL;
    }
    return result;
}

// A place is a state, or an arc whose lower symbol has been read in part: bit 63 tells, bits
// 32 to 62 where it stands, 8 to 31 the bytes read, 0 to 7 the path.
constexpr std::uint64_t IN_ARC = std::uint64_t{1} << 63;

std::uint64_t in_state(std::uint32_t state, std::uint8_t path) {
    return std::uint64_t{state} << 32 | path;
}
std::uint64_t in_arc(std::uint32_t arc, std::uint32_t read, std::uint8_t path) {
    return IN_ARC | std::uint64_t{arc} << 32 | std::uint64_t{read} << 8 | path;
}
std::uint32_t number_of(std::uint64_t place) {
    return static_cast<std::uint32_t>((place & ~IN_ARC) >> 32);
}
std::uint32_t read_of(std::uint64_t place) {
    return static_cast<std::uint32_t>(place >> 8) & 0xFFFFFF;
}
std::uint8_t path_of(std::uint64_t place) { return static_cast<std::uint8_t>(place); }

}  // namespace

/// Gathers the places of a new node.
class Acceptor::Builder {
public:
    explicit Builder(const Acceptor& acceptor)
        : table_(acceptor.table_), traits_(acceptor.label_traits_) {}

    /// The places reached from `place` by reading `byte`.
    void read(Place place, std::uint8_t byte) {
        if ((place & IN_ARC) != 0) {
            read_on(number_of(place), read_of(place), path_of(place), byte);
            return;
        }
        const PackedState state = table_.state(static_cast<StateRef>(number_of(place)));
        for (std::uint32_t i = 0; i < state.count; ++i) {
            if (state.first[i] != byte || byte == 0) continue;
            read_on(place_of(state.arcs[i]), 0, path_of(place), byte);
        }
    }

    void arrive(std::int32_t target, std::uint8_t path) {
        if (target < 0) {
            ends |= (path & ODD) != 0               ? ENDS_ODD
                    : (path & (CAPITAL | NAME)) != 0 ? ENDS_AS_NAME
                                                     : ENDS_CLEAN;
            return;
        }
        open_.push_back(in_state(static_cast<std::uint32_t>(target), path));
    }

    /// Follows the empty arcs; false if there are too many places.
    bool close() {
        while (!open_.empty()) {
            const Place place = open_.back();
            open_.pop_back();
            if (!seen_.emplace(place, true).second) continue;
            if (seen_.size() > MOST_PLACES) return false;
            const PackedState state = table_.state(static_cast<StateRef>(number_of(place)));
            bool reads = false;
            for (std::uint32_t i = 0; i < state.count; ++i) {
                if (state.first[i] != 0) {
                    reads = true;
                    continue;
                }
                const std::uint32_t label = table_.label_of(state.arcs[i]);
                if (table_.labels[label].lower_size != 0) continue;  // a NUL: never read
                arrive(state.arcs[i].target, with_label(path_of(place), traits_[label]));
            }
            if (reads) places.push_back(place);
        }
        std::sort(places.begin(), places.end());
        places.erase(std::unique(places.begin(), places.end()), places.end());
        return true;
    }

    std::vector<Place> places;
    std::uint8_t ends = 0;

private:
    // An arc by its distance from the first block, in units of 4 bytes.
    std::uint32_t place_of(const PackedArc& arc) const {
        return static_cast<std::uint32_t>(
            (reinterpret_cast<const std::uint8_t*>(&arc) - table_.states) / 4);
    }
    const PackedArc& arc_at(std::uint32_t place) const {
        return *reinterpret_cast<const PackedArc*>(table_.states + 4 * std::size_t{place});
    }

    void read_on(std::uint32_t arc, std::uint32_t read, std::uint8_t path, std::uint8_t byte) {
        const PackedArc& packed = arc_at(arc);
        const std::uint32_t number = table_.label_of(packed);
        const PackedLabel& label = table_.labels[number];
        if (static_cast<std::uint8_t>(table_.pool[label.lower_at + read]) != byte) return;
        if (read + 1 < label.lower_size) {
            if (read + 1 < 0xFFFFFF) places.push_back(in_arc(arc, read + 1, path));
        } else {
            arrive(packed.target, with_label(path, traits_[number]));
        }
    }

    const PackedView& table_;
    const std::vector<std::uint8_t>& traits_;
    std::vector<Place> open_;
    std::unordered_map<Place, bool> seen_;
};

Acceptor::Acceptor(const PackedView& table) : table_(table) {}

Acceptor::~Acceptor() {
    std::free(static_cast<void*>(slots_));
    std::free(ends_);
}

bool Acceptor::prepare() {
    slots_ = static_cast<std::atomic<std::uint64_t>*>(
        std::calloc(SLOTS, sizeof(std::atomic<std::uint64_t>)));
    ends_ = static_cast<std::uint8_t*>(std::calloc(MOST_NODES, 1));
    if (slots_ == nullptr || ends_ == nullptr) return false;
    label_traits_.reserve(table_.label_count);
    for (std::uint32_t label = 0; label < table_.label_count; ++label) {
        label_traits_.push_back(traits_of(table_.upper(label)));
        for (const char c : table_.lower(label)) reads_[static_cast<std::uint8_t>(c)] = true;
    }
    places_begin_.assign(DEAD + 2, 0);  // nodes 0 and 1 have none
    return true;
}

Acceptor::Node Acceptor::start() {
    const Node known = start_.load(std::memory_order_acquire);
    if (known != 0) return known;
    const std::lock_guard<std::mutex> lock(mutex_);
    if (start_.load(std::memory_order_relaxed) != 0) return start_.load();
    Node node = TOO_MANY;
    // The walk cuts a path that comes back to a state without having read a byte. Here such a
    // path would be followed to what it adds to the upper text, so the walk is asked.
    if ((table_.cycles & EMPTY_CYCLES) == 0 && prepare()) {
        Builder builder(*this);
        if (table_.state_count > 0) builder.arrive(0, NOTHING_WRITTEN);
        if (builder.close()) node = node_of(builder.places, builder.ends);
    }
    start_.store(node, std::memory_order_release);
    return node;
}

Acceptor::Node Acceptor::find_next(Node node, std::uint8_t byte) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!reads_[byte]) return DEAD;
    const std::uint64_t key = key_of(node, byte);
    std::size_t slot = slot_of(key);
    for (; slots_[slot].load(std::memory_order_relaxed) != 0; slot = (slot + 1) & (SLOTS - 1)) {
        const std::uint64_t held = slots_[slot].load(std::memory_order_relaxed);
        if (held >> 32 == key) return static_cast<Node>(static_cast<std::uint32_t>(held));
    }
    if (steps_ >= MOST_STEPS) return TOO_MANY;
    Builder builder(*this);
    for (std::size_t i = places_begin_[static_cast<std::size_t>(node)];
         i < places_begin_[static_cast<std::size_t>(node) + 1]; ++i) {
        builder.read(places_[i], byte);
    }
    const Node next = builder.close() ? node_of(builder.places, builder.ends) : TOO_MANY;
    slots_[slot].store(key << 32 | static_cast<std::uint32_t>(next), std::memory_order_release);
    ++steps_;
    return next;
}

Acceptor::Node Acceptor::node_of(const std::vector<Place>& places, std::uint8_t ends) {
    if (places.empty() && ends == 0) return DEAD;
    std::uint64_t hash = ends;
    for (const Place place : places) hash = (hash ^ place) * 0x9E3779B97F4A7C15u ^ hash >> 29;
    const auto same = nodes_.equal_range(hash);
    for (auto found = same.first; found != same.second; ++found) {
        const auto node = static_cast<std::size_t>(found->second);
        const auto begin = places_.begin() + static_cast<std::ptrdiff_t>(places_begin_[node]);
        const auto end = places_.begin() + static_cast<std::ptrdiff_t>(places_begin_[node + 1]);
        if (ends_[node] == ends && std::equal(begin, end, places.begin(), places.end())) {
            return found->second;
        }
    }
    const auto node = static_cast<Node>(places_begin_.size() - 1);
    if (node >= MOST_NODES || places_.size() + places.size() > MOST_PLACES_KEPT) {
        return TOO_MANY;
    }
    places_.insert(places_.end(), places.begin(), places.end());
    places_begin_.push_back(places_.size());
    nodes_.emplace(hash, node);
    ends_[node] = ends;
    return node;
}

}  // namespace lemara
