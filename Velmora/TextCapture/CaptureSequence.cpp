// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/CaptureSequence.h"

#include <cmath>
#include <string>
#include <utility>

#include "Velmora/TextCapture/OCRRegionAcceptance.h"

namespace velmora {

namespace {

std::string sizeText(Size size) {
    return std::to_string(std::lround(size.width)) + " x " +
           std::to_string(std::lround(size.height));
}

std::string readingsText(const RecognizedRegion& region) {
    std::string text = std::to_string(region.observations.size()) + " readings";
    if (!region.observations.empty()) {
        text += ", the first \"" + region.observations.front().text + "\"";
    }
    return text;
}

/// Why the recogniser gives no answer.
std::string silenceText(const RecognitionStatus& status) {
    switch (status.stage) {
        case RecognitionStatus::Stage::notStarted:
        case RecognitionStatus::Stage::loading:
            return "text recognition is not loaded yet";
        case RecognitionStatus::Stage::unavailable:
            return "no text recognition: " + status.description;
        case RecognitionStatus::Stage::ready:
            break;
    }
    return "text recognition gives no answer";
}

}  // namespace

CaptureSequence::CaptureSequence(const CaptureFunction& capture, const RegionRecognizer& recognizer,
                                 const DetectedTextRecropper& recropper,
                                 const ExtractorConfiguration& configuration,
                                 const Tracing& tracing)
    : capture_(capture),
      recognizer_(recognizer),
      recropper_(recropper),
      configuration_(configuration),
      tracing_(tracing) {}

std::optional<RecognizedRegion> CaptureSequence::recognizeRegion(Point pointer) {
    start_ = tracing_.now();
    for (const auto* sizes :
         {&configuration_.ocrCaptureSizes, &configuration_.ocrFallbackCaptureSizes}) {
        if (auto region = captured(*sizes, pointer)) {
            return region;
        }
    }
    if (!lineFallbackRegion_) {
        if (auto region = reexamined(pointer)) {
            return region;
        }
    }
    if (auto region = captured(configuration_.ocrFullContextCaptureSizes, pointer)) {
        return region;
    }
    if (!lineFallbackRegion_) {
        if (auto region = reexamined(pointer)) {
            return region;
        }
    }
    return std::move(lineFallbackRegion_);
}

std::optional<RecognizedRegion> CaptureSequence::captured(const std::vector<Size>& sizes,
                                                          Point pointer) {
    for (const Size size : sizes) {
        if (isOver()) {
            break;
        }
        if (auto region = capturedOnce(size, pointer)) {
            return region;
        }
    }
    return std::nullopt;
}

std::optional<RecognizedRegion> CaptureSequence::capturedOnce(Size size, Point pointer) {
    TracedAttempt attempt(tracing_, "capture");
    auto capture = capture_(pointer, size);
    if (!capture) {
        attempt.say([&] { return sizeText(size) + ": the screen could not be captured"; });
        return std::nullopt;
    }
    captures_.push_back(*capture);
    const auto region =
        recognizer_.recognizeRegion(capture->image, capture->captureRect,
                                    configuration_.ocrIsolatedGlyphMinConfidence, pointer);
    if (!region) {
        const RecognitionStatus status = recognizer_.status();
        isPointless_ = status.stage != RecognitionStatus::Stage::ready;
        attempt.say([&] { return sizeText(size) + ": " + silenceText(status); });
        return std::nullopt;
    }
    if (region->observations.empty()) {
        attempt.say([&] { return sizeText(size) + ": nothing recognised"; });
        return std::nullopt;
    }
    return accepted(*region, pointer, attempt);
}

std::optional<RecognizedRegion> CaptureSequence::reexamined(Point pointer) {
    for (auto capture = captures_.rbegin(); capture != captures_.rend() && !isOver(); ++capture) {
        TracedAttempt attempt(tracing_, "closer look");
        const auto region = recropper_.recognizeDetectedTextRegion(*capture, pointer);
        if (!region) {
            isPointless_ = recognizer_.status().stage != RecognitionStatus::Stage::ready;
            attempt.say([&] {
                return sizeText(capture->captureRect.size()) + ": no text found at the pointer";
            });
            continue;
        }
        if (auto result = accepted(*region, pointer, attempt)) {
            return result;
        }
    }
    return std::nullopt;
}

/// Whether to end with what there is.
bool CaptureSequence::isOver() {
    if (!isPointless_ && tracing_.now() - start_ > timeLimit) {
        isPointless_ = true;
        TracedAttempt(tracing_, "capture").say("no more, this took too long already");
    }
    return isPointless_;
}

std::optional<RecognizedRegion> CaptureSequence::accepted(const RecognizedRegion& region,
                                                          Point pointer, TracedAttempt& attempt) {
    auto result = OCRRegionAcceptance::acceptedOCRRegion(region, pointer, lineFallbackRegion_);
    attempt.say([&] {
        return sizeText(region.captureRect.size()) + ": " + readingsText(region) +
               (result ? ", accepted" : ", not certain enough at the pointer");
    });
    return result;
}

}  // namespace velmora
