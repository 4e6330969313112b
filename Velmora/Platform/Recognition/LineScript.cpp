// SPDX-License-Identifier: MIT
// How the recogniser deals with a line that may be in the other script.
#include <algorithm>
#include <utility>

#include "Velmora/Platform/Recognition/LineImage.h"
#include "Velmora/Platform/Recognition/LineRecognizer.h"
#include "Velmora/Platform/Recognition/WordJudge.h"

namespace velmora {

/// A line that is certain though much of it was read as something else may be in the other script:
/// whether that one reads it better is found out after the answer, for the next line.
void LineRecognizer::learnScript(const FoundLines& found, const ReadingWindow& window,
                                 const PlacedLine& characters, std::size_t agreed) {
    LineImage prepared = prepareLine(found.image, window.box, firstInkHeight);
    const ScriptModel model = opposite(script_);
    if (prepared.image.isEmpty() || !reader_.begin(prepared.image, model)) {
        return;
    }
    lesson_ = Lesson{std::move(prepared.image), model, {}, agreed};
    for (std::size_t i = window.first; i < std::min(window.last, characters.size()); ++i) {
        lesson_->characters.push_back(characters[i].text);
    }
}

void LineRecognizer::applyLearnedScript() {
    const std::optional<Lesson> lesson = std::exchange(lesson_, std::nullopt);
    const auto reading = lesson ? reader_.read(lesson->line, lesson->model) : std::nullopt;
    if (!reading) {
        return;
    }
    const auto agreed = std::count_if(
        lesson->characters.begin(), lesson->characters.end(), [&](const std::string& text) {
            return std::any_of(reading->begin(), reading->end(),
                               [&](const ReadSymbol& symbol) { return symbol.text == text; });
        });
    if (static_cast<std::size_t>(agreed) > lesson->agreed) {
        script_ = lesson->model;
    }
}

/// What the ink says of the rest of such a line, on both sides of the window.
void LineRecognizer::judgeBeside(const FoundLines& found, PlacedLine& characters,
                                 ReadingWindow& window, double focus,
                                 const GlyphJudge::Verdict& verdict) {
    const auto judgePart = [&](std::size_t from, std::size_t to) {
        if (from >= to) {
            return;
        }
        ReadingWindow part = window;
        part.first = from;
        part.last = to;
        part.box.left = characters[from].cell.left;
        part.box.right = characters[to - 1].cell.right;
        if (glyphs_.judge(found, characters, part, focus, {}, verdict.style)) {
            WordJudge(words_).choose(characters, part);
        }
    };
    judgePart(window.last, characters.size());
    const std::size_t before = characters.size();
    judgePart(0, window.first);
    // Where characters were put together or apart, the window's are at other places now.
    window.first += characters.size() - before;
    window.last += characters.size() - before;
    window.focus += characters.size() - before;
}

}  // namespace velmora
