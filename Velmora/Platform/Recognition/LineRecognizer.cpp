// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/LineRecognizer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

#include "Velmora/Platform/Recognition/CharacterCertainty.h"
#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/LineImage.h"
#include "Velmora/Platform/Recognition/WordJudge.h"

namespace velmora {

namespace {

constexpr double secondInkHeight = 38;  ///< So that the readings err independently.
constexpr double reachInEm = 6;         ///< Of the line that is read, on both sides of the focus.
constexpr double leastRestInEm = 2.5;   ///< Less than that beyond it is read as well.
constexpr double emPerLineHeight = 1.07;
constexpr std::size_t windowBefore = 4;
constexpr std::size_t windowAfter = 5;
constexpr std::size_t leastChanged = 2;  ///< Characters that tell of the other script.

constexpr float acceptedConfidence = 0.99F;
constexpr float leastAccepted = 0.7F;  ///< Of the reader's confidences around the focus.
constexpr float greatestUnconfirmed = 0.97F;
constexpr float silentConfidence = 0.2F;
constexpr float acceptedCertainty = 0.88F;  ///< Of a word.
constexpr float leastCertainty = 0.5F;      ///< Below this nothing is better than the word.
constexpr float neverCompared = 0.5F;
constexpr float guessedLetter = 0.1F;
constexpr float somewhatAlike = 0.45F;   ///< A form in a font that is not known.
constexpr float alikeByItself = 0.75F;   ///< Where nothing else tells of the font.
constexpr float plainConfidence = 0.9F;  ///< Of a line that was read once and not looked into.

bool isHanText(const std::string& text) {
    return isHan(firstCodePoint(text));
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
    const int rest = static_cast<int>(leastRestInEm * em);
    if (left > line.left + rest) {
        box.left = cutNear(found.ink, line, left, slack);
    }
    if (right < line.right - rest) {
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

/// How many characters of a window another reading has as well.
std::size_t agreement(const PlacedLine& reading, const PlacedLine& line,
                      const ReadingWindow& window) {
    std::size_t count = 0;
    for (std::size_t i = window.first; i < window.last; ++i) {
        const PlacedCharacter* same = counterpart(reading, line[i].cell);
        count += same != nullptr && same->text == line[i].text ? 1 : 0;
    }
    return count;
}

/// Most of a window is in a foreign script, or a picture, in which a model sees what it knows.
bool isForeign(const PlacedLine& line, const ReadingWindow& window) {
    const std::size_t last = std::min(window.last, line.size());
    std::size_t han = 0;
    for (std::size_t i = window.first; i < last; ++i) {
        han += isHanText(line[i].text) ? 1 : 0;
    }
    return han * 2 < last - window.first;
}

/// Ink that is liker a letter of another script than any character, but is not clearly that letter.
bool isGuessedLetter(const PlacedCharacter& character) {
    return isKanaOrHangul(firstCodePoint(character.text)) && character.exact > 0 &&
           !character.confirmed;
}

/// No other character tells of the line's font, and this one is not enough like its own forms: a
/// picture, or a piece of writing that runs in another direction.
bool standsAlone(const PlacedLine& line, std::size_t focus) {
    const auto alike = std::count_if(line.begin(), line.end(), [](const PlacedCharacter& c) {
        return c.exact >= somewhatAlike;
    });
    return line[focus].exact > 0 && line[focus].exact < alikeByItself && alike <= 1;
}

bool hasHan(const PlacedLine& line) {
    return std::any_of(line.begin(), line.end(),
                       [](const PlacedCharacter& c) { return isHanText(c.text); });
}

}  // namespace

ReadLine LineRecognizer::recognize(const FoundLines& found, const TextLine& line,
                                   std::optional<double> focus, LineEffort effort) {
    applyLearnedScript();
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
    if (!recognizeByGlyphs(found, characters, *focus, effort, result)) {
        recognizeByReadings(found, std::move(characters), *focus, result);
    }
    return result;
}

/// One reading and the forms of its characters; further readings only where these leave doubts.
/// False where no forms are at hand.
bool LineRecognizer::recognizeByGlyphs(const FoundLines& found, PlacedLine& characters,
                                       double focus, LineEffort effort, ReadLine& result) {
    const int height = result.box.height();
    ReadingWindow window =
        windowAround(result.box, characters, characterAt(characters, focus, height));
    const PlacedLine first = characters;
    std::optional<GlyphJudge::Verdict> verdict =
        glyphs_.judge(found, characters, window, focus, {});
    if (!verdict) {
        return false;
    }
    const bool isDoubtful = verdict->changed >= leastChanged || !verdict->settled;
    if (isDoubtful && isDecided(characters, window)) {
        if (verdict->changed >= leastChanged) {
            learnScript(found, window, characters, agreement(first, characters, window));
            judgeBeside(found, characters, window, focus, *verdict);
        }
    } else if (isDoubtful && effort == LineEffort::full) {
        if (!verdict->settled) {
            beginBox(found, window.box, secondInkHeight, script_);
        }
        PlacedLine other = readBox(found, result.box, firstInkHeight, opposite(script_));
        const int place = characterAt(other, focus, height);
        if (place >= 0 &&
            agreement(other, characters, window) > agreement(first, characters, window)) {
            script_ = opposite(script_);
            characters = std::move(other);
            window = windowAround(result.box, characters, place);
            verdict = glyphs_.judge(found, characters, window, focus, {&first});
        } else if (!verdict->settled) {
            const PlacedLine second = readBox(found, window.box, secondInkHeight, script_);
            characters = first;
            verdict =
                glyphs_.judge(found, characters, window, focus, {&second, &other}, verdict->style);
        }
    }
    if (!verdict) {
        return false;
    }
    WordJudge(words_).choose(characters, window);
    const float confidence = certaintyOfWord(characters, window);
    result.candidates.push_back({std::move(characters), confidence});
    if (verdict->hasRunnersUp) {
        result.candidates.push_back(
            {std::move(verdict->runnersUp), std::min(confidence, greatestUnconfirmed) * 0.9F});
    }
    return true;
}

/// Whether the ink alone makes the word at the focus as sure as an answer has to be.
bool LineRecognizer::isDecided(PlacedLine characters, const ReadingWindow& window) {
    WordJudge(words_).choose(characters, window);
    return certaintyOfWord(characters, window) >= acceptedConfidence;
}

/// Several readings, which the ink decides between: where no forms are at hand.
void LineRecognizer::recognizeByReadings(const FoundLines& found, PlacedLine characters,
                                         double focus, ReadLine& result) {
    const int height = result.box.height();
    ReadingWindow window =
        windowAround(result.box, characters, characterAt(characters, focus, height));
    PlacedLine other = readBox(found, window.box, firstInkHeight, opposite(script_));
    if (ink_.evidenceAgainst(found, characters, window, other) > InkJudge::slightlyLiker) {
        PlacedLine reread = readBox(found, result.box, firstInkHeight, opposite(script_));
        const int place = characterAt(reread, focus, height);
        if (place >= 0) {
            script_ = opposite(script_);
            std::swap(characters, reread);
            other = std::move(reread);
            window = windowAround(result.box, characters, place);
        }
    }
    const PlacedLine second = readBox(found, window.box, secondInkHeight, script_);
    ink_.confirm(found, characters, window, second, other);
    WordCompletion(ink_, words_).apply(found, characters, window);
    const float confidence = calibrated(found, characters, window);
    std::optional<PlacedLine> alternative = ink_.otherScript(found, characters, window, other);
    result.candidates.push_back({std::move(characters), confidence});
    if (alternative) {
        result.candidates.push_back(
            {std::move(*alternative), std::min(confidence, greatestUnconfirmed) * 0.9F});
    }
}

/// Has a box read beside what comes next.
bool LineRecognizer::beginBox(const FoundLines& found, const PixelBox& box, double inkHeight,
                              ScriptModel model) {
    const LineImage prepared = prepareLine(found.image, box, inkHeight);
    return !prepared.image.isEmpty() && reader_.begin(prepared.image, model);
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

ReadingWindow LineRecognizer::windowAround(const PixelBox& box, const PlacedLine& line,
                                           int focus) const {
    ReadingWindow window;
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

/// The confidence of the line for a rule that looks at one character of it: how certain its word
/// is, with the characters beside it that might make it a longer one.
float LineRecognizer::certaintyOfWord(const PlacedLine& line, const ReadingWindow& window) {
    const WordJudge words(words_);
    const std::size_t focus = std::min(window.focus, line.size() - 1);
    std::vector<float> certainties(line.size(), 1.0F);
    for (std::size_t i = window.first; i < std::min(window.last, line.size()); ++i) {
        if (!isHanText(line[i].text)) {
            certainties[i] = isGuessedLetter(line[i]) ? guessedLetter : 1.0F;
        } else {
            certainties[i] = line[i].exact > 0 ? certaintyOf(line[i], words.standsInWord(line, i))
                                               : neverCompared;
        }
    }
    const bool foreign = isForeign(line, window);
    const float own = certainties[focus];
    const float certainty = words.certaintyOfWord(line, focus, certainties) *
                            (foreign && !isHanText(line[focus].text) ? neverCompared : 1);
    if (own < (foreign ? acceptedCertainty : leastCertainty) || certainty < leastCertainty ||
        standsAlone(line, focus)) {
        return silentConfidence;
    }
    return certainty >= acceptedCertainty
               ? acceptedConfidence +
                     0.009F * (certainty - acceptedCertainty) / (1 - acceptedCertainty)
               : std::min(greatestUnconfirmed, 0.4F + 0.6F * certainty);
}

/// The same where no forms are at hand: at or above 0.99 where everything around the character was
/// read the same twice.
float LineRecognizer::calibrated(const FoundLines& found, const PlacedLine& line,
                                 const ReadingWindow& window) {
    const std::size_t first = window.focus - std::min<std::size_t>(window.focus, 2);
    const std::size_t last = std::min(line.size(), window.focus + 4);
    const PlacedCharacter& focus = line[window.focus];
    const bool foreign = isForeign(line, window);
    bool confirmed = focus.confirmed && (!foreign || isHanText(focus.text));
    float least = 1;
    for (std::size_t i = first; i < last; ++i) {
        if (isHanText(line[i].text)) {
            confirmed = confirmed && line[i].confirmed;
            least = std::min(least, line[i].confidence);
        }
    }
    if (confirmed && least >= leastAccepted) {
        return acceptedConfidence + 0.009F * (least - leastAccepted) / (1 - leastAccepted);
    }
    if (!focus.confirmed && isHanText(focus.text)) {
        const auto ink = InkJudge::inkForms(found, window.box, focus.cell);
        if (foreign || focus.confidence < 0.6F ||
            ink_.likeness(ink, focus.text) < InkJudge::unlike) {
            return silentConfidence;
        }
    }
    return std::min(greatestUnconfirmed, 0.4F + 0.5F * least);
}

}  // namespace velmora
