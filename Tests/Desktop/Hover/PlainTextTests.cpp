// SPDX-License-Identifier: MIT
// A text whose toolkit does not say where its characters stand: what is drawn is read instead.
#include <gtest/gtest.h>

#include "Tests/Desktop/Support/HoverStage.h"
#include "Tests/Desktop/Support/LookupExpectations.h"

namespace velmora::test {
namespace {

/// How far the outline may be from the glyphs where pixels are read.
constexpr double tolerance = 3;

/// Recognition loads behind the first window; its first answer tells that it is there.
bool awaitRecognition(HoverStage& stage) {
    return stage.desktop().waitUntil([&] {
        stage.leave();
        return !stage.hover(0, 0).word().empty();
    });
}

TEST(PlainText, IsReadFromThePixels) {
    HoverStage stage(ReadProgram::named("featherpad"));
    ASSERT_TRUE(awaitRecognition(stage)) << stage.explain(stage.lines().front().middle(0));
    for (std::size_t line = 0; line < stage.lines().size(); ++line) {
        const std::size_t position = 2 + line;
        const LookupResult word = stage.text().word(line, position);
        stage.leave();
        const Hover hover = stage.hover(line, position);
        SCOPED_TRACE(word.matchedText + ": " + hover.record.dump() +
                     (hover.word() == word.matchedText ? "" : stage.explain(hover.pointer)));
        ASSERT_EQ(hover.word(), word.matchedText);
        expectOutline(stage, hover, line, word.range, {tolerance, tolerance, tolerance});
    }
}

}  // namespace
}  // namespace velmora::test
