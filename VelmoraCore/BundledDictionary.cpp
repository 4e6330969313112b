// SPDX-License-Identifier: MIT
#include "VelmoraCore/BundledDictionary.h"

#include <utility>

#include "VelmoraCore/DictionaryText.h"
#include "VelmoraCore/SeedDictionary.h"
#include "VelmoraCore/resource_bundle_accessor.h"

namespace velmora {

std::string BundledDictionary::wordListPath() {
    return (ResourceBundle::module().folder() / "cedict_ts.u8").string();
}

const std::vector<DictionaryEntry>& BundledDictionary::entries() {
    static const std::vector<DictionaryEntry> all = store()->allEntries();
    return all;
}

std::shared_ptr<const DictionaryStore> BundledDictionary::store() {
    return shared().store;
}

std::optional<DictionaryError> BundledDictionary::error() {
    return shared().error;
}

BundledDictionary::Loaded BundledDictionary::load(const std::string& path) {
    DictionaryError error = DictionaryError::unreadable;
    auto text = DictionaryText::read(path, error);
    if (!text) {
        return {std::make_shared<DictionaryStore>(SeedDictionary::entries()), error};
    }
    auto store = std::make_shared<DictionaryStore>(SeedDictionary::entries(), *std::move(text));
    if (store->wordListEntryCount() > 0) {
        return {std::move(store), std::nullopt};
    }
    return {std::make_shared<DictionaryStore>(SeedDictionary::entries()), DictionaryError::noEntry};
}

const BundledDictionary::Loaded& BundledDictionary::shared() {
    static const Loaded loaded = [] {
        const auto path = ResourceBundle::module().path("cedict_ts", "u8");
        return path ? load(path->string())
                    : Loaded{std::make_shared<DictionaryStore>(SeedDictionary::entries()),
                             DictionaryError::missing};
    }();
    return loaded;
}

}  // namespace velmora
