#include "render.h"

#include <algorithm>
#include <string_view>

#include "chunk_places.h"
#include "failure.h"
#include "files.h"
#include "output.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

bool is_blank(std::string_view line) {
    return line.find_first_not_of(" \t\v\f") == line.npos;
}

/// The next line of `text`, which goes on behind it.
std::string_view take_line(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    const bool pair = text.substr(end, 2) == "\r\n";
    text.remove_prefix(std::min(end + (pair ? 2 : 1), text.size()));
    return line;
}

/// The paragraphs of a chunk that are not blank.
std::vector<std::string> paragraphs_of(std::string_view text, Paragraphs ends) {
    std::vector<std::string> paragraphs;
    bool open = false;
    while (!text.empty()) {
        const std::string_view line = take_line(text);
        if (is_blank(line)) {
            open = false;
        } else if (open && ends == Paragraphs::BLANK) {
            paragraphs.back() += '\n' + std::string(line);
        } else {
            paragraphs.emplace_back(line);
            open = true;
        }
    }
    return paragraphs;
}

std::string in_encoding(const std::string& utf8, Encoding encoding) {
    if (encoding == Encoding::UTF_8) return utf8;
    std::string latin1;
    char32_t missing = 0;  // the engine's text is all Latin-1
    latin1_exactly(utf8, latin1, missing);
    return latin1;
}

}  // namespace

int render_texts(const Checker& checker, const RenderArguments& arguments,
                 const std::function<void(const std::string&)>& see) {
    Results results;
    ChunkPlaces places;
    ChunkReader reader(arguments.files, arguments.paragraphs == Paragraphs::BLANK);
    bool failed = false;
    int number = 0;
    for (Chunk chunk; reader.next(chunk);) {
        const ChunkText text(std::move(chunk), arguments.encoding);
        places.enter(text);
        const std::string file = shown_file(reader.files()[text.chunk.file]);
        const std::string complaint = places.complaint(text, file);
        if (!complaint.empty()) message(complaint);
        for (const std::string& paragraph :
             paragraphs_of(text.chunk.text, arguments.paragraphs)) {
            const std::string rendered =
                checker.render(paragraph, arguments.format, arguments.variants, ++number);
            see(rendered);
            results.write(in_encoding(rendered, arguments.encoding));
        }
        results.flush();
        places.leave(text);
        if (text.chunk.trouble.empty()) continue;
        message(text.chunk.trouble);
        failed = true;
    }
    return failed ? FAILED : places.any_invalid() ? FINDINGS : DONE;
}

}  // namespace lemara::tools
