// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <functional>

#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// The desktop of all tests of this program; made by its main function.
class WindowDesktop {
  public:
    static constexpr int width = 1280;
    static constexpr int height = 800;

    static VirtualDesktop& get();
    static void set(VirtualDesktop* desktop);

    /// Lets this process and the server work until the condition holds.
    static bool until(const std::function<bool()>& condition);

    /// What stands at a place of the screen now.
    static QColor pixel(int x, int y);

    /// Leaves a picture of the screen in the build folder, to be looked at.
    static void keepPicture(const std::string& name);
};

}  // namespace velmora::test
