// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

#include "Velmora/CommandLine/Core/TextStyle.h"
#include "VelmoraCore/LookupResult.h"
#include "VelmoraCore/PinyinSyllable.h"

namespace velmora {

/// The marked syllables joined with blanks, each in the colour of its tone.
std::string readingText(std::span<const PinyinSyllable> syllables, const TextStyle& style);

/// A result for people, ending with a line end: headword and reading, senses, examples, then the
/// headword's other entries and the entries of its characters.
std::string resultText(const LookupResult& result, const TextStyle& style);

/// Results one below the other: word, reading, glosses. In columns where lines are wrapped,
/// separated by tabs otherwise.
std::string resultsText(std::span<const LookupResult> results, const TextStyle& style);

}  // namespace velmora
