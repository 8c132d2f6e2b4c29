// Checking and analysing texts. The source is read piece by piece; the engine's tokens
// come with their places in the piece, and those lead back to the source. Tests:
// tests/host/Checker_check_test.cpp, tests/host/positions_test.cpp.
#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "analysis/messages.h"
#include "engine/propose.h"
#include "engine/verdicts.h"
#include "host/characters.h"
#include "host/inside.h"
#include "host/ruler.h"
#include "lemara/utf8.h"
#include "output/write.h"
#include "text/sentence_analysis.h"

namespace lemara {

using host::Bytes;
using host::Judged;
using host::Piece;
using host::PieceReader;
using host::Ruler;
using host::utf8_from_latin1;

namespace {

using Clock = std::chrono::steady_clock;
using Reading_ = std::shared_lock<host::ReadWriteLock>;

constexpr std::size_t LONGEST_TO_PROPOSE_FOR = 100;  // bytes
constexpr std::size_t MOST_REMEMBERED = 4096;        // answers that one check keeps

constexpr char MAIN_NETWORK[] = "eumorfo";

bool is_stand_in(const std::string& text) {
    return text.find(host::STAND_IN) != std::string::npos;
}

bool has_letter(const std::string& text) {
    return std::any_of(text.begin(), text.end(), host::is_letter);
}

/// A time after which no new candidate is tried.
class Deadline {
public:
    explicit Deadline(std::chrono::milliseconds time)
        : limited_(time.count() > 0),
          end_(limited_ ? Clock::now() + time : Clock::now()) {}

    bool is_over() const { return limited_ && Clock::now() >= end_; }
    bool limited() const { return limited_; }

private:
    bool limited_;
    Clock::time_point end_;
};

/// What is told of an unknown or deviant word.
struct Advice {
    Kind kind = Kind::unknown;
    std::vector<std::string> forms;  // Latin-1
    bool complete = true;
};

void append_recommended(const Lemara& engine, const Tokena& token,
                        std::vector<std::string>& forms, bool& instead) {
    bool first = true;
    for_each_recommendation(engine, token, [&](const Recommendation& advice) {
        if (std::exchange(first, false)) instead = advice.instead;
        for (const Analisia& form : advice.forms) forms.push_back(form.forma);
        if (!advice.forms.empty()) return;
        forms.push_back(
            engine.sortu_forma_ezezaguna(advice.lemmas, advice.analysis.etiketa));
    });
}

/// Gives advice within the limits of one check.
class Adviser {
public:
    Adviser(const host::CheckerInside& inside, const CheckOptions& options);

    const Advice& on(const Tokena& token, Kind kind);

private:
    Advice think(const Tokena& token, Kind kind);
    void keep_accepted(Advice& advice, const Deadline& deadline);
    std::vector<std::string> candidates(const Tokena& token, Advice& advice,
                                        const Deadline& deadline);

