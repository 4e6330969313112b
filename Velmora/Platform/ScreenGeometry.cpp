// SPDX-License-Identifier: MIT
#include "Velmora/Platform/ScreenGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace velmora {
namespace {

constexpr double leastRatio = 0.25;
constexpr double greatestRatio = 8;

bool isUsable(const ScreenLayout& layout) {
    return layout.nativeFrame.isFinite() && !layout.nativeFrame.isEmpty() &&
           std::isfinite(layout.ratio) && layout.ratio > 0;
}

std::vector<ScreenLayout> usable(std::vector<ScreenLayout> layouts) {
    std::erase_if(layouts, [](const ScreenLayout& layout) { return !isUsable(layout); });
    for (ScreenLayout& layout : layouts) {
        const Rect area = layout.nativeWorkArea.isFinite()
                              ? layout.nativeWorkArea.intersection(layout.nativeFrame)
                              : Rect{};
        layout.nativeWorkArea = area.isEmpty() ? layout.nativeFrame : area;
    }
    return layouts;
}

Point centre(const Rect& rect) {
    return {rect.midX(), rect.midY()};
}

Rect logicalRect(const Rect& native, const ScreenLayout& screen) {
    const Rect& frame = screen.nativeFrame;
    return {frame.x + (native.x - frame.x) / screen.ratio,
            frame.y + (native.y - frame.y) / screen.ratio, native.width / screen.ratio,
            native.height / screen.ratio};
}

Rect nativeRect(const Rect& logical, const ScreenLayout& screen) {
    const Rect& frame = screen.nativeFrame;
    return {frame.x + (logical.x - frame.x) * screen.ratio,
            frame.y + (logical.y - frame.y) * screen.ratio, logical.width * screen.ratio,
            logical.height * screen.ratio};
}

Rect logicalFrame(const ScreenLayout& screen) {
    return logicalRect(screen.nativeFrame, screen);
}

Rect moved(const Rect& rect, double dx, double dy) {
    return {rect.x + dx, rect.y + dy, rect.width, rect.height};
}

double squaredDistance(Point point, const Rect& rect) {
    const double dx = std::max({rect.minX() - point.x, 0.0, point.x - rect.maxX()});
    const double dy = std::max({rect.minY() - point.y, 0.0, point.y - rect.maxY()});
    return dx * dx + dy * dy;
}

template <typename FrameOf>
const ScreenLayout* screenOf(const std::vector<ScreenLayout>& screens, Point point,
                             FrameOf frameOf) {
    const ScreenLayout* nearest = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (const ScreenLayout& screen : screens) {
        const Rect frame = frameOf(screen);
        if (frame.contains(point)) {
            return &screen;
        }
        const double distance = squaredDistance(point, frame);
        if (nearest == nullptr || distance < least) {
            nearest = &screen;
            least = distance;
        }
    }
    return nearest;
}

Point origin(const Rect& rect) {
    return {rect.x, rect.y};
}

Rect pointRect(Point point) {
    return {point.x, point.y, 0, 0};
}

}  // namespace

ScreenGeometry::ScreenGeometry() : ScreenGeometry(std::vector<ScreenLayout>{}) {}

ScreenGeometry::ScreenGeometry(std::vector<ScreenLayout> layouts)
    : layouts_(std::make_shared<const std::vector<ScreenLayout>>(usable(std::move(layouts)))) {}

Point ScreenGeometry::primaryCorner() const {
    return isEmpty() ? Point{} : origin(layouts_->front().nativeFrame);
}

double ScreenGeometry::desktopHeight() const {
    return isEmpty() ? 0 : logicalFrame(layouts_->front()).height;
}

const ScreenLayout* ScreenGeometry::screenOfNative(Point native) const {
    return screenOf(*layouts_, native,
                    [](const ScreenLayout& screen) { return screen.nativeFrame; });
}

const ScreenLayout* ScreenGeometry::screenOfLogical(Point logical) const {
    return screenOf(*layouts_, logical, logicalFrame);
}

std::vector<Screen> ScreenGeometry::screens() const {
    std::vector<Screen> result;
    for (const ScreenLayout& layout : *layouts_) {
        result.push_back({screenFromLogical(logicalFrame(layout)),
                          screenFromLogical(logicalRect(layout.nativeWorkArea, layout))});
    }
    return result;
}

std::vector<Display> ScreenGeometry::displays() const {
    const Point corner = primaryCorner();
    std::vector<Display> result;
    for (const ScreenLayout& layout : *layouts_) {
        result.push_back({layout.id, moved(logicalFrame(layout), -corner.x, -corner.y)});
    }
    return result;
}

const ScreenLayout* ScreenGeometry::layout(std::uint64_t id) const {
    const auto found = std::find_if(layouts_->begin(), layouts_->end(),
                                    [id](const ScreenLayout& screen) { return screen.id == id; });
    return found == layouts_->end() ? nullptr : &*found;
}

Rect ScreenGeometry::nativePixelsOfDisplay(std::uint64_t id, const Rect& capture) const {
    const ScreenLayout* const display = layout(id);
    if (display == nullptr || !capture.isFinite() || capture.isEmpty()) {
        return {};
    }
    const Point corner = primaryCorner();
    const Rect native = nativeRect(moved(capture, corner.x, corner.y), *display);
    const double left = std::round(native.minX());
    const double top = std::round(native.minY());
    const Rect whole = {left, top, std::round(native.maxX()) - left,
                        std::round(native.maxY()) - top};
    return whole.intersection(display->nativeFrame);
}

