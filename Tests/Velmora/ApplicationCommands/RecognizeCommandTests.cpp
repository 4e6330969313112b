// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/RecognizeCommand.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QImage>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TextCapture/FakeDetector.h"
#include "Tests/Support/TextCapture/FakeRecognizer.h"
#include "Tests/Support/TextCapture/FakeText.h"
#include "Tests/Velmora/ApplicationCommands/CommandRun.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "Velmora/Platform/Recorded/ManualClock.h"

namespace velmora {
namespace {

using nlohmann::json;

/// A picture of 1024 × 512 pixels whose only line stands at (512…592, 256…276).
class RecognizeCommand : public ::testing::Test {
  protected:
    RecognizeCommand() {
        QImage image(1024, 512, QImage::Format_RGB32);
        image.fill(Qt::white);
        // Marks the corner of the text, so that a capture can be told from another.
        image.setPixel(512, 256, qRgb(1, 2, 3));
        EXPECT_TRUE(image.save(QString::fromStdString(picture)));
        recognizer->onRecognize = [](const Image& shown) {
            const Size size{static_cast<double>(shown.width()),
                            static_cast<double>(shown.height())};
            std::vector<TextObservation> lines;
            for (int y = 0; y < shown.height(); ++y) {
                for (int x = 0; x < shown.width(); ++x) {
                    if (shown.row(y)[x] == 0xFF010203) {
                        lines.push_back(FakeText::line(
                            "中文很好", 0.995F,
                            {static_cast<double>(x), static_cast<double>(y), 80, 20}, size));
                    }
                }
            }
            return lines;
        };
    }

    int run(const std::vector<std::string>& arguments) {
        CommandRun call;
        const int status = runRecognizeCommand(
            arguments,
            [this] {
                ++opened;
                return RecognizeServices{recognizer, detector, std::make_shared<ManualClock>()};
            },
            call.streams);
        out = call.out.str();
        err = call.err.str();
        return status;
    }

