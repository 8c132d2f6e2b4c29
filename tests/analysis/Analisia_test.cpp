#include "Analisia.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "analysis/RecordText.h"

namespace {

struct TagCase {
    std::string label, analisia, lema, etiketa, twol, tasuna, iritzia;
};

const TagCase TAGS[] = {
    {"a noun", "etxe<IZE><ARR>", "etxe", " IZE ARR", "+Ize+Arr", "", ""},
    {"no tag at all", "etxe", "etxe", "", "", "", ""},
    {"no tag, but a group", "etxe[h=x]ak", "etxeak", "", "", "", ""},
    {"the empty string", "", "", "", "", "", ""},
    {"a tag alone", "<IZE>", "", " IZE", "+Ize", "", ""},
    {"the first tag ends the lemma", "etxe<IZE>ko<ARR>", "etxe", " IZE ARR", "+Ize+Arr", "",
     ""},
    {"a lemma with a blank", "bat egin<ADI>", "bat egin", " ADI", "+Adi", "", ""},
    {"a lemma with capitals", "New York<IZE>", "New York", " IZE", "+Ize", "", ""},
    {"Latin-1 passes through", "\361abar<IZE>", "\361abar", " IZE", "+Ize", "", ""},

    {"a plus in the lemma goes", "sagar+ondo<IZE>", "sagarondo", " IZE", "+Ize", "", ""},
    {"all plus signs go", "+a+b+<IZE>", "ab", " IZE", "+Ize", "", ""},
    {"a lemma that is a plus stays", "+<IZE>", "+", " IZE", "+Ize", "", ""},
    {"two plus signs go both", "++<IZE>", "", " IZE", "+Ize", "", ""},
    {"a plus and a letter lose the plus", "+a<IZE>", "a", " IZE", "+Ize", "", ""},
    {"a plus goes without any tag", "a+b", "ab", "", "", "", ""},
    {"kept: a web address keeps it", "a+b<WEB>", "a+b", " WEB", "+Web", "", ""},
    {"kept: WEB anywhere in the tags will do", "a+b<IZE><XWEBY>", "a+b", " IZE XWEBY",
     "+Ize+Xweby", "", ""},
    {"a small web is no WEB", "a+b<web>", "ab", " web", "+Web", "", ""},
    {"WEB in a quality tag is not in the tags", "a+b<IZE><0WEB>", "ab", " IZE", "+Ize",
     " 0WEB", ""},
    {"kept: WEB across two names is none", "a+b<W><EB>", "ab", " W EB", "+W+Eb", "", ""},

    {"a quality tag", "etxe<IZE><0Dial>", "etxe", " IZE", "+Ize", " 0Dial", ""},
    {"an opinion tag", "etxe<IZE><1Erd>", "etxe", " IZE", "+Ize", "", " 1Erd"},
    {"several of both in order", "e<0A><1B><X><0C><1D>", "e", " X", "+X", " 0A 0C", " 1B 1D"},
    {"kept: a quality tag in the lemma does not end it", "et<0Dial>xe<IZE>", "etxe", " IZE",
     "+Ize", " 0Dial", ""},
    {"a quality tag in front of the lemma", "<0Dial>etxe<IZE>", "etxe", " IZE", "+Ize",
     " 0Dial", ""},
    {"a quality tag of the lone digit", "et<0>xe<IZE>", "etxe", " IZE", "+Ize", " 0", ""},
    {"an opinion tag ends the lemma", "et<1Erd>xe<IZE>", "et", " IZE", "+Ize", "", " 1Erd"},
    {"kept: a digit further on is an ordinary tag", "e<A0><2>", "e", " A0 2", "+A0+2", "", ""},

    {"a dictionary class shows nowhere", "etxe<hp1><IZE>", "etxe", " IZE", "+Ize", "", ""},
    {"every name in hp is a dictionary class", "etxe<hp><hpX><hp25>", "etxe", "", "", "", ""},
    {"kept: a name in h is not in twol", "etxe<IZE><hX>", "etxe", " IZE hX", "+Ize", "", ""},
    {"kept: the lone h likewise", "etxe<h>", "etxe", " h", "", "", ""},
    {"a capital H is an ordinary tag", "etxe<HP><Hp1>", "etxe", " HP Hp1", "+Hp+Hp1", "", ""},

    {"kept: the marker adds a lone blank in front", "etxe<><IZE>", "etxe", "  IZE", "+Ize", "",
     ""},
    {"kept: the marker adds a lone blank behind", "etxe<IZE><>", "etxe", " IZE ", "+Ize", "",
     ""},
    {"the marker ends the lemma", "et<>xe<IZE>", "et", "  IZE", "+Ize", "", ""},
    {"a marker alone", "<>", "", " ", "", "", ""},

    {"names are recased in twol alone", "e<iZE_mug>", "e", " iZE_mug", "+Ize_mug", "", ""},
    {"recasing covers Latin-1", "e<\361A\321>", "e", " \361A\321", "+\321a\361", "", ""},
    {"a sign in front stays", "e<_AB>", "e", " _AB", "+_ab", "", ""},
    {"kept: a tag in a bracket group counts", "etxe[h=<X>]<IZE>", "etxe", " X IZE", "+X+Ize",
     "", ""},
    {"a name runs to the next closing bracket", "e<A<B><C>", "e", " A<B C", "+A<b+C", "", ""},
    {"a closing bracket alone is text", "a>b<IZE>", "a>b", " IZE", "+Ize", "", ""},
    {"a tag longer than 112 bytes is whole",
     "e<" + std::string(300, 'X') + ">", "e", " " + std::string(300, 'X'),
     "+X" + std::string(299, 'x'), "", ""},

    {"an unclosed tag ends at the end", "etxe<IZE", "etxe", " IZE", "+Ize", "", ""},
    {"an unclosed quality tag ends at the end", "etxe<0Di", "etxe", "", "", " 0Di", ""},
    {"an unclosed opinion tag ends at the end", "etxe<1Er", "etxe", "", "", "", " 1Er"},
};

struct LemmaCase {
    std::string label, analisia, lema;
};

const LemmaCase LEMMAS[] = {
    {"prefix ba of the conditional", "ba<AUR><MEN><BALD>etorri<ADI>", "etorri"},
    {"prefix ba of affirmation", "ba<AUR><PRT>etorri<ADI>", "etorri"},
    {"prefix bait", "bait<AUR><MEN><KAUS>etorri<ADI>", "etorri"},
    {"another tail of ba stops at once", "ba<AUR><X>etorri<ADI>", "ba"},
    {"another tail of bait stops at once", "bait<AUR><MEN><BALD>etorri<ADI>", "bait"},
    {"one prefix only is skipped", "ba<AUR><PRT>ba<AUR><PRT>etorri<ADI>", "ba"},
    {"a prefix further on is none", "eba<AUR><PRT>etorri<ADI>", "eba"},
    {"a prefix and nothing else", "ba<AUR><PRT>", ""},
    {"a prefix cut short", "ba<AUR><PRT", "ba"},
    {"a tag behind the prefix stops", "ba<AUR><PRT><ADI>", ""},
    {"a group is left out", "et[h=itxi]xe<IZE>", "etxe"},
    {"kept: the tag behind a group does not end the lemma", "etxe[h=x]<IZE>ko<ARR>", "etxeko"},
    {"kept: the marker behind a group does not either", "etxe[h=x]<>ko<ARR>", "etxeko"},
    {"kept: nor does an opinion tag", "etxe[h=x]<1A>ko<ARR>", "etxeko"},
    {"the second tag behind a group ends it", "etxe[h=x]<IZE><ARR>ko", "etxe"},
    {"kept: a second group in a row is copied", "a[h=x][e=y]b<IZE>", "a[e=y]b"},
    {"kept: a third group in a row is left out again", "a[h=x][e=y[s=z]b<IZE>", "a[e=yb"},
    {"a closing bracket behind a group is copied", "a[h=x]]b<IZE>", "a]b"},
    {"a group in front", "[h=x]a<IZE>", "a"},
    {"a group with an unknown key is left out", "a[q]b<IZE>", "ab"},
    {"a group at the very end", "etxe[h=x]", "etxe"},
    {"an unclosed group ends at the end", "etxe[h=x", "etxe"},
    {"a bracket at the very end", "etxe[", "etxe"},
    {"an unclosed tag behind a group", "etxe[h=x]<IZE", "etxe"},
    {"a group, a quality tag, text", "a[h=x]<0B>c<IZE>", "ac"},
    {"two quality tags", "a<0B><0C>d<IZE>", "ad"},
    {"a less-than sign at the very end", "etxe<", "etxe"},
};

struct GroupCase {
    std::string label, analisia, modua, value;
};

const GroupCase GROUPS[] = {
    {"better form", "a<X>[h=etxe]<Y>", "[h=", "etxe"},
    {"form to use", "a<X>[e=etxe]<Y>", "[e=", "etxe"},
    {"source", "a<X>[s=EH]<Y>", "[s=", "EH"},
    {"key p", "a<X>[p=1]<Y>", "[p=", "1"},
    {"key a", "a<X>[a=2]<Y>", "[a=", "2"},
    {"key z", "a<X>[z=3]<Y>", "[z=", "3"},
    {"key c", "a<X>[c=4]<Y>", "[c=", "4"},
    {"absent", "a<X>", "[h=", ""},
    {"another key", "a<X>[e=etxe]", "[h=", ""},
    {"empty value", "a<X>[h=]<Y>", "[h=", ""},
    {"only the first group is read", "a[h=x]b[h=y]<X>", "[h=", "x"},
    {"kept: an empty first group hides the second", "a[h=]b[h=y]<X>", "[h=", ""},
    {"a value holds tags", "a[h=b<C>d]<X>", "[h=", "b<C>d"},
    {"a value holds an opening bracket", "a[h=b[c]<X>", "[h=", "b[c"},
    {"a group at the very end", "a<X>[h=etxe]", "[h=", "etxe"},
    {"unclosed, to the end", "a<X>[h=etxe", "[h=", "etxe"},
    {"a key at the very end", "a<X>[h=", "[h=", ""},
    {"mode L", "etxe<IZE>", "L", "etxe"},
    {"kept: mode L keeps the plus", "a+b<IZE>", "L", "a+b"},
    {"a mode outside the list", "etxe[h=x]<IZE>", "X", ""},
    {"a small l is outside the list", "etxe<IZE>", "l", ""},
    {"a longer mode is outside the list", "etxe<IZE>", "LL", ""},
    {"a key without its sign is outside the list", "a[h=x]<IZE>", "[h", ""},
    {"a key of no list", "a[q=x]<IZE>", "[q=", ""},
    {"the empty mode", "etxe[h=x]<IZE>", "", ""},
};

Analisia with_lemma(const std::string& lema) { return Analisia(lema + "<X>", "t"); }

struct OrderCase {
    std::string label, first, second;
    bool shorter, before;
};

const OrderCase ORDERS[] = {
    {"shorter and before", "ab", "abc", true, true},
    {"longer and behind", "abc", "ab", false, false},
    {"equal", "abc", "abc", false, false},
    {"equal length compares as equal", "abc", "xyz", false, true},
    {"shorter and behind", "z", "abc", true, false},
    {"high bytes are above ASCII", "z", "\361", false, true},
    {"high bytes are not negative", "\361", "z", false, false},
    {"capitals come first", "B", "a", false, true},
    {"an empty lemma", "", "a", true, true},
};

}  // namespace

