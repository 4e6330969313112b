// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/Pasteboard.h"

namespace velmora {

/// The desktop's clipboard, as the graphical application reaches it.
class ClipboardPasteboard final : public Pasteboard {
  public:
    void setText(const std::string& text) override;
};

}  // namespace velmora
