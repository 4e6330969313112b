// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/WordCompletion.h"

#include <algorithm>

#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/WordJudge.h"

namespace velmora {

void WordCompletion::apply(const FoundLines& found, PlacedLine& line, const ReadingWindow& window) {
    if (words_ == nullptr || words_->empty()) {
        return;
    }
    for (std::size_t i = window.first; i < window.last; ++i) {
        if (isHan(firstCodePoint(line[i].text)) && !WordJudge(words_).standsInWord(line, i)) {
            complete(found, line, window, i);
        }
    }
}

bool WordCompletion::complete(const FoundLines& found, PlacedLine& line,
                              const ReadingWindow& window, std::size_t place) {
    const auto ink = InkJudge::inkForms(found, window.box, line[place].cell);
    const double own = ink_.likeness(ink, line[place].text);
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
            if (length == 2 && (agreed || own >= InkJudge::alike)) {
                continue;
            }
            const double needed = length >= 4              ? 0
                                  : length == 3 && !agreed ? InkJudge::slightlyLiker
                                                           : InkJudge::clearlyLiker;
            for (const char32_t character : words_->completions(word, back)) {
                const double rate = ink_.likeness(ink, utf8Of(character));
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
    line[place].confirmed = telling && best >= InkJudge::alike;
    line[place].confidence = std::max(line[place].confidence, 0.85F);
    return true;
}

}  // namespace velmora
