// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/Recognition/WordPatterns.h"

namespace velmora {

class DictionaryStore;

/// The headwords of a dictionary, in both scripts, as patterns. Takes a few hundred milliseconds
/// for a whole word list: to be made in the background.
std::shared_ptr<const WordPatterns> wordPatternsOf(const DictionaryStore& store);

}  // namespace velmora
