// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/CursorEstimation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace velmora {

namespace {

constexpr double plausibleMargin = 6;

bool hasArea(const Rect& rect) {
    return rect.width > 0 && rect.height > 0;
}

/// The part of a line's rectangle over which its characters are spread.
struct TextBand {
    double left = 0;
    double usable = 1;

    TextBand(const Rect& bounds, std::optional<double> horizontalInset) {
        const double inset =
            horizontalInset ? *horizontalInset : std::clamp(bounds.width * 0.08, 8.0, 24.0);
        left = bounds.minX() + inset;
        usable = std::max(bounds.width - 2 * inset, 1.0);
    }
};

bool containsLineBreak(std::string_view text) {
    constexpr std::array<std::string_view, 7> lineBreaks = {
        "\n", "\v", "\f", "\r", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"};
    return std::any_of(lineBreaks.begin(), lineBreaks.end(), [&](std::string_view lineBreak) {
        return text.find(lineBreak) != std::string_view::npos;
    });
}

std::optional<long long> nearbyChineseOffset(const CharacterText& text, long long index) {
    const auto count = static_cast<long long>(text.count());
    for (const long long step : {-1, 1, -2, 2, -3, 3}) {
        const long long other = index + step;
        if (other >= 0 && other < count && isChinese(text[static_cast<std::size_t>(other)])) {
            return other;
        }
    }
    return std::nullopt;
}

}  // namespace

bool CursorEstimation::isDirectCharacterHit(const Rect& rect, Point point) {
    if (!hasArea(rect)) {
        return false;
    }
    const double dx = std::clamp(rect.width * 0.12, 2.0, 5.0);
    const double dy = std::clamp(rect.height * 0.1, 2.0, 6.0);
    return rect.grownBy(dx, dy).contains(point) &&
           std::abs(point.x - rect.midX()) <= rect.width / 2 + dx &&
           std::abs(point.y - rect.midY()) <= rect.height / 2 + dy;
}

bool CursorEstimation::isPlausibleCharacterBounds(const Rect& rect, Point point) {
    return hasArea(rect) && rect.width <= largestCharacter && rect.height <= largestCharacter &&
           rect.grownBy(plausibleMargin).contains(point) && isDirectCharacterHit(rect, point);
}

bool CursorEstimation::isPlausibleWordBounds(const Rect& rect, long long characterCount,
                                             Point point) {
    const double characters = static_cast<double>(std::max(characterCount, 1LL));
    return hasArea(rect) && rect.width <= characters * largestCharacter &&
           rect.height <= largestCharacter && rect.grownBy(plausibleMargin).contains(point);
}

std::optional<long long> CursorEstimation::estimatedCharacterOffset(
    const CharacterText& text, Point point, const std::optional<Rect>& bounds,
    std::optional<double> horizontalInset, bool allowNearbyChineseFallback) {
    if (!bounds || !(bounds->width > 0) || !bounds->contains(point) || text.empty()) {
        return std::nullopt;
    }
    constexpr double tolerance = 8;
    const TextBand band(*bounds, horizontalInset);
    if (!(point.x >= band.left - tolerance && point.x <= band.left + band.usable + tolerance)) {
        return std::nullopt;
    }
    const auto count = static_cast<long long>(text.count());
    const double fraction = std::clamp((point.x - band.left) / band.usable, 0.0, 0.999);
    const long long index =
        std::clamp(static_cast<long long>(fraction * static_cast<double>(count)), 0LL, count - 1);
    if (isChinese(text[static_cast<std::size_t>(index)])) {
        return index;
    }
    return allowNearbyChineseFallback ? nearbyChineseOffset(text, index) : std::nullopt;
}

std::optional<Rect> CursorEstimation::estimatedCharacterRect(
    const Rect& bounds, const CharacterText& text, long long offset,
    std::optional<double> horizontalInset) {
    const auto count = static_cast<long long>(text.count());
    if (offset < 0 || offset >= count || !hasArea(bounds)) {
        return std::nullopt;
    }
    const TextBand band(bounds, horizontalInset);
    const double cell = band.usable / static_cast<double>(count);
    return Rect{band.left + cell * static_cast<double>(offset), bounds.minY(), cell, bounds.height};
}

bool CursorEstimation::canEstimateWholeValueHit(const Rect& bounds, const CharacterText& text) {
    return !containsLineBreak(text.text()) && !(bounds.width > 420) && !(bounds.height > 90);
}

long long CursorEstimation::chineseCharacterCount(const CharacterText& text) {
    long long number = 0;
    for (std::size_t index = 0; index < text.count(); ++index) {
        if (isChinese(text[index])) {
            ++number;
        }
    }
    return number;
}

}  // namespace velmora
