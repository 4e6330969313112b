// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/LookupTexts.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr std::size_t wordsInPinyinLine = 6;
constexpr std::string_view gapInPinyinLine = "   ";

}  // namespace

std::string hoveredStatus(std::string_view matchedText, bool dictionary) {
    return std::string(dictionary ? "Showing dictionary for " : "Showing pinyin for ")
        .append(matchedText);
}

std::string selectionStatus(std::size_t count, bool dictionary) {
    const std::string number = std::to_string(count);
    const std::string_view suffix = count == 1 ? "" : "s";
    return dictionary
               ? std::string("Showing ").append(number).append(" selected lookup").append(suffix)
               : std::string("Showing pinyin for ")
                     .append(number)
                     .append(" selected word")
                     .append(suffix);
}

std::string pinyinLine(const std::vector<LookupResult>& results) {
    std::string line;
    for (std::size_t index = 0; index < std::min(results.size(), wordsInPinyinLine); ++index) {
        if (index > 0) {
            line.append(gapInPinyinLine);
        }
        line.append(results[index].entry.pinyinMarked);
    }
    return line;
}

}  // namespace velmora
