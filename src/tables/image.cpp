#include "tables/image.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <utility>

#include "Taula.h"
#include "lemara/compiled_table.h"
#include "tables/text_records.h"
#include "tables/token_walk.h"
#include "tables/word_bytes.h"

namespace lemara {
namespace {

// A byte that no text table begins with, a name, and line ends that a transfer as text
// breaks.
constexpr char MAGIC[8] = {'\x89', 'L', 'M', 'R', '\r', '\n', '\x1a', '\n'};
constexpr std::uint32_t VERSION = 3;
constexpr std::uint32_t ORDER = 0x01020304;
constexpr std::uint32_t OTHER_ORDER = 0x04030201;

struct Header {
    char magic[8];
    std::uint32_t version, order;
    std::uint64_t checksum;  // of all bytes behind it
    std::uint64_t total;     // bytes of the image
    std::uint32_t state_count, arc_count, label_count, pool_size;
    std::uint32_t states_size;  // in units of 4 bytes
    std::uint32_t flags;        // 1: wide labels; from bit 1 on: cycles
    std::uint32_t unused[2];
};
static_assert(sizeof(Header) == PackedLayout::HEADER_BYTES, "the header has no gaps");

constexpr std::size_t CHECKED_FROM = offsetof(Header, total);

constexpr std::uint64_t PRIME = 1099511628211u;
constexpr std::size_t LANES = 16;
constexpr std::size_t ROW = 8 * LANES;  // bytes that all lanes take at once
constexpr std::size_t STIRRED_ROWS = 64;

void add_row(std::uint64_t (&lanes)[LANES], const char* row) {
    for (std::size_t lane = 0; lane < LANES; ++lane) {
        const std::uint64_t sum = lanes[lane] + eight_at(row + 8 * lane);
        lanes[lane] = sum << 29 | sum >> 35;
    }
}

std::uint64_t stirred(std::uint64_t word) { return (word ^ word >> 31) * PRIME; }

/// Sums of words of 8 bytes, turned after each, in so many lanes that a processor adds up
/// about as fast as it reads. Every step is a bijection of what was before, so a change
/// of a single word always shows. The turns keep the same change of two words from
/// cancelling out; they come round after 64 rows, so before that the lanes are stirred.
std::uint64_t checksum_of(std::string_view bytes) {
    std::uint64_t lanes[LANES];
    for (std::size_t lane = 0; lane < LANES; ++lane) lanes[lane] = lane + 1;
    std::uint64_t hash = bytes.size();
    while (bytes.size() >= ROW) {
        const std::size_t rows = std::min(bytes.size() / ROW, STIRRED_ROWS);
        for (std::size_t row = 0; row < rows; ++row)
            add_row(lanes, bytes.data() + ROW * row);
        for (std::uint64_t& lane : lanes) lane = stirred(lane);
        bytes.remove_prefix(ROW * rows);
    }
    char rest[ROW] = {};
    bytes.copy(rest, bytes.size());
    add_row(lanes, rest);
    for (const std::uint64_t lane : lanes) hash = stirred(hash ^ lane);
    return hash;
}

std::uint64_t checksum_of_image(std::string_view image) {
    return checksum_of(image.substr(CHECKED_FROM));
}

PackedLayout layout_of(const Header& header) {
    PackedLayout layout;
    layout.state_count = header.state_count;
    layout.arc_count = header.arc_count;
    layout.label_count = header.label_count;
    layout.pool_size = header.pool_size;
    layout.states_size = header.states_size;
    layout.wide_labels = (header.flags & 1) != 0;
    layout.cycles = header.flags >> 1;
    return layout;
}

std::string defect_of_header(std::string_view image, Header& header) {
    if (!is_compiled_table(image)) return "not a compiled table";
    if (image.size() < sizeof header) return "cut short in its header";
    std::memcpy(&header, image.data(), sizeof header);
    if (header.order != ORDER) return "in a byte order that no machine has";
    if (header.version != VERSION) {
        return "of version " + std::to_string(header.version) +
               ", and this library reads " + std::to_string(VERSION);
    }
    if (header.total != image.size()) {
        return "of " + std::to_string(image.size()) + " bytes where its header says " +
               std::to_string(header.total);
    }
    if (layout_of(header).total() != image.size()) return "of a size that its parts deny";
    if (header.states_size > INT32_MAX) return "larger than a place can tell";
    if (header.state_count > header.states_size) return "of more states than fit in it";
    const std::uint32_t labels = header.label_count;
    if (labels == 0 || (labels & (labels - 1)) != 0)
        return "of no power of two of symbols";
    return "";
}

/// A view without such a defect lets no search read outside the image, wherever its arcs
/// lead: see PackedView. So an engine's start needn't look at the arcs, of which there
/// are many.
std::string defect_of_symbols(const PackedView& view) {
    for (int byte = 0; byte < 256; ++byte) {
        if (view.byte_class[byte] >= PackedView::CLASS_OF_END)
            return "a byte class is too high";
    }
    for (std::uint32_t i = 0; i < view.label_count; ++i) {
        const PackedLabel& label = view.labels[i];
        if (std::uint64_t{label.upper_at} + label.upper_size > view.pool_size ||
            std::uint64_t{label.lower_at} + label.lower_size > view.pool_size ||
            label.written_size > label.upper_size) {
            return "a symbol lies outside the pool";
        }
    }
    return "";
}

/// What an arc of each label says of it: the first byte of its lower symbol, and LONG.
std::vector<std::uint16_t> descriptions_of_labels(const PackedView& view) {
    std::vector<std::uint16_t> result(view.label_count);
    for (std::uint32_t label = 0; label < view.label_count; ++label) {
        const PackedLabel& symbols = view.labels[label];
        const std::uint8_t first =
            symbols.lower_size == 0
                ? std::uint8_t{0}
                : static_cast<std::uint8_t>(view.pool[symbols.lower_at]);
        result[label] = static_cast<std::uint16_t>(
            first | (symbols.is_long(first) ? PackedArc::LONG : 0));
    }
    return result;
}

bool labels_are_misdescribed(const PackedView& view) {
    for (std::uint32_t i = 0; i < view.label_count; ++i) {
        PackedLabel described = view.labels[i];
        described.describe(view.upper(i), view.lower(i));
        if (std::memcmp(&described, &view.labels[i], sizeof described) != 0) return true;
    }
    return false;
}

/// Where states begin, a bit for each place; nothing if they don't fill their part.
std::vector<bool> begins_of_states(const PackedView& view) {
    std::vector<bool> begins(view.states_size);
    std::uint64_t arcs = 0, place = 0;
    for (std::uint32_t i = 0; i < view.state_count; ++i) {
        if (place >= view.states_size) return {};
        begins[place] = true;
        const auto ref = static_cast<StateRef>(place);
        arcs += view.state(ref).count;
        const StateRef behind = view.behind(ref);
        if (behind <= ref) return {};
        place = static_cast<std::uint64_t>(behind);
    }
    if (place != view.states_size || arcs != view.arc_count) return {};
    return begins;
}

/// Gives `view` if the image is safe to search, else what is wrong with it.
std::string defect_of_sound_order(std::string_view image, PackedView& view) {
    Header header{};
    std::string defect = defect_of_header(image, header);
    if (!defect.empty()) return defect;
    if (checksum_of_image(image) != header.checksum)
        return "damaged: its checksum is wrong";
    view = layout_of(header).view(image.data());
    return defect_of_symbols(view);
}

template <class T>
void turn(T& value) {
    char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof value);
    for (std::size_t i = 0; i < sizeof(T) / 2; ++i)
        std::swap(bytes[i], bytes[sizeof(T) - 1 - i]);
    std::memcpy(&value, bytes, sizeof value);
}

template <class T>
void turn_all(char* at, std::uint64_t count) {
    for (std::uint64_t i = 0; i < count; ++i, at += sizeof(T)) {
        T value;
        std::memcpy(&value, at, sizeof value);
        turn(value);
        std::memcpy(at, &value, sizeof value);
    }
}

void turn_header(Header& header) {
    turn(header.version);
    turn(header.order);
    turn(header.checksum);
    turn(header.total);
    turn(header.state_count);
    turn(header.arc_count);
    turn(header.label_count);
    turn(header.pool_size);
    turn(header.states_size);
    turn(header.flags);
}

void turn_label(PackedLabel& label) {
    turn(label.upper_at);
    turn(label.upper_size);
    turn(label.lower_at);
    turn(label.lower_size);
    turn(label.written_size);
}

/// Turns counts and arcs of all blocks, as far as they lie in their part. `native` says
/// that the counts are in this machine's order.
void turn_states(char* states, const PackedLayout& layout, bool native) {
    const std::uint64_t size = 4 * std::uint64_t{layout.states_size};
    std::uint64_t at = 0;
    for (std::uint32_t i = 0; i < layout.state_count && at + 4 <= size; ++i) {
        std::uint32_t count = static_cast<std::uint8_t>(states[at]);
        std::uint64_t head = (count + 4u) & ~std::uint64_t{3};
        if (count == PackedView::MANY_ARCS) {
            if (at + 8 > size) return;
            if (!native) turn_all<std::uint32_t>(states + at + 4, 1);
            std::memcpy(&count, states + at + 4, sizeof count);
            if (native) turn_all<std::uint32_t>(states + at + 4, 1);
            head = 8 + ((count + std::uint64_t{3}) & ~std::uint64_t{3});
        }
        at += head;
        if (at + sizeof(PackedArc) * std::uint64_t{count} > size) return;
        for (std::uint32_t k = 0; k < count; ++k, at += sizeof(PackedArc)) {
            turn_all<std::int32_t>(states + at + offsetof(PackedArc, target), 1);
            turn_all<std::uint16_t>(states + at + offsetof(PackedArc, label), 2);
        }
    }
}

/// Turns all numbers behind the header. `native` says that they are in this machine's
/// order.
void turn_arrays(char* image, const PackedLayout& at, bool native) {
    turn_states(image + PackedLayout::STATES_AT, at, native);
    for (std::uint64_t i = 0; i < at.label_count; ++i) {
        PackedLabel label;
        char* place = image + at.labels_at() + i * sizeof label;
        std::memcpy(&label, place, sizeof label);
        turn_label(label);
        std::memcpy(place, &label, sizeof label);
    }
    turn_all<std::uint32_t>(image + at.wide_labels_at(), at.wide_label_count());
}

bool has_other_order(std::string_view image) {
    std::uint32_t order = 0;
    if (image.size() < sizeof(Header)) return false;
    std::memcpy(&order, image.data() + offsetof(Header, order), sizeof order);
    return order == OTHER_ORDER;
}

/// Turns an image of the other order into one of this machine's; false if its parts don't
/// fill it. The checksum is that of the turned bytes if that of the bytes as they came
/// held.
bool turn_to_own(std::string& image) {
    Header header;
    std::memcpy(&header, image.data(), sizeof header);
    turn_header(header);
    const PackedLayout layout = layout_of(header);
    if (header.total != image.size() || layout.total() != image.size()) return false;
    const bool sound = checksum_of_image(image) == header.checksum;
    turn_arrays(image.data(), layout, false);
    std::memcpy(image.data(), &header, sizeof header);
    header.checksum = checksum_of_image(image) + (sound ? 0 : 1);
    std::memcpy(image.data(), &header, sizeof header);
    return true;
}

}  // namespace

