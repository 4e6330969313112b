// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/AccessibilityElement.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiElementState.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"

namespace velmora {

/// An element of a program on the accessibility bus.
class AtSpiElement : public AccessibilityElement {
  public:
    AtSpiElement(std::weak_ptr<AtSpiService> service, std::shared_ptr<AtSpiBudget> budget,
                 AtSpiElementState state);

    Pointer parent() const override;
    std::optional<std::string> selectedText() const override;
    std::optional<Utf16Range> selectedTextRange() const override;
    std::optional<std::string> value() const override;
    std::optional<std::string> title() const override;
    std::optional<Point> position() const override;
    std::optional<Size> size() const override;
    std::optional<std::int64_t> longValueLength() const override;
    std::optional<Utf16Range> rangeForPosition(Point point) const override;
    std::optional<std::string> stringForRange(Utf16Range range) const override;
    std::optional<Rect> boundsForRange(Utf16Range range) const override;
    bool equals(const AccessibilityElement& other) const override;

  private:
    template <typename Answer, typename Job>
    Answer ask(Job job) const;
    template <typename Answer, typename Read>
    Answer readText(Read read) const;
    std::optional<Rect> extents() const;

    std::weak_ptr<AtSpiService> service_;
    std::shared_ptr<AtSpiBudget> budget_;
    std::shared_ptr<AtSpiElementState> state_;
};

}  // namespace velmora
