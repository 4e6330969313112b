// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiWindows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "Velmora/Platform/Linux/AtSpi/AtSpiConstants.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"

namespace velmora {

namespace {

constexpr int windowLimit = 64;
constexpr qsizetype titleLimit = 4096;
constexpr qsizetype callsPerWindow = 3;

// Native pixels by which a program may misjudge its own window: borders, a title bar.
constexpr double widthTolerance = 16;
constexpr double heightTolerance = 64;

/// How badly a window object fits a window, in pixels, and the rectangle that it fits.
struct Fit {
    double cost = std::numeric_limits<double>::infinity();
    Rect native;
};

/// Programs mean their window with its decoration, without it, or without its shadow.
std::array<Rect, 3> meanings(const WindowInfo& window) {
    const Rect& client = window.nativeClient;
    const Rect& shadow = window.nativeShadow;
    const Rect visible{client.x + shadow.x, client.y + shadow.y,
                       client.width - shadow.x - shadow.width,
                       client.height - shadow.y - shadow.height};
    return {client, window.nativeFrame, visible};
}

double unevenness(double ratio) {
    return std::abs(ratio * 4 - std::round(ratio * 4));
}

Fit fitTo(const Rect& native, const Rect& reported, bool placeCounts) {
    const double ratio = ScreenGeometry::targetRatio(native.width, reported.width);
    const double widthMiss = std::abs(native.width - reported.width * ratio);
    const double heightMiss = std::abs(native.height - reported.height * ratio);
    if (native.isEmpty() || widthMiss > widthTolerance || heightMiss > heightTolerance * ratio) {
        return {};
    }
    double cost = widthMiss + heightMiss + unevenness(ratio) * native.width;
    if (placeCounts && ratio == 1) {
        cost += std::abs(native.x - reported.x) + std::abs(native.y - reported.y);
    }
    return {cost, native};
}

/// GTK 4 counts from inside the border that it draws around its windows where there are no shadows,
/// and the border is the same on all sides.
Rect withoutBorder(const Rect& native, const Rect& reported) {
    const double ratio = std::max(std::round(native.width / reported.width * 4) / 4, 0.25);
    const double border = (native.width - reported.width * ratio) / 2;
    const double other = (native.height - reported.height * ratio) / 2;
    const bool isBorder = border > 0 && border <= widthTolerance && std::abs(border - other) < 2;
    return isBorder ? native.grownBy(-border, -other) : native;
}

Fit bestFit(const WindowInfo& window, const Rect& reported, AtSpiToolkit toolkit) {
    const std::array<Rect, 3> natives = meanings(window);
    if (toolkit == AtSpiToolkit::gtk4) {
        return fitTo(withoutBorder(natives[2], reported), reported, false);
    }
    Fit best;
    for (const Rect& native : natives) {
        const Fit fit = fitTo(native, reported, true);
        if (fit.cost < best.cost) {
            best = fit;
        }
    }
    return best;
}

/// Ranks windows of the same place: the title decides, then whether it is shown and active.
double doubts(const QString& name, const WindowInfo& window, std::uint64_t states) {
    const QString title = QString::fromStdString(window.title);
    double result = 0;
    if (!title.isEmpty() && name != title) {
        result += 2000;
    }
    if (!hasState(states, AtSpiState::showing) && !hasState(states, AtSpiState::visible)) {
        result += 1000;
    }
    if (!hasState(states, AtSpiState::active)) {
        result += 1;
    }
    return result;
}

}  // namespace

std::optional<AtSpiWindow> findAtSpiWindow(AtSpiBus& bus, const AtSpiApplication& application,
                                           const WindowInfo& window, const ScreenGeometry& geometry,
                                           AtSpiDeadline& deadline) {
    const AtSpiCoordinates coordinates = application.toolkit == AtSpiToolkit::gtk4
                                             ? AtSpiCoordinates::window
                                             : AtSpiCoordinates::screen;
    const QList<AtSpiObject> objects = atspireply::objects(
        bus.call(atspirequest::children(application.root), deadline), windowLimit);
    QList<AtSpiQuestion> requests;
    for (const AtSpiObject& object : objects) {
        requests << atspirequest::extents(object, coordinates) << atspirequest::name(object)
                 << atspirequest::states(object);
    }
    const QList<QDBusMessage> replies = bus.callAll(requests, deadline);
    std::optional<AtSpiWindow> best;
    double least = std::numeric_limits<double>::infinity();
    for (qsizetype i = 0; i < objects.size(); ++i) {
        const auto reported = atspireply::extents(replies.at(i * callsPerWindow));
        if (!reported || objects.at(i).isNull()) {
            continue;
        }
        const Fit fit = bestFit(window, *reported, application.toolkit);
        const QString name =
            atspireply::textProperty(replies.at(i * callsPerWindow + 1), titleLimit)
                .value_or(QString());
        const double cost =
            fit.cost + doubts(name, window, atspireply::states(replies.at(i * callsPerWindow + 2)));
        if (cost < least) {
            least = cost;
            best = AtSpiWindow{objects.at(i),
                               AtSpiSpace(geometry, coordinates, *reported, fit.native)};
        }
    }
    return best;
}

}  // namespace velmora