std::string defect_of_graph(const PackedView& view) {
    if (labels_are_misdescribed(view)) return "a symbol is misdescribed";
    const std::vector<bool> begins = begins_of_states(view);
    if (begins.empty() && view.state_count != 0)
        return "the states do not fill their part";
    const std::vector<std::uint16_t> said = descriptions_of_labels(view);
    StateRef ref = 0;
    for (std::uint32_t i = 0; i < view.state_count; ++i, ref = view.behind(ref)) {
        const PackedState state = view.state(ref);
        for (std::uint32_t k = 0; k < state.count; ++k) {
            const PackedArc& arc = state.arcs[k];
            const auto target = static_cast<std::uint32_t>(arc.target);
            if (arc.target >= 0 && (target >= begins.size() || !begins[target]))
                return "an arc leads to no state";
            const std::uint32_t number = view.written_label_of(arc);
            if (number >= view.label_count) return "an arc has no label";
            if (said[number] != (state.first[k] | (arc.label & PackedArc::LONG)))
                return "an arc is misdescribed";
        }
    }
    return "";
}

bool is_compiled_table(std::string_view bytes) {
    return bytes.substr(0, sizeof MAGIC) == std::string_view(MAGIC, sizeof MAGIC);
}

std::string image_of(const PackedTable& table) {
    std::string image(reinterpret_cast<const char*>(table.block().data()),
                      table.block_bytes());
    const PackedView& view = table.view();
    Header header{};
    std::memcpy(header.magic, MAGIC, sizeof MAGIC);
    header.version = VERSION;
    header.order = ORDER;
    header.total = image.size();
    header.state_count = view.state_count;
    header.arc_count = view.arc_count;
    header.label_count = view.label_count;
    header.pool_size = view.pool_size;
    header.states_size = view.states_size;
    header.flags = (view.wide_labels != nullptr ? 1u : 0u) | view.cycles << 1;
    std::memcpy(image.data(), &header, sizeof header);
    header.checksum = checksum_of_image(image);
    std::memcpy(image.data(), &header, sizeof header);
    return image;
}

