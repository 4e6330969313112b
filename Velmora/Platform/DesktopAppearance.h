// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

namespace velmora {

/// Whether the user's desktop is light or dark. Main thread.
class DesktopAppearance {
  public:
    enum class ColorScheme { light, dark };
    using Observer = std::function<void(std::optional<ColorScheme> scheme)>;

    virtual ~DesktopAppearance() = default;

    /// The stated preference; nothing where the desktop states none or has not answered yet.
    /// Never waits for a reply.
    virtual std::optional<ColorScheme> colorScheme() const = 0;

    /// Called with every later change, the first answer of the desktop included. One observer at
    /// a time; an empty one ends it.
    virtual void observe(Observer observer) = 0;
};

}  // namespace velmora
