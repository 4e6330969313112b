// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaObject>
#include <memory>

#include "Velmora/Coordination/HighlightPresenting.h"
#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Presentation/HighlightView.h"
#include "Velmora/Presentation/Theme.h"

namespace velmora {

/// Outlines the characters that a lookup matched, over whatever program shows them. Main thread.
class HighlightOverlayController : public HighlightPresenting {
  public:
    /// Both outlive the controller.
    HighlightOverlayController(const ScreenGeometrySource& screens, Theme& theme);
    ~HighlightOverlayController() override;

    /// Makes the window in advance, without showing it.
    void prepare();

    void show(const Rect& rect) override;
    void orderOut() override;

    /// Null until the first outline; the same from then on.
    HighlightView* panel() const { return panel_.get(); }

  private:
    void ensurePanel();
    void place();

    const ScreenGeometrySource& screens_;
    Theme& theme_;
    QMetaObject::Connection themeChanged_;
    std::unique_ptr<HighlightView> panel_;
    Rect frame_;  ///< Of the panel, in screen space.
};

}  // namespace velmora
