// The quick road to the parts of an analysis string, against the extractors of a record.
#include "analysis/CommonParts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "Analisia.h"

namespace {

#ifdef __SSE2__
constexpr bool QUICK = true;
#else
constexpr bool QUICK = false;  // every text takes the general road
#endif

struct Case {
    std::string label, text;
    bool found;
};

std::string tag_of(std::size_t size) { return '<' + std::string(size - 2, 'Q') + '>'; }

const Case CASES[] = {
    {"a noun", "etxe<IZE><ARR>", true},
    {"a tag alone", "<IZE>", true},
    {"a lemma with a blank", "bat egin<ADI>", true},
    {"Latin-1", "\361abar<\321\361\327\367>", true},
    {"a closing bracket in the tag's name is its end", "e<A>>", false},
    {"a closing bracket in the lemma", "e>a<A>", false},
    {"a closing bracket right in front of the first tag", "e><A>", false},
    {"an opening bracket in a name", "e<A<B>", false},
    {"text behind a tag", "e<A>x<B>", false},
    {"text behind the last tag", "e<A>x", false},
    {"a tag that isn't closed", "e<A><B", false},
    {"no tag", "etxe", false},
    {"the empty text", "", false},
    {"a plus", "a+b<A>", false},
    {"a group", "e[h=x]<A>", false},
    {"a NUL", std::string("e\0<A>", 5), false},
    {"a quality", "e<A><0B>", false},
    {"an opinion", "e<1A><B>", false},
    {"a name in h", "e<A><hp1>", false},
    {"the marker", "e<><A>", false},
    {"a digit further on", "e<A0><B1>", true},
    {"an h further on", "he<Ah>", true},
    {"the prefix ba", "ba<AUR><PRT>etorri<ADI>", false},
    {"what begins as one", "ba<AUR>", false},
    {"the prefix bait", "bait<AUR>", false},
    {"a lemma that begins so", "baita<A>", true},
    {"15 bytes", "e" + tag_of(14), true},
    {"16 bytes", "e" + tag_of(15), true},
    {"17 bytes", "e" + tag_of(16), true},
    {"a tag of 32 bytes", "e" + tag_of(32), true},
    {"a tag of 33 bytes", "e" + tag_of(33), true},
    {"48 bytes", "etxe" + tag_of(20) + tag_of(24), true},
    {"63 bytes", "etxe" + tag_of(20) + tag_of(39), true},
    {"64 bytes are left to the general road", "etxe" + tag_of(20) + tag_of(40), false},
    {"so are 1,000", "etxe" + tag_of(996), false},
    {"21 tags",
     [] {
         std::string text;
         for (int i = 0; i < 21; ++i) text += "<A>";
         return text;
     }(),
     true},
};

/// Compares the parts, if there are any, with what the extractors of a record give.
void expect_twin_agrees(const std::string& text, const lemara::CommonParts& parts) {
    const Analisia record(text, "t");
    const char* const c = text.c_str();
    ASSERT_EQ(parts.lemma(), ateraGoitik(c, "L")) << text;
    ASSERT_EQ(parts.tags(), record.ateraEtiketa(c)) << text;
    ASSERT_EQ(parts.twol(), record.ateraTWOL(c)) << text;
    ASSERT_EQ(record.ateraTasuna(c), "") << text;
    ASSERT_EQ(record.ateraIritzia(c), "") << text;
    for (const char* group : {"[s=", "[h=", "[e="}) ASSERT_EQ(ateraGoitik(c, group), "");
}

}  // namespace

TEST(CommonParts, KnowsTheCommonForm) {
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        const lemara::CommonParts parts(c.text);
        EXPECT_EQ(parts.found(), QUICK && c.found);
        if (parts.found()) {
            expect_twin_agrees(c.text, parts);
        } else {
            EXPECT_EQ(parts.lemma(), "");
            EXPECT_EQ(parts.tags(), "");
            EXPECT_EQ(parts.twol(), "");
        }
    }
}

TEST(CommonParts, RecasesEveryByte) {
    for (int byte = 1; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        const std::string text = std::string("e<A") + c + "><" + c + c + '>';
        const lemara::CommonParts parts(text);
        if (parts.found()) expect_twin_agrees(text, parts);
        const bool sign = std::string("<>[+01h").find(c) != std::string::npos;
        EXPECT_EQ(parts.found(), QUICK && !sign) << byte;
    }
}

// Texts of the common form, most of them with one byte changed.
TEST(CommonParts, AgreesWithTheExtractorsOnRandomTexts) {
    std::mt19937 random(20261122);
    const auto below = [&](unsigned n) { return static_cast<unsigned>(random() % n); };
    const auto letters = [&](unsigned most) {
        std::string text;
        for (unsigned n = below(most + 1); n > 0; --n) {
            text += static_cast<char>(below(8) == 0 ? 192 + below(64) : 'A' + below(58));
        }
        return text;
    };
    const char signs[] = "<>[]+01hbait=s\0\361";
    constexpr long ROUNDS = 300000;
    long found = 0, long_tags = 0;
    for (long round = 0; round < ROUNDS; ++round) {
        std::string text = letters(12);
        for (unsigned tags = below(6); tags > 0; --tags) {
            text += '<' + letters(below(8) == 0 ? 30 : 9) + '>';
        }
        if (below(3) != 0 && !text.empty()) {
            text[below(static_cast<unsigned>(text.size()))] =
                signs[below(sizeof signs - 1)];
        }
        const lemara::CommonParts parts(text);
        if (!parts.found()) continue;
        ASSERT_NO_FATAL_FAILURE(expect_twin_agrees(text, parts));
        ++found;
        long_tags += parts.tags().size() > 40;
    }
    if (!QUICK) return;
    EXPECT_GT(found, ROUNDS / 10);
    EXPECT_GT(long_tags, ROUNDS / 1000);
}
