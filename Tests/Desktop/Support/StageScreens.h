// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// The screens that a virtual desktop is divided into, and where a place in our program's screen
/// space (points from the lower left corner of the primary screen, y upwards) is in pixels of the X
/// server. Counted here anew, independently of the program.
class StageScreens {
  public:
    struct Monitor {
        std::string name;
        Rect pixels;
        double scale = 1;  ///< Pixels of one of our program's points.
    };

    /// The first monitor becomes the primary one. Without any, the whole display of this size is
    /// one screen.
    StageScreens(Size display, std::vector<Monitor> monitors);

    /// Divides the desktop; before anything is started that asks for its screens.
    void divide(VirtualDesktop& desktop) const;

    /// What tells our program the scales.
    ChildProcess::Environment environment() const;

    /// The screen that holds the pixel, otherwise the primary one.
    const Monitor& monitorAt(Point pixel) const;

    Rect pixels(const Rect& points) const;
    Point points(Point pixel) const;

  private:
    Point cornerInPoints(const Monitor& monitor) const;
    Point upperLeft(const Monitor& monitor, const Rect& points) const;

    std::vector<Monitor> monitors_;
    bool isDivided_;
};

}  // namespace velmora::test
