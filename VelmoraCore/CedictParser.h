// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "VelmoraCore/DictionaryEntry.h"

namespace velmora {

/// Turns CC-CEDICT text ("traditional simplified [reading] /gloss/gloss/", one entry per line) into
/// entries. Malformed lines and comments are skipped in silence. Pure functions; any thread.
class CedictParser {
  public:
    /// The entries of a text in its order. Bytes that are not UTF-8 count as U+FFFD.
    static std::vector<DictionaryEntry> parse(std::string_view text);

    /// The entry of one line, with fresh identifiers; nothing where the line is rejected.
    static std::optional<DictionaryEntry> parseLine(std::string_view line);
};

}  // namespace velmora