    testing::TemporaryFolder folder;
    std::string picture = (folder / "picture.png").string();
    std::shared_ptr<FakeRecognizer> recognizer = std::make_shared<FakeRecognizer>();
    std::shared_ptr<FakeDetector> detector = std::make_shared<FakeDetector>();
    std::string out;
    std::string err;
    int opened = 0;
};

void expectRect(const json& rect, double x, double y, double width, double height) {
    EXPECT_NEAR(rect["x"].get<double>(), x, 1e-6);
    EXPECT_NEAR(rect["y"].get<double>(), y, 1e-6);
    EXPECT_NEAR(rect["width"].get<double>(), width, 1e-6);
    EXPECT_NEAR(rect["height"].get<double>(), height, 1e-6);
}

TEST_F(RecognizeCommand, PrintsTheLinesOfThePicture) {
    EXPECT_EQ(run({"--json", picture}), 0);
    const json answer = json::parse(out);
    EXPECT_EQ(answer.size(), 3U);
    EXPECT_TRUE(answer["probe"].is_null());
    EXPECT_TRUE(answer["match"].is_null());
    ASSERT_EQ(answer["lines"].size(), 1U);
    const json& line = answer["lines"][0];
    expectRect(line["box"], 512, 256, 80, 20);
    ASSERT_EQ(line["candidates"].size(), 1U);
    EXPECT_EQ(line["candidates"][0]["text"], "中文很好");
    EXPECT_EQ(line["candidates"][0]["confidence"], 0.995);
    ASSERT_EQ(line["candidates"][0]["characters"].size(), 4U);
    expectRect(line["candidates"][0]["characters"][1], 532, 256, 20, 20);
    EXPECT_EQ(recognizer->points, std::vector<std::optional<Point>>{std::nullopt});
    EXPECT_EQ(recognizer->limits, std::vector<int>{3});
}

TEST_F(RecognizeCommand, PrintsUnknownBoxesAsNull) {
    recognizer->onRecognize = [](const Image&) {
        return std::vector<TextObservation>{
            FakeText::lineWithoutBoxes("中文", 0.5F, {0, 0, 40, 20}, {1024, 512})};
    };
    EXPECT_EQ(run({"--json", picture}), 0);
    EXPECT_EQ(json::parse(out)["lines"][0]["candidates"][0]["characters"],
              json::parse("[null,null]"));
}

TEST_F(RecognizeCommand, LetsThePictureStandForTheScreen) {
    EXPECT_EQ(run({"--json", "--at", "540,266", "--dictionary", VELMORA_FIXTURES "/Probe/words.u8",
                   picture}),
              0);
    const json answer = json::parse(out);
    EXPECT_EQ(answer["probe"]["text"], "中文很好");
    EXPECT_EQ(answer["probe"]["hoveredCharacterOffset"], 1);
    EXPECT_EQ(answer["probe"]["via"], "recognition");
    expectRect(answer["probe"]["anchorRect"], 532, 256, 20, 20);
    EXPECT_EQ(answer["match"]["matchedText"], "中文");
    ASSERT_EQ(answer["lines"].size(), 1U);
    expectRect(answer["lines"][0]["box"], 512, 256, 80, 20);
    EXPECT_EQ(recognizer->sizes, (std::vector<Size>{{520, 160}}));
}

TEST_F(RecognizeCommand, FindsNoMatchWhereNoWordIs) {
    EXPECT_EQ(run({"--json", "--at", "10,10", picture}), 1);
    const json answer = json::parse(out);
    EXPECT_TRUE(answer["probe"].is_null());
    EXPECT_TRUE(answer["match"].is_null());
    EXPECT_EQ(run({"--json", "--at", "5000,10", picture}), 1) << "outside the picture";
    recognizer->onRecognize = [](const Image&) { return std::vector<TextObservation>(); };
    EXPECT_EQ(run({"--json", picture}), 1);
    EXPECT_EQ(json::parse(out)["lines"], json::array());
    recognizer->onRecognize = [](const Image&) { return std::nullopt; };
    EXPECT_EQ(run({"--json", picture}), 1);
    EXPECT_EQ(json::parse(out)["lines"], json::array());
    EXPECT_EQ(err, "velmora: text recognition gives no answer\n");
    recognizer->currentStatus = {
        RecognitionStatus::Stage::unavailable, {}, {"chi_sim"}, "reinstall something"};
    EXPECT_EQ(run({"--json", picture}), 1);
    EXPECT_EQ(err, "velmora: text recognition gives no answer: reinstall something\n");
}

TEST_F(RecognizeCommand, PrintsReadingsForPeople) {
    EXPECT_EQ(run({picture}), 0);
    EXPECT_EQ(out.substr(out.find(' ')), "  中文很好\n");
}

TEST_F(RecognizeCommand, DrawsWhatItFound) {
    const std::string annotation = (folder / "annotated.png").string();
    EXPECT_EQ(run({"--annotate", annotation, "--at", "540,266", picture, "--dictionary",
                   VELMORA_FIXTURES "/Probe/words.u8"}),
              0);
    const QImage image(QString::fromStdString(annotation));
    EXPECT_EQ(image.size(), QSize(1024, 512));
    EXPECT_NE(image.pixel(572, 266), qRgb(255, 255, 255)) << "a cell's edge";
    EXPECT_EQ(image.pixel(300, 300), qRgb(255, 255, 255));
}

TEST_F(RecognizeCommand, ReadsTransparencyAsWhite) {
    QImage image(4, 4, QImage::Format_ARGB32);
    image.fill(qRgba(0, 0, 0, 0));
    image.setPixel(1, 1, qRgba(0, 0, 0, 128));
    ASSERT_TRUE(image.save(QString::fromStdString(picture)));
    std::vector<std::uint32_t> seen;
    recognizer->onRecognize = [&](const Image& shown) {
        seen = {shown.row(0)[0], shown.row(1)[1]};
        return std::vector<TextObservation>();
    };
    run({picture});
    EXPECT_EQ(seen, (std::vector<std::uint32_t>{0xFFFFFFFF, 0xFF7F7F7F}));
}

TEST_F(RecognizeCommand, RefusesWhatItCannotRead) {
    const std::string text = (folder / "text.png").string();
    std::ofstream(text) << "no picture";
    const std::string empty = (folder / "empty.png").string();
    std::ofstream(empty).close();
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {picture, picture},
                                               {"/nonexistent.png"},
                                               {folder.path().string()},
                                               {text},
                                               {empty},
                                               {"--at", "x,y", picture},
                                               {"--dictionary", "/nonexistent/words", picture}}) {
        EXPECT_THROW(run(arguments), UsageError);
    }
    EXPECT_EQ(opened, 0);
    EXPECT_THROW(run({"--annotate", "/nonexistent/out.png", picture}), UsageError);
}

TEST_F(RecognizeCommand, RefusesHugePictures) {
    // One bit a pixel: small on disk, 1.6 gigabytes if it were unpacked.
    QImage image(20'000, 20'000, QImage::Format_Mono);
    image.fill(0);
    ASSERT_TRUE(image.save(QString::fromStdString(picture)));
    try {
        run({picture});
        FAIL();
    } catch (const UsageError& error) {
        EXPECT_NE(std::string(error.what()).find("megapixels"), std::string::npos) << error.what();
    }
}

}  // namespace
}  // namespace velmora
