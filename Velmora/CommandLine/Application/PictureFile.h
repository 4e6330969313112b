// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <string>

#include "Velmora/Platform/Image.h"

namespace velmora {

/// Pictures of more pixels are not read.
inline constexpr long long largestPicture = 64LL * 1024 * 1024;

/// A picture file as opaque pixels, transparent parts over white; throws `UsageError` where it
/// cannot be read or is too large.
QImage readPicture(const std::string& path);

/// The pixels of an opaque picture.
Image imageOf(const QImage& picture);

}  // namespace velmora
