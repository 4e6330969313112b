// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/Recognition/GrayImage.h"

namespace velmora {

/// The ways in which programs let the font library draw.
enum class GlyphRendering {
    hinted = 0,    ///< Slight hinting, or the font's own bitmaps where it has them for a size.
    unhinted = 1,  ///< The outlines as they are.
    subpixel = 2,  ///< Slight hinting with three times the columns, as brightness.
};

/// A font, a size in pixels and a way of drawing.
struct GlyphStyle {
    std::size_t face = 0;
    double size = 0;
    GlyphRendering rendering = GlyphRendering::hinted;

    bool operator==(const GlyphStyle&) const = default;
};

/// A font file and the place of the font in it.
struct FontFace {
    std::string path;
    int index = 0;
    long long modified = 0;  ///< Seconds since 1970.
    bool bold = false;
    bool bitmaps = false;  ///< Its outlines are another one's; it is there for its bitmaps.
};

/// The system's fonts for Chinese. Opens a font when it is first drawn with and keeps the last few
/// open. For one thread.
class GlyphFonts {
  public:
    static constexpr std::size_t mostFaces = 13;

    /// Upright fonts with simplified or traditional characters: those that the system prefers
    /// first, then other regular ones, one with bitmaps of its own, then bold ones; no fixed-width
    /// doubles.
    static std::vector<FontFace> installed();

    explicit GlyphFonts(std::vector<FontFace> faces);
    ~GlyphFonts();
    GlyphFonts(const GlyphFonts&) = delete;
    GlyphFonts& operator=(const GlyphFonts&) = delete;

    const std::vector<FontFace>& faces() const;

    /// The ink of a character, black on white without anything around it; nothing where the font
    /// lacks it or the character has no ink.
    std::optional<GrayImage> draw(char32_t character, const GlyphStyle& style);

    /// Closes the fonts until they are drawn with again.
    void close();

  private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace velmora
