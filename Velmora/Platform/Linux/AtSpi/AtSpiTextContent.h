// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

#include "Velmora/Platform/Linux/AtSpi/AtSpiToolkit.h"

namespace velmora {

/// A stretch of an element's text with the correspondence between the toolkit's own offsets and
/// UTF-16 positions. Where the stretch is not the whole text, positions count on from the toolkit's
/// offset of its beginning. An immutable value.
class AtSpiTextContent {
  public:
    /// `raw` is what the toolkit answered for its offsets from `start`.
    AtSpiTextContent(const QString& raw, int start, AtSpiToolkit toolkit);

    const QString& text() const { return text_; }
    std::int64_t start() const { return start_; }  ///< The position of the first unit.
    std::int64_t end() const { return start_ + text_.size(); }

    /// The toolkit's offset of the character at this position, which may be the end; nothing
    /// outside. Inside a surrogate pair, that of the pair.
    std::optional<int> offsetOf(std::int64_t position) const;

    /// The position of the toolkit's offset; nothing outside.
    std::optional<std::int64_t> positionOf(int offset) const;

    /// Whether the toolkit's offset is that of the second unit of a pair.
    bool isSecondHalf(int offset) const;

    /// How many units the character at this position has, 1 or 2.
    int unitsAt(std::int64_t position) const;

    /// The units from..<to, as far as they are in the stretch; surrogates that lost their other
    /// half become U+FFFD.
    QString part(std::int64_t from, std::int64_t to) const;

  private:
    bool startsPair(qsizetype index) const;

    QString text_;
    std::vector<int> offsets_;  ///< Of each unit, and of the end.
    std::int64_t start_ = 0;
};

}  // namespace velmora
