#include "files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>
#include <string>
#include <vector>

#include "failure.h"
#include "support.h"

namespace {

using namespace lemara::tools;
using lemara::test::TempDir;

std::vector<std::string> lines_of(const std::string& path) {
    std::vector<std::string> lines;
    LineReader reader(path);
    for (std::string line; reader.next(line);) lines.push_back(line);
    return lines;
}

struct Case {
    std::string label, bytes;
    std::vector<std::string> lines;
};

const Case CASES[] = {
    {"nothing", "", {}},
    {"one line", "a\n", {"a"}},
    {"no line feed at the end", "a\nb", {"a", "b"}},
    {"empty lines", "\n\na\n\n", {"", "", "a", ""}},
    {"line ends of Windows", "a\r\n\r\nb\r", {"a", "", "b"}},
    {"a carriage return inside stays", "a\rb\n", {"a\rb"}},
    {"a NUL stays", std::string("a\0b\n", 4), {std::string("a\0b", 3)}},
};

TEST(Files, ReadsLines) {
    const TempDir folder;
    for (const Case& c : CASES) {
        SCOPED_TRACE(c.label);
        const std::string path = folder.write("text", c.bytes);
        EXPECT_EQ(lines_of(path), c.lines);
        EXPECT_EQ(read_file(path), c.bytes);
    }
}

TEST(Files, ReadsLinesLongerThanItsBuffer) {
    const TempDir folder;
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::vector<std::string> lines;
        std::string bytes;
        for (auto i = random() % 8 + 1; i > 0; --i) {
            lines.emplace_back(random() % 200000, static_cast<char>('a' + random() % 26));
            bytes += lines.back() + '\n';
        }
        EXPECT_EQ(lines_of(folder.write("text", bytes)), lines);
    }
}

TEST(Files, TellsTheLine) {
    const TempDir folder;
    const std::string path = folder.write("text", "a\nb\n");
    LineReader reader(path);
    std::string line;
    reader.next(line);
    reader.next(line);
    EXPECT_EQ(reader.place(), path + ":2");
}

TEST(Files, ReadsAStart) {
    const TempDir folder;
    const std::string path = folder.write("text", "abcdef");
    EXPECT_EQ(read_start(path, 3), "abc");
    EXPECT_EQ(read_start(path, 64), "abcdef");
}

std::string failure_of(const std::string& path) {
    try {
        read_file(path);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "none";
}

TEST(Files, SaysWhyItCantRead) {
    const TempDir folder;
    const std::string missing = folder.path("missing");
    EXPECT_EQ(failure_of(missing), missing + ": cannot open: No such file or directory");
    EXPECT_EQ(failure_of(folder.path(".")), folder.path(".") + ": is a directory");
    // Memory at address 0 can't be read, whoever asks.
    EXPECT_EQ(failure_of("/proc/self/mem"),
              "/proc/self/mem: cannot read: Input/output error");
}

TEST(Files, ReplacesAFileAndKeepsItsMode) {
    const TempDir folder;
    const std::string path = folder.write("text", "old");
    ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
    write_file(path, "new");
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    EXPECT_EQ(read_file(path), "new");
    // No temporary file stays behind.
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path("."))) {
        files += entry.is_regular_file();
    }
    EXPECT_EQ(files, 1u);
}

}  // namespace
