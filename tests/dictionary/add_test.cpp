// Adding an entry: which stems and paradigm classes a word gets.
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "HiztegiPertsonala.h"
#include "dictionary_text.h"
#include "karaktereak.h"
#include "support.h"

namespace {

using lemara::test::records_of;
using lemara::test::stems_of;
using Strings = std::vector<std::string>;

struct AddCase {
    std::string label, word, tag;
    Strings stems;  // "key = lema kategoria erroa paradigma"
};

const AddCase ADDED[] = {
    {"common noun in e", "etxe", "<ARR>", {"etxe = etxe <IZE><ARR> etxe <hp1>"}},
    {"common noun in i", "mendi", "<ARR>", {"mendi = mendi <IZE><ARR> mendi <hp1>"}},
    {"common noun in o", "asto", "<ARR>", {"asto = asto <IZE><ARR> asto <hp1>"}},
    {"common noun in u", "buru", "<ARR>", {"buru = buru <IZE><ARR> buru <hp1>"}},
    {"common noun in capital E", "ETXE", "<ARR>", {"etxe = etxe <IZE><ARR> etxe <hp1>"}},
    {"common noun with a capital", "Etxe", "<ARR>", {"etxe = etxe <IZE><ARR> etxe <hp1>"}},
    {"common noun in a", "neska", "<ARR>",
     {"nesk = neska <IZE><ARR> nesk <hp2>", "neska = neska <IZE><ARR> neska <hp3>"}},
    {"common noun in capital A", "NESKA", "<ARR>",
     {"nesk = neska <IZE><ARR> nesk <hp2>", "neska = neska <IZE><ARR> neska <hp3>"}},
    {"common noun in r", "txakur", "<ARR>",
     {"txakur = txakur <IZE><ARR> txakur <hp6>",
      "txakurr = txakur <IZE><ARR> txakurr <hp5>"}},
    {"common noun in capital R", "TXAKUR", "<ARR>",
     {"txakur = txakur <IZE><ARR> txakur <hp6>",
      "txakurr = txakur <IZE><ARR> txakurr <hp5>"}},
    {"common noun in n", "lagun", "<ARR>", {"lagun = lagun <IZE><ARR> lagun <hp4>"}},
    {"common noun in z", "haitz", "<ARR>", {"haitz = haitz <IZE><ARR> haitz <hp4>"}},
    {"kept: an accented vowel is any other byte", "caf\351", "<ARR>",
     {"caf\351 = caf\351 <IZE><ARR> caf\351 <hp4>"}},
    {"an accented capital is lowered in the stem", "\321abarra", "<ARR>",
     {"\361abarr = \361abarra <IZE><ARR> \361abarr <hp2>",
      "\361abarra = \361abarra <IZE><ARR> \361abarra <hp3>"}},
    {"common noun in a digit", "a4", "<ARR>", {"a4 = a4 <IZE><ARR> a4 <hp4>"}},
    {"common noun of two words", "etxe orratz", "<ARR>",
     {"etxe orratz = etxe orratz <IZE><ARR> etxe orratz <hp4>"}},
    {"common noun of one vowel", "a", "<ARR>",
     {" = a <IZE><ARR>  <hp2>", "a = a <IZE><ARR> a <hp3>"}},

    {"kept: the hp7 row of an adjective is refused, e", "berde", "<IZO>",
     {"berde = berde <ADJ><IZO> berde <hp1>"}},
    {"kept: the hp7 row of an adjective is refused, a", "luzea", "<IZO>",
     {"luze = luzea <ADJ><IZO> luze <hp2>", "luzea = luzea <ADJ><IZO> luzea <hp3>"}},
    {"kept: the hp7 row of an adjective is refused, r", "azkar", "<IZO>",
     {"azkar = azkar <ADJ><IZO> azkar <hp6>", "azkarr = azkar <ADJ><IZO> azkarr <hp5>"}},
    {"kept: the hp7 row of an adjective is refused, any other", "on", "<IZO>",
     {"on = on <ADJ><IZO> on <hp4>"}},
    {"adjective with capitals", "BERDE", "<IZO>", {"berde = berde <ADJ><IZO> berde <hp1>"}},

    {"verb in tu", "hartu", "<ADI>",
     {"har = hartu <ADI><ADOIN> har <hp24>", "hartu = hartu <ADI><PART> hartu <hp21>",
      "hartze = hartu <ADI><ADI_IZE> hartze <hp20>"}},
    {"kept: verb in n, its stem row is refused", "joan", "<ADI>",
     {"joan = joan <ADI><PART> joan <hp22>", "joate = joan <ADI><ADI_IZE> joate <hp20>"}},
    {"kept: verb in l, its stem row is refused", "hil", "<ADI>",
     {"hil = hil <ADI><PART> hil <hp23>", "hiltze = hil <ADI><ADI_IZE> hiltze <hp20>"}},
    {"kept: verb in capital N", "JOAN", "<ADI>",
     {"joan = joan <ADI><PART> joan <hp21>", "joate = joan <ADI><ADI_IZE> joate <hp20>"}},
    {"kept: verb in capital L", "HIL", "<ADI>",
     {"hil = hil <ADI><PART> hil <hp21>", "hiltze = hil <ADI><ADI_IZE> hiltze <hp20>"}},
    {"verb in capitals", "HARTU", "<ADI>",
     {"har = hartu <ADI><ADOIN> har <hp24>", "hartu = hartu <ADI><PART> hartu <hp21>",
      "hartze = hartu <ADI><ADI_IZE> hartze <hp20>"}},
    {"verb in ztu", "hoztu", "<ADI>",
     {"hotz = hoztu <ADI><ADOIN> hotz <hp24>", "hozte = hoztu <ADI><ADI_IZE> hozte <hp20>",
      "hoztu = hoztu <ADI><PART> hoztu <hp21>"}},
    {"verb of two words", "alde egin", "<ADI>",
     {"alde egin = alde egin <ADI><PART> alde egin <hp22>",
      "alde egite = alde egin <ADI><ADI_IZE> alde egite <hp20>"}},
    {"kept: the verb tu has an empty stem", "tu", "<ADI>",
     {" = tu <ADI><ADOIN>  <hp24>", "tu = tu <ADI><PART> tu <hp21>",
      "tze = tu <ADI><ADI_IZE> tze <hp20>"}},

    {"person in n", "Ikoren", "<PIB>", {"ikoren = Ikoren <IZE><PIB> Ikoren <hp9>"}},
    {"person in a", "Ana", "<PIB>", {"ana = Ana <IZE><PIB> Ana <hp8>"}},
    {"person in e", "Ane", "<PIB>", {"ane = Ane <IZE><PIB> Ane <hp8>"}},
    {"person in capital A", "ANA", "<PIB>", {"ana = ANA <IZE><PIB> ANA <hp8>"}},
    {"person in r", "Urtzer", "<PIB>",
     {"urtzer = Urtzer <IZE><PIB> Urtzer <hp10>",
      "urtzerr = Urtzer <IZE><PIB> Urtzerr <hp11>"}},
    {"kept: person in capital R, the r that is added is small", "URTZER", "<PIB>",
     {"urtzer = URTZER <IZE><PIB> URTZER <hp10>",
      "urtzerr = URTZER <IZE><PIB> URTZERr <hp11>"}},
    {"person in l", "Madril", "<PIB>", {"madril = Madril <IZE><PIB> Madril <hp9>"}},
    {"person in an accented vowel", "Jos\351", "<PIB>",
     {"jos\351 = Jos\351 <IZE><PIB> Jos\351 <hp9>"}},

    {"place in a", "Bizkaia", "<LIB>", {"bizkaia = Bizkaia <IZE><LIB> Bizkaia <hp12>"}},
    {"place in o", "Bilbo", "<LIB>", {"bilbo = Bilbo <IZE><LIB> Bilbo <hp12>"}},
    {"place in l", "Madril", "<LIB>", {"madril = Madril <IZE><LIB> Madril <hp25>"}},
    {"place in n", "Irun", "<LIB>", {"irun = Irun <IZE><LIB> Irun <hp25>"}},
    {"place in capital N", "IRUN", "<LIB>", {"irun = IRUN <IZE><LIB> IRUN <hp25>"}},
    {"place in r", "Gasteizer", "<LIB>",
     {"gasteizer = Gasteizer <IZE><LIB> Gasteizer <hp14>",
      "gasteizerr = Gasteizer <IZE><LIB> Gasteizerr <hp15>"}},
    {"place in tz", "Getz", "<LIB>",
     {"getz = Getz <IZE><LIB> Getz <hp19>", "gez = Getz <IZE><LIB> Gez <hp18>"}},
    {"place in ts", "Gets", "<LIB>",
     {"ges = Gets <IZE><LIB> Ges <hp18>", "gets = Gets <IZE><LIB> Gets <hp19>"}},
    {"place in tx", "Getx", "<LIB>",
     {"getx = Getx <IZE><LIB> Getx <hp19>", "gex = Getx <IZE><LIB> Gex <hp18>"}},
    {"kept: place in a small t and a capital S", "GEtS", "<LIB>",
     {"ges = GEtS <IZE><LIB> GES <hp18>", "gets = GEtS <IZE><LIB> GEtS <hp19>"}},
    {"kept: place in capital TS", "GETS", "<LIB>", {"gets = GETS <IZE><LIB> GETS <hp13>"}},
    {"place in s", "Paris", "<LIB>", {"paris = Paris <IZE><LIB> Paris <hp13>"}},
    {"place in z", "Gasteiz", "<LIB>", {"gasteiz = Gasteiz <IZE><LIB> Gasteiz <hp13>"}},
    {"place in t", "Pont", "<LIB>", {"pont = Pont <IZE><LIB> Pont <hp13>"}},
    {"place in an accented vowel", "Orl\351", "<LIB>",
     {"orl\351 = Orl\351 <IZE><LIB> Orl\351 <hp13>"}},
    {"place of tz alone", "tz", "<LIB>",
     {"tz = tz <IZE><LIB> tz <hp19>", "z = tz <IZE><LIB> z <hp18>"}},

    {"another name in a", "Elhuyara", "<IZB>",
     {"elhuyara = Elhuyara <IZE><IZB> Elhuyara <hp16>"}},
    {"another name in i", "Euskalmeti", "<IZB>",
     {"euskalmeti = Euskalmeti <IZE><IZB> Euskalmeti <hp16>"}},
    {"another name in r", "Elhuyar", "<IZB>",
     {"elhuyar = Elhuyar <IZE><IZB> Elhuyar <hp17>"}},
    {"another name in capitals", "BBK", "<IZB>", {"bbk = BBK <IZE><IZB> BBK <hp17>"}},

    {"a tag outside the six", "etxe", "<XXX>", {}},
    {"a tag without its brackets", "etxe", "ARR", {}},
    {"a tag in lower case", "etxe", "<arr>", {}},
    {"a tag with a blank", "etxe", "<ARR> ", {}},
    {"the whole tag text is no tag", "etxe", "<IZE><ARR>", {}},
    {"no tag", "etxe", "", {}},

    {"an empty word, common noun", "", "<ARR>", {" =  <IZE><ARR>  <hp4>"}},
    {"an empty word, adjective", "", "<IZO>", {" =  <ADJ><IZO>  <hp4>"}},
    {"an empty word, verb", "", "<ADI>",
     {" =  <ADI><PART>  <hp21>", "tze =  <ADI><ADI_IZE> tze <hp20>"}},
    {"an empty word, person", "", "<PIB>", {" =  <IZE><PIB>  <hp9>"}},
    {"an empty word, place", "", "<LIB>", {" =  <IZE><LIB>  <hp13>"}},
    {"an empty word, another name", "", "<IZB>", {" =  <IZE><IZB>  <hp17>"}},
};

void add(HiztegiPertsonala& dictionary, const std::string& word, const std::string& tag) {
    dictionary.gehitu_sarrera(false, word, tag, "", "", "");
}

bool in(const char* list, int byte) {
    return byte != 0 && std::string(list).find(static_cast<char>(byte)) != std::string::npos;
}

/// The paradigm classes that stay for a word of the group by its last byte, in the order of
/// their rows. `before` is the byte in front of it.
Strings classes_of(const std::string& tag, int last, char before) {
    const bool a = in("Aa", last);
    const bool vowel = in("AEIOUaeiou", last);
    const bool r = in("Rr", last);
    if (tag == "<ARR>" || tag == "<IZO>") {
        if (a) return {"<hp3>", "<hp2>"};
        if (vowel) return {"<hp1>"};
        if (r) return {"<hp6>", "<hp5>"};
        return {"<hp4>"};
    }
    if (tag == "<PIB>") {
        if (vowel) return {"<hp8>"};
        if (r) return {"<hp10>", "<hp11>"};
        return {"<hp9>"};
    }
    if (tag == "<LIB>") {
        if (vowel) return {"<hp12>"};
        if (in("LNln", last)) return {"<hp25>"};
        if (r) return {"<hp14>", "<hp15>"};
        if (in("SXZsxz", last) && before == 't') return {"<hp19>", "<hp18>"};
        return {"<hp13>"};
    }
    return {vowel ? "<hp16>" : "<hp17>"};
}

}  // namespace

