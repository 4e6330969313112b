// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "VelmoraCore/PlainScalar.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {

/// A number for one character: equal numbers mean canonically equivalent characters.
using CharacterKey = std::uint32_t;

/// Gives every character its key. A character whose composed form is one code point has that as its
/// key; any other gets the next number behind the code points when it is first seen.
class CharacterKeys {
  public:
    /// What `find` answers for a character that was never added: the key of no character.
    static constexpr CharacterKey unknown = 0xFFFFFFFF;

    /// The key of a non-empty character of valid UTF-8.
    CharacterKey add(std::string_view character);

    /// Appends the keys of all characters of a text, which is split and repaired as CharacterText
    /// does it.
    void addAll(std::string_view text, std::vector<CharacterKey>& keys);

    /// The same without remembering new characters.
    CharacterKey find(std::string_view character) const {
        const Utf8Scalar scalar = utf8ScalarAt(character.data());
        if (scalar.length == character.size() && isPlainScalar(scalar.value)) {
            return scalar.value;
        }
        return findComposed(character);
    }

  private:
    static bool appendPlain(std::string_view text, std::vector<CharacterKey>& keys);

    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const {
            return std::hash<std::string_view>()(text);
        }
    };

    CharacterKey findComposed(std::string_view character) const;

    std::unordered_map<std::string, CharacterKey, Hash, std::equal_to<>> keys_;
};

}  // namespace velmora
