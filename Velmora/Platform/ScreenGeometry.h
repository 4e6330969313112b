// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/ScreenCapture.h"
#include "Velmora/Platform/ScreenLayout.h"
#include "Velmora/Platform/Screens.h"

namespace velmora {

/// How the screens stand at one moment, and with it every conversion between the coordinate spaces
/// of the program. No other file converts between them.
///
/// | space   | unit          | origin                                | y    | who speaks it |
/// |---------|---------------|---------------------------------------|------|----------------------------|
/// | native  | native pixels | top left corner of the whole desktop  | down | the window system |
/// | logical | points        | that same corner                      | down | Qt's windows and
/// screens   | | capture | points        | top left corner of the primary screen | down | text
/// capture, displays     | | screen  | points        | bottom left corner of the primary     | up
/// | all other subsystems       | | target  | its own       | whatever the program takes | down |
/// other programs' interfaces |
///
/// A point is one of Qt's logical pixels. Qt leaves the corner of each screen where it is in native
/// pixels and divides what lies inside by the ratio of that screen:
///
///     logical = corner + (native − corner) / ratio
///
/// so that logical screens of different ratios have gaps between them. Capture space is logical
/// space moved so that the primary screen's corner is its origin; screen space is capture space
/// turned upside down at the primary screen's lower edge (y' = desktopHeight − y).
///
/// A position is converted by the screen that contains it, or by the nearest one where none does.
/// A rectangle is converted as a whole by the screen of its centre. Without any screen all spaces
/// are the native one, screen space with its sign of y turned. Nothing is rounded.
///
/// An immutable value: cheap to copy, usable from any thread.
class ScreenGeometry {
  public:
    /// No screen.
    ScreenGeometry();

    /// The primary screen first. Screens without an area or with an impossible ratio are left out;
    /// work areas are cut to their screen, and one without an area becomes the whole screen.
    explicit ScreenGeometry(std::vector<ScreenLayout> layouts);

    const std::vector<ScreenLayout>& layouts() const { return *layouts_; }
    bool isEmpty() const { return layouts_->empty(); }

    /// The primary screen's height in points: what a y is subtracted from to turn it around.
    double desktopHeight() const;

    /// Every screen in screen space, the primary one first.
    std::vector<Screen> screens() const;

    /// Every screen in capture space, the primary one first, by the layout's id.
    std::vector<Display> displays() const;

    /// The layout of this id, or null.
    const ScreenLayout* layout(std::uint64_t id) const;

    /// The native pixels of a part of one display (capture space), to the nearest whole pixel and
    /// cut to that display; empty where they miss each other or there is no such display.
    Rect nativePixelsOfDisplay(std::uint64_t id, const Rect& capture) const;

    /// Native pixels per point at a native position; 1 without screens.
    double ratioAtNative(Point native) const;

    Point logicalFromNative(Point native) const;
    Rect logicalFromNative(const Rect& native) const;
    Point nativeFromLogical(Point logical) const;
    Rect nativeFromLogical(const Rect& logical) const;

    Point captureFromNative(Point native) const;
    Rect captureFromNative(const Rect& native) const;
    Point nativeFromCapture(Point capture) const;
    Rect nativeFromCapture(const Rect& capture) const;

    Point screenFromNative(Point native) const;
    Rect screenFromNative(const Rect& native) const;
    Point nativeFromScreen(Point screen) const;
    Rect nativeFromScreen(const Rect& screen) const;

    Point screenFromCapture(Point capture) const;
    Rect screenFromCapture(const Rect& capture) const;
    Point captureFromScreen(Point screen) const;
    Rect captureFromScreen(const Rect& screen) const;

    Point logicalFromScreen(Point screen) const;
    Rect logicalFromScreen(const Rect& screen) const;
    Point screenFromLogical(Point logical) const;
    Rect screenFromLogical(const Rect& logical) const;

    /// Native pixels per unit of another program that reports this width for a window of its own.
    /// Programs round what they report; the quarter step that explains the width is taken where
    /// there is one. 1 for widths that tell nothing (not finite, below 1, or of a ratio outside
    /// 0.25…8).
    static double targetRatio(double nativeWidth, double reportedWidth);

    /// A position or rectangle in the units of another program, given where that program and where
    /// the window system say that one window of it stands.
    static Point nativeFromTarget(Point target, const Rect& targetWindow, const Rect& nativeWindow);
    static Rect nativeFromTarget(const Rect& target, const Rect& targetWindow,
                                 const Rect& nativeWindow);
    static Point targetFromNative(Point native, const Rect& targetWindow, const Rect& nativeWindow);

  private:
    Point primaryCorner() const;
    const ScreenLayout* screenOfNative(Point native) const;
    const ScreenLayout* screenOfLogical(Point logical) const;

    std::shared_ptr<const std::vector<ScreenLayout>> layouts_;
};

}  // namespace velmora
