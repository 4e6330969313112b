// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace velmora {

/// Why a word list cannot be used.
enum class DictionaryError {
    missing,     ///< There is no such file.
    unreadable,  ///< No permission, no regular file, too large, or reading failed.
    notUtf8,
    noEntry,  ///< Read, but not one line of it is an entry.
};

/// What to tell the user, to be put behind the name of the file and a colon.
constexpr std::string_view description(DictionaryError error) {
    switch (error) {
        case DictionaryError::missing:
            return "no such file";
        case DictionaryError::unreadable:
            return "cannot be read";
        case DictionaryError::notUtf8:
            return "is not UTF-8 text";
        case DictionaryError::noEntry:
            return "holds no dictionary entry";
    }
    return "cannot be used";
}

}  // namespace velmora
