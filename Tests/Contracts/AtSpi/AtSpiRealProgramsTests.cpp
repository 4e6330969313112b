// SPDX-License-Identifier: MIT
#include <cstdlib>
#include <filesystem>

#include "Tests/Contracts/AtSpi/AtSpiToolkitTest.h"

// Each suite shows the same text in a program of one toolkit and checks the same things.
namespace velmora::test {
namespace {

std::string page() {
    return "<!doctype html><meta charset=utf-8><title>页面</title>"
           "<body style=\"margin:40px;font:22px 'Noto Sans CJK SC'\">"
           "<p>我们在学习<b>中文词典</b>，今天<a href=x>天气</a>很好。</p>"
           "<p>😀😀汉字和研究生命　国　起源</p>"
           "<p>plain words 词典 here</p>"
           "<p><textarea rows=2 cols=30 spellcheck=false>文本框里😀　田　汉字</textarea></p>"
           "<p><input value='输入框里　由　词典' style='width:300px'></p></body>";
}

/// The file that the program is to show, made before there is a desktop to make it on.
#define VELMORA_TOOLKIT_SUITE(Suite, ...)                                                      \
    class Suite : public AtSpiToolkitTest {                                                    \
      protected:                                                                               \
        static void SetUpTestSuite() {                                                         \
            bench = std::make_unique<AtSpiBench>();                                            \
            const std::string text =                                                           \
                bench->desktop().writeFile("sample.txt", contractText).string();               \
            const std::string html = bench->desktop().writeFile("page.html", page()).string(); \
            const std::string folder = bench->desktop().folder().string();                     \
            (void)text;                                                                        \
            (void)html;                                                                        \
            (void)folder;                                                                      \
            bench->start(__VA_ARGS__);                                                         \
        }                                                                                      \
        static void TearDownTestSuite() { stop(); }                                            \
    };                                                                                         \
    TEST_F(Suite, readsTheCharacterUnderThePointer) {                                          \
        checkCharacter("国", "生命　", "　起源");                                              \
    }                                                                                          \
    TEST_F(Suite, saysNothingOfEmptySpace) {                                                   \
        checkEmptySpace("国");                                                                 \
    }                                                                                          \
    TEST_F(Suite, readsTheSelection) {                                                         \
        checkSelection("研究");                                                                \
    }                                                                                          \
    TEST_F(Suite, leavesAStoppedProgramAlone) {                                                \
        checkStopped("国");                                                                    \
    }                                                                                          \
    TEST_F(Suite, answersQuickly) {                                                            \
        reportTime("国");                                                                      \
    }

using Command = std::vector<std::string>;

VELMORA_TOOLKIT_SUITE(AtSpiGtk3Editor, Command{"mousepad", text})
VELMORA_TOOLKIT_SUITE(AtSpiGtk4Editor, Command{"gnome-text-editor", "--standalone", text})
VELMORA_TOOLKIT_SUITE(AtSpiTerminal,
                      // The second line is so long that its middle lies behind the word selected.
                      Command{"lxterminal", "-e",
                              "sh -c 'sed s/起源$/起源　后面还有些文字/ " + text +
                                  "; exec sleep 1000'"})
VELMORA_TOOLKIT_SUITE(AtSpiChromium,
                      Command{"chromium", "--force-renderer-accessibility", "--no-sandbox",
                              "--disable-gpu", "--no-first-run", "--disable-background-networking",
                              "--disable-component-update", "--disable-sync",
                              "--user-data-dir=" + folder + "/chromium", "file://" + html})
VELMORA_TOOLKIT_SUITE(AtSpiFirefox, Command{"firefox-esr", "--no-remote", "--profile",
                                            folder + "/home", "file://" + html})
VELMORA_TOOLKIT_SUITE(AtSpiLibreOffice,
                      Command{"soffice", "--norestore", "--nologo", "--nofirststartwizard",
                              "--writer", text},
                      {{"SAL_USE_VCLPLUGIN", "gtk3"}})

TEST_F(AtSpiGtk3Editor, countsPairsAsTwo) {
    checkPair("😀");
}
TEST_F(AtSpiGtk4Editor, countsPairsAsTwo) {
    checkPair("😀");
}
TEST_F(AtSpiTerminal, countsPairsAsTwo) {
    checkPair("😀");
}

/// A terminal tells of a selection in columns but never of more columns than the row has
/// characters, so that one reaching beyond the middle of a wide row could end anywhere behind it.
TEST_F(AtSpiTerminal, saysNothingOfASelectionWhoseEndItDoesNotTell) {
    const AccessibilityElement::Pointer element = shown("起源");
    ASSERT_NE(element, nullptr);
    const auto first = element->boundsForRange({positionIn(*element, "生命"), 1});
    const auto last = element->boundsForRange({positionIn(*element, "起源") + 1, 1});
    ASSERT_TRUE(first && last);
    const auto corner = [&last] {
        return bench->desktop().screenshot({last->minX() + 1, last->minY() + 1, 1, 1}).row(0)[0];
    };
    const std::uint32_t before = corner();
    bench->drag(*first, *last);
    ASSERT_TRUE(bench->desktop().waitUntil([&] { return corner() != before; }));
    const auto hit = bench->system().elementAtPosition({first->midX(), first->midY()});
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->selectedText(), std::nullopt);
    EXPECT_EQ(hit->selectedTextRange(), std::nullopt);
}
TEST_F(AtSpiChromium, countsPairsAsTwo) {
    checkPair("😀");
}
TEST_F(AtSpiFirefox, countsPairsAsTwo) {
    checkPair("😀");
}
TEST_F(AtSpiLibreOffice, countsPairsAsTwo) {
    checkPair("😀");
}

}  // namespace
}  // namespace velmora::test
