// Sentences in CoNLL-U (universaldependencies.org/format.html).
// Tests: tests/host/formats_test.cpp, tests/tools/outside_formats_test.py.
#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/sentence_words.h"
#include "lemara/formats.h"

namespace lemara {

namespace {

struct TagRow {
    std::string_view tag, upos, features;  // "_" for nothing
};

constexpr TagRow TAG_ROWS[] = {
#include "ud_tags.inc"
};

constexpr std::string_view NOTHING = "_";

const TagRow* row_of(std::string_view tag) {
    static const auto rows = [] {
        std::unordered_map<std::string_view, const TagRow*> result;
        for (const TagRow& row : TAG_ROWS) result.emplace(row.tag, &row);
        return result;
    }();
    const auto found = rows.find(tag);
    return found == rows.end() ? nullptr : found->second;
}

std::string small_letters(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

/// Features in the order that the format wants: by name, without regard to case.
class Features {
public:
    void add(std::string_view list) {
        while (list != NOTHING && !list.empty()) {
            const std::string_view feature = list.substr(0, list.find('|'));
            list.remove_prefix(std::min(feature.size() + 1, list.size()));
            by_name_[small_letters(feature.substr(0, feature.find('=')))] = feature;
        }
    }
    std::string text() const {
        std::string result;
        for (const auto& entry : by_name_) {
            result += (result.empty() ? "" : "|") + std::string(entry.second);
        }
        return result.empty() ? std::string(NOTHING) : result;
    }

private:
    std::map<std::string, std::string_view> by_name_;
};

/// What the columns behind FORM tell of a token.
struct Columns {
    std::string lemma{NOTHING}, upos = "X", xpos{NOTHING}, features{NOTHING};
};

Columns columns_of_unread(const Token& token) {
    Columns columns;
    const host::Unread kind = host::kind_of_unread(token.text);
    if (kind != host::Unread::word) columns.upos = "SYM";
    if (kind == host::Unread::word && token.foreign) columns.features = "Foreign=Yes";
    return columns;
}

Columns columns_of(const Token& token) {
    if (token.readings.empty()) return columns_of_unread(token);
    const Reading& reading = token.readings.front();
    Columns columns;
    Features features;
    std::string xpos;
    for (const std::string_view tag : host::names_in(reading.tags)) {
        xpos += (xpos.empty() ? "" : "+") + std::string(tag);
        const TagRow* row = row_of(tag);
        if (row == nullptr) continue;
        if (row->upos != NOTHING) columns.upos = row->upos;
        features.add(row->features);
    }
    if (!xpos.empty()) columns.xpos = xpos;
    if (!reading.lemma.empty()) columns.lemma = reading.lemma;
    columns.features = features.text();
    return columns;
}

/// The columns of a unit's part.
Columns part_of(const Columns& unit, const std::vector<std::string_view>& lemmas,
                std::size_t part, std::size_t count) {
    const bool last = part + 1 == count;
    Columns columns = unit;
    if (lemmas.size() == count) {
        columns.lemma = lemmas[part];
    } else if (!last) {
        columns.lemma = NOTHING;
    }
    if (!last) columns.xpos = columns.features = NOTHING;
    return columns;
}

/// Numbers the lines of a sentence.
class SentenceLines {
public:
    void add(const Token& token) {
        const std::vector<host::Word> words = host::words_of(token.text, true);
        const Columns columns = columns_of(token);
        const std::vector<std::string_view> lemmas = host::names_in(columns.lemma);
        for (std::size_t i = 0; i < words.size(); ++i) {
            const bool last = i + 1 == words.size();
            std::string misc;
            if (i == 0 && !last) misc += "|Unit=" + std::to_string(words.size());
            if (i == 0 && token.readings.size() > 1) {
                misc += "|Alts=" + std::to_string(token.readings.size() - 1);
            }
            const std::size_t start = token.span.begin.code_point;
            misc += "|TokenRange=" + std::to_string(start + words[i].begin) + ':' +
                    std::to_string(start + words[i].end);
            const bool blank = !last || token.blank_follows;
            if (!blank) misc += "|SpaceAfter=No";
            write(words[i].form, part_of(columns, lemmas, i, words.size()),
                  misc.substr(1));
            text_ += words[i].form;
            if (blank) text_ += ' ';
        }
    }

    std::string text() const {
        const std::size_t end = text_.find_last_not_of(' ');
        if (end == text_.npos) return "";
        return "# text = " + text_.substr(0, end + 1) + '\n' + lines_ + '\n';
    }

private:
    std::string text_, lines_;
    std::size_t number_ = 0;

    void write(const std::string& form, const Columns& columns, const std::string& misc) {
        lines_ += std::to_string(++number_) + '\t' + form + '\t' + columns.lemma + '\t' +
                  columns.upos + '\t' + columns.xpos + '\t' + columns.features +
                  "\t_\t_\t_\t" + misc + '\n';
    }
};

}  // namespace

std::string to_conllu(const std::vector<Token>& sentence) {
    SentenceLines lines;
    for (const Token& token : sentence) lines.add(token);
    return lines.text();
}

}  // namespace lemara
