// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VelmoraCore/DictionaryEntry.h"
#include "VelmoraCore/MatchedTextRange.h"

namespace velmora {

/// Every entry of the loaded dictionary, indexed by headword; built once, read from any thread.
class DictionaryStore {
  public:
    explicit DictionaryStore(std::vector<DictionaryEntry> entries);
};

}  // namespace velmora
