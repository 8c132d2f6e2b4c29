#include "tables/forms.h"

#include <utility>

#include "Egoera.h"
#include "tables/UpperArcs.h"
#include "tables/image.h"
#include "tables/known_beginnings.h"
#include "tables/lazy_transducer.h"
#include "tables/word_map.h"

namespace lemara {
namespace {

std::atomic<std::uint64_t> graph_changes{1};

/// Tells two graphs apart as far as operations can change them: by their states and arcs.
std::uint64_t fingerprint(const std::vector<Egoera*>& graph) {
    std::uint64_t hash = 14695981039346656037u;
    const auto add = [&](std::uint64_t value) { hash = (hash ^ value) * 1099511628211u; };
    add(graph.size());
    for (const Egoera* state : graph) {
        add(reinterpret_cast<std::uintptr_t>(state));
        if (state == nullptr) continue;
        add(state->zubiak.size());
        for (const Zubia* arc : state->zubiak) add(reinterpret_cast<std::uintptr_t>(arc));
    }
    return hash;
}

}  // namespace

void note_graph_change() { graph_changes.fetch_add(1, std::memory_order_relaxed); }

struct TableForms::Current {
    explicit Current(const std::vector<Egoera*>& graph)
        : Current(std::make_unique<PackedTable>(graph), graph) {
        folded = false;
    }

    Current(std::unique_ptr<PackedTable> packed, const std::vector<Egoera*>& graph)
        : state_count(graph.size()),
          mark(fingerprint(graph)),
          folded(graph.empty()),
          table(std::move(packed)),
          view(table->view()),
          lazy(view),
          upper(view) {}

    explicit Current(std::unique_ptr<Image> mapped)
        : state_count(0),
          mark(fingerprint({})),
          folded(true),
          image(std::move(mapped)),
          view(image->view()),
          lazy(view),
          upper(view) {}

    std::size_t state_count;
    std::uint64_t mark;
    bool folded;                         // it stands for a graph that isn't there
    std::unique_ptr<PackedTable> table;  // one of the two
    std::unique_ptr<Image> image;
    PackedView view;
    LazyTransducer lazy;
    WordMap answers{std::size_t{1} << 19};  // 16 MiB
    UpperArcs upper;
    KnownBeginnings beginnings;
};

TableForms::TableForms() = default;
TableForms::~TableForms() = default;

TableForms::Current& TableForms::current(const std::vector<Egoera*>& graph) {
    Current* now = current_.load(std::memory_order_acquire);
    if (now != nullptr && now->state_count == graph.size() &&
        seen_change_.load(std::memory_order_relaxed) ==
            graph_changes.load(std::memory_order_relaxed)) {
        return *now;
    }
    return look_again(graph);
}

TableForms::Current& TableForms::look_again(const std::vector<Egoera*>& graph) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const std::uint64_t change = graph_changes.load(std::memory_order_relaxed);
    // A graph that has changed has one thread alone at it, so nobody else holds the old
    // form.
    if (!owner_ || owner_->state_count != graph.size() ||
        owner_->mark != fingerprint(graph)) {
        owner_ = std::make_unique<Current>(graph);
        current_.store(owner_.get(), std::memory_order_release);
    }
    seen_change_.store(change, std::memory_order_relaxed);
    return *owner_;
}

const PackedView& TableForms::packed(const std::vector<Egoera*>& graph) {
    return current(graph).view;
}

void TableForms::use(std::unique_ptr<Image> image) {
    use(std::make_unique<Current>(std::move(image)));
}

void TableForms::use(std::unique_ptr<PackedTable> table,
                     const std::vector<Egoera*>& graph) {
    use(std::make_unique<Current>(std::move(table), graph));
}

void TableForms::use(std::unique_ptr<Current> form) {
    const std::lock_guard<std::mutex> lock(mutex_);
    seen_change_.store(graph_changes.load(std::memory_order_relaxed),
                       std::memory_order_relaxed);
    owner_ = std::move(form);
    current_.store(owner_.get(), std::memory_order_release);
}

const PackedView* TableForms::folded_view(const std::vector<Egoera*>& graph) {
    if (!graph.empty() || current_.load(std::memory_order_acquire) == nullptr)
        return nullptr;
    Current& now = current(graph);
    return now.folded ? &now.view : nullptr;
}

WordMap& TableForms::answers(const std::vector<Egoera*>& graph) {
    return current(graph).answers;
}

LazyTransducer& TableForms::lazy(const std::vector<Egoera*>& graph) {
    return current(graph).lazy;
}

KnownBeginnings& TableForms::beginnings(const std::vector<Egoera*>& graph) {
    return current(graph).beginnings;
}

UpperArcs& TableForms::upper(const std::vector<Egoera*>& graph) {
    return current(graph).upper;
}

}  // namespace lemara
