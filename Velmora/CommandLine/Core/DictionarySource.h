// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "VelmoraCore/DictionaryStore.h"

namespace velmora {

/// The dictionary of a call: the seed entries and the installed word list, or the seed entries and
/// the file that the user named. Throws `UsageError` where that file cannot be used; a missing
/// installed list is none.
std::shared_ptr<const DictionaryStore> openDictionary(const std::optional<std::string>& file);

}  // namespace velmora