TEST(Paradigms, StemsAndClassesOfAWord) {
    for (const AddCase& c : ADDED) {
        SCOPED_TRACE(c.label);
        HiztegiPertsonala dictionary;
        dictionary.gehitu_sarrera(false, c.word, c.tag, "h", "e", "s");
        EXPECT_EQ(stems_of(dictionary), c.stems);
        for (const auto& [key, entry] : dictionary.erroak) {
            EXPECT_EQ(entry->hobe, "h");
            EXPECT_EQ(entry->erabili, "e");
            EXPECT_EQ(entry->sai, "s") << "a paradigm entry has the mark that it is given";
        }
        ASSERT_EQ(dictionary.sarrerak.size(), 1u);
        const HPsarrera& record = *dictionary.sarrerak[0];
        EXPECT_EQ(record.lema, c.word) << "the record keeps the word";
        EXPECT_EQ(record.kategoria, c.tag);
        EXPECT_EQ(record.erroa, "");
        EXPECT_EQ(record.hobe, "h");
        EXPECT_EQ(record.erabili, "e");
        EXPECT_EQ(record.sai, "HP") << "kept: a record's mark is always HP";
        EXPECT_EQ(record.paradigma, "");
        EXPECT_EQ(dictionary.gutxieneko_luzera, 0) << "adding leaves the integers alone";
        EXPECT_EQ(dictionary.gehienezko_hitzak, 0);
    }
}

