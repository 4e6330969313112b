// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/AccessibilityTextExtractor.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "Tests/Support/TextCapture/ExtractionStage.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {
namespace {

/// Remembers what it is told.
class TraceLog final : public ExtractionTrace {
  public:
    void attemptEnded(const std::string& attempt, const std::string& outcome,
                      double milliseconds) override {
        attempts.push_back(attempt);
        outcomes.push_back(outcome);
        EXPECT_GE(milliseconds, 0);
    }
    void regionUsed(const RecognizedRegion& region) override { lines = region.lines.size(); }
    void finished(std::optional<ExtractionPath> path) override {
        ++ends;
        lastPath = path;
    }

    std::vector<std::string> attempts;
    std::vector<std::string> outcomes;
    std::size_t lines = 0;
    int ends = 0;
    std::optional<ExtractionPath> lastPath;
};

/// The pointer in screen space and in capture space.
constexpr Point pointer{400, 420};
constexpr Point pointerInCaptureSpace{400, 580};

class Extraction : public testing::Test {
  protected:
    /// An element whose text is under the pointer.
    static std::shared_ptr<FakeElement> readableElement() {
        return FakeElement::line("中文很好", {380, 570}, {20, 20});
    }

    /// Every picture shows one line under its centre.
    void showTextOnScreen(const std::string& text) {
        stage.recognizer->onRecognize = [text](const Image& image) {
            const Size size{static_cast<double>(image.width()),
                            static_cast<double>(image.height())};
            return std::vector<TextObservation>{
                FakeText::line(text, 1.0F,
                               {size.width / 2 - 10, size.height / 2 - 10,
                                20.0 * static_cast<double>(CharacterText(text).count()), 20},
                               size)};
        };
    }

    std::optional<TextProbe> extract(Point point = pointer) {
        return stage.extractor()->extract(point, {}, &log);
    }

    ExtractionStage stage;
    TraceLog log;
};

TEST_F(Extraction, FindsNothingWithoutAnElementAndDoesNotCapture) {
    showTextOnScreen("中文");
    EXPECT_FALSE(extract());
    EXPECT_TRUE(stage.screen->captured.empty());
    EXPECT_EQ(stage.accessibility->asked, std::vector<Point>{pointerInCaptureSpace});
    EXPECT_EQ(log.attempts, std::vector<std::string>{"element"});
    EXPECT_EQ(log.ends, 1);
    EXPECT_EQ(log.lastPath, std::nullopt);
}

TEST_F(Extraction, RefusesPointsThatAreNone) {
    stage.accessibility->element = readableElement();
    EXPECT_FALSE(extract({std::numeric_limits<double>::quiet_NaN(), 5}));
    EXPECT_FALSE(extract({5, std::numeric_limits<double>::infinity()}));
    EXPECT_TRUE(stage.accessibility->asked.empty());
}

TEST_F(Extraction, PrefersTheSelection) {
    const auto element = readableElement();
    element->selection = "文很";
    element->selectionRange = Utf16Range{1, 2};
    stage.accessibility->element = element;
    const auto probe = extract();
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->source, TextProbe::Source::selectedText);
    EXPECT_EQ(log.lastPath, ExtractionPath::selection);
}

TEST_F(Extraction, TakesASelectionOfAnAncestorOrOfTheFocusedElement) {
    const auto element = readableElement();
    stage.accessibility->element = element;
    const auto focused = FakeElement::make();
    focused->selection = "选择";
    focused->selectionRange = Utf16Range{0, 2};
    focused->onBoundsForRange = [](Utf16Range) { return Rect{390, 570, 40, 20}; };
    stage.accessibility->focused = focused;
    EXPECT_EQ(extract()->text, "选择");
    const auto parent = FakeElement::make();
    element->parentElement = parent;
    parent->selection = "父母";
    parent->selectionRange = Utf16Range{0, 2};
    parent->onBoundsForRange = focused->onBoundsForRange;
    EXPECT_EQ(extract()->text, "父母") << "the chain under the pointer comes first";
}

