// The paragraph check in the engine's own mark-up.
#include "check_markup.h"

#include <algorithm>
#include <string_view>

#include "failure.h"
#include "output.h"

namespace lemara::tools {

namespace {

bool begins(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

/// True if a token of the mark-up is unknown or has a better form. Nothing in the mark-up
/// is escaped, but no token begins a line, so lines can be told apart.
bool has_findings(std::string_view markup) {
    bool in_verdict = false;
    while (!markup.empty()) {
        const std::size_t end = std::min(markup.find('\n'), markup.size());
        const std::string_view line = markup.substr(0, end);
        markup.remove_prefix(std::min(end + 1, markup.size()));
        if (begins(line, "\t<prop k=\"ezz\"")) return true;
        if (in_verdict && begins(line, "\t\t<")) return true;
        in_verdict = line == "\t<prop>";
    }
    return false;
}

}  // namespace

int check_as_markup(const MarkupArguments& arguments) {
    Session session(arguments.engine);
    TextReader reader(arguments.files, arguments.engine.encoding, arguments.paragraphs,
                      message);
    bool findings = false;
    for (Piece piece; reader.next(piece);) {
        if (!piece.usable) {
            session.write_raw(piece.text + '\n');
            continue;
        }
        const std::string markup =
            session.engine().getParagrafoaZuzenlex(piece.text, !arguments.no_suggest);
        findings = findings || has_findings(markup);
        session.write(markup);
        session.flush();
    }
    session.flush();
    return findings || reader.refused() ? FINDINGS : DONE;
}

}  // namespace lemara::tools