TEST(Paradigms, EveryLastByte) {
    for (const std::string tag : {"<ARR>", "<IZO>", "<PIB>", "<LIB>", "<IZB>"}) {
        for (const char before : {'m', 't', 'T'}) {
            for (int last = 1; last < 256; ++last) {
                SCOPED_TRACE(tag + ' ' + before + " and byte " + std::to_string(last));
                const std::string word = std::string("k") + before + static_cast<char>(last);
                HiztegiPertsonala dictionary;
                add(dictionary, word, tag);
                const Strings classes = classes_of(tag, last, before);
                ASSERT_EQ(dictionary.erroak.size(), classes.size());
                const auto whole = dictionary.erroak.find(tolowercase(word));
                ASSERT_NE(whole, dictionary.erroak.end());
                ASSERT_EQ(whole->second->paradigma, classes[0]);
                for (const auto& [key, entry] : dictionary.erroak) {
                    ASSERT_EQ(std::count(classes.begin(), classes.end(), entry->paradigma), 1);
                    ASSERT_EQ(key, tolowercase(entry->erroa));
                }
            }
        }
    }
}

TEST(Paradigms, EveryLastByteOfAVerb) {
    for (int last = 1; last < 256; ++last) {
        SCOPED_TRACE("byte " + std::to_string(last));
        const std::string word = std::string("ka") + static_cast<char>(last);
        HiztegiPertsonala dictionary;
        add(dictionary, word, "<ADI>");
        const auto participle = dictionary.erroak.find(tolowercase(word));
        ASSERT_NE(participle, dictionary.erroak.end());
        const std::string expected = last == 'l' ? "<hp23>" : last == 'n' ? "<hp22>" : "<hp21>";
        EXPECT_EQ(participle->second->paradigma, expected);
        EXPECT_EQ(participle->second->kategoria, "<ADI><PART>");
    }
}

