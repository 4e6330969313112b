// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/GlyphJudge.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Velmora/Platform/Recognition/CharacterGrid.h"
#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/LineImage.h"
#include "Velmora/Platform/Recognition/OptionSupport.h"

namespace velmora {

namespace {

constexpr int rowsAround = 2;         ///< Of the line's ink, taken along.
constexpr float knownFont = 0.85F;    ///< From this fit on the drawn forms decide alone.
constexpr float clearMargin = 0.05F;  ///< To the second best.
constexpr float clearExact = 0.85F;
constexpr float closeExact = 0.02F;  ///< Closer than this the second best is offered too.
constexpr double leastWidth = 0.6;   ///< Of the pitch, for a cell that may hold a character.
constexpr float belowFit = 0.08F;    ///< A character that fits so much worse is none.
constexpr float gridConfidence = 0.9F;
constexpr float foreignLead = 0.03F;  ///< By which a letter must be liker than any character.
constexpr std::size_t mostOptions = 6;
constexpr float doubtful = 0.9F;  ///< A mark read with less may be a character.

bool isHanText(const std::string& text) {
    return isHan(firstCodePoint(text));
}

/// A cell on its way: which character of the line it is and what is said about it.
struct Judged {
    std::size_t place = 0;
    std::vector<char32_t> others;
};

/// Of a match or an option.
template <typename Form>
float likenessOf(const Form& match, bool fontKnown) {
    return fontKnown ? match.exact + 0.1F * match.shape : 0.5F * match.exact + 0.5F * match.shape;
}

/// The letter of another script that the ink is liker than any Chinese character; null for none.
const GlyphMatch* foreignLetter(const std::vector<GlyphMatch>& matches, bool fontKnown) {
    const GlyphMatch* letter = nullptr;
    float character = 0;
    for (const GlyphMatch& match : matches) {
        if (isHan(match.character)) {
            character = std::max(character, likenessOf(match, fontKnown));
        } else if (letter == nullptr ||
                   likenessOf(match, fontKnown) > likenessOf(*letter, fontKnown)) {
            letter = &match;
        }
    }
    return letter != nullptr && likenessOf(*letter, fontKnown) > character + foreignLead ? letter
                                                                                         : nullptr;
}

/// Whether a mark that was read may be a character nonetheless.
bool maybeCharacter(const PlacedCharacter& character, float exact, bool fontKnown) {
    return character.text.empty() || isHanText(character.text) ||
           (fontKnown && exact >= clearExact && character.confidence < doubtful);
}

/// Puts a letter of another script into the line. Whether it had something else there.
bool settleForeign(PlacedCharacter& character, const GlyphMatch& letter, bool fontKnown) {
    if (!maybeCharacter(character, letter.exact, fontKnown)) {
        return false;
    }
    character.exact = letter.exact;
    character.shape = letter.shape;
    character.confirmed = fontKnown && letter.exact >= clearExact;
    character.confidence = std::min(character.confidence, letter.exact);
    const std::string text = utf8Of(letter.character);
    return std::exchange(character.text, text) != text;
}

CharacterOption optionOf(const GlyphMatch& match, const PlacedCharacter& character,
                         const Judged& cell) {
    CharacterOption option{match.character, match.exact, match.shape, 0, 0};
    option.read = match.character == firstCodePoint(character.text) ? character.confidence : 0;
    option.votes =
        static_cast<float>(std::count(cell.others.begin(), cell.others.end(), match.character));
    return option;
}

/// Puts the best match into the line. Whether it had another character there.
bool settle(PlacedCharacter& character, const std::vector<GlyphMatch>& matches, const Judged& cell,
            float fontFit) {
    character.fit = fontFit;
    if (matches.empty()) {
        return false;
    }
    const bool fontKnown = fontFit >= knownFont;
    if (const GlyphMatch* letter = foreignLetter(matches, fontKnown)) {
        return settleForeign(character, *letter, fontKnown);
    }
    std::vector<CharacterOption> ranked;
    ranked.reserve(matches.size());
    for (const GlyphMatch& match : matches) {
        if (isHan(match.character)) {
            ranked.push_back(optionOf(match, character, cell));
        }
    }
    if (ranked.empty()) {
        return false;
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [fontFit](const CharacterOption& a, const CharacterOption& b) {
                         return supportOf(a, fontFit) > supportOf(b, fontFit);
                     });
    ranked.resize(std::min(ranked.size(), mostOptions));
    const CharacterOption best = ranked.front();
    if (!maybeCharacter(character, best.exact, fontKnown)) {
        return false;
    }
    character.exact = best.exact;
    character.shape = best.shape;
    character.margin =
        ranked.size() > 1 ? likenessOf(best, fontKnown) - likenessOf(ranked[1], fontKnown) : 1;
    if (ranked.size() > 1 && best.exact - ranked[1].exact < closeExact) {
        character.runnerUp = utf8Of(ranked[1].character);
    }
    character.options = std::move(ranked);
    const std::string text = utf8Of(best.character);
    character.agreed = character.text == text;
    character.confirmed = best.exact >= clearExact && fontKnown &&
                          (character.margin >= clearMargin || character.agreed);
    if (!character.agreed) {
        character.text = text;
        character.confidence = std::min(character.confidence, best.exact);
    }
    return !character.agreed;
}

}  // namespace

/// The strip of a window and where it begins in the picture.
GlyphJudge::Strip GlyphJudge::cutStrip(const FoundLines& found, const ReadingWindow& window,
                                       double pitch) {
    const PixelBox area = window.box.grownBy(rowsAround + static_cast<int>(pitch / 2), rowsAround)
                              .clippedTo(found.image.width(), found.image.height());
    Strip strip;
    strip.left = area.left;
    strip.request.strip = cutBlackOnWhite(found.image, area, window.box);
    strip.request.em = pitch;
    return strip;
}

std::optional<MatchedCells> GlyphJudge::match(const Strip& strip) {
    if (strip.request.strip.isEmpty() || strip.request.cells.empty()) {
        return std::nullopt;
    }
    std::optional<MatchedCells> matches = reader_.matchCells(strip.request);
    return matches && matches->cells.size() == strip.request.cells.size() ? std::move(matches)
                                                                          : std::nullopt;
}

bool GlyphJudge::Strip::add(const CharacterCell& cell, std::vector<char32_t> candidates) {
    const CharacterCell inside{std::max(0, cell.left - left),
                               std::min(request.strip.width(), cell.right - left)};
    if (inside.width() < 4 || request.cells.size() >= CellsToMatch::mostCells) {
        return false;
    }
    request.cells.push_back({inside, std::move(candidates)});
    return true;
}

std::optional<GlyphJudge::Verdict> GlyphJudge::judge(const FoundLines& found, PlacedLine& line,
                                                     ReadingWindow& window, double focus,
                                                     const std::vector<const PlacedLine*>& others,
                                                     const std::optional<LineStyle>& style) {
    const double pitch = pitchOf(line);
    if (pitch <= 0) {
        return std::nullopt;
    }
    Strip strip = cutStrip(found, window, pitch);
    strip.request.style = style;
    std::vector<Judged> cells;
    for (std::size_t i = window.first; i < window.last; ++i) {
        const PlacedCharacter& character = line[i];
        Judged judged{i, {}};
        for (const PlacedLine* other : others) {
            const PlacedCharacter* rival = counterpart(*other, character.cell);
            if (rival != nullptr && isHanText(rival->text)) {
                judged.others.push_back(firstCodePoint(rival->text));
            }
        }
        std::vector<char32_t> wanted = judged.others;
        if (isHanText(character.text)) {
            wanted.push_back(firstCodePoint(character.text));
        }
        if (character.cell.width() >= leastWidth * pitch &&
            strip.add(character.cell, std::move(wanted))) {
            cells.push_back(std::move(judged));
        }
    }
    std::optional<MatchedCells> matches = match(strip);
    if (!matches) {
        return std::nullopt;
    }
    Verdict verdict;
    verdict.fontFit = matches->fontFit;
    verdict.style = matches->style;
    verdict.compared = cells.size();
    std::vector<bool> certain(line.size(), false);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        PlacedCharacter& character = line[cells[i].place];
        const bool changed = settle(character, matches->cells[i], cells[i], matches->fontFit);
        verdict.changed += changed ? 1 : 0;
        certain[cells[i].place] =
            character.exact >= clearExact && character.exact >= matches->fontFit - belowFit;
    }
    if (matches->fontFit >= knownFont) {
        verdict.changed +=
            regrid(found, line, certain, window, pitchOfCertain(line, certain, pitch), *matches);
        window.focus = static_cast<std::size_t>(std::max(0, characterAt(line, focus, 2 * pitch)));
    }
    finish(line, window, verdict);
    return verdict;
}

