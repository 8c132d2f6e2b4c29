// The two verb forms that a participle yields.
#include <gtest/gtest.h>

#include <string>

#include "HiztegiPertsonala.h"
#include "karaktereak.h"

namespace {

struct VerbCase {
    std::string label, aditza, adoin, aditzizen;
};

const VerbCase VERBS[] = {
    {"rule 1", "hoztu", "hotz", "hozte"},
    {"rule 2", "hastu", "hats", "haste"},
    {"rule 3", "utzi", "utz", "uzte"},
    {"rule 4", "etsi", "ets", "este"},
    {"kept: an x has no rule of its own", "itxi", "itxi", "itxitze"},
    {"rule 6", "joan", "joan", "joate"},
    {"rule 7, s", "ikusi", "ikusi", "ikuste"},
    {"rule 7, z", "hazi", "hazi", "hazte"},
    {"rule 8", "etorri", "etor", "etortze"},
    {"rule 9, l", "ibili", "ibil", "ibiltze"},
    {"rule 9, n", "ipini", "ipin", "ipintze"},
    {"rule 9, r", "ekari", "ekar", "ekartze"},
    {"rule 10", "hartu", "har", "hartze"},
    {"rule 11, l", "galdu", "gal", "galtze"},
    {"rule 11, n", "kendu", "ken", "kentze"},
    {"rule 12", "hil", "hil", "hiltze"},
    {"another d", "ardu", "ardu", "ardutze"},
    {"in capitals", "HARTU", "HAR", "HARtze"},
    {"mixed case", "HozTu", "Hotz", "Hozte"},
    {"rule 1 in capitals", "HOZTU", "HOtz", "HOZte"},
    {"rule 2 in capitals", "HASTU", "HAts", "HASte"},
    {"rule 3 in capitals", "UTZI", "Utz", "Uzte"},
    {"rule 4 in capitals", "ETSI", "Ets", "Este"},
    {"rule 6 in capitals", "JOAN", "JOAN", "JOAte"},
    {"rule 7 in capitals", "IKUSI", "IKUSI", "IKUSte"},
    {"rule 8 in capitals", "ETORRI", "ETOR", "ETORtze"},
    {"rule 11 in capitals", "GALDU", "GAL", "GALtze"},
    {"rule 1 alone", "ztu", "tz", "zte"},
    {"rule 2 alone", "stu", "ts", "ste"},
    {"rule 3 alone", "tzi", "tz", "zte"},
    {"rule 4 alone", "tsi", "ts", "ste"},
    {"rule 6 on two bytes", "an", "an", "ate"},
    {"kept: rule 6 is not tried on one byte", "n", "n", "ntze"},
    {"rule 7 alone", "zi", "zi", "zte"},
    {"rule 8 alone", "rri", "r", "rtze"},
    {"rule 9 alone", "ri", "r", "rtze"},
    {"rule 10 alone", "tu", "", "tze"},
    {"rule 11 alone", "ldu", "l", "ltze"},
    {"du is no rule", "du", "du", "dutze"},
    {"a vowel", "a", "a", "atze"},
    {"the empty text", "", "", "tze"},
    {"an accented letter in front", "\361atu", "\361a", "\361atze"},
    {"two words", "hitz hartu", "hitz har", "hitz hartze"},
};

}  // namespace

TEST(Verbs, Forms) {
    const HiztegiPertsonala dictionary;
    for (const VerbCase& c : VERBS) {
        SCOPED_TRACE(c.label);
        EXPECT_EQ(dictionary.lortuAdoin(c.aditza), c.adoin);
        EXPECT_EQ(dictionary.lortuAditzizen(c.aditza), c.aditzizen);
    }
    EXPECT_TRUE(dictionary.erroak.empty());
    EXPECT_TRUE(dictionary.sarrerak.empty());
}

TEST(Verbs, FormsOfEveryTwoBytes) {
    const HiztegiPertsonala dictionary;
    for (int first = 1; first < 256; ++first) {
        for (int second = 1; second < 256; ++second) {
            const std::string verb = {static_cast<char>(first), static_cast<char>(second)};
            const std::string low = tolowercase(verb);
            std::string stem = verb, noun = verb + "tze";  // rule 12
            if (low[1] == 'n') {
                noun = verb.substr(0, 1) + "te";
            } else if (low == "zi" || low == "si") {
                noun = verb.substr(0, 1) + "te";
            } else if (low == "ni" || low == "li" || low == "ri") {
                stem = verb.substr(0, 1);
                noun = stem + "tze";
            } else if (low == "tu") {
                stem = "";
                noun = "tze";
            }
            ASSERT_EQ(dictionary.lortuAdoin(verb), stem) << verb;
            ASSERT_EQ(dictionary.lortuAditzizen(verb), noun) << verb;
        }
    }
}
