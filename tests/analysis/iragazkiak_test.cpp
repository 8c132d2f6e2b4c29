#include "iragazkiak.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

struct CheckCase {
    std::string label, tokena, analisia;
    bool names, first_capital, names_and_symbols;  // the three case checks in turn
};

const CheckCase CHECKS[] = {
    {"a common noun", "etxe", "etxe<IZE>", true, true, true},
    {"a capital in front of the analysis alone", "ana", "Ana<IZE>", false, false, false},
    {"capitals on both sides", "Ana", "Ana<IZE>", true, true, true},
    {"a capital token, a small analysis", "Etxe", "etxe<IZE>", true, true, true},
    {"a person in lower case", "ana", "ana<IZE><PIB>", false, true, false},
    {"a person with a capital", "Ana", "Ana<IZE><PIB>", true, true, true},
    {"a person in small letters, a capital token", "Ana", "ana<IZE><PIB>", true, true, true},
    {"a person behind a digit passes", "1ana", "ana<IZE><PIB>", true, true, true},
    {"a person behind a sign passes", "-ana", "Ana<IZE><PIB>", true, true, true},
    {"a place in lower case", "bilbo", "bilbo<IZE><LIB>", false, true, false},
    {"a place with a capital", "Bilbo", "Bilbo<IZE><LIB>", true, true, true},
    {"kept: another name is seen by one check alone", "ana", "ana<IZE><IZB>", true, true,
     false},
    {"another name with a capital", "Ana", "Ana<IZE><IZB>", true, true, true},
    {"person and place in lower case", "ana", "ana<PIB><LIB>", false, true, false},
    {"person and place with a capital", "Ana", "ana<PIB><LIB>", true, true, true},
    {"place and other name with a capital", "Ana", "ana<LIB><IZB>", true, true, true},
    {"an accented small letter is not lower", "\361a", "\361a<PIB>", true, true, true},
    {"an accented small letter against a capital", "\361a", "Na<IZE>", true, true, true},
    {"an accented capital is no capital", "abc", "\321bc<IZE>", true, true, true},
    {"the empty token is not lower", "", "Ana<PIB>", true, true, true},
    {"the empty analysis", "etxe", "", true, true, true},
    {"both empty", "", "", true, true, true},

    {"a symbol as written", "km", "km<SNB>", true, true, true},
    {"a symbol with an ending", "kmak", "km<SNB><ABS>", true, true, true},
    {"a symbol in another case", "Km", "km<SNB>", true, true, false},
    {"a symbol cut short", "k", "km<SNB>", true, true, false},
    {"a symbol and an empty token", "", "km<SNB>", true, true, false},
    {"an acronym as written", "EAJ", "EAJ<IZE><SIG>", true, true, true},
    {"an acronym with a capital alone", "Eaj", "EAJ<IZE><SIG>", true, true, false},
    {"an acronym in lower case", "eaj", "EAJ<IZE><SIG>", false, false, false},
    {"an empty symbol passes", "x", "<SNB>", true, true, true},
    {"a symbol's lemma is read past a group", "km", "k[h=x]m<SNB>", true, true, true},
    {"a symbol behind a group and a tag", "kg", "k[h=x]<A>m<SNB>", true, true, false},
    {"kept: a symbol's plus must be typed", "km", "k+m<SNB>", true, true, false},
    {"kept: a symbol's plus is typed", "k+m", "k+m<SNB>", true, true, true},
    {"a person that is a symbol is compared", "Ac", "Ab<PIB><SNB>", true, true, false},
    {"a person that is a symbol, as written", "Ab", "Ab<PIB><SNB>", true, true, true},
    {"an abbreviation is not compared", "Etab", "etab.<LAB>", true, true, true},
};

struct LabCase {
    std::string label, tokena, analisia;
    bool kept;
};

const LabCase LABS[] = {
    {"no such tag", "etxe", "etxe<IZE>", false},
    {"the empty analysis", "", "", false},
    {"kept: the token must equal the analysis, tags and all", "etab.", "etab.<LAB>", false},
    {"kept: a token with the tags in it passes", "etab.<LAB>", "etab.<LAB>", true},
    {"a token that goes on differs", "etab.<LAB>x", "etab.<LAB>", false},
    {"symbols likewise", "km", "km<SNB>", false},
    {"symbols in full", "km<SNB>", "km<SNB>", true},
    {"acronyms likewise", "EAJ", "EAJ<SIG>", false},
    {"acronyms in full", "EAJ<SIG>", "EAJ<SIG>", true},
    {"kept: with a tag in front nothing is compared", "zerbait", "<LAB>", true},
    {"kept: another tag in front will do", "zerbait", "<X>a<SNB>", true},
    {"a group in front is compared", "zerbait", "[h=a]<LAB>", false},
};

