// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "VelmoraCore/DictionaryEntry.h"

namespace velmora {

/// The nine curated entries that are always there, ahead of the word list.
class SeedDictionary {
  public:
    /// Built on first access and shared; identifiers stay the same for the life of the process.
    static const std::vector<DictionaryEntry>& entries();
};

}  // namespace velmora
