// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphMatcher.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <functional>
#include <numeric>

#include "Velmora/Platform/Recognition/CodePoint.h"

namespace velmora {

namespace {

constexpr std::size_t scanned = 64;    ///< Taken from the store by the cell as it was cut.
constexpr std::size_t compared = 8;    ///< Of these, at first, pixel by pixel.
constexpr float letterBehind = 0.01F;  ///< A letter of another script that is no candidate.
constexpr std::size_t mostLetters = 3;
constexpr double strangerSize = 24;    ///< At which what the store lacks is drawn.
constexpr float leastExact = 0.9F;     ///< Where none of them reaches that, more are compared.
constexpr float belowFit = 0.04F;      ///< The same, as compared with the line's other cells.
constexpr std::size_t mostProbes = 3;  ///< Cells that a style is found by.
constexpr float sureStyle = 0.93F;     ///< A remembered style that needs no search.
constexpr float farBehind = 0.08F;     ///< A shape that is no candidate beside a better one.
/// After so much time of the processor, or on a busy machine by the clock, only what must be is
/// done.
constexpr std::chrono::milliseconds ownTime{120};
constexpr std::chrono::milliseconds clockTime{350};
constexpr float settledStyle = 0.975F;  ///< A search goes no further.
constexpr float rememberedStyle = 0.75F;
constexpr int enoughSearches = 2;  ///< That found the same style, which is then taken to be it.
constexpr float aboutAsGood = 0.01F;
constexpr double greatestBitmap = 18;  ///< Pixels: larger ones are drawn from outlines.

/// That this thread has had so far.
std::chrono::nanoseconds processorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

GrayImage cutOut(const GrayImage& picture, const PixelBox& box) {
    const PixelBox area = box.clippedTo(picture.width(), picture.height());
    GrayImage cut(area.width(), area.height());
    for (int y = area.top; y < area.bottom; ++y) {
        std::copy_n(picture.row(y) + area.left, area.width(), cut.row(y - area.top));
    }
    return cut;
}

/// How well the best character of each cell fits, but for the worse two thirds, which may be cut
/// badly or be no text.
float fontFitOf(const std::vector<std::vector<GlyphMatch>>& cells) {
    std::vector<float> fits;
    for (const std::vector<GlyphMatch>& matches : cells) {
        float best = 0;
        for (const GlyphMatch& match : matches) {
            best = std::max(best, match.exact);
        }
        fits.push_back(best);
    }
    std::sort(fits.begin(), fits.end(), std::greater<>());
    return fits.empty() ? 0 : fits[fits.size() / 3];
}

bool isBetter(const GlyphMatch& a, const GlyphMatch& b) {
    return a.shape > b.shape;
}

/// Letters of other scripts are compared only where they are about as alike as the best Chinese
/// character.
void keepLikelyLetters(std::vector<GlyphMatch>& matches) {
    float best = 0;
    for (const GlyphMatch& match : matches) {
        best = std::max(best, isHan(match.character) ? match.shape : 0);
    }
    std::erase_if(matches, [&](const GlyphMatch& match) {
        return !isHan(match.character) && match.shape < best - letterBehind;
    });
}

}  // namespace

/// The cell's edges may take a piece of a neighbour along or cut a stroke off, so it is also cut a
/// little closer and a little wider.
GlyphMatcher::Ink GlyphMatcher::prepare(const CellsToMatch& request, const CellToMatch& cell,
                                        const GlyphStore& store) {
    Ink ink;
    const int slack = std::max(1, cell.cell.width() / 14);
    for (const int change : {0, -slack, slack}) {
        const PixelBox box{cell.cell.left - change, 0, cell.cell.right + change,
                           request.strip.height()};
        if (const auto features = GlyphFeatures::of(cutOut(request.strip, box))) {
            ink.features.push_back(*features);
        }
    }
    if (ink.features.empty()) {
        return ink;
    }
    ink.pixels.emplace(cutOut(request.strip, PixelBox{cell.cell.left - 1, 0, cell.cell.right + 1,
                                                      request.strip.height()}));
    const auto add = [&](char32_t character) {
        GlyphMatch match{character, 0, 0};
        for (const GlyphFeatures& features : ink.features) {
            match.shape = std::max(match.shape, store.similarity(features, character));
        }
        if (match.shape <= 0) {
            match.shape = strangerShape(ink, character);
        }
        ink.matches.push_back(match);
    };
    for (const GlyphStore::Neighbour& neighbour :
         store.nearest(ink.features.front(), scanned, mostLetters)) {
        add(neighbour.character);
    }
    for (const char32_t candidate : cell.candidates) {
        if (std::none_of(ink.matches.begin(), ink.matches.end(),
                         [&](const GlyphMatch& match) { return match.character == candidate; })) {
            add(candidate);
        }
    }
    std::sort(ink.matches.begin(), ink.matches.end(), isBetter);
    keepLikelyLetters(ink.matches);
    return ink;
}

/// How alike the ink is to a character that is not in the store.
float GlyphMatcher::strangerShape(const Ink& ink, char32_t character) {
    float best = 0;
    for (std::size_t face = 0; face < fonts_.faces().size(); ++face) {
        if (const GrayImage* drawn =
                drawing(character, {face, strangerSize, GlyphRendering::unhinted})) {
            const auto form = GlyphFeatures::of(*drawn);
            for (const GlyphFeatures& features : ink.features) {
                best = form ? std::max(best, features.similarity(form->values())) : best;
            }
        }
    }
    return best;
}

const GrayImage* GlyphMatcher::drawing(char32_t character, const GlyphStyle& style) {
    const auto place = static_cast<std::uint64_t>(std::lround(style.size * 64)) * 256 +
                       style.face * 4 + static_cast<std::uint64_t>(style.rendering);
    const DrawingKey key{character, place};
    auto known = drawings_.find(key);
    if (known == drawings_.end()) {
        if (drawings_.size() >= mostDrawings) {
            drawings_.clear();
        }
        known = drawings_.emplace(key, fonts_.draw(character, style)).first;
    }
    return known->second ? &*known->second : nullptr;
}

/// How well the best of some cells' first candidates fit in a style: the mean over all probes but
/// the worst third, whose cells may be cut badly.
float GlyphMatcher::fitOf(const std::vector<const Ink*>& probes, const GlyphStyle& style,
                          std::size_t candidates) {
    std::vector<float> fits;
    for (const Ink* probe : probes) {
        float best = 0;
        for (std::size_t i = 0; i < std::min(candidates, probe->matches.size()); ++i) {
            if (const GrayImage* drawn = drawing(probe->matches[i].character, style)) {
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

/// An answer must not keep the program waiting, whatever was asked for.
bool GlyphMatcher::isHurried() const {
    return processorTime() - begunProcessor_ > ownTime ||
           std::chrono::steady_clock::now() - begun_ > clockTime;
}

/// The bitmaps of a font at one size are no smaller ones of another: each size is tried.
GlyphMatcher::FittingStyle GlyphMatcher::searchBitmaps(const std::vector<const Ink*>& probes,
                                                       const GlyphStyle& about) {
    FittingStyle best{about, fitOf(probes, about, 2)};
    for (const double change : {1.0, -1.0}) {
        if (about.size > greatestBitmap || best.fit >= settledStyle || isHurried()) {
            break;
        }
        GlyphStyle style = about;
        style.size = std::max(6.0, about.size + change);
        const float fit = fitOf(probes, style, 2);
        best = fit > best.fit ? FittingStyle{style, fit} : best;
    }
    return best;
}

/// Tries the fonts at about the right size, then the best ones more closely.
GlyphMatcher::FittingStyle GlyphMatcher::searchStyles(const std::vector<const Ink*>& probes,
                                                      double em) {
    std::vector<FittingStyle> faces;
    const double rounded = std::max(6.0, std::round(em));
    for (std::size_t face = 0; face < fonts_.faces().size(); ++face) {
        const GlyphStyle style{face, rounded, GlyphRendering::hinted};
        if (face == 0 || !isHurried()) {
            faces.push_back(fonts_.faces()[face].bitmaps
                                ? searchBitmaps(probes, style)
                                : FittingStyle{style, fitOf(probes, style, 2)});
        }
    }
    std::sort(faces.begin(), faces.end(),
              [](const FittingStyle& a, const FittingStyle& b) { return a.fit > b.fit; });
    faces.resize(std::min<std::size_t>(faces.size(), 3));
    FittingStyle best = faces.empty() ? FittingStyle{} : faces.front();
    for (const FittingStyle& candidate : faces) {
        FittingStyle own = candidate;
        for (const double change : {-1.0, 1.0, -0.5, 0.5, -2.0, 2.0}) {
            if (own.fit >= settledStyle || isHurried()) {
                break;
            }
            GlyphStyle style = candidate.style;
            style.size = std::max(6.0, rounded + change);
            const float fit = fitOf(probes, style, 2);
            own = fit > own.fit ? FittingStyle{style, fit} : own;
        }
        for (const GlyphRendering rendering :
             {GlyphRendering::unhinted, GlyphRendering::subpixel}) {
            GlyphStyle style = own.style;
            style.rendering = rendering;
            const float fit = fitOf(probes, style, 2);
            own = fit > own.fit ? FittingStyle{style, fit} : own;
        }
        best = own.fit > best.fit ? own : best;
    }
    return best;
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
            const float fit = fitOf(probes, known.style, 3);
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

/// Compares the first matches, the given ones, and as long as nothing fits the others too. What has
/// not been compared is left out.
void GlyphMatcher::compare(Ink& cell, const std::vector<char32_t>& candidates,
                           const FittingStyle& found) {
    const float wanted = std::max(leastExact, found.fit - belowFit);
    float best = 0;
    std::size_t characters = 0;
    std::vector<GlyphMatch> matches;
    for (GlyphMatch match : cell.matches) {
        const bool given =
            std::find(candidates.begin(), candidates.end(), match.character) != candidates.end();
        const bool hopeful =
            best < wanted && !isHurried() && match.shape >= cell.matches.front().shape - farBehind;
        if (isHan(match.character) && characters >= compared && !hopeful && !given) {
            continue;
        }
        characters += isHan(match.character) ? 1 : 0;
        const GrayImage* drawn = drawing(match.character, found.style);
        match.exact = drawn != nullptr ? cell.pixels->with(*drawn) : 0;
        best = std::max(best, match.exact);
        matches.push_back(match);
    }
    std::stable_sort(matches.begin(), matches.end(), [](const GlyphMatch& a, const GlyphMatch& b) {
        return a.exact + a.shape > b.exact + b.shape;
    });
    matches.resize(std::min(matches.size(), CellsToMatch::mostMatches));
    cell.matches = std::move(matches);
}

MatchedCells GlyphMatcher::match(const CellsToMatch& request, const GlyphStore& store) {
    begun_ = std::chrono::steady_clock::now();
    begunProcessor_ = processorTime();
    MatchedCells result;
    std::vector<Ink> cells;
    for (const CellToMatch& cell : request.cells) {
        cells.push_back(prepare(request, cell, store));
    }
    const FittingStyle found = findStyle(cells, request.em);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        compare(cells[i], request.cells[i].candidates, found);
        result.cells.push_back(std::move(cells[i].matches));
    }
    result.fontFit = fontFitOf(result.cells);
    return result;
}

}  // namespace velmora
