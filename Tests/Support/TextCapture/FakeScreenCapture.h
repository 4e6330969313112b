// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "Velmora/Platform/ScreenCapture.h"

namespace velmora {

/// Displays that show one colour. Each point is `scale` pixels.
class FakeScreenCapture final : public ScreenCapture {
  public:
    std::vector<Display> displays() override { return list; }

    std::optional<Image> capture(std::uint64_t displayId, const Rect& rect) override {
        captured.emplace_back(displayId, rect);
        if (fails && fails(rect)) {
            return std::nullopt;
        }
        const int width = static_cast<int>(rect.width * scale);
        const int height = static_cast<int>(rect.height * scale);
        return Image(
            width, height,
            std::vector<std::uint32_t>(
                static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0xFFFFFFFF));
    }

    std::vector<Display> list = {{1, {0, 0, 1600, 1000}}};
    double scale = 1;
    std::function<bool(const Rect&)> fails;
    std::vector<std::pair<std::uint64_t, Rect>> captured;
};

}  // namespace velmora
