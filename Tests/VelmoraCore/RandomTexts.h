// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Texts in which characters of several code points, different spellings of one character and plain
/// Chinese come in any mixture. The same seed gives the same texts.
class RandomTexts {
  public:
    explicit RandomTexts(unsigned seed) : random_(seed) {}

    std::string next(std::size_t mostPieces) {
        static const std::vector<std::string_view> pieces{"中",
                                                          "文",
                                                          "学",
                                                          "习",
                                                          "中",
                                                          "文",
                                                          "一",
                                                          "丁",
                                                          "a",
                                                          "b",
                                                          " ",
                                                          "。",
                                                          "\n",
                                                          "\r\n",
                                                          "e\u0301",
                                                          "\u00E9",
                                                          "\u0301",
                                                          "\uAC00",
                                                          "\u1100\u1161",
                                                          "\u11A8",
                                                          "\u1100",
                                                          "\u8C48",
                                                          "\uF900",
                                                          "\u212B",
                                                          "\u00C5",
                                                          "A\u030A",
                                                          "𠀀",
                                                          "𪜀",
                                                          "\U0002F804",
                                                          "中\uFE00",
                                                          "\U000E0100",
                                                          "👍",
                                                          "👍🏽",
                                                          "🏽",
                                                          "👨‍👩‍👧",
                                                          "\u200D",
                                                          "🇨",
                                                          "🇳",
                                                          "\u0600",
                                                          "\u0915\u094D\u0937",
                                                          "\u0E33",
                                                          "か\u3099",
                                                          "が",
                                                          "\uFF9E",
                                                          "①",
                                                          "①\u20E3",
                                                          "\u302A"};
        std::string text;
        for (std::size_t count = below(mostPieces + 1); count > 0; --count) {
            text += pieces[below(pieces.size())];
        }
        return text;
    }

    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

  private:
    std::mt19937 random_;
};

}  // namespace velmora
