// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/SelectedText.h"

#include <string>

#include "Velmora/TextCapture/ElementReading.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

std::optional<TextProbe> SelectedText::extract(const AccessibilityElement& element, Point pointer,
                                               const DesktopFlip& flip, TracedAttempt& attempt) {
    constexpr double margin = 3;
    const std::optional<std::string> selected = ElementReading::copySelectedText(element);
    if (!selected) {
        attempt.say("nothing selected");
        return std::nullopt;
    }
    const CharacterText text(*selected);
    const auto offset = firstChineseCharacterOffset(text);
    if (!offset) {
        attempt.say("no Chinese character selected");
        return std::nullopt;
    }
    const auto range = ElementReading::copySelectedTextRange(element);
    const auto bounds =
        range ? ElementReading::boundsForRange(*range, element) : std::optional<Rect>();
    if (!bounds) {
        attempt.say("the selection has no bounds");
        return std::nullopt;
    }
    if (!bounds->grownBy(margin).contains(pointer)) {
        attempt.say("the pointer is not on the selection");
        return std::nullopt;
    }
    attempt.say([&] { return "selected \"" + text.text() + "\""; });
    return TextProbe{text.text(), static_cast<long long>(*offset), flip.flipped(*bounds),
                     TextProbe::Source::selectedText, nullptr};
}

}  // namespace velmora
