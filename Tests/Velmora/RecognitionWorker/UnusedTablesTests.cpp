// SPDX-License-Identifier: MIT
// Whether the library calls the functions that stand in for its own, and still reads.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include "Tests/Velmora/RecognitionWorker/DrawnLine.h"
#include "Velmora/Platform/Linux/Tesseract/RecognizerProcess.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/TesseractEngine.h"

namespace velmora {
namespace {

/// The file that holds the function of this name that a caller gets; empty where there is none.
std::string holderOf(void* library, const char* name) {
    void* function = ::dlsym(library, name);
    Dl_info info{};
    return function != nullptr && ::dladdr(function, &info) != 0 ? info.dli_fname : "";
}

TEST(UnusedTables, AreFilledByNobody) {
    TesseractEngine engine;  // So that the library is there.
    const std::string program = holderOf(RTLD_DEFAULT, "main");
    for (const char* name :
         {"_ZN9tesseract15AddAdaptedClassEPNS_22ADAPT_TEMPLATES_STRUCTEPNS_18ADAPT_CLASS_STRUCTEi",
          "_ZN9tesseract13UnicharAmbigs13LoadUniversalERKNS_10UNICHARSETEPS1_"}) {
        const std::string called = holderOf(RTLD_DEFAULT, name);
        EXPECT_FALSE(called.empty()) << name;
        EXPECT_EQ(called.find("libtesseract"), std::string::npos) << name;
        // The library has a function of this name itself, or nothing would be replaced.
        EXPECT_NE(holderOf(RTLD_NEXT, name).find("libtesseract"), std::string::npos) << name;
    }
}

TEST(UnusedTables, AreNotMissed) {
    GlyphFonts fonts(GlyphFonts::installed());
    for (const auto& [model, shown, read] :
         {std::tuple{ScriptModel::simplified, U"图书馆每天上午开门", "图书馆每天上午开门"},
          {ScriptModel::traditional, U"圖書館每天上午開門", "圖書館每天上午開門"}}) {
        TesseractEngine engine;
        ASSERT_EQ(engine.load(RecognizerProcess::defaultDataFolder(), model), ModelState::ready);
        const CellsToMatch line = testing::drawnLine(
            fonts, shown, {testing::plainFace(fonts), 38, GlyphRendering::unhinted});
        // Twice: what the first line leaves behind is no use to the second.
        for (int time = 0; time < 2; ++time) {
            const auto reading = engine.read(line.strip);
            ASSERT_TRUE(reading);
            std::string text;
            for (const ReadSymbol& symbol : *reading) {
                text += symbol.text;
            }
            EXPECT_EQ(text, read);
        }
    }
}

}  // namespace
}  // namespace velmora
