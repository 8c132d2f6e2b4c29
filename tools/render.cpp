#include "render.h"

#include <algorithm>
#include <string_view>

#include "chunk_places.h"
#include "failure.h"
#include "files.h"
#include "host/piece.h"
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

struct Paragraph {
    std::string text;
    std::size_t line;  // of the chunk, from 0, on which it begins
};

/// The paragraphs of a chunk that are not blank.
std::vector<Paragraph> paragraphs_of(std::string_view text, Paragraphs ends) {
    std::vector<Paragraph> paragraphs;
    bool open = false;
    for (std::size_t number = 0; !text.empty(); ++number) {
        const std::string_view line = take_line(text);
        if (is_blank(line)) {
            open = false;
        } else if (open && ends == Paragraphs::BLANK) {
            paragraphs.back().text += '\n' + std::string(line);
        } else {
            paragraphs.push_back({std::string(line), number});
            open = true;
        }
    }
    return paragraphs;
}

/// Tells the first word of a paragraph that the engine can't be shown.
void tell_lost(const std::string& paragraph, const std::string& place) {
    const host::Bytes lost = host::engine_text(paragraph).lost;
    if (lost.end == 0) return;
    message(
        place + ": " +
        told_lost(std::string_view(paragraph).substr(lost.begin, lost.end - lost.begin)));
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
    ChunkReader reader(arguments.files, chunk_ends(arguments.paragraphs));
    bool failed = false;
    int number = 0;
    for (Chunk chunk; reader.next(chunk);) {
        const ChunkText text(std::move(chunk), arguments.encoding);
        places.enter(text);
        const std::string file = shown_file(reader.files()[text.chunk.file]);
        const std::string complaint = places.complaint(text, file);
        if (!complaint.empty()) message(complaint);
        for (const Paragraph& paragraph :
             paragraphs_of(text.chunk.text, arguments.paragraphs)) {
            tell_lost(paragraph.text,
                      file + ':' + std::to_string(places.line(paragraph.line)));
            const std::string rendered = checker.render(paragraph.text, arguments.format,
                                                        arguments.variants, ++number);
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
