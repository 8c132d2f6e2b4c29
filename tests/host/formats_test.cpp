#include "lemara/formats.h"

#include <algorithm>

#include "host_world.h"

namespace lemara::test {

namespace {

/// The first sentence of a text.
std::vector<Token> sentence_of(const Checker& checker, std::string_view text) {
    std::vector<Token> sentence;
    for (Token& token : checker.analyze(text, Paragraphs::whole)) {
        if (token.sentence == 0) sentence.push_back(std::move(token));
    }
    return sentence;
}

Lexicon lexicon() {
    Lexicon result = small_lexicon();
    result.words({"hori"}, "<DET>");
    result.form("hori", "hori", {"<ADJ>", "<ABS>", "<NUMS>"});
    result.form("ni eta", "ni eta zu", {"<IOR>"});
    result.form("gara", "bagara", {"<ADL>", "<A1>", "<NR_GU>"});
    return result;
}

struct Row {
    std::string label, text, out;
};

}  // namespace

TEST(Formats, Cg3) {
    HostWorld world(lexicon().text(), personal_table());
    const auto checker = world.open();
    const std::string frame = "\"<EBUK>\"\n\t\"EBUK\" EBUK\n";
    const Row rows[] = {
        {"a word", "etxe", "\"<etxe>\"\n\t\"etxe\" <id=1> IZE\n"},
        {"a capital, all capitals", "Etxe ETXE",
         "\"<Etxe>\"\n\t\"etxe\" <id=1> IZE HAS_MAI\n"
         "\"<ETXE>\"\n\t\"etxe\" <id=1> IZE DEN_MAI\n"},
        {"several readings", "hori",
         "\"<hori>\"\n\t\"hori\" <id=1> DET\n\t\"hori\" <id=2> ADJ ABS NUMS\n"},
        {"an unknown word", "zzz", "\"<zzz>\"\n\t\"zzz\" EZZG\n"},
        {"a foreign word as written", "\u0441\u043b\u043e\u0432\u043e",
         "\"<\u0441\u043b\u043e\u0432\u043e>\"\n\t\"\u0441\u043b\u043e\u0432\u043e\" "
         "EZZG "
         "<foreign>\n"},
        {"quotes as written, nothing escaped", "\u201c",
         "\"<\u201c>\"\n\t\"\"\" <id=1> PUNT DEN_MAI\n"},
        {"a last backslash would take the quote", "\\",
         "\"<\\>\"\n\t\"\\\\\" EZZG <foreign>\n"},
        {"a unit has one blank", "ahal \t\n izan",
         "\"<ahal izan>\"\n\t\"ahal izan\" <id=1> ADI\n"},
        {"a better form", "mai", "\"<mai>\"\n\t\"mai\" <id=1> IZE <h=mahai>\n"},
        {"a form to use instead", "txar",
         "\"<txar>\"\n\t\"txar\" <id=1> IZE <e=lagun>\n"},
        {"what is no UTF-8", "\xff", "\"<\ufffd>\"\n\t\"\ufffd\" EZZG <foreign>\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        const std::string out = to_cg3(sentence_of(*checker, row.text), 3, 2, true);
        const std::string head = out.substr(0, out.find('\n') + 1);
        EXPECT_EQ(head.substr(0, 8), "{p=3 s=2");
        EXPECT_EQ(out.substr(head.size()), frame + row.out + frame);
    }
    EXPECT_EQ(to_cg3(sentence_of(*checker, "etxe, etxe!"), 1, 1, false).substr(0, 15),
              "{p=1 s=1 z=1,3,");
    EXPECT_EQ(to_cg3(sentence_of(*checker, "mai"), 1, 1, false).find("<h="),
              std::string::npos);
}

TEST(Formats, ConllU) {
    HostWorld world(lexicon().text(), personal_table());
    const auto checker = world.open();
    const Row rows[] = {
        {"nothing", "", ""},
        {"a word", "etxe",
         "# text = etxe\n"
         "1\tetxe\tetxe\tNOUN\tIZE\t_\t_\t_\t_\tTokenRange=0:4|SpaceAfter=No\n\n"},
        {"other readings are counted; spaces between words are one", "hori  etxe.",
         "# text = hori etxe.\n"
         "1\thori\thori\tDET\tDET\t_\t_\t_\t_\tAlts=1|TokenRange=0:4\n"
         "2\tetxe\tetxe\tNOUN\tIZE\t_\t_\t_\t_\tTokenRange=6:10|SpaceAfter=No\n"
         "3\t.\t.\tPUNCT\tPUNT\t_\t_\t_\t_\tTokenRange=10:11|SpaceAfter=No\n\n"},
        {"the last tag with a class has it; features are sorted", "bagara ",
         "# text = bagara\n"
         "1\tbagara\tgara\tAUX\tADL+A1+NR_GU\t"
         "Mood=Ind|Number[abs]=Plur|Person[abs]=1|Tense=Pres|VerbForm=Fin\t_\t_\t_\t"
         "TokenRange=0:6\n\n"},
        {"a unit has a line for each part", "Ahal\u00a0\n izan ",
         "# text = Ahal izan\n"
         "1\tAhal\tahal\tVERB\t_\t_\t_\t_\t_\tUnit=2|TokenRange=0:4\n"
         "2\tizan\tizan\tVERB\tADI\t_\t_\t_\t_\tTokenRange=7:11\n\n"},
        {"a unit whose lemma has fewer parts", "ni eta zu ",
         "# text = ni eta zu\n"
         "1\tni\t_\tPRON\t_\t_\t_\t_\t_\tUnit=3|TokenRange=0:2\n"
         "2\teta\t_\tPRON\t_\t_\t_\t_\t_\tTokenRange=3:6\n"
         "3\tzu\tni eta\tPRON\tIOR\t_\t_\t_\t_\tTokenRange=7:9\n\n"},
        {"unknown, foreign, address, sign", "zzz \u0436 www.a.eus \u20ac ",
         "# text = zzz \u0436 www.a.eus \u20ac\n"
         "1\tzzz\t_\tX\t_\t_\t_\t_\t_\tTokenRange=0:3\n"
         "2\t\u0436\t_\tX\t_\tForeign=Yes\t_\t_\t_\tTokenRange=4:5\n"
         "3\twww.a.eus\t_\tSYM\t_\t_\t_\t_\t_\tTokenRange=6:15\n"
         "4\t\u20ac\t_\tSYM\t_\t_\t_\t_\t_\tTokenRange=16:17\n\n"},
        {"an accent joins its letter", "n\u0303abar ",
         "# text = \u00f1abar\n"
         "1\t\u00f1abar\t\u00f1abar\tNOUN\tIZE\t_\t_\t_\t_\tTokenRange=0:6\n\n"},
        {"a character is one word, though the tables read three", "\u2026 ",
         "# text = \u2026\n1\t\u2026\t.\tPUNCT\tPUNT\t_\t_\t_\t_\tTokenRange=0:1\n\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(to_conllu(sentence_of(*checker, row.text)), row.out);
    }
}

TEST(Formats, BlankFollowsWhereWhiteSpaceStands) {
    HostWorld world;
    const auto checker = world.open();
    std::string told;
    for (const Token& token : checker->analyze(
             "etxe.\netxe\u200b etxe\u00ad,etxe\r\n etxe", Paragraphs::lines)) {
        told += token.folded + (token.blank_follows ? "_" : "|");
    }
    EXPECT_EQ(told, "etxe|._etxe_etxe|,|etxe_etxe|");
}

}  // namespace lemara::test
