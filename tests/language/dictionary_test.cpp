// The personal dictionary over the real network "hp": words that the lexicon lacks, in
// every paradigm, and known words in step with the main network.
#include <algorithm>
#include <set>
#include <string>
#include <utility>

#include "engine/unknown_forms.h"
#include "language.h"

namespace {

using namespace lemara::test;

const Sarea& hp() { return *basque().sareak.at("hp"); }

/// Invented words, each in a class and with the paradigms that its last letters ask for.
struct Paradigm {
    std::string label, word, tag, paradigm;
    std::vector<std::pair<std::string, std::string>> forms;  ///< ending tags, form
};

const Paradigm PARADIGMS[] = {
    {"a noun in a vowel",
     "plorpo",
     "<ARR>",
     "<hp1>",
     {{"ABS MG", "plorpo"},
      {"ABS NUMS", "plorpoa"},
      {"ERG NUMS", "plorpoak"},
      {"DAT NUMS", "plorpoari"},
      {"GEN NUMS", "plorpoaren"},
      {"SOZ NUMS", "plorpoarekin"},
      {"INE NUMS", "plorpoan"},
      {"GEL NUMS", "plorpoko"},
      {"ABL NUMS", "plorpotik"},
      {"ALA NUMS", "plorpora"},
      {"ABS NUMP", "plorpoak"},
      {"ERG NUMP", "plorpoek"},
      {"GEN NUMP", "plorpoen"},
      {"INE NUMP", "plorpoetan"},
      {"ERG PH", "plorpook"},
      {"PAR MG", "plorporik"},
      {"INE MG", "plorpotan"},
      {"ERG MG", "plorpok"}}},
    {"a noun in -a, behind its bare stem",
     "plinta",
     "<ARR>",
     "<hp2>",
     {{"ABS NUMP", "plintak"},
      {"ERG NUMP", "plintek"},
      {"DAT NUMP", "plintei"},
      {"GEN NUMP", "plinten"},
      {"INE NUMP", "plintetan"}}},
    {"a noun in -a, behind the whole word",
     "plinta",
     "<ARR>",
     "<hp3>",
     {{"ABS NUMS", "plinta"},
      {"ERG NUMS", "plintak"},
      {"DAT NUMS", "plintari"},
      {"GEN NUMS", "plintaren"},
      {"INE NUMS", "plintan"},
      {"GEL NUMS", "plintako"},
      {"PAR MG", "plintarik"}}},
    {"a noun in a consonant",
     "plarun",
     "<ARR>",
     "<hp4>",
     {{"ABS MG", "plarun"},
      {"ABS NUMS", "plaruna"},
      {"INE NUMS", "plarunean"},
      {"GEL NUMS", "plaruneko"},
      {"ABL NUMS", "plarunetik"},
      {"ERG MG", "plarunek"},
      {"PAR MG", "plarunik"},
      {"INE NUMP", "plarunetan"},
      {"PRO MG", "plaruntzat"}}},
    {"a noun in -r, in front of a vowel",
     "plokur",
     "<ARR>",
     "<hp5>",
     {{"ABS NUMS", "plokurra"},
      {"GEN NUMS", "plokurraren"},
      {"INE NUMS", "plokurrean"},
      {"ERG NUMP", "plokurrek"},
      {"PAR MG", "plokurrik"}}},
    {"a noun in -r, in front of a consonant",
     "plokur",
     "<ARR>",
     "<hp6>",
     {{"ABS MG", "plokur"}, {"PRO MG", "plokurtzat"}}},
    {"an adjective in a vowel",
     "plindi",
     "<IZO>",
     "<hp1>",
     {{"ABS NUMS", "plindia"}, {"INE NUMP", "plindietan"}, {"PAR MG", "plindirik"}}},
    {"an adjective in -a",
     "plirga",
     "<IZO>",
     "<hp3>",
     {{"ABS NUMS", "plirga"}, {"DAT NUMS", "plirgari"}}},
    {"an adjective in a consonant",
     "plolit",
     "<IZO>",
     "<hp4>",
     {{"ABS NUMS", "plolita"}, {"INE NUMS", "plolitean"}}},
    {"an adjective in -r",
     "plozur",
     "<IZO>",
     "<hp5>",
     {{"ABS NUMS", "plozurra"}, {"INE NUMS", "plozurrean"}}},
    {"a person in a vowel",
     "Plarko",
     "<PIB>",
     "<hp8>",
     {{"ABS NUMS", "Plarko"},
      {"ERG NUMS", "Plarkok"},
      {"DAT NUMS", "Plarkori"},
      {"GEN NUMS", "Plarkoren"},
      {"SOZ NUMS", "Plarkorekin"},
      {"INE BIZ NUMS", "Plarkorengan"}}},
    {"a person in a consonant",
     "Plarken",
     "<PIB>",
     "<hp9>",
     {{"ABS NUMS", "Plarken"},
      {"ERG NUMS", "Plarkenek"},
      {"DAT NUMS", "Plarkeni"},
      {"DES NUMS", "Plarkenentzat"}}},
    {"a person in -r, in front of a consonant",
     "Plaskar",
     "<PIB>",
     "<hp10>",
     {{"ABS NUMS", "Plaskar"}, {"PRO NUMS", "Plaskartzat"}}},
    {"a person in -r, in front of a vowel",
     "Plaskar",
     "<PIB>",
     "<hp11>",
     {{"ERG NUMS", "Plaskarrek"}, {"GEN NUMS", "Plaskarren"}}},
    {"a place in a vowel",
     "Plorko",
     "<LIB>",
     "<hp12>",
     {{"ABS NUMS", "Plorko"},
      {"INE NUMS", "Plorkon"},
      {"GEL NUMS", "Plorkoko"},
      {"ABL NUMS", "Plorkotik"},
      {"ALA NUMS", "Plorkora"},
      {"ABU NUMS", "Plorkoraino"}}},
    {"a place in a consonant",
     "Plorkat",
     "<LIB>",
     "<hp13>",
     {{"INE NUMS", "Plorkaten"}, {"GEL NUMS", "Plorkateko"}, {"ALA NUMS", "Plorkatera"}}},
    {"a place in a sibilant",
     "Plorgiz",
     "<LIB>",
     "<hp13>",
     {{"INE NUMS", "Plorgizen"}, {"GEL NUMS", "Plorgizko"}, {"ABL NUMS", "Plorgiztik"}}},
    {"a place in -r, in front of a consonant",
     "Plorgar",
     "<LIB>",
     "<hp14>",
     {{"ABS NUMS", "Plorgar"}, {"GEL NUMS", "Plorgarko"}, {"ABL NUMS", "Plorgartik"}}},
    {"a place in -r, in front of a vowel",
     "Plorgar",
     "<LIB>",
     "<hp15>",
     {{"INE NUMS", "Plorgarren"}, {"ALA NUMS", "Plorgarrera"}}},
    {"another name in a vowel",
     "Plorketa",
     "<IZB>",
     "<hp16>",
     {{"ERG NUMS", "Plorketak"}, {"INE NUMS", "Plorketan"}, {"GEL NUMS", "Plorketako"}}},
    {"another name in a consonant",
     "Plorkes",
     "<IZB>",
     "<hp17>",
     {{"ERG NUMS", "Plorkesek"}, {"INE NUMS", "Plorkesen"}, {"GEL NUMS", "Plorkeseko"}}},
    {"a place in -tz, whose t goes",
     "Plorgaitz",
     "<LIB>",
     "<hp18>",
     {{"GEL NUMS", "Plorgaizko"}, {"ABL NUMS", "Plorgaiztik"}}},
    {"a place in -tz, whose t stays",
     "Plorgaitz",
     "<LIB>",
     "<hp19>",
     {{"ABS NUMS", "Plorgaitz"},
      {"INE NUMS", "Plorgaitzen"},
      {"ALA NUMS", "Plorgaitzera"}}},
    {"a verbal noun",
     "plortu",
     "<ADI>",
     "<hp20>",
     {{"EZBU", "plortzen"},
      {"ABS NUMS", "plortzea"},
      {"GEL NUMS", "plortzeko"},
      {"ALA NUMS", "plortzera"},
      {"ABL NUMS", "plortzetik"},
      {"MOT NUMS", "plortzeagatik"},
      {"PAR MG", "plortzerik"}}},
    {"a verbal noun behind a sibilant",
     "plaztu",
     "<ADI>",
     "<hp20>",
     {{"EZBU", "plazten"}, {"GEL NUMS", "plazteko"}}},
    {"a participle in a vowel",
     "plortu",
     "<ADI>",
     "<hp21>",
     {{"BURU", "plortu"},
      {"GERO", "plortuko"},
      {"TA", "plortuta"},
      {"TAKO", "plortutako"},
      {"RIK", "plorturik"},
      {"RIKO", "plorturiko"},
      {"ABS NUMS", "plortua"}}},
    {"a participle in -n",
     "ploran",
     "<ADI>",
     "<hp22>",
     {{"BURU", "ploran"}, {"GERO", "plorango"}, {"TA", "ploranda"}, {"RIK", "ploranik"}}},
    {"a participle in -l",
     "plorril",
     "<ADI>",
     "<hp23>",
     {{"BURU", "plorril"}, {"GERO", "plorrilko"}, {"TA", "plorrilda"}}},
    {"the stem of a verb", "plortu", "<ADI>", "<hp24>", {{"", "plor"}}},
    {"a place in -l or -n",
     "Plorgil",
     "<LIB>",
     "<hp25>",
     {{"INE NUMS", "Plorgilen"}, {"GEL NUMS", "Plorgilgo"}, {"ABL NUMS", "Plorgildik"}}},
};

bool is_name(const std::string& tag) {
    return tag == "<PIB>" || tag == "<LIB>" || tag == "<IZB>";
}

/// The tag names of a list in brackets: "<IZE><ARR>" as " IZE ARR".
std::string names_of(const std::string& tags) { return Analisia("x" + tags, "").etiketa; }

/// A dictionary line for each word of the table. The lookup reads as many letters of a
/// token as the shortest word of the file has, so a word that is shorter than all stems
/// is there too.
std::string dictionary_of_paradigms() {
    std::set<std::string> lines = {"plu\t<ARR>\t\t\tHP\n"};
    for (const Paradigm& row : PARADIGMS) {
        lines.insert(row.word + '\t' + row.tag + "\t\t\tHP\n");
    }
    std::string text;
    for (const std::string& line : lines) text += line;
    return text;
}

/// Words of the lexicon that decline in each of the paradigms, with the tags in front of
/// their endings.
struct KnownWord {
    std::string word, class_tag, tags;
    // A name in a sibilant (-ko) and one in another consonant (-eko) share "<hp13>".
    bool more_in_hp = false;
};

const KnownWord KNOWN_WORDS[] = {
    {"etxe", "<ARR>", "<IZE><ARR>"},          {"neska", "<ARR>", "<IZE><ARR>"},
    {"lagun", "<ARR>", "<IZE><ARR>"},         {"txakur", "<ARR>", "<IZE><ARR>"},
    {"handi", "<IZO>", "<ADJ><IZO>"},         {"polit", "<IZO>", "<ADJ><IZO>"},
    {"zuhur", "<IZO>", "<ADJ><IZO>"},         {"Amaia", "<PIB>", "<IZE><PIB>"},
    {"Mikel", "<PIB>", "<IZE><PIB>"},         {"Gaspar", "<PIB>", "<IZE><PIB>"},
    {"Bilbo", "<LIB>", "<IZE><LIB>"},         {"Irun", "<LIB>", "<IZE><LIB>"},
    {"Gasteiz", "<LIB>", "<IZE><LIB>", true}, {"Eibar", "<LIB>", "<IZE><LIB>"},
    {"Zarautz", "<LIB>", "<IZE><LIB>"},       {"Osakidetza", "<IZB>", "<IZE><IZB>"},
    {"hartu", "<ADI>", "<ADI><PART>"},        {"hartu", "<ADI>", "<ADI><ADI_IZE>"},
    {"hartu", "<ADI>", "<ADI><ADOIN>"},       {"joan", "<ADI>", "<ADI><PART>"},
    {"joan", "<ADI>", "<ADI><ADI_IZE>"},      {"hil", "<ADI>", "<ADI><PART>"},
    {"ikusi", "<ADI>", "<ADI><PART>"},        {"aurkeztu", "<ADI>", "<ADI><ADI_IZE>"},
};

using FormsByTags = std::set<std::pair<std::string, std::string>>;

/// Tags and form of everything that `tags` begins.
FormsByTags of_main_network(const KnownWord& known) {
    FormsByTags forms;
    for (const Analisia& record :
         main_table().sortuFormak(known.word, known.tags, false, false)) {
        if (record.lema != known.word || is_derived(record.etiketa)) continue;
        forms.emplace(record.etiketa, record.forma);
    }
    return forms;
}

FormsByTags of_dictionary(const KnownWord& known) {
    FormsByTags forms;
    const std::string start = names_of(known.tags);
    lemara::for_each_unknown_form(
        known.word, known.class_tag, &hp(), [&](const Analisia& record) {
            const std::string& tags = record.etiketa;
            const bool begins =
                tags.compare(0, start.size(), start) == 0 &&
                (tags.size() == start.size() || tags[start.size()] == ' ');
            if (begins && !is_derived(tags)) forms.emplace(tags, record.forma);
            return true;
        });
    return forms;
}

}  // namespace

