// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "VelmoraCore/Uuid.h"

namespace velmora {

/// A sentence that shows an entry in use.
struct ExampleSentence {
    Uuid id = Uuid::random();
    std::string hanzi;
    std::string pinyin;  ///< The whole sentence in tone-marked pinyin.
    std::string english;

    /// Member by member; texts are equal under canonical equivalence.
    bool operator==(const ExampleSentence& other) const;
};

}  // namespace velmora
