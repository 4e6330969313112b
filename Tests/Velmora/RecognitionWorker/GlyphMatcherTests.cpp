// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphMatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Velmora/RecognitionWorker/DrawnLine.h"

namespace velmora {
namespace {

using testing::bestOf;
using testing::drawnLine;
using testing::roughened;

const std::u32string text = U"中文字典末";

/// Searches end when they take too long, so there are no more fonts than a test needs: a plain one
/// and one that looks otherwise.
std::vector<FontFace> twoFaces() {
    std::vector<FontFace> faces;
    for (const FontFace& face : GlyphFonts::installed()) {
        if (!face.bold && !face.bitmaps && faces.size() < 2 &&
            (faces.empty() || face.path != faces.front().path)) {
            faces.push_back(face);
        }
    }
    return faces;
}

/// One store for all tests: drawing it takes the longest.
class SharedStore {
  public:
    static SharedStore& get() {
        static SharedStore shared;
        return shared;
    }

    const GlyphStore& store() const { return *store_; }

  private:
    SharedStore() {
        std::u32string known = text + U"未日曰土士己已巳天夭大太犬我你他好词国们は";
        std::sort(known.begin(), known.end());
        const std::vector<char32_t> characters{known.begin(), known.end()};
        GlyphFonts fonts{twoFaces()};
        const std::string path = folder_.path() / "glyphs.bin";
        GlyphStore::write(path, characters, fonts, [] { return false; });
        store_ = GlyphStore::map(path, GlyphStore::keyOf(characters, fonts.faces()));
    }

    testing::TemporaryFolder folder_;
    std::unique_ptr<GlyphStore> store_;
};

class Matcher : public ::testing::Test {
  protected:
    MatchedCells match(const CellsToMatch& line) {
        return matcher.match(line, SharedStore::get().store());
    }

    /// As somebody says who has not seen anything before.
    MatchedCells matchAfresh(const CellsToMatch& line) {
        GlyphMatcher other(fonts);
        return other.match(line, SharedStore::get().store());
    }

    static GlyphStyle plain(double size, GlyphRendering rendering = GlyphRendering::unhinted) {
        return {0, size, rendering};
    }