TEST(Dictionary, EveryParadigmHasItsForms) {
    std::set<std::string> seen;
    for (const Paradigm& row : PARADIGMS) {
        SCOPED_TRACE(row.label);
        seen.insert(row.paradigm);
        HiztegiPertsonala dictionary;
        dictionary.gehitu_sarrera(false, row.word, row.tag, "", "", "");
        const HPsarrera* entry = nullptr;
        for (const auto& root : dictionary.erroak) {
            if (root.second->paradigma == row.paradigm) entry = root.second;
        }
        ASSERT_NE(entry, nullptr) << row.word << " is not in " << row.paradigm;
        const std::string start = names_of(entry->kategoria);
        FormsByTags given;
        for (const Analisia& ending :
             hp().taula->sortuFormak(row.paradigm, "", false, false)) {
            given.emplace(start + ending.etiketa,
                          entry->erroa + ending.forma.substr(row.paradigm.size()));
        }
        for (const auto& [tags, form] : row.forms) {
            const std::string wanted = tags.empty() ? start : start + ' ' + tags;
            EXPECT_EQ(given.count({wanted, form}), 1u)
                << row.word << wanted << ": " << form;
        }
    }
    // The degrees of adjectives have a paradigm that no word is filed under.
    const std::vector<std::string> degrees =
        forms_of(hp().taula->sortuFormak("<hp7>", "", false, false));
    for (const std::string form : {"<hp7>agoa", "<hp7>ena", "<hp7>egia"}) {
        EXPECT_NE(std::find(degrees.begin(), degrees.end(), form), degrees.end()) << form;
    }
    seen.insert("<hp7>");
    for (int i = 1; i <= 25; ++i) {
        EXPECT_EQ(seen.count("<hp" + std::to_string(i) + ">"), 1u) << "no row for " << i;
    }
}