std::string compiled_table_defect(std::string_view image) {
    if (!is_compiled_table(image) || !has_other_order(image)) {
        // Arrays are read in place, so they must stand as in a file that is mapped.
        std::vector<std::uint64_t> aligned(image.size() / 8 + 1);
        if (!image.empty()) std::memcpy(aligned.data(), image.data(), image.size());
        PackedView view;
        std::string defect = defect_of_sound_order(
            {reinterpret_cast<const char*>(aligned.data()), image.size()}, view);
        return defect.empty() ? defect_of_graph(view) : defect;
    }
    std::string turned(image);
    if (!turn_to_own(turned)) return "of a size that its parts deny";
    return compiled_table_defect(turned);
}

std::string with_other_byte_order(std::string image) {
    if (!is_compiled_table(image) || image.size() < sizeof(Header)) return image;
    if (has_other_order(image)) {
        turn_to_own(image);
        return image;
    }
    Header header;
    std::memcpy(&header, image.data(), sizeof header);
    if (layout_of(header).total() != image.size()) return image;
    turn_arrays(image.data(), layout_of(header), true);
    turn_header(header);
    std::memcpy(image.data(), &header, sizeof header);
    header.checksum = checksum_of_image(image);
    turn(header.checksum);
    std::memcpy(image.data(), &header, sizeof header);
    return image;
}

