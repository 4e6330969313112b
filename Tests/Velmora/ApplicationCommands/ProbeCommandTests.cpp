// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/ProbeCommand.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TextCapture/ExtractionStage.h"
#include "Tests/Support/TextCapture/InlineQueue.h"
#include "Tests/Velmora/ApplicationCommands/CommandRun.h"
#include "Tests/Velmora/ApplicationCommands/FixedGeometry.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "Velmora/Platform/Recorded/RecordingFolder.h"

namespace velmora {
namespace {

using nlohmann::json;

/// One screen of 1600 × 1000 native pixels, two a point, whose text stands at (400…480, 300…320)
/// in capture space.
class ProbeCommand : public ::testing::Test {
  protected:
    ProbeCommand() {
        stage.screens->list = {{{0, 0, 800, 500}, {}}};
        element = FakeElement::line("中文很好", {400, 300}, {20, 20});
        stage.accessibility->element = element;
    }

    int run(const std::vector<std::string>& arguments) {
        CommandRun call;
        const int status = runProbeCommand(
            arguments,
            [this] {
                ++opened;
                ExtractionServices services = stage.services();
                services.queue = std::make_shared<InlineQueue>();
                return ProbeServices{services,
                                     std::make_shared<FixedGeometry>(
                                         std::vector<ScreenLayout>{{1, {0, 0, 1600, 1000}, 2, {}}}),
                                     accessibilityGranted};
            },
            call.streams);
        out = call.out.str();
        err = call.err.str();
        return status;
    }

