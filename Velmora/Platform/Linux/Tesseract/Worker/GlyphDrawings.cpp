// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphDrawings.h"

#include <cmath>
#include <utility>

namespace velmora {

const GrayImage* GlyphDrawings::drawing(Lane lane, char32_t character, const GlyphStyle& style) {
    const auto place = static_cast<std::uint64_t>(std::lround(style.size * 64)) * 1024 +
                       style.face * 4 + static_cast<std::uint64_t>(style.rendering);
    const Key key{character, place};
    {
        const std::lock_guard lock(mutex_);
        if (const auto known = drawings_.find(key); known != drawings_.end()) {
            return known->second ? &*known->second : nullptr;
        }
    }
    GlyphFonts& fonts = lane == Lane::own ? fonts_ : companionsFonts_;
    std::optional<GrayImage> drawn = fonts.draw(character, style);
    const std::lock_guard lock(mutex_);
    // Where the other has drawn it meanwhile, that one stays.
    const auto known = drawings_.emplace(key, std::move(drawn)).first;
    return known->second ? &*known->second : nullptr;
}

void GlyphDrawings::rest() {
    tidy();
    companionsFonts_.close();
}

void GlyphDrawings::tidy() {
    const std::lock_guard lock(mutex_);
    if (drawings_.size() >= mostDrawings) {
        drawings_.clear();
    }
}

}  // namespace velmora
