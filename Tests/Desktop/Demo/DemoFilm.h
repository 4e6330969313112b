// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <filesystem>
#include <string>
#include <vector>

#include "Velmora/Platform/Geometry.h"

namespace velmora::test {

/// The frames of an animation as they are taken. What the screen showed, where the pointer was and
/// which key was held are kept apart, so that frames in which only the pointer moved share their
/// picture of the screen.
class DemoFilm {
  public:
    /// `scale`: pixels per point of what is filmed.
    explicit DemoFilm(double scale) : scale_(scale) {}

    /// One more frame, shown for so many seconds. A frame that is the same as the one before makes
    /// that one last longer.
    void add(const QImage& screen, Point pointer, const std::string& heldKey, double seconds);

    void clear() { frames_.clear(); }
    double seconds() const;
    std::size_t frameCount() const { return frames_.size(); }

    /// Writes every frame as a picture, and "frames.txt", which tells ffmpeg how long each lasts.
    /// Throws std::runtime_error where that is not possible.
    void write(const std::filesystem::path& folder) const;

  private:
    struct Frame {
        QImage screen;
        Point pointer;
        std::string heldKey;
        double seconds = 0;
    };

    QImage drawn(const Frame& frame) const;

    double scale_;
    std::vector<Frame> frames_;
};

}  // namespace velmora::test
