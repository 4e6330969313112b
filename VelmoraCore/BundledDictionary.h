// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "VelmoraCore/DictionaryEntry.h"
#include "VelmoraCore/DictionaryError.h"
#include "VelmoraCore/DictionaryStore.h"

namespace velmora {

/// The dictionary that the program looks words up in: the seed entries, then the word list of the
/// resource bundle. Everything here is computed once, on first access, and shared.
class BundledDictionary {
  public:
    /// A store, and why it holds no word list where it does not.
    struct Loaded {
        std::shared_ptr<const DictionaryStore> store;
        std::optional<DictionaryError> error;
    };

    /// All entries, seed entries first. Makes every entry: the program itself uses `store`. Without
    /// a usable word list, the seed entries alone.
    static const std::vector<DictionaryEntry>& entries();

    /// The same entries as a store ready for lookups, with the same identifiers.
    static std::shared_ptr<const DictionaryStore> store();

    /// Why `store` holds nothing but the seed entries; nothing where it has the word list.
    static std::optional<DictionaryError> error();

    /// The seed entries, then those of a file. On an error the store holds the seed entries alone.
    static Loaded load(const std::string& path);

    /// The file that `store` reads: what the bundle has or ought to have.
    static std::string wordListPath();

  private:
    static const Loaded& shared();
};

}  // namespace velmora