/// Reads places again where characters should stand but none fits. How many it found.
std::size_t GlyphJudge::regrid(const FoundLines& found, PlacedLine& line,
                               const std::vector<bool>& certain, ReadingWindow& window,
                               double pitch, const MatchedCells& matched) {
    const float fontFit = matched.fontFit;
    Strip strip = cutStrip(found, window, pitch);
    strip.request.style = matched.style;
    std::vector<CharacterCell> cells;
    for (const CharacterCell& cell : cellsOnGrid(line, certain, window, pitch)) {
        if (strip.add(cell, {})) {
            cells.push_back(cell);
        }
    }
    const std::optional<MatchedCells> matches = match(strip);
    if (!matches) {
        return 0;
    }
    std::size_t replaced = 0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        PlacedCharacter character{"", gridConfidence, cells[i]};
        const PlacedCharacter* before = counterpart(line, cells[i]);
        settle(character, matches->cells[i], {}, fontFit);
        if (character.exact < clearExact || character.exact < fontFit - belowFit ||
            (before != nullptr && before->exact >= character.exact)) {
            continue;
        }
        const std::size_t size = line.size();
        replaceWithin(line, character);
        window.last = std::min(line.size(), window.last + line.size() - size);
        ++replaced;
    }
    return replaced;
}

/// What the window is like now, and the line as it might be instead.
void GlyphJudge::finish(const PlacedLine& line, const ReadingWindow& window, Verdict& verdict) {
    verdict.settled = verdict.fontFit >= knownFont;
    verdict.runnersUp = line;
    for (std::size_t i = window.first; i < std::min(window.last, line.size()); ++i) {
        const PlacedCharacter& character = line[i];
        verdict.settled = verdict.settled && (character.confirmed || !isHanText(character.text));
        if (!character.runnerUp.empty()) {
            verdict.runnersUp[i].text = character.runnerUp;
            verdict.hasRunnersUp = true;
        }
    }
}

}  // namespace velmora
