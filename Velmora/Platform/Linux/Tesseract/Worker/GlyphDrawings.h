// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "Velmora/Platform/Linux/Tesseract/Worker/Companion.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphFonts.h"

namespace velmora {

/// Characters drawn in fonts, which are kept for the next time. Each of two threads has the fonts
/// open for itself; what they have drawn is for both.
class GlyphDrawings {
  public:
    using Lane = Companion::Lane;

    explicit GlyphDrawings(GlyphFonts& fonts) : fonts_(fonts), companionsFonts_(fonts.faces()) {}

    const std::vector<FontFace>& faces() const { return fonts_.faces(); }

    /// Null where the font lacks the character. Stays until `tidy` is called.
    const GrayImage* drawing(Lane lane, char32_t character, const GlyphStyle& style);

    /// Drops the drawings once they are many. Not while somebody draws.
    void tidy();

    /// The same, and keeps only one of the two threads' fonts open.
    void rest();

  private:
    using Key = std::pair<char32_t, std::uint64_t>;

    static constexpr std::size_t mostDrawings = 1500;

    GlyphFonts& fonts_;
    GlyphFonts companionsFonts_;
    std::mutex mutex_;
    std::map<Key, std::optional<GrayImage>> drawings_;
};

}  // namespace velmora
