// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphFonts.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphStore.h"
#include "Velmora/Platform/Recognition/GlyphMatch.h"
#include "Velmora/Platform/Recognition/InkCorrelation.h"

namespace velmora {

/// Says which characters the ink of cells is like: first by the directions of strokes over all
/// characters of the store, then pixel by pixel with the few best, drawn in the font and size that
/// the line seems to be set in. Remembers the styles that fitted last. For one thread.
class GlyphMatcher {
  public:
    explicit GlyphMatcher(GlyphFonts& fonts) : fonts_(fonts) {}

    MatchedCells match(const CellsToMatch& request, const GlyphStore& store);

  private:
    /// A cell on its way.
    struct Ink {
        std::vector<GlyphFeatures> features;  ///< As cut, then a little closer and wider.
        std::optional<InkCorrelation> pixels;
        std::vector<GlyphMatch> matches;
    };
    struct FittingStyle {
        GlyphStyle style;
        float fit = 0;
    };
    /// A style that fitted, and what searches for a better one came to.
    struct KnownStyle {
        GlyphStyle style;
        int searches = 0;    ///< That found none.
        float leastFit = 1;  ///< At these.
        bool isBest(float fit) const;
    };

    static constexpr std::size_t mostStyles = 6;
    static constexpr std::size_t mostDrawings = 1500;

    Ink prepare(const CellsToMatch& request, const CellToMatch& cell, const GlyphStore& store);
    FittingStyle findStyle(const std::vector<Ink>& cells, double em);
    void remember(const FittingStyle& style, bool isSearched);
    FittingStyle searchBitmaps(const std::vector<const Ink*>& probes, const GlyphStyle& about);
    FittingStyle searchStyles(const std::vector<const Ink*>& probes, double em);
    float fitOf(const std::vector<const Ink*>& probes, const GlyphStyle& style,
                std::size_t candidates);
    void compare(Ink& cell, const std::vector<char32_t>& candidates, const FittingStyle& found);
    float strangerShape(const Ink& ink, char32_t character);
    const GrayImage* drawing(char32_t character, const GlyphStyle& style);

    using DrawingKey = std::pair<char32_t, std::uint64_t>;

    bool isHurried() const;

    GlyphFonts& fonts_;
    std::chrono::steady_clock::time_point begun_{};  ///< Of the current request.
    std::chrono::nanoseconds begunProcessor_{};
    std::vector<KnownStyle> styles_;  ///< That fitted, the last used first.
    std::map<DrawingKey, std::optional<GrayImage>> drawings_;
};

}  // namespace velmora