TEST_F(Extraction, IgnoresASelectionElsewhere) {
    const auto element = readableElement();
    element->selection = "好";
    element->selectionRange = Utf16Range{3, 1};
    stage.accessibility->element = element;
    const auto probe = extract();
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->source, TextProbe::Source::hoveredText);
    EXPECT_EQ(probe->text, "中文很好");
    EXPECT_EQ(probe->hoveredCharacterOffset, 1);
    EXPECT_EQ(log.lastPath, ExtractionPath::accessibility);
    EXPECT_TRUE(stage.screen->captured.empty()) << "the screen is not needed";
}

TEST_F(Extraction, AsksTheAncestorsForTheirText) {
    const auto leaf = FakeElement::make();
    leaf->parentElement = readableElement();
    stage.accessibility->element = leaf;
    ASSERT_TRUE(extract());
    EXPECT_EQ(log.attempts, (std::vector<std::string>{"element", "selection 0", "selection 1",
                                                      "accessibility 0", "accessibility 1"}));
}

TEST_F(Extraction, ReadsTheScreenBeforeTheWholeValue) {
    const auto element = FakeElement::make();
    element->valueText = "全文";
    element->origin = Point{380, 570};
    element->extent = Size{40, 20};
    stage.accessibility->element = element;
    showTextOnScreen("屏幕文字和更多");
    const auto probe = extract();
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->text, "屏幕文字和更多");
    EXPECT_EQ(log.lastPath, ExtractionPath::recognition);
    EXPECT_EQ(log.lines, 1U);
}

TEST_F(Extraction, TakesTheWholeValueLast) {
    const auto element = FakeElement::make();
    element->valueText = "全文";
    element->origin = Point{380, 570};
    element->extent = Size{40, 20};
    stage.accessibility->element = element;
    const auto probe = extract();
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->text, "全文");
    EXPECT_EQ(log.lastPath, ExtractionPath::wholeValue);
    EXPECT_EQ(log.attempts.back(), "wholeValue 0");
}

TEST_F(Extraction, FindsNothingWhereNothingIs) {
    stage.accessibility->element = FakeElement::make();
    EXPECT_FALSE(extract());
    EXPECT_EQ(log.lastPath, std::nullopt);
    for (const std::string& outcome : log.outcomes) {
        EXPECT_FALSE(outcome.empty());
    }
}

TEST_F(Extraction, WorksWithoutARecogniser) {
    const auto element = FakeElement::make();
    stage.accessibility->element = element;
    stage.recognizer->onRecognize = [](const Image&) { return std::nullopt; };
    stage.detector->onDetect = [](const Image&) { return std::nullopt; };
    EXPECT_FALSE(extract());
}

TEST_F(Extraction, KeepsOutOfItsOwnPanels) {
    stage.accessibility->element = FakeElement::make();
    // A line without boxes whose upper edge is 5 pixels below the pointer: near enough to be
    // taken, too far to count as pointed at. On the screen it covers (380…420, 395…415).
    stage.recognizer->onRecognize = [](const Image& image) {
        const Size size{static_cast<double>(image.width()), static_cast<double>(image.height())};
        return std::vector<TextObservation>{FakeText::lineWithoutBoxes(
            "一二", 1.0F, {size.width / 2 - 20, size.height / 2 + 5, 40, 20}, size)};
    };
    EXPECT_TRUE(stage.extractor()->extract(pointer, {}));
    EXPECT_TRUE(stage.extractor()->extract(pointer, {{300, 420, 200, 40}})) << "a panel elsewhere";
    EXPECT_FALSE(stage.extractor()->extract(pointer, {{300, 380, 200, 30}}));
    EXPECT_FALSE(stage.extractor()->extract(pointer, {{0, 0, 1, 1}, {410, 400, 1, 1}}));
}

TEST_F(Extraction, FlipsBetweenTheTwoSpaces) {
    ExtractorConfiguration configuration;
    configuration.desktopHeightOverride = 1000;
    stage.screens->list = {{{0, 0, 800, 600}, {}}};
    const auto extractor = stage.extractor(configuration);
    EXPECT_EQ(extractor->accessibilityPoint({10, 990}), (Point{10, 10}));
    const DesktopFlip flip(1000.0, stage.screens, 0);
    EXPECT_EQ(flip.flipped(Rect{5, 10, 20, 30}), (Rect{5, 960, 20, 30}));
    EXPECT_EQ(flip.flipped(Rect{5, 960, 20, 30}), (Rect{5, 10, 20, 30}));
}

