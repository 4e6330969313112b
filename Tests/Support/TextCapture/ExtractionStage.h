// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Tests/Support/TextCapture/FakeAccessibility.h"
#include "Tests/Support/TextCapture/FakeDetector.h"
#include "Tests/Support/TextCapture/FakeElement.h"
#include "Tests/Support/TextCapture/FakeRecognizer.h"
#include "Tests/Support/TextCapture/FakeScreenCapture.h"
#include "Tests/Support/TextCapture/FakeScreens.h"
#include "Tests/Support/TextCapture/FakeText.h"
#include "Tests/Support/TextCapture/ManualQueue.h"
#include "Velmora/Platform/Recorded/ManualClock.h"
#include "Velmora/Platform/Recorded/ManualMainQueue.h"
#include "Velmora/TextCapture/AccessibilityTextExtractor.h"

namespace velmora {

/// Everything that an extractor needs, made up. One screen of 1600 × 1000 points, so that a point
/// (x, y) of screen space is (x, 1000 − y) of capture space.
struct ExtractionStage {
    std::shared_ptr<FakeAccessibility> accessibility = std::make_shared<FakeAccessibility>();
    std::shared_ptr<FakeScreenCapture> screen = std::make_shared<FakeScreenCapture>();
    std::shared_ptr<FakeRecognizer> recognizer = std::make_shared<FakeRecognizer>();
    std::shared_ptr<FakeDetector> detector = std::make_shared<FakeDetector>();
    std::shared_ptr<FakeScreens> screens = std::make_shared<FakeScreens>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<ManualQueue> queue =
        std::make_shared<ManualQueue>(ExtractionServices::queueLabel);
    std::shared_ptr<ManualMainQueue> mainQueue = std::make_shared<ManualMainQueue>();

    ExtractionServices services() const {
        return {accessibility, screen, recognizer, detector, screens, clock, queue, mainQueue};
    }

    std::shared_ptr<AccessibilityTextExtractor> extractor(
        ExtractorConfiguration configuration = {}) const {
        return AccessibilityTextExtractor::create(services(), std::move(configuration));
    }
};

}  // namespace velmora
