// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphStore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Velmora/RecognitionWorker/DrawnLine.h"

namespace velmora {
namespace {

/// Kilobytes of a mapped file that are in memory now; −1 where this process has not mapped it.
long residentKilobytes(const std::string& path) {
    std::ifstream maps("/proc/self/smaps");
    bool isIt = false;
    for (std::string line; std::getline(maps, line);) {
        if (line.find('-') != std::string::npos && line.find(" r") != std::string::npos) {
            isIt = line.size() >= path.size() &&
                   line.compare(line.size() - path.size(), path.size(), path) == 0;
        } else if (isIt && line.rfind("Rss:", 0) == 0) {
            return std::atol(line.c_str() + 4);
        }
    }
    return -1;
}

class GlyphStores : public ::testing::Test {
  protected:
    GlyphStores() { std::sort(characters.begin(), characters.end()); }

    static bool never() { return false; }

    std::unique_ptr<GlyphStore> store() {
        return GlyphStore::write(path(), characters, fonts, never)
                   ? GlyphStore::map(path(), GlyphStore::keyOf(characters, fonts.faces()))
                   : nullptr;
    }

    std::string path() const { return folder.path() / "glyphs.bin"; }

    GlyphFeatures inkOf(char32_t character) {
        const auto drawn =
            fonts.draw(character, {testing::plainFace(fonts), 24, GlyphRendering::unhinted});
        return *GlyphFeatures::of(*drawn);
    }

    testing::TemporaryFolder folder;
    std::vector<char32_t> characters{U'中', U'文', U'未', U'末', U'は', U'の', U'서'};
    GlyphFonts fonts{GlyphFonts::installed()};
};

TEST_F(GlyphStores, TellTheNearestCharactersAndThenLetters) {
    const auto stored = store();
    ASSERT_TRUE(stored);
    EXPECT_GE(stored->size(), characters.size());
    const auto nearest = stored->nearest(inkOf(U'未'), 3, 1);
    ASSERT_EQ(nearest.size(), 4U);
    EXPECT_EQ(nearest[0].character, U'未');
    EXPECT_EQ(nearest[1].character, U'末');
    EXPECT_GT(nearest[0].similarity, nearest[1].similarity);
    EXPECT_GE(nearest[1].similarity, nearest[2].similarity);
    EXPECT_TRUE(nearest[3].character == U'は' || nearest[3].character == U'の' ||
                nearest[3].character == U'서');
    EXPECT_EQ(stored->nearest(inkOf(U'の'), 0, 2).front().character, U'の');
    EXPECT_TRUE(stored->nearest(inkOf(U'の'), 0, 0).empty());
}

TEST_F(GlyphStores, TellHowAlikeOneCharacterIs) {
    const auto stored = store();
    ASSERT_TRUE(stored);
    const GlyphFeatures ink = inkOf(U'末');
    EXPECT_GT(stored->similarity(ink, U'末'), 0.95F);
    EXPECT_EQ(stored->similarity(ink, U'末'), stored->nearest(ink, 1, 0).front().similarity);
    EXPECT_LT(stored->similarity(ink, U'文'), stored->similarity(ink, U'末'));
    EXPECT_EQ(stored->similarity(ink, U'龙'), 0) << "it is not in the store";
}

TEST_F(GlyphStores, AreFoundByTheirCharactersAndFontsOnly) {
    ASSERT_TRUE(store());
    auto fewer = characters;
    fewer.pop_back();
    EXPECT_FALSE(GlyphStore::map(path(), GlyphStore::keyOf(fewer, fonts.faces())));
    auto faces = fonts.faces();
    faces.front().modified += 1;
    EXPECT_FALSE(GlyphStore::map(path(), GlyphStore::keyOf(characters, faces)));
    faces = fonts.faces();
    faces.front().index += 1;
    EXPECT_FALSE(GlyphStore::map(path(), GlyphStore::keyOf(characters, faces)));
    EXPECT_TRUE(GlyphStore::map(path(), GlyphStore::keyOf(characters, fonts.faces())));
    EXPECT_FALSE(GlyphStore::map(folder.path() / "other.bin", 0));
}

TEST_F(GlyphStores, ThatAreCutOffOrTooLongAreNone) {
    ASSERT_TRUE(store());
    const std::uint64_t key = GlyphStore::keyOf(characters, fonts.faces());
    const auto whole = std::filesystem::file_size(path());
    for (const auto length :
         {whole - 1, whole + 1, std::uintmax_t{16}, std::uintmax_t{3}, std::uintmax_t{0}}) {
        std::filesystem::resize_file(path(), length);
        EXPECT_FALSE(GlyphStore::map(path(), key)) << length;
    }
}

TEST_F(GlyphStores, AppearOnlyWhenTheyAreWhole) {
    int asked = 0;
    EXPECT_FALSE(GlyphStore::write(path(), characters, fonts, [&] { return ++asked > 5; }));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    EXPECT_FALSE(GlyphStore::write(folder.path() / "no" / "glyphs.bin", characters, fonts, never));
}

TEST_F(GlyphStores, GiveTheirMemoryBackWhenTheyRest) {
    const auto stored = store();
    ASSERT_TRUE(stored);
    const GlyphFeatures ink = inkOf(U'中');
    const float before = stored->similarity(ink, U'中');
    stored->nearest(ink, 3, 0);
    EXPECT_GT(residentKilobytes(path()), 0);
    stored->rest();
    EXPECT_EQ(residentKilobytes(path()), 0);
    EXPECT_EQ(stored->similarity(ink, U'中'), before) << "it comes back from the file";
    EXPECT_GT(residentKilobytes(path()), 0);
}

}  // namespace
}  // namespace velmora
