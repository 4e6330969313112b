// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/LineRecognizer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/LineImage.h"

namespace velmora {

namespace {

constexpr double firstInkHeight = 33;  ///< Two sizes, so that the readings err independently.
constexpr double secondInkHeight = 38;
constexpr double reachInEm = 14;  ///< Of the line that is read, on both sides of the focus.
constexpr double emPerLineHeight = 1.07;
constexpr std::size_t windowBefore = 4;
constexpr std::size_t windowAfter = 5;

constexpr double clearlyLiker = 0.05;  ///< Difference of likeness that settles a dispute.
constexpr double slightlyLiker = 0.015;
constexpr double unlike = 0.45;  ///< Below this the ink is hardly that character.
constexpr double alike = 0.75;   ///< The wrong form of a script reaches 0.7.

constexpr float acceptedConfidence = 0.99F;
constexpr float leastAccepted = 0.7F;  ///< Of the reader's confidences around the focus.
constexpr float greatestUnconfirmed = 0.97F;
constexpr float silentConfidence = 0.2F;
constexpr float plainConfidence = 0.9F;  ///< Of a line that was read once and not looked into.

bool isHanText(const std::string& text) {
    return isHan(firstCodePoint(text));
}

ScriptModel opposite(ScriptModel model) {
    return model == ScriptModel::simplified ? ScriptModel::traditional : ScriptModel::simplified;
}

/// The character of another reading that stands in a cell of this one, or null.
const PlacedCharacter* counterpart(const PlacedLine& reading, const CharacterCell& cell) {
    const int at = characterAt(reading, cell.middle(), 1);
    if (at < 0) {
        return nullptr;
    }
    const PlacedCharacter& character = reading[static_cast<std::size_t>(at)];
    const double offset = std::abs(character.cell.middle() - cell.middle());
    return offset <= 0.4 * cell.width() ? &character : nullptr;
}

/// A column without ink next to the wanted one, so that no character is cut; the wanted one where
/// there is none within reach.
int cutNear(const InkMask& ink, const PixelBox& line, int wanted, int reach) {
    const PixelBox strip =
        PixelBox{wanted - reach, line.top, wanted + reach + 1, line.bottom}.clippedTo(ink.width(),
                                                                                      ink.height());
    const std::vector<int> columns = ink.columnCounts(strip);
    int best = wanted;
    int distance = reach + 1;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int x = strip.left + static_cast<int>(i);
        if (columns[i] == 0 && std::abs(x - wanted) < distance) {
            best = x;
            distance = std::abs(x - wanted);
        }
    }
    return best;
}

PixelBox clipAround(const FoundLines& found, const PixelBox& line, double focus) {
    const double em = emPerLineHeight * line.height();
    const int reach = static_cast<int>(reachInEm * em);
    const int slack = static_cast<int>(em);
    PixelBox box = line;
    const int left = static_cast<int>(focus) - reach;
    const int right = static_cast<int>(focus) + reach;
    if (left > line.left + slack) {
        box.left = cutNear(found.ink, line, left, slack);
    }
    if (right < line.right - slack) {
        box.right = cutNear(found.ink, line, right, slack);
    }
    return box;
}

float meanConfidence(const PlacedLine& line) {
    float sum = 0;
    for (const PlacedCharacter& character : line) {
        sum += character.confidence;
    }
    return line.empty() ? 0 : sum / static_cast<float>(line.size());
}

bool hasHan(const PlacedLine& line) {
    return std::any_of(line.begin(), line.end(),
                       [](const PlacedCharacter& c) { return isHanText(c.text); });
}

/// Marks are not told from their look-alikes; for agreement they all count as one.
bool saysTheSame(const std::string& a, const std::string& b) {
    return a == b || (!isHanText(a) && !isHanText(b));
}

}  // namespace

ReadLine LineRecognizer::recognize(const FoundLines& found, const TextLine& line,
                                   std::optional<double> focus) {
    ReadLine result;
    result.box = focus ? clipAround(found, line.box, *focus) : line.box;
    PlacedLine characters = readBox(found, result.box, firstInkHeight, script_);
    if (characters.empty()) {
        return result;
    }
    const int at = focus ? characterAt(characters, *focus, line.box.height()) : -1;
    if (at < 0 || !hasHan(characters)) {
        const float confidence = plainConfidence * meanConfidence(characters);
        result.candidates.push_back({std::move(characters), confidence});
        return result;
    }
    Window window = windowAround(result.box, characters, at);
    PlacedLine other = readBox(found, window.box, firstInkHeight, opposite(script_));
    if (evidenceAgainst(found, characters, window, other) > slightlyLiker) {
        PlacedLine reread = readBox(found, result.box, firstInkHeight, opposite(script_));
        const int place = characterAt(reread, *focus, line.box.height());
        if (place >= 0) {
            script_ = opposite(script_);
            std::swap(characters, reread);
            other = std::move(reread);
            window = windowAround(result.box, characters, place);
        }
    }
    const PlacedLine second = readBox(found, window.box, secondInkHeight, script_);
    confirm(found, characters, window, second, other);
    tryWords(found, characters, window);
    const float confidence = calibrated(found, characters, window);
    std::optional<PlacedLine> alternative = otherScript(found, characters, window, other);
    result.candidates.push_back({std::move(characters), confidence});
    if (alternative) {
        result.candidates.push_back(
            {std::move(*alternative), std::min(confidence, greatestUnconfirmed) * 0.9F});
    }
    return result;
}

