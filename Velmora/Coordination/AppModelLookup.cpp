// SPDX-License-Identifier: MIT
// The model's lookup: from a dwell to what is shown, and to its end.
#include <QPointer>
#include <algorithm>
#include <utility>

#include "Velmora/Coordination/AppModel.h"
#include "Velmora/Coordination/DismissalGeometry.h"
#include "Velmora/Coordination/HoverTimes.h"
#include "Velmora/Coordination/LookupTexts.h"

namespace velmora {

namespace {

/// What came from other programs may hold anything.
std::optional<Rect> finite(std::optional<Rect> rect) {
    return rect && rect->isFinite() ? rect : std::nullopt;
}

/// Stands in where no place of the text is known.
Rect pointAnchor(Point point) {
    return {point.x, point.y, 1, 1};
}

/// The whole word's rectangle where it has at least two characters and the probe can tell it,
/// otherwise that of the hovered character, otherwise nothing.
std::optional<Rect> highlightRect(const TextProbe& probe, const MatchedTextRange& range) {
    if (range.end - range.start >= 2 && probe.rangeAnchorRect) {
        if (const auto rect = finite(probe.rangeAnchorRect(range.start, range.end))) {
            return rect;
        }
    }
    return finite(probe.anchorRect);
}

}  // namespace

void AppModel::handleDwell(Point point, ModifierFlags flags) {
    noteHoverTime("dwell");
    if (statusMenuOpen_ || isMenuBarPoint(point, services_.screens.all()) ||
        isReadingPopover(point)) {
        return;
    }
    if (!hoverLookupEnabled_) {
        setHoverStatus("Hover lookup off");
        return;
    }
    permissions_.recheck();
    if (!permissions_.accessibilityGranted()) {
        setBothStatuses("Accessibility permission needed");
        hoverMonitor_.stop();
        hideOverlays();
        return;
    }
    std::vector<Rect> excluding;
    if (const auto frame = services_.popover.visiblePanelFrame()) {
        excluding.push_back(*frame);
    }
    const std::uint64_t generation = ++hoverGeneration_;
    services_.textExtractor.extract(
        point, std::move(excluding),
        [weak = QPointer<AppModel>(this), generation, point, flags](const auto& probe) {
            if (weak && weak->hoverGeneration_ == generation) {
                noteHoverTime("answered");
                weak->present(probe, point, flags);
            }
        });
}

bool AppModel::isReadingPopover(Point point) const {
    if (!currentLookupPresentation_ ||
        currentLookupPresentation_->mode != LookupPresentationMode::dictionary) {
        return false;
    }
    const auto frame = services_.popover.visiblePanelFrame();
    return frame && isOnPanel(point, *frame);
}

void AppModel::present(const std::optional<TextProbe>& probe, Point point, ModifierFlags flags) {
    if (!probe) {
        presentMiss("no_text", "No readable text under cursor", "no readable text under cursor",
                    nullptr, point);
    } else if (probe->source == TextProbe::Source::selectedText) {
        presentSelectedText(*probe, point, flags.containsShift());
    } else {
        presentHoveredText(*probe, point, flags.containsShift());
    }
}

void AppModel::presentMiss(std::string_view event, std::string_view status, std::string_view reason,
                           const TextProbe* probe, Point point) {
    setBothStatuses(status);
    services_.qaLog.record(
        {.event = event,
         .cursorPoint = point,
         .probe = probe,
         .anchorRect = probe != nullptr ? finite(probe->anchorRect) : std::nullopt,
         .reason = reason});
    hideOverlays();
}

Rect AppModel::outline(const std::optional<Rect>& word, Point point) {
    if (word) {
        services_.highlight.show(*word);
    } else {
        services_.highlight.orderOut();
    }
    return word.value_or(pointAnchor(point));
}

void AppModel::presentHoveredText(const TextProbe& probe, Point point, bool shift) {
    const auto result = services_.lookupEngine.lookup(probe.text, probe.hoveredCharacterOffset);
    if (!result) {
        presentMiss("no_match", "No dictionary match under cursor",
                    "no dictionary match under cursor", &probe, point);
        return;
    }
    const Rect anchor = outline(highlightRect(probe, result->range), point);
    services_.qaLog.record({.event = "lookup",
                            .cursorPoint = point,
                            .probe = &probe,
                            .match = &*result,
                            .anchorRect = anchor,
                            .mode = lookupModeName(shift)});
    setBothStatuses(hoveredStatus(result->matchedText, shift));
    if (!shift) {
        presentPinyin({*result}, std::nullopt, anchor);
        return;
    }
    present({*result}, std::nullopt, anchor, true);
    if (autoPronounce_) {
        services_.speech.speak(result->entry.simplified);
    }
}

void AppModel::presentSelectedText(const TextProbe& probe, Point point, bool shift) {
    const auto results = services_.lookupEngine.lookups(probe.text);
    if (results.empty()) {
        presentMiss("no_match", "No dictionary matches in selection",
                    "no dictionary matches in selection", &probe, point);
        return;
    }
    const Rect anchor = outline(finite(probe.anchorRect), point);
    services_.qaLog.record({.event = "lookup",
                            .cursorPoint = point,
                            .probe = &probe,
                            .match = &results.front(),
                            .results = results,
                            .anchorRect = anchor,
                            .mode = lookupModeName(shift)});
    setBothStatuses(selectionStatus(results.size(), shift));
    if (shift) {
        present(results, probe.text, anchor, true);
    } else {
        presentPinyin(results, probe.text, anchor);
    }
}

void AppModel::present(const std::vector<LookupResult>& results,
                       const std::optional<std::string>& selectedText, const Rect& anchor,
                       bool autoPronounceSelection) {
    updateRecentLookups(results);
    services_.popover.show(results, selectedText, anchor, toneColorsEnabled_, popoverFontScale_);
    currentLookupPresentation_ =
        LookupPresentation{results, selectedText, anchor, LookupPresentationMode::dictionary};
    trackLookupPresented("dictionary", results.size(), selectedText.has_value());
    if (autoPronounceSelection && !results.empty() && autoPronounce_ && selectedText) {
        services_.speech.speak(results.front().entry.simplified);
    }
}

void AppModel::presentPinyin(const std::vector<LookupResult>& results,
                             const std::optional<std::string>& selectedText, const Rect& anchor) {
    const std::string text = pinyinLine(results);
    if (text.empty()) {
        hideOverlays();
        return;
    }
    updateRecentLookups(results);
    services_.popover.showPinyin(text, anchor, popoverFontScale_);
    currentLookupPresentation_ =
        LookupPresentation{results, selectedText, anchor, LookupPresentationMode::pinyin};
    trackLookupPresented("pinyin", results.size(), selectedText.has_value());
}

void AppModel::trackLookupPresented(std::string_view mode, std::size_t resultCount,
                                    bool isSelection) {
    services_.analytics.capture(
        AnalyticsEvent::lookupPresented,
        {{"mode", std::string(mode)},
         {"result_count", static_cast<std::int64_t>(resultCount)},
         {"source", std::string(isSelection ? "selected_text" : "hovered_text")}});
}

void AppModel::updateRecentLookups(const std::vector<LookupResult>& results) {
    recentLookups_.add(results);
    emit recentLookupsChanged();
}

void AppModel::handleModifierFlagsChanged(ModifierFlags flags) {
    if (!flags.containsShift() || !hoverLookupEnabled_ || !permissions_.accessibilityGranted() ||
        statusMenuOpen_ || !currentLookupPresentation_ ||
        currentLookupPresentation_->mode != LookupPresentationMode::pinyin) {
        return;
    }
    // A copy: presenting replaces the original.
    const LookupPresentation shown = *currentLookupPresentation_;
    if (!shown.selectedText && !shown.results.empty()) {
        setBothStatuses(hoveredStatus(shown.results.front().matchedText, true));
    } else {
        setBothStatuses(selectionStatus(shown.results.size(), true));
    }
    present(shown.results, shown.selectedText, shown.anchor, false);
}

void AppModel::handleMouseMoved(Point point) {
    if (!currentLookupPresentation_) {
        return;
    }
    const auto frame = services_.popover.visiblePanelFrame();
    if (frame && !isInsideActiveLookupArea(point, *currentLookupPresentation_, frame)) {
        dismissLookupPresentation();
    }
}

void AppModel::handleMouseDown(Point point) {
    if (!currentLookupPresentation_) {
        return;
    }
    const auto frame = services_.popover.visiblePanelFrame();
    if (!frame || !isOnPanel(point, *frame)) {
        dismissLookupPresentation();
    }
}

void AppModel::dismissLookupPresentation() {
    ++hoverGeneration_;
    hideOverlays();
    if (hoverLookupEnabled_ && permissions_.accessibilityGranted()) {
        setHoverStatus("Hover lookup ready");
    }
}

void AppModel::hideOverlays() {
    services_.popover.orderOut();
    services_.highlight.orderOut();
    currentLookupPresentation_.reset();
}

}  // namespace velmora
