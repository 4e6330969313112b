// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "VelmoraCore/PinyinSyllable.h"

namespace velmora {

/// Turns numbered pinyin ("xue2 xi2", "lu:4") into syllables with tone marks. Pure functions; any
/// thread. Text that is not pinyin passes through; letters keep their case.
class PinyinConverter {
  public:
    /// The syllables of a reading, which blanks separate; runs of blanks make no empty syllable and
    /// other white space separates nothing.
    static std::vector<PinyinSyllable> convertPhrase(std::string_view numbered);

    /// One syllable. A last character with a whole-number value is the tone digit: 1 to 4 are the
    /// tones, any other number is the neutral tone.
    static PinyinSyllable convertSyllable(std::string_view syllable);

    /// The marked syllables of a reading, joined with single blanks.
    static std::string markedPhrase(std::string_view numbered);

    /// The same for syllables that are there already.
    static std::string joinMarked(const std::vector<PinyinSyllable>& syllables);
};

}  // namespace velmora
