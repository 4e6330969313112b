// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <fstream>

#include "Tests/Desktop/Support/HoverStage.h"
#include "Tests/Support/TemporaryFolder.h"

namespace velmora::test {

namespace {

/// Without the languages' data the program reads what other programs tell, and says what lacks.
TEST(MissingLanguages, LeaveTheTextsOfProgramsReadable) {
    const testing::TemporaryFolder folder;
    for (const char* name : {"chi_sim.traineddata", "chi_tra.traineddata"}) {
        std::ofstream(folder / name) << "cut off";
    }
    HoverStage::Options options;
    options.velmora.environment["TESSDATA_PREFIX"] = folder.path().string();
    HoverStage stage(ReadProgram::named("mousepad"), options);
    const Hover hover = stage.hover(1, 4);
    EXPECT_EQ(hover.word(), stage.text().word(1, 4).matchedText);
    stage.leave();

    // Nothing is to be read beside the text; the hover still gets its answer.
    const Hover nothing = stage.hover({stage.blankPlace().x + 40, stage.blankPlace().y + 30});
    EXPECT_TRUE(nothing.record.is_object());
    EXPECT_EQ(nothing.word(), "");
    EXPECT_TRUE(stage.desktop().waitUntil([&] {
        return stage.velmora()
                   .command({"diagnostics"})
                   .output.find(
                       "Text recognition: recognition data for simplified Chinese is damaged: "
                       "reinstall tesseract-ocr-chi-sim") != std::string::npos;
    }));
    EXPECT_EQ(stage.hover(4, 2).word(), stage.text().word(4, 2).matchedText);
    EXPECT_TRUE(stage.velmora().process().isRunning());
}

}  // namespace
}  // namespace velmora::test
