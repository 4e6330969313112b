// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <random>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Image.h"

namespace velmora::benchmark {

/// Pictures that are never the same twice, so that nothing that was read before can be given again:
/// text at other places and in other shades, sizes that no screen has, and noise.
class SoakPictures {
  public:
    struct Shown {
        Image image;
        Point pointer;
    };

    /// Throws std::runtime_error where the texts' pictures are not there.
    SoakPictures();

    Shown next();

  private:
    Shown text();
    Shown noise();
    Shown plain();
    int between(int least, int greatest);

    std::vector<Image> texts_;
    std::mt19937 random_{11};
    std::size_t count_ = 0;
};

}  // namespace velmora::benchmark
