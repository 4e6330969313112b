// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/InkJudge.h"

#include <algorithm>
#include <cmath>

#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/LineImage.h"

namespace velmora {

namespace {

/// Marks are not told from their look-alikes; for agreement they all count as one.
bool saysTheSame(const std::string& a, const std::string& b) {
    return a == b || (!isHan(firstCodePoint(a)) && !isHan(firstCodePoint(b)));
}

}  // namespace

/// The ink of a cell, cut a little closer and a little wider too, as the cell's edges may take a
/// piece of a neighbour along or cut a stroke off.
InkJudge::InkForms InkJudge::inkForms(const FoundLines& found, const PixelBox& box,
                                      const CharacterCell& cell) {
    InkForms forms;
    if (cell.width() < 4) {
        return forms;
    }
    const int slack = std::max(1, cell.width() / 14);
    for (const int change : {0, -slack, slack}) {
        const PixelBox area{cell.left - change, box.top - 1, cell.right + change, box.bottom + 1};
        const GrayImage cut = cutBlackOnWhite(found.image, area, box);
        if (const auto shape = CharacterShape::of(cut)) {
            forms.push_back(*shape);
        }
    }
    return forms;
}

double InkJudge::likeness(const InkForms& ink, const std::string& character) {
    double best = 0;
    if (isHan(firstCodePoint(character))) {
        for (const CharacterShape& form : ink) {
            best = std::max(best, shapes_.similarity(form, firstCodePoint(character)).value_or(0));
        }
    }
    return best;
}

double InkJudge::evidenceAgainst(const FoundLines& found, const PlacedLine& line,
                                 const ReadingWindow& window, const PlacedLine& other) {
    double evidence = 0;
    for (std::size_t i = window.first; i < window.last; ++i) {
        const PlacedCharacter* rival = counterpart(other, line[i].cell);
        if (rival == nullptr || rival->text == line[i].text ||
            !isHan(firstCodePoint(rival->text)) || !isHan(firstCodePoint(line[i].text))) {
            continue;
        }
        const auto ink = inkForms(found, window.box, line[i].cell);
        const double theirs = likeness(ink, rival->text);
        const double own = likeness(ink, line[i].text);
        if (std::max(theirs, own) >= unlike) {
            evidence += theirs - own;
        }
    }
    return evidence;
}

void InkJudge::confirm(const FoundLines& found, PlacedLine& line, const ReadingWindow& window,
                       const PlacedLine& second, const PlacedLine& other) {
    for (std::size_t i = window.first; i < window.last; ++i) {
        PlacedCharacter& character = line[i];
        const PlacedCharacter* again = counterpart(second, character.cell);
        const PlacedCharacter* rival = counterpart(other, character.cell);
        const bool sameAgain = again != nullptr && saysTheSame(again->text, character.text);
        const bool sameRival = rival != nullptr && saysTheSame(rival->text, character.text);
        character.confirmed = sameAgain;
        if ((sameAgain && sameRival) || !isHan(firstCodePoint(character.text))) {
            continue;
        }
        const auto ink = inkForms(found, window.box, character.cell);
        double best = likeness(ink, character.text);
        const double own = best;
        double strongestRival = 0;
        for (const PlacedCharacter* candidate : {again, rival}) {
            if (candidate == nullptr || candidate->text == character.text) {
                continue;
            }
            const double rate = likeness(ink, candidate->text);
            strongestRival = std::max(strongestRival, rate);
            const double needed = sameAgain ? clearlyLiker : slightlyLiker;
            if (rate > best + needed || (rate > best && best > own)) {
                best = rate;
                character.text = candidate->text;
                character.confidence = candidate->confidence;
            }
        }
        const double theirs = rival != nullptr ? likeness(ink, rival->text) : 0;
        const bool doubtfulScript = !sameRival && theirs + slightlyLiker > own && own < alike;
        character.confirmed = (sameAgain && best == own && !doubtfulScript) ||
                              (best > own + clearlyLiker && best >= alike);
        if (best == own && own >= alike && (sameRival || own > strongestRival + clearlyLiker)) {
            character.confirmed = true;
        }
    }
}

std::optional<PlacedLine> InkJudge::otherScript(const FoundLines& found, const PlacedLine& line,
                                                const ReadingWindow& window,
                                                const PlacedLine& other) {
    PlacedLine result = line;
    bool differs = false;
    for (std::size_t i = window.first; i < window.last; ++i) {
        const PlacedCharacter* rival = counterpart(other, line[i].cell);
        if (rival == nullptr || rival->text == line[i].text ||
            !isHan(firstCodePoint(rival->text))) {
            continue;
        }
        const auto ink = inkForms(found, window.box, line[i].cell);
        const double rate = likeness(ink, rival->text);
        if (rate > unlike && rate > likeness(ink, line[i].text) - clearlyLiker) {
            result[i].text = rival->text;
            differs = true;
        }
    }
    return differs ? std::optional(std::move(result)) : std::nullopt;
}

}  // namespace velmora