    GlyphFonts fonts{twoFaces()};
    GlyphMatcher matcher{fonts};
};

/// Pixel by pixel the same.
constexpr float same = 0.995F;

TEST_F(Matcher, FindsTheFontAndRenderingOfALine) {
    for (const std::size_t face : {std::size_t{0}, std::size_t{1}}) {
        for (const GlyphRendering rendering :
             {GlyphRendering::hinted, GlyphRendering::unhinted, GlyphRendering::subpixel}) {
            const MatchedCells matches = matchAfresh(drawnLine(fonts, text, {face, 24, rendering}));
            SCOPED_TRACE(fonts.faces()[face].path + " " +
                         std::to_string(static_cast<int>(rendering)));
            EXPECT_EQ(bestOf(matches), text);
            EXPECT_GT(matches.fontFit, same);
        }
    }
}

TEST_F(Matcher, FindsTheSizeNearTheDistanceOfTheCharacters) {
    const GlyphStyle style = plain(24, GlyphRendering::hinted);
    for (const double off : {-2.0, -1.0, -0.5, 0.5, 1.0}) {
        EXPECT_GT(matchAfresh(drawnLine(fonts, text, style, 24 + off)).fontFit, same) << off;
    }
    EXPECT_LT(matchAfresh(drawnLine(fonts, text, style, 34)).fontFit, same)
        << "what is that far off is not looked for";
}

TEST_F(Matcher, FindsTheBitmapsOfAFontAtTheirOwnSize) {
    std::vector<FontFace> faces = GlyphFonts::installed();
    std::erase_if(faces, [](const FontFace& face) { return !face.bitmaps; });
    ASSERT_FALSE(faces.empty()) << "no font with bitmaps is installed";
    faces.insert(faces.begin(), fonts.faces().front());
    GlyphFonts withBitmaps(faces);
    for (const double size : {12.0, 13.0, 15.0, 16.0}) {
        for (const double off : {-1.0, 0.0, 1.0}) {
            GlyphMatcher other(withBitmaps);
            const MatchedCells matches = other.match(
                drawnLine(withBitmaps, text, {1, size, GlyphRendering::hinted}, size + off),
                SharedStore::get().store());
            EXPECT_EQ(bestOf(matches), text) << size << " " << off;
            EXPECT_GT(matches.fontFit, same) << size << " " << off;
        }
    }
}

TEST_F(Matcher, GoesOnWithAStyleThatFitsWell) {
    const CellsToMatch line = drawnLine(fonts, text, plain(24));
    const CellsToMatch similar = drawnLine(fonts, text, plain(24, GlyphRendering::hinted));
    ASSERT_GT(matchAfresh(similar).fontFit, same);
    ASSERT_GT(match(line).fontFit, same);
    const float fit = match(similar).fontFit;
    EXPECT_LT(fit, same) << "compared with the style before, without a search";
    EXPECT_GT(fit, 0.93F);
}

TEST_F(Matcher, LooksForAnotherStyleWhereTheLastDoesNotFit) {
    ASSERT_GT(match(drawnLine(fonts, text, plain(24))).fontFit, same);
    GlyphStyle other = plain(24);
    other.face = 1;
    EXPECT_GT(match(drawnLine(fonts, text, other)).fontFit, same);
    EXPECT_GT(match(drawnLine(fonts, text, plain(40))).fontFit, same);
}

TEST_F(Matcher, ForgetsAStyleAfterSixOthers) {
    const CellsToMatch similar = drawnLine(fonts, text, plain(24, GlyphRendering::hinted));
    const auto matchOthers = [&](int count) {
        for (int other = 0; other < count; ++other) {
            match(drawnLine(fonts, text, plain(30 + 4 * other)));
        }
    };
    match(drawnLine(fonts, text, plain(24)));
    matchOthers(5);
    EXPECT_LT(match(similar).fontFit, same) << "one of the last six";
    matchOthers(6);
    EXPECT_GT(match(similar).fontFit, same) << "it is searched for again";
}

/// Outlined letters are no font's: what searches have found twice is taken as the best there is.
TEST_F(Matcher, StopsSearchingWhereSearchesFindNothingBetter) {
    const GlyphStyle style = plain(24, GlyphRendering::hinted);
    const CellsToMatch line = roughened(drawnLine(fonts, text, style), 5);
    // Another size fits it better than the style of the line, which fits it as well as its own.
    const CellsToMatch next =
        roughened(drawnLine(fonts, text, plain(24.5, GlyphRendering::hinted), 24), 11);
    const float fit = match(line).fontFit;
    ASSERT_LT(fit, 0.93F) << "otherwise the style counts as sure at once";
    ASSERT_GT(fit, 0.75F) << "otherwise it is not remembered";
    const float searched = matchAfresh(next).fontFit;
    GlyphMatcher afterOne(fonts);
    afterOne.match(line, SharedStore::get().store());
    EXPECT_EQ(afterOne.match(next, SharedStore::get().store()).fontFit, searched)
        << "one search says little";
    EXPECT_EQ(match(line).fontFit, fit);
    EXPECT_LT(match(next).fontFit, searched) << "no third search";
}

TEST_F(Matcher, GivesSixteenMatchesAtMostWithTheGivenAmongThem) {
    CellsToMatch line = drawnLine(fonts, U"未", plain(24));
    line.cells[0].candidates = {U'龙', U'末'};
    const auto cell = match(line).cells.at(0);
    EXPECT_LE(cell.size(), CellsToMatch::mostMatches);
    EXPECT_EQ(cell.front().character, U'未');
    for (const char32_t given : {U'龙', U'末'}) {
        const auto found = std::find_if(cell.begin(), cell.end(), [given](const GlyphMatch& match) {
            return match.character == given;
        });
        ASSERT_NE(found, cell.end());
        EXPECT_LT(found->exact, cell.front().exact);
    }
    EXPECT_EQ(std::count_if(cell.begin(), cell.end(),
                            [](const GlyphMatch& match) { return match.character == U'末'; }),
              1);
}

TEST_F(Matcher, AnswersForCellsWithoutInkAndForNoCells) {
    const MatchedCells none = match({GrayImage(1, 1), 1, {}});
    EXPECT_TRUE(none.cells.empty());
    EXPECT_EQ(none.fontFit, 0);
    const CellsToMatch blank{GrayImage(100, 30), 24, {{{0, 24}, {U'中'}}, {{90, 400}, {}}}};
    const MatchedCells matches = match(blank);
    ASSERT_EQ(matches.cells.size(), 2U);
    EXPECT_TRUE(matches.cells[0].empty());
    EXPECT_TRUE(matches.cells[1].empty());
    for (const double em : {0.0, -5.0, 1e9}) {
        CellsToMatch line = drawnLine(fonts, text, plain(24));
        line.em = em;
        EXPECT_EQ(match(line).cells.size(), text.size()) << em;
    }
}

TEST_F(Matcher, WithoutFontsComparesDirectionsAlone) {
    GlyphFonts none{{}};
    const MatchedCells matches =
        GlyphMatcher(none).match(drawnLine(fonts, text, plain(24)), SharedStore::get().store());
    EXPECT_EQ(bestOf(matches), text);
    EXPECT_EQ(matches.fontFit, 0);
}

/// The first two fonts of one file, which have other forms for another region; fewer where no file
/// has two.
std::vector<FontFace> sisterFaces() {
    const std::vector<FontFace> installed = GlyphFonts::installed();
    for (const FontFace& face : installed) {
        for (const FontFace& other : installed) {
            if (other.path == face.path && other.index != face.index && !face.bold) {
                return {face, other};
            }
        }
    }
    return {};
}

TEST_F(Matcher, ACompanionChangesNothing) {
    Companion companion(true);
    GlyphFonts others{twoFaces()};
    GlyphMatcher shared(others, &companion);
    for (const GlyphStyle& style :
         {plain(24), plain(16, GlyphRendering::hinted), plain(31), plain(24)}) {
        const CellsToMatch line = drawnLine(fonts, text, style);
        const MatchedCells alone = match(line);
        const MatchedCells together = shared.match(line, SharedStore::get().store());
        EXPECT_EQ(together.cells, alone.cells) << style.size;
        EXPECT_EQ(together.style, alone.style) << style.size;
        EXPECT_EQ(together.fontFit, alone.fontFit) << style.size;
    }
}

TEST_F(Matcher, AStyleThatIsGivenIsTheOneThatIsComparedIn) {
    CellsToMatch line = drawnLine(fonts, text, plain(24));
    const MatchedCells searched = match(line);
    ASSERT_TRUE(searched.style);
    line.style = searched.style;
    EXPECT_EQ(match(line).cells, searched.cells);
    EXPECT_EQ(match(line).style, searched.style);
    line.style->size += 4;
    const MatchedCells wrong = match(line);
    EXPECT_EQ(wrong.style, line.style);
    EXPECT_LT(wrong.fontFit, searched.fontFit);
    for (const LineStyle& absurd : {LineStyle{200, 0, 24, 1}, LineStyle{0, 3, 24, 1},
                                    LineStyle{0, 0, 1e-9F, 1}, LineStyle{0, 0, 500, 1}}) {
        line.style = absurd;
        EXPECT_EQ(match(line).cells.size(), text.size());
    }
}

TEST_F(Matcher, WhatFitsInASisterFontAloneIsFoundThere) {
    const std::vector<FontFace> sisters = sisterFaces();
    ASSERT_EQ(sisters.size(), 2U) << "no font file with several fonts";
    GlyphFonts both{sisters};
    const std::u32string shown = text + U"词国们";
    CellsToMatch line = drawnLine(both, shown, {1, 32, GlyphRendering::unhinted});
    line.style = LineStyle{0, static_cast<std::uint32_t>(GlyphRendering::unhinted), 32, 1};
    const MatchedCells matches = GlyphMatcher(both).match(line, SharedStore::get().store());
    EXPECT_EQ(bestOf(matches), shown);
    for (const std::vector<GlyphMatch>& cell : matches.cells) {
        ASSERT_FALSE(cell.empty());
        EXPECT_GT(cell.front().exact, 0.96F);
    }
}

}  // namespace
}  // namespace velmora