    const host::CheckerInside& inside_;
    const CheckOptions& options_;
    const Deadline deadline_;
    std::unordered_map<std::string, Advice> known_;
};

}  // namespace

std::vector<Judged> host::CheckerInside::analyse(const Piece& piece) const {
    std::vector<Judged> result;
    const Sarea* main_network = network(MAIN_NETWORK);
    if (main_network == nullptr) return result;
    std::size_t start = 0, number = 0;
    for (const std::size_t end : sentence_ends(piece.latin1, main_network->taula)) {
        Esaldia sentence(0, piece.latin1.substr(start, end - start));
        const std::size_t offset =
            end - sentence.testua.size();  // blanks in front are gone
        start = end;
        TokenPlaces places;
        tokenise_plain(sentence, places);
        analyse_sentence(sentence, engine->sareak, *engine->hiztegiPertsonala, true,
                         &places);
        for (std::size_t i = 0; i < places.size(); ++i) {
            const Bytes source = {piece.sources[offset + places[i].begin].begin,
                                  piece.sources[offset + places[i].end - 1].end};
            result.push_back({std::move(sentence.tokenak[i]), source, number});
        }
        if (!places.empty()) ++number;
    }
    return result;
}

std::optional<Kind> host::CheckerInside::kind_of(const Tokena& token) const {
    if (is_stand_in(token.testua) || !has_letter(token.testua)) return std::nullopt;
    if (is_unknown(token)) return Kind::unknown;
    for (const Analisia& analysis : token.analisiak) {
        if (contains(analysis.analisia, "<Rare>")) continue;
        if (analysis.hobe.empty() && analysis.erabili.empty()) return std::nullopt;
    }
    for (const Analisia& analysis : token.analisiak) {
        if (contains(analysis.analisia, "<Rare>")) continue;
        return analysis.hobe.empty() ? Kind::use_instead : Kind::better_form;
    }
    return std::nullopt;
}

bool host::CheckerInside::accepts(const std::string& latin1) const {
    const std::string text = utf8_from_latin1(latin1);
    PieceReader reader(text, Paragraphs::whole);
    const Reading_ reading(lock);
    for (Piece piece; reader.next(piece);) {
        for (const Judged& judged : analyse(piece)) {
            if (kind_of(judged.token)) return false;
        }
    }
    return true;
}

namespace {

Adviser::Adviser(const host::CheckerInside& inside, const CheckOptions& options)
    : inside_(inside), options_(options), deadline_(options.time_in_all) {}

const Advice& Adviser::on(const Tokena& token, Kind kind) {
    // Of a known word its readings matter too, and they are the same wherever it stands
    // alone.
    const std::string key = (kind == Kind::unknown ? "?" : "!") + token.testua;
    const auto found = known_.find(key);
    if (found != known_.end()) return found->second;
    if (known_.size() >= MOST_REMEMBERED) known_.clear();
    return known_[key] = think(token, kind);
}

Advice Adviser::think(const Tokena& token, Kind kind) {
    Advice advice;
    advice.kind = kind;
    const Deadline deadline(options_.time_per_word);
    std::vector<std::string> all;
    try {
        all = candidates(token, advice, deadline);
    } catch (const std::out_of_range&) {
        // A table that generates what it can't: no forms then.
    }
    advice.forms = std::move(all);
    keep_accepted(advice, deadline);
    return advice;
}

std::vector<std::string> Adviser::candidates(const Tokena& token, Advice& advice,
                                             const Deadline& deadline) {
    std::vector<std::string> forms;
    const Reading_ reading(inside_.lock);
    const Lemara& engine = *inside_.engine;
    if (advice.kind != Kind::unknown) {
        bool instead = false;
        if (options_.most_forms > 0) append_recommended(engine, token, forms, instead);
        return forms;
    }
    Tokena alone(token.testua, token.hutsunea, 0);
    // The flag of its place may be that of another token.
    alone.maiuskula = kalkulatuMaiuskulak(alone.testua.c_str());
    if (options_.most_forms == 0) {
        if (has_entry_behind(engine, alone)) advice.kind = Kind::unit_start;
        return forms;
    }
    for (const Analisia& entry : entries_behind(engine, alone))
        forms.push_back(entry.forma);
    if (!forms.empty()) {
        advice.kind = Kind::unit_start;
        return forms;
    }
    if (token.testua.size() > LONGEST_TO_PROPOSE_FOR) return forms;
    const auto go_on = [&] {
        if (!deadline.is_over() && !deadline_.is_over()) return true;
        advice.complete = false;
        return false;
    };
    const bool limited = deadline.limited() || deadline_.limited();
    return propose(engine, token.testua,
                   limited ? std::function<bool()>(go_on) : nullptr);
}

void Adviser::keep_accepted(Advice& advice, const Deadline& deadline) {
    std::vector<std::string> kept;
    for (std::string& form : advice.forms) {
        if (kept.size() >= options_.most_forms) break;
        if (deadline.is_over() || deadline_.is_over()) {
            advice.complete = false;
            break;
        }
        if (form.empty() || std::find(kept.begin(), kept.end(), form) != kept.end())
            continue;
        if (is_stand_in(form) || !inside_.accepts(form)) continue;
        kept.push_back(std::move(form));
    }
    advice.forms = std::move(kept);
}

bool is_accepted(const CheckOptions& options, const std::string& latin1) {
    if (options.accepted == nullptr || options.accepted->empty()) return false;
    return options.accepted->count(utf8_from_latin1(latin1)) > 0 ||
           options.accepted->count(utf8_from_latin1(tolowercase(latin1))) > 0;
}

std::string written(std::string_view text, Bytes source) {
    return std::string(text.substr(source.begin, source.end - source.begin));
}

std::string trimmed(const std::string& tags) {
    const std::size_t first = tags.find_first_not_of(' ');
    return first == std::string::npos ? "" : tags.substr(first);
}

Reading reading_of(const Analisia& analysis) {
    return {utf8_from_latin1(analysis.lema),
            utf8_from_latin1(trimmed(analysis.etiketa)),
            analysis.hiztegia,
            utf8_from_latin1(analysis.analisia),
            utf8_from_latin1(analysis.hobe),
            utf8_from_latin1(analysis.erabili),
            utf8_from_latin1(analysis.sai)};
}

Token token_of(std::string_view text, const Judged& judged, Ruler& ruler) {
    Token token;
    token.span = ruler.measure(judged.source);
    token.text = written(text, judged.source);
    token.foreign = is_stand_in(judged.token.testua) && token.text != judged.token.testua;
    if (!token.foreign) token.folded = utf8_from_latin1(judged.token.testua);
    token.blank_follows = judged.token.hutsunea;
    token.known =
        !token.foreign && !judged.token.analisiak.empty() && !is_unknown(judged.token);
    if (!token.known) return token;
    for (const Analisia& analysis : judged.token.analisiak) {
        token.readings.push_back(reading_of(analysis));
    }
    return token;
}

/// A place in a piece where there is something to tell.
struct Spot {
    Bytes source;
    const Tokena* token;  // null: a foreign word
    Kind kind;
};

std::vector<Spot> spots_of(const host::CheckerInside& inside, const Piece& piece,
                           const std::vector<Judged>& tokens,
                           const CheckOptions& options) {
    std::vector<Spot> spots;
    auto foreign = piece.foreign.begin();
    const auto take_foreign = [&](std::size_t before) {
        for (; foreign != piece.foreign.end() && foreign->begin < before; ++foreign) {
            if (options.report_foreign)
                spots.push_back({*foreign, nullptr, Kind::foreign});
        }
    };
    for (const Judged& judged : tokens) {
        const auto kind = inside.kind_of(judged.token);
        if (!kind || is_accepted(options, judged.token.testua)) continue;
        take_foreign(judged.source.begin);
        spots.push_back({judged.source, &judged.token, *kind});
    }
    take_foreign(static_cast<std::size_t>(-1));
    return spots;
}

}  // namespace

void Checker::check(std::string_view text, const CheckOptions& options,
                    const std::function<bool(const Finding&)>& take) const {
    const Quiet quiet;
    PieceReader reader(text, options.paragraphs);
    Ruler ruler(text);
    Adviser adviser(*inside_, options);
    for (Piece piece; reader.next(piece);) {
        std::vector<Judged> tokens;
        {
            const Reading_ reading(inside_->lock);
            tokens = inside_->analyse(piece);
        }
        for (const Spot& spot : spots_of(*inside_, piece, tokens, options)) {
            Finding finding;
            finding.kind = spot.kind;
            finding.span = ruler.measure(spot.source);
            finding.token = written(text, spot.source);
            if (spot.token != nullptr) {
                const Advice& advice = adviser.on(*spot.token, spot.kind);
                finding.kind = advice.kind;
                finding.complete = advice.complete;
                for (const std::string& form : advice.forms) {
                    finding.forms.push_back(utf8_from_latin1(form));
                }
            }
            if (!take(finding)) return;
        }
    }
}

std::vector<Finding> Checker::check(std::string_view text,
                                    const CheckOptions& options) const {
    std::vector<Finding> findings;
    check(text, options, [&](const Finding& finding) {
        findings.push_back(finding);
        return true;
    });
    return findings;
}

void Checker::analyze(std::string_view text, Paragraphs paragraphs,
                      const std::function<bool(const Token&)>& take) const {
    const Quiet quiet;
    PieceReader reader(text, paragraphs);
    Ruler ruler(text);
    std::size_t sentences = 0;
    for (Piece piece; reader.next(piece);) {
        std::vector<Judged> tokens;
        {
            const Reading_ reading(inside_->lock);
            tokens = inside_->analyse(piece);
        }
        for (const Judged& judged : tokens) {
            Token token = token_of(text, judged, ruler);
            token.paragraph = piece.paragraph;
            token.sentence = sentences + judged.sentence;
            if (!take(token)) return;
        }
        if (!tokens.empty()) sentences += tokens.back().sentence + 1;
    }
}

std::vector<Token> Checker::analyze(std::string_view text, Paragraphs paragraphs) const {
    std::vector<Token> tokens;
    analyze(text, paragraphs, [&](const Token& token) {
        tokens.push_back(token);
        return true;
    });
    return tokens;
}

bool Checker::valid(std::string_view word) const {
    const Quiet quiet;
    PieceReader reader(word, Paragraphs::whole);
    const Reading_ reading(inside_->lock);
    for (Piece piece; reader.next(piece);) {
        for (const Judged& judged : inside_->analyse(piece)) {
            if (inside_->kind_of(judged.token)) return false;
        }
    }
    return true;
}

std::vector<std::string> Checker::suggest(std::string_view word, std::size_t most,
                                          std::chrono::milliseconds time) const {
    const Quiet quiet;
    CheckOptions options;
    options.paragraphs = Paragraphs::whole;
    options.most_forms = most;
    options.time_in_all = time;
    const std::vector<Finding> findings = check(word, options);
    if (findings.empty()) {
        // Known: what could have been meant as well.
        bool foreign = false;
        const std::string folded = host::fold_word(word, &foreign);
        if (foreign || folded.empty() || folded.find(' ') != std::string::npos) return {};
        Tokena token(folded, false, 0);
        Adviser adviser(*inside_, options);
        std::vector<std::string> forms;
        for (const std::string& form : adviser.on(token, Kind::unknown).forms) {
            if (form != folded) forms.push_back(utf8_from_latin1(form));
        }
        return forms;
    }
    // What is wrong may be one part of a word with a hyphen, or several.
    std::string front(word.substr(0, findings[0].span.begin.byte));
    std::string behind(word.substr(findings[0].span.end.byte));
    for (std::size_t i = findings.size(); i-- > 1;) {
        if (findings[i].forms.empty()) return {};
        const std::size_t at = findings[i].span.begin.byte - findings[0].span.end.byte;
        behind.replace(at, findings[i].token.size(), findings[i].forms[0]);
    }
    std::vector<std::string> forms;
    for (const std::string& form : findings[0].forms) {
        std::string whole = front + form + behind;
        if (front.empty() && behind.empty()) {
            forms.push_back(std::move(whole));
        } else if (valid(whole)) {
            forms.push_back(std::move(whole));
        }
    }
    return forms;
}

std::vector<std::string> Checker::lemmas(std::string_view word) const {
    std::vector<std::string> result;
    for (const Token& token : analyze(word, Paragraphs::whole)) {
        for (const Reading& reading : token.readings) {
            if (std::find(result.begin(), result.end(), reading.lemma) == result.end()) {
                result.push_back(reading.lemma);
            }
        }
        break;  // of the first token
    }
    return result;
}

std::vector<Form> Checker::generate(std::string_view word, std::string_view tag) const {
    const Quiet quiet;
    bool foreign = false;
    const std::string folded = host::fold_word(word, &foreign);
    std::string name = host::fold_word(tag);
    if (foreign || folded.empty() || name.empty()) return {};
    // "<" and ">" are no letters of a word and come back as stand-ins.
    name.erase(std::remove(name.begin(), name.end(), host::STAND_IN), name.end());
    std::vector<Form> forms;
    const Reading_ reading(inside_->lock);
    try {
        for (const Analisia& form :
             inside_->engine->sortuFormak(folded, '<' + name + '>')) {
            forms.push_back({utf8_from_latin1(form.forma), reading_of(form)});
        }
    } catch (const std::out_of_range&) {
        // A table whose forms are shorter than their class: none.
    }
    return forms;
}

std::string Checker::render(std::string_view paragraph, Format format,
                            bool variants) const {
    const Quiet quiet;
    std::string folded = host::fold_word(paragraph);
    const Reading_ reading(inside_->lock);
    const Lemara& engine = *inside_->engine;
    std::ostringstream out;
    try {
        if (format == Format::check) {
            return utf8_from_latin1(engine.getParagrafoaZuzenlex(folded, variants));
        }
        const Paragrafoa analysed = engine.analizatu_paragrafoa(1, folded);
        switch (format) {
            case Format::multext:
                write_multext(out, analysed, variants);
                break;
            case Format::cg3:
                write_cg3(out, analysed, variants);
                break;
            case Format::ikute:
                write_ikute(out, analysed);
                break;
            default:
                write_zuzenlex(out, analysed, inside_->network(MAIN_NETWORK));
                break;
        }
    } catch (const std::out_of_range&) {
        return "";
    }
    return utf8_from_latin1(out.str());
}

}  // namespace lemara
