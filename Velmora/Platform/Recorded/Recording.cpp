// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/Recording.h"

namespace velmora {

Recording::Picture Recording::Picture::of(const Image& image) {
    // FNV-1a, a pixel at a time.
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (int y = 0; y < image.height(); ++y) {
        const std::uint32_t* row = image.row(y);
        for (int x = 0; x < image.width(); ++x) {
            hash = (hash ^ row[x]) * 0x100000001B3U;
        }
    }
    return {image.width(), image.height(), hash};
}

}  // namespace velmora
