// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/StageScreens.h"

#include <sstream>

namespace velmora::test {

namespace {

constexpr double millimetresOfPixel = 0.25;

/// The way in which xrandr wants it: WIDTH/MMxHEIGHT/MM+X+Y.
std::string description(const Rect& pixels) {
    std::ostringstream text;
    text << pixels.width << '/' << pixels.width * millimetresOfPixel << 'x' << pixels.height << '/'
         << pixels.height * millimetresOfPixel << '+' << pixels.x << '+' << pixels.y;
    return text.str();
}

}  // namespace

StageScreens::StageScreens(Size display, std::vector<Monitor> monitors)
    : monitors_(std::move(monitors)), isDivided_(!monitors_.empty()) {
    if (!isDivided_) {
        monitors_.push_back({"", {0, 0, display.width, display.height}, 1});
    }
}

void StageScreens::divide(VirtualDesktop& desktop) const {
    if (!isDivided_) {
        return;
    }
    for (const Monitor& monitor : monitors_) {
        const bool isPrimary = &monitor == &monitors_.front();
        // The display's one output can belong to one of them only.
        desktop.run({"xrandr", "--setmonitor", (isPrimary ? "*" : "") + monitor.name,
                     description(monitor.pixels), isPrimary ? "screen" : "none"});
    }
}

ChildProcess::Environment StageScreens::environment() const {
    std::ostringstream factors;
    for (const Monitor& monitor : monitors_) {
        if (monitor.scale != 1) {
            factors << (factors.tellp() > 0 ? ";" : "") << monitor.name << '=' << monitor.scale;
        }
    }
    return factors.str().empty()
               ? ChildProcess::Environment()
               : ChildProcess::Environment{{"QT_SCREEN_SCALE_FACTORS", factors.str()}};
}

const StageScreens::Monitor& StageScreens::monitorAt(Point pixel) const {
    for (const Monitor& monitor : monitors_) {
        if (monitor.pixels.contains(pixel)) {
            return monitor;
        }
    }
    return monitors_.front();
}

Point StageScreens::cornerInPoints(const Monitor& monitor) const {
    // Corners keep the distance in points that they have in pixels, whatever the scales.
    const Monitor& primary = monitors_.front();
    return {monitor.pixels.x - primary.pixels.x,
            primary.pixels.height / primary.scale - (monitor.pixels.y - primary.pixels.y)};
}

Point StageScreens::upperLeft(const Monitor& monitor, const Rect& points) const {
    const Point corner = cornerInPoints(monitor);
    return {monitor.pixels.x + (points.minX() - corner.x) * monitor.scale,
            monitor.pixels.y + (corner.y - points.maxY()) * monitor.scale};
}

Rect StageScreens::pixels(const Rect& points) const {
    for (const Monitor& monitor : monitors_) {
        const Point corner = upperLeft(monitor, points);
        const Rect result{corner.x, corner.y, points.width * monitor.scale,
                          points.height * monitor.scale};
        if (monitor.pixels.contains({result.midX(), result.midY()})) {
            return result;
        }
    }
    const Monitor& primary = monitors_.front();
    const Point corner = upperLeft(primary, points);
    return {corner.x, corner.y, points.width * primary.scale, points.height * primary.scale};
}

Point StageScreens::points(Point pixel) const {
    const Monitor& monitor = monitorAt(pixel);
    const Point corner = cornerInPoints(monitor);
    return {corner.x + (pixel.x - monitor.pixels.x) / monitor.scale,
            corner.y - (pixel.y - monitor.pixels.y) / monitor.scale};
}

}  // namespace velmora::test
