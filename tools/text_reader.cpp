#include "text_reader.h"

#include "host/piece.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

bool is_blank(const std::string& line) {
    return line.find_first_not_of(" \t\r") == line.npos;
}

}  // namespace

std::string told_lost(std::string_view text) {
    constexpr std::size_t MOST = 40;  // bytes
    std::size_t end = 0;
    while (end < text.size() && end < MOST) end += character_at(text, end).length;
    const char* rest = end < text.size() ? "..." : "";
    return '"' + printable(text.substr(0, end)) + rest +
           "\" is beyond what the tables can hold; read as \"*\"";
}

std::string encoded(const std::string& latin1, Encoding encoding) {
    return encoding == Encoding::LATIN_1 ? latin1 : utf8_from_latin1(latin1);
}

std::optional<std::string> decoded(const std::string& text, Encoding encoding,
                                   std::string& complaint) {
    if (encoding == Encoding::LATIN_1) {
        return host::engine_text(utf8_from_latin1(text)).latin1;
    }
    const std::size_t invalid = find_invalid_utf8(text);
    if (invalid != text.npos) {
        complaint = "not UTF-8 at byte " + std::to_string(invalid + 1);
        return std::nullopt;
    }
    host::EngineText result = host::engine_text(text);
    const auto [begin, end] = result.lost;
    if (end > 0) complaint = told_lost(std::string_view(text).substr(begin, end - begin));
    return std::move(result.latin1);
}

TextReader::TextReader(std::vector<std::string> files, Encoding encoding,
                       Paragraphs paragraphs, Complain complain)
    : files_(std::move(files)),
      encoding_(encoding),
      paragraphs_(paragraphs),
      complain_(std::move(complain)) {
    if (files_.empty()) files_.push_back("-");
}

TextReader::Found TextReader::next_line(std::string& text) {
    if (!lines_->next(text)) {
        behind_ += lines_->bytes_read();
        lines_.reset();
        ++file_;
        return Found::FILE_END;
    }
    std::string complaint;
    std::optional<std::string> line = decoded(text, encoding_, complaint);
    if (!line) {
        complain_(lines_->place() + ": " + complaint + "; line passed on unchecked");
        refused_ = true;
        return Found::REFUSED;
    }
    if (!complaint.empty()) complain_(lines_->place() + ": " + complaint);
    text = std::move(*line);
    return is_blank(text) ? Found::BLANK : Found::LINE;
}

bool TextReader::next(Piece& piece) {
    if (waiting_) {
        piece = std::move(*waiting_);
        waiting_.reset();
        return true;
    }
    piece = Piece();
    while (file_ < files_.size()) {
        if (!lines_) lines_ = std::make_unique<LineReader>(files_[file_]);
        std::string line;
        const Found found = next_line(line);
        if (found == Found::LINE) {
            piece.text += (piece.text.empty() ? "" : " ") + line;
            if (paragraphs_ == Paragraphs::LINES) return true;
        } else if (found == Found::REFUSED) {
            Piece refused{false, std::move(line)};
            if (piece.text.empty()) {
                piece = std::move(refused);
            } else {
                waiting_ = std::move(refused);
            }
            return true;
        } else if (!piece.text.empty()) {
            return true;
        }
    }
    return false;
}

}  // namespace lemara::tools
