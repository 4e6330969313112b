// SPDX-License-Identifier: MIT
// How the matcher finds the font, size and rendering that a line is set in.
#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphMatcher.h"

namespace velmora {

namespace {

constexpr std::size_t mostProbes = 3;   ///< Cells that a style is found by.
constexpr float sureStyle = 0.93F;      ///< A remembered style that needs no search.
constexpr float settledStyle = 0.975F;  ///< A search goes no further.
constexpr float rememberedStyle = 0.75F;
constexpr int enoughSearches = 2;  ///< That found the same style, which is then taken to be it.
constexpr float aboutAsGood = 0.01F;
constexpr double greatestBitmap = 18;  ///< Pixels: larger ones are drawn from outlines.

}  // namespace

/// How well the best of some cells' first candidates fit in a style: the mean over all probes but
/// the worst third, whose cells may be cut badly.
float GlyphMatcher::fitOf(Lane lane, const std::vector<const Ink*>& probes, const GlyphStyle& style,
                          std::size_t candidates) {
    std::vector<float> fits;
    for (const Ink* probe : probes) {
        float best = 0;
        for (std::size_t i = 0; i < std::min(candidates, probe->matches.size()); ++i) {
            if (const GrayImage* drawn =
                    drawings_.drawing(lane, probe->matches[i].character, style)) {
                best = std::max(best, probe->pixels->with(*drawn));
            }
        }
        fits.push_back(best);
    }
    std::sort(fits.begin(), fits.end(), std::greater<>());
    fits.resize(fits.size() - fits.size() / 3);
    return fits.empty()
               ? 0
               : std::accumulate(fits.begin(), fits.end(), 0.0F) / static_cast<float>(fits.size());
}

/// The bitmaps of a font at one size are no smaller ones of another: each size is tried.
GlyphMatcher::FittingStyle GlyphMatcher::searchBitmaps(Lane lane,
                                                       const std::vector<const Ink*>& probes,
                                                       const GlyphStyle& about) {
    FittingStyle best{about, fitOf(lane, probes, about, 2)};
    for (const double change : {1.0, -1.0}) {
        if (about.size > greatestBitmap || best.fit >= settledStyle || isHurried()) {
            break;
        }
        GlyphStyle style = about;
        style.size = std::max(6.0, about.size + change);
        const float fit = fitOf(lane, probes, style, 2);
        best = fit > best.fit ? FittingStyle{style, fit} : best;
    }
    return best;
}

/// Tries sizes and renderings of one font.
GlyphMatcher::FittingStyle GlyphMatcher::searchSizes(Lane lane,
                                                     const std::vector<const Ink*>& probes,
                                                     const FittingStyle& about) {
    FittingStyle best = about;
    const auto attempt = [&](const GlyphStyle& style) {
        const float fit = fitOf(lane, probes, style, 2);
        best = fit > best.fit ? FittingStyle{style, fit} : best;
    };
    for (const double change : {-1.0, 1.0, -0.5, 0.5, -2.0, 2.0}) {
        if (best.fit >= settledStyle || isHurried()) {
            break;
        }
        GlyphStyle style = about.style;
        style.size = std::max(6.0, about.style.size + change);
        attempt(style);
    }
    for (const GlyphRendering rendering : {GlyphRendering::unhinted, GlyphRendering::subpixel}) {
        GlyphStyle style = best.style;
        style.rendering = rendering;
        attempt(style);
    }
    return best;
}

/// Tries the fonts at about the right size, then the best ones more closely.
GlyphMatcher::FittingStyle GlyphMatcher::searchStyles(const std::vector<const Ink*>& probes,
                                                      double em) {
    const auto isBetterFit = [](const FittingStyle& a, const FittingStyle& b) {
        return a.fit > b.fit;
    };
    const double rounded = std::max(6.0, std::round(em));
    std::vector<FittingStyle> faces(drawings_.faces().size());
    share(faces.size(), [&](Lane lane, std::size_t face) {
        const GlyphStyle style{face, rounded, GlyphRendering::hinted};
        if (face == 0 || !isHurried()) {
            faces[face] = drawings_.faces()[face].bitmaps
                              ? searchBitmaps(lane, probes, style)
                              : FittingStyle{style, fitOf(lane, probes, style, 2)};
        }
    });
    std::erase_if(faces, [](const FittingStyle& face) { return face.style.size <= 0; });
    std::stable_sort(faces.begin(), faces.end(), isBetterFit);
    faces.resize(std::min<std::size_t>(faces.size(), 3));
    share(faces.size(),
          [&](Lane lane, std::size_t at) { faces[at] = searchSizes(lane, probes, faces[at]); });
    const auto best = std::min_element(faces.begin(), faces.end(), isBetterFit);
    return best == faces.end() ? FittingStyle{} : *best;
}

/// The style that an earlier answer told; none where it is not one of ours.
GlyphMatcher::FittingStyle GlyphMatcher::given(const LineStyle& style) {
    const auto rendering = static_cast<GlyphRendering>(style.rendering);
    return rendering > GlyphRendering::subpixel
               ? FittingStyle{}
               : FittingStyle{{style.face, style.size, rendering}, style.fit};
}

GlyphMatcher::FittingStyle GlyphMatcher::findStyle(const std::vector<Ink>& cells, double em) {
    std::vector<const Ink*> probes;
    for (const Ink& cell : cells) {
        if (cell.pixels && !cell.matches.empty()) {
            probes.push_back(&cell);
        }
    }
    std::sort(probes.begin(), probes.end(), [](const Ink* a, const Ink* b) {
        return a->matches.front().shape > b->matches.front().shape;
    });
    probes.resize(std::min(probes.size(), mostProbes));
    FittingStyle best;
    bool isSure = false;
    for (const KnownStyle& known : styles_) {
        if (std::fabs(known.style.size - em) <= 2.5) {
            const float fit = fitOf(Lane::own, probes, known.style, 3);
            isSure = fit > best.fit ? fit >= sureStyle || known.isBest(fit) : isSure;
            best = fit > best.fit ? FittingStyle{known.style, fit} : best;
        }
    }
    if (!isSure) {
        const FittingStyle found = searchStyles(probes, em);
        best = found.fit > best.fit ? found : best;
    }
    if (best.fit >= rememberedStyle) {
        remember(best, !isSure && probes.size() == mostProbes && !isHurried());
    }
    return best;
}

/// Letters that no font draws just so, such as those with an outline, never reach what makes a
/// style sure; that others are not better either is known after some searches.
bool GlyphMatcher::KnownStyle::isBest(float fit) const {
    return searches >= enoughSearches && fit >= leastFit - aboutAsGood;
}

void GlyphMatcher::remember(const FittingStyle& style, bool isSearched) {
    KnownStyle known{style.style};
    const auto before = std::find_if(styles_.begin(), styles_.end(), [&](const KnownStyle& other) {
        return other.style == style.style;
    });
    if (before != styles_.end()) {
        known = *before;
        styles_.erase(before);
    }
    if (isSearched) {
        ++known.searches;
        known.leastFit = std::min(known.leastFit, style.fit);
    }
    styles_.insert(styles_.begin(), known);
    styles_.resize(std::min(styles_.size(), mostStyles));
}

}  // namespace velmora
