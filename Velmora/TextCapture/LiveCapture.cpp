// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/LiveCapture.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace velmora {

LiveCapture::LiveCapture(std::shared_ptr<ScreenCapture> screen) : screen_(std::move(screen)) {}

std::optional<Display> LiveCapture::displayContaining(Point point) const {
    const std::vector<Display> displays = screen_->displays();
    if (displays.empty()) {
        return std::nullopt;
    }
    const auto found = std::find_if(displays.begin(), displays.end(), [&](const Display& display) {
        return display.bounds.contains(point);
    });
    return found == displays.end() ? displays.front() : *found;
}

std::optional<std::uint64_t> LiveCapture::liveDisplayID(Point point) const {
    const auto display = displayContaining(point);
    return display ? std::optional(display->id) : std::nullopt;
}

std::optional<CapturedImage> LiveCapture::operator()(Point pointer, Size size) const {
    const auto display = displayContaining(pointer);
    if (!display) {
        return std::nullopt;
    }
    const Rect wanted{pointer.x - size.width / 2, pointer.y - size.height / 2, size.width,
                      size.height};
    const Rect rect = wanted.intersection(display->bounds).integral();
    if (!rect.isFinite() || rect.isEmpty()) {
        return std::nullopt;
    }
    std::optional<Image> image = screen_->capture(display->id, rect);
    if (!image || image->isEmpty()) {
        return std::nullopt;
    }
    return CapturedImage{std::move(*image), rect};
}

}  // namespace velmora