TEST(Dictionary, WordsOfTheUserAreRightInEveryForm) {
    const TempDir folder;
    const std::unique_ptr<Lemara> engine =
        engine_over_tables(folder.write("hiztegia.txt", dictionary_of_paradigms()));
    for (const Paradigm& row : PARADIGMS) {
        SCOPED_TRACE(row.label);
        for (const auto& [tags, form] : row.forms) {
            EXPECT_FALSE(basque().isValid(form, false)) << form << " needs no dictionary";
            // Kept on purpose: a name that was filed with a capital is not found by the
            // lookup.
            const std::vector<Verdict> verdicts = check(*engine, form, false);
            ASSERT_EQ(verdicts.size(), 1u) << form;
            EXPECT_EQ(verdicts[0].kind, is_name(row.tag) ? "ezz" : "ok") << form;
        }
    }
}

TEST(Dictionary, TagsOfAKnownWordGiveTheFormOfAnUnknownOne) {
    struct Case {
        std::string label, model, tag, word, form;
    };
    const Case CASES[] = {
        {"a noun in a vowel", "mendietatik", "<IZE><ARR>", "plorpo", "plorpoetatik"},
        {"a noun in -a", "nesken", "<IZE><ARR>", "plinta", "plinten"},
        {"a noun in a consonant", "lagunarekin", "<IZE><ARR>", "plarun", "plarunarekin"},
        {"a noun in -r", "txakurrei", "<IZE><ARR>", "plokur", "plokurrei"},
        {"the classes may differ", "mendian", "<IZE><ARR>", "plarun", "plarunean"},
        {"an adjective", "politari", "<ADJ><IZO>", "plindi", "plindiari"},
        {"a verbal noun", "hartzeko", "<ADI><ADI_IZE>", "plortu", "plortzeko"},
        {"the future", "hartuko", "<ADI><PART>", "ploran", "plorango"},
        {"a participle", "hartutako", "<ADI><PART>", "plorril", "plorrildako"},
        {"a stem", "har", "<ADI><ADOIN>", "plortu", "plor"},
        {"a person", "Amaiarengana", "<IZE><PIB>", "Plaskar", "Plaskarrengana"},
        {"a place", "Bilboko", "<IZE><LIB>", "Plorgaitz", "Plorgaizko"},
        {"another name", "Osakidetzak", "<IZE><IZB>", "Plorkes", "Plorkesek"},
    };
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        std::size_t readings = 0;
        std::vector<std::string> forms;
        for (const Analisia& reading : basque().analizatuTokena(c.model, "eumorfo")) {
            if (reading.analisia.find(c.tag) == std::string::npos) continue;
            ++readings;
            forms.push_back(basque().sortu_forma_ezezaguna(c.word, reading.etiketa));
        }
        ASSERT_GT(readings, 0u) << c.model;
        EXPECT_NE(std::find(forms.begin(), forms.end(), c.form), forms.end())
            << joined(forms);
    }
}

// One source for both networks: of a known word the dictionary makes what the lexicon
// makes, with the same tags.
TEST(Dictionary, ParadigmsAgreeWithTheMainNetwork) {
    std::size_t count = 0;
    for (const KnownWord& known : KNOWN_WORDS) {
        SCOPED_TRACE(known.word + known.tags);
        const FormsByTags expected = of_main_network(known), given = of_dictionary(known);
        EXPECT_FALSE(expected.empty());
        count += expected.size();
        for (const auto& [tags, form] : expected) {
            EXPECT_EQ(given.count({tags, form}), 1u) << form << tags << " is not in hp";
        }
        if (known.more_in_hp) continue;
        for (const auto& [tags, form] : given) {
            EXPECT_EQ(expected.count({tags, form}), 1u)
                << form << tags << " is only in hp";
        }
    }
    std::cout << count << " forms\n";
    EXPECT_GT(count, 1000u);
}