// The end of a lemma that is always refused.
const char* const ALWAYS[] = {
    "bidea ireki<", "bat egin<",  "bat etorri<",  "asko izan<",   "bat egon<",
    "bat izan<",    "bat ere<",   "eta bi<",      "eta beste<",   "eta gero<",
    "lagun eraman<", "lagun izan<", "nahi beste<", "nola ez<",     "era batera<",
};

// What is refused together with <PSP> alone.
const char* const WITH_PSP[] = {
    "baina<", "bat<IZE>", "bate<IZE>", "bata<IZE>", "gara<IZE>",
    "ondo<IZE>", "bera<ADJ>", "be<IZE>", "zut<ADJ>",
};

struct HaulCase {
    std::string label, analisia;
    bool kept;
};

const HaulCase HAULS[] = {
    {"a plain noun", "etxe<IZE><ARR>", true},
    {"the empty string", "", true},
    {"a plain bat", "bat<IZE><ARR>", true},
    {"bat with <PSP>", "bat<IZE><ARR><PSP>", false},
    {"<PSP> in front counts as well", "<PSP>bat<IZE>", false},
    {"bat of another class with <PSP>", "bat<DET><PSP>", true},
    {"kept: a longer lemma ends in it", "goizbat<IZE><PSP>", false},
    {"be alone", "be<IZE>", true},
    {"zut as a noun with <PSP>", "zut<IZE><PSP>", true},
    {"bera as an adjective alone", "bera<ADJ>", true},
    {"another <PSP tag is none", "bat<IZE><PSPX>", true},
    {"a lemma that goes on", "bat eginik<ADI>", true},
    {"no tag behind it", "bat egin", true},
    {"kept: it is sought anywhere", "x<IZE>bat egin<ADI>", false},
    {"ondorengo alone", "ondorengo<IZE>", true},
    {"ondorengo with <PSP> alone", "ondorengo<IZE><PSP>", true},
    {"ondorengo with <ELI_IZE> alone", "ondorengo<IZE><ELI_IZE>", true},
    {"ondorengo with both", "ondorengo<IZE><PSP><ELI_IZE>", false},
    {"ondorengo with both in the other order", "ondorengo<ELI_IZE><PSP>", false},
    {"ondorengo may go on", "ondorengoak<IZE><PSP><ELI_IZE>", false},
    {"both without ondorengo", "etxe<IZE><PSP><ELI_IZE>", true},
    {"capitals are another lemma", "Bat egin<ADI>", true},
};

struct WordCase {
    std::string label, word;
    bool capitals;
};

const WordCase WORDS[] = {
    {"the empty string", "", true},
    {"capitals", "ETXE", true},
    {"a capital in front", "Etxe", true},
    {"small letters", "etxe", false},
    {"a capital further on", "eTXE", false},
    {"digits and signs", "12-!", true},
    {"a digit, then a small letter", "1a", false},
    {"an accented capital alone", "\321", true},
    {"accented capitals", "\321A\311", true},
    {"kept: an accented capital in front of small letters", "\321abar", false},
    {"an accented small letter", "A\361", true},
    {"an accented small letter in front", "\361A", false},
    {"the division sign counts as small", "1\367", false},
    {"byte 255 is no small letter", "\377", true},
    {"byte 223 is no small letter", "\337", true},
};

struct CapitalCase {
    std::string label, goikoa, behekoa, result;
};

const CapitalCase CAPITALS[] = {
    {"a name", "Ana<IZE>", "anak", "Anak"},
    {"nothing to carry", "etxe<IZE>", "etxeak", "etxeak"},
    {"capitals inside", "NeWyork<IZE>", "newyorken", "NeWyorken"},
    {"the first tag ends it", "a<B>C", "abcc", "abcc"},
    {"a tag's own capitals are not reached", "<IZE>", "ize", "ize"},
    {"the end of the upper string ends it", "An", "ana", "Ana"},
    {"the end of the lower string ends it", "ANA<IZE>", "an", "AN"},
    {"another letter takes nothing", "Ana<IZE>", "ena", "ena"},
    {"kept: behind an inserted letter equality is by chance", "aNa", "enan", "eNan"},
    {"kept: behind an inserted letter capitals are lost", "xANa", "exana", "exana"},
    {"a capital below stays", "ana<IZE>", "ANA", "ANA"},
    {"accented capitals are not carried", "\321abar<IZE>", "\361abar", "\361abar"},
    {"empty above", "", "ana", "ana"},
    {"empty below", "Ana", "", ""},
    {"the signs beside the letters are none", "@[", "`{", "`{"},
};