TEST(Paradigms, ARepeatedWordIsLeftAsItIs) {
    HiztegiPertsonala dictionary;
    dictionary.gehitu_sarrera(false, "etxe", "<ARR>", "h", "", "s");
    dictionary.gehitu_sarrera(false, "etxe", "<ARR>", "beste", "x", "y");
    EXPECT_EQ(records_of(dictionary), (Strings{"etxe <ARR> h/"}));
    EXPECT_EQ(dictionary.erroak.at("etxe")->hobe, "h");
    dictionary.gehitu_sarrera(false, "Etxe", "<ARR>", "", "", "");
    EXPECT_EQ(records_of(dictionary), (Strings{"etxe <ARR> h/", "Etxe <ARR> /"}))
        << "words are compared exactly";
    EXPECT_EQ(dictionary.erroak.size(), 1u);
    EXPECT_EQ(dictionary.erroak.at("etxe")->hobe, "h") << "kept: the first word owns the stem";
}

TEST(Paradigms, TheFirstWordOwnsAStem) {
    HiztegiPertsonala dictionary;
    add(dictionary, "etxe", "<ARR>");
    add(dictionary, "etxe", "<IZO>");
    EXPECT_EQ(records_of(dictionary), (Strings{"etxe <ARR> /", "etxe <IZO> /"}));
    EXPECT_EQ(stems_of(dictionary), (Strings{"etxe = etxe <IZE><ARR> etxe <hp1>"}));

    // nesk is the stem of neska; as a word of its own it comes too late.
    HiztegiPertsonala stems;
    add(stems, "neska", "<ARR>");
    add(stems, "nesk", "<IZB>");
    EXPECT_EQ(stems_of(stems), (Strings{"nesk = neska <IZE><ARR> nesk <hp2>",
                                        "neska = neska <IZE><ARR> neska <hp3>"}));
    HiztegiPertsonala other_order;
    add(other_order, "nesk", "<IZB>");
    add(other_order, "neska", "<ARR>");
    EXPECT_EQ(stems_of(other_order), (Strings{"nesk = nesk <IZE><IZB> nesk <hp17>",
                                              "neska = neska <IZE><ARR> neska <hp3>"}));
}

