// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "VelmoraCore/PinyinTone.h"

namespace velmora {

/// One syllable of a reading.
struct PinyinSyllable {
    std::string numbered;  ///< As the dictionary writes it: "zhong1".
    std::string marked;    ///< With its tone mark: "zhōng".
    PinyinTone tone = PinyinTone::neutral;

    /// Member by member; texts are equal under canonical equivalence.
    bool operator==(const PinyinSyllable& other) const;
};

}  // namespace velmora
