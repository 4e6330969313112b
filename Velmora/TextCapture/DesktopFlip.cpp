// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/DesktopFlip.h"

#include <utility>
#include <vector>

namespace velmora {

DesktopFlip::DesktopFlip(std::optional<double> heightOverride,
                         std::shared_ptr<const Screens> screens, double mainDisplayHeight)
    : heightOverride_(heightOverride),
      screens_(std::move(screens)),
      mainDisplayHeight_(mainDisplayHeight) {}

double DesktopFlip::desktopHeight() const {
    if (heightOverride_) {
        return *heightOverride_;
    }
    const std::vector<Screen> screens = screens_->all();
    return screens.empty() ? mainDisplayHeight_ : screens.front().frame.maxY();
}

}  // namespace velmora
