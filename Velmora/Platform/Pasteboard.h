// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace velmora {

/// The clipboard. Main thread.
class Pasteboard {
  public:
    virtual ~Pasteboard() = default;

    /// Replaces what the clipboard holds by this plain text.
    virtual void setText(const std::string& text) = 0;
};

}  // namespace velmora
