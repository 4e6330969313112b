// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/WordJudge.h"

#include <algorithm>
#include <cmath>

#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/OptionSupport.h"

namespace velmora {

namespace {

constexpr int rounds = 2;  ///< A character that was put right may put its neighbour right.
constexpr std::size_t ofEachPlace = 3;  ///< Options that are tried in pairs.
constexpr float leastOthers = 1e-6F;
constexpr float unknownBeside = 0.4F;  ///< A character that is none of its options belongs to it.
constexpr float unknownNextToThat = 0.15F;
constexpr float unknownFarther = 0.03F;

std::u32string codePointsOfLine(const PlacedLine& line) {
    std::u32string text;
    for (const PlacedCharacter& character : line) {
        text += firstCodePoint(character.text);
    }
    return text;
}

/// How far behind the best option of its place one is by itself that a word may still choose.
float widestGap() {
    return supportOfWord(WordPatterns::longestWord);
}

/// Options of a place that a word might choose, the best first; none where there is no choice.
std::vector<CharacterOption> rivals(const PlacedCharacter& character) {
    std::vector<CharacterOption> options = character.options;
    std::stable_sort(options.begin(), options.end(),
                     [&](const CharacterOption& a, const CharacterOption& b) {
                         return supportOf(a, character.fit) > supportOf(b, character.fit);
                     });
    while (options.size() > 1 && supportOf(options.back(), character.fit) + widestGap() <
                                     supportOf(options.front(), character.fit)) {
        options.pop_back();
    }
    options.resize(std::min(options.size(), ofEachPlace));
    return options;
}

void put(PlacedCharacter& character, const CharacterOption& option) {
    const std::string text = utf8Of(option.character);
    if (character.text == text) {
        return;
    }
    character.runnerUp = character.text;
    character.text = text;
    character.exact = option.exact;
    character.shape = option.shape;
    character.agreed = option.read > 0;
}

}  // namespace

/// The longest word over a place, the leftmost of equally long ones; the place alone for none.
WordJudge::Span WordJudge::longestOver(const std::u32string& text, std::size_t place) const {
    if (words_ != nullptr) {
        for (std::size_t length = std::min(WordPatterns::longestWord, text.size()); length >= 2;
             --length) {
            const std::size_t from = place + 1 - std::min(place + 1, length);
            for (std::size_t first = from; first <= place && first + length <= text.size();
                 ++first) {
                const std::u32string_view word(text.data() + first, length);
                if (std::all_of(word.begin(), word.end(), isHan) && words_->contains(word)) {
                    return {first, first + length};
                }
            }
        }
    }
    return {place, place + 1};
}

bool WordJudge::standsInWord(const PlacedLine& line, std::size_t place) const {
    return longestOver(codePointsOfLine(line), place).length() > 1;
}

void WordJudge::choose(PlacedLine& line, const ReadingWindow& window) const {
    std::u32string text = codePointsOfLine(line);
    const std::size_t last = std::min(window.last, line.size());
    for (int round = 0; round < rounds; ++round) {
        bool changed = false;
        for (std::size_t i = window.first; i < last; ++i) {
            changed = chooseAt(line, text, i) || changed;
        }
        for (std::size_t i = window.first; i + 1 < last; ++i) {
            changed = choosePair(line, text, i) || changed;
        }
        if (!changed) {
            return;
        }
    }
    for (std::size_t i = window.first; i < last; ++i) {
        chooseAt(line, text, i);
    }
}

std::size_t WordJudge::longestWord(const PlacedLine& line, std::size_t place,
                                   char32_t character) const {
    std::u32string text = codePointsOfLine(line);
    text[place] = character;
    const std::size_t length = longestOver(text, place).length();
    return length > 1 ? length : 0;
}

/// Whether another one was put there.
bool WordJudge::chooseAt(PlacedLine& line, std::u32string& text, std::size_t place) const {
    PlacedCharacter& character = line[place];
    if (character.options.empty() || !isHan(text[place])) {
        return false;
    }
    const char32_t before = text[place];
    std::vector<float> supports;
    std::size_t best = 0;
    for (const CharacterOption& option : character.options) {
        text[place] = option.character;
        supports.push_back(supportOf(option, character.fit) +
                           supportOfWord(longestOver(text, place).length()));
        best = supports.back() > supports[best] ? supports.size() - 1 : best;
    }
    float others = leastOthers;
    for (std::size_t i = 0; i < supports.size(); ++i) {
        others += i == best ? 0 : std::exp(supports[i] - supports[best]);
    }
    character.lead = -std::log(others);
    text[place] = character.options[best].character;
    put(character, character.options[best]);
    return text[place] != before;
}

/// Two characters beside each other that are both in doubt may make a word that neither makes with
/// what is there now.
bool WordJudge::choosePair(PlacedLine& line, std::u32string& text, std::size_t place) const {
    const std::vector<CharacterOption> lefts = rivals(line[place]);
    const std::vector<CharacterOption> rights = rivals(line[place + 1]);
    if (lefts.size() < 2 || rights.size() < 2 || !isHan(text[place]) || !isHan(text[place + 1])) {
        return false;
    }
    const auto supportOfBoth = [&](const CharacterOption& a, const CharacterOption& b) {
        text[place] = a.character;
        text[place + 1] = b.character;
        return supportOf(a, line[place].fit) + supportOf(b, line[place + 1].fit) +
               supportOfWord(longestOver(text, place).length()) +
               supportOfWord(longestOver(text, place + 1).length());
    };
    const std::u32string before = text.substr(place, 2);
    const auto own = [](const std::vector<CharacterOption>& options, char32_t character) {
        return std::find_if(options.begin(), options.end(), [character](const CharacterOption& o) {
            return o.character == character;
        });
    };
    auto left = own(lefts, before[0]);
    auto right = own(rights, before[1]);
    if (left == lefts.end() || right == rights.end()) {
        return false;
    }
    float best = supportOfBoth(*left, *right);
    for (auto a = lefts.begin(); a != lefts.end(); ++a) {
        for (auto b = rights.begin(); b != rights.end(); ++b) {
            const float support = supportOfBoth(*a, *b);
            if (support > best) {
                best = support;
                left = a;
                right = b;
            }
        }
    }
    put(line[place], *left);
    put(line[place + 1], *right);
    text[place] = left->character;
    text[place + 1] = right->character;
    return text.compare(place, 2, before) != 0;
}

/// How likely a place, if it is not what it seems, makes the word another one.
float WordJudge::riskOf(const PlacedLine& line, std::u32string& text, std::size_t focus, Span word,
                        std::size_t place) const {
    const char32_t own = text[place];
    const PlacedCharacter& character = line[place];
    float all = 0;
    float longer = 0;
    float best = 0;
    for (const CharacterOption& option : character.options) {
        best = std::max(best, supportOf(option, character.fit));
    }
    for (const CharacterOption& option : character.options) {
        if (option.character == own) {
            continue;
        }
        const float weight = std::exp(supportOf(option, character.fit) - best);
        text[place] = option.character;
        all += weight;
        longer += longestOver(text, focus).length() > word.length() ? weight : 0;
    }
    text[place] = own;
    const std::size_t distance = place < word.first ? word.first - place : place + 1 - word.last;
    const float unknown = distance == 1   ? unknownBeside
                          : distance == 2 ? unknownNextToThat
                                          : unknownFarther;
    return std::min(1.0F, unknown + (all > 0 ? longer / all : 0));
}

float WordJudge::certaintyOfWord(const PlacedLine& line, std::size_t focus,
                                 const std::vector<float>& certainties) const {
    std::u32string text = codePointsOfLine(line);
    const Span word = longestOver(text, focus);
    float certainty = 1;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (i >= word.first && i < word.last) {
            certainty *= certainties[i];
        } else if (i + WordPatterns::longestWord > focus && i < focus + WordPatterns::longestWord &&
                   certainties[i] < 1) {
            certainty *= 1 - (1 - certainties[i]) * riskOf(line, text, focus, word, i);
        }
    }
    return certainty;
}

}  // namespace velmora
