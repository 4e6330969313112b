// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "VelmoraCore/Uuid.h"

namespace velmora {

/// One sense of a dictionary entry. Two senses with equal text and different identifiers differ.
struct EntryDefinition {
    Uuid id = Uuid::random();
    std::optional<std::string> partOfSpeech;  ///< A short label such as "v.", where there is one.
    std::vector<std::string> glosses;         ///< English, in dictionary order.

    /// Member by member; texts are equal under canonical equivalence.
    bool operator==(const EntryDefinition& other) const;
};

}  // namespace velmora
