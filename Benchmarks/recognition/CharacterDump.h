// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Benchmarks/recognition/Corpus.h"
#include "Velmora/Platform/Recognition/WordPatterns.h"

namespace velmora {

/// Reads around every hover of a corpus and prints, for each character near it, what is known
/// about how right it is and whether it is: the data that the confidence is fitted to.
/// False where nothing can be read.
bool dumpCharacters(const std::vector<CorpusScreen>& screens, const WordPatterns& words);

}  // namespace velmora
