// SPDX-License-Identifier: MIT
#include <memory>

#include "Tests/Contracts/Tesseract/Pictures.h"
#include "Tests/Contracts/Tesseract/SharedRecognizer.h"
#include "Tests/Support/Contracts/TextRecognizerContract.h"
#include "Tests/Support/Contracts/TextRectangleDetectorContract.h"
#include "Velmora/Platform/Linux/Tesseract/LineDetector.h"

// What holds for every recogniser, of the one that reads real pixels.
namespace velmora {
namespace {

std::shared_ptr<TextRecognizer> shared() {
    return {std::shared_ptr<void>(), &testing::sharedRecognizer()};
}

INSTANTIATE_TEST_SUITE_P(
    Tesseract, TextRecognizerContract,
    ::testing::Values(TextRecognizerSubject{"light",
                                            shared,
                                            [] { return fixturePicture("simplified-light"); },
                                            {161, 55},
                                            "图书馆"},
                      TextRecognizerSubject{"dark",
                                            shared,
                                            [] { return fixturePicture("traditional-dark"); },
                                            {261, 55},
                                            "圖書館"}));

INSTANTIATE_TEST_SUITE_P(Lines, TextRectangleDetectorContract,
                         ::testing::Values(TextRectangleDetectorSubject{
                                               "light",
                                               [] { return std::make_shared<LineDetector>(); },
                                               [] { return fixturePicture("simplified-light"); },
                                               {169, 55}},
                                           TextRectangleDetectorSubject{
                                               "dark",
                                               [] { return std::make_shared<LineDetector>(); },
                                               [] { return fixturePicture("traditional-dark"); },
                                               {265, 55}}));

}  // namespace
}  // namespace velmora
