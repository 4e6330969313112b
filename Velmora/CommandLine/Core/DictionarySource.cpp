// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/DictionarySource.h"

#include "Velmora/CommandLine/Core/TextLayout.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "VelmoraCore/BundledDictionary.h"

namespace velmora {

std::shared_ptr<const DictionaryStore> openDictionary(const std::optional<std::string>& file) {
    if (!file) {
        return BundledDictionary::store();
    }
    BundledDictionary::Loaded loaded = BundledDictionary::load(*file);
    if (loaded.error) {
        throw UsageError(printable(*file) + ": " + std::string(description(*loaded.error)));
    }
    return std::move(loaded.store);
}

}  // namespace velmora