TEST(Analisia, TakesAnAnalysisStringApart) {
    for (const TagCase& c : TAGS) {
        SCOPED_TRACE(c.label);
        const Analisia a(c.analisia, "eumorfo");
        EXPECT_EQ(a.analisia, c.analisia);
        EXPECT_EQ(a.lema, c.lema);
        EXPECT_EQ(a.etiketa, c.etiketa);
        EXPECT_EQ(a.twol, c.twol);
        EXPECT_EQ(a.tasuna, c.tasuna);
        EXPECT_EQ(a.iritzia, c.iritzia);
        EXPECT_EQ(a.hiztegia, "eumorfo");
        EXPECT_EQ(a.forma, "");
        EXPECT_EQ(a.maiuskula, 0);
    }
}

TEST(Analisia, ReadsTheLemma) {
    for (const LemmaCase& c : LEMMAS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(Analisia(c.analisia, "").lema, c.lema);
        EXPECT_EQ(ateraGoitik(c.analisia.c_str(), "L"), c.lema);
    }
}

TEST(Analisia, AteraGoitikReadsByMode) {
    for (const GroupCase& c : GROUPS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(ateraGoitik(c.analisia.c_str(), c.modua.c_str()), c.value);
    }
    EXPECT_EQ(ateraGoitik(nullptr, "L"), "");
    EXPECT_EQ(ateraGoitik(nullptr, "[h="), "");
    EXPECT_EQ(ateraGoitik("etxe<IZE>", nullptr), "");
}

