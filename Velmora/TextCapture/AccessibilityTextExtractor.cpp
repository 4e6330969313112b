// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/AccessibilityTextExtractor.h"

#include <cmath>
#include <utility>

#include "Velmora/TextCapture/CaptureSequence.h"
#include "Velmora/TextCapture/ElementReading.h"
#include "Velmora/TextCapture/LiveCapture.h"
#include "Velmora/TextCapture/ParameterizedText.h"
#include "Velmora/TextCapture/ProbeSelection.h"
#include "Velmora/TextCapture/SelectedText.h"
#include "Velmora/TextCapture/WholeValue.h"

namespace velmora {

struct AccessibilityTextExtractor::Query {
    Point pointer;
    std::vector<Rect> excluding;
    DesktopFlip flip;
    Tracing tracing;
    std::vector<AccessibilityElement::Pointer> candidates;
};

std::shared_ptr<AccessibilityTextExtractor> AccessibilityTextExtractor::create(
    ExtractionServices services, ExtractorConfiguration configuration) {
    return std::shared_ptr<AccessibilityTextExtractor>(
        new AccessibilityTextExtractor(std::move(services), std::move(configuration)));
}

AccessibilityTextExtractor::AccessibilityTextExtractor(ExtractionServices services,
                                                       ExtractorConfiguration configuration)
    : services_(std::move(services)),
      configuration_(std::move(configuration)),
      recognizer_(services_.textRecognizer, configuration_),
      recropper_(services_.textRectangleDetector, recognizer_, configuration_) {
    if (!configuration_.capture) {
        configuration_.capture = LiveCapture(services_.screenCapture);
    }
}

void AccessibilityTextExtractor::extract(Point point, std::vector<Rect> excluding,
                                         Completion completion) {
    services_.queue->async([weak = weak_from_this(), mainQueue = services_.mainQueue, point,
                            excluding = std::move(excluding),
                            completion = std::move(completion)]() mutable {
        std::optional<TextProbe> probe;
        if (const auto extractor = weak.lock()) {
            probe = extractor->extract(point, excluding);
            if (probe) {
                extractor->placeWord(*probe);
            }
        }
        mainQueue->post([completion = std::move(completion), probe = std::move(probe)]() mutable {
            completion(std::move(probe));
        });
    });
}

void AccessibilityTextExtractor::placeWord(TextProbe& probe) const {
    if (!configuration_.wordAt || !probe.rangeAnchorRect) {
        return;
    }
    const auto word = configuration_.wordAt(probe.text, probe.hoveredCharacterOffset);
    if (!word || word->length() < 2) {
        return;  // The hovered character's own place is known.
    }
    const auto place = probe.rangeAnchorRect(word->start, word->end);
    probe.rangeAnchorRect = [word = *word, place, ask = std::move(probe.rangeAnchorRect)](
                                long long start, long long end) {
        return start == word.start && end == word.end ? place : ask(start, end);
    };
}

std::optional<TextProbe> AccessibilityTextExtractor::extract(Point point,
                                                             const std::vector<Rect>& excluding,
                                                             ExtractionTrace* trace) {
    const DesktopFlip flip = desktopFlip();
    Query query{flip.flipped(point), {}, flip, {trace, services_.clock.get()}, {}};
    for (const Rect& rect : excluding) {
        query.excluding.push_back(flip.flipped(rect));
    }
    std::optional<ExtractionPath> path;
    std::optional<TextProbe> probe;
    if (std::isfinite(query.pointer.x) && std::isfinite(query.pointer.y)) {
        probe = attempts(query, path);
    }
    if (trace != nullptr) {
        trace->finished(path);
    }
    return probe;
}

Point AccessibilityTextExtractor::accessibilityPoint(Point screenPoint) const {
    return desktopFlip().flipped(screenPoint);
}

double AccessibilityTextExtractor::desktopHeight() const {
    return desktopFlip().desktopHeight();
}

DesktopFlip AccessibilityTextExtractor::desktopFlip() const {
    double mainDisplayHeight = 0;
    if (!configuration_.desktopHeightOverride) {
        // The displays are asked only where there is no screen to go by.
        const std::vector<Screen> screens = services_.screens->all();
        if (!screens.empty()) {
            mainDisplayHeight = screens.front().frame.maxY();
        } else if (const auto displays = services_.screenCapture->displays(); !displays.empty()) {
            mainDisplayHeight = displays.front().bounds.height;
        }
    }
    return {configuration_.desktopHeightOverride, services_.screens, mainDisplayHeight};
}

std::optional<TextProbe> AccessibilityTextExtractor::attempts(const Query& start,
                                                              std::optional<ExtractionPath>& path) {
    Query query = start;
    {
        TracedAttempt attempt(query.tracing, "element");
        const auto hit = services_.accessibility->elementAtPosition(query.pointer);
        if (hit == nullptr) {
            attempt.say("no element at this point");
            return std::nullopt;
        }
        query.candidates = ElementReading::candidateElements(hit);
        attempt.say([&] {
            return "found, with " + std::to_string(query.candidates.size() - 1) + " above it";
        });
    }
    if (auto probe = selection(query)) {
        path = ExtractionPath::selection;
        return probe;
    }
    if (auto probe = parameterizedText(query)) {
        path = ExtractionPath::accessibility;
        return probe;
    }
    if (auto probe = recognition(query)) {
        path = ExtractionPath::recognition;
        return probe;
    }
    if (auto probe = wholeValue(query)) {
        path = ExtractionPath::wholeValue;
        return probe;
    }
    return std::nullopt;
}

std::optional<TextProbe> AccessibilityTextExtractor::selection(const Query& query) const {
    const auto elements =
        ElementReading::selectedTextCandidates(query.candidates, *services_.accessibility);
    for (std::size_t index = 0; index < elements.size(); ++index) {
        TracedAttempt attempt(query.tracing, "selection", index);
        if (auto probe =
                SelectedText::extract(*elements[index], query.pointer, query.flip, attempt)) {
            return probe;
        }
    }
    return std::nullopt;
}

std::optional<TextProbe> AccessibilityTextExtractor::parameterizedText(const Query& query) const {
    for (std::size_t index = 0; index < query.candidates.size(); ++index) {
        TracedAttempt attempt(query.tracing, "accessibility", index);
        if (auto probe =
                ParameterizedText::extract(query.candidates[index], query.pointer,
                                           configuration_.contextRadius, query.flip, attempt)) {
            return probe;
        }
    }
    return std::nullopt;
}

std::optional<TextProbe> AccessibilityTextExtractor::recognition(const Query& query) {
    TracedAttempt attempt(query.tracing, "recognition");
    const auto references = ElementReading::referenceSources(query.candidates);
    const auto region = recognizedRegion(query);
    if (!region) {
        attempt.say("nothing readable on the screen at this point");
        return std::nullopt;
    }
    if (query.tracing.trace != nullptr) {
        query.tracing.trace->regionUsed(*region);
    }
    return ProbeSelection(*region, query.pointer, query.excluding, references, query.flip)
        .selectProbe(attempt);
}

std::optional<TextProbe> AccessibilityTextExtractor::wholeValue(const Query& query) const {
    for (std::size_t index = 0; index < query.candidates.size(); ++index) {
        TracedAttempt attempt(query.tracing, "wholeValue", index);
        if (auto probe =
                WholeValue::extract(query.candidates[index], query.pointer, query.flip, attempt)) {
            return probe;
        }
    }
    return std::nullopt;
}

std::optional<RecognizedRegion> AccessibilityTextExtractor::recognizedRegion(const Query& query) {
    const double now = services_.clock->uptime();
    if (auto reused = reusedRegion(query, now)) {
        return reused;
    }
    CaptureSequence sequence(configuration_.capture, recognizer_, recropper_, configuration_,
                             query.tracing);
    auto region = sequence.recognizeRegion(query.pointer);
    if (region) {
        ocrCache_ = OCRCacheEntry{*region, now, query.pointer};
        ocrCache_->dropLargeImage();
    }
    return region;
}

/// What was read a moment ago, as it is to be taken at this place; nothing where that does not
/// reach here or cannot be told without looking at the screen again.
std::optional<RecognizedRegion> AccessibilityTextExtractor::reusedRegion(const Query& query,
                                                                         double now) const {
    if (!ocrCache_ || !ocrCache_->serves(query.pointer, now, configuration_.ocrCacheReuseInset)) {
        return std::nullopt;
    }
    TracedAttempt attempt(query.tracing, "reuse");
    if (ocrCache_->pointer == query.pointer) {
        attempt.say("the lines read here a moment ago");
        return ocrCache_->region;
    }
    auto region = recognizer_.verifiedRegion(ocrCache_->region, query.pointer);
    attempt.say([&] {
        return region ? "lines read a moment ago, verified here: " +
                            std::to_string(region->observations.size()) + " readings"
                      : std::string("the picture read a moment ago was too large to keep");
    });
    return region;
}

}  // namespace velmora
