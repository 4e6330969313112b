// SPDX-License-Identifier: MIT
#include <filesystem>

#include "Tests/Contracts/AtSpi/AtSpiToolkitTest.h"
#include "Tests/Support/TextCapture/ExtractionStage.h"

// Windows of our own with every kind of text that a toolkit has, and one program that does not say
// where its text stands.
namespace velmora::test {
namespace {

std::string fixture(const char* name) {
    return std::string(VELMORA_FIXTURES) + "/Toolkits/" + name;
}

class SampleTest : public AtSpiToolkitTest {
  protected:
    static void startWithText(std::vector<std::string> command) {
        bench = std::make_unique<AtSpiBench>();
        command.push_back(bench->desktop().writeFile("sample.txt", contractText).string());
        bench->start(std::move(command));
    }
    static void TearDownTestSuite() { stop(); }

    /// The element whose title is this, found by looking at points of the window; null after the
    /// deadline.
    static AccessibilityElement::Pointer titled(const std::string& title) {
        AccessibilityElement::Pointer found;
        bench->desktop().waitUntil([&] {
            const Rect area = bench->window().client;
            for (double y = area.minY() + 5; y < area.maxY() && !found; y += 14) {
                const auto element = bench->system().elementAtPosition({area.midX(), y});
                if (element && element->title() == title) {
                    found = element;
                }
            }
            return found != nullptr;
        });
        return found;
    }
};

/// Texts that do not know where their characters stand: the value is there, to check by it what is
/// recognised from pixels, and no place is told.
void expectTextWithoutPlaces(AtSpiBench& bench, const std::string& text) {
    const AccessibilityElement::Pointer element = bench.elementShowing(text);
    ASSERT_NE(element, nullptr);
    const std::int64_t location = positionIn(*element, text);
    EXPECT_EQ(element->boundsForRange({location, 1}), std::nullopt);
    const auto position = element->position();
    const auto size = element->size();
    ASSERT_TRUE(position && size);
    for (double y = position->y + 4; y < position->y + size->height; y += 9) {
        for (double x = position->x + 4; x < position->x + size->width; x += 60) {
            const auto hit = bench.system().elementAtPosition({x, y});
            ASSERT_NE(hit, nullptr);
            EXPECT_EQ(hit->rangeForPosition({x, y}), std::nullopt);
        }
    }
}

class AtSpiGtk3 : public SampleTest {
  protected:
    static void SetUpTestSuite() { startWithText({"/usr/bin/python3", fixture("gtk3_sample.py")}); }
};

TEST_F(AtSpiGtk3, readsATextView) {
    checkCharacter("国", "生命　", "　起源");
}
TEST_F(AtSpiGtk3, countsPairsAsTwo) {
    checkPair("😀");
}
TEST_F(AtSpiGtk3, saysNothingOfEmptySpace) {
    checkEmptySpace("国");
}
TEST_F(AtSpiGtk3, readsAnEntry) {
    checkCharacter("由", "框里😀　", "　词典");
}
TEST_F(AtSpiGtk3, readsALabel) {
    checkCharacter("田", "标签里😀　", "　词典");
}
TEST_F(AtSpiGtk3, readsASelection) {
    checkSelection("研究");
}
TEST_F(AtSpiGtk3, tellsAButtonsTitle) {
    EXPECT_NE(titled("按钮词典"), nullptr);
}
TEST_F(AtSpiGtk3, leavesAStoppedProgramAlone) {
    checkStopped("国");
}
TEST_F(AtSpiGtk3, answersQuickly) {
    reportTime("国");
}

TEST_F(AtSpiGtk3, keepsPasswordsToItself) {
    const AccessibilityElement::Pointer entry = shown("由");
    const AccessibilityElement::Pointer label = shown("田");
    ASSERT_TRUE(entry && label);
    const auto above = entry->position();
    const auto below = label->position();
    ASSERT_TRUE(above && below);
    // The password stands between the two.
    const auto secret = bench->system().elementAtPosition(
        {above->x + 20, (above->y + entry->size()->height + below->y) / 2});
    ASSERT_NE(secret, nullptr);
    EXPECT_FALSE(secret->equals(*entry));
    EXPECT_FALSE(secret->equals(*label));
    EXPECT_EQ(secret->value(), std::nullopt);
    EXPECT_EQ(secret->stringForRange({0, 2}), std::nullopt);
}

TEST_F(AtSpiGtk3, isNotAskedWhatItCannotAnswer) {
    // Over a text, whose ancestors have none, and over a button; twice, since the second extraction
    // asks ahead of time.
    const AccessibilityElement::Pointer label = shown("田");
    const AccessibilityElement::Pointer button = titled("按钮词典");
    ASSERT_TRUE(label && button);
    ExtractionServices services = ExtractionStage().services();
    services.accessibility = {std::shared_ptr<void>(), &bench->system()};
    const auto extractor = AccessibilityTextExtractor::create(services);
    for (const auto& element : {label, button, label, button}) {
        const Point corner = element->position().value_or(Point{});
        const Size size = element->size().value_or(Size{});
        const Point capture{corner.x + size.width / 2, corner.y + size.height / 2};
        extractor->extract({capture.x, 1000 - capture.y}, {}, nullptr);
    }
    // The toolkit complains of such questions in the program's log.
    const std::string log = bench->desktop().log();
    EXPECT_EQ(log.find("CRITICAL"), std::string::npos) << log;
}

TEST_F(AtSpiGtk3, findsTheFocusedElement) {
    const AccessibilityElement::Pointer entry = shown("由");
    ASSERT_NE(entry, nullptr);
    const auto position = entry->position();
    ASSERT_TRUE(position.has_value());
    bench->desktop().click(static_cast<int>(position->x) + 200, static_cast<int>(position->y) + 8);
    const bool found = bench->desktop().waitUntil([&] {
        bench->system().elementAtPosition({bench->window().client.midX(), 300});
        const auto focused = bench->system().focusedElement();
        return focused && focused->equals(*entry);
    });
    EXPECT_TRUE(found);
}

class AtSpiGtk4 : public SampleTest {
  protected:
    static void SetUpTestSuite() { startWithText({"/usr/bin/python3", fixture("gtk4_sample.py")}); }
};

TEST_F(AtSpiGtk4, readsATextView) {
    checkCharacter("国", "生命　", "　起源");
}
TEST_F(AtSpiGtk4, countsPairsAsTwo) {
    checkPair("😀");
}
TEST_F(AtSpiGtk4, saysNothingOfEmptySpace) {
    checkEmptySpace("国");
}
TEST_F(AtSpiGtk4, tellsNoPlacesOfAnEntry) {
    expectTextWithoutPlaces(*bench, "由");
}
TEST_F(AtSpiGtk4, tellsNoPlacesOfALabel) {
    expectTextWithoutPlaces(*bench, "田");
}
TEST_F(AtSpiGtk4, readsASelection) {
    checkSelection("研究");
}
TEST_F(AtSpiGtk4, leavesAStoppedProgramAlone) {
    checkStopped("国");
}
TEST_F(AtSpiGtk4, answersQuickly) {
    reportTime("国");
}

class AtSpiQt6 : public SampleTest {
  protected:
    static void SetUpTestSuite() {
        startWithText({std::string(VELMORA_BUILD_FOLDER) + "/velmora_qt_sample"});
    }
};

TEST_F(AtSpiQt6, readsARichText) {
    checkCharacter("国", "生命　", "　起源");
}
TEST_F(AtSpiQt6, countsPairsAsTwo) {
    checkPair("😀");
}
TEST_F(AtSpiQt6, saysNothingOfEmptySpace) {
    checkEmptySpace("国");
}
TEST_F(AtSpiQt6, readsALineEdit) {
    checkCharacter("由", "框里😀　", "　词典");
}
TEST_F(AtSpiQt6, readsASelection) {
    checkSelection("研究");
}
TEST_F(AtSpiQt6, tellsAButtonsTitle) {
    EXPECT_NE(titled("按钮词典"), nullptr);
}
TEST_F(AtSpiQt6, tellsALabelsTitle) {
    EXPECT_NE(titled("标签里的词典"), nullptr);
}
TEST_F(AtSpiQt6, leavesAStoppedProgramAlone) {
    checkStopped("国");
}
TEST_F(AtSpiQt6, answersQuickly) {
    reportTime("国");
}

TEST_F(AtSpiQt6, tellsNoPlacesOfAPlainText) {
    expectTextWithoutPlaces(*bench, "第二行");
}

class AtSpiQt5Editor : public SampleTest {
  protected:
    static void SetUpTestSuite() { startWithText({"featherpad", "--standalone"}); }
};

TEST_F(AtSpiQt5Editor, tellsNoPlacesOfAPlainText) {
    expectTextWithoutPlaces(*bench, "国");
}

TEST_F(AtSpiQt5Editor, readsTheValue) {
    const AccessibilityElement::Pointer element = shown("国");
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(element->value().value_or("").substr(0, 51), std::string(contractText).substr(0, 51));
    EXPECT_EQ(stringAt(*element, 18, 4), "😀😀");
}

}  // namespace
}  // namespace velmora::test