struct TailCase {
    std::string label, analisia, tail;
};

const TailCase TAILS[] = {
    {"tags", "etxe<IZE><ARR><ABS>", "<IZE><ARR><ABS>"},
    {"no tags: the lemma itself", "etxe", "etxe"},
    {"no tags, but a group: unchanged", "etxe[h=x]", "etxe[h=x]"},
    {"the empty string", "", ""},
    {"a quality tag goes", "etxe<IZE><0Dial><ABS>", "<IZE><ABS>"},
    {"a quality tag in front goes", "etxe<0Dial><IZE>", "<IZE>"},
    {"only a quality tag", "etxe<0Dial>", ""},
    {"a group goes", "etxe<IZE>[h=x]<ABS>", "<IZE><ABS>"},
    {"a group in the lemma goes with it", "et[h=x]xe<IZE>", "<IZE>"},
    {"kept: an opinion tag stays", "etxe<IZE><1Erd>", "<IZE><1Erd>"},
    {"kept: a dictionary class stays", "etxe<hp1><IZE>", "<hp1><IZE>"},
    {"the marker stays", "etxe<><IZE>", "<><IZE>"},
    {"text between tags stays", "ba<AUR><PRT>etorri<ADI>", "<AUR><PRT>etorri<ADI>"},
    {"kept: a tag in a group of the lemma is the first one", "etxe[h=<X>]<IZE>",
     "<X>]<IZE>"},
    {"an unclosed quality tag ends the scan", "etxe<IZE><0Dial", "<IZE>"},
    {"an unclosed group ends the scan", "etxe<IZE>[h=x", "<IZE>"},
    {"an unclosed tag is copied", "etxe<IZ", "<IZ"},
    {"a group in front of the end", "etxe<IZE>[h=x]", "<IZE>"},
};

}  // namespace

TEST(Iragazkiak, CaseChecks) {
    for (const CheckCase& c : CHECKS) {
        SCOPED_TRACE(c.label);
        const char* const tokena = c.tokena.c_str();
        const char* const analisia = c.analisia.c_str();
        EXPECT_EQ(egiaztatuIzenBereziak(tokena, analisia), c.names);
        EXPECT_EQ(egiaztatuIzenLehenMaiuskulak(tokena, analisia), c.first_capital);
        EXPECT_EQ(egiaztatuIzenBereziakEtaSinboloak(tokena, analisia), c.names_and_symbols);
    }
}

TEST(Iragazkiak, CaseChecksOverEveryFirstByte) {
    for (int token = 1; token < 256; ++token) {
        for (int analysis = 1; analysis < 256; ++analysis) {
            const std::string t(1, static_cast<char>(token));
            const std::string a = std::string(1, static_cast<char>(analysis)) + "<IZE>";
            const bool lower = token >= 'a' && token <= 'z';
            const bool capital = analysis >= 'A' && analysis <= 'Z';
            ASSERT_EQ(egiaztatuIzenLehenMaiuskulak(t.c_str(), a.c_str()), !(lower && capital));
            ASSERT_EQ(egiaztatuIzenBereziak(t.c_str(), a.c_str()), !(lower && capital));
            ASSERT_EQ(egiaztatuIzenBereziakEtaSinboloak(t.c_str(), a.c_str()),
                      !(lower && capital));
        }
    }
}

TEST(Iragazkiak, EgiaztatuLabComparesInFull) {
    for (const LabCase& c : LABS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(egiaztatuLAB(c.tokena.c_str(), c.analisia.c_str()), c.kept);
    }
}

TEST(Iragazkiak, NullPointersAreEmptyStrings) {
    EXPECT_TRUE(egiaztatuIzenBereziak(nullptr, "ana<PIB>"));
    EXPECT_TRUE(egiaztatuIzenBereziak("ana", nullptr));
    EXPECT_TRUE(egiaztatuIzenLehenMaiuskulak(nullptr, nullptr));
    EXPECT_TRUE(egiaztatuIzenBereziakEtaSinboloak("ana", nullptr));
    EXPECT_FALSE(egiaztatuIzenBereziakEtaSinboloak(nullptr, "km<SNB>"));
    EXPECT_FALSE(egiaztatuLAB(nullptr, nullptr));
    EXPECT_TRUE(kenduHAULtxarrak(nullptr, nullptr));
    EXPECT_FALSE(kenduHAULtxarrak("bat egin<ADI>", nullptr)) << "the token is not used";
    EXPECT_TRUE(kalkulatuMaiuskulak(nullptr));
    aldatuMaiuskulakLow("Ana", nullptr);
    char text[] = "ana";
    aldatuMaiuskulakLow(nullptr, text);
    EXPECT_STREQ(text, "ana");
}

