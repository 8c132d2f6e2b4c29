#include "asked_words.h"

#include <utility>

#include "files.h"
#include "lemara/checker.h"
#include "lemara/json.h"
#include "text_encoding.h"

namespace lemara::tools {

namespace {

class Answerer {
public:
    Answerer(const AskedWords& asked, Results& results,
             const std::function<Answer(const AskedWord&)>& answer)
        : asked_(asked), results_(results), answer_(answer) {}

    bool run() {
        const bool document = asked_.format == AnswerFormat::JSON;
        if (document) {
            results_.write("{\"version\":" + json_string(version()) + ",\"words\":[\n");
        }
        if (asked_.words.empty()) take_lines();
        for (const std::string& word : asked_.words) {
            if (word == "-") {
                take_lines();
            } else {
                take("command line", word);
            }
        }
        if (document) results_.write("\n]}\n");
        results_.flush();
        return all_good_;
    }

private:
    const AskedWords& asked_;
    Results& results_;
    const std::function<Answer(const AskedWord&)>& answer_;
    bool all_good_ = true, any_ = false;

    void take_lines() {
        LineReader lines("-");
        for (std::string line; lines.next(line);) {
            take(lines.place(), line);
            results_.flush();  // who asks may wait for the answer
        }
    }

    void take(const std::string& place, const std::string& word) {
        const bool text = asked_.format == AnswerFormat::TEXT;
        if (word.empty() && text) return;
        std::string complaint;
        std::optional<std::string> latin1 = decoded(word, asked_.encoding, complaint);
        if (!complaint.empty()) {
            message(place + ": " + complaint + (latin1 ? "" : "; word passed over"));
        }
        AskedWord asked;
        asked.typed =
            asked_.encoding == Encoding::LATIN_1 ? utf8_from_latin1(word) : word;
        asked.foreign = !complaint.empty();
        if (!latin1 || latin1->empty()) {
            all_good_ = false;
            if (!text)
                write_object(asked,
                             "\"error\":" + json_string(latin1 ? "no word" : complaint));
            return;
        }
        asked.latin1 = std::move(*latin1);
        const Answer answer = answer_(asked);
        all_good_ = all_good_ && answer.good;
        if (text) {
            write_text(answer.text);
        } else {
            write_object(asked, answer.members);
        }
    }

    void write_text(const std::string& text) {
        std::string latin1;
        char32_t missing = 0;
        const bool fits =
            asked_.encoding == Encoding::LATIN_1 && latin1_exactly(text, latin1, missing);
        results_.write(fits ? latin1 : text);
    }

    void write_object(const AskedWord& word, const std::string& members) {
        const std::string object =
            "{\"word\":" + json_string(word.typed) + ',' + members + '}';
        if (asked_.format == AnswerFormat::JSONL) {
            results_.write(object + '\n');
        } else {
            results_.write((std::exchange(any_, true) ? ",\n" : "") + object);
        }
    }
};

}  // namespace

bool answer_words(const AskedWords& asked, Results& results,
                  const std::function<Answer(const AskedWord&)>& answer) {
    return Answerer(asked, results, answer).run();
}

}  // namespace lemara::tools
