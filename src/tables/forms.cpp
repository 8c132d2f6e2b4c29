#include "tables/forms.h"

#include <utility>

#include "Egoera.h"

namespace lemara {

std::atomic<std::uint64_t> graph_changes{1};

void note_graph_change() { graph_changes.fetch_add(1, std::memory_order_relaxed); }

Forms::Forms(const std::vector<Egoera*>& graph)
    : Forms(std::make_unique<PackedTable>(graph), graph) {
    folded = false;
}

Forms::Forms(std::unique_ptr<PackedTable> packed, const std::vector<Egoera*>& graph)
    : state_count(graph.size()),
      folded(graph.empty()),
      table(std::move(packed)),
      view(table->view()),
      lazy(view),
      upper(view) {}

Forms::Forms(std::unique_ptr<Image> mapped)
    : state_count(0),
      folded(true),
      image(std::move(mapped)),
      view(image->view()),
      lazy(view),
      upper(view) {}

TableForms::TableForms() = default;
TableForms::~TableForms() = default;

Forms& TableForms::look_again(const std::vector<Egoera*>& graph) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const std::uint64_t change = graph_changes.load(std::memory_order_relaxed);
    // A graph that has changed has one thread alone at it, so nobody else holds the old
    // form.
    const bool same = owner_ && owner_->state_count == graph.size() &&
                      (owner_->folded || is_packed_from(owner_->view, graph));
    if (!same) {
        owner_ = std::make_unique<Forms>(graph);
        current_.store(owner_.get(), std::memory_order_release);
    }
    seen_change_.store(change, std::memory_order_relaxed);
    return *owner_;
}

void TableForms::use(std::unique_ptr<Image> image) {
    use(std::make_unique<Forms>(std::move(image)));
}

void TableForms::use(std::unique_ptr<PackedTable> table,
                     const std::vector<Egoera*>& graph) {
    use(std::make_unique<Forms>(std::move(table), graph));
}

void TableForms::use(std::unique_ptr<Forms> form) {
    const std::lock_guard<std::mutex> lock(mutex_);
    seen_change_.store(graph_changes.load(std::memory_order_relaxed),
                       std::memory_order_relaxed);
    owner_ = std::move(form);
    current_.store(owner_.get(), std::memory_order_release);
}

const PackedView* TableForms::folded_view(const std::vector<Egoera*>& graph) {
    if (!graph.empty() || current_.load(std::memory_order_acquire) == nullptr)
        return nullptr;
    Forms& now = of(graph);
    return now.folded ? &now.view : nullptr;
}

}  // namespace lemara