TEST_F(Extraction, MeasuresTheDesktop) {
    const auto extractor = stage.extractor();
    EXPECT_EQ(extractor->desktopHeight(), 1000);
    stage.screens->list = {{{0, 0, 800, 600}, {}}, {{800, 0, 1000, 2000}, {}}};
    EXPECT_EQ(extractor->desktopHeight(), 600) << "the primary screen's, read anew";
    stage.screens->list.clear();
    stage.screen->list = {{1, {0, 0, 640, 480}}, {2, {640, 0, 1000, 1000}}};
    EXPECT_EQ(extractor->desktopHeight(), 480) << "the main display's";
    stage.screen->list.clear();
    EXPECT_EQ(extractor->desktopHeight(), 0);
}

TEST_F(Extraction, AnswersOnTheMainQueueInCallOrder) {
    const auto extractor = stage.extractor();
    stage.accessibility->element = readableElement();
    std::vector<std::pair<int, bool>> answers;
    extractor->extract(pointer, {}, [&](const auto& probe) { answers.emplace_back(1, !!probe); });
    extractor->extract({5, 5}, {}, [&](const auto& probe) { answers.emplace_back(2, !!probe); });
    EXPECT_EQ(stage.queue->pending(), 2U);
    EXPECT_TRUE(stage.accessibility->asked.empty()) << "nothing is read by the caller";
    stage.queue->runAll();
    EXPECT_TRUE(answers.empty());
    EXPECT_EQ(stage.mainQueue->pending(), 2U);
    stage.mainQueue->runAll();
    EXPECT_EQ(answers, (std::vector<std::pair<int, bool>>{{1, true}, {2, false}}));
}

TEST_F(Extraction, AnswersWithNothingWhenTheExtractorIsGone) {
    auto extractor = stage.extractor();
    stage.accessibility->element = readableElement();
    int answers = 0;
    extractor->extract(pointer, {}, [&](const auto& probe) {
        ++answers;
        EXPECT_FALSE(probe);
    });
    const std::weak_ptr<AccessibilityTextExtractor> weak = extractor;
    extractor.reset();
    EXPECT_TRUE(weak.expired()) << "waiting work keeps nothing alive";
    stage.queue->runAll();
    stage.mainQueue->runAll();
    EXPECT_EQ(answers, 1);
    EXPECT_TRUE(stage.accessibility->asked.empty());
}

TEST_F(Extraction, LeavesProbesThatOutliveIt) {
    auto extractor = stage.extractor();
    stage.accessibility->element = readableElement();
    const auto probe = extractor->extract(pointer, {});
    ASSERT_TRUE(probe);
    extractor.reset();
    stage.accessibility->element = nullptr;
    EXPECT_EQ(probe->rangeAnchorRect(1, 3), (Rect{400, 410, 40, 20}));
    stage.screens->list = {{{0, 0, 1600, 1200}, {}}};
    EXPECT_EQ(probe->rangeAnchorRect(1, 3), (Rect{400, 610, 40, 20}))
        << "the desktop's height is read when it is asked";
}

TEST_F(Extraction, FindsWhereTheWordIsOnItsQueue) {
    ExtractorConfiguration configuration;
    std::vector<std::pair<std::string, long long>> asked;
    configuration.wordAt = [&](const std::string& text, long long offset) {
        asked.emplace_back(text, offset);
        return std::optional(MatchedTextRange{1, 3});
    };
    const auto extractor = stage.extractor(configuration);
    stage.accessibility->element = readableElement();
    std::optional<TextProbe> probe;
    extractor->extract(pointer, {}, [&](auto found) { probe = std::move(found); });
    stage.queue->runAll();
    EXPECT_EQ(asked, (std::vector<std::pair<std::string, long long>>{{"中文很好", 1}}));
    // What is asked from now on is told of another desktop.
    stage.screens->list = {{{0, 0, 1600, 1200}, {}}};
    stage.mainQueue->runAll();
    ASSERT_TRUE(probe);
    EXPECT_EQ(probe->rangeAnchorRect(1, 3), (Rect{400, 410, 40, 20}));
    EXPECT_EQ(probe->rangeAnchorRect(1, 2), (Rect{400, 610, 20, 20}));
}

