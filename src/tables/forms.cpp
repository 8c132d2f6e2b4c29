#include "tables/forms.h"

#include <utility>

#include "Egoera.h"
#include "tables/UpperArcs.h"
#include "tables/image.h"
#include "tables/lazy_transducer.h"

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
        : state_count(graph.size()),
          mark(fingerprint(graph)),
          table(std::make_unique<PackedTable>(graph)),
          view(table->view()),
          lazy(view),
          upper(view) {}

    explicit Current(std::unique_ptr<Image> mapped)
        : state_count(0),
          mark(fingerprint({})),
          image(std::move(mapped)),
          view(image->view()),
          lazy(view),
          upper(view) {}

    std::size_t state_count;
    std::uint64_t mark;
    std::unique_ptr<PackedTable> table;  // one of the two
    std::unique_ptr<Image> image;
    PackedView view;
    LazyTransducer lazy;
    UpperArcs upper;
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
    const std::lock_guard<std::mutex> lock(mutex_);
    owner_ = std::make_unique<Current>(std::move(image));
    current_.store(owner_.get(), std::memory_order_release);
}

const PackedView* TableForms::image_view(const std::vector<Egoera*>& graph) {
    if (!graph.empty() || current_.load(std::memory_order_acquire) == nullptr)
        return nullptr;
    Current& now = current(graph);
    return now.image == nullptr ? nullptr : &now.view;
}

LazyTransducer& TableForms::lazy(const std::vector<Egoera*>& graph) {
    return current(graph).lazy;
}

UpperArcs& TableForms::upper(const std::vector<Egoera*>& graph) {
    return current(graph).upper;
}

}  // namespace lemara
