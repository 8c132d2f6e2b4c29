// Whole paragraphs over the built tables, byte for byte. A change of the lexicon may
// change them: scripts/update-golden writes them anew, and its differences want to be
// read.
#include "golden.h"

using namespace lemara::test;

TEST(Golden, ParagraphsComeOutByteForByte) {
    ASSERT_EQ(texts_in(GOLDEN), GOLDEN_NAMES);
    for (const std::string& name : GOLDEN_NAMES) {
        for (const std::string& format : GOLDEN_FORMATS) {
            EXPECT_EQ(golden_text(name, format), text_of_file(golden_file(name, format)))
                << name << " as " << format << "; see scripts/update-golden";
        }
    }
}
