// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A text of groups of keys and values. Lines that are not touched keep every byte: comments,
/// unknown keys, even what makes no sense. Where a key stands twice, the last one counts. A plain
/// value.
class IniDocument {
  public:
    IniDocument() = default;
    explicit IniDocument(std::string_view text);

    /// Nothing where the group has no such key.
    std::optional<std::string> value(std::string_view group, std::string_view key) const;

    /// Replaces the value, or adds key and group at the end of what is there.
    void setValue(std::string_view group, std::string_view key, std::string_view value);

    std::string text() const;

  private:
    struct Place {
        std::optional<std::size_t> line;      ///< Of the key.
        std::optional<std::size_t> groupEnd;  ///< Where a further key of the group would stand.
    };
    Place find(std::string_view group, std::string_view key) const;

    std::vector<std::string> lines_;
};

}  // namespace velmora