TEST_F(Extraction, AsksForNoPlaceOfALoneCharacterOrOfNoWord) {
    for (const auto& word :
         {std::optional(MatchedTextRange{1, 2}), std::optional<MatchedTextRange>()}) {
        ExtractorConfiguration configuration;
        configuration.wordAt = [&word](const std::string&, long long) { return word; };
        const auto extractor = stage.extractor(configuration);
        stage.accessibility->element = readableElement();
        stage.screens->list = {{{0, 0, 1600, 1000}, {}}};
        std::optional<TextProbe> probe;
        extractor->extract(pointer, {}, [&](auto found) { probe = std::move(found); });
        stage.queue->runAll();
        stage.screens->list = {{{0, 0, 1600, 1200}, {}}};
        stage.mainQueue->runAll();
        ASSERT_TRUE(probe);
        EXPECT_EQ(probe->rangeAnchorRect(1, 2), (Rect{400, 610, 20, 20}));
    }
}

TEST_F(Extraction, HasTheDefaultsOfItsConfiguration) {
    const ExtractorConfiguration configuration = stage.extractor()->configuration();
    EXPECT_TRUE(configuration.capture);
    EXPECT_FALSE(configuration.desktopHeightOverride);
    EXPECT_FALSE(configuration.wordAt);
    EXPECT_EQ(configuration.contextRadius, 24);
    EXPECT_EQ(configuration.ocrCaptureSizes,
              (std::vector<Size>{{520, 160}, {520, 240}, {520, 280}}));
    EXPECT_EQ(configuration.ocrFallbackCaptureSizes,
              (std::vector<Size>{{700, 360}, {900, 500}, {1200, 700}}));
    EXPECT_EQ(configuration.ocrFullContextCaptureSizes, (std::vector<Size>{{3000, 3000}}));
    EXPECT_EQ(configuration.ocrCropConstrainedGlyphFillRatio, 0.92);
    EXPECT_EQ(configuration.ocrDetectedTextRecropPaddingRatio, 0.18);
    EXPECT_EQ(configuration.ocrDetectedTextRecropMinimumPadding, 8);
    EXPECT_EQ(configuration.ocrDetectedTextRecropMaximumPadding, 40);
    EXPECT_EQ(configuration.ocrEnhancedUpscaleFactor, 2);
    EXPECT_EQ(configuration.ocrMinimumConfidence, 0.4F);
    EXPECT_EQ(configuration.ocrMultiCharacterMinConfidence, 0.3F);
    EXPECT_EQ(configuration.ocrCandidateLimit, 3);
    EXPECT_EQ(configuration.ocrIsolatedGlyphMinConfidence, 0.5F);
    EXPECT_EQ(configuration.ocrDetectedTextIsolatedGlyphMinConfidence, 0.5F);
    EXPECT_EQ(configuration.ocrStableCursorHitConfidence, 0.99F);
    EXPECT_EQ(configuration.ocrCacheTTL, 1.5);
    EXPECT_EQ(configuration.ocrCacheReuseInset, 64);
    EXPECT_STREQ(ExtractionServices::queueLabel, "com.velmora.text-extraction");
}

TEST_F(Extraction, CapturesThroughItsConfiguration) {
    ExtractorConfiguration configuration;
    std::vector<Size> asked;
    configuration.capture = [&](Point at, Size size) -> std::optional<CapturedImage> {
        EXPECT_EQ(at, pointerInCaptureSpace);
        asked.push_back(size);
        return std::nullopt;
    };
    stage.accessibility->element = FakeElement::make();
    EXPECT_FALSE(stage.extractor(configuration)->extract(pointer, {}));
    EXPECT_EQ(asked, (std::vector<Size>{{520, 160},
                                        {520, 240},
                                        {520, 280},
                                        {700, 360},
                                        {900, 500},
                                        {1200, 700},
                                        {3000, 3000}}));
    EXPECT_TRUE(stage.screen->captured.empty());
}

}  // namespace
}  // namespace velmora
