// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/AccessibilitySystem.h"
#include "Velmora/Platform/ScreenCapture.h"
#include "Velmora/Platform/Screens.h"

namespace velmora {

/// A desktop that consists of one picture: one display of its size, one pixel a point, filled by
/// one element without any text. A value; its parts share the picture.
class PictureDesktop {
  public:
    explicit PictureDesktop(const Image& picture);

    std::shared_ptr<AccessibilitySystem> accessibility() const { return accessibility_; }
    std::shared_ptr<ScreenCapture> screenCapture() const { return screenCapture_; }
    std::shared_ptr<const Screens> screens() const { return screens_; }

  private:
    std::shared_ptr<AccessibilitySystem> accessibility_;
    std::shared_ptr<ScreenCapture> screenCapture_;
    std::shared_ptr<const Screens> screens_;
};

}  // namespace velmora