TEST(Paradigms, APlaceOfOneSibilant) {
    const lemara::test::TempDir folder;
    for (const std::string word : {"s", "x", "z", "S", "X", "Z"}) {
        SCOPED_TRACE(word);
        HiztegiPertsonala dictionary;
        dictionary.fitxategia = folder.path("hp_" + word + ".txt");
        try {
            dictionary.gehitu_sarrera(true, word, "<LIB>", "", "", "");
            ADD_FAILURE() << "no error";
        } catch (const std::out_of_range& error) {
            EXPECT_NE(std::string(error.what()).find("basic_string::at"), std::string::npos)
                << error.what();
        }
        EXPECT_EQ(records_of(dictionary), (Strings{word + " <LIB> /"})) << "the record stands";
        EXPECT_TRUE(dictionary.erroak.empty());
        EXPECT_EQ(lemara::test::read_file(dictionary.fitxategia),
                  "\n" + word + "\t<LIB>\t\t\tHP")
            << "so does the line";
    }
    HiztegiPertsonala dictionary;
    add(dictionary, "t", "<LIB>");
    add(dictionary, "z", "<PIB>");
    EXPECT_EQ(stems_of(dictionary),
              (Strings{"t = t <IZE><LIB> t <hp13>", "z = z <IZE><PIB> z <hp9>"}));
}
