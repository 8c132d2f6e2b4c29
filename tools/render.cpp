#include "render.h"

#include <algorithm>
#include <string_view>

#include "chunk_places.h"
#include "failure.h"
#include "files.h"
#include "host/piece.h"
#include "ordered_jobs.h"
#include "output.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

constexpr std::size_t RENDERED_AT_ONCE = std::size_t{1} << 15;  // bytes

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

/// A chunk and its paragraphs, the first of which is number `first` of all.
struct Work {
    ChunkText text;
    std::vector<Paragraph> paragraphs;
    int first = 1;
};

struct Rendered {
    Work work;
    std::vector<std::string> paragraphs;  // UTF-8
};

/// Writes what the chunks bring, in their order.
class Report {
public:
    Report(const RenderArguments& arguments, const std::vector<std::string>& files,
           const std::function<bool(const std::string&)>& see)
        : arguments_(arguments), files_(files), see_(see) {}

    void take(const Rendered& rendered) {
        if (ended_) return;
        const ChunkText& text = rendered.work.text;
        places_.enter(text);
        const std::string file = shown_file(files_[text.chunk.file]);
        const std::string complaint = places_.complaint(text, file);
        if (!complaint.empty()) message(complaint);
        for (std::size_t i = 0; i < rendered.paragraphs.size() && !ended_; ++i) {
            const Paragraph& paragraph = rendered.work.paragraphs[i];
            tell_lost(paragraph.text,
                      file + ':' + std::to_string(places_.line(paragraph.line)));
            results_.write(in_encoding(rendered.paragraphs[i], arguments_.encoding));
            ended_ = !see_(rendered.paragraphs[i]);
        }
        results_.flush();
        places_.leave(text);
        if (text.chunk.trouble.empty() || ended_) return;
        message(text.chunk.trouble);
        failed_ = true;
    }

    bool ended() const { return ended_; }
    int status() const {
        return failed_ ? FAILED : places_.any_invalid() ? FINDINGS : DONE;
    }

private:
    const RenderArguments& arguments_;
    const std::vector<std::string>& files_;
    const std::function<bool(const std::string&)>& see_;
    Results results_;
    ChunkPlaces places_;
    bool ended_ = false, failed_ = false;
};

}  // namespace

int render_texts(const Checker& checker, const RenderArguments& arguments,
                 const std::function<bool(const std::string&)>& see) {
    ChunkReader reader(arguments.files, chunk_ends(arguments.paragraphs),
                       RENDERED_AT_ONCE);
    Report report(arguments, reader.files(), see);
    const auto render = [&](Work work) {
        Rendered rendered;
        int number = work.first;
        for (const Paragraph& paragraph : work.paragraphs) {
            rendered.paragraphs.push_back(checker.render(paragraph.text, arguments.format,
                                                         arguments.variants, number++));
        }
        rendered.work = std::move(work);
        return rendered;
    };
    OrderedJobs<Work, Rendered> jobs(
        thread_count(arguments.jobs), render,
        [&](const Rendered& rendered) { report.take(rendered); });
    int next = 1;
    for (Chunk chunk; !report.ended() && reader.next(chunk);) {
        Work work;
        work.text = ChunkText(std::move(chunk), arguments.encoding);
        work.paragraphs = paragraphs_of(work.text.chunk.text, arguments.paragraphs);
        work.first = next;
        next += static_cast<int>(work.paragraphs.size());
        jobs.add(std::move(work));
    }
    if (!report.ended()) jobs.finish();
    return report.status();
}

}  // namespace lemara::tools
