// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>

namespace velmora::test {

/// A plain window of this process on the X server.
class HostileWindow {
  public:
    explicit HostileWindow(const std::string& title);
    ~HostileWindow();
    HostileWindow(const HostileWindow&) = delete;
    HostileWindow& operator=(const HostileWindow&) = delete;

    /// Where it stands now, in pixels of the root window: x, y, width, height.
    std::array<int, 4> extents() const;

  private:
    void* display_ = nullptr;
    unsigned long window_ = 0;
};

}  // namespace velmora::test
