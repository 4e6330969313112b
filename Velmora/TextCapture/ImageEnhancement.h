// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/Image.h"

namespace velmora {

/// Pictures made easier to read. Pure functions; any thread.
class ImageEnhancement {
  public:
    /// Pictures of more pixels are not made.
    static constexpr double largestPixelCount = 64.0 * 1024 * 1024;

    /// The picture enlarged, its sizes times the factor rounded to whole pixels (halves up), every
    /// channel resampled with a Lanczos window of three lobes; the picture itself for factors up
    /// to 1; nothing for an empty picture or one that would be too large.
    static std::optional<Image> upscaledImage(const Image& image, double factor);

    /// The picture in grey with raised contrast: (luma − 0.5) × 1.8 + 0.5, limited to 0…1, where
    /// luma = 0.2126 red + 0.7152 green + 0.0722 blue of the stored values (the weights of
    /// Recommendation ITU-R BT.709); opacity stays. Nothing for an empty picture.
    static std::optional<Image> grayscaleContrastImage(const Image& image);
};

}  // namespace velmora
