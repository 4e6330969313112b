// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/PortalAppearance.h"

#include <utility>

#include "Velmora/Platform/Linux/PortalAppearanceListener.h"

namespace velmora {

PortalAppearance::PortalAppearance() : listener_(std::make_unique<Listener>()) {}

PortalAppearance::~PortalAppearance() = default;

std::optional<DesktopAppearance::ColorScheme> PortalAppearance::colorScheme() const {
    return listener_->scheme();
}

void PortalAppearance::observe(Observer observer) {
    listener_->observe(std::move(observer));
}

}  // namespace velmora