TEST(Analisia, ReadsItsThreeGroups) {
    const Analisia a("a<X>[h=hobea]<Y>[e=erabilia]<Z>[s=saia]<V>", "");
    EXPECT_EQ(a.hobe, "hobea");
    EXPECT_EQ(a.erabili, "erabilia");
    EXPECT_EQ(a.sai, "saia");
    EXPECT_EQ(a.lema, "a");
    EXPECT_EQ(a.etiketa, " X Y Z V");
    const Analisia none("a<X>", "");
    EXPECT_EQ(none.hobe, "");
    EXPECT_EQ(none.erabili, "");
    EXPECT_EQ(none.sai, "");
}

TEST(Analisia, ExtractorsReadTheirArgumentAlone) {
    Analisia a("etxe<IZE><0Q><1O>", "eumorfo");
    a.maiuskula = 2;
    EXPECT_EQ(a.ateraEtiketa("b<ADI><0R><1P>"), " ADI");
    EXPECT_EQ(a.ateraTWOL("b<ADI><0R><1P>"), "+Adi");
    EXPECT_EQ(a.ateraTasuna("b<ADI><0R><1P>"), " 0R");
    EXPECT_EQ(a.ateraIritzia("b<ADI><0R><1P>"), " 1P");
    EXPECT_EQ(a.etiketa, " IZE");
    EXPECT_EQ(a.tasuna, " 0Q");
    EXPECT_EQ(a.iritzia, " 1O");
    EXPECT_EQ(a.lema, "etxe");
    EXPECT_EQ(a.maiuskula, 2);
    EXPECT_EQ(a.ateraEtiketa(""), "");
    EXPECT_EQ(a.ateraTWOL(""), "");
    EXPECT_EQ(a.ateraTasuna(""), "");
    EXPECT_EQ(a.ateraIritzia(""), "");
}