    ExtractionStage stage;
    std::shared_ptr<FakeElement> element;
    std::string out;
    std::string err;
    int opened = 0;
    bool accessibilityGranted = true;
};

TEST_F(ProbeCommand, PrintsTheProbeInNativePixels) {
    EXPECT_EQ(run({"--at", "850,620", "--json"}), 0);
    EXPECT_EQ(json::parse(out),
              json::parse(R"({"text":"中文很好","hoveredCharacterOffset":1,"source":"hoveredText",
                              "anchorRect":{"x":840.0,"y":600.0,"width":40.0,"height":40.0},
                              "via":"accessibility"})"));
    EXPECT_EQ(err, "");
    EXPECT_EQ(stage.accessibility->asked, (std::vector<Point>{{425, 310}}));
}

TEST_F(ProbeCommand, PrintsNullWhereNothingIs) {
    stage.accessibility->element = nullptr;
    EXPECT_EQ(run({"--at=10,10", "--json"}), 1);
    EXPECT_EQ(out, "null\n");
    EXPECT_EQ(run({"--at=10,10"}), 1);
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "velmora: nothing readable at 10,10\n");
}

TEST_F(ProbeCommand, SaysWhereNothingCanBeReadAnywhere) {
    stage.accessibility->element = nullptr;
    accessibilityGranted = false;
    EXPECT_EQ(run({"--at=10,10", "--json"}), 1);
    EXPECT_EQ(out, "null\n");
    EXPECT_NE(err.find("accessibility is off"), std::string::npos);
    EXPECT_EQ(run({"--at=10,10"}), 1);
    EXPECT_EQ(out, "");
    EXPECT_NE(err.find("velmora doctor"), std::string::npos);
    EXPECT_EQ(err.find("nothing readable"), std::string::npos);
}

TEST_F(ProbeCommand, NamesEveryWay) {
    element->selection = "很好";
    element->selectionRange = Utf16Range{2, 2};
    EXPECT_EQ(run({"--at", "890,620", "--json"}), 0);
    EXPECT_EQ(json::parse(out)["via"], "selection");
    EXPECT_EQ(json::parse(out)["source"], "selectedText");
    element->selection.reset();
    element->onRangeForPosition = nullptr;
    EXPECT_EQ(run({"--at", "850,620", "--json"}), 0);
    EXPECT_EQ(json::parse(out)["via"], "wholeValue");
    stage.screen->list = {{1, {0, 0, 800, 500}}};
    stage.recognizer->onRecognize = [](const Image& image) {
        const Size size{static_cast<double>(image.width()), static_cast<double>(image.height())};
        return std::vector<TextObservation>{
            FakeText::line("屏幕", 1, {size.width / 2 - 20, size.height / 2 - 10, 40, 20}, size)};
    };
    EXPECT_EQ(run({"--at", "850,620", "--json"}), 0);
    EXPECT_EQ(json::parse(out)["via"], "recognition");
}

TEST_F(ProbeCommand, ExplainsEveryAttemptOnStandardError) {
    EXPECT_EQ(run({"--at", "850,620", "--json", "--explain"}), 0);
    EXPECT_TRUE(json::accept(out));
    EXPECT_NE(err.find(" ms  element: found"), std::string::npos);
    EXPECT_NE(err.find(" ms  selection 0: nothing selected\n"), std::string::npos);
    EXPECT_NE(err.find(" ms  accessibility 0: character 1 of \"中文很好\"\n"), std::string::npos);
    EXPECT_NE(err.find("found by accessibility\n"), std::string::npos);
}

TEST_F(ProbeCommand, ExplainsWithoutControlCharactersOrEnd) {
    element->selection = "中\x1B[31m" + std::string(100'000, 'a');
    element->selectionRange = Utf16Range{0, 4};
    EXPECT_EQ(run({"--at", "850,620", "--explain"}), 0);
    EXPECT_EQ(err.find('\x1B'), std::string::npos);
    EXPECT_LT(err.size(), 2000U);
}

TEST_F(ProbeCommand, ShowsPeopleTheWord) {
    EXPECT_EQ(run({"--at", "850,620", "--dictionary", VELMORA_FIXTURES "/Probe/words.u8"}), 0);
    EXPECT_NE(out.find("中文很好\ncharacter 1 文 at 840,600, 40 x 40, by accessibility\n"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("Chinese language"), std::string::npos) << out;
}

TEST_F(ProbeCommand, RefusesWhatItCannotUnderstandBeforeItOpensADisplay) {
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {},
             {"--json"},
             {"--at", "10"},
             {"--at", "10,"},
             {"--at", "10,20,30"},
             {"--at", "10,nan"},
             {"--at", "10,inf"},
             {"--at", "1e3,20"},
             {"--at", "10, 20"},
             {"--at", "10000000,20"},
             {"--at", "10,20", "text"},
             {"--at"},
             {"--at", "10,20", "--unknown"},
             {"--at", "10,20", "--json", "--dictionary", "/nonexistent/words"}}) {
        EXPECT_THROW(run(arguments), UsageError);
    }
    EXPECT_EQ(opened, 0);
}

TEST_F(ProbeCommand, KeepsWhatItSaw) {
    const testing::TemporaryFolder folder;
    EXPECT_EQ(run({"--at", "850,620", "--json", "--record", (folder / "seen").string(),
                   "--dictionary", VELMORA_FIXTURES "/Probe/words.u8"}),
              0);
    const auto loaded = RecordingFolder::load(folder / "seen");
    ASSERT_TRUE(loaded.recording) << loaded.error;
    EXPECT_EQ(loaded.recording->pointer, (Point{850, 620}));
    EXPECT_EQ(loaded.recording->screens.size(), 1U);
    EXPECT_EQ(loaded.recording->displays.size(), 1U);
    ASSERT_EQ(loaded.recording->elements.size(), 1U);
    EXPECT_EQ(loaded.recording->elements[0].boundsForRange.back().first, (Utf16Range{0, 2}))
        << "the word, too";
    EXPECT_THROW(run({"--at", "850,620", "--record", "/proc/nowhere"}), UsageError);
}

TEST_F(ProbeCommand, TakesFractionsAndNegativePositions) {
    EXPECT_EQ(run({"--at", "-10.5,20", "--json"}), 1);
    EXPECT_EQ(stage.accessibility->asked, (std::vector<Point>{{-5.25, 10}}));
}

}  // namespace
}  // namespace velmora
