#include "engine/gaps.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

TEST(Gaps, AreBlanksAndHyphensAlone) {
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE("byte " + std::to_string(byte));
        const std::string one(1, static_cast<char>(byte));
        const bool gap = byte == ' ' || byte == '-';
        EXPECT_EQ(lemara::has_gap(one), gap);
        EXPECT_EQ(lemara::has_gap("etxe" + one), gap);
        EXPECT_EQ(lemara::has_gap(one + "etxearen"), gap);
    }
}

TEST(Gaps, AreFoundWhereverTheyStand) {
    EXPECT_FALSE(lemara::has_gap(""));
    // No byte outside the text counts, nor is read.
    for (std::size_t size = 1; size < 60; ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            SCOPED_TRACE(std::to_string(at) + " of " + std::to_string(size));
            const auto memory = std::make_unique<char[]>(size + 2);
            std::string(size + 2, '-').copy(memory.get(), size + 2);
            std::string(size, '\xFF').copy(memory.get() + 1, size);
            const std::string_view text(memory.get() + 1, size);
            EXPECT_FALSE(lemara::has_gap(text));
            memory[1 + at] = at % 2 == 0 ? ' ' : '-';
            EXPECT_TRUE(lemara::has_gap(text));

            const std::string own(text);
            const auto exact = std::make_unique<char[]>(size);
            own.copy(exact.get(), size);
            EXPECT_TRUE(lemara::has_gap({exact.get(), size}));
        }
    }
}

}  // namespace
