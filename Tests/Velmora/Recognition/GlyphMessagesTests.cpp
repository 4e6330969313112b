// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Velmora/Platform/Recognition/RecognizerMessage.h"

namespace velmora {
namespace {

CellsToMatch someCells() {
    return {GrayImage(60, 20, 200), 19.5, {{{0, 20}, {U'中', U'文'}}, {{20, 40}, {}}}};
}

/// Every shorter body of a message is refused.
template <typename Parse>
void expectTruncatedRefused(const RecognizerMessage& message, Parse parse) {
    ASSERT_TRUE(parse(message));
    for (std::size_t size = 0; size < message.body.size(); ++size) {
        RecognizerMessage shorter = message;
        shorter.body.resize(size);
        EXPECT_FALSE(parse(shorter)) << size;
    }
}

TEST(GlyphMessages, CarryCellsAndMatches) {
    const CellsToMatch cells = someCells();
    const auto request = parseMatchCells(makeMatchCells(cells));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->strip, cells.strip);
    EXPECT_EQ(request->em, cells.em);
    ASSERT_EQ(request->cells.size(), 2U);
    EXPECT_EQ(request->cells[0].candidates, cells.cells[0].candidates);
    EXPECT_EQ(request->cells[1].cell, cells.cells[1].cell);
    const MatchedCells sent{0.9F, {{{U'中', 0.8F, 0.95F}, {U'申', 0.7F, 0.6F}}, {}}};
    const auto matches = parseMatches(makeMatches(sent));
    ASSERT_TRUE(matches);
    EXPECT_EQ(matches->fontFit, 0.9F);
    EXPECT_EQ(matches->cells, sent.cells);
}

TEST(GlyphMessages, CarryTheStyleOfALine) {
    const LineStyle style{3, 2, 18.5F, 0.93F};
    CellsToMatch cells = someCells();
    EXPECT_FALSE(parseMatchCells(makeMatchCells(cells))->style);
    cells.style = style;
    const auto request = parseMatchCells(makeMatchCells(cells));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->style, style);
    EXPECT_EQ(request->strip, cells.strip);
    EXPECT_EQ(parseMatches(makeMatches({0.9F, {{}}, style}))->style, style);
    EXPECT_FALSE(parseMatches(makeMatches({0.9F, {{}}}))->style);
    const float endless = std::numeric_limits<float>::infinity();
    for (const LineStyle& wrong :
         {LineStyle{100000, 0, 20, 1}, LineStyle{0, 9, 20, 1}, LineStyle{0, 0, 0, 1},
          LineStyle{0, 0, -3, 1}, LineStyle{0, 0, endless, 1}, LineStyle{0, 0, std::nanf(""), 1},
          LineStyle{0, 0, 20, endless}}) {
        cells.style = wrong;
        EXPECT_FALSE(parseMatchCells(makeMatchCells(cells)));
        EXPECT_FALSE(parseMatches(makeMatches({0.9F, {{}}, wrong})));
    }
}

TEST(GlyphMessages, CarryTheCharactersToKnow) {
    const auto request = parseKnowGlyphs(makeKnowGlyphs({"/some/folder", {U'中', U'文'}}));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->folder, "/some/folder");
    EXPECT_EQ(request->characters, (std::vector<char32_t>{U'中', U'文'}));
    EXPECT_FALSE(parseKnowGlyphs(makeKnowGlyphs({"", {U'文', U'中'}}))) << "not sorted";
}

TEST(GlyphMessages, RefuseWhatIsCutShort) {
    expectTruncatedRefused(makeMatchCells(someCells()), parseMatchCells);
    expectTruncatedRefused(makeMatches({0.5F, {{{U'中', 0.8F, 0.95F}}}}), parseMatches);
    expectTruncatedRefused(makeMatches({0.5F, {}, LineStyle{1, 1, 20, 0.9F}}), parseMatches);
    expectTruncatedRefused(makeKnowGlyphs({"a", {U'中'}}), parseKnowGlyphs);
}

TEST(GlyphMessages, RefuseWhatIsOutOfRange) {
    CellsToMatch cells = someCells();
    cells.em = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(parseMatchCells(makeMatchCells(cells)));
    cells = someCells();
    cells.cells[0].cell = {-1, 10};
    EXPECT_FALSE(parseMatchCells(makeMatchCells(cells)));
    cells = someCells();
    cells.cells[0].cell = {10, 5};
    EXPECT_FALSE(parseMatchCells(makeMatchCells(cells)));
    cells = someCells();
    cells.cells[0].candidates = {static_cast<char32_t>(0x110000)};
    EXPECT_FALSE(parseMatchCells(makeMatchCells(cells)));
    EXPECT_FALSE(parseMatches(makeMatches({std::nanf(""), {}})));
    EXPECT_FALSE(parseMatches(makeMatches({0, {{{U'中', std::nanf(""), 0}}}})));
}

TEST(GlyphMessages, AreNotTakenForEachOther) {
    EXPECT_FALSE(parseMatches(makeMatchCells(someCells())));
    EXPECT_FALSE(parseMatchCells(makeKnowGlyphs({"", {}})));
    EXPECT_FALSE(parseKnowGlyphs(makeReading({})));
}

}  // namespace
}  // namespace velmora
