// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/RecordedScreenCapture.h"

#include <cmath>

namespace velmora {

namespace {

bool isSame(const Rect& a, const Rect& b) {
    constexpr double tolerance = 0.01;
    return std::abs(a.x - b.x) <= tolerance && std::abs(a.y - b.y) <= tolerance &&
           std::abs(a.width - b.width) <= tolerance && std::abs(a.height - b.height) <= tolerance;
}

bool holds(const Rect& outer, const Rect& inner) {
    return outer.minX() <= inner.minX() && outer.minY() <= inner.minY() &&
           outer.maxX() >= inner.maxX() && outer.maxY() >= inner.maxY();
}

std::optional<Image> cutOut(const Recording::Capture& capture, const Rect& rect) {
    const double scaleX = capture.image->width() / capture.rect.width;
    const double scaleY = capture.image->height() / capture.rect.height;
    Image image =
        capture.image->cropped(static_cast<int>(std::lround((rect.x - capture.rect.x) * scaleX)),
                               static_cast<int>(std::lround((rect.y - capture.rect.y) * scaleY)),
                               static_cast<int>(std::lround(rect.width * scaleX)),
                               static_cast<int>(std::lround(rect.height * scaleY)));
    return image.isEmpty() ? std::nullopt : std::optional(std::move(image));
}

}  // namespace

std::optional<Image> RecordedScreenCapture::capture(std::uint64_t displayId, const Rect& rect) {
    for (const auto& capture : recording_->captures) {
        if (capture.display == displayId && isSame(capture.rect, rect)) {
            return capture.image;
        }
    }
    for (const auto& capture : recording_->captures) {
        if (capture.display == displayId && capture.image && !capture.rect.isEmpty() &&
            holds(capture.rect, rect)) {
            return cutOut(capture, rect);
        }
    }
    return std::nullopt;
}

}  // namespace velmora