TEST(Analisia, IsAValue) {
    Analisia a("a+b<IZE>[h=x]<Y>[s=s]<Z>", "n");
    a.forma = "f";
    a.maiuskula = 1;
    const Analisia copy(a);
    Analisia assigned("c", "d");
    assigned = a;
    for (const Analisia* other : {&copy, static_cast<const Analisia*>(&assigned)}) {
        EXPECT_EQ(other->analisia, a.analisia);
        EXPECT_EQ(other->lema, a.lema);
        EXPECT_EQ(other->etiketa, a.etiketa);
        EXPECT_EQ(other->twol, a.twol);
        EXPECT_EQ(other->hiztegia, a.hiztegia);
        EXPECT_EQ(other->sai, a.sai);
        EXPECT_EQ(other->hobe, a.hobe);
        EXPECT_EQ(other->erabili, a.erabili);
        EXPECT_EQ(other->forma, "f");
        EXPECT_EQ(other->maiuskula, 1);
    }
    EXPECT_TRUE(std::has_virtual_destructor<Analisia>::value);
}

TEST(Analisia, ComparesLemmas) {
    for (const OrderCase& c : ORDERS) {
        SCOPED_TRACE(c.label);
        const Analisia a = with_lemma(c.first);
        const Analisia b = with_lemma(c.second);
        EXPECT_EQ(Analisia::CompareLemaLuzera(a, b), c.shorter);
        EXPECT_EQ(CompareLemaAlfabetikoa(a, b), c.before);
    }
}

