// The built tables themselves: their order in the configuration and their tags.
#include <set>
#include <string>

#include "language.h"

#ifndef LEMARA_TAG_ROWS
#error "LEMARA_TAG_ROWS names docs/tagset_ud.tsv"
#endif

namespace {

using namespace lemara::test;

const std::vector<std::string> NETWORKS = {"eumorfo", "hp", "zenbakiak"};

/// The tags on the upper sides of a table's records, without brackets.
std::set<std::string> tags_of(const std::string& network) {
    std::set<std::string> tags;
    std::istringstream lines(text_of_file(TABLES / (network + ".sare")));
    for (std::string line; std::getline(lines, line);) {
        const std::size_t from = line.find('\t'), to = line.rfind('\t');
        if (from == to) continue;  // a final state
        const std::string symbols = line.substr(from + 1, to - from - 1);
        for (std::size_t open = symbols.find('<'); open != std::string::npos;
             open = symbols.find('<', open + 1)) {
            const std::size_t close = symbols.find('>', open);
            if (close == std::string::npos) break;
            const std::string name = symbols.substr(open + 1, close - open - 1);
            if (!name.empty()) tags.insert(name);
        }
    }
    return tags;
}

/// The classes of the personal dictionary stand in "hp" alone and show nowhere.
bool is_dictionary_class(const std::string& tag) {
    return tag.compare(0, 2, "hp") == 0 &&
           tag.find_first_not_of("0123456789", 2) == std::string::npos;
}

std::set<std::string> documented_tags() {
    std::set<std::string> tags;
    for (const Row& row : rows_of(LEMARA_TAG_ROWS, 5)) tags.insert(row.cells[0]);
    return tags;
}

}  // namespace

TEST(Tables, TheConfigurationListsThreeNetworksInOrder) {
    std::vector<std::string> listed;
    std::vector<lemara::host::ListedTable> tables;
    ASSERT_FALSE(
        lemara::host::read_configuration((TABLES / "sareak.cfg").string(), tables));
    for (const auto& table : tables) listed.push_back(table.key);
    EXPECT_EQ(listed, NETWORKS);
}

TEST(Tables, TheEngineAsksThemInThatOrder) {
    std::vector<std::string> keys;
    for (const auto& entry : basque().sareak) keys.push_back(entry.first);
    EXPECT_EQ(keys, NETWORKS);
    EXPECT_EQ(basque().sareak.at("eumorfo")->maila, 5);
    EXPECT_EQ(basque().sareak.at("zenbakiak")->maila, 7);
}

TEST(Tables, EveryTagIsDocumented) {
    const std::set<std::string> documented = documented_tags();
    for (const std::string& network : NETWORKS) {
        const std::set<std::string> tags = tags_of(network);
        EXPECT_GT(tags.size(), 20u) << network;
        for (const std::string& tag : tags) {
            if (is_dictionary_class(tag)) continue;
            EXPECT_EQ(documented.count(tag), 1u) << tag << " of " << network;
        }
    }
}

TEST(Tables, EveryDocumentedTagIsInATable) {
    std::set<std::string> tags;
    for (const std::string& network : NETWORKS) tags.merge(tags_of(network));
    for (const std::string& tag : documented_tags())
        EXPECT_EQ(tags.count(tag), 1u) << tag;
}

TEST(Tables, AllClassesOfTheDictionaryAreInHp) {
    const std::set<std::string> tags = tags_of("hp");
    for (int i = 1; i <= 25; ++i) {
        EXPECT_EQ(tags.count("hp" + std::to_string(i)), 1u) << i;
    }
}

TEST(Tables, TogetherTheyAreSmall) {
    std::uintmax_t bytes = 0;
    for (const std::string& network : NETWORKS) {
        bytes += std::filesystem::file_size(TABLES / (network + ".sare"));
    }
    std::cout << bytes << " bytes\n";
    EXPECT_LT(bytes, 40'000'000u);
}
