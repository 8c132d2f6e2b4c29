#include "lemara/json.h"

#include "host_world.h"

namespace lemara::test {

TEST(Json, StringsAreEscaped) {
    const struct {
        std::string label, text, json;
    } rows[] = {
        {"plain", "etxe", "\"etxe\""},
        {"nothing", "", "\"\""},
        {"quote and backslash", "a\"b\\c", "\"a\\\"b\\\\c\""},
        {"line ends and a tab", "\n\r\t", "\"\\n\\r\\t\""},
        {"control characters", std::string("\0\x1f\x7f", 3), "\"\\u0000\\u001F\\u007F\""},
        {"a line separator", "\u2028", "\"\\u2028\""},
        {"letters of all lengths", "\u00f1\u65e5\U0001d4b3",
         "\"\u00f1\u65e5\U0001d4b3\""},
        {"no UTF-8", "a\xff\xe2\x82", "\"a\ufffd\ufffd\""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(json_string(row.text), row.json);
    }
}

TEST(Json, AFindingIsOneObject) {
    HostWorld world;
    EXPECT_EQ(to_json(world.open()->check("\U0001d4b3\nbozo").at(0)),
              "{\"kind\":\"unknown\",\"token\":\"bozo\",\"line\":2,\"column\":1,"
              "\"columnUtf16\":1,"
              "\"bytes\":[5,9],\"codePoints\":[2,6],\"utf16\":[3,7],\"forms\":[\"pozo\"],"
              "\"complete\":true}");
}

TEST(Json, ATokenIsOneObject) {
    HostWorld world;
    const auto tokens = world.open()->analyze("Bilbo mai bozo");
    EXPECT_EQ(
        to_json(tokens.at(0)),
        "{\"text\":\"Bilbo\",\"line\":1,\"column\":1,\"columnUtf16\":1,\"bytes\":[0,5],"
        "\"codePoints\":[0,5],\"utf16\":[0,5],\"paragraph\":0,\"sentence\":0,"
        "\"known\":true,\"foreign\":false,\"blankFollows\":true,\"readings\":[{\"lemma\":"
        "\"Bilbo\",\"tags\":[\"IZE\",\"LIB\"],\"network\":\"eumorfo\",\"analysis\":"
        "\"Bilbo<IZE><LIB>\"}]}");
    EXPECT_NE(to_json(tokens.at(1)).find("\"better\":\"mahai\""), std::string::npos);
    EXPECT_NE(to_json(tokens.at(2)).find("\"known\":false"), std::string::npos);
    EXPECT_NE(to_json(tokens.at(2)).find("\"readings\":[]"), std::string::npos);
}

}  // namespace lemara::test
