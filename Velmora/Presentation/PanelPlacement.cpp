// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/PanelPlacement.h"

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

constexpr double gapUnderAnchor = 10;
constexpr double gapOverAnchor = 10;
constexpr double bubbleGapOverAnchor = 16;
constexpr double edgeMargin = 12;

double measuredLength(double fitting, double fallback, double minimum, double maximum) {
    const double length = std::isfinite(fitting) && fitting > 0 ? fitting : fallback;
    return std::min(std::max(length, minimum), maximum);
}

Rect workArea(const Rect& anchor, const std::vector<Screen>& screens) {
    for (const Screen& screen : screens) {
        if (screen.frame.intersects(anchor)) {
            return screen.visibleFrame;
        }
    }
    return screens.empty() ? Rect{} : screens.front().visibleFrame;
}

}  // namespace

Size measuredSize(Size fitting, Size fallback, Size minimum, Size maximum) {
    return {measuredLength(fitting.width, fallback.width, minimum.width, maximum.width),
            measuredLength(fitting.height, fallback.height, minimum.height, maximum.height)};
}

Point origin(Size size, const Rect& anchor, Placement placement,
             const std::vector<Screen>& screens) {
    const Rect area = workArea(anchor, screens);
    const double lowY = anchor.minY() - size.height - gapUnderAnchor;

    double y = lowY;
    if (placement == Placement::below) {
        if (!(area.minY() < lowY)) {
            y = std::min(area.maxY() - size.height - edgeMargin, anchor.maxY() + gapOverAnchor);
        }
    } else {
        y = anchor.maxY() + bubbleGapOverAnchor;
        if (!(y + size.height < area.maxY())) {
            y = std::max(area.minY() + edgeMargin, lowY);
        }
    }
    const double centred = anchor.midX() - size.width / 2;
    const double x = std::max(area.minX() + edgeMargin,
                              std::min(area.maxX() - size.width - edgeMargin, centred));
    return {x, y};
}

}  // namespace velmora
