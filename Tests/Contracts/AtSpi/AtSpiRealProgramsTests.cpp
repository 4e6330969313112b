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
                                  "; echo 哈哈哈哈哈哈; exec sleep 1000'"})
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
/// characters, so that one reaching beyond the middle of a wide row could be anything behind it.
class AtSpiTerminalSelection : public AtSpiTerminal {
  protected:
    /// Selects what stands from one text to the end of another, and finds the element there.
    static AccessibilityElement::Pointer selected(const std::string& from, std::int64_t begin,
                                                  const std::string& to, std::int64_t end) {
        const AccessibilityElement::Pointer element = shown(from);
        if (!element) {
            return nullptr;
        }
        const auto first = element->boundsForRange({positionIn(*element, from) + begin, 1});
        const auto last = element->boundsForRange({positionIn(*element, to) + end, 1});
        if (!first || !last) {
            return nullptr;
        }
        const auto corner = [&last] {
            return bench->desktop()
                .screenshot({last->minX() + 1, last->minY() + 1, 1, 1})
                .row(0)[0];
        };
        const std::uint32_t before = corner();
        bench->drag(*first, *last);
        if (!bench->desktop().waitUntil([&] { return corner() != before; })) {
            return nullptr;
        }
        return bench->system().elementAtPosition({first->midX(), first->midY()});
    }

    /// What the element tells of its selection.
    struct Told {
        std::optional<std::string> text;
        std::optional<Utf16Range> range;
        std::optional<Rect> bounds;
    };

    /// Asked of the element that shows this text until it tells: a busy program may need longer
    /// for all of it than one query lasts.
    static Told toldAt(const std::string& text) {
        Told told;
        bench->desktop().waitUntil([&] {
            const AccessibilityElement::Pointer element = bench->elementShowing(text);
            told = {};
            if (element) {
                told.text = element->selectedText();
                told.range = element->selectedTextRange();
                told.bounds = told.range ? element->boundsForRange(*told.range) : std::nullopt;
            }
            return told.text && told.bounds;
        });
        return told;
    }

    void TearDown() override {
        bench->offerSelections(true);
        AtSpiToolkitTest::TearDown();
    }
};

TEST_F(AtSpiTerminalSelection, IsFoundByItsTextWhereItsEndIsNotTold) {
    const auto hit = selected("生命", 0, "起源", 1);
    ASSERT_NE(hit, nullptr);
    const Told told = toldAt("生命");
    EXPECT_EQ(told.text, "生命　国　起源");
    ASSERT_TRUE(told.range);
    EXPECT_EQ(told.range->location, positionIn(*hit, "生命"));
    EXPECT_EQ(told.range->length, 7);
    EXPECT_TRUE(told.bounds);
}

TEST_F(AtSpiTerminalSelection, IsFoundByItsTextWhereItsBeginningIsNotToldEither) {
    const auto hit = selected("后面", 0, "文字", 1);
    ASSERT_NE(hit, nullptr);
    const Told told = toldAt("后面");
    EXPECT_EQ(told.text, "后面还有些文字");
    ASSERT_TRUE(told.range);
    EXPECT_EQ(told.range->location, positionIn(*hit, "后面"));
}

TEST_F(AtSpiTerminalSelection, GoesOverTheEndOfARow) {
    const AccessibilityElement::Pointer element = shown("很好");
    ASSERT_NE(element, nullptr);
    const auto first = element->boundsForRange({positionIn(*element, "很好"), 1});
    const auto last = element->boundsForRange({positionIn(*element, "汉字"), 2});
    ASSERT_TRUE(first && last);
    bench->desktop().movePointer(static_cast<int>(first->minX()) + 1,
                                 static_cast<int>(first->midY()));
    bench->desktop().pressButton(1);
    bench->desktop().movePointer(static_cast<int>(first->midX()),
                                 static_cast<int>(first->midY()) + 5);
    bench->desktop().movePointer(static_cast<int>(last->maxX()) - 1,
                                 static_cast<int>(last->midY()));
    bench->desktop().releaseButton(1);
    std::optional<std::string> text;
    EXPECT_TRUE(bench->desktop().waitUntil([&] {
        const auto hit = bench->system().elementAtPosition({last->midX(), last->midY()});
        text = hit ? hit->selectedText() : std::nullopt;
        return text == "很好。\n😀😀汉字";
    })) << text.value_or("(nothing)");
}

TEST_F(AtSpiTerminalSelection, IsNoneWhereItsTextStandsTwice) {
    const auto hit = selected("哈哈", 4, "哈哈", 5);
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->selectedText(), std::nullopt);
    EXPECT_EQ(hit->selectedTextRange(), std::nullopt);
}

TEST_F(AtSpiTerminalSelection, IsNoneWhereNobodyTellsItsText) {
    const auto hit = selected("生命", 0, "起源", 1);
    ASSERT_NE(hit, nullptr);
    bench->offerSelections(false);
    const auto place = hit->boundsForRange({positionIn(*hit, "生命"), 1});
    ASSERT_TRUE(place);
    const auto again = bench->system().elementAtPosition({place->midX(), place->midY()});
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->selectedText(), std::nullopt);
    EXPECT_EQ(again->selectedTextRange(), std::nullopt);
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
