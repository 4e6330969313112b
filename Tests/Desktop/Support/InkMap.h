// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "Velmora/Platform/Image.h"

namespace velmora::test {

/// Which pixels of a picture differ from its commonest colour, without the rules and frames that
/// programs draw around texts.
class InkMap {
  public:
    explicit InkMap(const Image& picture);

    int width() const { return width_; }
    int height() const { return height_; }
    bool at(int x, int y) const { return ink_[index(x, y)]; }

  private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }
    void removeLongRuns(bool horizontal);

    int width_;
    int height_;
    std::vector<bool> ink_;
};

}  // namespace velmora::test
