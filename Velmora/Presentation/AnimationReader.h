// SPDX-License-Identifier: MIT
#pragma once

#include <QFuture>
#include <QImage>
#include <QString>
#include <chrono>
#include <memory>

namespace velmora {

/// One picture of an animation.
struct AnimationFrame {
    QImage image;                        ///< Null where the file is damaged from here on.
    std::chrono::milliseconds delay{0};  ///< How long it stays; never negative.
};

/// Reads an animation's frames one after the other, over and over. Unpacking one takes about as
/// long as a frame of a display lasts, so another thread does it. Main thread.
class AnimationReader {
  public:
    explicit AnimationReader(const QString& file);
    ~AnimationReader();

    /// Whether the file is there and an animation or a picture, as far as its head tells.
    bool isValid() const { return isValid_; }

    /// The frame behind that of the last call; after the last one of the file the first. Only one
    /// at a time: the one before has to be finished.
    QFuture<AnimationFrame> next();

  private:
    class File;

    std::shared_ptr<File> file_;  ///< Used by at most one thread at a time.
    bool isValid_;
};

}  // namespace velmora
