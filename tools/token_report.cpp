#include "token_report.h"

#include <utility>

#include "lemara/formats.h"
#include "lemara/json.h"
#include "text_encoding.h"

namespace lemara::tools {

void TokenReport::start() {
    if (format_ == TokenFormat::JSON) {
        write_("{\"version\":" + json_string(version()) + ",\"tokens\":[\n");
    }
}

void TokenReport::finish() {
    end_chunk();
    if (format_ == TokenFormat::JSON) write_("\n]}\n");
}

void TokenReport::start_file(const std::string& name) {
    end_chunk();
    file_ = name;
    file_told_ = false;
    paragraphs_ = sentences_ = 0;
}

void TokenReport::take(Token token) {
    if (in_paragraph_ && token.paragraph != paragraph_) {
        end_chunk();
    } else if (!waiting_.empty() && token.sentence != sentence_) {
        end_sentence();
    }
    paragraph_ = token.paragraph;
    sentence_ = token.sentence;
    waiting_.push_back(std::move(token));
    in_paragraph_ = true;
}

void TokenReport::end_chunk() {
    end_sentence();
    if (!in_paragraph_) return;
    in_paragraph_ = false;
    in_this_paragraph_ = 0;
    ++paragraphs_;
    ++all_paragraphs_;
}

void TokenReport::end_sentence() {
    if (waiting_.empty()) return;
    switch (format_) {
        case TokenFormat::CG3:
            write_(
                to_cg3(waiting_, all_paragraphs_ + 1, in_this_paragraph_ + 1, values_));
            break;
        case TokenFormat::CONLLU:
            write_conllu();
            break;
        default:
            write_json();
    }
    waiting_.clear();
    ++sentences_;
    ++all_sentences_;
    ++in_this_paragraph_;
}

void TokenReport::write_conllu() {
    std::string comments;
    if (!std::exchange(file_told_, true))
        comments += "# newdoc id = " + printable(file_) + '\n';
    if (in_this_paragraph_ == 0) comments += "# newpar\n";
    write_(comments + "# sent_id = " + std::to_string(all_sentences_ + 1) + '\n' +
           to_conllu(waiting_));
}

void TokenReport::write_json() {
    const std::string start = "{\"file\":" + json_string(file_) + ',';
    for (Token& token : waiting_) {
        token.paragraph = paragraphs_;
        token.sentence = sentences_;
        const std::string object = start + to_json(token).substr(1);
        if (format_ == TokenFormat::JSONL) {
            write_(object + '\n');
        } else {
            write_((std::exchange(any_, true) ? ",\n" : "") + object);
        }
    }
}

}  // namespace lemara::tools
