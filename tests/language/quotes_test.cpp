// Endings behind typographic quotation marks, which the host folds into one: through the
// checker over the built tables.
#include <lemara/checker.h>

#include <string>

#include "language.h"

namespace {

using namespace lemara::test;

struct Case {
    std::string label, text, found;
};

const Case CASES[] = {
    {"angle quotes", "«Argia»ren azken zenbakia", ""},
    {"high quotes", "“Argia”ren eta “Berria”ko", ""},
    {"low and high quotes", "„Argia”tik", ""},
    {"a bracket", "Atzo (Bilbo)n", ""},
    {"a sign beyond Latin-1", "230 €ko kontua", ""},
    {"a blank in front of the ending", "«Argia» ren azken zenbakia", "ren"},
    {"no quotation at all", "Argia ren azken zenbakia", "ren"},
    {"an apostrophe is no hyphen", "Bilbo'n bizi da", "n"},
    {"a curled one neither", "Bilbo’n bizi da", "n"},
};

}  // namespace

TEST(Quotes, AnEndingMayFollowTheClosingMark) {
    lemara::Settings settings;
    settings.configuration = (TABLES / "sareak.cfg").string();
    settings.use_dictionary = false;
    const lemara::Checker::Opened opened = lemara::Checker::open(settings);
    ASSERT_NE(opened.checker, nullptr);
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        std::string found;
        for (const lemara::Finding& finding : opened.checker->check(c.text)) {
            found += (found.empty() ? "" : " ") + finding.token;
        }
        EXPECT_EQ(found, c.found);
    }
}
