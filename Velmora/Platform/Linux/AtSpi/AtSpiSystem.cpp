// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiSystem.h"

#include <unistd.h>

#include <cmath>

#include "Velmora/Platform/Linux/AtSpi/AtSpiElement.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiSearch.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiWindowElement.h"

namespace velmora {

namespace {

using FoundElement = std::optional<AtSpiElementState>;

Rect visiblePart(const WindowInfo& window) {
    const Rect& client = window.nativeClient;
    const Rect& shadow = window.nativeShadow;
    return {client.x + shadow.x, client.y + shadow.y, client.width - shadow.x - shadow.width,
            client.height - shadow.y - shadow.height};
}

}  // namespace

AtSpiSystem::AtSpiSystem(std::shared_ptr<AtSpiService> service, WindowLocator& locator,
                         const ScreenGeometrySource& geometry, AtSpiSelectionSource selections)
    : service_(std::move(service)),
      locator_(locator),
      geometry_(geometry),
      selections_(selections ? std::make_shared<const AtSpiSelectionSource>(std::move(selections))
                             : nullptr) {}

AtSpiSystem::~AtSpiSystem() = default;

AccessibilityElement::Pointer AtSpiSystem::elementAtPosition(Point point) {
    budget_ = std::make_shared<AtSpiBudget>();
    if (!service_->grant().isGiven() || !std::isfinite(point.x) || !std::isfinite(point.y)) {
        return nullptr;
    }
    const ScreenGeometry geometry = geometry_.current();
    const auto window = locator_.topmostWindowAt(geometry.nativeFromCapture(point));
    if (!window || window->processId == getpid()) {
        return nullptr;
    }
    FoundElement state = service_->ask<FoundElement>(
        *budget_,
        [window = *window, point, geometry](AtSpiService::Core& core, AtSpiDeadline& deadline) {
            return findAtSpiElementAt(core, window, point, geometry, deadline);
        });
    if (state) {
        return element(budget_, std::move(*state), *window);
    }
    return std::make_shared<AtSpiWindowElement>(window->id,
                                                geometry.captureFromNative(visiblePart(*window)));
}

AccessibilityElement::Pointer AtSpiSystem::element(const std::shared_ptr<AtSpiBudget>& budget,
                                                   AtSpiElementState state,
                                                   const WindowInfo& window) const {
    state.processId = window.processId;
    state.selections = selections_;
    return std::make_shared<AtSpiElement>(service_, budget, std::move(state));
}

AccessibilityElement::Pointer AtSpiSystem::focusedElement() {
    if (!service_->grant().isGiven()) {
        return nullptr;
    }
    const auto window = locator_.focusedWindow();
    if (!window || window->processId == getpid()) {
        return nullptr;
    }
    const auto whole = budget_ && budget_->isMine() ? budget_ : std::make_shared<AtSpiBudget>();
    const auto budget = std::make_shared<AtSpiBudget>(whole);
    FoundElement state = service_->ask<FoundElement>(
        *budget, [window = *window, geometry = geometry_.current()](AtSpiService::Core& core,
                                                                    AtSpiDeadline& deadline) {
            return findAtSpiFocusedElement(core, window, geometry, deadline);
        });
    return state ? element(budget, std::move(*state), *window) : nullptr;
}

std::optional<std::chrono::milliseconds> AtSpiSystem::timeLeft() const {
    return budget_ ? std::optional(budget_->left()) : std::nullopt;
}

}  // namespace velmora