PlacedLine LineRecognizer::readBox(const FoundLines& found, const PixelBox& box, double inkHeight,
                                   ScriptModel model) {
    const LineImage prepared = prepareLine(found.image, box, inkHeight);
    if (prepared.image.isEmpty()) {
        return {};
    }
    std::optional<LineReading> reading = reader_.read(prepared.image, model);
    if (!reading) {
        return {};
    }
    const PixelBox area = box.grownBy(2, 0).clippedTo(found.ink.width(), found.ink.height());
    for (ReadSymbol& symbol : *reading) {
        symbol.left = prepared.sourceX(symbol.left) - area.left;
        symbol.right = prepared.sourceX(symbol.right) - area.left;
    }
    const FittedCells fitted = fitCells(*reading, found.ink.columnCounts(area), box.height());
    PlacedLine line;
    for (std::size_t i = 0; i < reading->size(); ++i) {
        const CharacterCell& cell = fitted.cells[i];
        line.push_back({(*reading)[i].text,
                        (*reading)[i].confidence,
                        {cell.left + area.left, cell.right + area.left}});
    }
    return line;
}

LineRecognizer::Window LineRecognizer::windowAround(const PixelBox& box, const PlacedLine& line,
                                                    int focus) const {
    Window window;
    window.focus = static_cast<std::size_t>(focus);
    window.first = window.focus - std::min(window.focus, windowBefore);
    window.last = std::min(line.size(), window.focus + windowAfter + 1);
    window.box = box;
    if (window.first > 0) {
        window.box.left = std::max(box.left, line[window.first].cell.left);
    }
    if (window.last < line.size()) {
        window.box.right = std::min(box.right, line[window.last - 1].cell.right);
    }
    if (window.box.width() < 4) {
        window.box = box;
    }
    return window;
}

