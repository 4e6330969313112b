// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "Velmora/Platform/AccessibilitySystem.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiElementState.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiSelectionSource.h"
#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Platform/WindowLocator.h"

namespace velmora {

class AtSpiBudget;
class AtSpiService;

/// Other programs' elements over the accessibility bus. One extraction begins with
/// `elementAtPosition`: its reads, all together, wait 300 ms at most for other programs, each call
/// 200 ms. A program that did not answer in time is left alone for some seconds, and its windows
/// stand for its elements meanwhile.
class AtSpiSystem : public AccessibilitySystem {
  public:
    /// The locator and the geometry must outlive this. Without a source of selections those that
    /// a program does not tell exactly are none.
    AtSpiSystem(std::shared_ptr<AtSpiService> service, WindowLocator& locator,
                const ScreenGeometrySource& geometry, AtSpiSelectionSource selections = {});
    ~AtSpiSystem() override;

    AccessibilityElement::Pointer elementAtPosition(Point point) override;
    AccessibilityElement::Pointer focusedElement() override;

    /// What the extraction that began last may still wait for other programs; below zero by what
    /// the last wait took too long. Nothing before the first.
    std::optional<std::chrono::milliseconds> timeLeft() const;

  private:
    AccessibilityElement::Pointer element(const std::shared_ptr<AtSpiBudget>& budget,
                                          AtSpiElementState state, const WindowInfo& window) const;

    std::shared_ptr<AtSpiService> service_;
    WindowLocator& locator_;
    const ScreenGeometrySource& geometry_;
    std::shared_ptr<const AtSpiSelectionSource> selections_;
    std::shared_ptr<AtSpiBudget> budget_;
};

}  // namespace velmora