TEST(Iragazkiak, RefusesFalseMultiwords) {
    for (const HaulCase& c : HAULS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(kenduHAULtxarrak(c.analisia.c_str(), "edozer"), c.kept);
        EXPECT_EQ(kenduHAULtxarrak(c.analisia.c_str(), ""), c.kept);
    }
    for (const std::string literal : ALWAYS) {
        SCOPED_TRACE(literal);
        EXPECT_FALSE(kenduHAULtxarrak((literal + "X>").c_str(), ""));
        EXPECT_FALSE(kenduHAULtxarrak(("zz" + literal + "X><Y>").c_str(), ""));
        EXPECT_FALSE(kenduHAULtxarrak(literal.c_str(), ""));
        const std::string text = literal.substr(0, literal.size() - 1);
        EXPECT_TRUE(kenduHAULtxarrak((text + "n<X>").c_str(), ""));
    }
    for (const std::string literal : WITH_PSP) {
        SCOPED_TRACE(literal);
        const std::string open = literal.back() == '<' ? literal + "X>" : literal;
        EXPECT_TRUE(kenduHAULtxarrak(open.c_str(), ""));
        EXPECT_FALSE(kenduHAULtxarrak((open + "<PSP>").c_str(), ""));
        EXPECT_FALSE(kenduHAULtxarrak(("<PSP>zz" + open).c_str(), ""));
        EXPECT_TRUE(kenduHAULtxarrak((open + "<PS>").c_str(), ""));
        const std::string broken = "x" + open.substr(1) + "<PSP>";
        EXPECT_TRUE(kenduHAULtxarrak(broken.c_str(), "")) << broken;
    }
}

TEST(Iragazkiak, RefusesFalseMultiwordsWhereverTheyStand) {
    const std::string pieces[] = {"bat", "egin<", "be", "re<", "eta", " ", "x"};
    std::mt19937 random(5);
    std::size_t refused = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (int piece = 0; piece < 12; ++piece)
            text += pieces[random() % std::size(pieces)];
        SCOPED_TRACE(text);
        const bool held = std::any_of(
            std::begin(ALWAYS), std::end(ALWAYS),
            [&](auto* literal) { return text.find(literal) != std::string::npos; });
        refused += held ? 1 : 0;
        EXPECT_EQ(kenduHAULtxarrak(text.c_str(), ""), !held);
    }
    EXPECT_GT(refused, 200u);
}

TEST(Iragazkiak, KalkulatuMaiuskulak) {
    for (const WordCase& c : WORDS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(kalkulatuMaiuskulak(c.word.c_str()), c.capitals);
    }
    for (int byte = 1; byte < 256; ++byte) {
        SCOPED_TRACE("byte " + std::to_string(byte));
        const std::string word(1, static_cast<char>(byte));
        const bool small = (byte >= 97 && byte <= 122) || (byte >= 224 && byte <= 253);
        EXPECT_EQ(kalkulatuMaiuskulak(word.c_str()), !small);
        const bool ascii_capital = byte >= 65 && byte <= 90;
        EXPECT_EQ(kalkulatuMaiuskulak((word + "a").c_str()), ascii_capital);
    }
}

TEST(Iragazkiak, CapitalsAreCarriedDownByIndex) {
    for (const CapitalCase& c : CAPITALS) {
        SCOPED_TRACE(c.label);
        std::string lower = c.behekoa;
        const std::string upper = c.goikoa;
        aldatuMaiuskulakLow(upper.c_str(), lower.data());
        EXPECT_EQ(lower, c.result);
        EXPECT_EQ(upper, c.goikoa);
    }
    for (int above = 1; above < 256; ++above) {
        for (int below = 1; below < 256; ++below) {
            const std::string upper(1, static_cast<char>(above));
            std::string lower(1, static_cast<char>(below));
            aldatuMaiuskulakLow(upper.c_str(), lower.data());
            const bool carried = above >= 'A' && above <= 'Z' && below == above + 32;
            ASSERT_EQ(static_cast<unsigned char>(lower[0]), carried ? above : below);
        }
    }
}

TEST(Iragazkiak, GarbituUppGivesTheTail) {
    for (const TailCase& c : TAILS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(garbitu_upp(c.analisia), c.tail);
    }
}
