// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "Velmora/Platform/Linux/Tesseract/Worker/Companion.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphDrawings.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphFonts.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphStore.h"
#include "Velmora/Platform/Recognition/GlyphMatch.h"
#include "Velmora/Platform/Recognition/InkCorrelation.h"

namespace velmora {

/// Says which characters the ink of cells is like: first by the directions of strokes over all
/// characters of the store, then pixel by pixel with the few best, drawn in the font and size that
/// the line seems to be set in. Remembers the styles that fitted last. Shares the work with a
/// companion where there is one; the answers are the same. To be called from one thread.
class GlyphMatcher {
  public:
    /// Without a companion everything is done by who calls.
    explicit GlyphMatcher(GlyphFonts& fonts, Companion* companion = nullptr)
        : companion_(companion), drawings_(fonts) {}

    MatchedCells match(const CellsToMatch& request, const GlyphStore& store);

    /// Gives back what is soon had again.
    void rest() { drawings_.rest(); }

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
    /// What a line is set in.
    struct LineFont {
        FittingStyle found;
        std::vector<GlyphStyle> sisters;
    };
    /// A style that fitted, and what searches for a better one came to.
    struct KnownStyle {
        GlyphStyle style;
        int searches = 0;    ///< That found none.
        float leastFit = 1;  ///< At these.
        bool isBest(float fit) const;
    };

    static constexpr std::size_t mostStyles = 6;

    using Lane = Companion::Lane;

    void share(std::size_t count, const std::function<void(Lane lane, std::size_t at)>& work);

    Ink prepare(Lane lane, const CellsToMatch& request, const CellToMatch& cell,
                const GlyphStore& store);
    static FittingStyle given(const LineStyle& style);
    FittingStyle findStyle(const std::vector<Ink>& cells, double em);
    void remember(const FittingStyle& style, bool isSearched);
    FittingStyle searchBitmaps(Lane lane, const std::vector<const Ink*>& probes,
                               const GlyphStyle& about);
    FittingStyle searchSizes(Lane lane, const std::vector<const Ink*>& probes,
                             const FittingStyle& about);
    FittingStyle searchStyles(const std::vector<const Ink*>& probes, double em);
    float fitOf(Lane lane, const std::vector<const Ink*>& probes, const GlyphStyle& style,
                std::size_t candidates);
    std::vector<GlyphStyle> sistersOf(const GlyphStyle& style) const;
    float exactOf(Lane lane, const Ink& cell, char32_t character, const GlyphStyle& style);
    void compare(Lane lane, Ink& cell, const std::vector<char32_t>& candidates,
                 const LineFont& font);
    float strangerShape(Lane lane, const Ink& ink, char32_t character);

    bool isHurried() const;

    Companion* companion_;
    GlyphDrawings drawings_;
    std::chrono::steady_clock::time_point begun_{};  ///< Of the current request.
    std::chrono::nanoseconds begunProcessor_{};
    std::vector<KnownStyle> styles_;  ///< That fitted, the last used first.
};

}  // namespace velmora
