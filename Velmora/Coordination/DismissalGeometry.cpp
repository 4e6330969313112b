// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/DismissalGeometry.h"

#include <algorithm>

namespace velmora {

bool isInsideActiveLookupArea(Point point, const LookupPresentation& presentation,
                              const std::optional<Rect>& panelFrame) {
    const Rect word = presentation.anchor.grownBy(lookupDismissalSlop);
    if (word.contains(point)) {
        return true;
    }
    if (presentation.mode != LookupPresentationMode::dictionary || !panelFrame) {
        return false;
    }
    // The union holds the panel's own surroundings as well.
    return word.united(panelFrame->grownBy(lookupDismissalSlop)).contains(point);
}

bool isOnPanel(Point point, const Rect& panelFrame) {
    return panelFrame.grownBy(panelMargin).contains(point);
}

bool isMenuBarPoint(Point point, const std::vector<Screen>& screens) {
    const auto holder = std::find_if(screens.begin(), screens.end(), [&](const Screen& screen) {
        return screen.frame.contains(point);
    });
    if (holder != screens.end()) {
        return point.y >= holder->frame.maxY() - menuBarHeight;
    }
    // The topmost row of pixels lies on the edge itself, which belongs to no rectangle.
    return std::any_of(screens.begin(), screens.end(), [&](const Screen& screen) {
        return !screen.frame.isEmpty() && point.y == screen.frame.maxY() &&
               point.x >= screen.frame.minX() && point.x < screen.frame.maxX();
    });
}

}  // namespace velmora