TEST(Analisia, SortsByLength) {
    std::vector<Analisia> list = {with_lemma("ccc"), with_lemma("a"), with_lemma("bb")};
    std::stable_sort(list.begin(), list.end(), Analisia::CompareLemaLuzera);
    EXPECT_EQ(list[0].lema, "a");
    EXPECT_EQ(list[1].lema, "bb");
    EXPECT_EQ(list[2].lema, "ccc");
}

// The record is filled in one pass; the extractors read the text once each.
TEST(Analisia, AgreesWithItsExtractorsOnRandomTexts) {
    const char* const pieces[] = {"<", ">", "[", "]", "0", "1", "h", "hp", "ba", "bait", "+", "a",
                                  "X", "WEB", "<0Q>", "<1O>", "<hp1>", "<>", "<IZE>", "[h=x]",
                                  "[e=", "ba<AUR><PRT>", "\361", "\327", " ", "<\350a>"};
    std::mt19937 random(20261121);
    long with_lemma = 0, with_group = 0;
    for (int round = 0; round < 200000; ++round) {
        std::string text;
        for (std::size_t i = random() % 9; i > 0; --i) {
            text += pieces[random() % (sizeof pieces / sizeof *pieces)];
        }
        const Analisia record(text, "t");
        const char* const c = text.c_str();
        ASSERT_EQ(record.etiketa, record.ateraEtiketa(c)) << text;
        ASSERT_EQ(record.twol, record.ateraTWOL(c)) << text;
        ASSERT_EQ(record.tasuna, record.ateraTasuna(c)) << text;
        ASSERT_EQ(record.iritzia, record.ateraIritzia(c)) << text;
        ASSERT_EQ(record.sai, ateraGoitik(c, "[s=")) << text;
        ASSERT_EQ(record.hobe, ateraGoitik(c, "[h=")) << text;
        ASSERT_EQ(record.erabili, ateraGoitik(c, "[e=")) << text;
        std::string lemma = ateraGoitik(c, "L");
        if (lemma.size() >= 2 && record.etiketa.find("WEB") == std::string::npos) {
            lemma.erase(std::remove(lemma.begin(), lemma.end(), '+'), lemma.end());
        }
        ASSERT_EQ(record.lema, lemma) << text;
        const Analisia same(lemara::RecordText{text, "t", "forma"});
        ASSERT_EQ(same.analisia, text);
        ASSERT_EQ(same.lema, record.lema) << text;
        ASSERT_EQ(same.etiketa, record.etiketa) << text;
        ASSERT_EQ(same.twol, record.twol) << text;
        ASSERT_EQ(same.hobe, record.hobe) << text;
        ASSERT_EQ(same.hiztegia, "t");
        ASSERT_EQ(same.forma, "forma");
        ASSERT_EQ(same.maiuskula, 0);
        with_lemma += !lemma.empty();
        with_group += !record.hobe.empty();
    }
    EXPECT_GT(with_lemma, 50000);
    EXPECT_GT(with_group, 5000);
}

TEST(Analisia, TakesLongTextsApart) {
    std::string text = "etxe", names, twol;
    for (int i = 0; i < 100; ++i) {
        text += "<IZE" + std::to_string(i) + '>';
        names += " IZE" + std::to_string(i);
        twol += "+Ize" + std::to_string(i);
    }
    const Analisia record(text, "t");
    EXPECT_EQ(record.lema, "etxe");
    EXPECT_EQ(record.etiketa, names);
    EXPECT_EQ(record.twol, twol);
}
