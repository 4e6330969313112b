// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "VelmoraCore/LookupResult.h"

namespace velmora {

/// The one floating panel in which every lookup is shown. Main thread; rectangles in screen space.
class PopoverPresenting {
  public:
    virtual ~PopoverPresenting() = default;

    /// Shows the pinyin bubble above the anchor.
    virtual void showPinyin(const std::string& pinyin, const Rect& anchor, double fontScale) = 0;

    /// Shows the entry card for the first result, or the selection card for all of them where
    /// there is a selected text; hides the panel where there is no result.
    virtual void show(const std::vector<LookupResult>& results,
                      const std::optional<std::string>& selectedText, const Rect& anchor,
                      bool toneColorsEnabled, double fontScale) = 0;

    /// The panel's frame while it is visible; nothing while it is hidden or was never made.
    virtual std::optional<Rect> visiblePanelFrame() const = 0;

    /// Hides the panel if there is one.
    virtual void orderOut() = 0;
};

}  // namespace velmora