double ScreenGeometry::ratioAtNative(Point native) const {
    const ScreenLayout* const screen = screenOfNative(native);
    return screen == nullptr ? 1 : screen->ratio;
}

Rect ScreenGeometry::logicalFromNative(const Rect& native) const {
    const ScreenLayout* const screen = screenOfNative(centre(native));
    return screen == nullptr ? native : logicalRect(native, *screen);
}

Rect ScreenGeometry::nativeFromLogical(const Rect& logical) const {
    const ScreenLayout* const screen = screenOfLogical(centre(logical));
    return screen == nullptr ? logical : nativeRect(logical, *screen);
}

Rect ScreenGeometry::captureFromNative(const Rect& native) const {
    const Point corner = primaryCorner();
    return moved(logicalFromNative(native), -corner.x, -corner.y);
}

Rect ScreenGeometry::nativeFromCapture(const Rect& capture) const {
    const Point corner = primaryCorner();
    return nativeFromLogical(moved(capture, corner.x, corner.y));
}

// Turning upside down is its own inverse: the two directions below are one formula.
Rect ScreenGeometry::screenFromCapture(const Rect& capture) const {
    return {capture.x, desktopHeight() - capture.maxY(), capture.width, capture.height};
}

Rect ScreenGeometry::captureFromScreen(const Rect& screen) const {
    return screenFromCapture(screen);
}

Rect ScreenGeometry::screenFromNative(const Rect& native) const {
    return screenFromCapture(captureFromNative(native));
}

Rect ScreenGeometry::nativeFromScreen(const Rect& screen) const {
    return nativeFromCapture(captureFromScreen(screen));
}

Rect ScreenGeometry::logicalFromScreen(const Rect& screen) const {
    const Point corner = primaryCorner();
    return moved(captureFromScreen(screen), corner.x, corner.y);
}

Rect ScreenGeometry::screenFromLogical(const Rect& logical) const {
    const Point corner = primaryCorner();
    return screenFromCapture(moved(logical, -corner.x, -corner.y));
}

Point ScreenGeometry::logicalFromNative(Point native) const {
    return origin(logicalFromNative(pointRect(native)));
}

Point ScreenGeometry::nativeFromLogical(Point logical) const {
    return origin(nativeFromLogical(pointRect(logical)));
}

Point ScreenGeometry::captureFromNative(Point native) const {
    return origin(captureFromNative(pointRect(native)));
}

Point ScreenGeometry::nativeFromCapture(Point capture) const {
    return origin(nativeFromCapture(pointRect(capture)));
}

Point ScreenGeometry::screenFromNative(Point native) const {
    return origin(screenFromNative(pointRect(native)));
}

Point ScreenGeometry::nativeFromScreen(Point screen) const {
    return origin(nativeFromScreen(pointRect(screen)));
}

Point ScreenGeometry::screenFromCapture(Point capture) const {
    return origin(screenFromCapture(pointRect(capture)));
}

Point ScreenGeometry::captureFromScreen(Point screen) const {
    return origin(captureFromScreen(pointRect(screen)));
}

Point ScreenGeometry::logicalFromScreen(Point screen) const {
    return origin(logicalFromScreen(pointRect(screen)));
}

Point ScreenGeometry::screenFromLogical(Point logical) const {
    return origin(screenFromLogical(pointRect(logical)));
}

double ScreenGeometry::targetRatio(double nativeWidth, double reportedWidth) {
    if (!std::isfinite(nativeWidth) || !std::isfinite(reportedWidth) || nativeWidth < 1 ||
        reportedWidth < 1) {
        return 1;
    }
    const double ratio = nativeWidth / reportedWidth;
    if (ratio < leastRatio || ratio > greatestRatio) {
        return 1;
    }
    // A program that rounds its width is off by up to one unit; one that rounds down its
    // window's pixels is off by up to one of these.
    const double step = std::round(ratio * 4) / 4;
    const bool explains = std::abs(nativeWidth - reportedWidth * step) <= std::max(step, 1.0);
    return step >= leastRatio && explains ? step : ratio;
}

Rect ScreenGeometry::nativeFromTarget(const Rect& target, const Rect& targetWindow,
                                      const Rect& nativeWindow) {
    const double ratio = targetRatio(nativeWindow.width, targetWindow.width);
    return {nativeWindow.x + (target.x - targetWindow.x) * ratio,
            nativeWindow.y + (target.y - targetWindow.y) * ratio, target.width * ratio,
            target.height * ratio};
}

Point ScreenGeometry::nativeFromTarget(Point target, const Rect& targetWindow,
                                       const Rect& nativeWindow) {
    return origin(nativeFromTarget(pointRect(target), targetWindow, nativeWindow));
}

Point ScreenGeometry::targetFromNative(Point native, const Rect& targetWindow,
                                       const Rect& nativeWindow) {
    const double ratio = targetRatio(nativeWindow.width, targetWindow.width);
    return {targetWindow.x + (native.x - nativeWindow.x) / ratio,
            targetWindow.y + (native.y - nativeWindow.y) / ratio};
}

}  // namespace velmora
