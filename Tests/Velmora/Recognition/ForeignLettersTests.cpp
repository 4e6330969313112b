// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/ForeignLetters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "Velmora/Platform/Recognition/CodePoint.h"

namespace velmora {
namespace {

using namespace std::string_literals;

TEST(ForeignLetters, AreKanaAndHangulInOrder) {
    const std::vector<char32_t> letters = foreignLetters();
    EXPECT_TRUE(std::all_of(letters.begin(), letters.end(), isKanaOrHangul));
    EXPECT_TRUE(std::is_sorted(letters.begin(), letters.end()));
    EXPECT_EQ(std::adjacent_find(letters.begin(), letters.end()), letters.end());
    for (const char32_t common : U"はでしたアス서울은한국"s) {
        EXPECT_TRUE(std::binary_search(letters.begin(), letters.end(), common))
            << static_cast<unsigned>(common);
    }
}

TEST(ForeignLetters, LookLikeNoCharacter) {
    const std::vector<char32_t> letters = foreignLetters();
    for (const char32_t twin : U"ニロエカタトハミチヒ"s) {
        EXPECT_FALSE(std::binary_search(letters.begin(), letters.end(), twin));
    }
}

TEST(ForeignLetters, StandBesideCharacters) {
    const std::vector<char32_t> all = withForeignLetters({U'文', U'一', U'は'});
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
    EXPECT_EQ(all.size(), foreignLetters().size() + 2);
    EXPECT_TRUE(std::binary_search(all.begin(), all.end(), U'文'));
}

}  // namespace
}  // namespace velmora