std::string compile_table(const Taula& table) {
    return image_of(PackedTable(graph_of(table).states));
}

void Image::map(int file, std::size_t size) {
    void* at = ::mmap(nullptr, size, PROT_READ, MAP_SHARED | MAP_POPULATE, file, 0);
    if (at == MAP_FAILED) return;
    mapped_ = static_cast<const char*>(at);
    mapped_size_ = size;
}

std::string compile_table_text(std::string_view text) {
    const std::size_t states = trusted_states(states_of_file(text), text.size());
    return image_of(PackedTable(arcs_of_file(text, states)));
}

std::unique_ptr<Image> Image::open(const std::string& path, bool& compiled) {
    compiled = false;
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return nullptr;
    std::unique_ptr<Image> image(new Image);
    char magic[sizeof MAGIC];
    struct stat status {};
    if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
        ::pread(file, magic, sizeof magic, 0) == sizeof magic) {
        compiled = is_compiled_table({magic, sizeof magic});
    }
    if (compiled) image->map(file, static_cast<std::size_t>(status.st_size));
    ::close(file);
    if (image->mapped_ == nullptr) return nullptr;
    std::string_view bytes(image->mapped_, image->mapped_size_);
    if (has_other_order(bytes)) {
        std::string turned(bytes);
        if (!turn_to_own(turned)) return nullptr;
        image->own_.resize(turned.size() / 8 + 1);
        std::memcpy(image->own_.data(), turned.data(), turned.size());
        bytes = {reinterpret_cast<const char*>(image->own_.data()), turned.size()};
    }
    if (!defect_of_sound_order(bytes, image->view_).empty()) return nullptr;
    return image;
}

Image::~Image() {
    if (mapped_ != nullptr) ::munmap(const_cast<char*>(mapped_), mapped_size_);
}

}  // namespace lemara
