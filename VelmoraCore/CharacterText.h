// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A UTF-8 text split into characters, which here always means extended grapheme clusters (Unicode
/// Standard Annex #29), with the UTF-16 length before each of them. Bytes that are not UTF-8 are
/// replaced by U+FFFD first. Owns its text; a plain value.
class CharacterText {
  public:
    explicit CharacterText(std::string_view utf8);

    /// The number of characters.
    std::size_t count() const { return byteOffsets_.size() - 1; }
    bool empty() const { return count() == 0; }

    /// The whole text (valid UTF-8).
    const std::string& text() const { return text_; }

    /// The character at a position below `count()`.
    std::string_view operator[](std::size_t index) const { return slice(index, index + 1); }

    /// The characters from..<to; both are clamped to the text.
    std::string_view slice(std::size_t from, std::size_t to) const;

    /// The byte offset of a character position; `count()` gives the length in bytes.
    std::size_t byteOffset(std::size_t index) const { return byteOffsets_[index]; }

    /// The UTF-16 length of the characters before a position (clamped to the text).
    std::size_t utf16Offset(std::size_t index) const;

    /// The whole length in UTF-16 units.
    std::size_t utf16Length() const { return utf16Offset(count()); }

    /// The character that begins exactly at this UTF-16 offset (`count()` for the end of the
    /// text); nothing where the offset lies inside a character or past the end.
    std::optional<std::size_t> characterAtUtf16Offset(std::size_t offset) const;

  private:
    std::string text_;
    std::vector<std::uint32_t> byteOffsets_;
};

/// True when any scalar of the character lies in U+4E00–U+9FFF or U+3400–U+4DBF.
bool isChinese(std::string_view character);

/// The position of the first Chinese character, or nothing.
std::optional<std::size_t> firstChineseCharacterOffset(const CharacterText& text);

/// The UTF-16 length of a valid UTF-8 text.
std::size_t utf16Length(std::string_view utf8);

/// The UTF-16 units location..<location+length of a UTF-8 text, clamped to it; half of a surrogate
/// pair at either end becomes U+FFFD.
std::string utf16Substring(std::string_view utf8, std::size_t location, std::size_t length);

}  // namespace velmora
