// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "VelmoraCore/DictionaryError.h"
#include "VelmoraCore/MemoryBlock.h"

namespace velmora {

/// The whole text of a word list in memory of its own, valid UTF-8, without a byte order mark. A
/// copy of the file and no mapping of it, so that nothing happens to the program when somebody
/// truncates the file later.
class DictionaryText {
  public:
    /// A word list that is in memory already. Bytes that are not UTF-8 become U+FFFD.
    explicit DictionaryText(std::string_view text);

    /// Reads a regular file of up to `maxFileSize` bytes. Nothing where it cannot be read, where it
    /// is a folder, a pipe or a device, or where it is not UTF-8; `error` says which. Never waits
    /// for a writer.
    static std::optional<DictionaryText> read(const std::string& path, DictionaryError& error);

    std::string_view text() const {
        return {static_cast<const char*>(bytes_.data()) + start_, size_};
    }

    /// False where all lines end with LF or CR LF.
    bool hasRareLineEnds() const { return hasRareLineEnds_; }

    static constexpr std::size_t maxFileSize = std::size_t{256} << 20;

  private:
    DictionaryText() = default;
    void skipByteOrderMark();

    MemoryBlock bytes_;
    std::size_t start_ = 0;
    std::size_t size_ = 0;
    bool hasRareLineEnds_ = true;
};

}  // namespace velmora