/// The ink of a cell, cut a little closer and a little wider too, as the cell's edges may take a
/// piece of a neighbour along or cut a stroke off.
LineRecognizer::InkForms LineRecognizer::inkForms(const FoundLines& found, const PixelBox& box,
                                                  const CharacterCell& cell) const {
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

double LineRecognizer::likeness(const InkForms& ink, const std::string& character) {
    double best = 0;
    if (isHanText(character)) {
        for (const CharacterShape& form : ink) {
            best = std::max(best, shapes_.similarity(form, firstCodePoint(character)).value_or(0));
        }
    }
    return best;
}

/// How much more the ink looks like the other model's characters where the two differ.
double LineRecognizer::evidenceAgainst(const FoundLines& found, const PlacedLine& line,
                                       const Window& window, const PlacedLine& other) {
    double evidence = 0;
    for (std::size_t i = window.first; i < window.last; ++i) {
        const PlacedCharacter* rival = counterpart(other, line[i].cell);
        if (rival == nullptr || rival->text == line[i].text || !isHanText(rival->text) ||
            !isHanText(line[i].text)) {
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

/// Compares the readings character by character. Where they differ, the one that the ink looks
/// like is taken; it counts as confirmed only when it does so clearly.
void LineRecognizer::confirm(const FoundLines& found, PlacedLine& line, const Window& window,
                             const PlacedLine& second, const PlacedLine& other) {
    for (std::size_t i = window.first; i < window.last; ++i) {
        PlacedCharacter& character = line[i];
        const PlacedCharacter* again = counterpart(second, character.cell);
        const PlacedCharacter* rival = counterpart(other, character.cell);
        const bool sameAgain = again != nullptr && saysTheSame(again->text, character.text);
        const bool sameRival = rival != nullptr && saysTheSame(rival->text, character.text);
        character.confirmed = sameAgain;
        if ((sameAgain && sameRival) || !isHanText(character.text)) {
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

bool LineRecognizer::standsInWord(const PlacedLine& line, std::size_t place) const {
    for (std::size_t length = 2; length <= WordPatterns::longestWord; ++length) {
        for (std::size_t back = 0; back < length && back <= place; ++back) {
            const std::size_t first = place - back;
            if (first + length > line.size()) {
                continue;
            }
            std::u32string word;
            for (std::size_t i = first; i < first + length; ++i) {
                word += firstCodePoint(line[i].text);
            }
            if (words_->contains(word)) {
                return true;
            }
        }
    }
    return false;
}

/// A character that belongs to no word and that nothing confirms is replaced where another one
/// makes a word with its neighbours and the ink looks more like that.
void LineRecognizer::tryWords(const FoundLines& found, PlacedLine& line, const Window& window) {
    if (words_ == nullptr || words_->empty()) {
        return;
    }
    for (std::size_t i = window.first; i < window.last; ++i) {
        if (isHanText(line[i].text) && !standsInWord(line, i)) {
            completeWord(found, line, window, i);
        }
    }
}

bool LineRecognizer::completeWord(const FoundLines& found, PlacedLine& line, const Window& window,
                                  std::size_t place) {
    const auto ink = inkForms(found, window.box, line[place].cell);
    const double own = likeness(ink, line[place].text);
    double best = own;
    char32_t winner = 0;
    bool telling = false;  // Two characters make a word with too many others.
    for (std::size_t length = WordPatterns::longestWord; length >= 2; --length) {
        for (std::size_t back = 0; back < length && back <= place; ++back) {
            const std::size_t first = place - back;
            if (first + length > line.size()) {
                continue;
            }
            std::u32string word;
            for (std::size_t i = first; i < first + length; ++i) {
                word += firstCodePoint(line[i].text);
            }
            // The more of the word stands there already, the less the ink must say. What two
            // readings agree on gives way to longer words only: 的 and 在 stand alone by right.
            const bool agreed = line[place].confirmed;
            if (length == 2 && (agreed || own >= alike)) {
                continue;
            }
            const double needed = length >= 4              ? 0
                                  : length == 3 && !agreed ? slightlyLiker
                                                           : clearlyLiker;
            for (const char32_t character : words_->completions(word, back)) {
                const double rate = likeness(ink, utf8Of(character));
                if (rate > best && rate > own + needed) {
                    best = rate;
                    winner = character;
                    telling = length >= 3;
                }
            }
        }
    }
    if (winner == 0) {
        return false;
    }
    line[place].text = utf8Of(winner);
    line[place].confirmed = telling && best >= alike;
    line[place].confidence = std::max(line[place].confidence, 0.85F);
    return true;
}

/// The confidence of the line for a rule that looks at one character of it: at or above 0.99 where
/// everything around that character was read the same twice.
float LineRecognizer::calibrated(const FoundLines& found, const PlacedLine& line,
                                 const Window& window) {
    const std::size_t first = window.focus - std::min<std::size_t>(window.focus, 2);
    const std::size_t last = std::min(line.size(), window.focus + 4);
    const auto han = static_cast<std::size_t>(
        std::count_if(line.begin() + static_cast<std::ptrdiff_t>(window.first),
                      line.begin() + static_cast<std::ptrdiff_t>(window.last),
                      [](const PlacedCharacter& c) { return isHanText(c.text); }));
    bool confirmed = true;
    float least = 1;
    for (std::size_t i = first; i < last; ++i) {
        if (isHanText(line[i].text)) {
            confirmed = confirmed && line[i].confirmed;
            least = std::min(least, line[i].confidence);
        }
    }
    if (confirmed && least >= leastAccepted && line[window.focus].confirmed) {
        return acceptedConfidence + 0.009F * (least - leastAccepted) / (1 - leastAccepted);
    }
    const PlacedCharacter& focus = line[window.focus];
    if (!focus.confirmed && isHanText(focus.text)) {
        // A foreign script, or a picture, in which a model sees what it knows.
        const bool foreign = han * 2 < window.last - window.first;
        const auto ink = inkForms(found, window.box, focus.cell);
        if (foreign || focus.confidence < 0.6F || likeness(ink, focus.text) < unlike) {
            return silentConfidence;
        }
    }
    return std::min(greatestUnconfirmed, 0.4F + 0.5F * least);
}

/// The same line in the forms of the other script, where the ink does not tell the two apart.
std::optional<PlacedLine> LineRecognizer::otherScript(const FoundLines& found,
                                                      const PlacedLine& line, const Window& window,
                                                      const PlacedLine& other) {
    PlacedLine result = line;
    bool differs = false;
    for (std::size_t i = window.first; i < window.last; ++i) {
        const PlacedCharacter* rival = counterpart(other, line[i].cell);
        if (rival == nullptr || rival->text == line[i].text || !isHanText(rival->text)) {
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
