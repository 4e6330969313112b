// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Velmora/Platform/StatusIconPixmap.h"

namespace velmora {

/// What the tray shows of the program besides its menu.
struct StatusItemLook {
    std::string toolTip;
    std::string accessibilityLabel;
    std::vector<StatusIconPixmap> icon;  ///< The same picture in several sizes.
};

}  // namespace velmora
