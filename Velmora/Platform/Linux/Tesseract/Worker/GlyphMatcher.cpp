// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphMatcher.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <functional>

#include "Velmora/Platform/Recognition/CodePoint.h"

namespace velmora {

namespace {

constexpr std::size_t scanned = 64;    ///< Taken from the store by the cell as it was cut.
constexpr std::size_t compared = 8;    ///< Of these, at first, pixel by pixel.
constexpr float letterBehind = 0.01F;  ///< A letter of another script that is no candidate.
constexpr std::size_t mostLetters = 3;
constexpr double strangerSize = 24;  ///< At which what the store lacks is drawn.
constexpr float leastExact = 0.9F;   ///< Where none of them reaches that, more are compared.
constexpr float belowFit = 0.04F;    ///< The same, as compared with the line's other cells.
constexpr std::size_t mostSisters = 2;
constexpr float farBehind = 0.08F;  ///< A shape that is no candidate beside a better one.
/// After so much time of the processor, or on a busy machine by the clock, only what must be is
/// done.
constexpr std::chrono::milliseconds ownTime{120};
constexpr std::chrono::milliseconds clockTime{350};

/// That this program has had so far.
std::chrono::nanoseconds processorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
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
GlyphMatcher::Ink GlyphMatcher::prepare(Lane lane, const CellsToMatch& request,
                                        const CellToMatch& cell, const GlyphStore& store) {
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
            match.shape = strangerShape(lane, ink, character);
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
float GlyphMatcher::strangerShape(Lane lane, const Ink& ink, char32_t character) {
    float best = 0;
    for (std::size_t face = 0; face < drawings_.faces().size(); ++face) {
        if (const GrayImage* drawn = drawings_.drawing(
                lane, character, {face, strangerSize, GlyphRendering::unhinted})) {
            const auto form = GlyphFeatures::of(*drawn);
            for (const GlyphFeatures& features : ink.features) {
                best = form ? std::max(best, features.similarity(form->values())) : best;
            }
        }
    }
    return best;
}

void GlyphMatcher::share(std::size_t count,
                         const std::function<void(Lane lane, std::size_t at)>& work) {
    if (companion_ != nullptr) {
        companion_->share(count, work);
        return;
    }
    for (std::size_t at = 0; at < count; ++at) {
        work(Lane::own, at);
    }
}

/// An answer must not keep the program waiting, whatever was asked for.
bool GlyphMatcher::isHurried() const {
    return processorTime() - begunProcessor_ > ownTime ||
           std::chrono::steady_clock::now() - begun_ > clockTime;
}

/// The same character may have another form in the font's sister for another region, which lies in
/// the same file and is mixed with it where a program takes what the system prefers.
std::vector<GlyphStyle> GlyphMatcher::sistersOf(const GlyphStyle& style) const {
    std::vector<GlyphStyle> sisters;
    const std::vector<FontFace>& faces = drawings_.faces();
    for (std::size_t face = 0; style.face < faces.size() && face < faces.size(); ++face) {
        if (face != style.face && faces[face].path == faces[style.face].path &&
            sisters.size() < mostSisters) {
            sisters.push_back({face, style.size, style.rendering});
        }
    }
    return sisters;
}

float GlyphMatcher::exactOf(Lane lane, const Ink& cell, char32_t character,
                            const GlyphStyle& style) {
    const GrayImage* drawn = drawings_.drawing(lane, character, style);
    return drawn != nullptr ? cell.pixels->with(*drawn) : 0;
}

/// Compares the first matches and the given ones, where nothing fits in sister fonts too, and as
/// long as nothing fits the others. What has not been compared is left out.
void GlyphMatcher::compare(Lane lane, Ink& cell, const std::vector<char32_t>& candidates,
                           const LineFont& font) {
    const float wanted = std::max(leastExact, font.found.fit - belowFit);
    std::size_t characters = 0;
    std::vector<GlyphMatch> first;
    std::vector<GlyphMatch> others;
    for (const GlyphMatch& match : cell.matches) {
        const bool given =
            std::find(candidates.begin(), candidates.end(), match.character) != candidates.end();
        const bool isFirst = !isHan(match.character) || characters < compared || given;
        characters += isFirst && isHan(match.character) ? 1 : 0;
        (isFirst ? first : others).push_back(match);
    }
    float best = 0;
    const auto compareIn = [&](const GlyphStyle& style, GlyphMatch& match) {
        match.exact = std::max(match.exact, exactOf(lane, cell, match.character, style));
        best = std::max(best, match.exact);
    };
    for (GlyphMatch& match : first) {
        compareIn(font.found.style, match);
    }
    for (const GlyphStyle& sister : font.sisters) {
        if (best >= wanted || isHurried()) {
            break;
        }
        std::for_each(first.begin(), first.end(),
                      [&](GlyphMatch& match) { compareIn(sister, match); });
    }
    for (GlyphMatch& match : others) {
        if (best >= wanted || isHurried() || match.shape < cell.matches.front().shape - farBehind) {
            break;
        }
        compareIn(font.found.style, match);
        first.push_back(match);
    }
    std::stable_sort(first.begin(), first.end(), [](const GlyphMatch& a, const GlyphMatch& b) {
        return a.exact + a.shape > b.exact + b.shape;
    });
    first.resize(std::min(first.size(), CellsToMatch::mostMatches));
    cell.matches = std::move(first);
}

MatchedCells GlyphMatcher::match(const CellsToMatch& request, const GlyphStore& store) {
    begun_ = std::chrono::steady_clock::now();
    begunProcessor_ = processorTime();
    MatchedCells result;
    drawings_.tidy();
    std::vector<Ink> cells(request.cells.size());
    share(cells.size(), [&](Lane lane, std::size_t i) {
        cells[i] = prepare(lane, request, request.cells[i], store);
    });
    const FittingStyle found = request.style ? given(*request.style) : findStyle(cells, request.em);
    const LineFont font{found, sistersOf(found.style)};
    share(cells.size(), [&](Lane lane, std::size_t i) {
        compare(lane, cells[i], request.cells[i].candidates, font);
    });
    for (Ink& cell : cells) {
        result.cells.push_back(std::move(cell.matches));
    }
    result.fontFit = fontFitOf(result.cells);
    if (found.style.size > 0) {
        result.style = LineStyle{static_cast<std::uint32_t>(found.style.face),
                                 static_cast<std::uint32_t>(found.style.rendering),
                                 static_cast<float>(found.style.size), found.fit};
    }
    return result;
}

}  // namespace velmora
